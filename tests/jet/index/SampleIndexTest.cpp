// SPDX-License-Identifier: Apache-2.0
// SampleIndexTest: the indexes of real files, entry by entry against the rows they stand for.
#include "jet/io/StdFile.h"
#include "tests/jet/index/RowEntries.h"
#include "tests/jet/index/TreeCheck.h"
#include "tests/support/Samples.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace jet {
namespace {

using format::PageNumber;
using table::NativeTable;

struct Counts {
    std::size_t indexes = 0;
    std::size_t entries = 0;
};

// The levels of the shops' indexes are wrong: the library that wrote them leaves them 0.
enum class Levels { MustBeRight, MayBeWrong };

void CheckTable(pages::Pager& pager, const NativeTable& table, Levels levels, Counts& counts)
{
    for (const format::IndexDefinition& definition : table.Definition().indexes) {
        SCOPED_TRACE("root page " + std::to_string(Raw(definition.root)));
        EXPECT_EQ(FaultsOfIndex(pager, table, definition), std::vector<std::string>{});
        if (levels == Levels::MustBeRight) {
            const TreeReport report = CheckTree(pager, table.Definition().page, definition);
            EXPECT_EQ(report.levelFaults, std::vector<std::string>{});
        }
        ++counts.indexes;
        const index::Index index(pager, table.Definition(), definition);
        counts.entries += EntriesOfRows(table, index, definition).size();
    }
}

void CheckFile(const std::filesystem::path& path, Levels levels, Counts& counts)
{
    SCOPED_TRACE(path.string());
    io::StdFileSystem files;
    const auto pager = pages::Pager::Open(files, path.string(), io::OpenMode::ReadOnly);
    for (const PageNumber page : TablesOf(pager)) {
        SCOPED_TRACE("table at page " + std::to_string(Raw(page)));
        CheckTable(*pager, NativeTable(pager, page), levels, counts);
    }
}

TEST(SampleIndexTest, EveryEntryOfTheCollectedFilesIsWhatWeWouldWrite)
{
    const std::filesystem::path folder = tests::SampleFolder() / "mdb";
    SKIP_WITHOUT_SAMPLE(folder);
    Counts counts;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().stem().string();
        if (name.ends_with("V2000") || name.ends_with("V1997") || name.ends_with("-enc"))
            CheckFile(entry.path(), Levels::MustBeRight, counts);
    }
    EXPECT_GE(counts.indexes, 250U);
    EXPECT_GE(counts.entries, 6000U);
}

TEST(SampleIndexTest, EveryEntryOfTheShopsIsWhatWeWouldWrite)
{
    Counts counts;
    for (const char* shop : {"shop", "shop-fresh"}) {
        const std::filesystem::path path = tests::SampleFolder() / shop / "Kelvaro.mdb";
        SKIP_WITHOUT_SAMPLE(path);
        CheckFile(path, Levels::MayBeWrong, counts);
    }
    EXPECT_GE(counts.indexes, 8U);
}

}  // namespace
}  // namespace jet
