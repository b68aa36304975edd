// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/JournalFormat.h"

#include "jet/format/ByteWriter.h"
#include "jet/pages/Checksum.h"

#include <algorithm>

namespace jet::pages {

namespace {

using format::ReadU32;
using format::Span;

// The journal's head, followed by its entries.
//
//   part        width   meaning
//   magic       8       "LodrinJ2"; zeros once the set is whole
//   checksum    4       of everything behind it
//   pageSize    4       bytes
//   sizeBefore  8       length of the database before the set, bytes
//   sizeAfter   8       and when the set is whole
//   otherWords  4       checksum of the commit words of all users but the first
//   count       4       entries
//
// An entry: page number (4), a checksum of each of its sectors as the set leaves them (4 each), and
// the page as it was.
constexpr std::size_t kChecksumAt = 8, kPageSizeAt = 12, kSizeBeforeAt = 16, kSizeAfterAt = 24,
                      kOtherWordsAt = 32, kCountAt = 36, kHeadSize = 40;
constexpr std::size_t kSector = 512;  // the smallest piece a disk writes whole

std::size_t SumsSize(std::size_t pageSize)
{
    return 4 * (pageSize / kSector);
}

std::size_t EntrySize(std::size_t pageSize)
{
    return 4 + SumsSize(pageSize) + pageSize;
}

}  // namespace

std::vector<std::byte> EncodeJournal(std::span<const JournalEntry> entries,
                                     const JournalScope& scope)
{
    std::vector<std::byte> bytes(kHeadSize + entries.size() * EntrySize(scope.pageSize));
    const format::MutableSpan out(bytes);
    format::WriteScalar(out, 0, kJournalMagic);
    format::WriteU32(out, kPageSizeAt, static_cast<std::uint32_t>(scope.pageSize));
    format::WriteScalar(out, kSizeBeforeAt, scope.sizeBefore);
    format::WriteScalar(out, kSizeAfterAt, scope.sizeAfter);
    format::WriteU32(out, kOtherWordsAt, scope.otherWords);
    format::WriteU32(out, kCountAt, static_cast<std::uint32_t>(entries.size()));
    std::size_t at = kHeadSize;
    for (const JournalEntry& entry : entries) {
        format::WriteU32(out, at, Raw(entry.page));
        at += 4;
        for (std::size_t sector = 0; sector < scope.pageSize; sector += kSector, at += 4)
            format::WriteU32(out, at, Checksum(Span(entry.after).subspan(sector, kSector)));
        std::copy(entry.before.begin(), entry.before.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(at));
        at += scope.pageSize;
    }
    format::WriteU32(out, kChecksumAt, Checksum(Span(bytes).subspan(kPageSizeAt)));
    return bytes;
}

bool JournalView::IsWhole(std::size_t pageSize) const
{
    if (bytes_.size() < kHeadSize) return false;
    if (format::ReadScalar<std::uint64_t>(bytes_, 0) != kJournalMagic) return false;
    if (PageSize() != pageSize) return false;
    const std::size_t size = Start(Count());
    return bytes_.size() >= size && Checksum(bytes_.subspan(kPageSizeAt, size - kPageSizeAt)) ==
                                        ReadU32(bytes_, kChecksumAt);
}

JournalScope JournalView::Scope() const
{
    return {.sizeBefore = format::ReadScalar<std::uint64_t>(bytes_, kSizeBeforeAt),
            .sizeAfter = format::ReadScalar<std::uint64_t>(bytes_, kSizeAfterAt),
            .pageSize = PageSize(),
            .otherWords = ReadU32(bytes_, kOtherWordsAt)};
}

std::size_t JournalView::Count() const
{
    return ReadU32(bytes_, kCountAt);
}

PageNumber JournalView::PageAt(std::size_t entry) const
{
    return PageNumber{ReadU32(bytes_, Start(entry))};
}

Span JournalView::Before(std::size_t entry) const
{
    return format::Slice(bytes_, Start(entry) + 4 + SumsSize(PageSize()), PageSize());
}

bool JournalView::IsOfTheSet(std::size_t entry, Span found) const
{
    const Span before = Before(entry);
    for (std::size_t at = 0; at < found.size(); at += kSector) {
        const Span now = found.subspan(at, kSector);
        const Span then = before.subspan(at, kSector);
        if (std::equal(now.begin(), now.end(), then.begin())) continue;
        if (Checksum(now) != ReadU32(bytes_, Start(entry) + 4 + 4 * (at / kSector))) return false;
    }
    return true;
}

std::size_t JournalView::Start(std::size_t entry) const
{
    return kHeadSize + entry * EntrySize(PageSize());
}

std::size_t JournalView::PageSize() const
{
    return ReadU32(bytes_, kPageSizeAt);
}

}  // namespace jet::pages
