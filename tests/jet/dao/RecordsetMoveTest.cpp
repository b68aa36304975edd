// SPDX-License-Identifier: Apache-2.0
// Tests of moves, counts and bookmarks of a record set.
#include "tests/jet/dao/DaoFixture.h"

namespace dao {
namespace {

class RecordsetMoveTest : public DaoKindTest {
protected:
    RecordsetMoveTest() { MakeEmployees(); }

    void AddTwo()
    {
        Add(7, "Smith, Ann");
        Add(8, "Jones, Bob");
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, RecordsetMoveTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RecordsetMoveTest, EmptySetHasNoCurrentRecord)
{
    Recordset rows = Open("SELECT * FROM LDEmp");
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_EQ(rows.AbsolutePosition(), -1);
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.MovePrevious(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.Refresh(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { (void)rows["Name"].Value(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { (void)rows.Bookmark(); }), 3021);
    rows.FindFirst("EmpID = 7");
    EXPECT_TRUE(rows.NoMatch());
    EXPECT_EQ(ErrorOf([&] { rows.AddNew(); }), 0);
}

TEST_P(RecordsetMoveTest, OpensOnTheFirstRow)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    EXPECT_FALSE(rows.Bof());
    EXPECT_FALSE(rows.Eof());
    EXPECT_FALSE(rows.NoMatch());
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{7}));
    EXPECT_EQ(rows.AbsolutePosition(), 0);
}

TEST_P(RecordsetMoveTest, BehindTheLastRowIsEofAndNoFurther)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.MoveNext();
    EXPECT_FALSE(rows.Eof());
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_FALSE(rows.Bof());
    EXPECT_EQ(ErrorOf([&] { rows.MoveNext(); }), 3021);
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { (void)rows["EmpID"].Value(); }), 3021);
    rows.MovePrevious();
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{8}));
}

TEST_P(RecordsetMoveTest, BeforeTheFirstRowIsBofAndNoFurther)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.MovePrevious();
    EXPECT_TRUE(rows.Bof());
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { rows.MovePrevious(); }), 3021);
    EXPECT_EQ(ErrorOf([&] { rows.Refresh(); }), 3021);
    rows.MoveNext();
    EXPECT_FALSE(rows.Bof());
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{7}));
}

TEST_P(RecordsetMoveTest, FirstAndLastWorkFromAnywhere)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.MoveLast();
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{8}));
    EXPECT_EQ(rows.AbsolutePosition(), 1);
    rows.MoveNext();
    rows.MoveFirst();
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{7}));
    rows.MovePrevious();
    rows.MoveLast();
    EXPECT_FALSE(rows.Bof());
}

TEST_P(RecordsetMoveTest, CountIsTheRowsReachedAndExactAtTheEnd)
{
    AddTwo();
    Add(9, "Miller");
    Recordset rows = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 3);
    rows.MoveFirst();
    EXPECT_EQ(rows.RecordCount(), 3);
}

TEST_P(RecordsetMoveTest, TableTypeSetKnowsItsExactCount)
{
    AddTwo();
    Recordset rows = Open("LDEmp");
    EXPECT_EQ(rows.Type(), RecordsetType::Table);
    EXPECT_EQ(rows.RecordCount(), 2);
    EXPECT_EQ(ErrorOf([&] { rows.FindFirst("EmpID = 7"); }), 3251);
    EXPECT_EQ(ErrorOf([&] { rows.Requery(); }), 3251);
}

TEST_P(RecordsetMoveTest, DeletedRowStaysThePositionUntilTheNextMove)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.Delete();
    EXPECT_FALSE(rows.Bof());
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { (void)rows["EmpID"].Value(); }), 3167);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3167);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), 3167);
    rows.MoveNext();
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{8}));
    rows.MovePrevious();
    EXPECT_TRUE(rows.Bof());
}

TEST_P(RecordsetMoveTest, DeletingTheOnlyRowShowsAtTheNextMove)
{
    Add(7, "Smith, Ann");
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.Delete();
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(rows.RecordCount(), 0);
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), 3021);
    EXPECT_TRUE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
}

TEST_P(RecordsetMoveTest, RowDeletedThroughAnotherSetIsMetAsDeleted)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp ORDER BY EmpID");
    Recordset other = Open("SELECT * FROM LDEmp WHERE EmpID = 8");
    other.Delete();
    rows.MoveNext();
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { (void)rows["EmpID"].Value(); }), 3167);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3167);
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
}

TEST_P(RecordsetMoveTest, AddedRowStandsAtTheEndAndIsNotCurrent)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp WHERE EmpID < 10 ORDER BY EmpID DESC");
    rows.AddNew();
    rows["EmpID"] = std::int32_t{99};
    rows.Update();
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{8}));
    EXPECT_EQ(rows.RecordCount(), 3);
    EXPECT_EQ(Column(rows, "EmpID"), (std::vector<std::string>{"8", "7", "99"}));
    rows.MovePrevious();
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{99}));
    rows.SetBookmark(rows.LastModified());
    EXPECT_EQ(rows.AbsolutePosition(), 2);
}

TEST_P(RecordsetMoveTest, RowAddedWhileWalkingIsVisitedOnceAtTheEnd)
{
    AddTwo();
    Add(9, "Miller");
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.AddNew();
    rows["EmpID"] = std::int32_t{10};
    rows.Update();
    EXPECT_EQ(Column(rows, "EmpID"), (std::vector<std::string>{"7", "8", "9", "10"}));
}

TEST_P(RecordsetMoveTest, FirstRowOfAnEmptySetIsNotCurrentUntilItsBookmark)
{
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.AddNew();
    rows["Name"] = "New";
    rows.Update();
    EXPECT_FALSE(rows.Bof());
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(ErrorOf([&] { (void)rows["Name"].Value(); }), 3021);
    rows.SetBookmark(rows.LastModified());
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(rows["Name"].Value(), base::Value("New"));
}

TEST_P(RecordsetMoveTest, BookmarkReturnsToItsRow)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    const BookmarkValue first = rows.Bookmark();
    rows.MoveNext();
    rows.MoveNext();
    rows.SetBookmark(first);
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{7}));
}

TEST_P(RecordsetMoveTest, ForeignBookmarkIsRefused)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    Recordset other = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(ErrorOf([&] { rows.SetBookmark(other.Bookmark()); }), 3159);
    EXPECT_EQ(ErrorOf([&] { rows.SetBookmark({}); }), 3159);
    const BookmarkValue first = rows.Bookmark();
    rows.Delete();
    EXPECT_EQ(ErrorOf([&] { rows.SetBookmark(first); }), 3167);
}

TEST_P(RecordsetMoveTest, LastModifiedNeedsAnUpdate)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(ErrorOf([&] { (void)rows.LastModified(); }), 3021);
    rows.Edit();
    rows["Hrs"] = 1.5;
    rows.Update();
    rows.MoveLast();
    rows.SetBookmark(rows.LastModified());
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{7}));
}

TEST_P(RecordsetMoveTest, RequeryRunsTheQueryAgain)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp WHERE EmpID > 7");
    Add(9, "Miller");
    rows.MoveLast();
    rows.Requery();
    EXPECT_EQ(Column(rows, "EmpID"), (std::vector<std::string>{"8", "9"}));
}

TEST_P(RecordsetMoveTest, SnapshotKeepsWhatItSaw)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp", RecordsetType::Snapshot);
    database.Execute("UPDATE LDEmp SET Name = 'x'");
    EXPECT_EQ(rows["Name"].Value(), base::Value("Smith, Ann"));
    rows.FindFirst("EmpID = 8");
    EXPECT_FALSE(rows.NoMatch());
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3251);
    EXPECT_EQ(ErrorOf([&] { rows.AddNew(); }), 3251);
    EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), 3251);
    EXPECT_FALSE(rows.Updatable());
}

TEST_P(RecordsetMoveTest, ForwardOnlySetGoesOnlyForward)
{
    AddTwo();
    Recordset rows = Open("SELECT * FROM LDEmp", RecordsetType::ForwardOnly);
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), 3251);
    EXPECT_EQ(ErrorOf([&] { rows.MoveLast(); }), 3251);
    EXPECT_EQ(ErrorOf([&] { rows.MovePrevious(); }), 3251);
    EXPECT_EQ(ErrorOf([&] { rows.FindFirst("EmpID = 8"); }), 3251);
    rows.MoveNext();
    EXPECT_EQ(rows["EmpID"].Value(), base::Value(std::int32_t{8}));
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
}

TEST_P(RecordsetMoveTest, AggregateSetHasOneRowThatNobodyEdits)
{
    Recordset rows = Open("SELECT Count(EmpID) as JobCt, Sum(Hrs) as JobHrs FROM LDEmp");
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows["JobCt"].Value(), base::Value(std::int32_t{0}));
    EXPECT_TRUE(rows["JobHrs"].Value().IsNull());
    EXPECT_FALSE(rows.Updatable());
    EXPECT_EQ(rows.Type(), RecordsetType::Dynaset);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3027);
    EXPECT_EQ(ErrorOf([&] { rows.AddNew(); }), 3027);
}

TEST_P(RecordsetMoveTest, FieldTakenByItsPlaceIsTheOneAtThatPlaceWhenTheSetIsAnother)
{
    AddTwo();
    Recordset rows = Open("SELECT EmpID, Name FROM LDEmp");
    const Field name = rows[1];
    EXPECT_EQ(name.Value(), base::Value("Smith, Ann"));
    rows = Open("SELECT Name, EmpID FROM LDEmp");
    EXPECT_EQ(name.Value(), rows["EmpID"].Value());
    rows = Open("SELECT EmpID FROM LDEmp");
    EXPECT_EQ(ErrorOf([&] { (void)name.Value(); }), 3265);
}

TEST_P(RecordsetMoveTest, FieldsAreKnownByNameWhateverTheCaseAndByPlace)
{
    Add(7, "Smith, Ann");
    Recordset rows = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(rows.FieldCount(), 8);
    EXPECT_EQ(rows.FieldName(4), "WO#");
    EXPECT_EQ(rows.TypeOf(2), FieldType::Text);
    EXPECT_EQ(rows.SizeOf(2), 100);
    EXPECT_EQ(rows.TypeOf(7), FieldType::Memo);
    EXPECT_EQ(rows["empid"].Value(), base::Value(std::int32_t{7}));
    EXPECT_EQ(rows["[EmpID]"].Value(), base::Value(std::int32_t{7}));
    EXPECT_EQ(rows[1].Value(), base::Value(std::int32_t{7}));
    EXPECT_TRUE(rows["WO#"].Value().IsNull());
    EXPECT_EQ(ErrorOf([&] { (void)rows["WO"].Value(); }), 3265);
    EXPECT_EQ(ErrorOf([&] { (void)rows[8].Value(); }), 3265);
    EXPECT_EQ(ErrorOf([&] { (void)rows.FieldName(-1); }), 3265);
}

}  // namespace
}  // namespace dao
