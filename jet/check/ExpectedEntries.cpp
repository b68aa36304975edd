// SPDX-License-Identifier: Apache-2.0
#include "jet/check/ExpectedEntries.h"

#include "jet/format/IndexEntries.h"

#include <algorithm>
#include <cstring>

namespace jet::check {

namespace {

using format::Span;

// Odd multipliers whose bits follow no pattern.
constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15, kLast = 0xBF58476D1CE4E5B9;

// Every step can be undone, so that entries of one length that differ in one word differ here.
std::uint64_t HashOf(Span bytes)
{
    std::uint64_t hash = bytes.size() * kStep;
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * kStep;
        hash ^= hash >> 32;
    };
    std::size_t at = 0;
    for (; at + sizeof(hash) <= bytes.size(); at += sizeof(hash))
        mix(format::ReadScalar<std::uint64_t>(bytes, at));
    if (at < bytes.size()) {
        std::uint64_t rest = 0;
        std::memcpy(&rest, bytes.data() + at, bytes.size() - at);
        mix(rest);
    }
    hash *= kLast;
    return hash ^ hash >> 29;
}

}  // namespace

void EntrySum::Add(Span entry)
{
    ++count_;
    sum_ += HashOf(entry);
}

ExpectedEntries::ExpectedEntries(const format::TableDefinition& table,
                                 const format::IndexDefinition& index)
    : index_(index), maker_(table, index)
{
}

void ExpectedEntries::Take(RowId at, const format::RowView& row)
{
    maker_.Make(row, key_);
    if (index_.required && key_.anyNull) doubtful_ = true;
    if (index_.ignoreNulls && key_.allNull) return;
    if (!key_.known) {
        keyless_.push_back(at);
        key_.bytes.clear();
    }
    format::AppendRowPart(key_.bytes, at);
    wanted_.Add(key_.bytes);
}

void ExpectedEntries::Close()
{
    std::sort(keyless_.begin(), keyless_.end());
}

void ExpectedEntries::AddMet(Span entry, EntrySum& met) const
{
    const bool keyless = !keyless_.empty() && std::binary_search(keyless_.begin(), keyless_.end(),
                                                                 format::RowPart(entry));
    met.Add(keyless ? entry.last(format::kRowPlaceWidth) : entry);
}

}  // namespace jet::check
