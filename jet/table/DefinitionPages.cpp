// SPDX-License-Identifier: Apache-2.0
#include "jet/table/DefinitionPages.h"

#include "base/NumberedError.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/TableDefinitionReader.h"

#include <algorithm>

namespace jet::table {

namespace {

const format::TableDefinitionLayout& LayoutOf(const pages::Pager& pager)
{
    return pager.Version().definition->table;
}

void Append(std::vector<std::byte>& bytes, format::Span more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace

JoinedDefinition JoinDefinition(const pages::Pager& pager, PageNumber first)
{
    JoinedDefinition joined;
    pages::Page page = pager.Read(first);
    const std::size_t length = format::DefinitionPage(page.Bytes()).Length();
    if (length / pager.Version().pageSize > pager.PageCount())
        throw base::NumberedError(3343).At("table definition longer than the file");
    Append(joined.bytes, page.Bytes());
    joined.pages.push_back(first);
    while (joined.bytes.size() < length) {
        const PageNumber next = format::DefinitionPage(page.Bytes()).Next();
        if (next == PageNumber::None)
            throw base::NumberedError(3343).At("table definition without its last page");
        page = pager.Read(next);
        Append(joined.bytes, format::DefinitionPage(page.Bytes()).Content());
        joined.pages.push_back(next);
    }
    return joined;
}

format::TableDefinition LoadDefinition(const pages::Pager& pager, PageNumber first)
{
    JoinedDefinition joined = JoinDefinition(pager, first);
    format::TableDefinition table =
        format::ReadTableDefinition(joined.bytes, pager.Version(), pager.CodePage());
    table.page = first;
    table.pages = std::move(joined.pages);
    return table;
}

void BlankCounters(std::vector<std::byte>& joined, const format::FileVersion& version)
{
    const format::TableDefinitionLayout& at = version.definition->table;
    const std::size_t trees = format::ReadU32(joined, at.indexes);
    const auto blank = [&joined](std::size_t from, std::size_t length) {
        format::RequireInside(joined.size(), from, length);
        const auto begin = joined.begin() + static_cast<std::ptrdiff_t>(from);
        std::fill(begin, begin + static_cast<std::ptrdiff_t>(length), std::byte{0});
    };
    blank(at.rowCount, sizeof(std::uint32_t));
    blank(at.autoNumber, sizeof(std::uint32_t));
    blank(at.statistics, trees * at.statisticsSize);
}

std::uint32_t StoredRowCount(const pages::Pager& pager, PageNumber table)
{
    return format::ReadU32(pager.Read(table).Bytes(), LayoutOf(pager).rowCount);
}

void ChangeRowCount(pages::WriteSet& changes, PageNumber table, std::int32_t difference)
{
    const std::int64_t count = std::int64_t{StoredRowCount(changes.Of(), table)} + difference;
    // A file may come with a count that is too low; it never falls below none.
    format::WriteU32(changes.Change(table), LayoutOf(changes.Of()).rowCount,
                     static_cast<std::uint32_t>(std::max<std::int64_t>(count, 0)));
}

std::int32_t LastAutoNumber(const pages::Pager& pager, PageNumber table)
{
    return format::ReadI32(pager.Read(table).Bytes(), LayoutOf(pager).autoNumber);
}

void SetLastAutoNumber(pages::WriteSet& changes, PageNumber table, std::int32_t value)
{
    format::WriteScalar(changes.Change(table), LayoutOf(changes.Of()).autoNumber, value);
}

std::int32_t AutoNumberIncrement(const pages::Pager& pager, PageNumber table)
{
    const std::size_t at = LayoutOf(pager).increment;
    const std::int32_t step =
        at == format::kAbsent ? 0 : format::ReadI32(pager.Read(table).Bytes(), at);
    return step == 0 ? 1 : step;
}

}  // namespace jet::table
