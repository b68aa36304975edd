// SPDX-License-Identifier: Apache-2.0
// SweptProcedures: the procedures that are run while a call of the engine to the disk fails, and
// what must hold afterwards.
#pragma once

#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/WatchedFileSystem.h"

#include <cstddef>
#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace tests {

inline constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";

// The shop on a disk one call of which fails.
struct Scene {
    explicit Scene(const std::vector<std::byte>& content)
    {
        (void)memory.Create(kDatabase);
        memory.Content(kDatabase) = content;
        world.fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
        world.fakes.files.Write(kDatabase, "");
        world.fakes.prompts.TakeAnyBox();
    }
    ~Scene() { disk.beforeCall = nullptr; }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    void FailAt(std::size_t call)
    {
        calls = 0;
        disk.beforeCall = [this, call] {
            if (calls++ == call) throw base::NumberedError(3043).At("planned failure");
        };
    }
    // Rows as another program finds them.
    [[nodiscard]] std::vector<Record> Stored(const std::string& table)
    {
        dao::Database found = reader.DefaultWorkspace().OpenDatabase(kDatabase);
        dao::Recordset rows = found.OpenRecordset(table);
        return RowsOf(rows);
    }

    std::size_t calls = 0;
    jet::io::MemoryFileSystem memory;
    WatchedFileSystem disk{memory};
    ShopWorld world{disk};
    dao::DBEngine reader{{.now = [this] { return world.fakes.clock.Now(); }}, memory};
};

// Which parts of a procedure keep their failures to themselves, and how many calls the engine makes
// that nothing depends on: around a set of pages or a number, and when a database closes.
struct Silent {
    bool asksPIN = false, showsProgress = false;
    std::size_t tidyings = 0, closings = 0;
    friend bool operator==(const Silent&, const Silent&) = default;
};

inline void PrintTo(const Silent& silent, std::ostream* out)
{
    *out << "PIN " << silent.asksPIN << ", progress " << silent.showsProgress << ", tidyings "
         << silent.tidyings << ", closings " << silent.closings;
}

struct Procedure {
    std::string name;
    std::set<std::string> locations;         // where a failure in it may be reported
    std::function<void(ShopWorld&)> given;   // rows in the file
    std::function<void(ShopWorld&)> before;  // what was done before, without a failure
    std::function<void(ShopWorld&)> run;
    std::function<void(Scene&)> holds;  // whatever failed
    Silent silent = {};
};

inline void PrintTo(const Procedure& each, std::ostream* out)
{
    *out << each.name;
}

[[nodiscard]] std::vector<Procedure> SweptProcedures();

}  // namespace tests
