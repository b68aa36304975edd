// SPDX-License-Identifier: Apache-2.0
// CutExpectations: what must hold of a shop's file after its machine was stopped.
#pragma once

#include "base/NumberedError.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/StoredStates.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace tests {

inline constexpr const char* kShopFile = "C:/Shop/Kelvaro.mdb";

// The history of the act in this kind of file; worked out once.
[[nodiscard]] inline const ActHistory& HistoryOf(const ShopAct& act, FileKind kind)
{
    static std::map<std::pair<std::string, FileKind>, std::unique_ptr<ActHistory>> known;
    std::unique_ptr<ActHistory>& history = known[{act.name, kind}];
    if (!history) history = std::make_unique<ActHistory>(act, kind);
    return *history;
}

// The next start finds a sound file and one of the act's states, and sets nothing aside.
inline void ExpectOldOrNew(jet::io::MemoryFileSystem& files, const ActHistory& history,
                           std::size_t operation, bool flushedOnly)
{
    try {
        ShopWorld next(files);
        EXPECT_EQ(history.Objection(WholeIn(next), operation, flushedOnly), "");
    } catch (const base::NumberedError& error) {
        ADD_FAILURE() << error.Number() << " " << error.what() << " " << error.Detail();
    }
    EXPECT_FALSE(files.Exists(std::string(kShopFile) + ".journal.set-aside"));
    EXPECT_SPOTLESS(files, kShopFile);
}

// The shop goes on the next morning. A build of the tables that was stopped is not finished then.
inline void ExpectWorkGoesOn(jet::io::MemoryFileSystem& files, const ShopAct& act)
{
    ShopWorld world(files);
    StartNextMorning(world);
    if (act.name == std::string_view("BuildTables")) return;
    world.Open().At("10:00 AM").Select("Jones, Bob").Picks("BL", "Body").Starts(1001);
    EXPECT_EQ(world.EmployeeRecord("Jones, Bob").Text("WO#"), "1001");
}

}  // namespace tests
