// SPDX-License-Identifier: Apache-2.0
#include "jet/format/IndexKey.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/CodePage.h"
#include "jet/format/Collation97.h"
#include "jet/format/SortKey.h"

#include <bit>
#include <cstdint>
#include <span>
#include <type_traits>

namespace jet::format {

namespace {

using KeyBytes = std::vector<std::byte>;

constexpr std::byte kNullAscending{0x00}, kNullDescending{0xFF};
constexpr std::byte kValueAscending{0x7F}, kValueDescending{0x80};
constexpr std::size_t kGroup = 8;         // bytes of one group of a binary value
constexpr std::byte kMoreGroups{0x09};    // behind every group but the last
constexpr long kIndexedCharacters = 255;  // of a text

template <class Unsigned>
void PutBigEndian(KeyBytes& key, Unsigned value)
{
    for (std::size_t left = sizeof(Unsigned); left > 0; --left)
        key.push_back(static_cast<std::byte>(value >> (8 * (left - 1)) & 0xFF));
}

template <class Signed>
void PutInteger(KeyBytes& key, Signed value)
{
    using Unsigned = std::make_unsigned_t<Signed>;
    constexpr auto sign = static_cast<Unsigned>(Unsigned{1} << (8 * sizeof(Signed) - 1));
    PutBigEndian(key, static_cast<Unsigned>(static_cast<Unsigned>(value) ^ sign));
}

template <class Unsigned, class Float>
void PutFloat(KeyBytes& key, Float value)
{
    constexpr auto sign = static_cast<Unsigned>(Unsigned{1} << (8 * sizeof(Float) - 1));
    if (value == Float{0}) value = Float{0};  // minus zero is zero
    const auto bits = std::bit_cast<Unsigned>(value);
    PutBigEndian(key, static_cast<Unsigned>((bits & sign) != 0 ? ~bits : bits ^ sign));
}

void Invert(KeyBytes& key, std::size_t from)
{
    for (std::size_t at = from; at < key.size(); ++at)
        key[at] = ~key[at];
}

// Groups of eight bytes; the last is filled up and followed by its true length.
// Rule: in descending order the marks between groups stay as they are.
void PutBinary(KeyBytes& key, std::span<const std::byte> bytes, bool ascending)
{
    while (!bytes.empty()) {
        const std::size_t start = key.size();
        const std::size_t length = std::min(bytes.size(), kGroup);
        key.insert(key.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
        key.insert(key.end(), kGroup - length, std::byte{0});
        bytes = bytes.subspan(length);
        if (bytes.empty()) key.push_back(static_cast<std::byte>(length));
        if (!ascending) Invert(key, start);
        if (!bytes.empty()) key.push_back(kMoreGroups);
    }
}

// The sign, then the whole number, the most significant byte first; zero is positive. Of a negative
// number that is inverted.
// Rule: in descending order the sign stays as it is, so that negative numbers come first there too:
//       a fault of the original engine, whose keys these are.
void PutDecimal(KeyBytes& key, const base::Decimal& number, const ColumnDefinition& column,
                bool ascending)
{
    if (number.scale != column.scale) throw base::NumberedError(3421).At("scale of a decimal");
    const bool zero = number.magnitude == base::Decimal{}.magnitude;
    const bool negative = number.negative && !zero;
    key.push_back(negative ? std::byte{0x00} : std::byte{0xFF});
    const std::size_t start = key.size();
    for (std::size_t word = number.magnitude.size(); word > 0; --word)
        PutBigEndian(key, number.magnitude[word - 1]);
    if (negative == ascending) Invert(key, start);
}

void PutText(KeyBytes& key, std::string_view text, SortOrder order, bool ascending)
{
    const std::size_t start = key.size();
    // A text of few bytes cannot have more characters.
    const KeyBytes sorted = text.size() <= static_cast<std::size_t>(kIndexedCharacters)
                                ? SortKeyOf(text, order)
                                : SortKeyOf(base::Left(text, kIndexedCharacters), order);
    key.insert(key.end(), sorted.begin(), sorted.end());
    if (ascending) return;
    Invert(key, start);
    if (order.version != kJet3Tables) key.push_back(std::byte{0});
}

template <class T>
const T& As(const base::Value& value)
{
    const T* content = value.As<T>();
    if (content == nullptr) throw base::NumberedError(3421);
    return *content;
}

// The value of a type whose descending form is the ascending one with every bit inverted.
void PutNumber(KeyBytes& key, const base::Value& value, ColumnType type)
{
    switch (type) {
    case ColumnType::Boolean: {
        // True sorts before false.
        const bool set = !value.IsNull() && As<bool>(value);
        return key.push_back(set ? std::byte{0x00} : std::byte{0xFF});
    }
    case ColumnType::Byte:
        return key.push_back(static_cast<std::byte>(As<std::uint8_t>(value)));
    case ColumnType::Integer:
        return PutInteger(key, As<std::int16_t>(value));
    case ColumnType::Long:
        return PutInteger(key, As<std::int32_t>(value));
    case ColumnType::Currency:
        return PutInteger(key, As<base::Currency>(value).scaled);
    case ColumnType::Single:
        return PutFloat<std::uint32_t>(key, As<float>(value));
    case ColumnType::Double:
        return PutFloat<std::uint64_t>(key, As<double>(value));
    case ColumnType::Date:
        return PutFloat<std::uint64_t>(key, As<base::Date>(value).days);
    default:
        throw base::NumberedError(3251);
    }
}

}  // namespace

void AppendKeyColumn(KeyBytes& key, const base::Value& value, const ColumnDefinition& column,
                     bool ascending)
{
    if (value.IsNull() && column.type != ColumnType::Boolean)
        return key.push_back(ascending ? kNullAscending : kNullDescending);
    key.push_back(ascending ? kValueAscending : kValueDescending);
    switch (column.type) {
    case ColumnType::Text:
    case ColumnType::Memo:
        // The weights of a byte are those of its character in Windows-1252.
        if (column.codePage != kUtf16 && column.codePage != kWindows1252)
            throw base::NumberedError(3251).At("sort order without tables");
        return PutText(key, As<std::string>(value), column.sortOrder, ascending);
    case ColumnType::Binary:
        return PutBinary(key, As<base::Bytes>(value), ascending);
    case ColumnType::Numeric:
        return PutDecimal(key, As<base::Decimal>(value), column, ascending);
    case ColumnType::Guid:
        return PutBinary(key, std::as_bytes(std::span(As<base::Guid>(value).bytes)), ascending);
    default: {
        const std::size_t start = key.size();
        PutNumber(key, value, column.type);
        if (!ascending) Invert(key, start);
    }
    }
}

}  // namespace jet::format
