// SPDX-License-Identifier: Apache-2.0
// Tests of jet/sql/Filter.h: what of a condition an index can answer.
#include "jet/sql/Filter.h"

#include "base/Convert.h"
#include "jet/sql/Bind.h"
#include "jet/sql/Parser.h"
#include "tests/jet/table/TableFixture.h"

namespace jet::sql {
namespace {

using format::ColumnType;

class FilterTest : public tests::TableFixture {
protected:
    // The columns that must equal a value, as "N=-7", in the order of the condition.
    [[nodiscard]] std::string KeysOf(const std::string& condition) const
    {
        const ExpressionPtr expression = ParseCriteria(condition, kToday);
        BindCriteria(*expression, ScopeOf(rows_->Definition(), "T"));
        const Filter filter(*expression, *rows_, environment_);
        EXPECT_FALSE(filter.IsEmpty()) << condition;
        std::string keys;
        for (const table::Assignment& key : filter.Keys())
            keys += (keys.empty() ? "" : " ") + rows_->Definition().columns[key.column].name + "=" +
                    base::TextOf(key.value);
        return keys;
    }

    static constexpr base::Date kToday{38061};
    const Environment environment_{[] { return kToday; }, {}};
    const std::unique_ptr<table::NativeTable> rows_ = Make(
        {.name = "T",
         .columns = {tests::Column("N", ColumnType::Long), tests::Column("I", ColumnType::Integer),
                     tests::Column("D", ColumnType::Double),
                     tests::Column("S", ColumnType::Text, 20)},
         .indexes = {}});
};

TEST_F(FilterTest, AColumnThatMustEqualAConstantIsAKey)
{
    EXPECT_EQ(KeysOf("N = 7"), "N=7");
    EXPECT_EQ(KeysOf("7 = N And S = 'Paint'"), "N=7 S=Paint");
}

TEST_F(FilterTest, ANegativeConstantIsAKeyToo)
{
    EXPECT_EQ(KeysOf("N = -7"), "N=-7");
    EXPECT_EQ(KeysOf("-7 = N"), "N=-7");
    EXPECT_EQ(KeysOf("D = -1.5"), "D=-1.5");
    EXPECT_EQ(KeysOf("N = -2147483648 And I = -32768"), "N=-2147483648 I=-32768");
}

TEST_F(FilterTest, WhatLeavesMoreThanOneValueIsNoKey)
{
    EXPECT_EQ(KeysOf("N > -7"), "");
    EXPECT_EQ(KeysOf("N <> -7"), "");
    EXPECT_EQ(KeysOf("N = -7 Or D = 2"), "");
    EXPECT_EQ(KeysOf("Not N = -7"), "");
}

// No value of the column equals them, or they are worked out for each row.
TEST_F(FilterTest, WhatIsNoNumberOfTheColumnIsNoKey)
{
    EXPECT_EQ(KeysOf("N = -7.5"), "");
    EXPECT_EQ(KeysOf("I = -32769"), "");
    EXPECT_EQ(KeysOf("N = -Null"), "");
    EXPECT_EQ(tests::ErrorOf([&] { (void)KeysOf("N = -'7'"); }), 3464) << "refused before";
    EXPECT_EQ(KeysOf("N = -D"), "");
    EXPECT_EQ(KeysOf("N = - - 7"), "");
}

TEST_F(FilterTest, WithoutAConditionEveryRowPasses)
{
    const Filter filter;
    EXPECT_TRUE(filter.IsEmpty());
    EXPECT_TRUE(filter.Keys().empty());
}

}  // namespace
}  // namespace jet::sql
