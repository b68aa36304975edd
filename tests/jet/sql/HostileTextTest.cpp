// SPDX-License-Identifier: Apache-2.0
// Whatever text arrives, a statement gives a result or a numbered error.
#include "base/NumberedError.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

constexpr std::array<std::string_view, 8> kSeeds{
    "SELECT * FROM T WHERE LEFT(Name,1) <> '@' ORDER BY Name",
    "SELECT Count(ID) as JobCt, Sum(Hrs) as JobHrs FROM T WHERE ID = 7 AND Day = #3/15/2004#",
    "SELECT * FROM T WHERE Name In('a', 'b') AND Flag = FALSE ORDER BY ID DESC;",
    "UPDATE T SET Name = 'it''s' WHERE ID = 5",
    "INSERT INTO T (Name, Hrs) VALUES ('x', 1.5E1)",
    "DELETE FROM T WHERE Not (ID Between 1 And 3) Or Name Like '[a-c]*#?'",
    "SELECT Name, Max(Hrs) FROM T GROUP BY Name HAVING Count(*) > 1",
    "SELECT DISTINCT TOP 3 IIf(Flag, Name & 'x', Null) AS y FROM T AS z WHERE z.Hrs / 0 Is Null"};

constexpr std::array<std::string_view, 28> kPieces{
    "'",     "\"",    "#",    "[",     "]",    "(", ")",  ",",        ";",    "\\",
    "Not ",  " And ", "-",    "1E999", "&",    "^", "##", "'a'b'",    "Null", " In",
    "Left(", " Is ",  "\x01", "|",     "\xC3", "*", ".",  " Like '['"};

std::string Mutated(std::mt19937& random)
{
    std::string text(kSeeds[random() % kSeeds.size()]);
    for (unsigned times = random() % 4; times > 0; --times) {
        const std::size_t at = random() % (text.size() + 1);
        switch (random() % 3) {
        case 0:
            text.insert(at, kPieces[random() % kPieces.size()]);
            break;
        case 1:
            text.erase(at, 1 + random() % 6);
            break;
        default:
            text.insert(at, kSeeds[random() % kSeeds.size()].substr(random() % 30, 12));
            break;
        }
    }
    return text;
}

TEST(HostileTextTest, EveryMutationIsAResultOrANumberedError)
{
    jet::io::MemoryFileSystem files;
    dao::DBEngine engine({[] { return base::Date{38061}; }}, files);
    engine.CreateDatabase("/sql.mdb");
    dao::Database database = engine.DefaultWorkspace().OpenDatabase("/sql.mdb");
    dao::TableDef table("T");
    table.Append(dao::TableDef::CreateField("ID", dao::FieldType::Long));
    table.Append(dao::TableDef::CreateField("Name", dao::FieldType::Text, 20));
    table.Append(dao::TableDef::CreateField("Hrs", dao::FieldType::Double));
    table.Append(dao::TableDef::CreateField("Day", dao::FieldType::Date));
    table.Append(dao::TableDef::CreateField("Flag", dao::FieldType::Boolean));
    database.Append(table);
    std::mt19937 random(20040315);
    int results = 0, errors = 0;
    for (int i = 0; i < 1500; ++i) {
        const std::string text = Mutated(random);
        const testing::ScopedTrace trace(__FILE__, __LINE__, text);
        try {
            if (random() % 2 == 0) {
                dao::Recordset rows = database.OpenRecordset(text);
                ++results;
                rows.FindFirst(text.substr(text.size() / 2));
            } else {
                database.Execute(text);
                ++results;
            }
        } catch (const base::NumberedError& error) {
            EXPECT_GE(error.Number(), 3000);
            ++errors;
        }
    }
    // Both happened, or the test says nothing.
    EXPECT_GT(results, 50);
    EXPECT_GT(errors, 50);
}

}  // namespace
