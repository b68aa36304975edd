// SPDX-License-Identifier: Apache-2.0
// Tests of what a table's properties demand of its rows: required fields, empty texts, validation
// rules, defaults.
#include "jet/catalog/Catalog.h"
#include "jet/pages/Pager.h"
#include "tests/jet/dao/DaoFixture.h"

namespace dao {
namespace {

using base::Value;

class RowRulesTest : public DaoTest {
protected:
    // A table Labor of one field with a rule, and of Id and Note without.
    void MakeLabor(FieldType type, std::string_view rule, std::string_view text = {})
    {
        TableDef table("Labor");
        table.Append(TableDef::CreateField("Id", FieldType::Long));
        FieldDef field = TableDef::CreateField("Hrs", type, type == FieldType::Text ? 20 : 0);
        field.validationRule = rule;
        field.validationText = text;
        field.allowZeroLength = type == FieldType::Text;
        table.Append(field);
        table.Append(TableDef::CreateField("Note", FieldType::Text, 20));
        database.Append(table);
        labor = Open("Labor");
    }

    // What Update says of a new row with this value.
    [[nodiscard]] std::string Adding(const Value& value)
    {
        labor.AddNew();
        labor["Hrs"] = value;
        return FailureOf([&] { labor.Update(); });
    }
    [[nodiscard]] bool Takes(const Value& value) { return Adding(value).empty(); }

    // The table that holds the start and the end of a job and lets no end stand before its start.
    void MakeJobs(std::string_view rule, std::string_view text = {})
    {
        TableDef table("Jobs");
        table.Append(TableDef::CreateField("JobStart", FieldType::Date));
        table.Append(TableDef::CreateField("JobEnd", FieldType::Date));
        table.SetValidation(rule, text);
        database.Append(table);
        jobs = Open("Jobs");
    }
    [[nodiscard]] std::string AddingJob(const Value& start, const Value& end)
    {
        jobs.AddNew();
        jobs["JobStart"] = start;
        jobs["JobEnd"] = end;
        return FailureOf([&] { jobs.Update(); });
    }

    [[nodiscard]] int Count(const std::string& table)
    {
        Recordset counted = Open("SELECT Count(*) AS N FROM " + table);
        return *counted["N"].Value().As<std::int32_t>();
    }

    Recordset labor, jobs;
};

TEST_F(RowRulesTest, RuleOfAFieldRefusesWithItsText)
{
    MakeLabor(FieldType::Double, ">0 And <=24", "A job lasts up to a day.");
    EXPECT_EQ(Adding(25.0), "3316 A job lasts up to a day.");
    EXPECT_EQ(labor.EditMode(), EditMode::Add);
    labor["Hrs"] = 24.0;
    labor.Update();
    EXPECT_EQ(Adding(0.0), "3316 A job lasts up to a day.");
    EXPECT_EQ(Count("Labor"), 1);
}

TEST_F(RowRulesTest, RuleWithoutTextNamesFieldAndRule)
{
    MakeLabor(FieldType::Double, ">0");
    EXPECT_EQ(Adding(-1.0),
              "3317 One or more values are prohibited by the validation rule '>0' set for "
              "'Labor.Hrs'.  Enter a value that the expression for this field can accept.");
}

TEST_F(RowRulesTest, RulesLeaveTheirFieldOut)
{
    MakeLabor(FieldType::Double, "Between 1 And 3 Or In (7, 8) Or Is Null Or [Hrs] = 20");
    EXPECT_TRUE(Takes(1.0));
    EXPECT_TRUE(Takes(8.0));
    EXPECT_TRUE(Takes(20.0));
    EXPECT_TRUE(Takes(base::Null()));
    EXPECT_FALSE(Takes(4.0));
    EXPECT_FALSE(Takes(0.5));
}

TEST_F(RowRulesTest, LoneLiteralsMeanEquality)
{
    MakeLabor(FieldType::Text, "\"R\" Or 'P' Or Like \"W*\"");
    EXPECT_TRUE(Takes("R"));
    EXPECT_TRUE(Takes("p"));
    EXPECT_TRUE(Takes("Wash"));
    EXPECT_FALSE(Takes("X"));
}

TEST_F(RowRulesTest, LoneNegativeNumberMeansEquality)
{
    MakeLabor(FieldType::Double, "-1 Or 5");
    EXPECT_TRUE(Takes(-1.0));
    EXPECT_TRUE(Takes(5.0));
    EXPECT_FALSE(Takes(1.0));
}

TEST_F(RowRulesTest, NotTurnsARuleRound)
{
    MakeLabor(FieldType::Double, "Not 5 And Not Between 10 And 20 And Not In (30)");
    EXPECT_TRUE(Takes(4.0));
    EXPECT_FALSE(Takes(5.0));
    EXPECT_FALSE(Takes(15.0));
    EXPECT_FALSE(Takes(30.0));
}

TEST_F(RowRulesTest, RuleMayCallFunctionsAndNameItsTable)
{
    MakeLabor(FieldType::Text, "Len([Labor].[Hrs]) = 3 And Left([Labor]![Hrs], 1) = \"A\"");
    EXPECT_TRUE(Takes("Abc"));
    EXPECT_FALSE(Takes("bcd"));
    EXPECT_FALSE(Takes("Ab"));
}

TEST_F(RowRulesTest, NullThatIsGivenMustSatisfyTheRule)
{
    MakeLabor(FieldType::Double, ">0");
    EXPECT_NE(Adding(base::Null()), "");
    EXPECT_EQ(Count("Labor"), 0);
}

TEST_F(RowRulesTest, FieldThatNobodyGaveAValueIsNotHeldAgainstItsRule)
{
    MakeLabor(FieldType::Double, ">0");
    labor.AddNew();
    labor["Id"] = std::int32_t{1};
    labor.Update();
    EXPECT_EQ(Count("Labor"), 1);
}

TEST_F(RowRulesTest, EditTriesOnlyTheRulesOfAssignedFields)
{
    MakeLabor(FieldType::Double, "<10 Or Is Null");
    EXPECT_TRUE(Takes(5.0));
    labor.MoveFirst();
    labor.Edit();
    labor["Note"] = "x";
    labor.Update();
    labor.Edit();
    labor["Hrs"] = 11.0;
    EXPECT_EQ(ErrorOf([&] { labor.Update(); }), 3317);
    EXPECT_EQ(labor.EditMode(), EditMode::InProgress);
    labor["Hrs"] = 9.0;
    labor.Update();
    EXPECT_EQ(labor["Hrs"].Value(), Value(9.0));
}

TEST_F(RowRulesTest, RuleOfTheRowComparesItsFields)
{
    MakeJobs("[JobEnd] >= [JobStart]", "A job ends after its start.");
    EXPECT_EQ(AddingJob(base::Date{38061.5}, base::Date{38061.25}),
              "3316 A job ends after its start.");
    EXPECT_EQ(AddingJob(base::Date{38061.25}, base::Date{38061.5}), "");
    jobs.MoveFirst();
    jobs.Edit();
    jobs["JobStart"] = base::Date{38061.75};
    EXPECT_EQ(FailureOf([&] { jobs.Update(); }), "3316 A job ends after its start.");
    EXPECT_EQ(Count("Jobs"), 1);
}

TEST_F(RowRulesTest, RuleOfTheRowIsNotBrokenByANull)
{
    MakeJobs("[JobEnd] >= [JobStart]");
    EXPECT_EQ(AddingJob(base::Date{38061.5}, base::Null()), "");
}

TEST_F(RowRulesTest, RuleOfTheRowWithoutTextNamesTheTable)
{
    MakeJobs("[JobEnd]>=[JobStart]");
    EXPECT_EQ(AddingJob(base::Date{2.0}, base::Date{1.0}),
              "3317 " + base::ErrorText(3317, {"Jobs", "[JobEnd]>=[JobStart]"}));
}

TEST_F(RowRulesTest, RuleOfTheRowIsTriedOnEveryEdit)
{
    MakeJobs("[JobEnd] >= [JobStart] And Now() < #3/16/2004#");
    EXPECT_EQ(AddingJob(base::Date{1.0}, base::Date{2.0}), "");
    now = base::Date{kNow.days + 1};
    jobs.MoveFirst();
    jobs.Edit();
    jobs["JobEnd"] = base::Date{3.0};
    EXPECT_EQ(ErrorOf([&] { jobs.Update(); }), 3317);
}

TEST_F(RowRulesTest, RuleThatNamesAnUnknownFieldRefusesEveryRow)
{
    MakeJobs("[JobEnd] >= [Begin]");
    EXPECT_EQ(AddingJob(base::Date{1.0}, base::Date{2.0}),
              "3344 " + base::ErrorText(3344, {"Begin", "Jobs"}));
    EXPECT_EQ(Count("Jobs"), 0);
}

TEST_F(RowRulesTest, RuleThatCallsAnUnknownFunctionRefusesEveryRow)
{
    MakeLabor(FieldType::Double, "Nz([Hrs]) > 0");
    EXPECT_EQ(Adding(1.0), "3388 " + base::ErrorText(3388, {"Hrs", "Nz"}));
    EXPECT_EQ(Count("Labor"), 0);
}

TEST_F(RowRulesTest, RuleOfAnotherTypeRefusesEveryRow)
{
    MakeLabor(FieldType::Double, "> \"a\"");
    EXPECT_EQ(Adding(1.0), "3320 Data type mismatch in criteria expression in table-level "
                           "validation expression.");
    EXPECT_EQ(Count("Labor"), 0);
}

TEST_F(RowRulesTest, RuleThatFailsOnOneRowRefusesIt)
{
    MakeLabor(FieldType::Double, "Sqr([Hrs]) < 5 Or [Hrs] > 100");
    EXPECT_TRUE(Takes(16.0));
    EXPECT_EQ(ErrorOf([&] { throw base::NumberedError(std::stoi(Adding(-1.0).substr(0, 4))); }),
              3320);
    EXPECT_EQ(Count("Labor"), 1);
}

TEST_F(RowRulesTest, RuleThatIsNoExpressionIsNotAccepted)
{
    TableDef table("Bad");
    FieldDef field = TableDef::CreateField("A", FieldType::Long);
    field.validationRule = "> > 3";
    table.Append(field);
    EXPECT_EQ(FailureOf([&] { database.Append(table); }),
              "3320 Syntax error (missing operator) in table-level validation expression.");
    EXPECT_EQ(ErrorOf([&] { (void)database.TableDef("Bad"); }), 3265);
}

// Others may have left a rule in a file that our design would not take.
TEST_F(RowRulesTest, StoredRuleThatIsNoExpressionRefusesTheWriteAndNotTheReading)
{
    database.Close();
    {
        jet::catalog::NewTable table;
        table.name = "Old";
        table.columns.resize(1);
        table.columns[0].name = "A";
        table.columns[0].properties.rule.expression = "> (3";
        jet::catalog::Catalog(jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadWrite))
            .Create(table, kNow);
    }
    database = engine.DefaultWorkspace().OpenDatabase(kFile);
    Recordset old = Open("Old");
    EXPECT_TRUE(old.Eof());
    old.AddNew();
    old["A"] = std::int32_t{5};
    EXPECT_EQ(FailureOf([&] { old.Update(); }),
              "3320 Missing ), ], or Item in table-level validation expression.");
    EXPECT_EQ(Count("Old"), 0);
}

TEST_F(RowRulesTest, DefaultsMustSatisfyTheRule)
{
    TableDef table("T");
    FieldDef field = TableDef::CreateField("A", FieldType::Long);
    field.validationRule = ">0";
    field.defaultValue = "0";
    table.Append(field);
    database.Append(table);
    Recordset rows = Open("T");
    rows.AddNew();
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3317);
}

TEST_F(RowRulesTest, BooleanThatNobodySetIsFalseForTheRule)
{
    TableDef table("T");
    table.Append(TableDef::CreateField("Paid", FieldType::Boolean));
    table.Append(TableDef::CreateField("A", FieldType::Long));
    table.SetValidation("[Paid] = False Or [A] > 0", {});
    database.Append(table);
    EXPECT_EQ(ErrorOf([&] { database.Execute("INSERT INTO T (A) VALUES (0)", kFailOnError); }), 0);
    EXPECT_EQ(
        ErrorOf([&] { database.Execute("INSERT INTO T (Paid, A) VALUES (Yes, 0)", kFailOnError); }),
        3317);
    EXPECT_EQ(Count("T"), 1);
}

TEST_F(RowRulesTest, ExecuteStopsAtTheRuleOrPassesTheRowOver)
{
    MakeLabor(FieldType::Double, "<10");
    for (const double hours : {1.0, 6.0, 2.0})
        EXPECT_TRUE(Takes(hours));
    EXPECT_EQ(ErrorOf([&] { database.Execute("UPDATE Labor SET Hrs = Hrs * 2", kFailOnError); }),
              3317);
    EXPECT_EQ(Column(labor, "Hrs"), (std::vector<std::string>{"1", "6", "2"}));
    database.Execute("UPDATE Labor SET Hrs = Hrs * 2");
    EXPECT_EQ(database.RecordsAffected(), 2);
    EXPECT_EQ(Column(labor, "Hrs"), (std::vector<std::string>{"2", "6", "4"}));
}

TEST_F(RowRulesTest, ExecuteHonoursRequiredAndEmptyText)
{
    TableDef table("T");
    FieldDef code = TableDef::CreateField("Code", FieldType::Text, 5);
    code.required = true;
    table.Append(code);
    table.Append(TableDef::CreateField("Note", FieldType::Memo));
    database.Append(table);
    const auto failing = [&](const char* sql) {
        return ErrorOf([&] { database.Execute(sql, kFailOnError); });
    };
    EXPECT_EQ(failing("INSERT INTO T (Note) VALUES ('x')"), 3314);
    EXPECT_EQ(failing("INSERT INTO T (Code, Note) VALUES ('a', '')"), 3315);
    EXPECT_EQ(failing("INSERT INTO T (Code) VALUES ('')"), 3315);
    EXPECT_EQ(failing("INSERT INTO T (Code) VALUES ('abcdef')"), 3163);
    EXPECT_EQ(failing("INSERT INTO T (Code) VALUES ('abcde')"), 0);
    EXPECT_EQ(failing("UPDATE T SET Code = Null"), 3314);
    EXPECT_EQ(failing("UPDATE T SET Note = ''"), 3315);
    EXPECT_EQ(Count("T"), 1);
}

TEST_F(RowRulesTest, DesignTellsTheRulesBack)
{
    MakeLabor(FieldType::Double, ">0", "More, please.");
    MakeJobs("[JobEnd]>=[JobStart]", "Backwards.");
    const TableDef labors = database.TableDef("Labor");
    EXPECT_EQ(labors.Fields()[1].validationRule, ">0");
    EXPECT_EQ(labors.Fields()[1].validationText, "More, please.");
    EXPECT_EQ(labors.ValidationRule(), "");
    const TableDef stored = database.TableDef("Jobs");
    EXPECT_EQ(stored.ValidationRule(), "[JobEnd]>=[JobStart]");
    EXPECT_EQ(stored.ValidationText(), "Backwards.");
}

TEST_F(RowRulesTest, DefaultsAreExpressionsWorkedOutAtAddNew)
{
    TableDef table("T");
    const auto add = [&](const char* name, FieldType type, const char* value) {
        FieldDef field = TableDef::CreateField(name, type, type == FieldType::Text ? 20 : 0);
        field.defaultValue = value;
        table.Append(field);
    };
    add("Made", FieldType::Date, "=Now()");
    add("Day", FieldType::Date, "Date() + 1");
    add("Code", FieldType::Text, "\"R\" & Year(Date())");
    add("Open", FieldType::Boolean, "Yes");
    add("Rate", FieldType::Currency, "12.5");
    add("None", FieldType::Long, "Null");
    database.Append(table);
    Recordset rows = Open("T");
    now = base::Date{kNow.days + 10};
    rows.AddNew();
    EXPECT_EQ(rows["Made"].Value(), Value(now));
    EXPECT_EQ(rows["Day"].Value(), Value(base::Date{38072}));
    EXPECT_EQ(rows["Code"].Value(), Value("R2004"));
    EXPECT_EQ(rows["Open"].Value(), Value(true));
    EXPECT_EQ(rows["Rate"].Value(), Value(base::Currency{125000}));
    EXPECT_TRUE(rows["None"].Value().IsNull());
    rows.Update();
    EXPECT_EQ(Count("T"), 1);
}

TEST_F(RowRulesTest, UniqueIndexThatIgnoresNullsTakesManyNulls)
{
    TableDef table("T");
    table.Append(TableDef::CreateField("A", FieldType::Long));
    table.Append(TableDef::CreateField("B", FieldType::Long));
    IndexDef index;
    index.name = "ByA";
    index.fields.push_back({"A", true});
    index.unique = index.ignoreNulls = true;
    table.Append(index);
    database.Append(table);
    const auto failing = [&](const char* sql) {
        return ErrorOf([&] { database.Execute(sql, kFailOnError); });
    };
    EXPECT_EQ(failing("INSERT INTO T (B) VALUES (1)"), 0);
    EXPECT_EQ(failing("INSERT INTO T (B) VALUES (2)"), 0);
    EXPECT_EQ(failing("INSERT INTO T (A) VALUES (1)"), 0);
    EXPECT_EQ(failing("INSERT INTO T (A) VALUES (1)"), 3022);
    EXPECT_EQ(failing("UPDATE T SET A = 1 WHERE B = 2"), 3022);
    EXPECT_EQ(failing("UPDATE T SET A = 2 WHERE B = 2"), 0);
    EXPECT_EQ(failing("UPDATE T SET A = 3"), 3022);
    EXPECT_EQ(Count("T"), 3);
}

}  // namespace
}  // namespace dao
