// SPDX-License-Identifier: Apache-2.0
#include "jet/format/PageEncoding.h"

#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using jet::format::ApplyKeyStream;
using jet::format::ApplyPageEncoding;
using jet::format::kNotEncoded;
using jet::format::PageNumber;
using tests::FromHex;
using tests::ToHex;

// db-enc.mdb.
constexpr std::uint32_t kKey = 0xA7B773E0;

TEST(PageEncodingTest, PageOneOfARealFile)
{
    std::vector<std::byte> page = FromHex("c6e651a6 64d6252e");
    ApplyPageEncoding(page, PageNumber{1}, kKey);
    EXPECT_EQ(ToHex(page), "0101640f01000000");
}

TEST(PageEncodingTest, SecondTimeTakesItBack)
{
    std::vector<std::byte> page(4096, std::byte{0x5A});
    ApplyPageEncoding(page, PageNumber{70000}, kKey);
    EXPECT_NE(page, std::vector<std::byte>(4096, std::byte{0x5A}));
    ApplyPageEncoding(page, PageNumber{70000}, kKey);
    EXPECT_EQ(page, std::vector<std::byte>(4096, std::byte{0x5A}));
}

TEST(PageEncodingTest, EqualPagesAreStoredDifferently)
{
    std::vector<std::byte> one(64), other(64);
    ApplyPageEncoding(one, PageNumber{5}, kKey);
    ApplyPageEncoding(other, PageNumber{6}, kKey);
    EXPECT_NE(one, other);
}

TEST(PageEncodingTest, HeaderPageAndPlainFilesStayAsTheyAre)
{
    std::vector<std::byte> page(64);
    ApplyPageEncoding(page, PageNumber{0}, kKey);
    ApplyPageEncoding(page, PageNumber{1}, kNotEncoded);
    EXPECT_EQ(page, std::vector<std::byte>(64));
}

// A key stream that is published with the cipher, for the key "Wiki".
TEST(PageEncodingTest, KeyStreamIsTheCiphers)
{
    std::vector<std::byte> zeros(10);
    ApplyKeyStream(0x696B6957, zeros);
    EXPECT_EQ(ToHex(zeros), "6044db6d41b7e8e7a4d6");
}

}  // namespace
