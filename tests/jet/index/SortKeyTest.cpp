// SPDX-License-Identifier: Apache-2.0
// Tests of jet/format/SortKey: keys as the original engine wrote them, and comparisons.
#include "jet/format/SortKey.h"

#include "base/Text.h"
#include "jet/format/Collation97.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>

namespace jet::format {
namespace {

using tests::FromHex;
using tests::ToHex;

constexpr SortOrder kGeneral{.language = 1033, .version = 0};
constexpr SortOrder kFrench{.language = 1036, .version = 0};

std::string KeyHex(std::string_view text, SortOrder order = kGeneral)
{
    return ToHex(SortKeyOf(text, order));
}

// A text, and its key as a real index of the original engine holds it.
struct KnownKey {
    const char* text;
    const char* key;
};

TEST(SortKeyTest, KeysAreThoseOfTheOriginalEngine)
{
    const KnownKey known[] = {
        {"Chai", "4d574a590100"},
        {"Gravad lax", "55694a714a4f075e4a750100"},
        {"Århus", "4a69576f6b011a00"},
        {"Luleå", "5e6f5e514a01020202021a00"},
        {"Côte de Blaye", "4d646d51074f51074c5e4a765101021200"},
        {"B's Beverages", "4c6b074c517151694a55516b01010101800b068000"},
        {"QUICK-Stop", "686f594d5c6b6d646601010101801b068200"},
        {"Save-a-lot Markets", "6b4a71514a5e646d07604a695c516d6b0101010180170682801b068200"},
        {"HILARIÓN-Abastos", "57595e4a695964624a4c4a6b6d646b010202020202020e0101018027068200"},
        {"Gustaf's Knäckebröd", "556f6b6d4a536b075c624a4d5c514c69644f010202020202020202020213020202"
                                "020213010101801f068000"},
        {"NuNuCa Nuß-Nougat-Creme", "626f626f4d4a07626f6b6b62646f554a6d4d69516051010101018033"
                                    "0682804b068200"},
        {"", "0100"},
        {"   ", "0100"},
    };
    for (const KnownKey& one : known)
        EXPECT_EQ(KeyHex(one.text), one.key) << one.text;
}

TEST(SortKeyTest, FrenchOrderReadsAccentsFromTheEnd)
{
    EXPECT_EQ(KeyHex("Catégories", kFrench), "4d4a6d5155646959516b010202020202020e00");
    EXPECT_EQ(KeyHex("Catégories"), "4d4a6d5155646959516b010202020e00");
}

constexpr SortOrder kGeneral1Order{.language = 1033, .version = 1};

TEST(SortKeyTest, Version1OfGeneralHasWeightsOfTwoBytes)
{
    const KnownKey known[] = {
        {"Chai", "0e0a0e2c0e020e320100"},
        {"A 1.0_b", "0e0207020d1907330d1707440e090100"},
        {"co-op", "0e0a0e7c0e7c0e7e01010101800f068200"},
        {"Zoë", "0ea90e7c0e210102021300"},
        {"Straße", "0e910e990e8a0e020e910e910e210100"},
        {"Æ", "0e020e210100"},
        {"", "0100"},
    };
    for (const KnownKey& one : known)
        EXPECT_EQ(KeyHex(one.text, kGeneral1Order), one.key) << one.text;
}

int NumberThrownBy(std::string_view text, SortOrder order)
{
    return tests::ErrorOf([&] { (void)SortKeyOf(text, order); });
}

TEST(SortKeyTest, KeysOfJet3AreThoseOfTheOriginalEngine)
{
    const KnownKey known[] = {
        {"abc", "60616200"},
        {"aäa", "6060600260"},
        {"aÓa", "6072600240"},
        {"-ÁA-Á", "1e60601e60042400"},
        {"aäaaÓaaƒaaäaaÛa", "606060607260603260606060607860026224222262 2500"},
        {"another row", "60707277696675117572 7b00"},
        {"Plutzer Lebensmittelgroßmärkte AG",
         "736d78777e6675116d66616670766f6a7777666d68757276766f60756c7766116068 02222222222260"},
    };
    for (const KnownKey& one : known)
        EXPECT_EQ(KeyHex(one.text, kGeneral97Order), ToHex(FromHex(one.key))) << one.text;
}

TEST(SortKeyTest, CharacterThatJet3CannotStoreIsRefused)
{
    EXPECT_EQ(NumberThrownBy("Жук", kGeneral97Order), 3421);
}

TEST(SortKeyTest, EveryCharacterOfWindows1252HasAKey)
{
    for (int code = 0; code < 256; ++code) {
        if (code == 0x81 || code == 0x8D || code == 0x8F || code == 0x90 || code == 0x9D) continue;
        const std::string text = base::FromWindows1252(std::string(1, static_cast<char>(code)));
        EXPECT_NO_THROW(static_cast<void>(SortKeyOf("a" + text + "b", kGeneral))) << code;
    }
}

TEST(SortKeyTest, CharacterOutsideTheTablesIsRefused)
{
    EXPECT_EQ(NumberThrownBy("Жук", kGeneral), 3421);
    EXPECT_EQ(NumberThrownBy("smile \U0001F600", kGeneral), 3421);
}

TEST(SortKeyTest, OrderWithoutTablesIsRefused)
{
    EXPECT_EQ(NumberThrownBy("a", {.language = 1041, .version = 0}), 3251);
    EXPECT_EQ(NumberThrownBy("a", {.language = 1033, .version = 2}), 3251);
    EXPECT_EQ(NumberThrownBy("a", {.language = 1036, .version = 1}), 3251);
    EXPECT_EQ(NumberThrownBy("a", {.language = 1049, .version = kJet3Tables}), 3251);
}

TEST(SortKeyTest, LetterWhoseWeightIsDoubtfulIsRefused)
{
    EXPECT_EQ(NumberThrownBy("Müller", kGeneral1Order), 3421);
    EXPECT_EQ(NumberThrownBy("Müller", kGeneral), 0);
}

TEST(SortKeyTest, TrailingBlanksDoNotCountInnerOnesDo)
{
    EXPECT_EQ(KeyHex("Frankfurt a.M. "), KeyHex("Frankfurt a.M."));
    EXPECT_EQ(KeyHex("a  ", kGeneral97Order), KeyHex("a", kGeneral97Order));
    EXPECT_NE(KeyHex(" a"), KeyHex("a"));
    EXPECT_NE(KeyHex("a b"), KeyHex("ab"));
}

// Texts in the order the tables give; those on one line are equal.
TEST(CompareTextTest, OrdersAsTheKeysDo)
{
    const std::vector<std::vector<std::string>> classes = {{"", "  "},   {"!"},
                                                           {"1"},        {"a", "A", "A "},
                                                           {"á", "Á"},   {"ae", "Æ"},
                                                           {"coop"},     {"co-op"},
                                                           {"coops"},    {"resume", "RESUME"},
                                                           {"résumé"},   {"resumes"},
                                                           {"ss", "ß"},  {"t"},
                                                           {"th", "Þ"},  {"™"},
                                                           {"z", "Z  "}, {"ž"}};
    for (std::size_t i = 0; i < classes.size(); ++i) {
        for (const std::string& left : classes[i]) {
            for (const std::string& right : classes[i])
                EXPECT_TRUE(CompareText(left, right, kGeneral) == 0) << left << "|" << right;
            if (i + 1 == classes.size()) continue;
            for (const std::string& right : classes[i + 1]) {
                EXPECT_TRUE(CompareText(left, right, kGeneral) < 0) << left << "|" << right;
                EXPECT_TRUE(CompareText(right, left, kGeneral) > 0) << left << "|" << right;
            }
        }
    }
}

TEST(CompareTextTest, AgreesWithTheKeysOnRandomTexts)
{
    const std::vector<std::string> pieces = {
        "a", "A", "b", "-", "'",  " ", "ß", "é",
        "e", "s", "_", "^", "\t", "1", "Æ", std::string(1, '\0')};
    std::mt19937 random(7);
    const auto text = [&] {
        std::string made;
        for (std::size_t n = random() % 6; n > 0; --n)
            made += pieces[random() % pieces.size()];
        return made;
    };
    for (int i = 0; i < 10000; ++i) {
        const std::string left = text();
        const std::string right = text();
        for (const SortOrder order : {kGeneral, kGeneral97Order}) {
            const std::weak_ordering expected = SortKeyOf(left, order) <=> SortKeyOf(right, order);
            ASSERT_TRUE(CompareText(left, right, order) == expected) << left << "|" << right;
        }
    }
}

TEST(CompareTextTest, CharactersOutsideTheTablesSortBehindAllOthers)
{
    EXPECT_TRUE(CompareText("Ж", "zzz", kGeneral) > 0);
    EXPECT_TRUE(CompareText("aЖ", "aИ", kGeneral) != 0);
    EXPECT_TRUE(CompareText("Ж", "Ж ", kGeneral) == 0);
    EXPECT_TRUE(CompareText("Ж", "жж", kGeneral) < 0);
}

TEST(CompareTextTest, OrderWithoutTablesComparesAsGeneral)
{
    EXPECT_TRUE(CompareText("a", "B", {.language = 1041, .version = 0}) < 0);
}

}  // namespace
}  // namespace jet::format
