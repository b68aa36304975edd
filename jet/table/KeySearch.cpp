// SPDX-License-Identifier: Apache-2.0
#include "jet/table/KeySearch.h"

#include "base/NumberedError.h"
#include "jet/index/Index.h"

#include <algorithm>

namespace jet::table {

namespace {

using format::IndexDefinition;
using format::TableDefinition;

// The key values in the order of the index's columns; nothing when its first columns are others.
std::optional<std::vector<base::Value>> InIndexOrder(const TableDefinition& table,
                                                     const IndexDefinition& index,
                                                     std::span<const Assignment> keys)
{
    if (index.columns.size() < keys.size()) return std::nullopt;
    std::vector<base::Value> values;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const std::uint16_t number = index.columns[i].columnNumber;
        const auto key = std::find_if(keys.begin(), keys.end(), [&](const Assignment& assignment) {
            return table.columns.at(assignment.column).number == number;
        });
        if (key == keys.end()) return std::nullopt;
        values.push_back(key->value);
    }
    return values;
}

// A null is found by no equality. Of an empty binary value the key is the beginning of every other.
bool Searchable(std::span<const Assignment> keys)
{
    return !keys.empty() && std::none_of(keys.begin(), keys.end(), [](const Assignment& key) {
        const auto* bytes = key.value.As<base::Bytes>();
        return key.value.IsNull() || (bytes != nullptr && bytes->empty());
    });
}

std::optional<index::Key> KeyOf(const index::Index& tree, std::span<const base::Value> values)
{
    constexpr int kNoConversion = 3421, kNotSupported = 3251;
    try {
        return tree.KeyOf(values).bytes;
    } catch (const base::NumberedError& error) {
        if (error.Number() != kNoConversion && error.Number() != kNotSupported) throw;
        return std::nullopt;
    }
}

}  // namespace

std::optional<std::vector<RowId>> RowsWithKey(pages::Pager& pager, const TableDefinition& table,
                                              std::span<const Assignment> keys)
{
    if (!Searchable(keys)) return std::nullopt;
    for (const IndexDefinition& definition : table.indexes) {
        const auto values = InIndexOrder(table, definition, keys);
        if (!values) continue;
        const index::Index tree(pager, table, definition);
        const auto key = KeyOf(tree, *values);
        if (!key) continue;
        std::vector<RowId> rows = tree.Rows(*key);
        std::sort(rows.begin(), rows.end());
        return rows;
    }
    return std::nullopt;
}

}  // namespace jet::table
