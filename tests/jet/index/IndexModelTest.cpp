// SPDX-License-Identifier: Apache-2.0
// IndexModelTest: thousands of random changes to indexes of several shapes, against a sorted set.
#include "jet/index/Index.h"
#include "tests/jet/index/IndexFixture.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace jet {
namespace {

using base::Value;
using format::ColumnType;
using format::PageNumber;
using format::RowId;
using index::RowKey;
using Random = std::mt19937;
using Values = std::vector<Value>;

// What an index is made of and how its values are drawn.
struct Shape {
    const char* name;
    std::vector<ColumnType> types;
    std::vector<bool> ascending;
    std::function<Values(Random&)> draw;
    std::size_t levels;  // that the tree reaches at least
};

void PrintTo(const Shape& shape, std::ostream* out)
{
    *out << shape.name;
}

std::string Word(Random& random, std::size_t longest)
{
    std::string word;
    for (std::size_t left = random() % (longest + 1); left > 0; --left)
        word += static_cast<char>('a' + random() % 26);
    return word;
}

Value Number(Random& random, std::uint32_t range)
{
    return static_cast<std::int32_t>(random() % range);
}

const Shape kShapes[] = {
    {"Short",
     {ColumnType::Long},
     {true},
     [](Random& random) { return Values{static_cast<std::int32_t>(random())}; },
     2},
    {"ShortDescending",
     {ColumnType::Date},
     {false},
     [](Random& random) {
         return Values{base::Date{static_cast<double>(random() % 100000) / 24.0}};
     },
     2},
    {"FewKeysManyRows",
     {ColumnType::Byte},
     {true},
     [](Random& random) { return Values{static_cast<std::uint8_t>(random() % 3)}; },
     2},
    {"LongUnlikeKeys",
     {ColumnType::Text},
     {true},
     [](Random& random) { return Values{Word(random, 250)}; },
     3},
    {"LongAlikeKeys",
     {ColumnType::Text},
     {true},
     [](Random& random) {
         // One in twenty differs from the first letter on and robs its page of the common prefix.
         const std::string common = random() % 20 == 0 ? Word(random, 3) : "";
         return Values{common + std::string(200, 'x') + Word(random, 4)};
     },
     2},
    {"LongestKeys",
     {ColumnType::Binary, ColumnType::Binary, ColumnType::Text},
     {true, false, false},
     [](Random& random) {
         const auto bytes = [&random] {
             base::Bytes made(255);
             for (std::byte& one : made)
                 one = static_cast<std::byte>(random() % 256);
             return made;
         };
         return Values{bytes(), bytes(), Word(random, 255)};
     },
     5},
    {"SeveralColumnsWithNulls",
     {ColumnType::Long, ColumnType::Text, ColumnType::Currency, ColumnType::Boolean},
     {false, true, false, true},
     [](Random& random) {
         const auto maybe = [&random](Value value) {
             return random() % 4 == 0 ? Value(base::Null{}) : value;
         };
         return Values{maybe(Number(random, 40)), maybe(Word(random, 5)),
                       maybe(base::Currency{static_cast<std::int64_t>(random() % 9)}),
                       Value(random() % 2 == 0)};
     },
     2},
};

struct ModelEntry {
    index::Key key;
    RowId row;
    friend auto operator<=>(const ModelEntry&, const ModelEntry&) = default;
};

using ShapeAndVersion = std::tuple<Shape, const format::FileVersion*>;

class IndexModelTest : public testing::TestWithParam<ShapeAndVersion> {
protected:
    IndexModelTest() : fixture_(Of().types, Of().ascending, {}, *std::get<1>(GetParam())) {}

    [[nodiscard]] static const Shape& Of() { return std::get<0>(GetParam()); }

    // Some random changes as one write set; `growth` of ten of them are insertions.
    void ChangeSome(int count, unsigned growth)
    {
        pages::WriteSet changes(fixture_.Pager());
        index::Index index = fixture_.Of();
        for (int i = 0; i < count; ++i) {
            if (random_() % 10 < growth)
                InsertOne(changes, index);
            else if (!model_.empty())
                EraseOne(changes, index);
        }
        changes.Commit();
    }

    void InsertOne(pages::WriteSet& changes, index::Index& index)
    {
        const RowKey key = index.KeyOf(Of().draw(random_));
        const RowId row{PageNumber{1000 + nextRow_ / 250},
                        static_cast<std::uint16_t>(nextRow_ % 250)};
        ++nextRow_;
        index.Insert(changes, key, row);
        model_.insert({key.bytes, row});
    }

    void EraseOne(pages::WriteSet& changes, index::Index& index)
    {
        // Something near a random key, so that deletions lie anywhere.
        const RowKey near = index.KeyOf(Of().draw(random_));
        auto found = model_.lower_bound({near.bytes, {}});
        if (found == model_.end()) found = model_.begin();
        index.Erase(changes, {found->key, false, false}, found->row);
        model_.erase(found);
    }

    void ExpectSame()
    {
        const TreeReport report = fixture_.Check();
        ASSERT_EQ(report.faults, std::vector<std::string>{});
        ASSERT_EQ(report.levelFaults, std::vector<std::string>{});
        deepest_ = std::max(deepest_, report.levels);
        ASSERT_EQ(report.entries.size(), model_.size());
        auto expected = model_.begin();
        for (const std::vector<std::byte>& entry : report.entries) {
            ASSERT_EQ(entry, format::MakeEntry(expected->key, expected->row));
            ++expected;
        }
    }

    IndexFixture fixture_;
    std::set<ModelEntry> model_;
    Random random_{11};
    std::uint32_t nextRow_ = 0;
    std::size_t deepest_ = 0;
};

TEST_P(IndexModelTest, RandomChangesKeepTheTreeTrueDownToTheEmptyRoot)
{
    for (const unsigned growth : {8U, 9U, 6U, 5U, 3U}) {
        for (int set = 0; set < 3; ++set)
            ChangeSome(200, growth);
        ExpectSame();
        if (HasFatalFailure()) return;
    }
    EXPECT_GE(deepest_, Of().levels);
    while (!model_.empty()) {
        ChangeSome(400, 0);
        ExpectSame();
        if (HasFatalFailure()) return;
    }
    EXPECT_EQ(fixture_.Check().pages, 1U);
}

TEST_P(IndexModelTest, WalksAgreeInBothDirections)
{
    ChangeSome(1000, 8);
    index::Cursor cursor = fixture_.Of().Walk();
    auto expected = model_.begin();
    for (bool more = cursor.First(); more; more = cursor.Next(), ++expected) {
        ASSERT_NE(expected, model_.end());
        ASSERT_EQ(cursor.Row(), expected->row);
    }
    ASSERT_EQ(expected, model_.end());
    for (bool more = cursor.Last(); more; more = cursor.Previous()) {
        --expected;
        ASSERT_EQ(cursor.Row(), expected->row);
    }
    ASSERT_EQ(expected, model_.begin());
}

TEST_P(IndexModelTest, LookupFindsExactlyTheRowsOfAKey)
{
    ChangeSome(1000, 8);
    const index::Index index = fixture_.Of();
    for (int i = 0; i < 200; ++i) {
        const index::Key key = index.KeyOf(Of().draw(random_)).bytes;
        std::vector<RowId> expected;
        for (auto at = model_.lower_bound({key, {}}); at != model_.end() && at->key == key; ++at)
            expected.push_back(at->row);
        ASSERT_EQ(index.Rows(key), expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, IndexModelTest,
                         testing::Combine(testing::ValuesIn(kShapes),
                                          testing::Values(&format::kJet3, &format::kJet4)),
                         [](const auto& each) {
                             return std::string(std::get<0>(each.param).name) + "Jet" +
                                    std::get<1>(each.param)->name[0];
                         });

// Appending in key order leaves full pages behind.
TEST(IndexSplitTest, AppendedKeysFillTheirPages)
{
    IndexFixture fixture;
    pages::WriteSet changes(fixture.Pager());
    index::Index index = fixture.Of();
    for (std::int32_t i = 0; i < 3000; ++i)
        index.Insert(changes, index.KeyOf(Values{i}), {PageNumber{9}, 1});
    changes.Commit();
    const TreeReport report = fixture.Check();
    EXPECT_EQ(report.faults, std::vector<std::string>{});
    // Nine bytes an entry, the common prefix left out of all but the first.
    EXPECT_LE(report.pages, 7U);
}

}  // namespace
}  // namespace jet
