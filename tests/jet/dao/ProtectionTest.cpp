// SPDX-License-Identifier: Apache-2.0
// ProtectionTest: files whose pages are encoded, and files with a password.
#include "jet/catalog/Catalog.h"
#include "jet/check/IntegrityChecker.h"
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"

#include <string_view>

namespace dao {
namespace {

using base::Value;

// Whether a text stands anywhere in a file, one or two bytes a character.
bool Shows(jet::io::MemoryFileSystem& files, const std::string& path, std::string_view text)
{
    const std::vector<std::byte>& content = files.Content(path);
    const std::string_view all(reinterpret_cast<const char*>(content.data()), content.size());
    std::string wide;
    for (const char c : text)
        wide += {c, '\0'};
    return all.find(text) != std::string_view::npos || all.find(wide) != std::string_view::npos;
}

class EncodedFileTest : public DaoKindTest {
protected:
    EncodedFileTest() { MakeEmployees(); }
};
INSTANTIATE_TEST_SUITE_P(Kinds, EncodedFileTest,
                         testing::Values(FileKind::EncodedJet3, FileKind::EncodedJet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(EncodedFileTest, NoTextStandsInTheFile)
{
    Add(1, "Whitcombe, Harvey");
    for (const char* text : {"Whitcombe", "LDEmp", "MSysObjects", "EmpID"})
        EXPECT_FALSE(Shows(files, kFile, text)) << text;
    EXPECT_TRUE(Shows(files, kFile, "Standard Jet DB"));
}

TEST_P(EncodedFileTest, NoTextStandsInTheJournal)
{
    Add(1, "Whitcombe, Harvey");
    database.Close();
    tests::FaultFileSystem disk(files);
    {
        DBEngine stopping({[] { return kNow; }}, disk);
        Database opened = stopping.DefaultWorkspace().OpenDatabase(kFile);
        Recordset rows = opened.OpenRecordset("LDEmp");
        // The journal is stored and flushed; the first page of the set is not.
        disk.PullThePlugAfter(3);
        rows.Edit();
        rows["Name"] = "Chisholm, Selma";
        EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3043);
    }
    disk.Reboot();
    const std::string journal = std::string(kFile) + ".journal";
    ASSERT_TRUE(files.Exists(journal));
    EXPECT_GT(files.Content(journal).size(), 4096U + 2048U);
    for (const char* text : {"Whitcombe", "Chisholm", "LDEmp"})
        EXPECT_FALSE(Shows(files, journal, text)) << text;
    database = engine.DefaultWorkspace().OpenDatabase(kFile);
    Recordset rows = Open("LDEmp");
    EXPECT_EQ(rows["Name"].Value(), Value("Whitcombe, Harvey"));
}

TEST_P(EncodedFileTest, TwoFilesHaveDifferentKeys)
{
    tests::CreateDatabase(engine, "/shop/other.mdb", GetParam());
    tests::CreateDatabase(engine, "/shop/third.mdb", GetParam());
    EXPECT_NE(files.Content("/shop/other.mdb"), files.Content("/shop/third.mdb"));
}

TEST_P(EncodedFileTest, OtherKeyInTheHeaderIsDamageAndNoCrash)
{
    database.Close();
    std::vector<std::byte> bytes = files.Content(kFile);
    bytes[0x3E] ^= std::byte{1};
    jet::io::MemoryFileSystem broken;
    broken.Create(kFile)->Write(0, bytes);
    DBEngine other({[] { return kNow; }}, broken);
    EXPECT_EQ(ErrorOf([&] {
                  Database opened = other.DefaultWorkspace().OpenDatabase(kFile);
                  (void)opened.TableNames();
              }),
              3343);
    EXPECT_FALSE(jet::check::CheckIntegrity(broken, kFile).Clean());
}

// Encoded files that the original engine made.
class EncodedSampleTest : public testing::TestWithParam<const char*> {
protected:
    const std::filesystem::path sample_ = tests::SampleFolder() / "mdb" / GetParam();
};
INSTANTIATE_TEST_SUITE_P(Files, EncodedSampleTest, testing::Values("db-enc.mdb", "db97-enc.mdb"),
                         [](const auto& each) {
                             return each.param == std::string_view("db-enc.mdb") ? "Jet4" : "Jet3";
                         });

TEST_P(EncodedSampleTest, OurRowsStandBesideItsOwnForEveryReader)
{
    SKIP_WITHOUT_SAMPLE(sample_);
    const tests::ScratchFolder folder;
    const std::string copy = folder.Copy(sample_).string();
    jet::io::StdFileSystem disk;
    {
        DBEngine engine({[] { return kNow; }});
        Database database = engine.DefaultWorkspace().OpenDatabase(copy);
        Recordset rows = database.OpenRecordset("Table1");
        EXPECT_EQ(Column(rows, "col1"), (std::vector<std::string>{"hello", "world"}));
        for (int i = 0; i < 200; ++i) {
            rows.AddNew();
            rows["col1"] = "row " + std::to_string(i);
            rows["col2"] = i;
            rows.Update();
        }
        database.Execute("DELETE FROM Table1 WHERE col1 = 'hello'", kFailOnError);
    }
    EXPECT_SPOTLESS(disk, copy);
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    const std::vector<tests::ExportedRow> found = tests::MdbExport(copy, "Table1");
    ASSERT_EQ(found.size(), 201U);
    EXPECT_EQ(found.front().at("col1"), "world");
    EXPECT_EQ(found.back().at("col1"), "row 199");
    EXPECT_EQ(found.back().at("ID"), "202");
}

class PasswordTest : public testing::TestWithParam<FileKind> {
protected:
    PasswordTest()
    {
        const bool jet3 = tests::IsJet3(GetParam());
        jet::catalog::Catalog::CreateDatabase(
            files_, kFile, jet3 ? jet::format::kJet3 : jet::format::kJet4, {.password = kSecret});
    }

    Database Open(std::string_view connect, bool readOnly = false)
    {
        return engine_.DefaultWorkspace().OpenDatabase(kFile, false, readOnly, connect);
    }

    static constexpr const char* kSecret = "Sesame 7\xC3\xA9";
    jet::io::MemoryFileSystem files_;
    DBEngine engine_{{[] { return kNow; }}, files_};
};
INSTANTIATE_TEST_SUITE_P(Kinds, PasswordTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(PasswordTest, OpensWithIt)
{
    for (const char* connect : {";pwd=Sesame 7\xC3\xA9", ";PWD=Sesame 7\xC3\xA9;",
                                "MS Access;pwd=Sesame 7\xC3\xA9", "pwd=Sesame 7\xC3\xA9"}) {
        EXPECT_EQ(ErrorOf([&] { (void)Open(connect); }), 0) << connect;
        EXPECT_EQ(ErrorOf([&] { (void)Open(connect, true); }), 0) << connect;
    }
}

TEST_P(PasswordTest, IsRefusedWithoutIt)
{
    const std::vector<std::byte> before = files_.Content(kFile);
    for (const char* connect :
         {"", ";", ";pwd=", ";pwd=sesame 7\xC3\xA9", ";pwd=Sesame 7", ";xpwd=Sesame 7\xC3\xA9",
          "Sesame 7\xC3\xA9", ";pwd=wrong;pwd=Sesame 7\xC3\xA9"}) {
        EXPECT_EQ(ErrorOf([&] { (void)Open(connect); }), 3031) << connect;
        EXPECT_EQ(ErrorOf([&] { (void)Open(connect, true); }), 3031) << connect;
    }
    EXPECT_EQ(files_.Content(kFile), before);
}

TEST_P(PasswordTest, IsAskedForAgainWhileTheFileIsOpen)
{
    const Database first = Open(";pwd=Sesame 7\xC3\xA9");
    EXPECT_EQ(ErrorOf([&] { (void)Open(""); }), 3031);
    EXPECT_EQ(ErrorOf([&] { (void)Open(";pwd=Sesame 7\xC3\xA9"); }), 0);
}

TEST_P(PasswordTest, FileIsWrittenAsAnyOther)
{
    {
        Database database = Open(";pwd=Sesame 7\xC3\xA9");
        dao::TableDef table("Parts");
        table.Append(dao::TableDef::CreateField("Name", FieldType::Text, 20));
        database.Append(table);
        Recordset rows = database.OpenRecordset("Parts");
        rows.AddNew();
        rows["Name"] = "bumper";
        rows.Update();
    }
    Database again = Open(";pwd=Sesame 7\xC3\xA9");
    Recordset rows = again.OpenRecordset("Parts");
    EXPECT_EQ(rows["Name"].Value(), Value("bumper"));
    EXPECT_TRUE(jet::check::CheckIntegrity(files_, kFile, {}, kSecret).Clean());
    EXPECT_EQ(ErrorOf([&] { (void)jet::check::CheckIntegrity(files_, kFile); }), 3031);
}

TEST(PlainFileTest, OpensWithAnyPassword)
{
    jet::io::MemoryFileSystem files;
    DBEngine engine({[] { return kNow; }}, files);
    engine.CreateDatabase(kFile);
    EXPECT_EQ(ErrorOf([&] {
                  (void)engine.DefaultWorkspace().OpenDatabase(kFile, false, false, ";pwd=any");
              }),
              0);
}

}  // namespace
}  // namespace dao
