// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Records.h"

#include "base/Convert.h"
#include "base/Text.h"
#include "jet/dao/Recordset.h"

#include <ostream>
#include <stdexcept>

namespace base {

void PrintTo(const Value& value, std::ostream* out)
{
    *out << (value.IsNull() ? "null" : "'" + TextOf(value) + "'") << " (kind "
         << value.Content().index() << ")";
}

}  // namespace base

namespace tests {

const base::Value& Record::operator[](std::string_view name) const
{
    for (const auto& field : fields) {
        if (base::SameName(field.first, name)) return field.second;
    }
    throw std::out_of_range("no field " + std::string(name));
}

std::string Record::Text(std::string_view name) const
{
    return base::TextOf((*this)[name]);
}

void PrintTo(const Record& record, std::ostream* out)
{
    for (const auto& field : record.fields)
        *out << "\n    " << field.first << " = " << base::TextOf(field.second);
}

std::vector<Record> RowsOf(dao::Recordset& records)
{
    std::vector<Record> rows;
    if (records.Bof() && records.Eof()) return rows;
    for (records.MoveFirst(); !records.Eof(); records.MoveNext()) {
        Record row;
        for (int index = 0; index < records.FieldCount(); ++index)
            row.fields.emplace_back(records.FieldName(index), records[index].Value());
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace tests
