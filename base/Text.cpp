// SPDX-License-Identifier: Apache-2.0
#include "base/Text.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <array>

namespace base {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsSurrogate(char32_t character)
{
    return character >= 0xD800 && character <= 0xDFFF;
}

constexpr unsigned ByteAt(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

// How many bytes a character takes that begins with `first`; 0 when none begins so.
constexpr std::size_t SequenceLength(unsigned first)
{
    if (first < 0x80) return 1;
    if (first < 0xC2) return 0;
    if (first < 0xE0) return 2;
    if (first < 0xF0) return 3;
    return first < 0xF5 ? 4 : 0;
}

// The character at `at`, which moves behind it; one ill-formed byte is one replacement character.
char32_t TakeCharacter(std::string_view text, std::size_t& at)
{
    constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const unsigned first = ByteAt(text, at);
    const std::size_t length = SequenceLength(first);
    if (length == 0 || at + length > text.size()) return ++at, kReplacement;
    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t next = 1; next < length; ++next) {
        const unsigned byte = ByteAt(text, at + next);
        if ((byte & 0xC0U) != 0x80) return ++at, kReplacement;
        character = (character << 6U) | (byte & 0x3FU);
    }
    if (character < kSmallest[length] || IsSurrogate(character) || character > 0x10FFFF)
        return ++at, kReplacement;
    at += length;
    return character;
}

void AppendUtf8(std::string& text, char32_t character)
{
    const auto byte = [&](char32_t value) { text += static_cast<char>(value); };
    if (character < 0x80) return byte(character);
    if (character < 0x800) {
        byte(0xC0U | (character >> 6U));
    } else if (character < 0x10000) {
        byte(0xE0U | (character >> 12U));
        byte(0x80U | ((character >> 6U) & 0x3FU));
    } else {
        byte(0xF0U | (character >> 18U));
        byte(0x80U | ((character >> 12U) & 0x3FU));
        byte(0x80U | ((character >> 6U) & 0x3FU));
    }
    byte(0x80U | (character & 0x3FU));
}

// What the bytes 0x80 to 0x9F mean in Windows-1252; all others mean themselves. The five codes
// without a character stand for the control characters of the same number.
constexpr std::array<char32_t, 32> kWindows1252High{
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

char Windows1252Code(char32_t character)
{
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto* const found =
        std::find(kWindows1252High.begin(), kWindows1252High.end(), character);
    if (found == kWindows1252High.end()) return '?';
    return static_cast<char>(0x80 + (found - kWindows1252High.begin()));
}

constexpr char LowerAscii(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

}  // namespace

std::size_t Length(std::string_view text)
{
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size();)
        length += TakeCharacter(text, at) < 0x10000 ? 1U : 2U;
    return length;
}

std::string Left(std::string_view text, long length)
{
    return Mid(text, 1, length);
}

std::string Mid(std::string_view text, long start)
{
    return Mid(text, start, static_cast<long>(text.size()));
}

std::string Mid(std::string_view text, long start, long length)
{
    if (start < 1 || length < 0) throw NumberedError(5);
    const std::u16string units = ToUtf16(text);
    const auto begin = static_cast<std::size_t>(start - 1);
    if (begin >= units.size()) return {};
    return FromUtf16(std::u16string_view(units).substr(begin, static_cast<std::size_t>(length)));
}

long InStr(std::string_view text, std::string_view part)
{
    if (text.empty()) return 0;
    const std::size_t found = text.find(part);
    if (found == std::string_view::npos) return 0;
    return static_cast<long>(Length(text.substr(0, found))) + 1;
}

std::string Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

bool SameName(std::string_view left, std::string_view right)
{
    const auto same = [](char a, char b) { return LowerAscii(a) == LowerAscii(b); };
    return left.size() == right.size() && std::equal(left.begin(), left.end(), right.begin(), same);
}

std::string LowerName(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), LowerAscii);
    return result;
}

std::string ToWindows1252(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();)
        bytes += Windows1252Code(TakeCharacter(utf8, at));
    return bytes;
}

std::string FromWindows1252(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned byte = ByteAt(bytes, at);
        AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kWindows1252High[byte - 0x80] : byte);
    }
    return text;
}

std::u16string ToUtf16(std::string_view utf8)
{
    std::u16string units;
    units.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t character = TakeCharacter(utf8, at);
        if (character < 0x10000) {
            units += static_cast<char16_t>(character);
        } else {
            units += static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10U));
            units += static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FFU));
        }
    }
    return units;
}

std::string FromUtf16(std::u16string_view units)
{
    std::string text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size(); ++at) {
        const char32_t unit = units[at];
        const char32_t next = at + 1 < units.size() ? units[at + 1] : 0;
        if (unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            AppendUtf8(text, 0x10000 + ((unit - 0xD800) << 10U) + (next - 0xDC00));
            ++at;
        } else {
            AppendUtf8(text, IsSurrogate(unit) ? kReplacement : unit);
        }
    }
    return text;
}

}  // namespace base
