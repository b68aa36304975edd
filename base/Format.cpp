// SPDX-License-Identifier: Apache-2.0
#include "base/Format.h"

#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace base {

namespace {

constexpr int kSignificantDigits = 15;

// A number as decimal text: value = 0.digits * 10^point.
struct DecimalText {
    std::string digits;
    int point = 0;
};

DecimalText DecimalTextOf(double magnitude)
{
    std::array<char, 64> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                       std::chars_format::scientific, kSignificantDigits - 1);
    const std::string_view text(buffer.data(),
                                static_cast<std::size_t>(written.ptr - buffer.data()));
    const std::size_t mark = text.find('e');
    const std::size_t exponentAt = mark + (text[mark + 1] == '+' ? 2 : 1);
    int exponent = 0;
    std::from_chars(text.data() + exponentAt, text.data() + text.size(), exponent);
    DecimalText decimal{std::string(text.substr(0, 1)), exponent + 1};
    decimal.digits += text.substr(2, mark - 2);
    return decimal;
}

// Keeps `places` digits after the point, rounding half away from zero.
void RoundTo(DecimalText& number, int places)
{
    const int kept = number.point + places;
    if (kept >= static_cast<int>(number.digits.size())) return;
    if (kept < 0) {
        number = {};
        return;
    }
    const auto cut = static_cast<std::size_t>(kept);
    const bool up = number.digits[cut] >= '5';
    number.digits.resize(cut);
    if (!up) return;
    std::size_t at = cut;
    while (at > 0 && number.digits[at - 1] == '9')
        number.digits[--at] = '0';
    if (at > 0) {
        ++number.digits[at - 1];
    } else {
        number.digits.insert(0, "1");
        ++number.point;
    }
}

// The digit that stands `place` places left of the point (0 is the units place, -1 the tenths).
char DigitAt(const DecimalText& number, int place)
{
    const int index = number.point - 1 - place;
    if (index < 0 || index >= static_cast<int>(number.digits.size())) return '0';
    return number.digits[static_cast<std::size_t>(index)];
}

// How many digits a pattern asks for, and how many of them it insists on.
struct NumberPattern {
    int requiredInteger = 0;
    int places = 0, requiredPlaces = 0;
    bool point = false;
};

NumberPattern ReadNumberPattern(std::string_view pattern)
{
    NumberPattern result;
    for (const char mark : pattern) {
        if (mark == '.') {
            result.point = true;
        } else if (result.point) {
            ++result.places;
            if (mark == '0') result.requiredPlaces = result.places;
        } else if (mark == '0' || result.requiredInteger > 0) {
            ++result.requiredInteger;
        }
    }
    return result;
}

std::string FormatNumber(double value, std::string_view patternText)
{
    if (!std::isfinite(value)) return TextOf(value);
    const NumberPattern pattern = ReadNumberPattern(patternText);
    DecimalText number = DecimalTextOf(std::abs(value));
    RoundTo(number, pattern.places);

    std::string text = value < 0 ? "-" : "";
    int place = std::max(number.point, pattern.requiredInteger) - 1;
    while (place >= pattern.requiredInteger && DigitAt(number, place) == '0')
        --place;
    for (; place >= 0; --place)
        text += DigitAt(number, place);
    if (!pattern.point) return text;

    text += '.';
    int last = pattern.places;
    while (last > pattern.requiredPlaces && DigitAt(number, -last) == '0')
        --last;
    for (int decimal = 1; decimal <= last; ++decimal)
        text += DigitAt(number, -decimal);
    return text;
}

std::string Padded(int number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

// Prints a date token by token; knows which token went before and whether hours count to twelve.
class DatePrinter {
public:
    DatePrinter(Date date, std::string_view pattern)
        : parts_(PartsOf(date)), pattern_(LowerName(pattern)),
          twelveHours_(pattern_.find("am/pm") != std::string::npos ||
                       pattern_.find("ampm") != std::string::npos)
    {
    }

    std::string Print()
    {
        std::string text;
        for (std::size_t at = 0; at < pattern_.size();) {
            const std::size_t length = TokenLength(at);
            text += Token(std::string_view(pattern_).substr(at, length));
            at += length;
        }
        return text;
    }

private:
    [[nodiscard]] std::size_t TokenLength(std::size_t at) const
    {
        if (pattern_.compare(at, 5, "am/pm") == 0) return 5;
        if (pattern_.compare(at, 4, "ampm") == 0) return 4;
        std::size_t end = at + 1;
        while (end < pattern_.size() && pattern_[end] == pattern_[at])
            ++end;
        return end - at;
    }

    std::string Token(std::string_view token)
    {
        const bool afterHour = afterHour_;
        if (token.front() >= 'a' && token.front() <= 'z') afterHour_ = token.front() == 'h';
        switch (token.front()) {
        case 'a':
            return parts_.hour < 12 ? "AM" : "PM";
        case 'h':
            return Padded(Hour(), token.size());
        case 'm':
            return Padded(afterHour ? parts_.minute : parts_.month, token.size());
        case 'n':
            return Padded(parts_.minute, token.size());
        case 's':
            return Padded(parts_.second, token.size());
        case 'd':
            return Padded(parts_.day, token.size());
        case 'y':
            return Padded(parts_.year, token.size());
        default:
            return std::string(token);
        }
    }

    [[nodiscard]] int Hour() const
    {
        return twelveHours_ ? (parts_.hour + 11) % 12 + 1 : parts_.hour;
    }

    DateParts parts_;
    std::string pattern_;
    bool twelveHours_;
    bool afterHour_ = false;
};

// Nothing when the value is text that is no number.
std::optional<double> AsNumber(const Value& value)
{
    try {
        return ToDouble(value);
    } catch (const NumberedError&) {
        return std::nullopt;
    }
}

std::optional<Date> AsDate(const Value& value)
{
    if (const auto* text = value.As<std::string>()) return ReadDate(*text);
    const std::optional<double> days = AsNumber(value);
    return days ? std::optional(Date{*days}) : std::nullopt;
}

bool IsDatePattern(std::string_view pattern)
{
    return LowerName(pattern).find_first_of("hmnsdy") != std::string::npos;
}

}  // namespace

std::string Format(const Value& value, std::string_view pattern)
{
    if (IsDatePattern(pattern)) {
        const std::optional<Date> date = AsDate(value);
        return date ? DatePrinter(*date, pattern).Print() : TextOf(value);
    }
    const std::optional<double> number = AsNumber(value);
    return number ? FormatNumber(*number, pattern) : TextOf(value);
}

}  // namespace base
