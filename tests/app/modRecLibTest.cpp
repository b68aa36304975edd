// SPDX-License-Identifier: Apache-2.0
#include "app/modRecLib.h"

#include <gtest/gtest.h>

using base::Null;
using base::Value;
using lodrin::fnCN;

TEST(modRecLibTest, ANullBecomesTheEmptyTextForTheTypeCodesOfText)
{
    EXPECT_EQ(fnCN(Null{}, lodrin::kString), Value(""));
    EXPECT_EQ(fnCN(Null{}, lodrin::kVariant), Value(""));
    EXPECT_EQ(fnCN(Null{}, 8), Value(""));
}

TEST(modRecLibTest, ANullBecomesZeroForEveryOtherTypeCode)
{
    for (const std::int16_t code :
         std::initializer_list<std::int16_t>{0, 2, 3, 4, 5, 6, 7, 10, 11, 14, 99, -1})
        EXPECT_EQ(fnCN(Null{}, code), Value(0)) << code;
}

TEST(modRecLibTest, WhatIsNotNullIsReturnedUnchanged)
{
    EXPECT_EQ(fnCN("", 4), Value(""));
    EXPECT_EQ(fnCN(0.5, 8), Value(0.5));
    EXPECT_EQ(fnCN(base::Date{38061}, 0), Value(base::Date{38061}));
}
