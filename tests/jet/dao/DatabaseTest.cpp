// SPDX-License-Identifier: Apache-2.0
// Tests of opening and closing databases, of table definitions and of Execute.
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/Samples.h"

#include <algorithm>

namespace dao {
namespace {

using base::Value;

class DatabaseTest : public DaoKindTest {};

INSTANTIATE_TEST_SUITE_P(Kinds, DatabaseTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(DatabaseTest, NeverOpenedIs91AndClosedIs3420)
{
    Database never;
    EXPECT_FALSE(never.IsSet());
    EXPECT_EQ(ErrorOf([&] { (void)never.Name(); }), 91);
    EXPECT_EQ(ErrorOf([&] { never.Close(); }), 91);
    Recordset none;
    EXPECT_FALSE(none.IsSet());
    EXPECT_EQ(ErrorOf([&] { (void)none.Eof(); }), 91);
    EXPECT_EQ(ErrorOf([&] { (void)none["Name"].Value(); }), 91);
    database.Close();
    EXPECT_TRUE(database.IsSet());
    EXPECT_EQ(ErrorOf([&] { (void)database.Name(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { database.Close(); }), 3420);
}

TEST_P(DatabaseTest, ClosingClosesItsRecordSetsAndNoOthers)
{
    MakeEmployees();
    Add(7, "Smith, Ann");
    Database second = engine.DefaultWorkspace().OpenDatabase(kFile);
    Recordset mine = Open("SELECT * FROM LDEmp");
    Recordset theirs = second.OpenRecordset("SELECT * FROM LDEmp");
    database.Close();
    EXPECT_EQ(ErrorOf([&] { (void)mine.Eof(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { (void)mine["Name"].Value(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { mine.Close(); }), 3420);
    EXPECT_EQ(theirs["Name"].Value(), Value("Smith, Ann"));
}

TEST_P(DatabaseTest, DroppedDatabaseClosesItsRecordSets)
{
    MakeEmployees();
    Recordset rows = Open("SELECT * FROM LDEmp");
    database = Database();
    EXPECT_EQ(ErrorOf([&] { (void)rows.Eof(); }), 3420);
}

TEST_P(DatabaseTest, ClosedRecordSetIs3420)
{
    MakeEmployees();
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.Close();
    EXPECT_EQ(ErrorOf([&] { rows.MoveFirst(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { rows.Close(); }), 3420);
}

TEST_P(DatabaseTest, ChangesThroughOneAreSeenByTheOther)
{
    MakeEmployees();
    Database second = engine.DefaultWorkspace().OpenDatabase(kFile);
    Add(7, "Smith, Ann");
    Recordset rows = second.OpenRecordset("LDEmp");
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows["Name"].Value(), Value("Smith, Ann"));
}

TEST_P(DatabaseTest, OpenFailsWithTheNumberOfItsCause)
{
    Workspace& workspace = engine.DefaultWorkspace();
    EXPECT_EQ(ErrorOf([&] { (void)workspace.OpenDatabase(""); }), 3055);
    EXPECT_EQ(ErrorOf([&] { (void)workspace.OpenDatabase("/shop/none.mdb"); }), 3024);
    (void)files.Create("/shop/empty.mdb");
    EXPECT_EQ(ErrorOf([&] { (void)workspace.OpenDatabase("/shop/empty.mdb"); }), 3343);
    EXPECT_EQ(ErrorOf([&] { engine.CreateDatabase(kFile); }), 3204);
}

TEST_P(DatabaseTest, FailedOpenKeepsTheFormerObject)
{
    MakeEmployees();
    EXPECT_EQ(ErrorOf([&] { database = engine.DefaultWorkspace().OpenDatabase("/shop/no.mdb"); }),
              3024);
    EXPECT_EQ(database.Name(), kFile);
    Recordset rows = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(ErrorOf([&] { rows = Open("SELECT * FROM Nope"); }), 3078);
    EXPECT_TRUE(rows.Eof());
}

TEST_P(DatabaseTest, NameWithoutExtensionIsADatabases)
{
    EXPECT_EQ(engine.DefaultWorkspace().OpenDatabase("/shop/Kelvaro").Name(), kFile);
    EXPECT_EQ(database.Version(), tests::IsJet3(GetParam()) ? "3.0" : "4.0");
    EXPECT_TRUE(database.Updatable());
}

TEST_P(DatabaseTest, ReadOnlyDatabaseRefusesEveryChange)
{
    MakeEmployees();
    Add(7, "Smith, Ann");
    Database fixed = engine.DefaultWorkspace().OpenDatabase(kFile, false, true);
    EXPECT_FALSE(fixed.Updatable());
    Recordset rows = fixed.OpenRecordset("SELECT * FROM LDEmp");
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3027);
    EXPECT_EQ(ErrorOf([&] { rows.AddNew(); }), 3027);
    EXPECT_EQ(ErrorOf([&] { fixed.Execute("UPDATE LDEmp SET Hrs = 1"); }), 3027);
    TableDef table("T");
    table.Append(TableDef::CreateField("A", FieldType::Long));
    EXPECT_EQ(ErrorOf([&] { fixed.Append(table); }), 3027);
}

TEST_P(DatabaseTest, WorkspaceKnowsOneUserAndClosesItsDatabases)
{
    EXPECT_EQ(ErrorOf([&] { (void)engine.CreateWorkspace("", "bob", ""); }), 3029);
    EXPECT_EQ(ErrorOf([&] { (void)engine.CreateWorkspace("", "admin", "x"); }), 3029);
    Workspace own = engine.CreateWorkspace("", "Admin", "");
    Database one = own.OpenDatabase(kFile);
    Database two = own.OpenDatabase(kFile);
    own.Close();
    EXPECT_EQ(ErrorOf([&] { (void)one.Name(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { (void)two.Name(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { (void)own.OpenDatabase(kFile); }), 3420);
    EXPECT_EQ(ErrorOf([&] { own.Close(); }), 3420);
    EXPECT_EQ(database.Name(), kFile);
    engine.DefaultWorkspace().Close();
    EXPECT_EQ(database.Name(), kFile);
}

TEST_P(DatabaseTest, TableDefinitionReadsAsItWasMade)
{
    MakeEmployees();
    const TableDef table = database.TableDef("ldemp");
    EXPECT_EQ(table.Name(), "LDEmp");
    ASSERT_EQ(table.Fields().size(), 8U);
    EXPECT_EQ(table.Fields()[0].attributes, kAutoIncrField | kFixedField);
    EXPECT_EQ(table.Fields()[2].size, 100);
    EXPECT_EQ(table.Fields()[2].defaultValue, "\"\"");
    EXPECT_TRUE(table.Fields()[2].allowZeroLength);
    EXPECT_FALSE(table.Fields()[3].allowZeroLength);
    EXPECT_EQ(table.Fields()[7].type, FieldType::Memo);
    EXPECT_EQ(ErrorOf([&] { (void)database.TableDef("nope"); }), 3265);
    const std::vector<std::string> names = database.TableNames();
    EXPECT_NE(std::find(names.begin(), names.end(), "MSysObjects"), names.end());
}

TEST_P(DatabaseTest, DecimalsKeepTheirDigits)
{
    TableDef wish("Part");
    FieldDef weight = TableDef::CreateField("Weight", FieldType::Decimal);
    weight.precision = 9;
    weight.scale = 4;
    wish.Append(weight);
    wish.Append(TableDef::CreateField("Count", FieldType::Decimal));
    if (tests::IsJet3(GetParam())) {
        EXPECT_EQ(ErrorOf([&] { database.Append(wish); }), 3259);
        return;
    }
    database.Append(wish);
    const TableDef found = database.TableDef("Part");
    ASSERT_EQ(found.Fields().size(), 2U);
    EXPECT_EQ(found.Fields()[0].type, FieldType::Decimal);
    EXPECT_EQ(found.Fields()[0].precision, 9);
    EXPECT_EQ(found.Fields()[0].scale, 4);
    EXPECT_EQ(found.Fields()[1].precision, 18);
    EXPECT_EQ(found.Fields()[1].scale, 0);
    Recordset rows = Open("Part");
    rows.AddNew();
    rows["Weight"] = 12345.6789;
    rows["Count"] = std::int32_t{-7};
    rows.Update();
    EXPECT_EQ(Column(rows, "Weight"), (std::vector<std::string>{"12345.6789"}));
    EXPECT_EQ(Column(rows, "Count"), (std::vector<std::string>{"-7"}));
}

TEST_P(DatabaseTest, AppendRefusesWhatCannotBeATable)
{
    MakeEmployees();
    TableDef again("LDEMP");
    again.Append(TableDef::CreateField("A", FieldType::Long));
    EXPECT_EQ(FailureOf([&] { database.Append(again); }), "3010 Table 'LDEMP' already exists.");
    EXPECT_EQ(ErrorOf([&] { database.Append(TableDef("Empty")); }), 3264);
    TableDef badName("a.b");
    badName.Append(TableDef::CreateField("A", FieldType::Long));
    EXPECT_EQ(ErrorOf([&] { database.Append(badName); }), 3125);
    TableDef twice("Twice");
    twice.Append(TableDef::CreateField("A", FieldType::Long));
    EXPECT_EQ(ErrorOf([&] { twice.Append(TableDef::CreateField("a", FieldType::Long)); }), 3191);
    EXPECT_EQ(ErrorOf([&] { twice.Append(TableDef::CreateField("B", FieldType{99})); }), 3259);
    EXPECT_EQ(twice.Fields().size(), 1U);
    TableDef counters("Counters");
    FieldDef counter = TableDef::CreateField("A", FieldType::Long);
    counter.attributes = kAutoIncrField;
    counters.Append(counter);
    counter.name = "B";
    counters.Append(counter);
    EXPECT_EQ(ErrorOf([&] { database.Append(counters); }), 3090);
    TableDef wide("Wide");
    wide.Append(TableDef::CreateField("A", FieldType::Text, 256));
    EXPECT_EQ(ErrorOf([&] { database.Append(wide); }), 3017);
    TableDef broken("Broken");
    FieldDef field = TableDef::CreateField("A", FieldType::Long);
    field.defaultValue = "1 +";
    broken.Append(field);
    EXPECT_EQ(ErrorOf([&] { database.Append(broken); }), 3355);
    EXPECT_EQ(database.TableDef("LDEmp").Fields().size(), 8U);
}

TEST_P(DatabaseTest, DefaultsAreWorkedOutWhenARowIsNew)
{
    TableDef table("Defaults");
    const auto add = [&](const char* name, FieldType type, const char* text) {
        FieldDef field = TableDef::CreateField(name, type);
        field.defaultValue = text;
        field.allowZeroLength = true;
        table.Append(field);
    };
    add("Made", FieldType::Date, "=Now()");
    add("Day", FieldType::Date, "Date()");
    add("Word", FieldType::Text, "'abc'");
    add("Yes", FieldType::Boolean, "Yes");
    add("Sum", FieldType::Integer, "2+3");
    add("None", FieldType::Text, "");
    database.Append(table);
    Recordset rows = Open("Defaults");
    rows.AddNew();
    EXPECT_EQ(rows["Made"].Value(), Value(kNow));
    EXPECT_EQ(rows["Day"].Value(), Value(base::Date{38061}));
    EXPECT_EQ(rows["Word"].Value(), Value("abc"));
    EXPECT_EQ(rows["Yes"].Value(), Value(true));
    EXPECT_EQ(rows["Sum"].Value(), Value(std::int16_t{5}));
    EXPECT_TRUE(rows["None"].Value().IsNull());
    rows.Update();
}

TEST_P(DatabaseTest, SourceIsATableASelectOrAFault)
{
    MakeEmployees();
    EXPECT_EQ(Open(" [ldemp] ").Type(), RecordsetType::Table);
    EXPECT_EQ(Open("LDEmp", RecordsetType::Dynaset).Type(), RecordsetType::Dynaset);
    EXPECT_EQ(Open("select * from LDEmp;").Type(), RecordsetType::Dynaset);
    EXPECT_EQ(FailureOf([&] { (void)Open("Nope"); }), "3078 " + base::ErrorText(3078, {"Nope"}));
    EXPECT_EQ(ErrorOf([&] { (void)Open(""); }), 3078);
    EXPECT_EQ(ErrorOf([&] { (void)Open("UPDATE LDEmp SET Hrs = 1"); }), 3219);
    EXPECT_EQ(ErrorOf([&] { (void)Open("SELECT * FROM LDEmp", RecordsetType::Table); }), 3219);
}

TEST_P(DatabaseTest, ExecuteCountsTheRowsItChanged)
{
    MakeEmployees();
    EXPECT_EQ(database.RecordsAffected(), 0);
    Add(7, "Smith, Ann");
    Add(8, "Jones, Bob");
    database.Execute("UPDATE ldemp SET Hrs = Hrs + 1");
    EXPECT_EQ(database.RecordsAffected(), 2);
    database.Execute("UPDATE LDEmp SET Hrs = 1 WHERE EmpID = 99");
    EXPECT_EQ(database.RecordsAffected(), 0);
    EXPECT_EQ(ErrorOf([&] { database.Execute("SELECT * FROM LDEmp"); }), 3065);
    EXPECT_EQ(ErrorOf([&] { database.Execute("NONSENSE"); }), 3129);
}

TEST_P(DatabaseTest, ExecutePassesOverRowsThatCannotBeChanged)
{
    TableDef table("Strict");
    FieldDef code = TableDef::CreateField("Code", FieldType::Text, 3);
    code.required = true;
    table.Append(code);
    table.Append(TableDef::CreateField("Long", FieldType::Text, 10));
    database.Append(table);
    database.Execute("INSERT INTO Strict VALUES ('a', 'ok')");
    database.Execute("INSERT INTO Strict VALUES ('b', 'too long')");
    database.Execute("UPDATE Strict SET Code = [Long]");
    EXPECT_EQ(database.RecordsAffected(), 1);
    Recordset rows = Open("Strict");
    EXPECT_EQ(Column(rows, "Code"), (std::vector<std::string>{"ok", "b"}));
    database.Execute("UPDATE Strict SET Code = ''");
    EXPECT_EQ(database.RecordsAffected(), 0);
    database.Execute("INSERT INTO Strict (Code) VALUES (Null)");
    EXPECT_EQ(database.RecordsAffected(), 0);
}

TEST_P(DatabaseTest, ExecuteThatMustNotFailUndoesWhatItDid)
{
    MakeEmployees();
    Add(1, "a");
    Add(2, "b");
    Add(3, std::string(99, 'c'));
    const auto names = [&] {
        Recordset rows = Open("LDEmp");
        return Column(rows, "Name");
    };
    const std::vector<std::string> before = names();
    EXPECT_EQ(
        ErrorOf([&] { database.Execute("UPDATE LDEmp SET Name = Name & 'xx'", kFailOnError); }),
        3163);
    EXPECT_EQ(names(), before);
    database.Execute("UPDATE LDEmp SET Name = Name & 'xx'");
    EXPECT_EQ(database.RecordsAffected(), 2);
}

TEST_P(DatabaseTest, SampleShopAnswersTheProgramsQueries)
{
    const auto sample = tests::SampleFolder() / "shop" / "Kelvaro.mdb";
    SKIP_WITHOUT_SAMPLE(sample);
    const tests::ScratchFolder folder;
    DBEngine real({[] { return kNow; }});
    Database shop = real.DefaultWorkspace().OpenDatabase(folder.Copy(sample).string());
    Recordset board =
        shop.OpenRecordset("SELECT * FROM LDEmp WHERE LEFT(Name,1) <> '@' ORDER BY Name");
    EXPECT_GT(board.RecordCount(), 0);
    EXPECT_EQ(board.FieldCount(), 12);
    std::string last;
    for (; !board.Eof(); board.MoveNext()) {
        const std::string name = *board["Name"].Value().As<std::string>();
        EXPECT_NE(name.substr(0, 1), "@");
        EXPECT_LE(last, name);
        last = name;
    }
    for (const char* sql :
         {"SELECT * FROM LDHistory",
          "SELECT Count(ID) as JobCt, Sum(Hrs) as JobHrs FROM LDHistory WHERE EmpID = 7 AND "
          "WorkDate = #3/15/2004#",
          "SELECT * FROM LDTotals WHERE EmpID = 7 AND WorkDate = #3/15/2004#",
          "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType",
          "SELECT * FROM Profile WHERE Type = 'Employee' ORDER BY LastName",
          "SELECT * FROM WorkOrder WHERE WOType In('WorkOrder', 'Estimate') AND Archived = FALSE "
          "ORDER BY WorkOrderNumber",
          "SELECT PIN FROM Profile WHERE ProfileNumber = 7",
          "SELECT * FROM GenLedger WHERE GLLaborFlag = True ORDER BY GLCode;",
          "SELECT * FROM Departments ORDER BY Sequence ASC;",
          "SELECT * FROM AutoLook WHERE Type = 'Progress';",
          "SELECT * FROM LDHistory WHERE EmpID = -1 AND WorkDate = #3/15/04# ORDER BY JobStart "
          "DESC;"}) {
        EXPECT_EQ(FailureOf([&] { (void)shop.OpenRecordset(sql); }), "") << sql;
    }
    EXPECT_EQ(ErrorOf([&] { (void)shop.OpenRecordset("SELECT * FROM LDEmp ORDER BY LastName"); }),
              3061);
}

// Access keeps a table of its own, which has in Jet 4 a type of column that no other table has.
TEST(SampleDesignTest, EveryTableOfEveryRealFileTellsItsDesignAndItsRows)
{
    SKIP_WITHOUT_SAMPLE(tests::SampleFolder() / "mdb");
    const tests::ScratchFolder folder;
    DBEngine engine({[] { return kNow; }});
    int blocks = 0;
    for (const auto& sample : std::filesystem::directory_iterator(tests::SampleFolder() / "mdb")) {
        SCOPED_TRACE(sample.path().string());
        const std::string path = folder.Copy(sample.path()).string();
        Database database = engine.DefaultWorkspace().OpenDatabase(path);
        for (const std::string& name : database.TableNames()) {
            SCOPED_TRACE(name);
            const TableDef table = database.TableDef(name);
            EXPECT_FALSE(table.Fields().empty());
            if (name != "MSysAccessObjects") continue;
            const auto& data = table.Fields().front();
            EXPECT_EQ(data.type, FieldType::Binary);
            EXPECT_EQ(data.size, database.Version() == "4.0" ? 3992 : 241);
            for (Recordset rows = database.OpenRecordset(name); !rows.Eof(); rows.MoveNext())
                blocks += rows["Data"].Value().As<base::Bytes>()->size() == 3992 ? 1 : 0;
        }
    }
    EXPECT_GT(blocks, 10);
}

}  // namespace
}  // namespace dao
