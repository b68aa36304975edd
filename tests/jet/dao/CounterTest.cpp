// SPDX-License-Identifier: Apache-2.0
// Tests of counters that draw by chance.
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"

#include <set>

namespace dao {
namespace {

using base::Value;

class CounterTest : public DaoKindTest {
protected:
    // A table Tickets whose counter is of this type.
    void MakeTickets(FieldType type, const char* defaultValue)
    {
        TableDef table("Tickets");
        FieldDef counter = TableDef::CreateField("Id", type);
        counter.attributes = kAutoIncrField;
        counter.defaultValue = defaultValue;
        table.Append(counter);
        table.Append(TableDef::CreateField("Number", FieldType::Long));
        table.Append(Primary("Id"));
        database.Append(table);
        tickets = Open("Tickets");
    }

    [[nodiscard]] Value Drawn()
    {
        tickets.AddNew();
        const Value drawn = tickets["Id"];
        tickets.Update();
        tickets.SetBookmark(tickets.LastModified());
        EXPECT_EQ(tickets["Id"].Value(), drawn);
        return drawn;
    }

    Recordset tickets;
};

INSTANTIATE_TEST_SUITE_P(Kinds, CounterTest, testing::Values(FileKind::Jet3, FileKind::Jet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(CounterTest, RandomNumbersDoNotCount)
{
    MakeTickets(FieldType::Long, "GenUniqueID()");
    std::set<std::int32_t> drawn;
    bool large = false;
    for (int i = 0; i < 20; ++i) {
        const Value value = Drawn();
        ASSERT_NE(value.As<std::int32_t>(), nullptr);
        const std::int32_t number = *value.As<std::int32_t>();
        EXPECT_NE(number, 0);
        large = large || number > 1000000 || number < -1000000;
        drawn.insert(number);
    }
    EXPECT_EQ(drawn.size(), 20U);
    EXPECT_TRUE(large);
    database.Execute("INSERT INTO Tickets (Number) VALUES (5)", kFailOnError);
    Recordset last = Open("SELECT Id FROM Tickets WHERE Number = 5");
    EXPECT_FALSE(drawn.contains(*last["Id"].Value().As<std::int32_t>()));
}

TEST_P(CounterTest, RandomCounterIsNotAssigned)
{
    MakeTickets(FieldType::Long, "GenUniqueID()");
    tickets.AddNew();
    EXPECT_EQ(ErrorOf([&] { tickets["Id"] = std::int32_t{1}; }), 3164);
    EXPECT_EQ(database.TableDef("Tickets").Fields()[0].defaultValue, "GenUniqueID()");
}

TEST_P(CounterTest, GuidsAreDrawnAndNotAssigned)
{
    MakeTickets(FieldType::Guid, "");
    std::set<std::string> drawn;
    for (int i = 0; i < 20; ++i) {
        const Value value = Drawn();
        ASSERT_NE(value.As<base::Guid>(), nullptr);
        const auto& bytes = value.As<base::Guid>()->bytes;
        drawn.emplace(bytes.begin(), bytes.end());
    }
    EXPECT_EQ(drawn.size(), 20U);
    tickets.AddNew();
    EXPECT_EQ(ErrorOf([&] { tickets["Id"] = "{12345678-1234-1234-1234-123456789ABC}"; }), 3164);
    EXPECT_EQ(ErrorOf([&] { database.Execute("UPDATE Tickets SET Id = Id", kFailOnError); }), 3164);
    const FieldDef field = database.TableDef("Tickets").Fields()[0];
    EXPECT_EQ(field.defaultValue, "GenGUID()");
    EXPECT_NE(field.attributes & kAutoIncrField, 0);
}

TEST_P(CounterTest, OrdinaryGuidFieldTakesItsDefault)
{
    TableDef table("Marks");
    FieldDef mark = TableDef::CreateField("Mark", FieldType::Guid);
    mark.defaultValue = "GenGUID()";
    table.Append(mark);
    database.Append(table);
    Recordset marks = Open("Marks");
    marks.AddNew();
    ASSERT_NE(marks["Mark"].Value().As<base::Guid>(), nullptr);
    marks["Mark"] = "{12345678-1234-1234-1234-123456789ABC}";
    marks.Update();
    EXPECT_EQ(marks.RecordCount(), 1);
}

TEST_P(CounterTest, CounterIsLongOrGuidAndThereIsOne)
{
    TableDef table("T");
    FieldDef counter = TableDef::CreateField("A", FieldType::Integer);
    counter.attributes = kAutoIncrField;
    table.Append(counter);
    EXPECT_EQ(ErrorOf([&] { database.Append(table); }), 3001);
    TableDef two("T");
    counter = TableDef::CreateField("A", FieldType::Long);
    counter.attributes = kAutoIncrField;
    two.Append(counter);
    counter.name = "B";
    two.Append(counter);
    EXPECT_EQ(ErrorOf([&] { database.Append(two); }), 3090);
}

// The column "data" of Table4 draws a GUID for every row.
TEST(SampleCounterTest, GuidColumnOfASampleDraws)
{
    const auto sample = tests::SampleFolder() / "mdb" / "testV2000.mdb";
    SKIP_WITHOUT_SAMPLE(sample);
    const tests::ScratchFolder scratch;
    const std::string path = scratch.Copy(sample).string();
    {
        DBEngine engine({[] { return kNow; }});
        Database database = engine.DefaultWorkspace().OpenDatabase(path);
        const TableDef table = database.TableDef("Table4");
        EXPECT_EQ(table.Fields()[1].defaultValue, "GenGUID()");
        EXPECT_NE(table.Fields()[1].attributes & kAutoIncrField, 0);
        Recordset rows = database.OpenRecordset("Table4");
        rows.AddNew();
        const Value drawn = rows["data"];
        EXPECT_NE(drawn.As<base::Guid>(), nullptr);
        rows.Update();
        rows.SetBookmark(rows.LastModified());
        EXPECT_EQ(rows["data"].Value(), drawn);
    }
    jet::io::StdFileSystem disk;
    EXPECT_CLEAN(disk, path);
}

}  // namespace
}  // namespace dao
