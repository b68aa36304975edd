// SPDX-License-Identifier: Apache-2.0
// FuzzRow: the input is a stored row, and perhaps the table definition it is read by.
//
// Layout: 1 byte format; 2 bytes length of a definition, 0 for that of the seed file; the
//         definition; the row.
// Claims: reading ends with a result or a numbered error; no field lies outside its row; a row that
//         was read whole and fits a page can be written anew, and is then read as the same.
#include "jet/format/LongValueHeader.h"
#include "jet/format/RowWriter.h"
#include "jet/format/TableDefinitionReader.h"
#include "jet/format/ValueCodec.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/fuzz/SeedFile.h"

#include <vector>

namespace {

using jet::format::ColumnType;
using jet::format::RowView;
using jet::format::Span;

// A column's bytes, read in every way it can be read.
std::vector<std::byte> ReadField(const RowView& row, std::size_t column)
{
    const jet::format::ColumnDefinition& definition = row.Table().columns[column];
    const Span field = row.Field(column);
    const Span bytes = row.Bytes();
    fuzz::Require(field.empty() || (field.data() >= bytes.data() &&
                                    field.data() + field.size() <= bytes.data() + bytes.size()),
                  "a field lies in its row");
    if (jet::format::IsLongValue(definition.type))
        static_cast<void>(jet::format::ReadLongValueHeader(field));
    else
        static_cast<void>(jet::format::DecodeValue(field, definition));
    return {field.begin(), field.end()};
}

// Every column: nothing for null, otherwise its bytes.
std::vector<std::optional<std::vector<std::byte>>> ReadRow(const RowView& row)
{
    std::vector<std::optional<std::vector<std::byte>>> fields;
    for (std::size_t column = 0; column < row.Table().columns.size(); ++column) {
        if (row.Table().columns[column].type == ColumnType::Boolean)
            fields.push_back(std::vector<std::byte>(row.Boolean(column) ? 1 : 0));
        else if (row.IsNull(column))
            fields.push_back(std::nullopt);
        else
            fields.push_back(ReadField(row, column));
    }
    return fields;
}

void Use(const jet::format::TableDefinition& table, Span bytes, std::size_t pageSize)
{
    const RowView row(bytes, table);
    const auto fields = ReadRow(row);
    const jet::format::RowWriter writer(row);
    // Values that lie over each other may need more than a page when each has its own place; the
    // table says that the record is too large.
    if (writer.Size() > pageSize) return;
    fuzz::Require(ReadRow(RowView(writer.Row(), table)) == fields,
                  "a row written anew reads the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const auto& version = fuzz::VersionOf(input.Byte());
    const unsigned length = input.Word();
    const Span definition = input.Take(length);
    const Span row = input.Take(version.pageSize);
    static_cast<void>(fuzz::NumberOf([&] {
        if (length == 0) return Use(fuzz::SeedFile::Of(version).table, row, version.pageSize);
        Use(jet::format::ReadTableDefinition(definition, version), row, version.pageSize);
    }));
    return 0;
}
