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
//   magic       8       "LodrinJ4"; zeros once the set is whole
//   checksum    4       of everything behind it
//   pageSize    4       bytes
//   sizeBefore  8       length of the database before the set, bytes
//   sizeAfter   8       and when the set is whole
//   user        2       place of the writer's commit word
//   word        2       that word before the set
//   oldPages    4       entries of pages that existed
//   newPages    4       entries of pages behind the end of the file
//
// An entry: page number (4), where its counter stands or 0 (4), a checksum of each of its sectors
// as the set leaves them (4 each), and the page as it was; that only for a page that existed.
constexpr std::size_t kChecksumAt = 8, kPageSizeAt = 12, kSizeBeforeAt = 16, kSizeAfterAt = 24,
                      kUserAt = 32, kWordAt = 34, kOldPagesAt = 36, kNewPagesAt = 40,
                      kHeadSize = 44;
constexpr std::size_t kEntryHead = 8;
constexpr std::size_t kCounterSize = 4;
constexpr std::size_t kSector = 512;  // the smallest piece a disk writes whole

std::size_t SumsSize(std::size_t pageSize)
{
    return 4 * (pageSize / kSector);
}

std::size_t NewEntrySize(std::size_t pageSize)
{
    return kEntryHead + SumsSize(pageSize);
}

std::size_t OldEntrySize(std::size_t pageSize)
{
    return NewEntrySize(pageSize) + pageSize;
}

void PutEntry(format::ByteWriter& out, const JournalEntry& entry)
{
    out.U32(Raw(entry.page));
    out.U32(entry.counterAt);
    for (std::size_t sector = 0; sector < entry.after.size(); sector += kSector)
        out.U32(Checksum(Span(entry.after).subspan(sector, kSector)));
    out.Put(entry.before);
}

}  // namespace

std::vector<std::byte> EncodeJournal(std::span<const JournalEntry> entries,
                                     const JournalScope& scope)
{
    format::ByteWriter out;
    static_cast<void>(out.Room(kHeadSize));
    std::uint32_t oldPages = 0;
    for (const JournalEntry& entry : entries) {
        if (entry.before.empty()) continue;
        PutEntry(out, entry);
        ++oldPages;
    }
    for (const JournalEntry& entry : entries)
        if (entry.before.empty()) PutEntry(out, entry);
    const format::MutableSpan head = out.Written();
    format::WriteScalar(head, 0, kJournalMagic);
    format::WriteU32(head, kPageSizeAt, static_cast<std::uint32_t>(scope.pageSize));
    format::WriteScalar(head, kSizeBeforeAt, scope.sizeBefore);
    format::WriteScalar(head, kSizeAfterAt, scope.sizeAfter);
    format::WriteU16(head, kUserAt, static_cast<std::uint16_t>(scope.user));
    format::WriteU16(head, kWordAt, scope.word);
    format::WriteU32(head, kOldPagesAt, oldPages);
    format::WriteU32(head, kNewPagesAt, static_cast<std::uint32_t>(entries.size()) - oldPages);
    format::WriteU32(head, kChecksumAt, Checksum(Span(head).subspan(kPageSizeAt)));
    return out.Take();
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
            .user = format::ReadU16(bytes_, kUserAt),
            .word = format::ReadU16(bytes_, kWordAt)};
}

std::size_t JournalView::Count() const
{
    return CountOfOld() + ReadU32(bytes_, kNewPagesAt);
}

std::size_t JournalView::CountOfOld() const
{
    return ReadU32(bytes_, kOldPagesAt);
}

PageNumber JournalView::PageAt(std::size_t entry) const
{
    return PageNumber{ReadU32(bytes_, Start(entry))};
}

Span JournalView::Before(std::size_t entry) const
{
    return format::Slice(bytes_, Start(entry) + kEntryHead + SumsSize(PageSize()), PageSize());
}

bool JournalView::IsOfTheSet(std::size_t entry, Span found) const
{
    for (std::size_t at = 0; at < found.size(); at += kSector) {
        const Span sector = found.subspan(at, kSector);
        if (!IsAsFound(entry, at, sector) && !IsAsLeft(entry, at, sector)) return false;
    }
    return true;
}

bool JournalView::IsAsFound(std::size_t entry, std::size_t at, Span sector) const
{
    if (entry >= CountOfOld())
        return std::all_of(sector.begin(), sector.end(),
                           [](std::byte byte) { return byte == std::byte{0}; });
    const Span before = Before(entry).subspan(at, sector.size());
    const std::size_t counterAt = ReadU32(bytes_, Start(entry) + 4);
    for (std::size_t i = 0; i < sector.size(); ++i) {
        const bool ofCounter =
            counterAt != 0 && at + i >= counterAt && at + i < counterAt + kCounterSize;
        if (sector[i] != before[i] && !ofCounter) return false;
    }
    return true;
}

bool JournalView::IsAsFound(std::size_t entry, Span found) const
{
    for (std::size_t at = 0; at < found.size(); at += kSector)
        if (!IsAsFound(entry, at, found.subspan(at, kSector))) return false;
    return true;
}

bool JournalView::IsAsLeft(std::size_t entry, Span found) const
{
    for (std::size_t at = 0; at < found.size(); at += kSector)
        if (!IsAsLeft(entry, at, found.subspan(at, kSector))) return false;
    return true;
}

bool JournalView::IsAsLeft(std::size_t entry, std::size_t at, Span sector) const
{
    return Checksum(sector) == ReadU32(bytes_, Start(entry) + kEntryHead + 4 * (at / kSector));
}

std::size_t JournalView::Start(std::size_t entry) const
{
    const std::size_t old = std::min(entry, CountOfOld());
    return kHeadSize + old * OldEntrySize(PageSize()) + (entry - old) * NewEntrySize(PageSize());
}

std::size_t JournalView::PageSize() const
{
    return ReadU32(bytes_, kPageSizeAt);
}

}  // namespace jet::pages
