// SPDX-License-Identifier: Apache-2.0
#include "base/NumberedError.h"
#include "jet/catalog/Catalog.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/Sha256.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using jet::catalog::Catalog;
using jet::catalog::CatalogEntry;
using jet::catalog::ObjectKind;

// Where the header keeps the words that count commits, two bytes for each user.
constexpr std::size_t kCommitWords = 0xE00, kCommitWordsEnd = 0x1000;

class NewDatabaseTest : public testing::Test {
protected:
    NewDatabaseTest() { Catalog::CreateDatabase(files_, "new.mdb", jet::format::kJet4); }

    jet::io::MemoryFileSystem files_;
};

TEST_F(NewDatabaseTest, IsWhatTheEngineItselfMakes)
{
    std::vector<std::byte> bytes = files_.Content("new.mdb");
    ASSERT_EQ(bytes.size(), 65536U);
    for (std::size_t at = kCommitWords; at < kCommitWordsEnd; at += 2) {
        bytes[at] = std::byte{0};
        bytes[at + 1] = std::byte{1};
    }
    EXPECT_EQ(tests::Sha256(bytes),
              "f22d817834b40f52d7febb01191eb73386d6c714926fe24613ba538de58fe387");
}

TEST_F(NewDatabaseTest, HoldsTheSystemTablesAlone)
{
    const Catalog catalog(jet::pages::Pager::Open(files_, "new.mdb", jet::io::OpenMode::ReadWrite));
    const std::vector<CatalogEntry> entries = catalog.Entries();
    ASSERT_EQ(entries.size(), 8U);
    EXPECT_TRUE(std::all_of(entries.begin(), entries.end(),
                            [](const CatalogEntry& entry) { return entry.system; }));
    EXPECT_EQ(std::count_if(
                  entries.begin(), entries.end(),
                  [](const CatalogEntry& entry) { return entry.kind == ObjectKind::LocalTable; }),
              4);
    EXPECT_EQ(catalog.Open("msysobjects").rows->RowCount(), 8U);
    EXPECT_EQ(catalog.Open("MSysACEs").rows->RowCount(), 16U);
    EXPECT_EQ(catalog.Open("MSysQueries").rows->RowCount(), 0U);
}

TEST_F(NewDatabaseTest, DoesNotReplaceAnother)
{
    const std::vector<std::byte> before = files_.Content("new.mdb");
    try {
        Catalog::CreateDatabase(files_, "new.mdb", jet::format::kJet4);
        FAIL() << "replaced";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 3204);
    }
    EXPECT_EQ(files_.Content("new.mdb"), before);
}

}  // namespace
