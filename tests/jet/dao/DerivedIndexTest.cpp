// SPDX-License-Identifier: Apache-2.0
// Questions that are asked again are answered from an index in memory, with the same answers as a
// look at every row, whoever wrote meanwhile.
#include "base/Convert.h"
#include "tests/jet/dao/DaoFixture.h"

#include <random>

namespace dao {
namespace {

using base::Value;

class DerivedIndexTest : public DaoKindTest {
protected:
    static constexpr int kRows = 1200;

    DerivedIndexTest()
    {
        MakeEmployees();
        Recordset rows = Open("LDEmp");
        for (int i = 0; i < kRows; ++i)
            Append(rows, i % 40, i / 100);
        theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
    }

    // One employee of that number who began on that day.
    static void Append(Recordset& rows, int id, int day)
    {
        rows.AddNew();
        rows["EmpID"] = Value(std::int32_t{id});
        rows["StartDay"] = Value(base::Date{40000.0 + day});  // July 6, 2009, and the days after
        rows["Name"] = "Somebody";
        rows.Update();
    }
    static std::string Of(int id, int day)
    {
        return "EmpID = " + std::to_string(id) + " AND StartDay = #7/" + std::to_string(6 + day) +
               "/2009#";
    }
    static std::vector<std::string> Found(Database& in, const std::string& condition)
    {
        Recordset rows = in.OpenRecordset("SELECT * FROM LDEmp WHERE " + condition);
        return Column(rows, "EmpEntry");
    }
    // What a look at every row finds: no index knows a negation.
    static std::string WithoutIndex(const std::string& condition)
    {
        return "NOT (NOT (" + condition + "))";
    }
    void ExpectTheSame(Database& in, int id, int day)
    {
        const std::string byId = "EmpID = " + std::to_string(id);
        EXPECT_EQ(Found(in, byId), Found(in, WithoutIndex(byId)));
        EXPECT_EQ(Found(in, Of(id, day)), Found(in, WithoutIndex(Of(id, day))));
    }
    // Each of the questions twice, so that the index is there.
    void Ask(Database& in)
    {
        for (int i = 0; i < 2; ++i)
            ExpectTheSame(in, 7, 3);
    }

    DBEngine theirEngine{SettingsOf("BAY-2"), files};
    Database theirs;
};

INSTANTIATE_TEST_SUITE_P(Kinds, DerivedIndexTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(DerivedIndexTest, OwnAndForeignRowsAreFoundAtOnce)
{
    Ask(database);
    Recordset ours = Open("LDEmp");
    Append(ours, 7, 3);
    ExpectTheSame(database, 7, 3);
    Recordset others = theirs.OpenRecordset("LDEmp");
    for (int i = 0; i < 5; ++i) {
        Append(others, 7, 3);
        ExpectTheSame(database, 7, 3);
    }
    EXPECT_EQ(Found(database, "EmpID = 7").size(), std::size_t{kRows / 40 + 6});
}

TEST_P(DerivedIndexTest, RowsThatChangeTheirKeyOrAreDeletedAreFoundAsTheyAre)
{
    Ask(database);
    theirs.Execute("UPDATE LDEmp SET EmpID = 7 WHERE EmpEntry = 500");
    ExpectTheSame(database, 7, 4);
    theirs.Execute("UPDATE LDEmp SET EmpID = 8 WHERE EmpID = 7");
    ExpectTheSame(database, 7, 3);
    ExpectTheSame(database, 8, 3);
    database.Execute("DELETE FROM LDEmp WHERE EmpID = 8");
    ExpectTheSame(database, 8, 3);
    EXPECT_TRUE(Found(database, "EmpID = 8").empty());
}

TEST_P(DerivedIndexTest, NegativeNumbersAreFoundLikeOthers)
{
    Recordset rows = Open("LDEmp");
    Append(rows, -1, 3);
    for (int i = 0; i < 3; ++i) {
        ExpectTheSame(theirs, -1, 3);
        EXPECT_EQ(Found(theirs, "-1 = EmpID").size(), 1U);
        EXPECT_TRUE(Found(theirs, "EmpID = -2").empty());
    }
}

// A row that grows moves to another page and is found by its old place.
TEST_P(DerivedIndexTest, RowsThatMoveAreFound)
{
    Ask(database);
    for (int entry = 1; entry <= 60; ++entry) {
        Recordset row =
            theirs.OpenRecordset("SELECT * FROM LDEmp WHERE EmpEntry = " + std::to_string(entry));
        row.Edit();
        row["Name"] = std::string(95, 'x');
        row.Update();
    }
    ExpectTheSame(database, 7, 0);
    theirs.Execute("UPDATE LDEmp SET EmpID = 7 WHERE EmpEntry < 61");
    for (int i = 0; i < 3; ++i)
        ExpectTheSame(database, 7, 0);
}

TEST_P(DerivedIndexTest, AnythingWrittenInAnyOrderIsFound)
{
    Ask(database);
    Ask(theirs);
    std::mt19937 dice(2004);
    const auto any = [&](int count) {
        return static_cast<int>(dice() % static_cast<unsigned>(count));
    };
    for (int i = 0; i < 60; ++i) {
        Database& writer = any(2) == 0 ? database : theirs;
        switch (any(3)) {
        case 0: {
            Recordset rows = writer.OpenRecordset("LDEmp");
            Append(rows, any(40), any(12));
            break;
        }
        case 1:
            writer.Execute("UPDATE LDEmp SET EmpID = " + std::to_string(any(40)) +
                           " WHERE EmpEntry = " + std::to_string(1 + any(kRows)));
            break;
        default:
            writer.Execute("DELETE FROM LDEmp WHERE EmpEntry = " + std::to_string(1 + any(kRows)));
        }
        ExpectTheSame(any(2) == 0 ? database : theirs, any(40), any(12));
    }
}

// Pages that become empty are given back while the walk goes on behind them.
TEST_P(DerivedIndexTest, AWalkThatDeletesAsItGoesMeetsEveryRowOnce)
{
    Recordset rows = Open("SELECT * FROM LDEmp");
    int met = 0;
    for (; !rows.Eof(); rows.MoveNext(), ++met)
        rows.Delete();
    EXPECT_EQ(met, kRows);
    EXPECT_TRUE(Found(database, "EmpEntry > 0").empty());
}

// The change of a table's design, by us or by another, is noticed.
TEST_P(DerivedIndexTest, ATableMadeMeanwhileIsFoundByBoth)
{
    Ask(database);
    Ask(theirs);
    TableDef table("Later");
    table.Append(TableDef::CreateField("A", FieldType::Long));
    theirs.Append(table);
    EXPECT_EQ(Open("SELECT * FROM Later").RecordCount(), 0);
    theirs.Execute("INSERT INTO Later (A) VALUES (5)");
    EXPECT_EQ(Open("SELECT * FROM Later WHERE A = 5").RecordCount(), 1);
}

// The last rows are found from behind; whoever walks on from there comes to all the others.
class ListFromBehindTest : public DerivedIndexTest {
protected:
    std::vector<std::string> entries = Found(database, WithoutIndex("EmpID = 7"));
    Recordset rows = Open("SELECT * FROM LDEmp WHERE EmpID = 7");
};

INSTANTIATE_TEST_SUITE_P(Kinds, ListFromBehindTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(ListFromBehindTest, TheWayBackMeetsEveryRowOnce)
{
    rows.MoveLast();
    for (std::size_t i = entries.size(); i-- > 0;) {
        ASSERT_FALSE(rows.Bof());
        EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), entries[i]);
        rows.MovePrevious();
    }
    EXPECT_TRUE(rows.Bof());
}

TEST_P(ListFromBehindTest, BothWaysMeetInTheMiddle)
{
    rows.MoveNext();
    rows.MoveNext();
    rows.MoveLast();
    rows.MovePrevious();
    rows.MoveFirst();
    EXPECT_EQ(Column(rows, "EmpEntry"), entries);
    rows.MoveLast();
    EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), entries.back());
    EXPECT_EQ(rows.AbsolutePosition(), static_cast<int>(entries.size()) - 1);
    rows.MovePrevious();
    EXPECT_EQ(rows.AbsolutePosition(), static_cast<int>(entries.size()) - 2);
    rows.MoveNext();
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
}

TEST_P(ListFromBehindTest, TheCountAfterTheLastIsThatOfAllRows)
{
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), static_cast<int>(entries.size()));
    EXPECT_EQ(rows.AbsolutePosition(), static_cast<int>(entries.size()) - 1);
}

TEST_P(ListFromBehindTest, DeletedAndAddedRowsKeepTheirPlaces)
{
    rows.MoveLast();
    rows.Delete();
    rows.MovePrevious();
    EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), entries[entries.size() - 2]);
    const BookmarkValue here = rows.Bookmark();
    Append(rows, 7, 3);
    rows.MoveLast();
    EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), std::to_string(kRows + 1));
    rows.MovePrevious();
    EXPECT_EQ(rows.Bookmark(), here);
    rows.SetBookmark(here);
    EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), entries[entries.size() - 2]);
    EXPECT_EQ(rows.RecordCount(), static_cast<int>(entries.size()));
    rows.MoveFirst();
    rows.MovePrevious();
    EXPECT_TRUE(rows.Bof());
}

TEST_P(ListFromBehindTest, FindFromEitherEndFindsTheSame)
{
    const std::string third = "EmpEntry = " + entries[2];
    rows.FindLast(third);
    ASSERT_FALSE(rows.NoMatch());
    EXPECT_EQ(rows.AbsolutePosition(), 2);
    rows.FindFirst(third);
    EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), entries[2]);
    rows.MoveNext();
    EXPECT_EQ(base::TextOf(rows["EmpEntry"].Value()), entries[3]);
}

}  // namespace
}  // namespace dao
