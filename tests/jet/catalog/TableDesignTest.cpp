// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/TableDesign.h"

#include "jet/format/PropertyBlock.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

namespace {

using jet::catalog::DesignOf;
using jet::catalog::NewColumn;
using jet::catalog::NewIndex;
using jet::catalog::NewTable;
using jet::format::ColumnType;

NewColumn Column(const char* name, ColumnType type, int size = 0)
{
    NewColumn column;
    column.name = name;
    column.type = type;
    column.size = size;
    return column;
}

NewIndex Index(const char* name, std::vector<NewIndex::Part> columns)
{
    NewIndex index;
    index.name = name;
    index.columns = std::move(columns);
    return index;
}

NewTable People()
{
    NewTable table;
    table.name = "People";
    table.columns = {Column("ID", ColumnType::Long),        Column("Name", ColumnType::Text, 100),
                     Column("Hidden", ColumnType::Boolean), Column("Since", ColumnType::Date),
                     Column("Notes", ColumnType::Memo),     Column("Rate", ColumnType::Currency)};
    table.columns[0].autoNumber = true;
    return table;
}

int NumberOf(const NewTable& table)
{
    return tests::ErrorOf([&] { (void)DesignOf(table, {}, jet::format::kJet4); });
}

int NumberOfName(std::string name)
{
    NewTable table = People();
    table.name = std::move(name);
    return NumberOf(table);
}

TEST(TableDesignTest, FixedColumnsFollowOneAnotherAndBooleansTakeNoRoom)
{
    const auto table = DesignOf(People(), {}, jet::format::kJet4);
    EXPECT_EQ(table.columns[0].fixedOffset, 0);
    EXPECT_EQ(table.columns[2].fixedOffset, 0);
    EXPECT_EQ(table.columns[2].length, 1);
    EXPECT_EQ(table.columns[3].fixedOffset, 4);
    EXPECT_EQ(table.columns[5].fixedOffset, 12);
}

TEST(TableDesignTest, VariableColumnsAreCountedThrough)
{
    const auto table = DesignOf(People(), {}, jet::format::kJet4);
    EXPECT_FALSE(table.columns[1].fixed);
    EXPECT_EQ(table.columns[1].variableIndex, 0);
    EXPECT_EQ(table.columns[4].variableIndex, 1);
    // A fixed column tells how many variable ones stand before it.
    EXPECT_EQ(table.columns[5].variableIndex, 2);
    EXPECT_EQ(table.variableColumnCounter, 2);
    EXPECT_EQ(table.columnCounter, 6);
}

TEST(TableDesignTest, TextLengthIsStoredInBytes)
{
    NewTable wish = People();
    EXPECT_EQ(DesignOf(wish, {}, jet::format::kJet4).columns[1].length, 200);
    wish.columns[1].size = 0;
    EXPECT_EQ(DesignOf(wish, {}, jet::format::kJet4).columns[1].length, 510);
}

TEST(TableDesignTest, FlagsTellFixedAndCounter)
{
    const auto table = DesignOf(People(), {}, jet::format::kJet4);
    EXPECT_EQ(table.columns[0].flags, 0x07);
    EXPECT_EQ(table.columns[1].flags, 0x02);
    EXPECT_EQ(table.columns[2].flags, 0x03);
}

TEST(TableDesignTest, NamedIndexesStandByNameAndKeepTheirNumbers)
{
    NewTable wish = People();
    wish.indexes = {Index("Since", {{"Since", false}}), Index("name", {{"Name"}}),
                    Index("PrimaryKey", {{"ID"}})};
    wish.indexes[2].primary = true;
    const auto table = DesignOf(wish, {}, jet::format::kJet4);
    ASSERT_EQ(table.namedIndexes.size(), 3U);
    EXPECT_EQ(table.namedIndexes[0].name, "name");
    EXPECT_EQ(table.namedIndexes[0].number, 1U);
    EXPECT_EQ(table.namedIndexes[1].name, "PrimaryKey");
    EXPECT_EQ(table.namedIndexes[1].kind, 1);
    EXPECT_EQ(table.namedIndexes[2].name, "Since");
    EXPECT_EQ(table.indexes[0].columns[0].columnNumber, 3);
    EXPECT_FALSE(table.indexes[0].columns[0].ascending);
    EXPECT_EQ(table.indexes[0].flags, 0x80);
    EXPECT_EQ(table.indexes[2].flags, 0x89);
    EXPECT_EQ(table.namedIndexes[0].cascadeUpdates, 4);
}

TEST(TableDesignTest, IndexesThatAgreeShareOneTree)
{
    NewTable wish = People();
    wish.indexes = {Index("One", {{"Name"}}), Index("Two", {{"NAME"}}),
                    Index("Down", {{"Name", false}})};
    const auto table = DesignOf(wish, {}, jet::format::kJet4);
    EXPECT_EQ(table.indexes.size(), 2U);
    ASSERT_EQ(table.namedIndexes.size(), 3U);
    EXPECT_EQ(table.namedIndexes[1].name, "One");
    EXPECT_EQ(table.namedIndexes[1].tree, table.namedIndexes[2].tree);
}

TEST(TableDesignTest, TableNeedsAField)
{
    NewTable wish;
    wish.name = "Empty";
    EXPECT_EQ(NumberOf(wish), 3264);
}

TEST(TableDesignTest, NamesOfTwoFieldsDifferInMoreThanCase)
{
    NewTable wish = People();
    wish.columns.push_back(Column("NAME", ColumnType::Long));
    EXPECT_EQ(NumberOf(wish), 3191);
}

TEST(TableDesignTest, NamesKeepTheRules)
{
    for (const char* bad : {"", " leading", "a.b", "a!b", "a`b", "a[b", "a]b", "a\tb"})
        EXPECT_EQ(NumberOfName(bad), 3125) << bad;
    EXPECT_EQ(NumberOfName(std::string(65, 'x')), 3125);
    EXPECT_EQ(NumberOfName(std::string(64, 'x')), 0);
    EXPECT_EQ(NumberOfName("WO# of Zoë's shop"), 0);
}

TEST(TableDesignTest, ImpossibleFieldsAreRefused)
{
    NewTable wish = People();
    wish.columns[1].size = 256;
    EXPECT_EQ(NumberOf(wish), 3017);
    wish = People();
    wish.columns[3].type = static_cast<ColumnType>(13);
    EXPECT_EQ(NumberOf(wish), 3259);
    wish = People();
    wish.columns[1].autoNumber = true;
    EXPECT_EQ(NumberOf(wish), 3259);
    wish = People();
    for (int i = 0; i < 250; ++i)
        wish.columns.push_back(Column(("F" + std::to_string(i)).c_str(), ColumnType::Byte));
    EXPECT_EQ(NumberOf(wish), 3190);
    wish.columns.pop_back();
    EXPECT_EQ(NumberOf(wish), 0);
}

TEST(TableDesignTest, ImpossibleDecimalsAreRefused)
{
    NewTable wish = People();
    wish.columns[3].type = ColumnType::Numeric;
    const auto numberOf = [&wish](std::uint8_t precision, std::uint8_t scale) {
        wish.columns[3].precision = precision;
        wish.columns[3].scale = scale;
        return NumberOf(wish);
    };
    EXPECT_EQ(numberOf(28, 28), 0);
    EXPECT_EQ(numberOf(1, 0), 0);
    EXPECT_EQ(numberOf(0, 0), 3271);
    EXPECT_EQ(numberOf(29, 0), 3271);
    EXPECT_EQ(numberOf(9, 10), 3271);
}

TEST(TableDesignTest, ImpossibleIndexesAreRefused)
{
    NewTable wish = People();
    wish.indexes = {Index("Lost", {{"Nowhere"}})};
    EXPECT_EQ(NumberOf(wish), 3018);
    wish.indexes = {Index("Same", {{"ID"}}), Index("SAME", {{"Name"}})};
    EXPECT_EQ(NumberOf(wish), 3284);
    wish.indexes = {Index("One", {{"ID"}}), Index("Two", {{"Name"}})};
    wish.indexes[0].primary = wish.indexes[1].primary = true;
    EXPECT_EQ(NumberOf(wish), 3283);
    wish.indexes = {Index("Wide", std::vector<NewIndex::Part>(11, {"ID"}))};
    EXPECT_EQ(NumberOf(wish), 3001);
}

TEST(TableDesignTest, OnlyWhatDiffersFromTheDefaultIsStored)
{
    NewTable wish = People();
    EXPECT_TRUE(jet::catalog::PropertiesOf(wish, 0).empty());
    wish.columns[0].properties.defaultValue = "0";  // a counter's is not stored
    wish.columns[1].properties.allowZeroLength = true;
    wish.columns[1].properties.rule.expression = "<>\"x\"";
    wish.columns[1].properties.rule.text = "not x";
    wish.columns[5].properties.defaultValue = "0";
    wish.columns[5].properties.required = true;
    const auto block = jet::format::PropertyBlock::Parse(jet::catalog::PropertiesOf(wish, 0));
    ASSERT_EQ(block.Owners().size(), 2U);
    for (const std::size_t i : {1U, 5U})
        EXPECT_EQ(jet::catalog::ReadProperties(block, wish.columns[i].name),
                  wish.columns[i].properties);
    EXPECT_EQ(jet::catalog::ReadProperties(block, "Notes"), jet::catalog::FieldProperties{});
}

TEST(TableDesignTest, Jet3KnowsNoDecimals)
{
    NewTable wish = People();
    wish.columns[0] = Column("Exact", ColumnType::Numeric);
    const auto design = [&](const jet::format::FileVersion& version) {
        return tests::ErrorOf([&] { (void)DesignOf(wish, {}, version); });
    };
    EXPECT_EQ(design(jet::format::kJet3), 3259);
    EXPECT_NE(design(jet::format::kJet4), 3259);
}

}  // namespace
