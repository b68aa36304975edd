// SPDX-License-Identifier: Apache-2.0
// Tests of tables that lie in another database file.
#include "jet/catalog/Catalog.h"
#include "jet/catalog/SystemTables.h"
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

namespace dao {
namespace {

using base::Value;

constexpr const char* kOther = "/shop/Parts.mdb";

TableDef Link(const char* name, const char* table, const std::string& path = kOther)
{
    TableDef link(name);
    link.SetLink(name, ";DATABASE=" + path, table);
    return link;
}

class LinkedTableTest : public DaoKindTest {
protected:
    LinkedTableTest()
    {
        MakeEmployees();
        // The other file is of the other format.
        engine.CreateDatabase(kOther,
                              IsJet3(GetParam()) ? DatabaseVersion::Jet4 : DatabaseVersion::Jet3);
        other = engine.DefaultWorkspace().OpenDatabase(kOther);
        TableDef parts("Parts");
        FieldDef counter = TableDef::CreateField("Entry", FieldType::Long);
        counter.attributes = kAutoIncrField;
        parts.Append(counter);
        parts.Append(TableDef::CreateField("Name", FieldType::Text, 30));
        FieldDef price = TableDef::CreateField("Price", FieldType::Currency);
        price.validationRule = ">=0";
        price.validationText = "Nothing is for less than nothing.";
        parts.Append(price);
        other.Append(parts);
        database.Append(Link("PartsThere", "Parts"));
    }

    void TearDown() override
    {
        DaoTest::TearDown();
        EXPECT_SPOTLESS(files, kOther);
    }

    void AddPart(const char* name, base::Currency price)
    {
        Recordset rows = Open("PartsThere");
        rows.AddNew();
        rows["Name"] = name;
        rows["Price"] = price;
        rows.Update();
    }

    // A link as another program left it in this file.
    void MakeForeign(const char* name, jet::catalog::ObjectType type, const char* connect,
                     const char* path)
    {
        database.Append(Link(name, "Parts"));
        ChangeObject(
            name,
            {{"Type", static_cast<std::int16_t>(type)}, {"Connect", connect}, {"Database", path}});
    }

    void ChangeObject(const char* name, const std::vector<std::pair<const char*, Value>>& values)
    {
        database.Close();
        const auto pager = jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadWrite);
        jet::table::NativeTable objects(pager, jet::catalog::kObjectsPage);
        std::vector<jet::table::Assignment> assignments;
        for (const auto& [column, value] : values)
            assignments.push_back({jet::catalog::PlaceOf(objects, column), value});
        for (const auto row : jet::catalog::RowsWith(objects, "Name", name))
            objects.Update(row, assignments);
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
    }

    Database other;
};

INSTANTIATE_TEST_SUITE_P(Kinds, LinkedTableTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(LinkedTableTest, RowsAreReadAndWrittenInTheOtherFile)
{
    AddPart("Bumper", {1250000});
    AddPart("Fender", {99500});
    Recordset there = other.OpenRecordset("SELECT * FROM Parts ORDER BY Name");
    EXPECT_EQ(Column(there, "Name"), (std::vector<std::string>{"Bumper", "Fender"}));
    Recordset here = Open("SELECT * FROM PartsThere WHERE Name = 'Fender'");
    here.Edit();
    here["Price"] = "12.50";
    here.Update();
    there.Requery();
    EXPECT_EQ(Column(there, "Price"), (std::vector<std::string>{"125", "12.5"}));
    here.Delete();
    database.Execute("UPDATE PartsThere SET Name = 'Hood'", kFailOnError);
    there.Requery();
    EXPECT_EQ(Column(there, "Name"), (std::vector<std::string>{"Hood"}));
}

TEST_P(LinkedTableTest, LinkByItsNameGivesADynaset)
{
    Recordset rows = Open("PartsThere");
    EXPECT_EQ(rows.Type(), RecordsetType::Dynaset);
    EXPECT_TRUE(rows.Updatable());
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Open("PartsThere", RecordsetType::Table)); }), 3219);
    EXPECT_EQ(rows.SizeOf(1), 30);
    database.Append(Link("Parts", "Parts"));
    EXPECT_EQ(Open("Parts").Type(), RecordsetType::Dynaset);
}

TEST_P(LinkedTableTest, SizesOfTextsAreThoseOfTheOtherFile)
{
    Recordset rows = Open("PartsThere");
    rows.AddNew();
    rows["Name"] = std::string(30, 'x');
    EXPECT_EQ(ErrorOf([&] { rows["Name"] = std::string(31, 'x'); }), 3163);
    rows.Update();
    EXPECT_EQ(ErrorOf([&] {
                  database.Execute("UPDATE PartsThere SET Name = '1234567890123456789012345678901'",
                                   kFailOnError);
              }),
              3163);
    database.Execute("UPDATE PartsThere SET Name = '123456789012345678901234567890'", kFailOnError);
    rows.Requery();
    EXPECT_EQ(rows["Name"].Value(), Value("123456789012345678901234567890"));
}

TEST_P(LinkedTableTest, RulesOfTheOtherFileHold)
{
    Recordset rows = Open("PartsThere");
    rows.AddNew();
    rows["Price"] = -1;
    EXPECT_EQ(FailureOf([&] { rows.Update(); }), "3316 Nothing is for less than nothing.");
}

TEST_P(LinkedTableTest, FileStaysOpenAsLongAsARecordSetUsesIt)
{
    AddPart("Bumper", {1});
    Recordset rows = Open("PartsThere");
    other.Close();
    rows.Edit();
    rows["Name"] = "Hood";
    rows.Update();
    EXPECT_EQ(rows["Name"].Value(), Value("Hood"));
}

// Others see us in the lock file of the other file, and only as long as we use a table of it.
TEST_P(LinkedTableTest, FileIsSharedAndLetGo)
{
    const std::string locks = "/shop/Parts.ldb";
    other.Close();
    EXPECT_FALSE(files.Exists(locks));
    {
        Recordset rows = Open("PartsThere");
        EXPECT_TRUE(files.Exists(locks));
        DBEngine theirEngine(SettingsOf("BAY-2"), files);
        Workspace& there = theirEngine.DefaultWorkspace();
        EXPECT_EQ(ErrorOf([&] { static_cast<void>(there.OpenDatabase(kOther, true)); }), 3704);
        EXPECT_EQ(there.OpenDatabase(kOther).OpenRecordset("Parts").RecordCount(), 0);
    }
    EXPECT_FALSE(files.Exists(locks));
    database.Execute("DELETE FROM PartsThere");
    EXPECT_FALSE(files.Exists(locks));
}

TEST_P(LinkedTableTest, FileThatSomebodyHasToHimselfIsRefused)
{
    other.Close();
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    const Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kOther, true);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Open("PartsThere")); }), 3356);
    EXPECT_TRUE(Open("LDEmp").Eof());
}

TEST_P(LinkedTableTest, PagesAreLockedInTheOtherFile)
{
    AddPart("Bumper", {1});
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kOther);
    Recordset editing = theirs.OpenRecordset("SELECT * FROM Parts");
    editing.Edit();
    EXPECT_EQ(
        ErrorOf([&] { database.Execute("UPDATE PartsThere SET Name = 'Hood'", kFailOnError); }),
        3260);
    Recordset rows = Open("PartsThere");
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3260);
    editing.CancelUpdate();
    rows.Edit();
    EXPECT_EQ(ErrorOf([&] { editing.Edit(); }), 3260);
}

TEST_P(LinkedTableTest, RowsThatAnotherProgramStoredAreSeen)
{
    AddPart("Bumper", {1});
    Recordset rows = Open("PartsThere");
    DBEngine theirEngine(SettingsOf("BAY-2"), files);
    Database theirs = theirEngine.DefaultWorkspace().OpenDatabase(kOther);
    theirs.Execute("UPDATE Parts SET Name = 'Hood'", kFailOnError);
    Recordset again = Open("SELECT * FROM PartsThere WHERE Name = 'Hood'");
    EXPECT_EQ(again.RecordCount(), 1);
    theirs.Execute("UPDATE Parts SET Name = 'Door'", kFailOnError);
    database.Execute("DELETE FROM PartsThere WHERE Name = 'Door'", kFailOnError);
    EXPECT_EQ(database.RecordsAffected(), 1);
}

TEST_P(LinkedTableTest, RowIsEditedOnceByWhateverName)
{
    AddPart("Bumper", {1});
    Recordset linked = Open("PartsThere");
    Recordset direct = other.OpenRecordset("Parts");
    linked.Edit();
    EXPECT_EQ(ErrorOf([&] { direct.Edit(); }), 3188);
    linked.CancelUpdate();
    EXPECT_EQ(ErrorOf([&] { direct.Edit(); }), 0);
    EXPECT_EQ(ErrorOf([&] { linked.Edit(); }), 3188);
}

// Another session of the program is kept out of a page as in the file itself.
TEST_P(LinkedTableTest, SessionsKeepEachOtherOutOfThePagesThere)
{
    AddPart("Bumper", {1});
    AddPart("Fender", {2});
    Workspace second = engine.CreateWorkspace("Second", "admin", "");
    Database theirs = second.OpenDatabase(kFile);
    Recordset editing = theirs.OpenRecordset("PartsThere");
    editing.Edit();
    EXPECT_EQ(ErrorOf([&] {
                  database.Execute("UPDATE PartsThere SET Name = 'Hood' WHERE Name = 'Fender'",
                                   kFailOnError);
              }),
              3188);
    editing.CancelUpdate();
    EXPECT_EQ(ErrorOf([&] {
                  database.Execute("UPDATE PartsThere SET Name = 'Hood' WHERE Name = 'Fender'",
                                   kFailOnError);
              }),
              0);
}

TEST_P(LinkedTableTest, StatementMayReadOneFileAndWriteTheOther)
{
    Add(7, "Smith, Ann");
    database.Execute("INSERT INTO PartsThere (Name, Price) SELECT Name, EmpID FROM LDEmp",
                     kFailOnError);
    database.Execute("INSERT INTO LDEmp (EmpID, Name) SELECT Price, Name FROM PartsThere",
                     kFailOnError);
    Recordset own = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(Column(own, "Name"), (std::vector<std::string>{"Smith, Ann", "Smith, Ann"}));
}

TEST_P(LinkedTableTest, DesignTellsTheLinkAndTheFieldsThere)
{
    const TableDef link = database.TableDef("partsthere");
    EXPECT_EQ(link.Name(), "PartsThere");
    EXPECT_EQ(link.Connect(), std::string(";DATABASE=") + kOther);
    EXPECT_EQ(link.SourceTableName(), "Parts");
    ASSERT_EQ(link.Fields().size(), 3U);
    EXPECT_EQ(link.Fields()[1].name, "Name");
    EXPECT_EQ(link.Fields()[1].size, 30);
    const std::vector<std::string> names = database.TableNames();
    EXPECT_NE(std::find(names.begin(), names.end(), "PartsThere"), names.end());
}

TEST_P(LinkedTableTest, MissingFileIsNamedWhenTheTableIsUsed)
{
    other.Close();
    files.Rename(kOther, "/shop/Gone.mdb");
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Open("PartsThere")); }),
              "3024 Could not find file '/shop/Parts.mdb'.");
    EXPECT_EQ(FailureOf([&] { database.Execute("DELETE FROM PartsThere"); }),
              "3024 Could not find file '/shop/Parts.mdb'.");
    // The rest of the database is there.
    EXPECT_TRUE(Open("LDEmp").Eof());
    EXPECT_FALSE(files.Exists("/shop/Parts.ldb"));
    files.Rename("/shop/Gone.mdb", kOther);
    AddPart("Bumper", {1});
}

TEST_P(LinkedTableTest, TableThatIsNotThereAnyMoreIsNamed)
{
    other.Close();
    files.Rename(kOther, "/shop/Gone.mdb");
    engine.CreateDatabase(kOther);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Open("PartsThere")); }),
              "3011 " + base::ErrorText(3011, {"Parts"}));
}

TEST_P(LinkedTableTest, LinkMustLeadToATable)
{
    EXPECT_EQ(ErrorOf([&] { database.Append(Link("New", "Nothing")); }), 3011);
    EXPECT_EQ(ErrorOf([&] { database.Append(Link("New", "Parts", "/shop/None.mdb")); }), 3024);
    EXPECT_EQ(ErrorOf([&] { database.Append(Link("LDEmp", "Parts")); }), 3010);
    EXPECT_EQ(ErrorOf([&] { database.Append(Link("PartsThere", "Parts")); }), 3010);
    EXPECT_EQ(ErrorOf([&] { database.Append(Link("a.b", "Parts")); }), 3125);
    TableDef sheet("Sheet");
    sheet.SetLink("Sheet", "Excel 8.0;DATABASE=/shop/Parts.mdb", "Parts");
    EXPECT_EQ(ErrorOf([&] { database.Append(sheet); }), 3170);
    // Links do not lead to links.
    EXPECT_EQ(ErrorOf([&] { database.Append(Link("Ring", "PartsThere", kFile)); }), 3011);
}

TEST_P(LinkedTableTest, LinkToAFileOfAnotherKindIsToldAndHindersNothingElse)
{
    using jet::catalog::ObjectType;
    MakeForeign("Sheet", ObjectType::LinkedTable, "Excel 8.0;HDR=YES;IMEX=2;PWD=x",
                "/shop/Prices.xls");
    MakeForeign("List", ObjectType::LinkedTable, "Text;DSN=List;FMT=Delimited", "/shop");
    MakeForeign("Old", ObjectType::LinkedTable, "dBase 5.0;", "/shop");
    MakeForeign("dbo_Orders", ObjectType::LinkedTable, "ODBC;DSN=Orders;UID=shop", "");
    const std::vector<std::string> names = database.TableNames();
    const std::string missing = "3170 " + base::ErrorText(3170);
    for (const char* link : {"Sheet", "List", "Old", "dbo_Orders"}) {
        EXPECT_NE(std::find(names.begin(), names.end(), link), names.end()) << link;
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Open(link)); }), missing) << link;
        const std::string select = std::string("SELECT * FROM ") + link;
        EXPECT_EQ(FailureOf([&] { static_cast<void>(Open(select)); }), missing) << link;
        EXPECT_EQ(ErrorOf([&] { static_cast<void>(database.TableDef(link)); }), 3170) << link;
        EXPECT_EQ(ErrorOf([&] { database.Append(Link(link, "Parts")); }), 3010) << link;
    }
    // What is told names the kind, and no password.
    try {
        static_cast<void>(Open("Sheet"));
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Detail(), "table Sheet is linked to Excel 8.0");
    }
    Add(1, "Ann");
    AddPart("Bumper", {1});
    database.DeleteTableDef("Sheet");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Open("Sheet")); }), 3078);
}

// Such a table has a definition of its own here, which says what its fields are, and no rows.
TEST_P(LinkedTableTest, TableOfAServerIsListedAndRefused)
{
    TableDef copy("dbo_Parts");
    copy.Append(TableDef::CreateField("Name", FieldType::Text, 30));
    database.Append(copy);
    ChangeObject("dbo_Parts", {{"Type", static_cast<std::int16_t>(4)},
                               {"Flags", std::int32_t{0x20100000}},
                               {"Connect", "DSN=Parts;UID=shop;DATABASE=Parts"},
                               {"ForeignName", "dbo.Parts"}});
    const std::vector<std::string> names = database.TableNames();
    EXPECT_NE(std::find(names.begin(), names.end(), "dbo_Parts"), names.end());
    const std::string missing = "3170 " + base::ErrorText(3170);
    EXPECT_EQ(FailureOf([&] { static_cast<void>(Open("dbo_Parts")); }), missing);
    EXPECT_EQ(FailureOf([&] { database.Execute("INSERT INTO dbo_Parts VALUES ('x')"); }), missing);
    EXPECT_EQ(ErrorOf([&] { database.DeleteTableDef("dbo_Parts"); }), 3251);
    Add(1, "Ann");
    AddPart("Bumper", {1});
}

TEST_P(LinkedTableTest, LinkIsDeletedAndTheTableThereStays)
{
    AddPart("Bumper", {1});
    database.Append(Link("Again", "Parts"));
    {
        Recordset open = Open("PartsThere");
        database.DeleteTableDef("partsthere");
        EXPECT_EQ(open["Name"].Value(), Value("Bumper"));
    }
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Open("PartsThere")); }), 3078);
    EXPECT_EQ(Open("Again").RecordCount(), 1);
    EXPECT_EQ(other.OpenRecordset("Parts").RecordCount(), 1);
    EXPECT_EQ(ErrorOf([&] { database.DeleteTableDef("PartsThere"); }), 3265);
    EXPECT_EQ(ErrorOf([&] { database.DeleteTableDef("LDEmp"); }), 3251);
    database.Append(Link("PartsThere", "Parts"));
    EXPECT_EQ(Open("PartsThere").RecordCount(), 1);
    database.Close();
    database = engine.DefaultWorkspace().OpenDatabase(kFile, false, true);
    EXPECT_EQ(ErrorOf([&] { database.DeleteTableDef("PartsThere"); }), 3027);
}

// The other file has a password.
class GuardedLinkTest : public DaoKindTest {
protected:
    GuardedLinkTest()
    {
        jet::catalog::Catalog::CreateDatabase(
            files, kGuarded, IsJet3(GetParam()) ? jet::format::kJet4 : jet::format::kJet3,
            {.password = "Sesame 7"});
        Database other =
            engine.DefaultWorkspace().OpenDatabase(kGuarded, false, false, ";pwd=Sesame 7");
        TableDef parts("Parts");
        parts.Append(TableDef::CreateField("Name", FieldType::Text, 30));
        other.Append(parts);
        other.Execute("INSERT INTO Parts VALUES ('Bumper')", kFailOnError);
    }

    int Linking(const std::string& connect)
    {
        TableDef link("PartsThere");
        link.SetLink("PartsThere", connect, "Parts");
        return ErrorOf([&] { database.Append(link); });
    }

    static constexpr const char* kGuarded = "/shop/Guarded.mdb";
};
INSTANTIATE_TEST_SUITE_P(Kinds, GuardedLinkTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(GuardedLinkTest, PasswordStandsInTheLink)
{
    for (const char* connect :
         {"MS Access;PWD=Sesame 7;DATABASE=/shop/Guarded.mdb",
          ";PWD=Sesame 7;DATABASE=/shop/Guarded.mdb", ";DATABASE=/shop/Guarded.mdb;PWD=Sesame 7",
          "PWD=Sesame 7;database=/shop/Guarded.mdb;",
          "ms access;pwd=Sesame 7;TABLE=Parts;DATABASE=/shop/Guarded.mdb"}) {
        ASSERT_EQ(Linking(connect), 0) << connect;
        EXPECT_EQ(Open("PartsThere")["Name"].Value(), Value("Bumper")) << connect;
        // As it is read, so it can be made again.
        const TableDef told = database.TableDef("PartsThere");
        database.DeleteTableDef("PartsThere");
        database.Append(told);
        database.Execute("UPDATE PartsThere SET Name = 'Bumper'", kFailOnError);
        EXPECT_EQ(database.RecordsAffected(), 1);
        database.DeleteTableDef("PartsThere");
    }
}

TEST_P(GuardedLinkTest, WrongPasswordIsRefused)
{
    for (const char* connect :
         {";DATABASE=/shop/Guarded.mdb", ";PWD=sesame 7;DATABASE=/shop/Guarded.mdb",
          "MS Access;PWD=;DATABASE=/shop/Guarded.mdb"})
        EXPECT_EQ(Linking(connect), 3031) << connect;
    EXPECT_EQ(Linking("MS Access;PWD=Sesame 7"), 3170);
    EXPECT_EQ(Linking("Excel 8.0;PWD=Sesame 7;DATABASE=/shop/Guarded.mdb"), 3170);
}

TEST_P(LinkedTableTest, LinkMayLeadIntoItsOwnFile)
{
    database.Append(Link("People", "LDEmp", kFile));
    Add(7, "Smith, Ann");
    Recordset rows = Open("SELECT * FROM People");
    rows.Edit();
    rows["Name"] = "Smith, Anna";
    rows.Update();
    Recordset own = Open("SELECT * FROM LDEmp");
    EXPECT_EQ(own["Name"].Value(), Value("Smith, Anna"));
}

TEST_P(LinkedTableTest, RelationshipsOfTheOtherFileHold)
{
    TableDef kinds("Kinds");
    kinds.Append(TableDef::CreateField("Id", FieldType::Long));
    kinds.Append(Primary("Id"));
    other.Append(kinds);
    TableDef uses("Uses");
    uses.Append(TableDef::CreateField("Kind", FieldType::Long));
    other.Append(uses);
    other.Append(RelationDef{"KindsUses", "Kinds", "Uses", 0, {{"Id", "Kind"}}});
    database.Append(Link("UsesThere", "Uses"));
    EXPECT_EQ(ErrorOf([&] { database.Execute("INSERT INTO UsesThere VALUES (1)", kFailOnError); }),
              3201);
    other.Execute("INSERT INTO Kinds VALUES (1)", kFailOnError);
    database.Execute("INSERT INTO UsesThere VALUES (1)", kFailOnError);
}

TEST_P(LinkedTableTest, DatabaseOpenedForReadingDoesNotWriteThere)
{
    AddPart("Bumper", {1});
    database.Close();
    other.Close();
    database = engine.DefaultWorkspace().OpenDatabase(kFile, false, true);
    Recordset rows = Open("PartsThere");
    EXPECT_EQ(rows["Name"].Value(), Value("Bumper"));
    EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), 3027);
}

// On the machine's own disk, for in memory there are no folders.
TEST(LinkedFolderTest, FolderThatIsNotThereIsNamedWhenTheTableIsUsed)
{
    const tests::ScratchFolder folder;
    const std::filesystem::path away = folder.Path() / "Away";
    std::filesystem::create_directory(away);
    const std::string here = (folder.Path() / "Shop.mdb").string();
    const std::string there = (away / "Parts.mdb").string();
    DBEngine engine({[] { return kNow; }});
    for (const std::string& path : {here, there})
        engine.CreateDatabase(path);
    TableDef parts("Parts");
    parts.Append(TableDef::CreateField("Name", FieldType::Text, 30));
    engine.DefaultWorkspace().OpenDatabase(there).Append(parts);
    Database database = engine.DefaultWorkspace().OpenDatabase(here);
    database.Append(Link("PartsThere", "Parts", there));
    database.Execute("INSERT INTO PartsThere VALUES ('Bumper')", kFailOnError);

    const std::string invalid = "3044 '" + there +
                                "' is not a valid path.  Make sure that the path name is spelled "
                                "correctly and that you are connected to the server on which the "
                                "file resides.";
    std::filesystem::rename(away, folder.Path() / "Gone");
    EXPECT_EQ(FailureOf([&] { (void)database.OpenRecordset("PartsThere"); }), invalid);
    EXPECT_EQ(FailureOf([&] { database.Execute("DELETE FROM PartsThere"); }), invalid);
    EXPECT_EQ(FailureOf([&] { database.Append(Link("Again", "Parts", there)); }), invalid);
    EXPECT_FALSE(std::filesystem::exists(away));
    std::filesystem::rename(folder.Path() / "Gone", away);
    EXPECT_EQ(database.OpenRecordset("PartsThere").RecordCount(), 1);
    database.Close();
    jet::io::StdFileSystem disk;
    EXPECT_SPOTLESS(disk, here);
    EXPECT_SPOTLESS(disk, there);
}

}  // namespace
}  // namespace dao
