// SPDX-License-Identifier: Apache-2.0
// DecimalIndexTest: a table with indexes over a decimal, from its making to the last row.
#include "base/Convert.h"
#include "jet/catalog/Catalog.h"
#include "jet/index/Index.h"
#include "jet/pages/Pager.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>

namespace dao {
namespace {

using base::Value;

class DecimalIndexTest : public DaoTest, public testing::WithParamInterface<FileKind> {
protected:
    DecimalIndexTest() : DaoTest(GetParam())
    {
        TableDef parts("Parts");
        FieldDef weight = TableDef::CreateField("Weight", FieldType::Decimal);
        weight.precision = 28;
        weight.scale = 4;
        parts.Append(weight);
        parts.Append(TableDef::CreateField("Name", FieldType::Text, 50));
        parts.Append(Primary("Weight"));
        parts.Append(IndexDef{.name = "Down", .fields = {{.field = "Weight", .ascending = false}}});
        database.Append(parts);
    }

    // The number of the error, 0 when it is stored.
    int Add(const Value& weight, const char* name = "x")
    {
        Recordset rows = Open("Parts");
        rows.AddNew();
        rows["Weight"] = weight;
        rows["Name"] = name;
        return ErrorOf([&] { rows.Update(); });
    }

    // The weights in the order of an index.
    std::vector<std::string> InOrderOf(const char* index)
    {
        const auto pager = jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadOnly);
        const auto table = jet::catalog::Catalog(pager).Open("Parts");
        const auto& definition = table.rows->Definition();
        const auto named =
            std::find_if(definition.namedIndexes.begin(), definition.namedIndexes.end(),
                         [&](const auto& one) { return one.name == index; });
        const jet::index::Index tree(*pager, definition, definition.indexes[named->tree]);
        std::vector<std::string> weights;
        for (const jet::format::RowId id : tree.Rows({})) {
            const auto row = table.rows->Fetch(id).value();
            weights.push_back(base::TextOf(table.rows->ValueOf(table.rows->View(row), 0)));
        }
        return weights;
    }

    int Count(const std::string& where)
    {
        Recordset counted = Open("SELECT Count(*) AS N FROM Parts WHERE " + where);
        return *counted["N"].Value().As<std::int32_t>();
    }
};
INSTANTIATE_TEST_SUITE_P(Kinds, DecimalIndexTest,
                         testing::Values(FileKind::Jet4, FileKind::EncodedJet4),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(DecimalIndexTest, RowsStandInTheOrderOfTheirNumbers)
{
    for (const Value& weight :
         std::vector<Value>{2.5, std::int32_t{-3}, "-0.0001", "0", "12345678901234567890.5",
                            std::int16_t{7}, "-12345678901234567890.5", 2.4999, "0.0001", -300.0})
        EXPECT_EQ(Add(weight), 0) << base::TextOf(weight);
    EXPECT_EQ(InOrderOf("PrimaryKey"),
              (std::vector<std::string>{"-12345678901234567890.5", "-300", "-3", "-0.0001", "0",
                                        "0.0001", "2.4999", "2.5", "7", "12345678901234567890.5"}));
    // Keys of the original engine: those of negative numbers come first in both directions.
    EXPECT_EQ(
        InOrderOf("Down"),
        (std::vector<std::string>{"-0.0001", "-3", "-300", "-12345678901234567890.5",
                                  "12345678901234567890.5", "7", "2.5", "2.4999", "0.0001", "0"}));
}

TEST_P(DecimalIndexTest, NumberIsOneHoweverItIsWritten)
{
    EXPECT_EQ(Add("2.50"), 0);
    EXPECT_EQ(Add(2.5), 3022);
    EXPECT_EQ(Add("2.5000"), 3022);
    EXPECT_EQ(Add(0.0), 0);
    EXPECT_EQ(Add(-0.0), 3022);
    EXPECT_EQ(Add("-2.5"), 0);
    EXPECT_EQ(Add(base::Null()), 3058);
    EXPECT_EQ(Open("Parts").RecordCount(), 3);
}

TEST_P(DecimalIndexTest, NoDigitIsLostOnTheWayIntoAField)
{
    const auto stored = [&](const Value& weight) {
        EXPECT_EQ(Add(weight), 0) << base::TextOf(weight);
        Recordset rows = Open("Parts");
        rows.MoveLast();
        const std::string text = base::TextOf(rows["Weight"].Value());
        rows.Delete();
        return text;
    };
    EXPECT_EQ(stored("123456789012345678901234.5678"), "123456789012345678901234.5678");
    EXPECT_EQ(stored(" -7.5 "), "-7.5");
    EXPECT_EQ(stored(base::Currency{9223372036854775807}), "922337203685477.5807");
    EXPECT_EQ(stored(1.25e20), "125000000000000000000");
    EXPECT_EQ(stored(-1.2345e17), "-123450000000000000");
    EXPECT_EQ(stored(0.0005), "0.0005");
    EXPECT_EQ(stored(0.00004), "0");
    EXPECT_EQ(stored(0.7F), "0.7");
    EXPECT_EQ(stored(true), "-1");
    EXPECT_EQ(stored("1.5E3"), "1500");
    EXPECT_EQ(stored(1e-300), "0");
    for (const Value& weight : std::vector<Value>{1e24, 1e300, "1234567890123456789012345"})
        EXPECT_EQ(ErrorOf([&] {
                      Recordset rows = Open("Parts");
                      rows.AddNew();
                      rows["Weight"] = weight;
                  }),
                  3421);
}

TEST_P(DecimalIndexTest, RowsAreFoundChangedAndDeleted)
{
    for (int i = -100; i <= 100; ++i)
        ASSERT_EQ(Add(i / 4.0), 0);
    EXPECT_EQ(Count("Weight = -2.25"), 1);
    EXPECT_EQ(Count("Weight >= 24.5"), 3);
    EXPECT_EQ(Count("Weight = 0.1"), 0);
    database.Execute("UPDATE Parts SET Weight = -1000.125 WHERE Weight = 20", kFailOnError);
    EXPECT_EQ(database.RecordsAffected(), 1);
    EXPECT_EQ(ErrorOf([&] {
                  database.Execute("UPDATE Parts SET Weight = 3 WHERE Weight = 4", kFailOnError);
              }),
              3022);
    EXPECT_EQ(InOrderOf("PrimaryKey").front(), "-1000.125");
    EXPECT_SPOTLESS(files, kFile);
    database.Execute("DELETE FROM Parts WHERE Weight < 0", kFailOnError);
    EXPECT_EQ(database.RecordsAffected(), 101);
    EXPECT_EQ(InOrderOf("PrimaryKey").size(), 100U);
    EXPECT_EQ(InOrderOf("Down").front(), "25");
    database.Execute("DELETE FROM Parts", kFailOnError);
    EXPECT_TRUE(InOrderOf("Down").empty());
}

TEST_P(DecimalIndexTest, RelationshipOverDecimalsHolds)
{
    TableDef uses("Uses");
    FieldDef weight = TableDef::CreateField("Weight", FieldType::Decimal);
    weight.precision = 28;
    weight.scale = 4;
    uses.Append(weight);
    database.Append(uses);
    database.Append(
        RelationDef{"PartsUses", "Parts", "Uses", kRelationUpdateCascade, {{"Weight", "Weight"}}});
    EXPECT_EQ(Add(-2.5), 0);
    EXPECT_EQ(ErrorOf([&] { database.Execute("INSERT INTO Uses VALUES (2.5)", kFailOnError); }),
              3201);
    database.Execute("INSERT INTO Uses VALUES (-2.5)", kFailOnError);
    database.Execute("UPDATE Parts SET Weight = 8.75", kFailOnError);
    Recordset rows = Open("Uses");
    EXPECT_EQ(Column(rows, "Weight"), (std::vector<std::string>{"8.75"}));
}

}  // namespace
}  // namespace dao
