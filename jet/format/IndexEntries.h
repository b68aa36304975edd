// SPDX-License-Identifier: Apache-2.0
// IndexEntries: the entries of an index page in order, whole, ready to be changed.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/PageNumber.h"

#include <compare>
#include <vector>

namespace jet::format {

// How an entry ends: the row it stands for and, on a node page, the child page.
inline constexpr std::size_t kRowPlaceWidth = 4;  // page (3 bytes), slot (1), big-endian
inline constexpr std::size_t kChildWidth = 4;     // page, big-endian

// Entries are ordered by key, then by row.
// Requires: both are at least kRowPlaceWidth long and without child page.
[[nodiscard]] std::strong_ordering CompareEntries(Span left, Span right);

// The key of an entry without child page.
[[nodiscard]] inline Span KeyPart(Span entry)
{
    return entry.first(entry.size() - kRowPlaceWidth);
}
[[nodiscard]] RowId RowPart(Span entry);
// How a row's place ends an entry.
void AppendRowPart(std::vector<std::byte>& entry, RowId row);
// The key of a row followed by its place.
[[nodiscard]] std::vector<std::byte> MakeEntry(Span key, RowId row);

// A node page's entry is an entry (the separator) and the child page that holds what is not
// greater.
[[nodiscard]] inline Span SeparatorPart(Span nodeEntry)
{
    return nodeEntry.first(nodeEntry.size() - kChildWidth);
}
[[nodiscard]] PageNumber ChildPart(Span nodeEntry);
[[nodiscard]] std::vector<std::byte> MakeNodeEntry(Span separator, PageNumber child);

// Whole entries one behind the other.
class IndexEntries {
public:
    [[nodiscard]] std::size_t Count() const { return ends_.size(); }
    [[nodiscard]] bool Empty() const { return ends_.empty(); }
    // Bytes of all entries together.
    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    [[nodiscard]] Span operator[](std::size_t at) const
    {
        return Span(bytes_).subspan(StartOf(at), ends_[at] - StartOf(at));
    }

    void Reserve(std::size_t entries, std::size_t bytes);
    void Append(Span entry) { AppendParts(entry, {}); }
    void AppendParts(Span first, Span second);
    void Insert(std::size_t at, Span entry);
    void Erase(std::size_t at);
    // Requires: `entry` is a node page's.
    void SetChild(std::size_t at, PageNumber child);
    // A copy of the entries from `from` up to, not including, `to`.
    [[nodiscard]] IndexEntries Part(std::size_t from, std::size_t to) const;

private:
    [[nodiscard]] std::size_t StartOf(std::size_t at) const { return at == 0 ? 0 : ends_[at - 1]; }

    std::vector<std::byte> bytes_;
    std::vector<std::size_t> ends_;
};

}  // namespace jet::format
