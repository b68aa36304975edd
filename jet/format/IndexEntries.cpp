// SPDX-License-Identifier: Apache-2.0
#include "jet/format/IndexEntries.h"

#include <algorithm>

namespace jet::format {

namespace {

std::uint32_t ReadBigEndian(Span bytes)
{
    std::uint32_t value = 0;
    for (const std::byte one : bytes)
        value = value << 8 | std::to_integer<std::uint32_t>(one);
    return value;
}

void PutU32(std::vector<std::byte>& bytes, std::uint32_t value)
{
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes.push_back(static_cast<std::byte>(value >> shift & 0xFF));
}

std::strong_ordering CompareBytes(Span left, Span right)
{
    const std::size_t common = std::min(left.size(), right.size());
    const int order = common == 0 ? 0 : std::memcmp(left.data(), right.data(), common);
    if (order != 0) return order <=> 0;
    return left.size() <=> right.size();
}

std::ptrdiff_t Offset(std::size_t at)
{
    return static_cast<std::ptrdiff_t>(at);
}

}  // namespace

std::strong_ordering CompareEntries(Span left, Span right)
{
    const auto keys = CompareBytes(KeyPart(left), KeyPart(right));
    if (keys != 0) return keys;
    return CompareBytes(left.last(kRowPlaceWidth), right.last(kRowPlaceWidth));
}

RowId RowPart(Span entry)
{
    const std::uint32_t place = ReadBigEndian(entry.last(kRowPlaceWidth));
    return {PageNumber{place >> 8}, static_cast<std::uint16_t>(place & 0xFF)};
}

void AppendRowPart(std::vector<std::byte>& entry, RowId row)
{
    PutU32(entry, Raw(row.page) << 8 | (row.slot & 0xFFU));
}

std::vector<std::byte> MakeEntry(Span key, RowId row)
{
    std::vector<std::byte> entry;
    entry.reserve(key.size() + kRowPlaceWidth);
    entry.assign(key.begin(), key.end());
    AppendRowPart(entry, row);
    return entry;
}

PageNumber ChildPart(Span nodeEntry)
{
    return PageNumber{ReadBigEndian(nodeEntry.last(kChildWidth))};
}

std::vector<std::byte> MakeNodeEntry(Span separator, PageNumber child)
{
    std::vector<std::byte> entry;
    entry.reserve(separator.size() + kChildWidth);
    entry.assign(separator.begin(), separator.end());
    PutU32(entry, Raw(child));
    return entry;
}

void IndexEntries::Reserve(std::size_t entries, std::size_t bytes)
{
    ends_.reserve(entries);
    bytes_.reserve(bytes);
}

void IndexEntries::AppendParts(Span first, Span second)
{
    bytes_.insert(bytes_.end(), first.begin(), first.end());
    bytes_.insert(bytes_.end(), second.begin(), second.end());
    ends_.push_back(bytes_.size());
}

void IndexEntries::Insert(std::size_t at, Span entry)
{
    const std::size_t start = StartOf(at);
    bytes_.insert(bytes_.begin() + Offset(start), entry.begin(), entry.end());
    ends_.insert(ends_.begin() + Offset(at), start);
    for (std::size_t i = at; i < ends_.size(); ++i)
        ends_[i] += entry.size();
}

void IndexEntries::Erase(std::size_t at)
{
    const std::size_t start = StartOf(at);
    const std::size_t width = ends_[at] - start;
    bytes_.erase(bytes_.begin() + Offset(start), bytes_.begin() + Offset(ends_[at]));
    ends_.erase(ends_.begin() + Offset(at));
    for (std::size_t i = at; i < ends_.size(); ++i)
        ends_[i] -= width;
}

void IndexEntries::SetChild(std::size_t at, PageNumber child)
{
    std::vector<std::byte> place;
    PutU32(place, Raw(child));
    std::copy(place.begin(), place.end(), bytes_.begin() + Offset(ends_[at] - kChildWidth));
}

IndexEntries IndexEntries::Part(std::size_t from, std::size_t to) const
{
    IndexEntries part;
    const std::size_t start = StartOf(from);
    const std::size_t end = StartOf(to);
    part.bytes_.assign(bytes_.begin() + Offset(start), bytes_.begin() + Offset(end));
    for (std::size_t i = from; i < to; ++i)
        part.ends_.push_back(ends_[i] - start);
    return part;
}

}  // namespace jet::format
