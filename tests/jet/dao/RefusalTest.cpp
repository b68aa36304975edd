// SPDX-License-Identifier: Apache-2.0
// Tests of what is refused because it is too large: rows, fields, a full disk, a full file.
#include "jet/io/StdFile.h"
#include "jet/pages/WriteSet.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

#include <filesystem>

namespace dao {
namespace {

using base::Value;

class RefusalTest : public DaoKindTest {
protected:
    // A table of this many texts of 255 characters, T1 and so on.
    void MakeTexts(int count)
    {
        TableDef table("Texts");
        for (int i = 1; i <= count; ++i)
            table.Append(TableDef::CreateField("T" + std::to_string(i), FieldType::Text, 255));
        database.Append(table);
    }
    // What storing a new row says: all fields but the last full, the last with this many
    // characters.
    [[nodiscard]] int Adding(Recordset& rows, int last)
    {
        rows.AddNew();
        for (int i = 0; i + 1 < rows.FieldCount(); ++i)
            rows[i] = std::string(255, 'x');
        rows[rows.FieldCount() - 1] = std::string(static_cast<std::size_t>(last), 'x');
        return ErrorOf([&] { rows.Update(); });
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, RefusalTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RefusalTest, RowIsAsLargeAsAPageAllows)
{
    MakeTexts(8);
    Recordset rows = Open("Texts");
    int longest = 1;
    while (longest < 255 && Adding(rows, longest + 1) == 0)
        ++longest;
    EXPECT_EQ(longest, IsJet3(GetParam()) ? 208 : 233);
    EXPECT_EQ(rows.EditMode(), EditMode::Add);
    const int stored = rows.RecordCount();
    EXPECT_EQ(Adding(rows, longest + 1), 3047);
    EXPECT_EQ(Adding(rows, longest), 0);
    EXPECT_EQ(rows.RecordCount(), stored + 1);
}

TEST_P(RefusalTest, EditThatMakesARowTooLargeLeavesItAsItWas)
{
    MakeTexts(8);
    Recordset rows = Open("Texts");
    ASSERT_EQ(Adding(rows, 10), 0);
    rows.MoveFirst();
    rows.Edit();
    rows["T8"] = std::string(255, 'y');
    EXPECT_EQ(FailureOf([&] { rows.Update(); }), "3047 Record is too large.");
    rows.CancelUpdate();
    EXPECT_EQ(rows["T8"].Value(), Value(std::string(10, 'x')));
    EXPECT_EQ(ErrorOf([&] { database.Execute("UPDATE Texts SET T8 = T7", kFailOnError); }), 3047);
}

TEST_P(RefusalTest, TableHasUpTo255Fields)
{
    TableDef table("Wide");
    for (int i = 1; i <= 255; ++i)
        table.Append(TableDef::CreateField("F" + std::to_string(i), FieldType::Integer));
    TableDef tooWide = table;
    tooWide.Append(TableDef::CreateField("F256", FieldType::Integer));
    EXPECT_EQ(FailureOf([&] { database.Append(tooWide); }), "3190 Too many fields defined.");
    database.Append(table);
    Recordset rows = Open("Wide");
    rows.AddNew();
    rows["F255"] = 7;
    rows.Update();
    rows.MoveFirst();
    EXPECT_EQ(rows["F255"].Value(), Value(std::int16_t{7}));
    EXPECT_TRUE(rows["F1"].Value().IsNull());
}

TEST_P(RefusalTest, FieldsAndIndexesHaveTheirLimits)
{
    TableDef table("T");
    table.Append(TableDef::CreateField("Text", FieldType::Text, 256));
    EXPECT_EQ(FailureOf([&] { database.Append(table); }), "3017 The size of a field is too long.");
    TableDef keyed("Keyed");
    IndexDef index;
    index.name = "All";
    for (int i = 1; i <= 11; ++i) {
        const std::string name = "F" + std::to_string(i);
        keyed.Append(TableDef::CreateField(name, FieldType::Long));
        index.fields.push_back({name, true});
    }
    keyed.Append(index);
    EXPECT_EQ(ErrorOf([&] { database.Append(keyed); }), 3001);
}

// The disk is full at the n-th operation, for every n: nothing of the row is stored, and the same
// Update succeeds once there is room.
class FullDiskTest : public testing::TestWithParam<FileKind> {
protected:
    FullDiskTest() : disk(memory), engine({[] { return kNow; }}, disk)
    {
        tests::CreateDatabase(engine, kFile, GetParam());
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
        TableDef table("Notes");
        table.Append(TableDef::CreateField("Id", FieldType::Long));
        table.Append(TableDef::CreateField("Note", FieldType::Memo));
        database.Append(table);
        rows = database.OpenRecordset("Notes");
    }
    // A pending new row with a memo of this many characters.
    void Begin(std::size_t length)
    {
        rows.AddNew();
        rows["Note"] = std::string(length, 'm');
    }

    jet::io::MemoryFileSystem memory;
    tests::FaultFileSystem disk;
    DBEngine engine;
    Database database;
    Recordset rows;
};

INSTANTIATE_TEST_SUITE_P(Kinds, FullDiskTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(FullDiskTest, MemoOf64KBIsStoredWholeOrNotAtAll)
{
    Begin(65536);
    int refusals = 0;
    for (std::size_t operation = 0; rows.EditMode() == EditMode::Add; operation += 5) {
        disk.FailOnce(operation, 3026);
        const int number = ErrorOf([&] { rows.Update(); });
        if (number == 0) break;
        ++refusals;
        ASSERT_EQ(number, 3026) << operation;
        EXPECT_EQ(rows.RecordCount(), 0) << operation;
        EXPECT_CLEAN(memory, kFile) << operation;
        ASSERT_LT(refusals, 100);
    }
    EXPECT_GE(refusals, 3);
    rows.MoveFirst();
    EXPECT_EQ(rows["Note"].Value(), Value(std::string(65536, 'm')));
    EXPECT_CLEAN(memory, kFile);
}

TEST_P(FullDiskTest, MemoOf4MBThatFindsNoRoomLeavesTheFileAsItWas)
{
    const std::size_t before = memory.Content(kFile).size();
    Begin(std::size_t{4} << 20);
    disk.FailOnce(1000, 3026);
    EXPECT_EQ(FailureOf([&] { rows.Update(); }), "3026 Not enough space on disk.");
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_EQ(memory.Content(kFile).size(), before);
    EXPECT_CLEAN(memory, kFile);
}

// A file as large as its format allows, most of it holes that the disk does not keep.
class FullFileTest : public testing::TestWithParam<FileKind> {};

INSTANTIATE_TEST_SUITE_P(Kinds, FullFileTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(FullFileTest, FileDoesNotGrowBeyondItsFormat)
{
    const bool jet3 = IsJet3(GetParam());
    const std::uintmax_t limit = std::uintmax_t{1} << (jet3 ? 30 : 31);
    const tests::ScratchFolder scratch;
    const std::string path = (scratch.Path() / "Full.mdb").string();
    jet::io::StdFileSystem disk;
    DBEngine engine({[] { return kNow; }}, disk);
    tests::CreateDatabase(engine, path, GetParam());
    const std::uintmax_t page = jet3 ? 2048 : 4096;
    std::filesystem::resize_file(path, limit - page);
    const auto pager = jet::pages::Pager::Open(disk, path, jet::io::OpenMode::ReadWrite);
    jet::pages::WriteSet changes(*pager);
    static_cast<void>(changes.AppendPage());
    EXPECT_EQ(FailureOf([&] { static_cast<void>(changes.AppendPage()); }),
              "3036 Database has reached maximum size.");
    changes.Commit();
    EXPECT_EQ(std::filesystem::file_size(path), limit);
}

}  // namespace
}  // namespace dao
