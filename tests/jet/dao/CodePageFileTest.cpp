// SPDX-License-Identifier: Apache-2.0
// CodePageFileTest: Jet 3 files from countries whose code page has characters of two bytes.
#include "jet/format/HeaderPage.h"
#include "jet/format/TableDefinition.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/Hex.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>

namespace dao {
namespace {

using base::Value;
using Bytes = std::vector<std::byte>;

constexpr const char* kForeignFile = "/shop/Foreign.mdb";
constexpr std::size_t kPageSize = 2048;

struct Country {
    const char* name;
    std::uint16_t codePage, language;
    // A table, a field, a value, and the same value with another second byte: the first bytes are
    // the same, and in ASCII the second would differ by case alone or close a bracket.
    const char *table, *field, *value, *other;
};
constexpr std::array kCountries{
    Country{"Japanese", 932, 1041, "95949569", "964b915d", "83418355", "83618355"},
    Country{"SimplifiedChinese", 936, 2052, "b2bfbcfe", "c3fbb3c6", "81418155", "81618155"},
    Country{"Korean", 949, 1042, "babec7b0", "c0ccb8a7", "8141815d", "8161815d"},
    Country{"TraditionalChinese", 950, 1028, "b9e2abcc", "a657bada", "a441a45d", "a461a45d"}};

void Replace(Bytes& all, std::string_view placeholder, const Bytes& by)
{
    const auto same = [](std::byte left, char right) {
        return left == static_cast<std::byte>(right);
    };
    for (auto at = all.begin();; ++at) {
        at = std::search(at, all.end(), placeholder.begin(), placeholder.end(), same);
        if (at == all.end()) return;
        std::copy(by.begin(), by.end(), at);
    }
}

Bytes Number(std::uint16_t low, std::uint16_t high)
{
    Bytes bytes(4);
    jet::format::WriteU16(bytes, 0, low);
    jet::format::WriteU16(bytes, 2, high);
    return bytes;
}

// What a column says of its language and code page, where a definition page is.
void SetCountry(Bytes& file, const Country& country, std::uint16_t codePageOfColumns)
{
    const Bytes ours = Number(1033, 1252), theirs = Number(country.language, codePageOfColumns);
    for (std::size_t page = 0; page < file.size(); page += kPageSize) {
        if (file[page] != std::byte{2}) continue;
        const auto end = file.begin() + static_cast<std::ptrdiff_t>(page + kPageSize);
        for (auto at = file.begin() + static_cast<std::ptrdiff_t>(page); at != end; ++at) {
            at = std::search(at, end, ours.begin(), ours.end());
            if (at == end) break;
            std::copy(theirs.begin(), theirs.end(), at);
        }
    }
    const std::size_t at = jet::format::kHeaderPageJet3.codePage;
    const auto masked =
        static_cast<std::uint16_t>(jet::format::ReadU16(file, at) ^ 1252U ^ country.codePage);
    jet::format::WriteU16(file, at, masked);
}

// A shop's file with the country's own names: made with placeholders, which its bytes replace.
class CodePageFileTest : public DaoTest, public testing::WithParamInterface<Country> {
protected:
    CodePageFileTest() : DaoTest(FileKind::Jet3)
    {
        MakeTables();
        database.Execute("INSERT INTO TTTT (Id, FFFF) VALUES (1, 'VVVV')", kFailOnError);
        database.Execute("INSERT INTO TTTT (Id, FFFF) VALUES (2, 'OOOO')", kFailOnError);
        database.Execute("INSERT INTO TTTT (Id, FFFF) VALUES (3, 'door')", kFailOnError);
        database.Execute("INSERT INTO Keyed (Name) VALUES ('VVVV')", kFailOnError);
        database.Close();
        Translate(GetParam().codePage);
    }

    void MakeTables()
    {
        TableDef table("TTTT");
        table.Append(TableDef::CreateField("Id", FieldType::Long));
        table.Append(TableDef::CreateField("FFFF", FieldType::Text, 20));
        FieldDef note = TableDef::CreateField("Note", FieldType::Memo);
        note.validationRule = "Is Null Or <>\"VVVV\"";
        table.Append(note);
        table.Append(Primary("Id"));
        database.Append(table);
        TableDef keyed("Keyed");
        keyed.Append(TableDef::CreateField("Name", FieldType::Text, 20));
        keyed.Append(IndexDef{.name = "Name", .fields = {{.field = "Name"}}});
        database.Append(keyed);
    }

    // The columns of some files tell no code page: then that of the header holds.
    void Translate(std::uint16_t codePageOfColumns)
    {
        Bytes file = files.Content(kFile);
        SetCountry(file, GetParam(), codePageOfColumns);
        Replace(file, "TTTT", tests::FromHex(GetParam().table));
        Replace(file, "FFFF", tests::FromHex(GetParam().field));
        Replace(file, "VVVV", tests::FromHex(GetParam().value));
        Replace(file, "OOOO", tests::FromHex(GetParam().other));
        if (files.Exists(kForeignFile)) files.Remove(kForeignFile);
        files.Create(kForeignFile)->Write(0, file);
        database = engine.DefaultWorkspace().OpenDatabase(kForeignFile);
    }

    void TearDown() override
    {
        DaoTest::TearDown();
        database.Close();
        EXPECT_SPOTLESS(files, kForeignFile);
    }

    // The name of the table that is none of the engine's and not the other one of ours.
    std::string Table() const
    {
        for (const std::string& name : database.TableNames())
            if (name != "Keyed" && name.substr(0, 4) != "MSys") return name;
        return {};
    }

    // The number of a refused change; the file must stay as it was.
    int Refused(const std::function<void()>& change)
    {
        const Bytes before = files.Content(kForeignFile);
        const int number = ErrorOf(change);
        EXPECT_TRUE(files.Content(kForeignFile) == before);
        return number;
    }
};
INSTANTIATE_TEST_SUITE_P(Countries, CodePageFileTest, testing::ValuesIn(kCountries),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_P(CodePageFileTest, TablesFieldsAndTextsAreRead)
{
    EXPECT_EQ(database.TableDef(Table()).Fields().size(), 3U);
    Recordset rows = Open(Table());
    const std::vector<std::string> texts =
        Column(rows, database.TableDef(Table()).Fields()[1].name);
    ASSERT_EQ(texts.size(), 3U);
    EXPECT_NE(texts[0], texts[1]);
    EXPECT_EQ(texts[2], "door");
}

TEST_P(CodePageFileTest, ColumnsThatTellNoCodePageHaveThatOfTheFile)
{
    Recordset before = Open(Table());
    const auto texts = Column(before, database.TableDef(Table()).Fields()[1].name);
    before.Close();
    database.Close();
    Translate(0);
    Recordset rows = Open(Table());
    EXPECT_EQ(Column(rows, database.TableDef(Table()).Fields()[1].name), texts);
}

TEST_P(CodePageFileTest, TextIsFoundByItselfAndByNoOther)
{
    Recordset rows = Open(Table());
    const std::string field = database.TableDef(Table()).Fields()[1].name;
    const std::string text = *rows[field].Value().As<std::string>();
    const auto found = [&](const std::string& where) {
        Recordset some = Open("SELECT Id FROM [" + Table() + "] WHERE [" + field + "] " + where);
        return Column(some, "Id");
    };
    EXPECT_EQ(found("= '" + text + "'"), (std::vector<std::string>{"1"}));
    EXPECT_EQ(found("LIKE '" + text + "'"), (std::vector<std::string>{"1"}));
    EXPECT_EQ(found("= 'DOOR'"), (std::vector<std::string>{"3"}));
}

TEST_P(CodePageFileTest, RowsOfATableWithoutIndexOverTextsAreWritten)
{
    const std::string field = database.TableDef(Table()).Fields()[1].name;
    Recordset rows = Open(Table());
    const Value stored = rows[field].Value();
    rows.AddNew();
    rows["Id"] = 4;
    rows[field] = "hood";
    rows["Note"] = "black";
    rows.Update();
    // What was read is stored again as it was.
    rows.AddNew();
    rows["Id"] = 5;
    rows[field] = stored;
    rows.Update();
    rows.Close();
    rows = Open("SELECT * FROM [" + Table() + "] WHERE Id >= 4 ORDER BY Id");
    EXPECT_EQ(rows[field].Value(), Value("hood"));
    rows.MoveNext();
    EXPECT_EQ(rows[field].Value(), stored);
    rows.Edit();
    rows[field] = "door";
    rows.Update();
    rows.Delete();
}

TEST_P(CodePageFileTest, NewTextOfTheCountryIsRefusedAndNothingIsWritten)
{
    const std::string field = database.TableDef(Table()).Fields()[1].name;
    for (const char* text : {"\xE3\x83\x89\xE3\x82\xA2", "Zo\xC3\xAB", "\xEF\xA1\x81"})
        EXPECT_EQ(Refused([&] {
                      Recordset rows = Open(Table());
                      rows.Edit();
                      rows[field] = text;
                      rows.Update();
                  }),
                  3251)
            << text;
}

TEST_P(CodePageFileTest, ChangesOfAnIndexOverTextsAreRefusedAndNothingIsWritten)
{
    EXPECT_EQ(Refused([&] { database.Execute("INSERT INTO Keyed VALUES ('hood')", kFailOnError); }),
              3251);
    EXPECT_EQ(Refused([&] { database.Execute("DELETE FROM Keyed", kFailOnError); }), 3251);
    EXPECT_EQ(Open("Keyed").RecordCount(), 1);
    // So are those of the catalog, which has one over the names.
    TableDef parts("Parts");
    parts.Append(TableDef::CreateField("Name", FieldType::Text, 20));
    EXPECT_EQ(Refused([&] { database.Append(parts); }), 3251);
}

TEST_P(CodePageFileTest, RuleThatHoldsSuchTextIsKept)
{
    Recordset rows = Open(Table());
    const Value text = rows[database.TableDef(Table()).Fields()[1].name].Value();
    rows.Edit();
    rows["Note"] = text;
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3317);
    rows.CancelUpdate();
}

}  // namespace
}  // namespace dao
