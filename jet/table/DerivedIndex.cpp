// SPDX-License-Identifier: Apache-2.0
#include "jet/table/DerivedIndex.h"

#include "jet/format/NumberColumn.h"
#include "jet/table/DefinitionPages.h"
#include "jet/table/ListedCursor.h"
#include "jet/table/TableCursor.h"

#include <algorithm>
#include <array>
#include <bit>
#include <numeric>
#include <utility>

namespace jet::table {

namespace {

using format::ColumnType;

// Recent entries that are worth looking through one by one.
constexpr std::size_t kRecent = 512;
// A table with fewer rows is read as quickly. Units: rows.
constexpr std::uint32_t kFewRows = 1000;
// Sets of columns that are remembered of one table.
constexpr std::size_t kMostUses = 8;

// Equal numbers have equal bits; the two zeros are equal.
std::uint64_t BitsOf(double number)
{
    return std::bit_cast<std::uint64_t>(number + 0.0);
}

std::optional<std::uint64_t> BitsOf(const base::Value& value)
{
    if (const auto* const whole = value.As<std::int32_t>())
        return BitsOf(static_cast<double>(*whole));
    if (const auto* const small = value.As<std::int16_t>())
        return BitsOf(static_cast<double>(*small));
    if (const auto* const number = value.As<double>()) return BitsOf(*number);
    if (const auto* const date = value.As<base::Date>()) return BitsOf(date->days);
    return std::nullopt;
}

// Spreads the bits of several values over one number.
std::uint64_t Mix(std::uint64_t hash, std::uint64_t bits)
{
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15ULL;
    constexpr int half = 32;
    hash = (hash ^ bits) * odd;
    return hash ^ (hash >> half);
}

constexpr std::uint64_t kPageMask = 0xFFFFFFFFULL;

std::uint64_t Fingerprint(std::uint64_t hash)
{
    return hash & ~kPageMask;
}

// Nothing when one of the columns is null: that equals nothing.
std::optional<std::uint64_t> HashOf(const format::RowView& row,
                                    std::span<const format::NumberColumn> columns)
{
    std::uint64_t hash = 0;
    for (const format::NumberColumn& column : columns) {
        const std::optional<double> number = column.In(row);
        if (!number) return std::nullopt;
        hash = Mix(hash, BitsOf(*number));
    }
    return hash;
}

std::vector<format::NumberColumn> NumberColumnsOf(const format::TableDefinition& table,
                                                  const std::vector<std::size_t>& columns)
{
    std::vector<format::NumberColumn> numbers;
    for (const std::size_t column : columns)
        numbers.push_back(*format::NumberColumn::Of(table, column));
    return numbers;
}

// Whether what is known of the columns by one definition is true by the other.
bool AreAlike(const std::shared_ptr<const format::TableDefinition>& one,
              const std::shared_ptr<const format::TableDefinition>& other,
              const std::vector<std::size_t>& columns)
{
    if (one == other) return true;
    if (!one || one->page != other->page || one->ownedPages != other->ownedPages) return false;
    return std::all_of(columns.begin(), columns.end(), [&](std::size_t place) {
        if (place >= one->columns.size() || place >= other->columns.size()) return false;
        const format::ColumnDefinition &a = one->columns[place], &b = other->columns[place];
        return a.number == b.number && a.type == b.type && a.fixed == b.fixed &&
               a.fixedOffset == b.fixedOffset;
    });
}

void RemoveRepeated(std::vector<std::uint64_t>& sorted)
{
    sorted.erase(std::unique(sorted.begin(), sorted.end()), sorted.end());
}

void SortOnce(std::vector<std::uint64_t>& entries)
{
    std::sort(entries.begin(), entries.end());
    RemoveRepeated(entries);
}

// The same for entries whose pages ascend already, without comparing them: digit by digit of the
// fingerprint, the lowest first.
void SortByFingerprintOnce(std::vector<std::uint64_t>& entries)
{
    constexpr int digitBits = 11, fingerprintAt = 32, entryBits = 64;
    constexpr std::uint64_t digitMask = (1U << digitBits) - 1;
    std::vector<std::uint64_t> sorted(entries.size());
    for (int shift = fingerprintAt; shift < entryBits; shift += digitBits) {
        const auto digitOf = [shift](std::uint64_t entry) { return (entry >> shift) & digitMask; };
        std::array<std::size_t, digitMask + 1> next{};  // place of the next entry with each digit
        for (const std::uint64_t entry : entries)
            ++next[digitOf(entry)];
        std::exclusive_scan(next.begin(), next.end(), next.begin(), std::size_t{0});
        for (const std::uint64_t entry : entries)
            sorted[next[digitOf(entry)]++] = entry;
        entries.swap(sorted);
    }
    RemoveRepeated(entries);
}

}  // namespace

bool DerivedIndex::Knows(const format::TableDefinition& table, std::size_t column)
{
    const ColumnType type = table.columns[column].type;
    return (type == ColumnType::Long || type == ColumnType::Integer || type == ColumnType::Double ||
            type == ColumnType::Date) &&
           format::NumberColumn::Of(table, column);
}

DerivedIndex::DerivedIndex(pages::Pager& pager,
                           std::shared_ptr<const format::TableDefinition> table,
                           std::vector<std::size_t> columns)
    : pager_(&pager), table_(std::move(table)), columns_(std::move(columns)),
      changeCount_(pager.ChangeCount())
{
    TableCursor rows(pager, table_);
    Add(rows, sorted_);
    SortByFingerprintOnce(sorted_);
    sorted_.shrink_to_fit();
}

void DerivedIndex::Add(RowCursor& rows, std::vector<std::uint64_t>& into) const
{
    const std::vector<format::NumberColumn> columns = NumberColumnsOf(*table_, columns_);
    rows.ForEach([&](RowId row, const format::RowView& view) {
        const auto hash = HashOf(view, columns);
        if (!hash) return;
        const std::uint64_t entry = Fingerprint(*hash) | Raw(row.page);
        if (into.empty() || into.back() != entry) into.push_back(entry);
    });
}

// The key of a moved row belongs to another page than its bytes.
bool DerivedIndex::HasMovedRows(PageNumber page) const
{
    if (Raw(page) >= pager_->PageCount()) return false;
    const pages::Page stored = pager_->Read(page);
    if (!BelongsTo(stored, table_->page)) return false;
    const format::DataPage view(stored.Bytes());
    for (std::uint16_t slot = 0; slot < view.SlotCount(); ++slot)
        if (view.Kind(slot) == format::SlotKind::Moved) return true;
    return false;
}

bool DerivedIndex::CatchUp()
{
    if (pager_->ChangeCount() == changeCount_) return true;
    auto pages = pager_->RowPagesChangedSince(changeCount_);
    if (!pages) return false;
    const std::uint64_t now = pager_->ChangeCount();
    std::sort(pages->begin(), pages->end());
    pages->erase(std::unique(pages->begin(), pages->end()), pages->end());
    for (const PageNumber page : *pages)
        if (HasMovedRows(page)) return false;
    ListedCursor rows(*pager_, table_, *std::move(pages), Direction::Forward);
    Add(rows, recent_);
    changeCount_ = now;  // not before: when a page cannot be read, it is read at the next attempt
    if (recent_.size() <= kRecent) return true;
    sorted_.insert(sorted_.end(), recent_.begin(), recent_.end());
    recent_.clear();
    SortOnce(sorted_);
    return true;
}

std::vector<PageNumber> DerivedIndex::PagesWith(std::span<const base::Value> values) const
{
    std::uint64_t hash = 0;
    for (const base::Value& value : values)
        hash = Mix(hash, BitsOf(value).value_or(0));
    const std::uint64_t from = Fingerprint(hash), to = from | kPageMask;
    const auto pageOf = [](std::uint64_t entry) {
        return PageNumber{static_cast<std::uint32_t>(entry & kPageMask)};
    };
    const auto first = std::lower_bound(sorted_.begin(), sorted_.end(), from);
    const auto end = std::upper_bound(first, sorted_.end(), to);
    std::vector<PageNumber> pages(static_cast<std::size_t>(end - first));
    std::transform(first, end, pages.begin(), pageOf);
    const std::size_t known = pages.size();
    for (const std::uint64_t entry : recent_)
        if (entry >= from && entry <= to) pages.push_back(pageOf(entry));
    if (pages.size() > known) {
        std::sort(pages.begin(), pages.end());
        pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
    }
    return pages;
}

namespace {

// The columns that an index can be asked for, ascending, and the values asked for.
struct Question {
    std::vector<std::size_t> columns;
    std::vector<base::Value> values;
};

Question QuestionOf(const format::TableDefinition& table, std::span<const Assignment> keys)
{
    std::map<std::size_t, base::Value> wanted;  // by column; of two values for one the first serves
    for (const Assignment& key : keys)
        if (DerivedIndex::Knows(table, key.column)) wanted.emplace(key.column, key.value);
    Question question;
    for (const auto& [column, value] : wanted) {
        question.columns.push_back(column);
        question.values.push_back(value);
    }
    return question;
}

}  // namespace

std::optional<std::vector<PageNumber>>
DerivedIndexes::PagesWith(pages::Pager& pager,
                          const std::shared_ptr<const format::TableDefinition>& table,
                          std::span<const Assignment> keys, Missing missing)
{
    const Question question = QuestionOf(*table, keys);
    // What an open set has changed no index knows.
    if (question.columns.empty() || pager.IsChanging()) return std::nullopt;
    if (uses_.size() >= kMostUses && uses_.count(question.columns) == 0) uses_.clear();
    Use& use = uses_[question.columns];
    if (!AreAlike(use.table, table, question.columns) || (use.index && !use.index->CatchUp()))
        use = {table, false, {}};
    if (!use.index) {
        if (missing == Missing::DoWithout) return std::nullopt;
        const bool askedBefore = std::exchange(use.asked, true);
        if (!askedBefore || StoredRowCount(pager, table->page) < kFewRows) return std::nullopt;
        use.index.emplace(pager, table, question.columns);
    }
    return use.index->PagesWith(question.values);
}

}  // namespace jet::table
