// SPDX-License-Identifier: Apache-2.0
#include "jet/format/CodePage.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/CodePageTables.h"

#include <algorithm>

namespace jet::format {

namespace {

constexpr char16_t kFirstUpper = 0x80;
// The code pages in which a character can have two bytes, and what the second is at least.
constexpr std::uint16_t kJapanese = 932, kSimplifiedChinese = 936, kKorean = 949,
                        kTraditionalChinese = 950;
constexpr char16_t kFirstSecondByte = 0x40;
// A code without a character stands for one that no text has, so that it comes back as it was.
constexpr char16_t kFirstPrivate = 0xF800;

char16_t PrivateOf(std::byte code)
{
    return static_cast<char16_t>(kFirstPrivate + std::to_integer<char16_t>(code));
}

char16_t CharacterOf(std::byte code, CodePageTable table)
{
    const auto unit = std::to_integer<char16_t>(code);
    if (unit < kFirstUpper) return unit;
    const char16_t character = table[unit - kFirstUpper];
    return character != 0 ? character : PrivateOf(code);
}

// Nothing when the table has no code for it.
std::optional<std::byte> CodeOf(char16_t character, CodePageTable table)
{
    if (character < kFirstUpper) return static_cast<std::byte>(character);
    const auto found = std::find(table.begin(), table.end(), character);
    if (found != table.end()) return static_cast<std::byte>(kFirstUpper + (found - table.begin()));
    if (character < kFirstPrivate + kFirstUpper || character > kFirstPrivate + 0xFF)
        return std::nullopt;
    const auto code = static_cast<std::byte>(character & 0xFF);
    return CharacterOf(code, table) == character ? std::optional(code) : std::nullopt;
}

[[noreturn]] void Refuse(std::uint16_t codePage)
{
    throw base::NumberedError(3421).At("text beyond code page " + std::to_string(codePage));
}

// These are the same in every code page.
bool IsAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < kFirstUpper; });
}

std::string NarrowOf(Span bytes)
{
    std::string narrow(bytes.size(), '\0');
    std::transform(bytes.begin(), bytes.end(), narrow.begin(),
                   [](std::byte byte) { return static_cast<char>(byte); });
    return narrow;
}

std::vector<std::byte> BytesOf(std::string_view narrow)
{
    std::vector<std::byte> bytes(narrow.size());
    std::transform(narrow.begin(), narrow.end(), bytes.begin(),
                   [](char character) { return static_cast<std::byte>(character); });
    return bytes;
}

// Codes from which characters of two bytes begin; half-width kana stand alone.
bool BeginsTwoBytes(std::byte code, std::uint16_t codePage)
{
    const auto number = std::to_integer<unsigned>(code);
    switch (codePage) {
    case kJapanese:
        return (number >= 0x81 && number <= 0x9F) || (number >= 0xE0 && number <= 0xFC);
    case kSimplifiedChinese:
    case kKorean:
    case kTraditionalChinese:
        return number >= 0x81 && number <= 0xFE;
    default:
        return false;
    }
}

// Text of a code page without a table.
std::string DecodeUnread(Span bytes, std::uint16_t codePage)
{
    std::u16string wide;
    bool second = false;
    for (const std::byte code : bytes) {
        const auto unit = std::to_integer<char16_t>(code);
        second = second && unit >= kFirstSecondByte;
        wide.push_back(second || unit >= kFirstUpper ? PrivateOf(code) : unit);
        second = !second && BeginsTwoBytes(code, codePage);
    }
    return base::FromUtf16(wide);
}

// Errors: 3251.
std::vector<std::byte> EncodeUnread(std::string_view text, std::uint16_t codePage)
{
    std::vector<std::byte> bytes;
    for (const char16_t unit : base::ToUtf16(text))
        bytes.push_back(static_cast<std::byte>(unit & 0xFF));
    // Other characters, and a second byte that has lost its first, would be read as others.
    if (DecodeUnread(bytes, codePage) != text)
        throw base::NumberedError(3251).At("code page " + std::to_string(codePage) +
                                           " holds no new text but ASCII");
    return bytes;
}

}  // namespace

std::string DecodeCodePage(Span bytes, std::uint16_t codePage)
{
    std::string narrow = NarrowOf(bytes);
    if (IsAscii(narrow)) return narrow;
    if (codePage == kWindows1252) return base::FromWindows1252(narrow);
    const std::optional<CodePageTable> table = FindCodePage(codePage);
    if (!table) return DecodeUnread(bytes, codePage);
    std::u16string wide;
    for (const std::byte code : bytes)
        wide.push_back(CharacterOf(code, *table));
    return base::FromUtf16(wide);
}

std::vector<std::byte> EncodeCodePage(std::string_view text, std::uint16_t codePage)
{
    if (IsAscii(text)) return BytesOf(text);
    if (codePage == kWindows1252) {
        const std::string narrow = base::ToWindows1252(text);
        if (base::FromWindows1252(narrow) != text) Refuse(codePage);
        return BytesOf(narrow);
    }
    const std::optional<CodePageTable> table = FindCodePage(codePage);
    if (!table) return EncodeUnread(text, codePage);
    std::vector<std::byte> bytes;
    for (const char16_t unit : base::ToUtf16(text)) {
        const std::optional<std::byte> code = CodeOf(unit, *table);
        if (!code) Refuse(codePage);
        bytes.push_back(*code);
    }
    return bytes;
}

}  // namespace jet::format
