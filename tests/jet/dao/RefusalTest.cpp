// SPDX-License-Identifier: Apache-2.0
// Tests of what is refused because it is too large: rows, fields, a full disk, a full file.
#include "jet/format/DataPage.h"
#include "jet/io/StdFile.h"
#include "jet/pages/MapRow.h"
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

INSTANTIATE_TEST_SUITE_P(Kinds, RefusalTest, testing::ValuesIn(kFileKinds),
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

INSTANTIATE_TEST_SUITE_P(Kinds, FullDiskTest, testing::ValuesIn(kFileKinds),
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
        EXPECT_SPOTLESS(memory, kFile) << operation;
        ASSERT_LT(refusals, 100);
    }
    EXPECT_GE(refusals, 3);
    rows.MoveFirst();
    EXPECT_EQ(rows["Note"].Value(), Value(std::string(65536, 'm')));
    EXPECT_SPOTLESS(memory, kFile);
}

TEST_P(FullDiskTest, MemoOf4MBThatFindsNoRoomLeavesTheFileAsItWas)
{
    const std::size_t before = memory.Content(kFile).size();
    Begin(std::size_t{4} << 20);
    disk.FailOnce(1000, 3026);
    EXPECT_EQ(FailureOf([&] { rows.Update(); }), "3026 Not enough space on disk.");
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_EQ(memory.Content(kFile).size(), before);
    EXPECT_SPOTLESS(memory, kFile);
}

// A file as large as its format allows, most of it holes that the disk does not keep.
class FullFileTest : public testing::TestWithParam<FileKind> {};

INSTANTIATE_TEST_SUITE_P(Kinds, FullFileTest, testing::ValuesIn(kFileKinds),
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

// The shop's own way to that limit: rows are added until no more go in.
class NearlyFullFileTest : public testing::TestWithParam<FileKind> {
protected:
    // A file of two fields and few rows that has this many pages left to grow by; all others are
    // in use, as far as its map of free pages tells.
    void Make(std::uint32_t pagesLeft)
    {
        tests::CreateDatabase(engine_, path_, GetParam());
        TableDef table("Jobs");
        table.Append(TableDef::CreateField("Id", FieldType::Long));
        table.Append(TableDef::CreateField("Note", FieldType::Text, 255));
        table.Append(Primary("Id"));
        engine_.DefaultWorkspace().OpenDatabase(path_).Append(table);
        const std::uintmax_t page = IsJet3(GetParam()) ? 2048 : 4096;
        const std::uint32_t size =
            static_cast<std::uint32_t>(std::filesystem::file_size(path_) / page);
        const std::uintmax_t limit = std::uintmax_t{1} << (IsJet3(GetParam()) ? 30 : 31);
        std::filesystem::resize_file(path_, limit - page * pagesLeft);
        UseAllPages(size);
    }

    // The map of free pages, spread over bitmap pages from `first` on.
    void UseAllPages(std::uint32_t first)
    {
        const auto pager = jet::pages::Pager::Open(disk_, path_, jet::io::OpenMode::ReadWrite);
        const std::uint32_t each = jet::pages::PagesPerBitmap(pager->Version().pageSize);
        jet::pages::WriteSet changes(*pager);
        const jet::format::MutableSpan map =
            jet::format::RowBytes(changes.Change(jet::format::PageNumber{1}), 0);
        std::fill(map.begin(), map.end(), std::byte{0});
        map[0] = std::byte{1};
        for (std::uint32_t i = 0; std::uint64_t{i} * each < pager->PageCount(); ++i) {
            jet::format::WriteU32(map, 1 + std::size_t{4} * i, first + i);
            const jet::format::MutableSpan bitmap =
                changes.Change(jet::format::PageNumber{first + i});
            std::fill(bitmap.begin(), bitmap.end(), std::byte{0});  // a hole is noise when decoded
            jet::format::WriteU32(bitmap, 0, jet::pages::kBitmapPageStart);
            for (std::uint32_t bit = 0; bit < each; ++bit)
                if (std::uint64_t{i} * each + bit >= pager->PageCount())
                    jet::pages::SetBit(bitmap.subspan(jet::pages::kBitmapPageHead), bit, true);
        }
        changes.Commit();
    }

    static std::string NoteOf(int id) { return std::to_string(id) + std::string(200, 'n'); }

    // Adds rows from `id` on until one is refused; the number of the first that was not stored.
    int AddUntilFull(Database& database, int id)
    {
        Recordset rows = database.OpenRecordset("Jobs");
        for (;; ++id) {
            rows.AddNew();
            rows["Id"] = id;
            rows["Note"] = NoteOf(id);
            const std::string failure = FailureOf([&] { rows.Update(); });
            if (failure.empty()) continue;
            EXPECT_EQ(failure, "3036 Database has reached maximum size.");
            rows.CancelUpdate();
            return id;
        }
    }

    tests::ScratchFolder scratch_;
    std::string path_ = (scratch_.Path() / "Full.mdb").string();
    jet::io::StdFileSystem disk_;
    DBEngine engine_{{[] { return kNow; }}, disk_};
};
INSTANTIATE_TEST_SUITE_P(Kinds, NearlyFullFileTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(NearlyFullFileTest, RowThatFindsNoRoomIsToldAndNoOtherIsLost)
{
    constexpr int kPagesLeft = 12;
    Make(kPagesLeft);
    int stored = 0;
    {
        Database database = engine_.DefaultWorkspace().OpenDatabase(path_);
        stored = AddUntilFull(database, 0);
        EXPECT_GT(stored, 5 * kPagesLeft);
        // It stays so, and nothing else is hindered.
        EXPECT_EQ(AddUntilFull(database, stored), stored);
        database.Execute("UPDATE Jobs SET Note = 'x' WHERE Id = 3", kFailOnError);
    }
    Database database = engine_.DefaultWorkspace().OpenDatabase(path_);
    Recordset rows = database.OpenRecordset("SELECT * FROM Jobs ORDER BY Id");
    for (int id = 0; id < stored; ++id, rows.MoveNext()) {
        ASSERT_EQ(rows["Id"].Value(), Value(id));
        EXPECT_EQ(rows["Note"].Value(), Value(id == 3 ? std::string("x") : NoteOf(id)));
    }
    EXPECT_TRUE(rows.Eof());
    // Where rows go there is room again, though it lies before the last row.
    database.Execute("DELETE FROM Jobs WHERE Id < " + std::to_string(stored / 2), kFailOnError);
    const int again = AddUntilFull(database, stored);
    EXPECT_GT(again, stored + stored / 4);
    rows = database.OpenRecordset("SELECT Count(*) AS N FROM Jobs");
    EXPECT_EQ(rows["N"].Value(), Value(again - stored / 2));
    rows.Close();
    database.Close();
    EXPECT_LE(std::filesystem::file_size(path_),
              std::uintmax_t{1} << (IsJet3(GetParam()) ? 30 : 31));
    // The pages that fill it serve nothing.
    EXPECT_CLEAN(disk_, path_);
}

}  // namespace
}  // namespace dao
