// SPDX-License-Identifier: Apache-2.0
// The functions on numbers, the conversions to numbers, and the questions about values.
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "jet/sql/Functions.h"
#include "jet/sql/Random.h"

#include <array>
#include <cmath>
#include <limits>

namespace jet::sql {

namespace {

using base::NumberedError;
using base::Value;

constexpr double kLargestCurrency = 922337203685477.0;

Value Finite(double number)
{
    if (!std::isfinite(number)) throw NumberedError(6);
    return number;
}

Value Abs(Arguments a, const Environment&)
{
    return std::fabs(base::ToDouble(a[0]));
}

Value Int(Arguments a, const Environment&)
{
    return std::floor(base::ToDouble(a[0]));
}

Value Fix(Arguments a, const Environment&)
{
    return std::trunc(base::ToDouble(a[0]));
}

Value Sgn(Arguments a, const Environment&)
{
    const double number = base::ToDouble(a[0]);
    return std::int32_t{(number > 0) - (number < 0)};
}

Value Sqr(Arguments a, const Environment&)
{
    const double number = base::ToDouble(a[0]);
    if (number < 0) throw NumberedError(5);
    return std::sqrt(number);
}

Value Exp(Arguments a, const Environment&)
{
    return Finite(std::exp(base::ToDouble(a[0])));
}

Value Log(Arguments a, const Environment&)
{
    const double number = base::ToDouble(a[0]);
    if (number <= 0) throw NumberedError(5);
    return std::log(number);
}

Value Sin(Arguments a, const Environment&)
{
    return Finite(std::sin(base::ToDouble(a[0])));
}

Value Cos(Arguments a, const Environment&)
{
    return Finite(std::cos(base::ToDouble(a[0])));
}

Value Tan(Arguments a, const Environment&)
{
    return Finite(std::tan(base::ToDouble(a[0])));
}

Value Atn(Arguments a, const Environment&)
{
    return std::atan(base::ToDouble(a[0]));
}

Value Val(Arguments a, const Environment&)
{
    if (a[0].IsNull()) throw NumberedError(94);
    return base::Val(a[0]);
}

Value AsInteger(Arguments a, const Environment&)
{
    return base::ToInteger(a[0]);
}

Value AsLong(Arguments a, const Environment&)
{
    return base::ToLong(a[0]);
}

Value AsDouble(Arguments a, const Environment&)
{
    return base::ToDouble(a[0]);
}

Value AsSingle(Arguments a, const Environment&)
{
    const double number = base::ToDouble(a[0]);
    if (std::fabs(number) > std::numeric_limits<float>::max()) throw NumberedError(6);
    return static_cast<float>(number);
}

Value AsCurrency(Arguments a, const Environment&)
{
    const double number = base::ToDouble(a[0]);
    if (!(std::fabs(number) <= kLargestCurrency)) throw NumberedError(6);
    return base::Currency{static_cast<std::int64_t>(base::RoundHalfEven(number * 10000))};
}

Value AsByte(Arguments a, const Environment&)
{
    const std::int32_t number = base::ToLong(a[0]);
    if (number < 0 || number > 255) throw NumberedError(6);
    return static_cast<std::uint8_t>(number);
}

Value AsBoolean(Arguments a, const Environment&)
{
    return base::ToDouble(a[0]) != 0;
}

Value IsNull(Arguments a, const Environment&)
{
    return a[0].IsNull();
}

Value IsNumeric(Arguments a, const Environment&)
{
    if (!a[0].IsText()) return a[0].IsNumber();
    try {
        (void)base::ToDouble(a[0]);
        return true;
    } catch (const NumberedError&) {
        return false;
    }
}

Value GenUniqueId(Arguments, const Environment&)
{
    return RandomNumber();
}

Value GenGuid(Arguments, const Environment&)
{
    return RandomGuid();
}

constexpr std::array<FunctionInfo, 23> kFunctions{{
    {"Abs", 1, 1, ValueKind::Number, Abs},
    {"Int", 1, 1, ValueKind::Number, Int},
    {"Fix", 1, 1, ValueKind::Number, Fix},
    {"Sgn", 1, 1, ValueKind::Number, Sgn},
    {"Sqr", 1, 1, ValueKind::Number, Sqr},
    {"Exp", 1, 1, ValueKind::Number, Exp},
    {"Log", 1, 1, ValueKind::Number, Log},
    {"Sin", 1, 1, ValueKind::Number, Sin},
    {"Cos", 1, 1, ValueKind::Number, Cos},
    {"Tan", 1, 1, ValueKind::Number, Tan},
    {"Atn", 1, 1, ValueKind::Number, Atn},
    {"Val", 1, 1, ValueKind::Number, Val, OnNull::IsCalled},
    {"CInt", 1, 1, ValueKind::Number, AsInteger},
    {"CLng", 1, 1, ValueKind::Number, AsLong},
    {"CDbl", 1, 1, ValueKind::Number, AsDouble},
    {"CSng", 1, 1, ValueKind::Number, AsSingle},
    {"CCur", 1, 1, ValueKind::Number, AsCurrency},
    {"CByte", 1, 1, ValueKind::Number, AsByte},
    {"CBool", 1, 1, ValueKind::Boolean, AsBoolean},
    {"IsNull", 1, 1, ValueKind::Boolean, IsNull, OnNull::IsCalled},
    {"IsNumeric", 1, 1, ValueKind::Boolean, IsNumeric, OnNull::IsCalled},
    {"GenUniqueID", 0, 0, ValueKind::Number, GenUniqueId},
    {"GenGUID", 0, 0, ValueKind::Any, GenGuid},
}};

}  // namespace

std::span<const FunctionInfo> NumberFunctions()
{
    return kFunctions;
}

}  // namespace jet::sql
