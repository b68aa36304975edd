// SPDX-License-Identifier: Apache-2.0
#include "jet/format/ValueCodec.h"

#include "base/NumberedError.h"
#include "jet/format/TextCompression.h"

#include <algorithm>

namespace jet::format {

namespace {

constexpr std::size_t kGuidSize = 16, kNumericSize = 17;
constexpr std::byte kNegative{0x80};

// The first three groups of a GUID are stored as little-endian integers.
constexpr std::array<std::size_t, kGuidSize> kGuidOrder{3, 2, 1,  0,  5,  4,  7,  6,
                                                        8, 9, 10, 11, 12, 13, 14, 15};

base::Guid DecodeGuid(Span bytes)
{
    base::Guid guid;
    for (std::size_t i = 0; i < kGuidSize; ++i)
        guid.bytes[i] = ReadU8(bytes, kGuidOrder[i]);
    return guid;
}

// Sign, then four words, the most significant first.
base::Decimal DecodeNumeric(Span bytes, std::uint8_t scale)
{
    base::Decimal number;
    number.negative = (Slice(bytes, 0, 1)[0] & kNegative) != std::byte{0};
    number.scale = scale;
    for (std::size_t i = 0; i < number.magnitude.size(); ++i)
        number.magnitude[3 - i] = ReadU32(bytes, 1 + 4 * i);
    return number;
}

// The content of the only kind of value a column holds.
template <class T>
const T& Content(const base::Value& value)
{
    const T* content = value.As<T>();
    if (content == nullptr) throw base::NumberedError(3421);
    return *content;
}

template <class T>
std::vector<std::byte> Stored(T scalar)
{
    std::vector<std::byte> bytes(sizeof(T));
    WriteScalar(bytes, 0, scalar);
    return bytes;
}

std::vector<std::byte> Fitting(std::vector<std::byte> bytes, std::size_t length)
{
    if (bytes.size() > length) throw base::NumberedError(3163);
    return bytes;
}

std::vector<std::byte> EncodeTextField(const std::string& text, const ColumnDefinition& column)
{
    // The limit counts characters, whatever form they are stored in.
    std::vector<std::byte> bytes =
        Fitting(EncodeTextOf(text, column, TextForm::Plain), column.length);
    if (!column.fixed) {
        return column.compressed ? EncodeTextOf(text, column, TextForm::CompressedIfShorter)
                                 : bytes;
    }
    const std::vector<std::byte> blank = EncodeTextOf(" ", column, TextForm::Plain);
    while (bytes.size() + blank.size() <= column.length)
        bytes.insert(bytes.end(), blank.begin(), blank.end());
    return bytes;
}

std::vector<std::byte> EncodeRaw(const base::Bytes& content, const ColumnDefinition& column)
{
    std::vector<std::byte> bytes = Fitting(content, column.length);
    if (column.fixed) bytes.resize(column.length);
    return bytes;
}

std::vector<std::byte> EncodeGuid(const base::Guid& guid)
{
    std::vector<std::byte> bytes(kGuidSize);
    for (std::size_t i = 0; i < kGuidSize; ++i)
        bytes[kGuidOrder[i]] = std::byte{guid.bytes[i]};
    return bytes;
}

std::vector<std::byte> EncodeNumeric(const base::Decimal& number, const ColumnDefinition& column)
{
    if (number.scale != column.scale) throw base::NumberedError(3421).At("scale of a decimal");
    std::vector<std::byte> bytes(kNumericSize);
    bytes[0] = number.negative ? kNegative : std::byte{0};
    for (std::size_t i = 0; i < number.magnitude.size(); ++i)
        WriteU32(bytes, 1 + 4 * i, number.magnitude[3 - i]);
    return bytes;
}

}  // namespace

std::string DecodeTextOf(Span bytes, const ColumnDefinition& column)
{
    return DecodeTextIn(column.codePage, bytes);
}

std::vector<std::byte> EncodeTextOf(std::string_view text, const ColumnDefinition& column,
                                    TextForm form)
{
    return EncodeTextIn(column.codePage, text, form);
}

base::Value DecodeValue(Span bytes, const ColumnDefinition& column)
{
    switch (column.type) {
    case ColumnType::Byte:
        return ReadU8(bytes, 0);
    case ColumnType::Integer:
        return ReadScalar<std::int16_t>(bytes, 0);
    case ColumnType::Long:
        return ReadI32(bytes, 0);
    case ColumnType::Currency:
        return base::Currency{ReadScalar<std::int64_t>(bytes, 0)};
    case ColumnType::Single:
        return ReadScalar<float>(bytes, 0);
    case ColumnType::Double:
        return ReadF64(bytes, 0);
    case ColumnType::Date:
        return base::Date{ReadF64(bytes, 0)};
    case ColumnType::Text:
        return DecodeTextOf(bytes, column);
    case ColumnType::Guid:
        return DecodeGuid(bytes);
    case ColumnType::Numeric:
        return DecodeNumeric(bytes, column.scale);
    default:
        return base::Bytes(bytes.begin(), bytes.end());
    }
}

std::vector<std::byte> EncodeValue(const base::Value& value, const ColumnDefinition& column)
{
    switch (column.type) {
    case ColumnType::Byte:
        return Stored(Content<std::uint8_t>(value));
    case ColumnType::Integer:
        return Stored(Content<std::int16_t>(value));
    case ColumnType::Long:
        return Stored(Content<std::int32_t>(value));
    case ColumnType::Currency:
        return Stored(Content<base::Currency>(value).scaled);
    case ColumnType::Single:
        return Stored(Content<float>(value));
    case ColumnType::Double:
        return Stored(Content<double>(value));
    case ColumnType::Date:
        return Stored(Content<base::Date>(value).days);
    case ColumnType::Text:
        return EncodeTextField(Content<std::string>(value), column);
    case ColumnType::Guid:
        return EncodeGuid(Content<base::Guid>(value));
    case ColumnType::Numeric:
        return EncodeNumeric(Content<base::Decimal>(value), column);
    default:
        return EncodeRaw(Content<base::Bytes>(value), column);
    }
}

}  // namespace jet::format
