// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TableDefinitionReader.h"

#include "base/NumberedError.h"
#include "jet/format/TableDefinitionWriter.h"
#include "tests/jet/format/Columns.h"

#include <gtest/gtest.h>

namespace {

using jet::format::DefinitionPage;
using jet::format::kJet4;
using jet::format::PageNumber;
using jet::format::ReadTableDefinition;
using jet::format::RowId;
using jet::format::TableDefinition;
using jet::format::TableDefinitionWriter;
using tests::ColumnDefinition;
using tests::ColumnType;

// Jobs: a counter, a text and a memo, in another field order than they were made in.
TableDefinition Jobs()
{
    TableDefinition table;
    table.rowCount = 8;
    table.lastAutoNumber = 77;
    table.ownedPages = {PageNumber{30}, 0};
    table.freePages = {PageNumber{30}, 1};
    ColumnDefinition counter = tests::FixedColumn(ColumnType::Long, 0, 0, 4);
    counter.name = "Counter";
    counter.flags = 0x07;
    counter.ordinal = 2;
    ColumnDefinition name = tests::VariableColumn(ColumnType::Text, 3, 1, 60);
    name.name = "N\xC3\xA4me";
    name.flags = 0x02;
    name.ordinal = 1;
    ColumnDefinition notes = tests::VariableColumn(ColumnType::Memo, 1, 0, 0);
    notes.name = "Notes";
    notes.flags = 0x02;
    notes.compressed = false;
    notes.ordinal = 3;
    notes.ownedPages = RowId{PageNumber{30}, 2};
    notes.freePages = RowId{PageNumber{30}, 3};
    table.columns = {counter, notes, name};
    table.columnCounter = 4;
    table.variableColumnCounter = 2;
    table.indexes.push_back({.columns = {{3, true}, {0, false}},
                             .usageMap = {PageNumber{30}, 4},
                             .root = PageNumber{31},
                             .flags = 0x82});
    table.indexes.push_back({.columns = {{0, true}},
                             .usageMap = {PageNumber{30}, 5},
                             .root = PageNumber{32},
                             .flags = 0x80});
    table.namedIndexes.push_back({.name = "ByName", .number = 1, .tree = 0});
    table.namedIndexes.push_back({.name = "PrimaryKey", .number = 0, .tree = 1, .kind = 1});
    return table;
}

std::vector<std::byte> Written(const TableDefinition& table)
{
    const TableDefinitionWriter writer(table, kJet4);
    const jet::format::Span joined = writer.Joined();
    return {joined.begin(), joined.end()};
}

TEST(TableDefinitionReaderTest, HeaderIsRead)
{
    const TableDefinition table = ReadTableDefinition(Written(Jobs()), kJet4);
    EXPECT_FALSE(table.systemTable);
    EXPECT_EQ(table.rowCount, 8U);
    EXPECT_EQ(table.lastAutoNumber, 77U);
    EXPECT_EQ(table.columnCounter, 4);
    EXPECT_EQ(table.variableColumnCounter, 2);
    EXPECT_EQ(table.ownedPages, (RowId{PageNumber{30}, 0}));
    EXPECT_EQ(table.freePages, (RowId{PageNumber{30}, 1}));
    EXPECT_EQ(table.columnsBeforeVariable, 1);
}

TEST(TableDefinitionReaderTest, ColumnsStandInFieldOrder)
{
    const TableDefinition table = ReadTableDefinition(Written(Jobs()), kJet4);
    ASSERT_EQ(table.columns.size(), 3U);
    EXPECT_EQ(table.columns[0].name, "N\xC3\xA4me");
    EXPECT_EQ(table.columns[1].name, "Counter");
    EXPECT_EQ(table.columns[2].name, "Notes");
    EXPECT_TRUE(table.columns[0].compressed);
    EXPECT_FALSE(table.columns[0].fixed);
    EXPECT_EQ(table.columns[0].length, 60);
    EXPECT_EQ(table.columns[0].variableIndex, 1);
    EXPECT_TRUE(table.columns[1].autoNumber);
    EXPECT_TRUE(table.columns[1].fixed);
    EXPECT_EQ(table.columns[2].type, ColumnType::Memo);
    EXPECT_EQ(table.columns[2].ownedPages, (RowId{PageNumber{30}, 2}));
    EXPECT_EQ(table.columns[2].freePages, (RowId{PageNumber{30}, 3}));
}

TEST(TableDefinitionReaderTest, IndexesAreRead)
{
    const TableDefinition table = ReadTableDefinition(Written(Jobs()), kJet4);
    ASSERT_EQ(table.indexes.size(), 2U);
    ASSERT_EQ(table.indexes[0].columns.size(), 2U);
    EXPECT_EQ(table.indexes[0].columns[0].columnNumber, 3);
    EXPECT_TRUE(table.indexes[0].columns[0].ascending);
    EXPECT_FALSE(table.indexes[0].columns[1].ascending);
    EXPECT_EQ(table.indexes[0].root, PageNumber{31});
    EXPECT_EQ(table.indexes[0].usageMap, (RowId{PageNumber{30}, 4}));
    EXPECT_TRUE(table.indexes[0].ignoreNulls);
    EXPECT_FALSE(table.indexes[0].unique);
    EXPECT_EQ(table.indexes[0].statisticsOffset, 63U);
    EXPECT_EQ(table.indexes[1].statisticsOffset, 75U);
    ASSERT_EQ(table.namedIndexes.size(), 2U);
    EXPECT_EQ(table.namedIndexes[0].name, "ByName");
    EXPECT_EQ(table.namedIndexes[0].number, 1U);
}

TEST(TableDefinitionReaderTest, PrimaryKeyIsUniqueAndRequiredWhateverItsFlags)
{
    const TableDefinition table = ReadTableDefinition(Written(Jobs()), kJet4);
    EXPECT_TRUE(table.indexes[1].unique);
    EXPECT_TRUE(table.indexes[1].required);
    EXPECT_EQ(table.indexes[1].flags, 0x80);
}

TEST(TableDefinitionReaderTest, ColumnsAreFoundByNameNumberAndAsCounter)
{
    const TableDefinition table = ReadTableDefinition(Written(Jobs()), kJet4);
    EXPECT_EQ(table.FindColumn("COUNTER"), 1U);
    EXPECT_EQ(table.FindColumn("Count"), std::nullopt);
    EXPECT_EQ(table.FindNumber(1), 2U);
    EXPECT_EQ(table.FindNumber(2), std::nullopt);
    EXPECT_EQ(table.FindAutoNumber(), 1U);
}

TEST(TableDefinitionReaderTest, DecimalHasPrecisionAndScale)
{
    TableDefinition table = Jobs();
    table.columns[0].type = ColumnType::Numeric;
    table.columns[0].length = 17;
    table.columns[0].precision = 18;
    table.columns[0].scale = 4;
    const TableDefinition read = ReadTableDefinition(Written(table), kJet4);
    EXPECT_EQ(read.columns[1].precision, 18);
    EXPECT_EQ(read.columns[1].scale, 4);
}

TEST(TableDefinitionReaderTest, EveryCutDefinitionIsDamage)
{
    const std::vector<std::byte> whole = Written(Jobs());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        std::vector<std::byte> cut(whole.begin(),
                                   whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_THROW(static_cast<void>(ReadTableDefinition(cut, kJet4)), base::NumberedError);
    }
}

TEST(TableDefinitionReaderTest, AnyChangedByteIsReadOrRefusedAsDamage)
{
    const std::vector<std::byte> whole = Written(Jobs());
    int refused = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const std::byte flip : {std::byte{0xFF}, std::byte{0x80}, std::byte{0x01}}) {
            std::vector<std::byte> changed = whole;
            changed[at] ^= flip;
            try {
                static_cast<void>(ReadTableDefinition(changed, kJet4));
            } catch (const base::NumberedError& error) {
                EXPECT_EQ(error.Number(), 3343);
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 100);
}

void ExpectDamaged(const TableDefinition& table, const jet::format::FileVersion& version)
{
    const TableDefinitionWriter writer(table, version);
    try {
        static_cast<void>(ReadTableDefinition(writer.Joined(), version));
        FAIL() << "read";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 3343);
    }
}

TEST(TableDefinitionReaderTest, TwoColumnsInOnePlaceAreDamage)
{
    TableDefinition fixed = Jobs();
    fixed.columnCounter = 5;
    fixed.columns.push_back(tests::FixedColumn(ColumnType::Integer, 4, 4, 2));
    fixed.columns.back().flags = 0x03;
    EXPECT_EQ(ReadTableDefinition(Written(fixed), kJet4).columns.size(), 4U);
    fixed.columns.back().fixedOffset = 3;
    ExpectDamaged(fixed, kJet4);
    TableDefinition variable = Jobs();
    variable.columns[1].variableIndex = 1;
    ExpectDamaged(variable, kJet4);
}

TEST(TableDefinitionReaderTest, BooleanTakesNoPlaceAmongTheFixedColumns)
{
    TableDefinition table = Jobs();
    table.columnCounter = 5;
    table.columns.push_back(tests::FixedColumn(ColumnType::Boolean, 4, 0, 1));
    table.columns.back().flags = 0x03;
    EXPECT_EQ(ReadTableDefinition(Written(table), kJet4).columns.size(), 4U);
}

// A row would be read by another number of columns than it was written by.
TEST(TableDefinitionReaderTest, MoreColumnsThanARowCountsInOneByteAreDamage)
{
    TableDefinition table = Jobs();
    table.columnCounter = table.variableColumnCounter = 255;
    const TableDefinitionWriter sound(table, jet::format::kJet3);
    EXPECT_EQ(ReadTableDefinition(sound.Joined(), jet::format::kJet3).columnCounter, 255);
    table.columnCounter = 256;
    ExpectDamaged(table, jet::format::kJet3);
    table.columnCounter = 255;
    table.variableColumnCounter = 256;
    ExpectDamaged(table, jet::format::kJet3);
}

TEST(TableDefinitionReaderTest, PageOfAnotherKindIsRefused)
{
    std::vector<std::byte> page(4096);
    page[0] = std::byte{1};
    page[1] = std::byte{1};
    EXPECT_THROW(DefinitionPage{page}, base::NumberedError);
}

}  // namespace
