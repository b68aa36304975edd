// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/StoreValue.h"

#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/Bind.h"
#include "jet/sql/Evaluator.h"
#include "jet/sql/Parser.h"
#include "jet/sql/Random.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace jet::sql {

namespace {

using base::NumberedError;
using base::Value;
using format::ColumnType;

constexpr double kFirstDay = -657434;  // 1 January 100
constexpr double kLastDay = 2958466;   // the day after 31 December 9999
constexpr double kCurrencyLimit = 922337203685477.0;

// The run time's failures are one failure here.
template <class Conversion>
auto Converted(Conversion&& conversion)
{
    try {
        return conversion();
    } catch (const NumberedError& error) {
        if (error.Number() < 1000) throw NumberedError(3421);
        throw;
    }
}

double NumberFrom(const Value& value)
{
    return Converted([&] { return base::ToDouble(value); });
}

template <class Integer>
Value IntegerFrom(const Value& value)
{
    const double rounded = base::RoundHalfEven(NumberFrom(value));
    if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
          rounded <= static_cast<double>(std::numeric_limits<Integer>::max())))
        throw NumberedError(3421);
    return static_cast<Integer>(rounded);
}

Value CurrencyFrom(const Value& value)
{
    if (value.As<base::Currency>() != nullptr) return value;
    const double number = NumberFrom(value);
    if (!(std::fabs(number) <= kCurrencyLimit)) throw NumberedError(3421);
    return base::Currency{static_cast<std::int64_t>(base::RoundHalfEven(number * 10000))};
}

Value SingleFrom(const Value& value)
{
    const double number = NumberFrom(value);
    if (std::fabs(number) > std::numeric_limits<float>::max()) throw NumberedError(3421);
    return static_cast<float>(number);
}

Value DateFrom(const Value& value)
{
    if (const auto* const text = value.As<std::string>()) {
        const std::optional<base::Date> date = base::ReadDate(*text);
        if (!date) throw NumberedError(3421);
        return *date;
    }
    const double days = NumberFrom(value);
    if (!(days >= kFirstDay && days < kLastDay)) throw NumberedError(3421);
    return base::Date{days};
}

Value BooleanFrom(const Value& value)
{
    if (const auto* const text = value.As<std::string>()) {
        if (base::SameName(base::Trim(*text), "True")) return true;
        if (base::SameName(base::Trim(*text), "False")) return false;
    }
    return NumberFrom(value) != 0;
}

Value TextFrom(const Value& value, std::size_t limit)
{
    if (value.As<base::Bytes>() != nullptr) throw NumberedError(3421);
    std::string text = base::TextOf(value);
    // Every character takes at least one byte.
    if (text.size() > limit && base::Length(text) > limit) throw NumberedError(3163);
    return text;
}

Value BytesFrom(const Value& value, std::size_t limit)
{
    const auto* const bytes = value.As<base::Bytes>();
    if (bytes == nullptr) throw NumberedError(3421);
    if (bytes->size() > limit) throw NumberedError(3163);
    return value;
}

// "{12345678-1234-1234-1234-123456789ABC}", braces and hyphens as one likes.
Value GuidFrom(const Value& value)
{
    if (value.As<base::Guid>() != nullptr) return value;
    const auto* const text = value.As<std::string>();
    if (text == nullptr) throw NumberedError(3421);
    std::string digits;
    for (const char c : *text)
        if (std::string_view("{}-").find(c) == std::string_view::npos) digits += c;
    base::Guid guid;
    if (digits.size() != 2 * guid.bytes.size() ||
        digits.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos)
        throw NumberedError(3421);
    for (std::size_t i = 0; i < guid.bytes.size(); ++i)
        guid.bytes[i] = static_cast<std::uint8_t>(std::stoi(digits.substr(2 * i, 2), nullptr, 16));
    return guid;
}

// Multiplies by ten and adds a digit; false when that does not fit.
bool Append(base::Decimal& number, unsigned digit)
{
    std::uint64_t carry = digit;
    for (std::uint32_t& word : number.magnitude) {
        carry += std::uint64_t{word} * 10;
        word = static_cast<std::uint32_t>(carry);
        carry >>= 32U;
    }
    return carry == 0;
}

// "-1.25E-03" is "-0.00125".
std::string WithoutExponent(std::string text)
{
    const std::size_t mark = text.find('E');
    if (mark == std::string::npos) return text;
    const int exponent = std::stoi(text.substr(mark + 1));
    const std::string sign = text.starts_with('-') ? "-" : "";
    std::string digits = text.substr(sign.size(), mark - sign.size());
    const std::size_t point = std::min(digits.find('.'), digits.size());
    if (point < digits.size()) digits.erase(point, 1);
    const int place = static_cast<int>(point) + exponent;  // of the point among the digits
    if (place <= 0)
        return sign + "0." + std::string(static_cast<std::size_t>(-place), '0') + digits;
    const auto before = static_cast<std::size_t>(place);
    if (digits.size() < before) digits.resize(before, '0');
    return sign + digits.insert(before, ".");
}

// Digits with at most one point and a sign, as a person writes a number that no double could hold.
bool IsPlainNumber(std::string_view text)
{
    if (text.starts_with('-')) text.remove_prefix(1);
    const std::size_t point = std::min(text.find('.'), text.size());
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    return point > 0 &&
           std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(point), isDigit) &&
           std::all_of(text.begin() + static_cast<std::ptrdiff_t>(std::min(point + 1, text.size())),
                       text.end(), isDigit);
}

// All digits that the value has. Errors: 3421.
std::string DigitsOf(const Value& value)
{
    if (const auto* const text = value.As<std::string>()) {
        std::string trimmed = base::Trim(*text);
        if (IsPlainNumber(trimmed)) return trimmed;
    }
    const bool exact = value.As<base::Decimal>() != nullptr ||
                       value.As<base::Currency>() != nullptr || value.As<float>() != nullptr;
    return WithoutExponent(base::TextOf(exact ? value : Value(NumberFrom(value))));
}

// With as many digits after the point as the column keeps; the rest is cut off.
Value DecimalFrom(const Value& value, const format::ColumnDefinition& column)
{
    std::string text = DigitsOf(value);
    base::Decimal number;
    number.negative = text.starts_with('-');
    if (number.negative) text.erase(0, 1);
    const std::size_t point = std::min(text.find('.'), text.size());
    std::string fraction = point < text.size() ? text.substr(point + 1) : std::string();
    fraction.resize(column.scale, '0');
    number.scale = column.scale;
    std::size_t digits = 0;
    for (const char c : text.substr(0, point) + fraction) {
        if (c < '0' || c > '9') throw NumberedError(3421);
        if (digits > 0 || c != '0') ++digits;
        if (digits > column.precision || !Append(number, static_cast<unsigned>(c - '0')))
            throw NumberedError(3421);
    }
    if (digits == 0) number.negative = false;
    return number;
}

Value DefaultOf(const std::string& text, const catalog::OpenTable& table,
                const format::ColumnDefinition& column, const Session& session)
{
    const ExpressionPtr expression = ParseDefault(text, session.now());
    BindKept(*expression, {}, column.name, table.entry.name);
    const Environment environment = EnvironmentFor(session, table.rows->Definition());
    return ForColumn(Evaluate(*expression, NoRow(), environment), column, table.bytesPerCharacter);
}

}  // namespace

Value ForColumn(const Value& value, const format::ColumnDefinition& column,
                std::size_t bytesPerCharacter)
{
    constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();
    if (value.IsNull()) {
        if (column.type == ColumnType::Boolean) throw NumberedError(3162);
        return value;
    }
    switch (column.type) {
    case ColumnType::Boolean:
        return BooleanFrom(value);
    case ColumnType::Byte:
        return IntegerFrom<std::uint8_t>(value);
    case ColumnType::Integer:
        return IntegerFrom<std::int16_t>(value);
    case ColumnType::Long:
        return IntegerFrom<std::int32_t>(value);
    case ColumnType::Currency:
        return CurrencyFrom(value);
    case ColumnType::Single:
        return SingleFrom(value);
    case ColumnType::Double:
        return NumberFrom(value);
    case ColumnType::Date:
        return DateFrom(value);
    case ColumnType::Text:
        return TextFrom(value, column.length / bytesPerCharacter);
    case ColumnType::Memo:
        return TextFrom(value, kUnlimited);
    case ColumnType::Binary:
        return BytesFrom(value, column.length);
    case ColumnType::Ole:
        return BytesFrom(value, kUnlimited);
    case ColumnType::Guid:
        return GuidFrom(value);
    case ColumnType::Numeric:
        return DecimalFrom(value, column);
    }
    throw NumberedError(3421);
}

std::vector<Value> NewRowValues(const catalog::OpenTable& table, const Session& session)
{
    const std::vector<format::ColumnDefinition>& columns = table.rows->Definition().columns;
    std::vector<Value> values(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool hasDefault =
            i < table.properties.size() && !table.properties[i].defaultValue.empty();
        if (columns[i].type == ColumnType::Boolean) values[i] = false;
        if (columns[i].autoGuid) {
            values[i] = RandomGuid();
        } else if (hasDefault && !columns[i].autoNumber) {
            values[i] = DefaultOf(table.properties[i].defaultValue, table, columns[i], session);
        }
    }
    return values;
}

Value NextCounter(catalog::OpenTable& table, std::size_t column)
{
    const bool random =
        column < table.properties.size() &&
        base::SameName(base::Trim(table.properties[column].defaultValue), catalog::kRandomCounter);
    if (!random) return table.rows->NextAutoNumber();
    while (true) {
        const Value number = RandomNumber();
        const std::vector<table::Assignment> key{{column, number}};
        const auto taken = table.rows->FindByKey(key);
        if (!taken || taken->empty()) return number;
    }
}

}  // namespace jet::sql
