// SPDX-License-Identifier: Apache-2.0
#include "jet/format/TextCompression.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/CodePage.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace jet::format {

namespace {

constexpr std::byte kMark0{0xFF}, kMark1{0xFE};
constexpr std::size_t kMarkSize = 2;
constexpr std::size_t kFewestCompressed = 3, kMostCompressed = 1024;

bool IsCompressed(Span bytes)
{
    return bytes.size() >= kMarkSize && bytes[0] == kMark0 && bytes[1] == kMark1;
}

std::u16string PlainUnits(Span bytes)
{
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units.push_back(static_cast<char16_t>(ReadU16(bytes, i)));
    return units;
}

// A zero byte switches between one and two bytes a character; the text begins with one.
std::u16string CompressedUnits(Span bytes)
{
    std::u16string units;
    units.reserve(bytes.size());
    bool narrow = true;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == std::byte{0}) {
            narrow = !narrow;
        } else if (narrow) {
            units.push_back(std::to_integer<char16_t>(bytes[i]));
        } else if (i + 1 < bytes.size()) {
            units.push_back(static_cast<char16_t>(ReadU16(bytes, i)));
            ++i;
        }
    }
    return units;
}

// Bytes of a word, or units of a word, that are looked at together.
constexpr std::size_t kWord = sizeof(std::uint64_t);

// Most texts are plain ASCII: those need no way through UTF-16. A zero byte is none.
bool IsAscii(Span bytes)
{
    constexpr std::uint64_t ones = 0x0101010101010101, tops = 0x8080808080808080;
    std::size_t at = 0;
    for (; at + kWord <= bytes.size(); at += kWord) {
        const auto word = ReadScalar<std::uint64_t>(bytes, at);
        // Without a top bit, a byte borrows from the one above only when it is zero.
        if (((word | (word - ones)) & tops) != 0) return false;
    }
    const Span rest = bytes.subspan(at);
    return std::all_of(rest.begin(), rest.end(), [](std::byte byte) {
        return byte != std::byte{0} && byte < std::byte{0x80};
    });
}

bool Compressible(std::u16string_view units)
{
    return units.size() >= kFewestCompressed && units.size() <= kMostCompressed &&
           std::all_of(units.begin(), units.end(),
                       [](char16_t unit) { return unit >= 0x01 && unit <= 0xFF; });
}

// Every second byte of a text stored plain, when it is ASCII and the others are zero.
std::optional<std::string> PlainAscii(Span bytes)
{
    constexpr std::uint64_t beyond = 0xFF80FF80FF80FF80;
    std::string text(bytes.size() / 2, '\0');
    std::size_t i = 0;
    for (; 2 * i + kWord <= bytes.size(); i += kWord / 2) {
        auto word = ReadScalar<std::uint64_t>(bytes, 2 * i);
        if ((word & beyond) != 0) return std::nullopt;
        word = (word | word >> 8U) & 0x0000FFFF0000FFFF;
        const auto four = static_cast<std::uint32_t>(word | word >> 16U);
        std::memcpy(text.data() + i, &four, sizeof(four));
    }
    for (; i < text.size(); ++i) {
        const std::uint16_t unit = ReadU16(bytes, 2 * i);
        if (unit >= 0x80) return std::nullopt;
        text[i] = static_cast<char>(unit);
    }
    return text;
}

}  // namespace

std::string DecodeText(Span bytes)
{
    if (!IsCompressed(bytes)) {
        if (std::optional<std::string> text = PlainAscii(bytes)) return *std::move(text);
        return base::FromUtf16(PlainUnits(bytes));
    }
    const Span text = bytes.subspan(kMarkSize);
    if (!IsAscii(text)) return base::FromUtf16(CompressedUnits(text));
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::vector<std::byte> EncodeText(std::string_view text, TextForm form)
{
    constexpr char16_t byteOrderMark = 0xFEFF;
    const std::u16string units = base::ToUtf16(text);
    // Its bytes are the mark of a compressed text: it would be read as another.
    if (!units.empty() && units.front() == byteOrderMark)
        throw base::NumberedError(3421).At("a text that begins with a byte order mark");
    std::vector<std::byte> bytes;
    if (form == TextForm::CompressedIfShorter && Compressible(units)) {
        bytes = {kMark0, kMark1};
        for (const char16_t unit : units)
            bytes.push_back(static_cast<std::byte>(unit));
        return bytes;
    }
    bytes.reserve(2 * units.size());
    for (const char16_t unit : units) {
        bytes.push_back(static_cast<std::byte>(unit & 0xFF));
        bytes.push_back(static_cast<std::byte>(unit >> 8));
    }
    return bytes;
}

std::string DecodeTextIn(std::uint16_t codePage, Span bytes)
{
    return codePage == kUtf16 ? DecodeText(bytes) : DecodeCodePage(bytes, codePage);
}

std::vector<std::byte> EncodeTextIn(std::uint16_t codePage, std::string_view text, TextForm form)
{
    return codePage == kUtf16 ? EncodeText(text, form) : EncodeCodePage(text, codePage);
}

}  // namespace jet::format
