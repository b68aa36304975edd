// SPDX-License-Identifier: Apache-2.0
// Files with wrong bytes in them: every call ends, with a result or with a numbered error.
#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "jet/table/NativeTable.h"
#include "tests/support/ExpectedTables.h"
#include "tests/support/Samples.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>

namespace {

using jet::format::PageNumber;
using jet::format::RowId;
using jet::table::Assignment;
using jet::table::NativeTable;

// Counts how the calls end; any exception but a numbered error fails the test by itself.
struct Outcome {
    int results = 0, errors = 0;

    template <class Call>
    void Count(Call call)
    {
        try {
            call();
            ++results;
        } catch (const base::NumberedError&) {
            ++errors;
        }
    }
};

void ReadAll(NativeTable& table, std::vector<RowId>& ids)
{
    constexpr std::size_t most = 5000;  // a map may name pages without end
    const auto rows = table.Scan();
    while (ids.size() < most && rows->Next()) {
        ids.push_back(rows->Id());
        for (std::size_t column = 0; column < table.Definition().columns.size(); ++column)
            static_cast<void>(table.ValueOf(rows->Row(), column));
    }
}

void WriteSome(NativeTable& table, const std::vector<RowId>& ids, Outcome& outcome)
{
    std::vector<Assignment> values;
    for (std::size_t column = 0; column < table.Definition().columns.size(); ++column) {
        const auto type = table.Definition().columns[column].type;
        if (type == jet::format::ColumnType::Text) values.push_back({column, "some text"});
        if (type == jet::format::ColumnType::Memo)
            values.push_back({column, std::string(3000, 'm')});
    }
    for (std::size_t i = 0; i < std::min<std::size_t>(ids.size(), 6); ++i) {
        outcome.Count([&] { table.Update(ids[i], values); });
        outcome.Count([&] { table.Delete(ids[i]); });
    }
    outcome.Count([&] { table.Insert(values); });
    outcome.Count([&] { static_cast<void>(table.NextAutoNumber()); });
}

void Use(jet::io::FileSystem& files, const std::map<std::string, PageNumber>& tables,
         Outcome& outcome)
{
    std::shared_ptr<jet::pages::Pager> pager;
    outcome.Count([&] {
        pager = jet::pages::Pager::Open(files, "damaged.mdb", jet::io::OpenMode::ReadWrite);
    });
    if (!pager) return;
    for (const auto& [name, page] : tables) {
        outcome.Count([&, definition = page] {
            NativeTable table(pager, definition);
            std::vector<RowId> ids;
            outcome.Count([&] { ReadAll(table, ids); });
            WriteSome(table, ids, outcome);
        });
    }
}

class DamagedFileTest : public testing::TestWithParam<const char*> {};

TEST_P(DamagedFileTest, EndsInAResultOrANumberedError)
{
    const auto sample = tests::SampleFolder() / "mdb" / (std::string(GetParam()) + ".mdb");
    SKIP_WITHOUT_SAMPLE(sample);
    jet::io::MemoryFileSystem files;
    static_cast<void>(files.Create("damaged.mdb"));
    std::vector<std::byte> sound(std::filesystem::file_size(sample));
    std::ifstream in(sample, std::ios::binary);
    for (std::byte& byte : sound)
        byte = static_cast<std::byte>(in.get());
    files.Content("damaged.mdb") = sound;
    const auto tables = tests::UserTables(
        jet::pages::Pager::Open(files, "damaged.mdb", jet::io::OpenMode::ReadOnly));

    const std::size_t size = sound[0x14] == std::byte{0} ? 2048 : 4096;

    Outcome outcome;
    std::mt19937 dice(7);
    for (int round = 0; round < 60; ++round) {
        std::vector<std::byte> damaged = sound;
        for (int i = 0; i < 40; ++i) {
            // Most of a page's meaning is at its beginning and its end.
            const std::size_t page = 1 + dice() % (damaged.size() / size - 1);
            const std::size_t offset = dice() % 3 == 0 ? size - 1 - dice() % 200 : dice() % 200;
            damaged[page * size + offset] = static_cast<std::byte>(dice());
        }
        files.Content("damaged.mdb") = damaged;
        Use(files, tables, outcome);
    }
    EXPECT_GT(outcome.results, 100);
    EXPECT_GT(outcome.errors, 50);
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedFileTest,
                         testing::Values("testV1997", "indexTestV1997", "overflowTestV1997",
                                         "test2V1997", "testV2000", "indexTestV2000",
                                         "overflowTestV2000", "delColTestV2000", "test2V2000"));

}  // namespace
