// SPDX-License-Identifier: Apache-2.0
// AnyFileTest: every database file of a folder that the environment names: is it sound, does it
// read as an independent reader reads it, and are its indexes those that we would make?
//
//     LODRIN_MDB_FOLDER=/srv/copies build/dev/test_jet_index --gtest_filter='AnyFile*'
//
// Rule: nothing is written. A file with a password is told and passed over.
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/Catalog.h"
#include "jet/io/StdFile.h"
#include "tests/jet/index/RowEntries.h"
#include "tests/support/ForeignRows.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>

namespace jet {
namespace {

namespace fs = std::filesystem;
using table::NativeTable;

std::vector<fs::path> FilesIn(const fs::path& folder)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && base::SameName(entry.path().extension().string(), ".mdb"))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

class AnyFile {
public:
    explicit AnyFile(std::string path)
        : path_(std::move(path)), pager_(pages::Pager::Open(files_, path_, io::OpenMode::ReadOnly))
    {
    }

    void Check()
    {
        EXPECT_CLEAN(files_, path_);
        const bool compared = tests::MdbExportIsInstalled();
        for (const catalog::CatalogEntry& entry : catalog::Catalog(pager_).Entries()) {
            if (entry.kind != catalog::ObjectKind::LocalTable) continue;
            SCOPED_TRACE(entry.name);
            const catalog::OpenTable table = catalog::Catalog(pager_).Open(entry.name);
            EXPECT_FALSE(table.unread) << "its properties cannot be read";
            ++tables_;
            if (compared && !entry.system) {
                EXPECT_EQ(tests::DifferencesFrom(path_, entry.name, *table.rows),
                          std::vector<std::string>{});
            }
            for (const format::IndexDefinition& index : table.rows->Definition().indexes)
                CheckIndex(*table.rows, index);
        }
        EXPECT_GE(tables_, 4U);  // the system's own
        std::cout << path_ << ": Jet " << pager_->Version().name << ", " << tables_ << " tables, "
                  << indexes_ << " indexes as we would make them, " << unkeyed_
                  << " in an order that we cannot key"
                  << (compared ? "" : "; not compared, mdb-export is not installed") << "\n";
    }

private:
    void CheckIndex(const NativeTable& table, const format::IndexDefinition& index)
    {
        constexpr int kNotSupported = 3251;
        try {
            EXPECT_EQ(FaultsOfIndex(*pager_, table, index), std::vector<std::string>{});
            ++indexes_;
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), kNotSupported) << error.Detail();
            ++unkeyed_;
        }
    }

    io::StdFileSystem files_;
    std::string path_;
    std::shared_ptr<pages::Pager> pager_;
    std::size_t tables_ = 0, indexes_ = 0, unkeyed_ = 0;
};

TEST(AnyFileTest, IsSoundAndReadsAsTheOtherReaderReads)
{
    constexpr int kOtherPassword = 3031;
    const char* const folder = std::getenv("LODRIN_MDB_FOLDER");
    if (folder == nullptr) GTEST_SKIP() << "LODRIN_MDB_FOLDER names no folder of .mdb files";
    const std::vector<fs::path> files = FilesIn(folder);
    ASSERT_FALSE(files.empty()) << "no .mdb file in " << folder;
    for (const fs::path& file : files) {
        SCOPED_TRACE(file.string());
        try {
            AnyFile(file.string()).Check();
        } catch (const base::NumberedError& error) {
            if (error.Number() == kOtherPassword)
                std::cout << file.string() << ": has a password, passed over\n";
            else
                ADD_FAILURE() << error.Number() << " " << error.what() << " " << error.Detail();
        }
    }
}

}  // namespace
}  // namespace jet
