// SPDX-License-Identifier: Apache-2.0
// Start: how long the built program takes, as a process of its own, from its start to the board on
// the screen, in a large shop and in a small one.
#include "bench/BenchShop.h"
#include "bench/Race.h"
#include "tests/support/Process.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

namespace {

// The program in a folder of its own, beside a copy of a shop.
class InstalledProgram {
public:
    explicit InstalledProgram(const bench::BenchShop& shop)
        : shop_(shop.Mdb()), program_(shop_.Folder() / "Lodrin")
    {
        std::filesystem::copy_file(LODRIN_UNTIL_SHOWN, program_);
        std::ofstream(shop_.Folder() / "Lodrin.ini")
            << "[FileLoc]\r\nLodrin=" << shop_.Folder().string() << "\r\n";
    }

    // Errors: std::runtime_error when the board does not come.
    void Start()
    {
        running_.emplace(std::vector<std::string>{program_.string()});
        if (running_->Line() != "shown") throw std::runtime_error("the board stays empty");
    }
    void End()
    {
        if (running_ && running_->Wait() != 0) throw std::runtime_error("the program failed");
        running_.reset();
    }

private:
    bench::WorkingCopy shop_;
    std::filesystem::path program_;
    std::optional<tests::Process> running_;
};

// Both programs: while one still ends, the other would not start.
struct Programs {
    InstalledProgram ours, smalls;
    void End()
    {
        ours.End();
        smalls.End();
    }
};

bench::Contender Starting(const std::string& name, InstalledProgram& program, Programs& both)
{
    const auto start = [&program] {
        program.Start();
        return bench::Reading{};
    };
    return {.name = name,
            .work = start,
            .prepare = [&both] { both.End(); },
            .compared = bench::Compared::Nothing};
}

int Ask(const bench::BenchShop& shop)
{
    const bench::BenchShop small{"S", shop.folder.parent_path() / "S"};
    Programs programs{InstalledProgram(shop), InstalledProgram(small)};
    bench::Races races(shop.size);
    // Days left open are closed, and the ones who are new added, in the first start, which does
    // not count.
    bench::Contender peer = Starting("the same on S", programs.smalls, programs);
    peer.target = 1.5;
    races.Run({'l', "the built program from its start to the filled board", 15},
              {Starting("Lodrin", programs.ours, programs), peer});
    programs.End();
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
