// SPDX-License-Identifier: Apache-2.0
// Tests of a file that another program has open too: a second engine on the same file.
#include "tests/jet/dao/DaoFixture.h"

namespace dao {
namespace {

using base::Value;

class SharedFileTest : public DaoKindTest {
protected:
    SharedFileTest()
    {
        MakeEmployees();
        Add(7, "Smith, Ann");
        Add(8, "Jones, Bob");
        rows = Open("SELECT * FROM LDEmp ORDER BY EmpID");
        theirs = theirEngine.DefaultWorkspace().OpenDatabase(kFile);
    }

    DBEngine theirEngine{SettingsOf("BAY-2"), files};
    Database theirs;
    Recordset rows;
};

INSTANTIATE_TEST_SUITE_P(Kinds, SharedFileTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(SharedFileTest, FindSeesWhatTheOtherStored)
{
    theirs.Execute("UPDATE LDEmp SET Hrs = 5 WHERE EmpID = 7");
    rows.FindFirst("EmpID = 7");
    EXPECT_EQ(rows["Hrs"].Value(), Value(5.0));
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 0);
}

TEST_P(SharedFileTest, EditOfARowTheOtherChangedFailsOnce)
{
    theirs.Execute("UPDATE LDEmp SET Hrs = 5 WHERE EmpID = 7");
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3197);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 0);
    rows["Name"] = "Smith";
    rows.Update();
    Recordset seen = theirs.OpenRecordset("SELECT * FROM LDEmp WHERE EmpID = 7");
    EXPECT_EQ(seen["Name"].Value(), Value("Smith"));
    EXPECT_EQ(seen["Hrs"].Value(), Value(5.0));
}

TEST_P(SharedFileTest, RowTheOtherDeletedIs3167)
{
    theirs.Execute("DELETE FROM LDEmp WHERE EmpID = 7");
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3167);
    EXPECT_EQ(ErrorOf([&] { rows.Refresh(); }), 3167);
    rows.MoveNext();
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{8}));
}

TEST_P(SharedFileTest, RowsOfBothGetNumbersOfTheirOwn)
{
    Recordset ours = Open("LDEmp");
    Recordset other = theirs.OpenRecordset("LDEmp");
    ours.AddNew();
    other.AddNew();
    const Value ourNumber = ours["EmpEntry"];
    const Value theirNumber = other["EmpEntry"];
    EXPECT_FALSE(ourNumber == theirNumber);
    other.Update();
    ours.Update();
    Recordset all = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(Column(all, "EmpEntry"), (std::vector<std::string>{"1", "2", "4", "3"}));
}

TEST_P(SharedFileTest, RequeryShowsTheOthersRows)
{
    theirs.Execute("INSERT INTO LDEmp (EmpID) VALUES (1)");
    rows.MoveLast();
    EXPECT_EQ(rows.RecordCount(), 2);
    rows.Requery();
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{1}));
}

TEST_P(SharedFileTest, TablesTheOtherMadeCanBeOpened)
{
    TableDef table("Theirs");
    table.Append(TableDef::CreateField("A", FieldType::Long));
    theirs.Append(table);
    EXPECT_EQ(Open("Theirs").RecordCount(), 0);
}

}  // namespace
}  // namespace dao
