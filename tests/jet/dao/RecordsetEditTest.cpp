// SPDX-License-Identifier: Apache-2.0
// Tests of Edit, AddNew, Update, CancelUpdate and Delete, and of assignments.
#include "tests/jet/dao/DaoFixture.h"

namespace dao {
namespace {

using base::Value;

class RecordsetEditTest : public DaoKindTest {
protected:
    RecordsetEditTest()
    {
        MakeEmployees();
        Add(7, "Smith, Ann");
        Add(8, "Jones, Bob");
        rows = Open("SELECT * FROM LDEmp");
    }

    [[nodiscard]] int Assigning(std::string_view field, const Value& value)
    {
        return ErrorOf([&] { rows[field] = value; });
    }

    Recordset rows;
};

INSTANTIATE_TEST_SUITE_P(Kinds, RecordsetEditTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RecordsetEditTest, NothingIsWrittenWithoutEditOrAddNew)
{
    EXPECT_EQ(Assigning("Name", "x"), 3020);
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3020);
    EXPECT_EQ(ErrorOf([&] { rows.CancelUpdate(); }), 3020);
    EXPECT_EQ(Assigning("Nope", "x"), 3265);
    EXPECT_EQ(rows.EditMode(), EditMode::None);
}

TEST_P(RecordsetEditTest, UpdateStoresTheAssignedFields)
{
    rows.Edit();
    EXPECT_EQ(rows.EditMode(), EditMode::InProgress);
    rows["Name"] = "Smith, Anna";
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Anna"));
    rows.Update();
    EXPECT_EQ(rows.EditMode(), EditMode::None);
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Anna"));
    Recordset again = Open("SELECT * FROM LDEmp WHERE EmpID = 7");
    EXPECT_EQ(again["Name"].Value(), Value("Smith, Anna"));
}

TEST_P(RecordsetEditTest, MoveDropsAPendingEdit)
{
    rows.Edit();
    rows["Name"] = "x";
    rows.MoveNext();
    EXPECT_EQ(rows.EditMode(), EditMode::None);
    rows.MovePrevious();
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann"));
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3020);
}

TEST_P(RecordsetEditTest, FindAndBookmarkAndRefreshDropAPendingEdit)
{
    const auto pending = [&] {
        rows.Edit();
        rows["Name"] = "x";
    };
    pending();
    rows.FindFirst("EmpID = 99");
    EXPECT_EQ(rows.EditMode(), EditMode::None);
    pending();
    rows.SetBookmark(rows.Bookmark());
    EXPECT_EQ(rows.EditMode(), EditMode::None);
    pending();
    rows.Refresh();
    EXPECT_EQ(rows.EditMode(), EditMode::None);
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann"));
}

TEST_P(RecordsetEditTest, SecondEditForgetsTheFirst)
{
    rows.Edit();
    rows["Name"] = "x";
    rows.Edit();
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann"));
    rows["Hrs"] = 2.0;
    rows.Update();
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann"));
}

TEST_P(RecordsetEditTest, EditAfterAddNewTakesTheFormerRow)
{
    rows.AddNew();
    rows["Name"] = "new";
    rows.Edit();
    EXPECT_EQ(rows.EditMode(), EditMode::InProgress);
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann"));
    rows.AddNew();
    EXPECT_EQ(rows.EditMode(), EditMode::Add);
    EXPECT_EQ(rows["Name"].Value(), Value(""));
}

TEST_P(RecordsetEditTest, CancelUpdateKeepsRowAndPosition)
{
    rows.MoveNext();
    rows.Edit();
    rows["Name"] = "x";
    rows.CancelUpdate();
    EXPECT_EQ(rows["Name"].Value(), Value("Jones, Bob"));
    rows.AddNew();
    rows.CancelUpdate();
    EXPECT_EQ(rows["Name"].Value(), Value("Jones, Bob"));
    EXPECT_EQ(rows.RecordCount(), 2);
}

TEST_P(RecordsetEditTest, NewRowBeginsWithDefaultsAndItsNumber)
{
    rows.AddNew();
    EXPECT_EQ(rows["EmpEntry"].Value(), Value(std::int32_t{3}));
    EXPECT_EQ(rows["Name"].Value(), Value(""));
    EXPECT_EQ(rows["Hrs"].Value(), Value(0.0));
    EXPECT_EQ(rows["Active"].Value(), Value(false));
    EXPECT_TRUE(rows["StartDay"].Value().IsNull());
    EXPECT_TRUE(rows["EmpID"].Value().IsNull());
}

TEST_P(RecordsetEditTest, NumberOfACancelledRowIsUsedUp)
{
    rows.AddNew();
    rows.CancelUpdate();
    rows.AddNew();
    EXPECT_EQ(rows["EmpEntry"].Value(), Value(std::int32_t{4}));
    rows.Update();
    rows.SetBookmark(rows.LastModified());
    EXPECT_EQ(rows["EmpEntry"].Value(), Value(std::int32_t{4}));
}

TEST_P(RecordsetEditTest, OtherFieldsKeepWhatSomebodyElseStored)
{
    rows.Edit();
    rows["Hrs"] = 3.0;
    database.Execute("UPDATE LDEmp SET [WO#] = 1001 WHERE EmpID = 7");
    rows.Update();
    EXPECT_EQ(rows["WO#"].Value(), Value(std::int32_t{1001}));
    EXPECT_EQ(rows["Hrs"].Value(), Value(3.0));
}

TEST_P(RecordsetEditTest, EditOfARowChangedMeanwhileFailsOnce)
{
    database.Execute("UPDATE LDEmp SET Hrs = 5 WHERE EmpID = 7");
    EXPECT_EQ(rows["Hrs"].Value(), Value(0.0));
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3197);
    EXPECT_EQ(Assigning("Hrs", 6.0), 3020);
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 0);
    EXPECT_EQ(rows["Hrs"].Value(), Value(5.0));
}

TEST_P(RecordsetEditTest, FindRefreshesTheRowBeforeTheEdit)
{
    database.Execute("UPDATE LDEmp SET Hrs = 5 WHERE EmpID = 7");
    rows.FindFirst("EmpID = 7");
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 0);
    rows["Name"] = "Smith";
    rows.Update();
    EXPECT_EQ(rows["Hrs"].Value(), Value(5.0));
}

TEST_P(RecordsetEditTest, TwoSetsMayEditDifferentRowsAtOnce)
{
    Recordset other = Open("SELECT * FROM LDEmp WHERE EmpID = 8");
    rows.Edit();
    other.Edit();
    other["Hrs"] = 1.0;
    rows["Hrs"] = 2.0;
    other.Update();
    rows.Update();
    EXPECT_EQ(rows["Hrs"].Value(), Value(2.0));
    EXPECT_EQ(other["Hrs"].Value(), Value(1.0));
}

TEST_P(RecordsetEditTest, UpdateOfADeletedRowFailsAndKeepsTheEdit)
{
    rows.Edit();
    rows["Hrs"] = 2.0;
    database.Execute("DELETE FROM LDEmp WHERE EmpID = 7");
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3167);
    EXPECT_EQ(rows.EditMode(), EditMode::InProgress);
    rows.CancelUpdate();
}

TEST_P(RecordsetEditTest, TextFieldsTakeTextUpToTheirSize)
{
    rows.Edit();
    EXPECT_EQ(Assigning("Name", std::string(100, 'x')), 0);
    EXPECT_EQ(Assigning("Name", std::string(101, 'x')), 3163);
    EXPECT_EQ(rows["Name"].Value(), Value(std::string(100, 'x')));
    // Characters count, not bytes.
    std::string umlauts;
    for (int i = 0; i < 100; ++i)
        umlauts += "ü";
    EXPECT_EQ(Assigning("Name", umlauts), 0);
    EXPECT_EQ(Assigning("Name", 5.5), 0);
    EXPECT_EQ(rows["Name"].Value(), Value("5.5"));
    EXPECT_EQ(Assigning("Name", true), 0);
    EXPECT_EQ(rows["Name"].Value(), Value("True"));
    EXPECT_EQ(Assigning("Name", base::Date{38061.5}), 0);
    EXPECT_EQ(rows["Name"].Value(), Value("3/15/2004 12:00:00 PM"));
    EXPECT_EQ(Assigning("Name", base::Null()), 0);
    EXPECT_TRUE(rows["Name"].Value().IsNull());
}

TEST_P(RecordsetEditTest, NumberFieldsTakeNumbersAndTheirTexts)
{
    rows.Edit();
    EXPECT_EQ(Assigning("EmpID", 2.5), 0);
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{2}));
    EXPECT_EQ(Assigning("EmpID", " 12 "), 0);
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{12}));
    EXPECT_EQ(Assigning("EmpID", "3.5"), 0);
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{4}));
    EXPECT_EQ(Assigning("EmpID", true), 0);
    EXPECT_EQ(rows["EmpID"].Value(), Value(std::int32_t{-1}));
    EXPECT_EQ(Assigning("EmpID", 3e9), 3421);
    EXPECT_EQ(Assigning("EmpID", ""), 3421);
    EXPECT_EQ(Assigning("EmpID", "abc"), 3421);
    EXPECT_EQ(Assigning("EmpID", base::Null()), 0);
    EXPECT_EQ(Assigning("Hrs", ".33"), 0);
    EXPECT_EQ(rows["Hrs"].Value(), Value(0.33));
    EXPECT_EQ(Assigning("Hrs", ""), 3421);
    EXPECT_EQ(rows["Hrs"].Value(), Value(0.33));
}

TEST_P(RecordsetEditTest, DateFieldsTakeDatesTimesAndTheirTexts)
{
    rows.Edit();
    EXPECT_EQ(Assigning("StartDay", "08:00 AM"), 0);
    EXPECT_EQ(rows["StartDay"].Value(), Value(base::Date{28800.0 / 86400}));
    EXPECT_EQ(Assigning("StartDay", "11:59 PM"), 0);
    EXPECT_EQ(rows["StartDay"].Value(), Value(base::Date{86340.0 / 86400}));
    EXPECT_EQ(Assigning("StartDay", "03/15/2004"), 0);
    EXPECT_EQ(rows["StartDay"].Value(), Value(base::Date{38061}));
    EXPECT_EQ(Assigning("StartDay", 38061.5), 0);
    EXPECT_EQ(rows["StartDay"].Value(), Value(base::Date{38061.5}));
    EXPECT_EQ(Assigning("StartDay", ""), 3421);
    EXPECT_EQ(Assigning("StartDay", "tomorrow"), 3421);
    EXPECT_EQ(Assigning("StartDay", 3000000.0), 3421);
    EXPECT_EQ(rows["StartDay"].Value(), Value(base::Date{38061.5}));
    EXPECT_EQ(Assigning("StartDay", base::Null()), 0);
    EXPECT_TRUE(rows["StartDay"].Value().IsNull());
}

TEST_P(RecordsetEditTest, BooleanFieldsTakeEverythingButNullAndEmptyText)
{
    rows.Edit();
    EXPECT_EQ(Assigning("Active", 5), 0);
    EXPECT_EQ(rows["Active"].Value(), Value(true));
    EXPECT_EQ(Assigning("Active", "False"), 0);
    EXPECT_EQ(rows["Active"].Value(), Value(false));
    EXPECT_EQ(Assigning("Active", "-1"), 0);
    EXPECT_EQ(Assigning("Active", base::Null()), 3162);
    EXPECT_EQ(Assigning("Active", ""), 3421);
    EXPECT_EQ(rows["Active"].Value(), Value(true));
}

TEST_P(RecordsetEditTest, CounterIsNotAssigned)
{
    rows.AddNew();
    EXPECT_EQ(Assigning("EmpEntry", std::int32_t{99}), 3164);
}

TEST_P(RecordsetEditTest, FieldTakesTheValueOfAnotherField)
{
    Recordset other = Open("SELECT * FROM LDEmp WHERE EmpID = 8");
    rows.Edit();
    rows["Name"] = other["Name"];
    rows.Update();
    EXPECT_EQ(rows["Name"].Value(), Value("Jones, Bob"));
    other.MoveNext();
    rows.Edit();
    EXPECT_EQ(ErrorOf([&] { rows["Name"] = other["Name"]; }), 3021);
}

TEST_P(RecordsetEditTest, LongMemoIsStoredAndReplaced)
{
    const std::string text(20000, 'n');
    rows.Edit();
    rows["Note"] = text;
    rows.Update();
    EXPECT_EQ(rows["Note"].Value(), Value(text));
    rows.Edit();
    rows["Note"] = "short";
    rows.Update();
    Recordset again = Open("SELECT Note FROM LDEmp WHERE EmpID = 7");
    EXPECT_EQ(again["Note"].Value(), Value("short"));
}

TEST_P(RecordsetEditTest, RequiredAndEmptyTextAreCheckedAtUpdate)
{
    TableDef table("Strict");
    FieldDef code = TableDef::CreateField("Code", FieldType::Text, 10);
    code.required = true;
    table.Append(code);
    table.Append(TableDef::CreateField("Text", FieldType::Text, 10));
    database.Append(table);
    Recordset strict = Open("Strict");
    strict.AddNew();
    EXPECT_EQ(FailureOf([&] { strict.Update(); }),
              "3314 " + base::ErrorText(3314, {"Strict.Code"}));
    EXPECT_EQ(strict.EditMode(), EditMode::Add);
    strict["Code"] = "";
    EXPECT_EQ(FailureOf([&] { strict.Update(); }),
              "3315 " + base::ErrorText(3315, {"Strict.Code"}));
    strict["Code"] = "a";
    strict.Update();
    EXPECT_EQ(strict.RecordCount(), 1);
}

TEST_P(RecordsetEditTest, DuplicateKeyFailsAndKeepsTheEdit)
{
    TableDef table("Keyed");
    table.Append(TableDef::CreateField("Number", FieldType::Long));
    IndexDef key;
    key.name = "PrimaryKey";
    key.fields.push_back({"Number", true});
    key.primary = key.unique = key.required = true;
    table.Append(key);
    database.Append(table);
    Recordset keyed = Open("Keyed");
    keyed.AddNew();
    keyed["Number"] = std::int32_t{1};
    keyed.Update();
    keyed.AddNew();
    keyed["Number"] = std::int32_t{1};
    EXPECT_EQ(ErrorOf([&] { keyed.Update(); }), 3022);
    EXPECT_EQ(keyed.EditMode(), EditMode::Add);
    keyed["Number"] = base::Null();
    EXPECT_EQ(ErrorOf([&] { keyed.Update(); }), 3058);
    keyed["Number"] = std::int32_t{2};
    keyed.Update();
    EXPECT_EQ(keyed.RecordCount(), 2);
}

TEST_P(RecordsetEditTest, ExpressionsOfASetAreNotAssigned)
{
    Recordset half = Open("SELECT EmpID, Hrs * 2 AS Twice FROM LDEmp");
    half.Edit();
    EXPECT_EQ(ErrorOf([&] { half["Twice"] = 5.0; }), 3164);
    half["EmpID"] = std::int32_t{70};
    half.Update();
    EXPECT_EQ(half["Twice"].Value(), Value(0.0));
    half.FindFirst("Twice = 0 And EmpID = 8");
    EXPECT_FALSE(half.NoMatch());
}

TEST_P(RecordsetEditTest, ReadOnlySetIsNotUpdatable)
{
    Recordset fixed =
        database.OpenRecordset("SELECT * FROM LDEmp", RecordsetType::Dynaset, kReadOnlySet);
    EXPECT_FALSE(fixed.Updatable());
    EXPECT_EQ(ErrorOf([&] { fixed.Edit(); }), 3027);
    EXPECT_EQ(ErrorOf([&] { fixed.Delete(); }), 3027);
}

TEST_P(RecordsetEditTest, SortKeyChangedThroughTheSetDoesNotMoveTheRow)
{
    Recordset sorted = Open("SELECT * FROM LDEmp ORDER BY Name");
    EXPECT_EQ(sorted["Name"].Value(), Value("Jones, Bob"));
    sorted.Edit();
    sorted["Name"] = "Zimmer";
    sorted.Update();
    EXPECT_EQ(Column(sorted, "Name"), (std::vector<std::string>{"Zimmer", "Smith, Ann"}));
}

}  // namespace
}  // namespace dao
