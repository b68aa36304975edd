// SPDX-License-Identifier: Apache-2.0
#include "tools/RowJson.h"

#include "base/Calendar.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <type_traits>

namespace tools {

namespace {

constexpr std::string_view kLower = "0123456789abcdef", kUpper = "0123456789ABCDEF";

template <class T>
std::string Number(T number)
{
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

std::string Quoted(const std::string& plain)
{
    return '"' + plain + '"';
}

std::string TwoDigits(unsigned byte, std::string_view digits)
{
    return {digits[byte >> 4], digits[byte & 0xF]};
}

std::string Padded(int number, std::size_t width)
{
    const std::string digits = Number(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

// Digits with a point before the last `scale` of them.
std::string WithPoint(std::string digits, std::size_t scale, bool negative)
{
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale > 0) digits.insert(digits.size() - scale, 1, '.');
    return negative ? '-' + digits : digits;
}

// Long division of the four words by ten, digit by digit.
std::string MagnitudeDigits(std::array<std::uint32_t, 4> words)
{
    std::string digits;
    while (std::any_of(words.begin(), words.end(), [](std::uint32_t word) { return word != 0; })) {
        std::uint64_t rest = 0;
        for (auto word = words.rbegin(); word != words.rend(); ++word) {
            rest = (rest << 32) | *word;
            *word = static_cast<std::uint32_t>(rest / 10);
            rest %= 10;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + rest));
    }
    return digits.empty() ? "0" : digits;
}

struct Writer {
    std::string operator()(base::Null) const { return "null"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::uint8_t value) const { return Number(int{value}); }
    std::string operator()(std::int16_t value) const { return Number(value); }
    std::string operator()(std::int32_t value) const { return Number(value); }
    std::string operator()(float value) const { return Number(value); }
    std::string operator()(double value) const { return Number(value); }
    std::string operator()(const std::string& value) const { return JsonText(value); }
    std::string operator()(base::Currency value) const
    {
        constexpr std::size_t scale = 4;
        const bool negative = value.scaled < 0;
        const auto scaled = static_cast<std::uint64_t>(value.scaled);
        return Quoted(WithPoint(Number(negative ? 0 - scaled : scaled), scale, negative));
    }
    std::string operator()(base::Date value) const
    {
        const base::DateParts parts = base::PartsOf(value);
        return Quoted(Padded(parts.year, 4) + '-' + Padded(parts.month, 2) + '-' +
                      Padded(parts.day, 2) + 'T' + Padded(parts.hour, 2) + ':' +
                      Padded(parts.minute, 2) + ':' + Padded(parts.second, 2));
    }
    std::string operator()(const base::Bytes& value) const
    {
        std::string digits;
        for (const std::byte byte : value)
            digits += TwoDigits(std::to_integer<unsigned>(byte), kLower);
        return Quoted(digits);
    }
    std::string operator()(const base::Guid& value) const
    {
        std::string text;
        for (std::size_t i = 0; i < value.bytes.size(); ++i) {
            if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
            text += TwoDigits(value.bytes[i], kUpper);
        }
        return Quoted('{' + text + '}');
    }
    std::string operator()(const base::Decimal& value) const
    {
        return Quoted(WithPoint(MagnitudeDigits(value.magnitude), value.scale, value.negative));
    }
};

}  // namespace

std::string JsonText(std::string_view text)
{
    std::string json = "\"";
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\')
            json += {'\\', character};
        else if (code < 0x20)
            json += "\\u00" + TwoDigits(code, kLower);
        else
            json += character;
    }
    return json + '"';
}

std::string ValueJson(const base::Value& value)
{
    return std::visit(Writer(), value.Content());
}

std::string RowJson(const jet::table::RowSource& table, const jet::format::RowView& row)
{
    std::string json = "{";
    const auto& columns = table.Definition().columns;
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (column > 0) json += ',';
        json += JsonText(columns[column].name) + ':' + ValueJson(table.ValueOf(row, column));
    }
    return json + '}';
}

}  // namespace tools
