// SPDX-License-Identifier: Apache-2.0
// Value: one database or cell value, null included, with the platform's null and conversion rules.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace base {

struct Null {
    friend bool operator==(const Null&, const Null&) = default;
};

// Money. Units: ten-thousandths.
struct Currency {
    std::int64_t scaled = 0;
    friend auto operator<=>(const Currency&, const Currency&) = default;
};

// A date and time. Units: days since 1899-12-30; the fraction is the time of day, also for negative
// numbers, where it counts as a magnitude.
struct Date {
    double days = 0;
    friend auto operator<=>(const Date&, const Date&) = default;
};

// A GUID, its bytes in the order in which it is printed.
struct Guid {
    std::array<std::uint8_t, 16> bytes{};
    friend auto operator<=>(const Guid&, const Guid&) = default;
};

// An exact decimal number: sign, 96-bit (stored: 128-bit) magnitude, digits after the point.
struct Decimal {
    bool negative = false;
    std::array<std::uint32_t, 4> magnitude{};  // least significant word first
    std::uint8_t scale = 0;
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

using Bytes = std::vector<std::byte>;

// An immutable value. Text is UTF-8; its sizes are counted in UTF-16 units (base/Text.h).
//
// Rule: `==` compares kind and content exactly and is meant for tests and caches. The comparisons
//       that programs and SQL make are named functions (Differs in base/Convert.h, the SQL
//       evaluator).
class Value {
public:
    using Storage = std::variant<Null, bool, std::uint8_t, std::int16_t, std::int32_t, Currency,
                                 float, double, Date, std::string, Bytes, Guid, Decimal>;

    Value() = default;
    // NOLINTBEGIN(google-explicit-constructor): a value is what it is made from.
    Value(Null /*null*/) {}
    Value(bool value) : storage_(value) {}
    Value(std::uint8_t value) : storage_(value) {}
    Value(std::int16_t value) : storage_(value) {}
    Value(std::int32_t value) : storage_(value) {}
    Value(Currency value) : storage_(value) {}
    Value(float value) : storage_(value) {}
    Value(double value) : storage_(value) {}
    Value(Date value) : storage_(value) {}
    Value(std::string value) : storage_(std::move(value)) {}
    Value(std::string_view value) : storage_(std::string(value)) {}
    Value(const char* value) : storage_(std::string(value)) {}
    Value(Bytes value) : storage_(std::move(value)) {}
    Value(Guid value) : storage_(value) {}
    Value(Decimal value) : storage_(value) {}
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] bool IsNull() const noexcept { return std::holds_alternative<Null>(storage_); }
    [[nodiscard]] bool IsText() const noexcept
    {
        return std::holds_alternative<std::string>(storage_);
    }
    // A non-null date; text that looks like one is not.
    [[nodiscard]] bool IsDate() const noexcept { return std::holds_alternative<Date>(storage_); }
    // A boolean, integer, currency, float, double or decimal.
    [[nodiscard]] bool IsNumber() const noexcept;

    // The content when it is of exactly this kind, otherwise nullptr.
    template <class T>
    [[nodiscard]] const T* As() const noexcept
    {
        return std::get_if<T>(&storage_);
    }
    [[nodiscard]] const Storage& Content() const noexcept { return storage_; }

    friend bool operator==(const Value&, const Value&) = default;

private:
    Storage storage_;
};

}  // namespace base
