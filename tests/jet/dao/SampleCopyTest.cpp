// SPDX-License-Identifier: Apache-2.0
// SampleCopyTest: every table of every real file copied row by row into a new file of each format.
#include "jet/catalog/Catalog.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/ExpectedTables.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"
#include "tools/RowJson.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <tuple>

namespace dao {
namespace {

using tests::ExpectedFile;

using FileAndKind = std::tuple<ExpectedFile, FileKind>;

// Rows as text, in the order of the file.
using Rows = std::vector<std::string>;

Rows RowsOf(const std::shared_ptr<jet::pages::Pager>& pager, const std::string& table)
{
    const auto opened = jet::catalog::Catalog(pager).Open(table);
    Rows rows;
    for (const auto cursor = opened.rows->Scan(); cursor->Next();)
        rows.push_back(tools::RowJson(*opened.rows, cursor->Row()));
    return rows;
}

// Whether all has them too, in the same order.
bool AreAmong(const Rows& all, const Rows& some)
{
    auto next = all.begin();
    for (const std::string& row : some) {
        next = std::find(next, all.end(), row);
        if (next == all.end()) return false;
        ++next;
    }
    return true;
}

// The fields and nothing that would make values of its own or refuse them; no index, for a copy
// need not be unique.
TableDef PlainCopyOf(const TableDef& table)
{
    TableDef copy(table.Name());
    for (const FieldDef& field : table.Fields()) {
        FieldDef plain = TableDef::CreateField(field.name, field.type, field.size);
        plain.precision = field.precision;
        plain.scale = field.scale;
        plain.allowZeroLength = field.type == FieldType::Text || field.type == FieldType::Memo;
        copy.Append(plain);
    }
    return copy;
}

// Jet 3 has none.
bool HasDecimals(const TableDef& table)
{
    return std::any_of(table.Fields().begin(), table.Fields().end(),
                       [](const FieldDef& field) { return field.type == FieldType::Decimal; });
}

// Codes without a character, which the other reader tells in one format only.
std::string WithoutUnassigned(std::string text)
{
    for (const char* unassigned : {"\xC2\x81", "\xC2\x8D", "\xC2\x8F", "\xC2\x90", "\xC2\x9D"})
        for (std::size_t at = 0; (at = text.find(unassigned)) != std::string::npos;)
            text.replace(at, 2, "?");
    return text;
}

// In any order: the other reader tells a row that has moved where it lies now, and in the copy none
// has.
std::vector<tests::ExportedRow> Exported(const std::filesystem::path& file,
                                         const std::string& table)
{
    std::vector<tests::ExportedRow> rows = tests::MdbExport(file, table);
    for (tests::ExportedRow& row : rows)
        for (auto& [name, value] : row)
            value = WithoutUnassigned(value);
    std::sort(rows.begin(), rows.end());
    return rows;
}

class SampleCopyTest : public testing::TestWithParam<FileAndKind> {
protected:
    void SetUp() override
    {
        const std::filesystem::path& file = std::get<0>(GetParam()).file;
        SKIP_WITHOUT_SAMPLE(file);
        from_ = engine_.DefaultWorkspace().OpenDatabase(folder_.Copy(file).string());
        source_ = jet::pages::Pager::Open(disk_, file.string(), jet::io::OpenMode::ReadOnly);
        tests::CreateDatabase(copies_, kFile, std::get<1>(GetParam()));
        to_ = copies_.DefaultWorkspace().OpenDatabase(kFile);
        for (const auto& [name, page] : tests::UserTables(source_))
            names_.push_back(name);
    }

    // One error number for each row that the copy refused.
    std::vector<int> CopyRows(const std::string& name)
    {
        const TableDef table = from_.TableDef(name);
        Recordset rows = from_.OpenRecordset(name);
        Recordset copy = to_.OpenRecordset(name);
        std::vector<int> refused;
        for (; !rows.Eof(); rows.MoveNext()) {
            copy.AddNew();
            for (const FieldDef& field : table.Fields())
                copy[field.name] = rows[field.name].Value();
            if (const int number = ErrorOf([&] { copy.Update(); }); number != 0) {
                refused.push_back(number);
                copy.CancelUpdate();
            }
        }
        return refused;
    }

    std::filesystem::path Written()
    {
        const std::filesystem::path file = folder_.Path() / "copy.mdb";
        std::ofstream out(file, std::ios::binary);
        for (const std::byte byte : files_.Content(kFile))
            out.put(static_cast<char>(byte));
        return file;
    }

    tests::ScratchFolder folder_;
    jet::io::StdFileSystem disk_;
    jet::io::MemoryFileSystem files_;
    DBEngine engine_{{[] { return kNow; }}};
    DBEngine copies_{{[] { return kNow; }}, files_};
    Database from_, to_;
    std::shared_ptr<jet::pages::Pager> source_;
    std::vector<std::string> names_;
};

TEST_P(SampleCopyTest, EveryRowReadsEqualByUsAndByTheOtherReader)
{
    const bool jet3 = tests::IsJet3(std::get<1>(GetParam()));
    std::vector<std::string> copied, cut;
    for (const std::string& name : names_) {
        SCOPED_TRACE(name);
        const TableDef plain = PlainCopyOf(from_.TableDef(name));
        if (jet3 && HasDecimals(plain)) {
            EXPECT_EQ(ErrorOf([&] { to_.Append(plain); }), 3259);
            continue;
        }
        to_.Append(plain);
        const std::vector<int> refused = CopyRows(name);
        // Jet 3 cannot hold every text, nor every row, of Jet 4.
        for (const int number : refused)
            EXPECT_TRUE(jet3 && (number == 3421 || number == 3047)) << number;
        (refused.empty() ? copied : cut).push_back(name);
    }
    to_.Close();
    EXPECT_SPOTLESS(files_, kFile);
    const auto copy = jet::pages::Pager::Open(files_, kFile, jet::io::OpenMode::ReadOnly);
    for (const std::string& name : copied) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(RowsOf(copy, name) == RowsOf(source_, name));
    }
    for (const std::string& name : cut) {
        const Rows all = RowsOf(source_, name), some = RowsOf(copy, name);
        EXPECT_TRUE(AreAmong(all, some)) << name;
    }
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    const std::filesystem::path file = Written();
    for (const std::string& name : copied) {
        SCOPED_TRACE(name);
        EXPECT_TRUE(Exported(file, name) == Exported(std::get<0>(GetParam()).file, name));
    }
}

INSTANTIATE_TEST_SUITE_P(Files, SampleCopyTest,
                         testing::Combine(testing::ValuesIn(tests::ExpectedFiles()),
                                          testing::Values(FileKind::Jet3, FileKind::Jet4,
                                                          FileKind::EncodedJet4)),
                         [](const auto& each) {
                             std::string name =
                                 std::get<0>(each.param).expectations.filename().string();
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name + "To" + NameOf(std::get<1>(each.param));
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleCopyTest);

}  // namespace
}  // namespace dao
