// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/index/RowEntries.h"

#include "tests/jet/index/TreeCheck.h"
#include "tests/support/Hex.h"

#include <algorithm>

namespace jet {

using format::PageNumber;
using table::NativeTable;

// Every table of a database by its definition page, system tables included.
std::vector<PageNumber> TablesOf(const std::shared_ptr<pages::Pager>& pager)
{
    constexpr std::int16_t nativeTable = 1;
    const NativeTable objects(pager, PageNumber{2});
    const std::size_t id = *objects.Definition().FindColumn("Id");
    const std::size_t type = *objects.Definition().FindColumn("Type");
    std::vector<PageNumber> tables;
    const auto cursor = objects.Scan();
    while (cursor->Next()) {
        if (objects.ValueOf(cursor->Row(), type) != base::Value(nativeTable)) continue;
        const base::Value page = objects.ValueOf(cursor->Row(), id);
        tables.push_back(PageNumber{static_cast<std::uint32_t>(*page.As<std::int32_t>())});
    }
    return tables;
}

// The entries an index must have, made from the rows.
Entries EntriesOfRows(const NativeTable& table, const index::Index& index,
                      const format::IndexDefinition& definition)
{
    Entries entries;
    const auto cursor = table.Scan();
    while (cursor->Next()) {
        std::vector<base::Value> values;
        for (const format::IndexColumn& column : definition.columns) {
            const auto place = table.Definition().FindNumber(column.columnNumber);
            values.push_back(table.ValueOf(cursor->Row(), place.value()));
        }
        const index::RowKey key = index.KeyOf(values);
        if (definition.ignoreNulls && key.allNull) continue;
        entries.push_back(format::MakeEntry(key.bytes, cursor->Id()));
    }
    std::sort(entries.begin(), entries.end(), [](const auto& left, const auto& right) {
        return format::CompareEntries(left, right) < 0;
    });
    return entries;
}

namespace {

Entries EntriesFromTheEnd(const index::Index& index)
{
    Entries entries;
    index::Cursor cursor = index.Walk();
    for (bool more = cursor.Last(); more; more = cursor.Previous())
        entries.emplace_back(cursor.Entry().begin(), cursor.Entry().end());
    std::reverse(entries.begin(), entries.end());
    return entries;
}

// The first entry in which two lists differ.
std::string Difference(const Entries& found, const Entries& expected)
{
    std::size_t at = 0;
    while (at < found.size() && at < expected.size() && found[at] == expected[at])
        ++at;
    const auto entry = [at](const Entries& all) {
        return at < all.size() ? tests::ToHex(all[at]) : std::string("nothing");
    };
    return "entry " + std::to_string(at) + " is " + entry(found) + ", the rows say " +
           entry(expected);
}

}  // namespace

std::vector<std::string> FaultsOfIndex(pages::Pager& pager, const NativeTable& table,
                                       const format::IndexDefinition& definition)
{
    const index::Index index(pager, table.Definition(), definition);
    TreeReport report = CheckTree(pager, table.Definition().page, definition);
    const Entries expected = EntriesOfRows(table, index, definition);
    if (report.entries != expected) report.faults.push_back(Difference(report.entries, expected));
    const Entries backwards = EntriesFromTheEnd(index);
    if (backwards != expected)
        report.faults.push_back("from the end: " + Difference(backwards, expected));
    return std::move(report.faults);
}

}  // namespace jet
