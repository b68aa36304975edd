// SPDX-License-Identifier: Apache-2.0
#include "jet/table/NativeTable.h"

#include "jet/format/DataPage.h"
#include "jet/pages/UsageMap.h"
#include "tests/jet/table/TableFixture.h"

namespace {

using namespace std::string_literals;
using jet::format::DataPage;
using jet::format::PageNumber;
using jet::format::SlotKind;
using tests::Assignments;
using tests::Column;
using tests::ColumnType;
using tests::ErrorOf;
using tests::NativeTable;
using tests::RowId;
using tests::RowValues;
using tests::Scanned;
using tests::ScannedColumn;
using tests::Value;

// Jobs: a counter as primary key, an employee that may repeat, a text, a boolean.
class NativeTableTest : public tests::TableFixture,
                        public testing::WithParamInterface<const jet::format::FileVersion*> {
protected:
    NativeTableTest() : TableFixture(*GetParam())
    {
        jet::catalog::NewTable design;
        design.name = "Jobs";
        design.columns = {Column("JobID", ColumnType::Long), Column("EmpID", ColumnType::Long),
                          Column("Notes", ColumnType::Text, 255),
                          Column("More", ColumnType::Text, 255),
                          Column("Done", ColumnType::Boolean)};
        design.columns[0].autoNumber = true;
        design.indexes = {{.name = "PrimaryKey",
                           .columns = {{.column = "JobID"}},
                           .primary = true,
                           .unique = true,
                           .required = true},
                          {.name = "EmpID", .columns = {{.column = "EmpID"}}}};
        jobs_ = Make(design);
    }

    RowId Add(int job, int employee, const std::string& notes)
    {
        return jobs_->Insert(Assignments({job, employee, notes, "more", true}));
    }
    RowValues RowAt(RowId row)
    {
        return tests::ValuesOf(*jobs_, jobs_->View(jobs_->Fetch(row).value()));
    }
    SlotKind KindOf(RowId row)
    {
        const auto page = pager_->Read(row.page);
        return DataPage(page.Bytes()).Kind(row.slot);
    }
    std::vector<PageNumber> OwnedPages()
    {
        return jet::pages::UsageMap(*pager_, jobs_->Definition().ownedPages).Pages();
    }
    std::vector<PageNumber> PagesWithRoom()
    {
        return jet::pages::UsageMap(*pager_, jobs_->Definition().freePages).Pages();
    }
    // As long as a text can be, with a letter that keeps Jet 4 from compressing it.
    static Value Longest(char letter)
    {
        const bool wide = GetParam()->bytesPerCharacter == 2;
        return (wide ? "\xCE\xB1"s : "a"s) + std::string(254, letter);
    }
    std::vector<RowId> Find(int employee)
    {
        const std::vector<jet::table::Assignment> key{{1, employee}};
        return jobs_->FindByKey(key).value();
    }

    std::unique_ptr<NativeTable> jobs_;
};
INSTANTIATE_TEST_SUITE_P(Versions, NativeTableTest,
                         testing::Values(&jet::format::kJet3, &jet::format::kJet4),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param->name[0]);
                         });

TEST_P(NativeTableTest, NewTableHasNoRowsAndNoPages)
{
    EXPECT_TRUE(Scanned(*jobs_).empty());
    EXPECT_EQ(jobs_->RowCount(), 0U);
    EXPECT_TRUE(OwnedPages().empty());
}

TEST_P(NativeTableTest, InsertedRowIsReadBack)
{
    const RowId row = Add(1, 7, "bumper");
    EXPECT_EQ(RowAt(row), (RowValues{1, 7, "bumper", "more", true}));
    EXPECT_EQ(jobs_->RowCount(), 1U);
}

TEST_P(NativeTableTest, WhatIsNotAssignedIsNullOrFalse)
{
    const std::vector<jet::table::Assignment> values{{0, 5}};
    EXPECT_EQ(RowAt(jobs_->Insert(values)), (RowValues{5, {}, {}, {}, false}));
}

TEST_P(NativeTableTest, UpdateKeepsWhatIsNotAssigned)
{
    const RowId row = Add(1, 7, "bumper");
    const std::vector<jet::table::Assignment> values{{2, "fender"}, {4, false}};
    jobs_->Update(row, values);
    EXPECT_EQ(RowAt(row), (RowValues{1, 7, "fender", "more", false}));
    EXPECT_EQ(jobs_->RowCount(), 1U);
}

TEST_P(NativeTableTest, NullReplacesAValueAndAValueNull)
{
    const RowId row = Add(1, 7, "bumper");
    const std::vector<jet::table::Assignment> clear{{1, {}}, {2, {}}, {4, {}}};
    jobs_->Update(row, clear);
    EXPECT_EQ(RowAt(row), (RowValues{1, {}, {}, "more", false}));
    const std::vector<jet::table::Assignment> fill{{1, 8}, {2, ""}};
    jobs_->Update(row, fill);
    EXPECT_EQ(RowAt(row), (RowValues{1, 8, "", "more", false}));
}

TEST_P(NativeTableTest, DeletedRowIsGone)
{
    const RowId first = Add(1, 7, "bumper");
    const RowId second = Add(2, 7, "door");
    jobs_->Delete(first);
    EXPECT_FALSE(jobs_->Fetch(first).has_value());
    EXPECT_EQ(ScannedColumn(*jobs_, 0), (RowValues{2}));
    EXPECT_EQ(Find(7), (std::vector<RowId>{second}));
    EXPECT_EQ(jobs_->RowCount(), 1U);
    EXPECT_EQ(ErrorOf([&] { jobs_->Delete(first); }), 3167);
    const std::vector<jet::table::Assignment> values{{1, 8}};
    EXPECT_EQ(ErrorOf([&] { jobs_->Update(first, values); }), 3167);
}

TEST_P(NativeTableTest, DuplicateKeyIsRefusedAndNothingChanges)
{
    Add(1, 7, "bumper");
    const RowId second = Add(2, 8, "door");
    const auto before = pager_->ChangeCount();
    EXPECT_EQ(ErrorOf([&] { Add(1, 9, "hood"); }), 3022);
    const std::vector<jet::table::Assignment> values{{0, 1}, {1, 9}};
    EXPECT_EQ(ErrorOf([&] { jobs_->Update(second, values); }), 3022);
    EXPECT_EQ(pager_->ChangeCount(), before);
    EXPECT_EQ(RowAt(second), (RowValues{2, 8, "door", "more", true}));
    EXPECT_TRUE(Find(9).empty());
}

TEST_P(NativeTableTest, NullInThePrimaryKeyIsRefused)
{
    const std::vector<jet::table::Assignment> values{{1, 7}};
    EXPECT_EQ(ErrorOf([&] { jobs_->Insert(values); }), 3058);
    EXPECT_EQ(jobs_->RowCount(), 0U);
}

TEST_P(NativeTableTest, RowMayKeepItsOwnKey)
{
    const RowId row = Add(1, 7, "bumper");
    const std::vector<jet::table::Assignment> values{{0, 1}, {2, "door"}};
    jobs_->Update(row, values);
    EXPECT_EQ(RowAt(row)[2], Value("door"));
}

TEST_P(NativeTableTest, IndexFollowsAChangedKey)
{
    const RowId row = Add(1, 7, "bumper");
    const std::vector<jet::table::Assignment> values{{1, 8}};
    jobs_->Update(row, values);
    EXPECT_TRUE(Find(7).empty());
    EXPECT_EQ(Find(8), (std::vector<RowId>{row}));
}

TEST_P(NativeTableTest, RowsFoundByKeyStandInStorageOrder)
{
    const RowId first = Add(3, 7, "bumper");
    Add(2, 8, "door");
    const RowId third = Add(1, 7, "hood");
    EXPECT_EQ(Find(7), (std::vector<RowId>{first, third}));
}

TEST_P(NativeTableTest, WithoutAnIndexNothingIsAnswered)
{
    Add(1, 7, "bumper");
    const std::vector<jet::table::Assignment> notes{{2, "bumper"}};
    const std::vector<jet::table::Assignment> both{{0, 1}, {1, 7}};
    const std::vector<jet::table::Assignment> null{{1, {}}};
    EXPECT_EQ(jobs_->FindByKey(notes), std::nullopt);
    EXPECT_EQ(jobs_->FindByKey(both), std::nullopt);
    EXPECT_EQ(jobs_->FindByKey(null), std::nullopt);
    EXPECT_EQ(jobs_->FindByKey({}), std::nullopt);
}

TEST_P(NativeTableTest, CounterGoesUpEvenWhenTheRowIsNeverStored)
{
    EXPECT_EQ(jobs_->NextAutoNumber(), 1);
    EXPECT_EQ(jobs_->NextAutoNumber(), 2);
    Add(2, 7, "bumper");
    EXPECT_EQ(jobs_->NextAutoNumber(), 3);
}

TEST_P(NativeTableTest, LargerNumberRaisesTheCounterAndSmallerOnesDoNot)
{
    Add(100, 7, "bumper");
    EXPECT_EQ(jobs_->NextAutoNumber(), 101);
    Add(50, 7, "door");
    Add(-3, 7, "hood");
    EXPECT_EQ(jobs_->NextAutoNumber(), 102);
}

TEST_P(NativeTableTest, SecondObjectSeesWhatTheFirstOneDoes)
{
    NativeTable other(pager_, jobs_->Definition().page);
    const RowId row = Add(1, 7, "bumper");
    EXPECT_EQ(other.RowCount(), 1U);
    EXPECT_TRUE(other.Fetch(row).has_value());
    EXPECT_EQ(jobs_->NextAutoNumber(), 2);
    EXPECT_EQ(other.NextAutoNumber(), 3);
    EXPECT_EQ(ErrorOf([&] { other.Insert(Assignments({1, 7})); }), 3022);
    other.Delete(row);
    EXPECT_TRUE(Scanned(*jobs_).empty());
    EXPECT_EQ(jobs_->RowCount(), 0U);
}

TEST_P(NativeTableTest, StorageOrderIsOrderOfEntryOverManyPages)
{
    // A free page below the table's own pages must not take later rows.
    RowValues entered;
    std::vector<RowId> rows;
    for (int job = 1; job <= 60; ++job) {
        rows.push_back(Add(job, job % 5, std::string(200, 'x')));
        entered.emplace_back(job);
    }
    ASSERT_GT(OwnedPages().size(), 5U);
    for (std::size_t i = 0; i < 20; ++i)
        jobs_->Delete(rows[i]);
    entered.erase(entered.begin(), entered.begin() + 20);
    for (int job = 61; job <= 100; ++job) {
        Add(job, job % 5, std::string(200, 'y'));
        entered.emplace_back(job);
    }
    EXPECT_EQ(ScannedColumn(*jobs_, 0), entered);
}

TEST_P(NativeTableTest, EmptyPagesAreGivenBackButTheLast)
{
    std::vector<RowId> rows;
    for (int job = 1; job <= 60; ++job)
        rows.push_back(Add(job, 1, std::string(200, 'x')));
    const PageNumber last = rows.back().page;
    for (const RowId row : rows)
        jobs_->Delete(row);
    EXPECT_EQ(OwnedPages(), (std::vector<PageNumber>{last}));
    EXPECT_EQ(jobs_->RowCount(), 0U);
}

TEST_P(NativeTableTest, PlaceOfADeletedRowIsNeverUsedAgain)
{
    std::vector<RowId> rows;
    for (int round = 0; round < 3; ++round) {
        for (int job = 1; job <= 30; ++job)
            rows.push_back(Add(job, 1, std::string(200, 'x')));
        for (std::size_t i = rows.size() - 30; i < rows.size(); ++i)
            jobs_->Delete(rows[i]);
    }
    std::vector<RowId> sorted = rows;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end());
    EXPECT_EQ(OwnedPages().size(), 1U);
}

TEST_P(NativeTableTest, RowThatOutgrowsItsPageMovesAndKeepsItsPlace)
{
    std::vector<RowId> rows;
    for (int job = 1; job <= 20; ++job)
        rows.push_back(Add(job, 7, std::string(165, 'x')));
    const std::vector<jet::table::Assignment> grow{{2, Longest('z')}};
    jobs_->Update(rows[3], grow);
    EXPECT_EQ(KindOf(rows[3]), SlotKind::Pointer);
    EXPECT_EQ(RowAt(rows[3])[2], grow[0].value);
    EXPECT_EQ(ScannedColumn(*jobs_, 0)[3], Value(4));
    EXPECT_EQ(Find(7), rows);
    EXPECT_EQ(jobs_->RowCount(), 20U);

    // It grows again where it is, and comes home when it fits there.
    const std::vector<jet::table::Assignment> more{{3, Longest('z')}};
    jobs_->Update(rows[3], more);
    EXPECT_EQ(KindOf(rows[3]), SlotKind::Pointer);
    EXPECT_EQ(RowAt(rows[3]), (RowValues{4, 7, grow[0].value, more[0].value, true}));
    const std::vector<jet::table::Assignment> shrink{{2, "s"}, {3, "s"}};
    jobs_->Update(rows[3], shrink);
    EXPECT_EQ(KindOf(rows[3]), SlotKind::Row);
    EXPECT_EQ(RowAt(rows[3]), (RowValues{4, 7, "s", "s", true}));
    EXPECT_EQ(Scanned(*jobs_).size(), 20U);
}

TEST_P(NativeTableTest, MovedRowIsDeletedAtBothPlaces)
{
    std::vector<RowId> rows;
    for (int job = 1; job <= 20; ++job)
        rows.push_back(Add(job, 7, std::string(165, 'x')));
    const std::vector<jet::table::Assignment> grow{{2, Longest('z')}};
    jobs_->Update(rows[3], grow);
    jobs_->Delete(rows[3]);
    EXPECT_FALSE(jobs_->Fetch(rows[3]).has_value());
    int left = 0;
    for (const PageNumber page : OwnedPages()) {
        const auto bytes = pager_->Read(page);
        const DataPage view(bytes.Bytes());
        for (std::uint16_t slot = 0; slot < view.SlotCount(); ++slot)
            if (view.Kind(slot) != SlotKind::Deleted) ++left;
    }
    EXPECT_EQ(left, 19);
}

TEST_P(NativeTableTest, PagesWithRoomAreListed)
{
    std::vector<RowId> rows;
    for (int job = 1; job <= 60; ++job)
        rows.push_back(Add(job, 7, std::string(200, 'x')));
    EXPECT_EQ(PagesWithRoom(), (std::vector<PageNumber>{OwnedPages().back()}));
    for (std::size_t i = 0; i < 6; ++i)
        jobs_->Delete(rows[i]);
    ASSERT_EQ(rows[6].page, rows[0].page);
    EXPECT_EQ(PagesWithRoom(), (std::vector<PageNumber>{rows[0].page, OwnedPages().back()}));
}

TEST_P(NativeTableTest, CursorMeetsRowsAddedBehindItAndPassesOverDeletedOnes)
{
    const RowId first = Add(1, 7, "bumper");
    const RowId second = Add(2, 7, "door");
    const auto rows = jobs_->Scan();
    ASSERT_TRUE(rows->Next());
    EXPECT_EQ(rows->Id(), first);
    jobs_->Delete(first);
    jobs_->Delete(second);
    const RowId third = Add(3, 7, "hood");
    ASSERT_TRUE(rows->Next());
    EXPECT_EQ(rows->Id(), third);
    EXPECT_FALSE(rows->Next());
    const RowId fourth = Add(4, 7, "roof");
    ASSERT_TRUE(rows->Next());
    EXPECT_EQ(rows->Id(), fourth);
}

TEST_P(NativeTableTest, CursorGoesOnWhenItsPageWasGivenBack)
{
    std::vector<RowId> rows;
    for (int job = 1; job <= 60; ++job)
        rows.push_back(Add(job, 7, std::string(200, 'x')));
    const auto cursor = jobs_->Scan();
    ASSERT_TRUE(cursor->Next());
    std::size_t kept = 0;
    while (rows[kept].page == rows[0].page)
        jobs_->Delete(rows[kept++]);
    ASSERT_TRUE(cursor->Next());
    EXPECT_EQ(cursor->Id(), rows[kept]);
}

TEST_P(NativeTableTest, TooLargeARowIsRefused)
{
    jet::catalog::NewTable design;
    design.name = "Wide";
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "H", "I"})
        design.columns.push_back(Column(name, ColumnType::Text, 255));
    const auto wide = Make(design);
    const Value text = Longest('x');
    EXPECT_EQ(ErrorOf([&] { wide->Insert(Assignments(RowValues(9, text))); }), 3047);
    EXPECT_EQ(wide->RowCount(), 0U);
    const RowId row = wide->Insert(Assignments(RowValues(7, text)));
    EXPECT_EQ(ErrorOf([&] { wide->Update(row, Assignments(RowValues(9, text))); }), 3047);
    EXPECT_EQ(tests::ValuesOf(*wide, wide->View(wide->Fetch(row).value()))[6], text);
}

TEST_P(NativeTableTest, UnusableTextsAreRefusedBeforeAnythingChanges)
{
    jet::catalog::NewTable design;
    design.name = "Names";
    design.columns = {Column("Name", ColumnType::Text, 10)};
    design.indexes = {{.name = "Name", .columns = {{.column = "Name"}}}};
    const auto names = Make(design);
    const auto before = pager_->ChangeCount();
    EXPECT_EQ(ErrorOf([&] { names->Insert(Assignments({"12345678901"})); }), 3163);
    EXPECT_EQ(ErrorOf([&] { names->Insert(Assignments({7})); }), 3421);
    EXPECT_EQ(ErrorOf([&] { names->Insert(Assignments({"\xE4\xB8\xAD"})); }), 3421);  // no weight
    EXPECT_EQ(pager_->ChangeCount(), before);
    EXPECT_EQ(names->RowCount(), 0U);
}

TEST_P(NativeTableTest, ReadOnlyFileIsNotWritten)
{
    Add(1, 7, "bumper");
    const PageNumber definition = jobs_->Definition().page;
    const auto pager = jet::pages::Pager::Open(files_, "test.mdb", jet::io::OpenMode::ReadOnly);
    NativeTable jobs(pager, definition);
    EXPECT_EQ(jobs.RowCount(), 1U);
    EXPECT_EQ(ErrorOf([&] { jobs.Insert(Assignments({2, 7})); }), 3027);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(jobs.NextAutoNumber()); }), 3027);
}

TEST_P(NativeTableTest, SeveralChangesMakeOneWriteSet)
{
    jet::pages::WriteSet changes(*pager_);
    const RowId row = jobs_->Insert(changes, Assignments({1, 7, "bumper"}));
    jobs_->Insert(changes, Assignments({2, 7, "door"}));
    const std::vector<jet::table::Assignment> values{{1, 8}};
    jobs_->Update(changes, row, values);
    EXPECT_EQ(jobs_->RowCount(), 2U);
    jobs_->Delete(changes, row);
    changes.Commit();
    EXPECT_EQ(ScannedColumn(*jobs_, 0), (RowValues{2}));
}

TEST_P(NativeTableTest, DroppedWriteSetLeavesNothing)
{
    {
        jet::pages::WriteSet changes(*pager_);
        jobs_->Insert(changes, Assignments({1, 7, "bumper"}));
    }
    EXPECT_EQ(jobs_->RowCount(), 0U);
    EXPECT_TRUE(Scanned(*jobs_).empty());
    Add(1, 7, "bumper");
}

}  // namespace
