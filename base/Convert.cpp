// SPDX-License-Identifier: Apache-2.0
#include "base/Convert.h"

#include "base/Calendar.h"
#include "base/NumberedError.h"
#include "base/ReadNumber.h"
#include "base/Text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace base {

namespace {

constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;
constexpr double kCurrencyUnit = 10000;

std::string TextOfReal(double value, int significantDigits)
{
    if (value == 0) return "0";
    std::array<char, 64> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::general, significantDigits);
    std::string text(buffer.data(), written.ptr);
    if (const std::size_t mark = text.find('e'); mark != std::string::npos) text[mark] = 'E';
    return text;
}

// Decimal digits with `scale` of them after the point and no zeros at the end.
std::string TextOfScaled(bool negative, std::string digits, std::size_t scale)
{
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    std::string fraction = digits.substr(digits.size() - scale);
    digits.resize(digits.size() - scale);
    fraction.resize(fraction.find_last_not_of('0') + 1);
    if (!fraction.empty()) digits += "." + fraction;
    return negative && digits != "0" ? "-" + digits : digits;
}

std::string TextOfCurrency(Currency value)
{
    const bool negative = value.scaled < 0;
    const std::string digits = std::to_string(value.scaled);
    return TextOfScaled(negative, negative ? digits.substr(1) : digits, 4);
}

std::string TextOfDecimal(Decimal value)
{
    std::string digits;
    while (value.magnitude != Decimal{}.magnitude) {
        std::uint64_t remainder = 0;
        for (std::size_t word = value.magnitude.size(); word-- > 0;) {
            const std::uint64_t part = (remainder << 32U) | value.magnitude[word];
            value.magnitude[word] = static_cast<std::uint32_t>(part / 10);
            remainder = part % 10;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + remainder));
    }
    return TextOfScaled(value.negative, digits, value.scale);
}

std::string TextOfGuid(const Guid& value)
{
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string text = "{";
    for (std::size_t at = 0; at < value.bytes.size(); ++at) {
        if (at == 4 || at == 6 || at == 8 || at == 10) text += '-';
        text += kHex[value.bytes[at] >> 4U];
        text += kHex[value.bytes[at] & 0xFU];
    }
    return text + "}";
}

// Bytes read as text are UTF-16 units, low byte first; an odd last byte does not count.
std::string TextOfBytes(const Bytes& value)
{
    std::u16string units;
    for (std::size_t at = 0; at + 1 < value.size(); at += 2) {
        units += static_cast<char16_t>(std::to_integer<unsigned>(value[at]) |
                                       std::to_integer<unsigned>(value[at + 1]) << 8U);
    }
    return FromUtf16(units);
}

struct TextMaker {
    std::string operator()(Null /*null*/) const { return {}; }
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(std::uint8_t value) const { return std::to_string(value); }
    std::string operator()(std::int16_t value) const { return std::to_string(value); }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(Currency value) const { return TextOfCurrency(value); }
    std::string operator()(float value) const { return TextOfReal(value, kSingleDigits); }
    std::string operator()(double value) const { return TextOfReal(value, kDoubleDigits); }
    std::string operator()(Date value) const { return TextOf(value); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const Bytes& value) const { return TextOfBytes(value); }
    std::string operator()(const Guid& value) const { return TextOfGuid(value); }
    std::string operator()(const Decimal& value) const { return TextOfDecimal(value); }
};

// The strict conversion to a double.
struct NumberMaker {
    double operator()(Null /*null*/) const { throw NumberedError(94); }
    double operator()(bool value) const { return value ? -1 : 0; }
    double operator()(Currency value) const
    {
        return static_cast<double>(value.scaled) / kCurrencyUnit;
    }
    double operator()(Date value) const { return value.days; }
    double operator()(const std::string& value) const { return ReadNumber(value); }
    double operator()(const Bytes& /*bytes*/) const { throw NumberedError(13); }
    double operator()(const Guid& /*guid*/) const { throw NumberedError(13); }
    double operator()(const Decimal& value) const { return ReadNumber(TextOfDecimal(value)); }
    template <class Number>
    double operator()(Number value) const
    {
        return static_cast<double>(value);
    }
};

template <class Integer>
Integer Rounded(double value)
{
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= std::numeric_limits<Integer>::min() &&
          rounded <= std::numeric_limits<Integer>::max()))
        throw NumberedError(6);
    return static_cast<Integer>(rounded);
}

bool IsWhole(const Value& value)
{
    return value.As<bool>() != nullptr || value.As<std::uint8_t>() != nullptr ||
           value.As<std::int16_t>() != nullptr || value.As<std::int32_t>() != nullptr;
}

bool IsMoneyOrWhole(const Value& value)
{
    return value.As<Currency>() != nullptr || IsWhole(value);
}

// The kind arithmetic on whole numbers, money and others gives: whole, money, otherwise a double.
Value OfCommonKind(const Value& left, const Value& right, double result)
{
    constexpr double kLargestWhole = std::numeric_limits<std::int32_t>::max();
    if (IsWhole(left) && IsWhole(right) && std::abs(result) <= kLargestWhole)
        return static_cast<std::int32_t>(result);
    constexpr double kLargestMoney = 922337203685477;
    if (IsMoneyOrWhole(left) && IsMoneyOrWhole(right) && std::abs(result) < kLargestMoney &&
        !(IsWhole(left) && IsWhole(right)))
        return Currency{static_cast<std::int64_t>(RoundHalfEven(result * kCurrencyUnit))};
    return result;
}

}  // namespace

std::string TextOf(const Value& value)
{
    return std::visit(TextMaker{}, value.Content());
}

std::string TextOf(double value)
{
    return TextOfReal(value, kDoubleDigits);
}

std::string TextOf(std::int32_t value)
{
    return std::to_string(value);
}

double Val(const Value& value)
{
    return ReadLeadingNumber(TextOf(value));
}

std::int32_t ValLong(const Value& value)
{
    return Rounded<std::int32_t>(Val(value));
}

std::int32_t ToLong(const Value& value)
{
    return Rounded<std::int32_t>(ToDouble(value));
}

std::int16_t ToInteger(const Value& value)
{
    return Rounded<std::int16_t>(ToDouble(value));
}

double ToDouble(const Value& value)
{
    return std::visit(NumberMaker{}, value.Content());
}

Date ToDate(const Value& value)
{
    const auto* const text = value.As<std::string>();
    if (text == nullptr) return Date{ToDouble(value)};
    const std::optional<Date> date = ReadDate(*text);
    if (!date) throw NumberedError(13);
    return *date;
}

double RoundHalfEven(double value)
{
    return std::nearbyint(value);
}

Value Plus(const Value& left, const Value& right)
{
    if (left.IsNull() || right.IsNull()) return Null{};
    const double sum = ToDouble(left) + ToDouble(right);
    if (left.IsDate() || right.IsDate()) return Date{sum};
    return OfCommonKind(left, right, sum);
}

Value Minus(const Value& left, const Value& right)
{
    if (left.IsNull() || right.IsNull()) return Null{};
    const double difference = ToDouble(left) - ToDouble(right);
    if (left.IsDate() && !right.IsDate()) return Date{difference};
    return OfCommonKind(left, right, difference);
}

Value Times(const Value& left, const Value& right)
{
    if (left.IsNull() || right.IsNull()) return Null{};
    return OfCommonKind(left, right, ToDouble(left) * ToDouble(right));
}

bool Differs(const Value& left, const Value& right)
{
    if (left.IsNull() || right.IsNull()) return false;
    const auto countsAsNumber = [](const Value& value) {
        return value.IsNumber() || value.IsDate();
    };
    if (countsAsNumber(left) && countsAsNumber(right)) return ToDouble(left) != ToDouble(right);
    return !(left == right);
}

}  // namespace base
