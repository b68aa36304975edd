// SPDX-License-Identifier: Apache-2.0
// The functions on texts: positions and lengths are UTF-16 units.
#include "base/Convert.h"
#include "base/Format.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/SortKey.h"
#include "jet/sql/Functions.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace jet::sql {

namespace {

using base::NumberedError;
using base::TextOf;
using base::Value;

constexpr long kLongestMade = 65535;  // characters that Space and String make

// Windows-1252 letters beyond ASCII whose other case lies 32 codes away.
bool IsLatinLower(char16_t unit)
{
    return unit >= 0xE0 && unit <= 0xFE && unit != 0xF7;
}

char16_t Upper(char16_t unit)
{
    if ((unit >= u'a' && unit <= u'z') || IsLatinLower(unit))
        return static_cast<char16_t>(unit - 32);
    return unit;
}

char16_t Lower(char16_t unit)
{
    const auto lower = static_cast<char16_t>(unit + 32);
    if ((unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && IsLatinLower(lower) && unit < 0xE0))
        return lower;
    return unit;
}

Value Mapped(const Value& value, char16_t (*change)(char16_t))
{
    std::u16string units = base::ToUtf16(TextOf(value));
    std::transform(units.begin(), units.end(), units.begin(), change);
    return base::FromUtf16(units);
}

Value Left(Arguments a, const Environment&)
{
    return base::Left(TextOf(a[0]), base::ToLong(a[1]));
}

Value Right(Arguments a, const Environment&)
{
    const std::string text = TextOf(a[0]);
    const long count = base::ToLong(a[1]);
    if (count < 0) throw NumberedError(5);
    const long length = static_cast<long>(base::Length(text));
    return base::Mid(text, std::max(0L, length - count) + 1);
}

Value Mid(Arguments a, const Environment&)
{
    const long start = base::ToLong(a[1]);
    if (a.size() == 2) return base::Mid(TextOf(a[0]), start);
    return base::Mid(TextOf(a[0]), start, base::ToLong(a[2]));
}

Value Len(Arguments a, const Environment&)
{
    return static_cast<std::int32_t>(base::Length(TextOf(a[0])));
}

Value TrimBoth(Arguments a, const Environment&)
{
    return base::Trim(TextOf(a[0]));
}

Value TrimLeft(Arguments a, const Environment&)
{
    const std::string text = TextOf(a[0]);
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

Value TrimRight(Arguments a, const Environment&)
{
    const std::string text = TextOf(a[0]);
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

Value UpperCase(Arguments a, const Environment&)
{
    return Mapped(a[0], Upper);
}

Value LowerCase(Arguments a, const Environment&)
{
    return Mapped(a[0], Lower);
}

// InStr([start,] text, part): case is ignored, as everywhere in SQL.
Value InStr(Arguments a, const Environment& environment)
{
    const bool placed = a.size() == 3;
    const long start = placed ? base::ToLong(a[0]) : 1;
    if (start < 1) throw NumberedError(5);
    const Value texts[] = {a[placed ? 1 : 0], a[placed ? 2 : 1]};
    const std::string text = *LowerCase({&texts[0], 1}, environment).As<std::string>();
    const std::string part = *LowerCase({&texts[1], 1}, environment).As<std::string>();
    if (text.empty() || start > static_cast<long>(base::Length(text))) return std::int32_t{0};
    const long found = base::InStr(base::Mid(text, start), part);
    return static_cast<std::int32_t>(found == 0 ? 0 : found + start - 1);
}

Value StrComp(Arguments a, const Environment& environment)
{
    const std::string left = TextOf(a[0]);
    const std::string right = TextOf(a[1]);
    if (a.size() == 3 && base::ToLong(a[2]) == 0) {
        const int order = left.compare(right);
        return static_cast<std::int32_t>((order > 0) - (order < 0));
    }
    const auto order = format::CompareText(left, right, environment.order);
    return static_cast<std::int32_t>((order > 0) - (order < 0));
}

Value Space(Arguments a, const Environment&)
{
    const long count = base::ToLong(a[0]);
    if (count < 0 || count > kLongestMade) throw NumberedError(5);
    return std::string(static_cast<std::size_t>(count), ' ');
}

Value Chr(Arguments a, const Environment&)
{
    const long code = base::ToLong(a[0]);
    if (code < 0 || code > 255) throw NumberedError(5);
    return base::FromWindows1252(std::string(1, static_cast<char>(code)));
}

Value Repeated(Arguments a, const Environment& environment)
{
    const long count = base::ToLong(a[0]);
    if (count < 0 || count > kLongestMade) throw NumberedError(5);
    const Value character =
        a[1].IsText() ? Value(base::Left(TextOf(a[1]), 1)) : Chr(a.subspan(1, 1), environment);
    const std::string one = TextOf(character);
    if (one.empty()) throw NumberedError(5);
    std::string made;
    for (long i = 0; i < count; ++i)
        made += one;
    return made;
}

Value Asc(Arguments a, const Environment&)
{
    const std::string bytes = base::ToWindows1252(base::Left(TextOf(a[0]), 1));
    if (bytes.empty()) throw NumberedError(5);
    return std::int32_t{static_cast<unsigned char>(bytes[0])};
}

// A blank or a minus first, and no zero before the point.
Value Str(Arguments a, const Environment&)
{
    const double number = base::ToDouble(a[0]);
    std::string digits = TextOf(number < 0 ? -number : number);
    if (digits.starts_with("0.")) digits.erase(0, 1);
    return (number < 0 ? "-" : " ") + digits;
}

Value InRadix(const Value& value, int radix)
{
    const auto bits = static_cast<std::uint32_t>(base::ToLong(value));
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), bits, radix).ptr;
    std::string text(digits.data(), end);
    for (char& c : text)
        if (c >= 'a') c = static_cast<char>(c - 32);
    return text;
}

Value Hex(Arguments a, const Environment&)
{
    return InRadix(a[0], 16);
}

Value Oct(Arguments a, const Environment&)
{
    return InRadix(a[0], 8);
}

Value AsText(Arguments a, const Environment&)
{
    return TextOf(a[0]);
}

Value Formatted(Arguments a, const Environment&)
{
    return a.size() == 1 ? TextOf(a[0]) : base::Format(a[0], TextOf(a[1]));
}

constexpr std::array<FunctionInfo, 20> kFunctions{{
    {"Left", 2, 2, ValueKind::Text, Left},         {"Right", 2, 2, ValueKind::Text, Right},
    {"Mid", 2, 3, ValueKind::Text, Mid},           {"Len", 1, 1, ValueKind::Number, Len},
    {"Trim", 1, 1, ValueKind::Text, TrimBoth},     {"LTrim", 1, 1, ValueKind::Text, TrimLeft},
    {"RTrim", 1, 1, ValueKind::Text, TrimRight},   {"UCase", 1, 1, ValueKind::Text, UpperCase},
    {"LCase", 1, 1, ValueKind::Text, LowerCase},   {"InStr", 2, 3, ValueKind::Number, InStr},
    {"StrComp", 2, 3, ValueKind::Number, StrComp}, {"Space", 1, 1, ValueKind::Text, Space},
    {"String", 2, 2, ValueKind::Text, Repeated},   {"Chr", 1, 1, ValueKind::Text, Chr},
    {"Asc", 1, 1, ValueKind::Number, Asc},         {"Str", 1, 1, ValueKind::Text, Str},
    {"Hex", 1, 1, ValueKind::Text, Hex},           {"Oct", 1, 1, ValueKind::Text, Oct},
    {"CStr", 1, 1, ValueKind::Text, AsText},       {"Format", 1, 2, ValueKind::Text, Formatted},
}};

}  // namespace

std::span<const FunctionInfo> TextFunctions()
{
    return kFunctions;
}

}  // namespace jet::sql
