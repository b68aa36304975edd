// SPDX-License-Identifier: Apache-2.0
#include "base/NumberedError.h"
#include "jet/catalog/Catalog.h"
#include "jet/format/HeaderPage.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Sha256.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using jet::catalog::Catalog;
using jet::catalog::CatalogEntry;
using jet::catalog::ObjectKind;
using jet::format::FileVersion;

// What the original engine makes, commit words at rest and undefined bytes zero.
struct NewFile {
    const FileVersion* version;
    std::size_t size;
    const char* sha256;
};

class NewDatabaseTest : public testing::TestWithParam<NewFile> {
protected:
    NewDatabaseTest() { Catalog::CreateDatabase(files_, "new.mdb", *GetParam().version); }

    jet::io::MemoryFileSystem files_;
};

INSTANTIATE_TEST_SUITE_P(
    Versions, NewDatabaseTest,
    testing::Values(NewFile{&jet::format::kJet3, 40960,
                            "dda2bd2fc68deff3cc0996d96763791405080ff6ef9db06882e17ba55624d8fe"},
                    NewFile{&jet::format::kJet4, 65536,
                            "f22d817834b40f52d7febb01191eb73386d6c714926fe24613ba538de58fe387"}),
    [](const auto& made) { return "Jet" + std::string(1, made.param.version->name[0]); });

TEST_P(NewDatabaseTest, IsWhatTheEngineItselfMakes)
{
    std::vector<std::byte> bytes = files_.Content("new.mdb");
    ASSERT_EQ(bytes.size(), GetParam().size);
    const std::size_t words = GetParam().version->header->commitWords;
    for (std::size_t at = words; at < words + jet::format::kCommitWordBytes; at += 2) {
        bytes[at] = std::byte{0};
        bytes[at + 1] = std::byte{1};
    }
    EXPECT_EQ(tests::Sha256(bytes), GetParam().sha256);
}

TEST_P(NewDatabaseTest, IsClean)
{
    EXPECT_SPOTLESS(files_, "new.mdb");
}

TEST_P(NewDatabaseTest, HoldsTheSystemTablesAlone)
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

TEST_P(NewDatabaseTest, DoesNotReplaceAnother)
{
    const std::vector<std::byte> before = files_.Content("new.mdb");
    try {
        Catalog::CreateDatabase(files_, "new.mdb", *GetParam().version);
        FAIL() << "replaced";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 3204);
    }
    EXPECT_EQ(files_.Content("new.mdb"), before);
}

}  // namespace
