// SPDX-License-Identifier: Apache-2.0
// Jet3Test: what only files of Access 97 ask for, seen from the public face.
#include "base/Text.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/IntegrityExpectations.h"

#include <string_view>

namespace dao {
namespace {

using base::Value;

// No code page of one byte holds both.
constexpr const char* kForeign = "Zo\xC3\xAB \xE5\xB1\xB1";

class Jet3Test : public DaoTest {
protected:
    Jet3Test() : DaoTest(FileKind::Jet3) { MakeEmployees(); }

    // The number of a refused change; the file must stay as it was.
    int Refused(const std::function<void()>& change)
    {
        const std::vector<std::byte> before = files.Content(kFile);
        const int number = ErrorOf(change);
        EXPECT_TRUE(files.Content(kFile) == before);
        return number;
    }

    bool FileHolds(std::string_view bytes)
    {
        const std::vector<std::byte>& file = files.Content(kFile);
        const std::string_view all(reinterpret_cast<const char*>(file.data()), file.size());
        return all.find(bytes) != std::string_view::npos;
    }

    static dao::TableDef OneField(const char* table, const char* field)
    {
        dao::TableDef wish(table);
        wish.Append(dao::TableDef::CreateField(field, FieldType::Text, 10));
        return wish;
    }
};

TEST_F(Jet3Test, TextTakesOneByteACharacter)
{
    Add(1, "Zo\xC3\xAB Br\xC3\xB6nte \xE2\x82\xAC");  // the last one is the euro sign
    EXPECT_TRUE(FileHolds("Zo\xEB Br\xF6nte \x80"));
}

TEST_F(Jet3Test, EveryCharacterOfTheCodePageComesBack)
{
    std::string all;
    for (int code = 1; code < 256; ++code)
        all += static_cast<char>(code);
    const std::string text = base::FromWindows1252(all);
    Add(1, base::Left(text, 90) + "|");
    Recordset rows = Open("LDEmp");
    rows.Edit();
    rows["Note"] = text;
    rows.Update();
    EXPECT_EQ(rows["Note"].Value(), Value(text));
    EXPECT_EQ(rows["Name"].Value(), Value(base::Left(text, 90) + "|"));
}

TEST_F(Jet3Test, ValuesBeyondTheCodePageAreRefusedBeforeAnythingIsWritten)
{
    Add(1, "Ann");
    Recordset rows = Open("LDEmp");
    for (const char* field : {"Name", "Note"}) {
        EXPECT_EQ(Refused([&] {
                      rows.Edit();
                      rows[field] = kForeign;
                      rows.Update();
                  }),
                  3421)
            << field;
        rows.CancelUpdate();
    }
    EXPECT_EQ(Refused([&] {
                  database.Execute(std::string("UPDATE LDEmp SET Name = '") + kForeign + "'",
                                   kFailOnError);
              }),
              3421);
    EXPECT_EQ(Column(rows, "Name"), (std::vector<std::string>{"Ann"}));
}

TEST_F(Jet3Test, NamesAndDefaultsBeyondTheCodePageAreRefusedBeforeAnythingIsWritten)
{
    EXPECT_EQ(Refused([&] { database.Append(OneField(kForeign, "Name")); }), 3421);
    EXPECT_EQ(Refused([&] { database.Append(OneField("Parts", kForeign)); }), 3421);
    dao::TableDef wish("Parts");
    FieldDef field = dao::TableDef::CreateField("Name", FieldType::Text, 10);
    field.defaultValue = "\"" + std::string(kForeign) + "\"";
    wish.Append(field);
    EXPECT_EQ(Refused([&] { database.Append(wish); }), 3421);
    dao::TableDef indexed = OneField("Parts", "Name");
    indexed.Append(IndexDef{.name = kForeign, .fields = {{.field = "Name"}}});
    EXPECT_EQ(Refused([&] { database.Append(indexed); }), 3421);
    database.Append(OneField("Parts", "Name"));
}

TEST_F(Jet3Test, NamesOfTheCodePageAreKept)
{
    database.Append(OneField("Caf\xC3\xA9", "Stra\xC3\x9F"
                                            "e"));
    database.Close();
    database = engine.DefaultWorkspace().OpenDatabase(kFile);
    EXPECT_EQ(database.TableDef("Caf\xC3\xA9").Fields()[0].name, "Stra\xC3\x9F"
                                                                 "e");
    EXPECT_TRUE(FileHolds("Stra\xDF"
                          "e"));
}

TEST_F(Jet3Test, FindingWhatNoFieldCanHoldFindsNothing)
{
    Add(1, "Ann");
    Recordset rows = Open("SELECT * FROM LDEmp");
    rows.FindFirst(std::string("Name = '") + kForeign + "'");
    EXPECT_TRUE(rows.NoMatch());
    rows.FindFirst("Name = 'ANN'");
    EXPECT_FALSE(rows.NoMatch());
}

TEST_F(Jet3Test, BinaryFieldsHold255Bytes)
{
    const auto wish = [](int size) {
        dao::TableDef table("Keys");
        table.Append(dao::TableDef::CreateField("Key", FieldType::Binary, size));
        return table;
    };
    EXPECT_EQ(Refused([&] { database.Append(wish(256)); }), 3017);
    database.Append(wish(255));
}

TEST_F(Jet3Test, RowsOfManyHundredBytesKeepEveryField)
{
    dao::TableDef wish("Wide");
    for (int i = 0; i < 30; ++i)
        wish.Append(dao::TableDef::CreateField("F" + std::to_string(i), FieldType::Text, 255));
    database.Append(wish);
    Recordset rows = Open("Wide");
    // Lengths by which values begin and end on, before and behind multiples of 256.
    for (int row = 0; row < 120; ++row) {
        rows.AddNew();
        for (int i = 0; i < 30; ++i)
            rows["F" + std::to_string(i)] =
                std::string(static_cast<std::size_t>(1 + (row * 7 + i * i) % 61),
                            static_cast<char>('A' + (row + i) % 26));
        rows.Update();
    }
    int row = 0;
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext(), ++row)
        for (int i = 0; i < 30; ++i)
            EXPECT_EQ(rows["F" + std::to_string(i)].Value(),
                      Value(std::string(static_cast<std::size_t>(1 + (row * 7 + i * i) % 61),
                                        static_cast<char>('A' + (row + i) % 26))));
    EXPECT_EQ(row, 120);
}

TEST_F(Jet3Test, RowOfMoreThan2012BytesIsRefused)
{
    dao::TableDef wish("Wide");
    for (int i = 0; i < 8; ++i)
        wish.Append(dao::TableDef::CreateField("F" + std::to_string(i), FieldType::Text, 255));
    database.Append(wish);
    Recordset rows = Open("Wide");
    rows.AddNew();
    for (int i = 0; i < 8; ++i)
        rows["F" + std::to_string(i)] = std::string(255, 'x');
    EXPECT_EQ(ErrorOf([&] { rows.Update(); }), 3047);
    rows.CancelUpdate();
}

}  // namespace
}  // namespace dao
