// SPDX-License-Identifier: Apache-2.0
#include "jet/format/PropertyBlock.h"

#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using jet::format::PropertyBlock;
using jet::format::PropertyOwner;
using tests::FromHex;
using tests::ToHex;

// The block of a table made by a statement with one NOT NULL field, as Jet 4 stored it.
constexpr const char* kRequiredVersion = R"(
4d523200
18000000 8000  1000 52006500710075006900720065006400
23000000 0100  14000000 0e00 760065007200730069006f006e00
   0900 01 01 0000 0100 01)";

// The block of a database object, as Jet 4 stored it.
constexpr const char* kDatabaseProperties = R"(
4d523200
2e000000 8000  1a00 410063006300650073007300560065007200730069006f006e00
               0a00 4200750069006c006400
2a000000 0000  06000000 0000
   1200 00 0a 0000 0a00 300038002e0035003000
   0c00 00 04 0100 0400 dc190000)";

// One of Jet 3.
constexpr const char* kJet3Properties = R"(
4b4b4400
15000000 8000  0d00 41636365737356657273696f6e
19000000 0000  06000000 0000
   0d00 00 0a 0000 0500 30372e3533)";

int NumberOf(const std::vector<std::byte>& bytes)
{
    return tests::ErrorOf([&] { (void)PropertyBlock::Parse(bytes); });
}

TEST(PropertyBlockTest, RequiredFieldIsRead)
{
    const PropertyBlock block = PropertyBlock::Parse(FromHex(kRequiredVersion));
    EXPECT_TRUE(block.BooleanValue("VERSION", "required"));
    EXPECT_FALSE(block.BooleanValue("other", "Required"));
    EXPECT_FALSE(block.TextValue("version", "DefaultValue").has_value());
}

TEST(PropertyBlockTest, ObjectPropertiesAreFoundWithoutAField)
{
    const PropertyBlock block = PropertyBlock::Parse(FromHex(kDatabaseProperties));
    EXPECT_EQ(block.TextValue("", "AccessVersion"), "08.50");
    ASSERT_EQ(block.Owners().size(), 1U);
    EXPECT_EQ(block.Owners()[0].kind, PropertyOwner::Kind::Object);
    ASSERT_EQ(block.Owners()[0].records.size(), 2U);
    EXPECT_EQ(block.Owners()[0].records[1].type, 4);
}

TEST(PropertyBlockTest, Jet3TextsAreOfTheCodePage)
{
    const PropertyBlock block = PropertyBlock::Parse(FromHex(kJet3Properties));
    EXPECT_EQ(block.TextValue("", "AccessVersion"), "07.53");
}

TEST(PropertyBlockTest, ReadBlocksAreWrittenByteForByte)
{
    for (const char* dump : {kRequiredVersion, kDatabaseProperties, kJet3Properties}) {
        const auto bytes = FromHex(dump);
        EXPECT_EQ(ToHex(PropertyBlock::Parse(bytes).Encode()), ToHex(bytes));
    }
}

TEST(PropertyBlockTest, WhatIsSetStandsInTheOrderOfTheFields)
{
    PropertyBlock block;
    block.SetMemo("EmpID", "DefaultValue", "0");
    block.SetBoolean("Name", "AllowZeroLength", true);
    EXPECT_EQ(ToHex(block.Encode()), ToHex(FromHex(R"(
4d523200
40000000 8000
   1800 440065006600610075006c007400560061006c0075006500
   1e00 41006c006c006f0077005a00650072006f004c0065006e00670074006800
20000000 0100 10000000 0a00 45006d00700049004400
   0a00 01 0c 0000 0200 3000
1d000000 0100 0e000000 0800 4e0061006d006500
   0900 01 01 0100 0100 01)")));
}

TEST(PropertyBlockTest, Jet3WishesAreWrittenInTheCodePage)
{
    PropertyBlock block(jet::format::kWindows1252);
    block.SetMemo("EmpID", "DefaultValue", "0");
    block.SetBoolean("Name", "AllowZeroLength", true);
    EXPECT_EQ(ToHex(block.Encode()), ToHex(FromHex(R"(
4b4b4400
25000000 8000 0c00 44656661756c7456616c7565 0f00 416c6c6f775a65726f4c656e677468
1a000000 0100 0b000000 0500 456d704944 0900 01 0c 0000 0100 30
19000000 0100 0a000000 0400 4e616d65 0900 01 01 0100 0100 01)")));
}

TEST(PropertyBlockTest, SettingAgainReplacesAndKeepsTheRest)
{
    PropertyBlock block = PropertyBlock::Parse(FromHex(kDatabaseProperties));
    block.SetText("", "accessversion", "09.50");
    block.SetText("A field", "Description", "Größe");
    block = PropertyBlock::Parse(block.Encode());
    EXPECT_EQ(block.TextValue("", "AccessVersion"), "09.50");
    EXPECT_EQ(block.TextValue("a field", "Description"), "Größe");
    EXPECT_EQ(block.Owners()[0].records.size(), 2U);
    EXPECT_EQ(block.Names().size(), 3U);
}

TEST(PropertyBlockTest, ObjectPropertiesAreWrittenFirst)
{
    PropertyBlock block;
    block.SetBoolean("Name", "Required", true);
    block.SetText("", "Description", "people");
    ASSERT_EQ(block.Owners().size(), 2U);
    EXPECT_EQ(block.Owners()[0].kind, PropertyOwner::Kind::Object);
}

TEST(PropertyBlockTest, EveryCutOffBlockIsRefused)
{
    const auto whole = FromHex(kRequiredVersion);
    // Cut behind the mark or the names, a block merely has no properties.
    for (std::size_t length = 0; length < whole.size(); ++length) {
        if (length == 4 || length == 28) continue;
        const std::vector<std::byte> part(whole.begin(),
                                          whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(NumberOf(part), 3343) << length;
    }
}

TEST(PropertyBlockTest, LyingLengthsAndNamesAreRefused)
{
    const auto good = FromHex(kRequiredVersion);
    // Chunk lengths, the name's length, the owner's, the record's, the name's place, the value's.
    for (const std::size_t at : {4U, 10U, 28U, 34U, 38U, 54U, 58U, 60U}) {
        auto bad = good;
        bad[at] = std::byte{0xFF};
        EXPECT_EQ(NumberOf(bad), 3343) << at;
    }
}

// A chunk of a kind that nobody here knows.
const char* const kStrangeChunk = "0a000000 0300 cafebabe";

TEST(PropertyBlockTest, UnknownChunksArePassedOver)
{
    const std::string whole = ToHex(FromHex(kRequiredVersion));
    const std::string strange = ToHex(FromHex(kStrangeChunk));
    // Before the names, behind them, and behind the last owner.
    for (const std::size_t at : {std::size_t{2 * 4}, std::size_t{2 * 28}, whole.size()}) {
        std::string dump = whole;
        dump.insert(at, strange);
        const PropertyBlock block = PropertyBlock::Parse(FromHex(dump));
        EXPECT_TRUE(block.BooleanValue("Version", "Required"));
        EXPECT_EQ(ToHex(block.Encode()), whole);
    }
}

TEST(PropertyBlockTest, SecondListOfNamesIsPassedOverAsLongAsItNamesNothing)
{
    const std::string names = "10000000 8000 0800 4c00610074006500";
    const std::string whole = ToHex(FromHex(kRequiredVersion));
    // An unknown part before it changes nothing.
    for (const std::string& strange : {std::string(), std::string(kStrangeChunk)}) {
        const PropertyBlock block =
            PropertyBlock::Parse(FromHex(kRequiredVersion + strange + names));
        EXPECT_TRUE(block.BooleanValue("Version", "Required"));
        EXPECT_EQ(ToHex(block.Encode()), whole);
        std::string meaning = whole;
        meaning.insert(2 * 28, ToHex(FromHex(strange + names)));
        EXPECT_EQ(NumberOf(FromHex(meaning)), 3343);
    }
}

TEST(PropertyBlockTest, ChunkWithoutLengthEndsTheReading)
{
    auto bytes = FromHex(kRequiredVersion);
    bytes.insert(bytes.end(), 6, std::byte{0});
    EXPECT_EQ(NumberOf(bytes), 3343);
}

}  // namespace
