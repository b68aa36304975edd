// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt/ColumnWidths.cpp
#include "platform/qt/ColumnWidths.h"

#include <gtest/gtest.h>

namespace tests {
namespace {

using platform::qt::ColumnWish;
using platform::qt::ShareRoom;
using Widths = std::vector<int>;

// A time, a vehicle, a number and a customer.
const std::vector<ColumnWish> kColumns{
    {100, 80, false}, {200, 80, true}, {60, 60, false}, {200, 80, true}};

TEST(ColumnWidthsTest, ElasticColumnsTakeTheRoomThatIsLeft)
{
    EXPECT_EQ(ShareRoom(kColumns, 701), (Widths{100, 270, 60, 271}));
}

TEST(ColumnWidthsTest, ElasticColumnsGiveWayFirst)
{
    EXPECT_EQ(ShareRoom(kColumns, 400), (Widths{100, 120, 60, 120}));
}

TEST(ColumnWidthsTest, ThenAllGiveUpWhatTheyCanSpare)
{
    EXPECT_EQ(ShareRoom(kColumns, 350), (Widths{90, 100, 60, 100}));
}

TEST(ColumnWidthsTest, NoneIsNarrowerThanItsLeast)
{
    EXPECT_EQ(ShareRoom(kColumns, 10), (Widths{80, 80, 60, 80}));
}

TEST(ColumnWidthsTest, OneElasticColumnTakesAllOfIt)
{
    EXPECT_EQ(ShareRoom({{100, 80, false}, {200, 80, true}, {60, 60, false}}, 400),
              (Widths{100, 240, 60}));
}

TEST(ColumnWidthsTest, ColumnThatAsksForLessThanItsLeastGivesNothingUp)
{
    EXPECT_EQ(ShareRoom({{50, 80, false}, {200, 60, false}}, 200), (Widths{50, 150}));
}

TEST(ColumnWidthsTest, ColumnsWithNothingToSpareStayAsTheyAre)
{
    EXPECT_EQ(ShareRoom({{80, 80, false}, {60, 60, false}}, 100), (Widths{80, 60}));
    EXPECT_EQ(ShareRoom({{100, 80, false}, {60, 60, false}}, 100), (Widths{80, 60}));
}

TEST(ColumnWidthsTest, WithoutElasticColumnsTheRoomIsLeftFree)
{
    EXPECT_EQ(ShareRoom({{100, 80, false}, {}}, 500), (Widths{100, 0}));
}

}  // namespace
}  // namespace tests
