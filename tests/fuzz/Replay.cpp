// SPDX-License-Identifier: Apache-2.0
// Replay: runs a fuzz target over every file of the folders named, and over changed copies of each;
// a finding ends the program.
//
//   FuzzOpen [--changed N] [--last FILE] FOLDER ...
//
//   --changed N    as many copies of each input, always the same ones
//   --last FILE    keeps the input about to be run in FILE
#include "tests/fuzz/Fuzz.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned int seed);

namespace {

using Bytes = std::vector<std::uint8_t>;

class Replay {
public:
    int Run(const std::vector<std::string>& words)
    {
        for (std::size_t at = 0; at < words.size(); ++at) {
            if (words[at] == "--changed")
                changed_ = static_cast<unsigned>(std::stoul(words.at(++at)));
            else if (words[at] == "--last")
                last_ = words.at(++at);
            else if (std::filesystem::is_directory(words[at]))
                RunFolder(words[at]);
        }
        std::cout << inputs_ << " inputs\n";
        return inputs_ == 0 ? 1 : 0;
    }

private:
    void RunFolder(const std::filesystem::path& folder)
    {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string content{std::istreambuf_iterator<char>(file), {}};
            const Bytes input(content.begin(), content.end());
            // The last one told is the culprit.
            std::cout << entry.path().string() << std::endl;
            RunOne(input);
            for (unsigned seed = 1; seed <= changed_; ++seed)
                RunChanged(input, seed);
        }
    }

    void RunChanged(const Bytes& input, unsigned seed)
    {
        std::cout << "  changed " << seed << std::endl;
        constexpr std::size_t mostAdded = 64;
        Bytes copy = input;
        copy.resize(input.size() + mostAdded);
        copy.resize(LLVMFuzzerCustomMutator(copy.data(), input.size(), copy.size(), seed));
        RunOne(copy);
    }

    void RunOne(const Bytes& input)
    {
        if (!last_.empty()) {
            std::ofstream file(last_, std::ios::binary);
            std::copy(input.begin(), input.end(), std::ostreambuf_iterator<char>(file));
        }
        LLVMFuzzerTestOneInput(input.data(), input.size());
        ++inputs_;
    }

    unsigned changed_ = 0;
    std::string last_;
    int inputs_ = 0;
};

}  // namespace

int main(int count, char** words)
{
    return Replay().Run({words + 1, words + count});
}
