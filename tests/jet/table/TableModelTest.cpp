// SPDX-License-Identifier: Apache-2.0
// Random inserts, updates and deletes of rows of every type, against a model in memory.
#include "tests/jet/table/TableFixture.h"

#include <map>
#include <random>
#include <tuple>

namespace {

using jet::format::FileVersion;
using tests::Assignments;
using tests::Column;
using tests::ColumnType;
using tests::NativeTable;
using tests::RowId;
using tests::RowValues;
using tests::Value;

// Places of the columns that the test itself uses.
constexpr std::size_t kKey = 0, kGroup = 3;

jet::catalog::NewTable AllTypes(const FileVersion& version)
{
    jet::catalog::NewTable design;
    design.name = "AllTypes";
    design.columns = {
        Column("Key", ColumnType::Long),          Column("Yes", ColumnType::Boolean),
        Column("Small", ColumnType::Byte),        Column("Group", ColumnType::Integer),
        Column("Money", ColumnType::Currency),    Column("Single", ColumnType::Single),
        Column("Double", ColumnType::Double),     Column("Day", ColumnType::Date),
        Column("Bytes", ColumnType::Binary, 200), Column("Name", ColumnType::Text, 255),
        Column("More", ColumnType::Text, 255),    Column("Picture", ColumnType::Ole),
        Column("Memo", ColumnType::Memo),         Column("Guid", ColumnType::Guid),
        Column("Exact", ColumnType::Numeric)};
    design.columns.back().precision = 18;
    design.columns.back().scale = 2;
    // Jet 3 has no decimals.
    if (version.lastColumnType < static_cast<std::uint8_t>(ColumnType::Numeric))
        design.columns.pop_back();
    design.indexes = {
        {.name = "Key",
         .columns = {{.column = "Key"}},
         .primary = true,
         .unique = true,
         .required = true},
        {.name = "Group", .columns = {{.column = "Group"}}},
        {.name = "NameDay", .columns = {{.column = "Name"}, {"Day", false}}, .ignoreNulls = true}};
    return design;
}

class Dice {
public:
    explicit Dice(unsigned seed) : engine_(seed) {}

    std::size_t Below(std::size_t limit) { return engine_() % limit; }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }

    std::string Text(std::size_t longest)
    {
        std::string text;
        const std::size_t length = Below(longest + 1);
        const bool latin = !OneIn(4);
        for (std::size_t i = 0; i < length; ++i) {
            if (!latin && OneIn(3))
                text += "\xC3\xA9";
            else
                text += static_cast<char>('A' + Below(26));
        }
        return text;
    }
    base::Bytes Bytes(std::size_t longest)
    {
        base::Bytes bytes(Below(longest + 1));
        for (std::byte& byte : bytes)
            byte = static_cast<std::byte>(Below(256));
        return bytes;
    }
    std::size_t LongLength()
    {
        constexpr std::array<std::size_t, 6> lengths{0, 30, 60, 2000, 5000, 70000};
        // The longest ones are dear, and two of a kind tell no more.
        return lengths[OneIn(20) ? 5 : Below(5)];
    }
    Value OfType(ColumnType type)
    {
        switch (type) {
        case ColumnType::Boolean:
            return OneIn(2);
        case ColumnType::Byte:
            return static_cast<std::uint8_t>(Below(256));
        case ColumnType::Integer:
            return static_cast<std::int16_t>(Below(7));
        case ColumnType::Long:
            return static_cast<std::int32_t>(engine_());
        case ColumnType::Currency:
            return base::Currency{static_cast<std::int64_t>(Below(1U << 30))};
        case ColumnType::Single:
            return static_cast<float>(Below(1000)) / 8;
        case ColumnType::Double:
            return static_cast<double>(Below(1000)) / 7;
        case ColumnType::Date:
            return base::Date{static_cast<double>(Below(50000)) + 0.25};
        case ColumnType::Binary:
            return Bytes(200);
        case ColumnType::Text:
            return Text(OneIn(3) ? 255 : 20);
        case ColumnType::Ole:
            return Bytes(LongLength());
        case ColumnType::Memo:
            return std::string(LongLength() / 2, 'm') + Text(20);
        case ColumnType::Guid:
            return base::Guid{{1, 2, static_cast<std::uint8_t>(Below(256))}};
        case ColumnType::Numeric:
            break;
        }
        return base::Decimal{OneIn(2), {static_cast<std::uint32_t>(Below(99999)) + 1}, 2};
    }

private:
    std::mt19937 engine_;
};

using SeedAndVersion = std::tuple<unsigned, const FileVersion*>;

class TableModelTest : public tests::TableFixture,
                       public testing::WithParamInterface<SeedAndVersion> {
protected:
    TableModelTest()
        : TableFixture(*std::get<1>(GetParam())), table_(Make(AllTypes(pager_->Version()))),
          dice_(std::get<0>(GetParam()))
    {
    }

    Value Random(std::size_t column)
    {
        const auto& definition = table_->Definition().columns[column];
        if (column == kKey) return ++lastKey_;
        if (definition.type != ColumnType::Boolean && dice_.OneIn(5)) return {};
        return dice_.OfType(definition.type);
    }

    void Insert()
    {
        RowValues values;
        for (std::size_t column = 0; column < table_->Definition().columns.size(); ++column)
            values.push_back(Random(column));
        const RowId row = table_->Insert(Assignments(values));
        ASSERT_TRUE(model_.empty() || model_.rbegin()->first < row);
        model_[row] = values;
    }
    std::map<RowId, RowValues>::iterator AnyRow()
    {
        return std::next(model_.begin(), static_cast<std::ptrdiff_t>(dice_.Below(model_.size())));
    }
    void Update()
    {
        const auto row = AnyRow();
        std::vector<jet::table::Assignment> values;
        for (std::size_t times = 1 + dice_.Below(4); times > 0; --times) {
            const std::size_t column = dice_.Below(row->second.size());
            values.push_back({column, Random(column)});
            row->second[column] = values.back().value;
        }
        table_->Update(row->first, values);
    }
    void Delete()
    {
        const auto row = AnyRow();
        table_->Delete(row->first);
        model_.erase(row);
    }
    void Step()
    {
        const std::size_t choice = dice_.Below(10);
        if (model_.empty() || choice < 4)
            Insert();
        else if (choice < 8)
            Update();
        else
            Delete();
    }

    void ExpectModel()
    {
        const auto scanned = tests::Scanned(*table_);
        ASSERT_EQ(scanned.size(), model_.size());
        EXPECT_EQ(table_->RowCount(), model_.size());
        auto expected = model_.begin();
        for (const auto& row : scanned) {
            EXPECT_EQ(row.id, expected->first);
            EXPECT_TRUE(row.values == expected->second);
            ++expected;
        }
    }
    void ExpectIndexes()
    {
        for (std::int16_t group = 0; group < 7; ++group) {
            std::vector<RowId> expected;
            for (const auto& [row, values] : model_)
                if (values[kGroup] == Value(group)) expected.push_back(row);
            const std::vector<jet::table::Assignment> key{{kGroup, group}};
            EXPECT_EQ(table_->FindByKey(key), expected);
        }
        for (const auto& [row, values] : model_) {
            const std::vector<jet::table::Assignment> key{{kKey, values[kKey]}};
            EXPECT_EQ(table_->FindByKey(key), (std::vector<RowId>{row}));
        }
    }

    std::unique_ptr<NativeTable> table_;
    Dice dice_;
    std::map<RowId, RowValues> model_;
    std::int32_t lastKey_ = 0;
};

TEST_P(TableModelTest, EveryRowIsWhatWasWrittenLast)
{
    for (int round = 0; round < 6; ++round) {
        for (int i = 0; i < 40; ++i)
            Step();
        ExpectModel();
        ExpectIndexes();
    }
    while (!model_.empty())
        Delete();
    ExpectModel();
}

INSTANTIATE_TEST_SUITE_P(Seeds, TableModelTest,
                         testing::Combine(testing::Values(1U, 2U, 3U, 4U),
                                          testing::Values(&jet::format::kJet3,
                                                          &jet::format::kJet4)),
                         [](const auto& each) {
                             return "Jet" + std::string(1, std::get<1>(each.param)->name[0]) +
                                    "Seed" + std::to_string(std::get<0>(each.param));
                         });

}  // namespace
