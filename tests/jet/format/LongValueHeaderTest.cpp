// SPDX-License-Identifier: Apache-2.0
#include "jet/format/LongValueHeader.h"

#include "base/NumberedError.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using jet::format::LongValueForm;
using jet::format::LongValueHeader;
using jet::format::PageNumber;
using jet::format::ReadLongValueHeader;
using tests::FromHex;
using tests::ToHex;

void ExpectStored(const LongValueHeader& header, std::string_view hex)
{
    EXPECT_EQ(ReadLongValueHeader(FromHex(hex)), header);
    std::vector<std::byte> field(jet::format::kLongValueHeaderSize);
    WriteLongValueHeader(field, header);
    EXPECT_EQ(ToHex(field), ToHex(FromHex(hex)));
}

TEST(LongValueHeaderTest, ValueInTheRow)
{
    ExpectStored({LongValueForm::InRow, 11, {}, 0}, "0b000080 00000000 00000000");
}

TEST(LongValueHeaderTest, SingleNamesItsRow)
{
    ExpectStored({LongValueForm::Single, 2194, {PageNumber{29}, 0}, 0},
                 "92080040 001d0000 00000000");
}

TEST(LongValueHeaderTest, ChainCarriesItsStamp)
{
    ExpectStored({LongValueForm::Chain, 12757, {PageNumber{30}, 0}, 0x9862F413},
                 "d5310000 001e0000 13f46298");
}

TEST(LongValueHeaderTest, NoBytesAreAnEmptyValue)
{
    EXPECT_EQ(ReadLongValueHeader({}), (LongValueHeader{LongValueForm::InRow, 0, {}, 0}));
}

TEST(LongValueHeaderTest, UnknownFormAndShortFieldAreDamage)
{
    EXPECT_THROW(static_cast<void>(ReadLongValueHeader(FromHex("0b0000c0 00000000 00000000"))),
                 base::NumberedError);
    EXPECT_THROW(static_cast<void>(ReadLongValueHeader(FromHex("0b000080 000000"))),
                 base::NumberedError);
}

}  // namespace
