// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TextCompression.h"

#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using jet::format::DecodeText;
using jet::format::EncodeText;
using jet::format::TextForm;
using tests::FromHex;
using tests::ToHex;

std::string Compressed(std::string_view text)
{
    return ToHex(EncodeText(text, TextForm::CompressedIfShorter));
}

TEST(TextCompressionTest, PlainTextIsTwoBytesACharacter)
{
    EXPECT_EQ(ToHex(EncodeText("hi\xC3\xA4", TextForm::Plain)), "68006900e400");
    EXPECT_EQ(DecodeText(FromHex("6800 6900 e400 b103")), "hi\xC3\xA4\xCE\xB1");
}

TEST(TextCompressionTest, PlainTextIsReadWhateverItsFirstCharacterBeyondAsciiIs)
{
    EXPECT_EQ(DecodeText(FromHex("4200 4c00")), "BL");
    EXPECT_EQ(DecodeText(FromHex("4200 8000")), "B\xC2\x80");
    EXPECT_EQ(DecodeText(FromHex("4200 4c01")), "B\xC5\x8C");
    EXPECT_EQ(DecodeText(FromHex("4200 0000 4c00")), std::string("B\0L", 3));
    EXPECT_EQ(DecodeText(FromHex("4200 4c")), "B");
}

// Stored plain, its bytes would be taken for those of a compressed text.
TEST(TextCompressionTest, TextThatBeginsWithAByteOrderMarkIsRefused)
{
    const std::string text = "\xEF\xBB\xBFSmith";
    for (const TextForm form : {TextForm::Plain, TextForm::CompressedIfShorter})
        EXPECT_EQ(tests::ErrorOf([&] { (void)EncodeText(text, form); }), 3421);
    EXPECT_EQ(DecodeText(EncodeText("Smith\xEF\xBB\xBF", TextForm::Plain)), "Smith\xEF\xBB\xBF");
}

TEST(TextCompressionTest, ThreeLatinCharactersAreCompressed)
{
    EXPECT_EQ(Compressed("abc"), "fffe616263");
    EXPECT_EQ(Compressed("a\xC3\xBF"
                         "c"),
              "fffe61ff63");
    EXPECT_EQ(DecodeText(FromHex("fffe 61ff63")), "a\xC3\xBF"
                                                  "c");
}

TEST(TextCompressionTest, TwoCharactersWouldNotGetShorter)
{
    EXPECT_EQ(Compressed("ab"), "61006200");
    EXPECT_EQ(Compressed(""), "");
}

TEST(TextCompressionTest, OneCharacterBeyondLatinKeepsTheWholeTextPlain)
{
    EXPECT_EQ(Compressed("abcd\xCE\xB1"), "6100620063006400b103");
}

TEST(TextCompressionTest, NulCharacterKeepsTheWholeTextPlain)
{
    EXPECT_EQ(Compressed(std::string_view("ab\0c", 4)), "6100620000006300");
}

TEST(TextCompressionTest, MoreThan1024CharactersStayPlain)
{
    EXPECT_EQ(EncodeText(std::string(1024, 'x'), TextForm::CompressedIfShorter).size(), 1026U);
    EXPECT_EQ(EncodeText(std::string(1025, 'x'), TextForm::CompressedIfShorter).size(), 2050U);
}

TEST(TextCompressionTest, ZeroByteSwitchesToWideAndBack)
{
    EXPECT_EQ(DecodeText(FromHex("fffe 6162 00 b103 b203 00 63")), "ab\xCE\xB1\xCE\xB2"
                                                                   "c");
}

TEST(TextCompressionTest, MayEndWide)
{
    EXPECT_EQ(DecodeText(FromHex("fffe 61 00 b103")), "a\xCE\xB1");
}

TEST(TextCompressionTest, OddLastByteIsIgnored)
{
    EXPECT_EQ(DecodeText(FromHex("6100 62")), "a");
    EXPECT_EQ(DecodeText(FromHex("fffe 61 00 b1")), "a");
}

TEST(TextCompressionTest, MarkAloneIsEmpty)
{
    EXPECT_EQ(DecodeText(FromHex("fffe")), "");
}

TEST(TextCompressionTest, CharactersBeyondTheBasicPlaneSurvive)
{
    const std::string text = "wrench \xF0\x9F\x94\xA7";
    EXPECT_EQ(DecodeText(EncodeText(text, TextForm::CompressedIfShorter)), text);
}

}  // namespace
