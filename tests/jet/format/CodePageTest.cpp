// SPDX-License-Identifier: Apache-2.0
#include "jet/format/CodePage.h"

#include "base/Text.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

namespace {

using jet::format::DecodeCodePage;
using jet::format::EncodeCodePage;
using tests::ErrorOf;
using tests::FromHex;
using tests::ToHex;

struct Word {
    std::uint16_t codePage;
    const char* text;
    const char* bytes;
};

class CodePageTest : public testing::TestWithParam<Word> {};
INSTANTIATE_TEST_SUITE_P(
    Words, CodePageTest,
    testing::Values(Word{874, "กข ฿", "a1a220df"}, Word{1250, "Łódź", "a3f3649f"},
                    Word{1251, "Иван Ж", "c8e2e0ed20c6"}, Word{1252, "Zoë €", "5a6feb2080"},
                    Word{1253, "Ωμέγα", "d9ecdde3e1"},
                    Word{1254, "İstanbul ş", "dd7374616e62756c20fe"},
                    Word{1255, "שלום", "f9ece5ed"}, Word{1256, "سلام", "d3e1c7e3"},
                    Word{1257, "Rīga ž", "52ee676120fe"}, Word{1258, "Đà ₫", "d0e020fe"}),
    [](const auto& each) { return std::to_string(each.param.codePage); });

TEST_P(CodePageTest, WordIsStoredInItsBytes)
{
    const Word& word = GetParam();
    EXPECT_EQ(ToHex(EncodeCodePage(word.text, word.codePage)), word.bytes);
    EXPECT_EQ(DecodeCodePage(FromHex(word.bytes), word.codePage), word.text);
}

TEST_P(CodePageTest, EveryByteComesBack)
{
    for (int code = 0; code < 256; ++code) {
        const std::vector<std::byte> byte{static_cast<std::byte>(code)};
        const std::string text = DecodeCodePage(byte, GetParam().codePage);
        EXPECT_EQ(EncodeCodePage(text, GetParam().codePage), byte) << code << " is " << text;
    }
}

TEST_P(CodePageTest, TextOfAnotherScriptIsRefused)
{
    for (const char* text : {"\xE5\xB1\xB1", "\xF0\x9F\x98\x80", "\xEF\x80\x81"})
        EXPECT_EQ(ErrorOf([&] { (void)EncodeCodePage(text, GetParam().codePage); }), 3421) << text;
}

// Bytes that are read as no text of anybody's, and are stored again as they were.
struct Unread {
    std::uint16_t codePage;
    const char* bytes;
    std::size_t strange;  // characters that are none of ASCII
};

class UnreadCodePageTest : public testing::TestWithParam<Unread> {};
INSTANTIATE_TEST_SUITE_P(Bytes, UnreadCodePageTest,
                         testing::Values(Unread{932, "8341615c", 2}, Unread{932, "b1b241", 2},
                                         Unread{932, "835c5c", 2}, Unread{932, "4183", 1},
                                         Unread{932, "832083", 2}, Unread{936, "b14141", 2},
                                         Unread{949, "feff41", 2}, Unread{949, "815d5d", 2},
                                         Unread{950, "a461ff", 3}, Unread{1361, "884161", 1}));

TEST_P(UnreadCodePageTest, BytesComeBack)
{
    const Unread& each = GetParam();
    const std::string text = DecodeCodePage(FromHex(each.bytes), each.codePage);
    EXPECT_EQ(ToHex(EncodeCodePage(text, each.codePage)), each.bytes);
    const std::u16string units = base::ToUtf16(text);
    EXPECT_EQ(units.size(), std::string_view(each.bytes).size() / 2);
    EXPECT_EQ(std::count_if(units.begin(), units.end(), [](char16_t c) { return c >= 0x80; }),
              static_cast<std::ptrdiff_t>(each.strange));
}

TEST(UnknownCodePageTest, HoldsAsciiAloneAndWhatWasRead)
{
    for (const std::uint16_t codePage : std::array<std::uint16_t, 4>{932, 936, 949, 950}) {
        EXPECT_EQ(ToHex(EncodeCodePage("a~", codePage)), "617e");
        EXPECT_EQ(DecodeCodePage(FromHex("617e"), codePage), "a~");
        EXPECT_EQ(ErrorOf([&] { (void)EncodeCodePage("a\xC3\xA9", codePage); }), 3251) << codePage;
        // A second byte without its first would be read as a letter.
        EXPECT_EQ(ErrorOf([&] { (void)EncodeCodePage("\xEF\xA1\x81", codePage); }), 3251);
    }
}

}  // namespace
