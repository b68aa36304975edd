// SPDX-License-Identifier: Apache-2.0
// Cutting and converting text.
#include "base/Text.h"

#include "tests/support/ErrorOf.h"

#include <functional>
#include <gtest/gtest.h>

namespace {

const std::string kReplacement = "\xEF\xBF\xBD";

}  // namespace

using tests::ErrorOf;

TEST(TextTest, CharactersAreCountedInUtf16Units)
{
    EXPECT_EQ(base::Length(""), 0U);
    EXPECT_EQ(base::Length("Müller"), 6U);
    EXPECT_EQ(base::Length("a😀b"), 4U);
}

TEST(TextTest, LeftTakesTheFirstCharacters)
{
    EXPECT_EQ(base::Left("Smith", 2), "Sm");
    EXPECT_EQ(base::Left("Müller", 2), "Mü");
    EXPECT_EQ(base::Left("Smith", 0), "");
    EXPECT_EQ(base::Left("Smith", 99), "Smith");
}

TEST(TextTest, CuttingANegativeLengthIsAnInvalidCall)
{
    EXPECT_EQ(ErrorOf([] { (void)base::Left("Smith", -1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)base::Mid("Smith", 1, -1); }), 5);
    EXPECT_EQ(ErrorOf([] { (void)base::Mid("Smith", 0); }), 5);
}

TEST(TextTest, MidTakesFromAPositionOn)
{
    EXPECT_EQ(base::Mid("Smith", 3), "ith");
    EXPECT_EQ(base::Mid("Smith", 2, 3), "mit");
    EXPECT_EQ(base::Mid("Smith", 6), "");
    EXPECT_EQ(base::Mid("Smith", 5, 9), "h");
}

TEST(TextTest, HalfOfACharacterIsKeptReadable)
{
    EXPECT_EQ(base::Left("😀", 1), kReplacement);
}

TEST(TextTest, InStrTellsThePositionFromOne)
{
    EXPECT_EQ(base::InStr("12345  Car", "  "), 6);
    EXPECT_EQ(base::InStr("  Car", "  "), 1);
    EXPECT_EQ(base::InStr("Mü ler", " "), 3);
    EXPECT_EQ(base::InStr("12345", "  "), 0);
    EXPECT_EQ(base::InStr("", "x"), 0);
    EXPECT_EQ(base::InStr("x", ""), 1);
    EXPECT_EQ(base::InStr("abc", "B"), 0);
}

TEST(TextTest, TheRepairOrderNumberIsCutAtTwoBlanks)
{
    const auto cut = [](const char* text) { return base::Left(text, base::InStr(text, "  ") - 1); };
    EXPECT_EQ(cut("12345  Car"), "12345");
    EXPECT_EQ(cut("  Car"), "");
    EXPECT_EQ(ErrorOf([&] { (void)cut("12345"); }), 5);
}

TEST(TextTest, OnlyBlanksAreTrimmed)
{
    EXPECT_EQ(base::Trim("  a b "), "a b");
    EXPECT_EQ(base::Trim("\ta\u00A0"), "\ta\u00A0");
    EXPECT_EQ(base::Trim("   "), "");
}

TEST(TextTest, NamesCompareWithoutCaseInAsciiOnly)
{
    EXPECT_TRUE(base::SameName("LDEmp", "ldEMP"));
    EXPECT_FALSE(base::SameName("LDEmp", "LDEmps"));
    EXPECT_FALSE(base::SameName("Ä", "ä"));
    EXPECT_EQ(base::LowerName("FileLoc Ä"), "fileloc Ä");
}

TEST(TextTest, EveryWindows1252ByteComesBack)
{
    std::string bytes;
    for (int code = 0; code < 256; ++code)
        bytes += static_cast<char>(code);
    EXPECT_EQ(base::ToWindows1252(base::FromWindows1252(bytes)), bytes);
    EXPECT_EQ(base::FromWindows1252("\x80\xE4\x93"), "€ä“");
}

TEST(TextTest, ACharacterWithoutAWindows1252CodeIsAQuestionMark)
{
    EXPECT_EQ(base::ToWindows1252("a中😀b"), "a??b");
}

TEST(TextTest, Utf16ComesBackWithItsSurrogatePairs)
{
    const std::u16string units = base::ToUtf16("a😀ä");
    EXPECT_EQ(units, u"a\xD83D\xDE00\u00E4");
    EXPECT_EQ(base::FromUtf16(units), "a😀ä");
}

TEST(TextTest, IllFormedTextIsKeptReadable)
{
    EXPECT_EQ(base::FromUtf16(base::ToUtf16("a\xFFz")), "a" + kReplacement + "z");
    EXPECT_EQ(base::FromUtf16(base::ToUtf16("\xC3")), kReplacement);
    // An overlong form, a surrogate and a number beyond Unicode.
    EXPECT_EQ(base::ToUtf16("\xC0\x80").size(), 2U);
    EXPECT_EQ(base::ToUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(base::ToUtf16("\xF4\x90\x80\x80").size(), 4U);
    EXPECT_EQ(base::FromUtf16(std::u16string(1, char16_t{0xD800}) + u"x"), kReplacement + "x");
    EXPECT_EQ(base::FromUtf16(std::u16string(1, char16_t{0xDC00})), kReplacement);
}
