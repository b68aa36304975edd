// SPDX-License-Identifier: Apache-2.0
// Tests of jet/index/Index: the rules of unique, required and null-ignoring indexes.
#include "jet/index/Index.h"

#include "tests/jet/index/IndexFixture.h"
#include "tests/support/ErrorOf.h"

#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace jet {
namespace {

using base::Null;
using base::Value;
using format::ColumnType;
using format::PageNumber;
using format::RowId;
using index::RowKey;
using Values = std::vector<Value>;
using tests::ErrorOf;

RowId Row(std::uint32_t number)
{
    return {PageNumber{100 + number / 200}, static_cast<std::uint16_t>(number % 200)};
}

// Key of one long.
RowKey LongKey(IndexFixture& fixture, std::int32_t value)
{
    return fixture.Of().KeyOf(Values{value});
}

TEST(IndexTest, NewIndexIsAnEmptyLeaf)
{
    IndexFixture fixture;
    EXPECT_TRUE(fixture.RowsInOrder().empty());
    EXPECT_TRUE(fixture.Check().faults.empty());
    EXPECT_EQ(fixture.Check().levels, 1U);
}

TEST(IndexTest, RowsComeInKeyOrderBothWays)
{
    IndexFixture fixture;
    for (const std::int32_t value : {5, -1, 3})
        fixture.Insert(LongKey(fixture, value), Row(static_cast<std::uint32_t>(value + 10)));
    EXPECT_EQ(fixture.RowsInOrder(), (std::vector{Row(9), Row(13), Row(15)}));
    index::Cursor cursor = fixture.Of().Walk();
    ASSERT_TRUE(cursor.Last());
    EXPECT_EQ(cursor.Row(), Row(15));
    ASSERT_TRUE(cursor.Previous());
    ASSERT_TRUE(cursor.Previous());
    EXPECT_EQ(cursor.Row(), Row(9));
    EXPECT_FALSE(cursor.Previous());
}

TEST(IndexTest, BeginningOfAKeyFindsAllItsRows)
{
    IndexFixture fixture({ColumnType::Long, ColumnType::Text}, {true, false}, {});
    std::uint32_t number = 0;
    for (const std::int32_t first : {1, 2, 3}) {
        for (const char* second : {"a", "b", "c"})
            fixture.Insert(fixture.Of().KeyOf(Values{first, second}), Row(number++));
    }
    const auto rows = fixture.Of().Rows(fixture.Of().KeyOf(Values{std::int32_t{2}}).bytes);
    EXPECT_EQ(rows, (std::vector{Row(5), Row(4), Row(3)}));
    const auto one = fixture.Of().Rows(fixture.Of().KeyOf(Values{std::int32_t{3}, "B "}).bytes);
    EXPECT_EQ(one, std::vector{Row(7)});
    EXPECT_TRUE(fixture.Of().Rows(fixture.Of().KeyOf(Values{std::int32_t{4}}).bytes).empty());
}

TEST(IndexTest, UniqueIndexRefusesAnotherRowWithTheKey)
{
    IndexFixture fixture({ColumnType::Text}, {true}, {.unique = true});
    const RowKey key = fixture.Of().KeyOf(Values{"Smith"});
    fixture.Insert(key, Row(1));
    const RowKey same = fixture.Of().KeyOf(Values{"SMITH  "});
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(same, nullptr); }), 3022);
    const RowId other = Row(2);
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(same, &other); }), 3022);
    const RowId self = Row(1);
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(same, &self); }), 0);
    const RowKey longer = fixture.Of().KeyOf(Values{"Smithers"});
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(longer, nullptr); }), 0);
}

TEST(IndexTest, NullsNeverConflictInAUniqueIndex)
{
    IndexFixture fixture({ColumnType::Long, ColumnType::Long}, {true, true}, {.unique = true});
    for (const Values& values : {Values{Null{}, Null{}}, Values{std::int32_t{1}, Null{}}}) {
        const RowKey key = fixture.Of().KeyOf(values);
        fixture.Insert(key, Row(values[0].IsNull() ? 1 : 2));
        EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(key, nullptr); }), 0);
    }
}

TEST(IndexTest, RequiredIndexRefusesANullInAnyColumn)
{
    IndexFixture fixture({ColumnType::Long, ColumnType::Date}, {true, true}, {.required = true});
    const RowKey half = fixture.Of().KeyOf(Values{std::int32_t{1}, Null{}});
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(half, nullptr); }), 3058);
    const RowKey whole = fixture.Of().KeyOf(Values{std::int32_t{1}, base::Date{2}});
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(whole, nullptr); }), 0);
}

TEST(IndexTest, IgnoringNullsLeavesOutOnlyKeysOfNothingButNulls)
{
    IndexFixture fixture({ColumnType::Long, ColumnType::Long}, {true, true}, {.ignoreNulls = true});
    const RowKey nothing = fixture.Of().KeyOf(Values{Null{}, Null{}});
    const RowKey half = fixture.Of().KeyOf(Values{Null{}, std::int32_t{7}});
    fixture.Insert(nothing, Row(1));
    fixture.Insert(half, Row(2));
    EXPECT_EQ(fixture.RowsInOrder(), std::vector{Row(2)});
    fixture.Erase(nothing, Row(1));
    fixture.Erase(half, Row(2));
    EXPECT_TRUE(fixture.RowsInOrder().empty());
}

TEST(IndexTest, WithoutTheRuleNullsAreKept)
{
    IndexFixture fixture;
    fixture.Insert(fixture.Of().KeyOf(Values{Null{}}), Row(1));
    fixture.Insert(LongKey(fixture, -5), Row(2));
    EXPECT_EQ(fixture.RowsInOrder(), (std::vector{Row(1), Row(2)}));
}

TEST(IndexTest, KeyBeyondAThirdOfAPageIsRefused)
{
    IndexFixture fixture({ColumnType::Text, ColumnType::Text}, {true, true}, {});
    std::string symbols;
    for (int i = 0; i < 255; ++i)
        symbols += "\u00BC";
    const RowKey key = fixture.Of().KeyOf(Values{symbols, symbols});
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(key, nullptr); }), 0);
    std::string accented;
    for (int i = 0; i < 255; ++i)
        accented += "\u02C6";
    const RowKey tooLong = fixture.Of().KeyOf(Values{accented, accented});
    EXPECT_EQ(ErrorOf([&] { fixture.Of().CheckStorable(tooLong, nullptr); }), 3047);
}

TEST(IndexTest, TextThatCannotBeKeyedWritesNothing)
{
    IndexFixture fixture({ColumnType::Text}, {true}, {});
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(fixture.Of().KeyOf(Values{"Жук"})); }), 3421);
    EXPECT_TRUE(fixture.RowsInOrder().empty());
}

TEST(IndexTest, MissingOrRepeatedEntryIsDamage)
{
    IndexFixture fixture;
    const RowKey key = LongKey(fixture, 1);
    EXPECT_EQ(ErrorOf([&] { fixture.Erase(key, Row(1)); }), 3049);
    fixture.Insert(key, Row(1));
    EXPECT_EQ(ErrorOf([&] { fixture.Insert(key, Row(1)); }), 3049);
    EXPECT_EQ(ErrorOf([&] { fixture.Erase(key, Row(2)); }), 3049);
    EXPECT_EQ(fixture.RowsInOrder(), std::vector{Row(1)});
}

TEST(IndexTest, EntryCountsGrowWithNewKeysOnly)
{
    IndexFixture fixture;
    std::uint32_t number = 0;
    for (const std::int32_t value : {4, 4, 2, 4, 9})
        fixture.Insert(LongKey(fixture, value), Row(number++));
    EXPECT_EQ(fixture.DistinctKeys(), 3U);
    fixture.Erase(LongKey(fixture, 9), Row(4));
    EXPECT_EQ(fixture.DistinctKeys(), 3U);
}

TEST(IndexTest, PagesWhoseLinksCircleAreAnError)
{
    IndexFixture fixture;
    for (std::int32_t i = 0; i < 1000; ++i)
        fixture.Insert(LongKey(fixture, i), Row(static_cast<std::uint32_t>(i)));
    const TreeReport report = fixture.Check();
    EXPECT_TRUE(report.faults.empty());
    EXPECT_EQ(report.levels, 2U);
    pages::WriteSet changes(fixture.Pager());
    for (std::uint32_t page = 2; page < fixture.Pager().PageCount(); ++page) {
        const format::MutableSpan bytes = changes.Change(PageNumber{page});
        if (format::ReadU8(bytes, 0) == format::kIndexLeaf)
            format::WriteNext(bytes, PageNumber{page}, format::kIndexPageJet4);
    }
    changes.Commit();
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(fixture.RowsInOrder()); }), 3343);
}

}  // namespace
}  // namespace jet
