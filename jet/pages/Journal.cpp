// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/Journal.h"

#include "base/NumberedError.h"
#include "jet/format/Bytes.h"
#include "jet/pages/Checksum.h"

#include <algorithm>

namespace jet::pages {

namespace {

using format::ReadU32;
using format::Span;
using format::WriteU32;

// The journal's head, followed by its entries.
//
//   part       width   meaning
//   magic      8       "LodrinJ1"; zeros once the set is whole
//   checksum   4       of everything behind it
//   pageSize   4       bytes
//   sizeBefore 8       length of the database before the set, bytes
//   count      4       entries
//
// An entry: page number (4), a checksum of each of its sectors as the set leaves them (4 each), and
// the page as it was.
constexpr std::size_t kChecksumAt = 8, kPageSizeAt = 12, kSizeBeforeAt = 16, kCountAt = 24,
                      kHeadSize = 28;
constexpr std::uint64_t kMagic = 0x314A6E6972646F4CULL;
constexpr std::size_t kSector = 512;  // the smallest piece a disk writes whole

std::size_t EntrySize(std::size_t pageSize)
{
    return 4 + 4 * (pageSize / kSector) + pageSize;
}

struct StoredEntry {
    PageNumber page;
    Span sectorSums;
    Span before;
};

StoredEntry EntryAt(Span journal, std::size_t index, std::size_t pageSize)
{
    const std::size_t at = kHeadSize + index * EntrySize(pageSize);
    const std::size_t sums = 4 * (pageSize / kSector);
    return {PageNumber{ReadU32(journal, at)}, format::Slice(journal, at + 4, sums),
            format::Slice(journal, at + 4 + sums, pageSize)};
}

bool IsWhole(Span journal, std::size_t pageSize)
{
    if (journal.size() < kHeadSize) return false;
    if (format::ReadScalar<std::uint64_t>(journal, 0) != kMagic) return false;
    if (ReadU32(journal, kPageSizeAt) != pageSize) return false;
    const std::size_t size =
        kHeadSize + std::size_t{ReadU32(journal, kCountAt)} * EntrySize(pageSize);
    if (journal.size() < size) return false;
    return Checksum(journal.subspan(kPageSizeAt, size - kPageSizeAt)) ==
           ReadU32(journal, kChecksumAt);
}

// Whether each sector of `found` is as the set found it or as the set was leaving it.
bool IsOfTheSet(const StoredEntry& entry, Span found)
{
    for (std::size_t at = 0; at < found.size(); at += kSector) {
        const Span now = found.subspan(at, kSector);
        const Span before = entry.before.subspan(at, kSector);
        if (std::equal(now.begin(), now.end(), before.begin())) continue;
        if (Checksum(now) != ReadU32(entry.sectorSums, 4 * (at / kSector))) return false;
    }
    return true;
}

bool BelongsTo(Span journal, const io::File& database, std::size_t pageSize)
{
    if (database.Size() < format::ReadScalar<std::uint64_t>(journal, kSizeBeforeAt)) return false;
    std::vector<std::byte> found(pageSize);
    for (std::size_t i = 0; i < ReadU32(journal, kCountAt); ++i) {
        const StoredEntry entry = EntryAt(journal, i, pageSize);
        const std::uint64_t offset = std::uint64_t{Raw(entry.page)} * pageSize;
        if (offset + pageSize > database.Size()) return false;
        database.Read(offset, found);
        if (!IsOfTheSet(entry, found)) return false;
    }
    return true;
}

void RollBack(Span journal, io::File& database, std::size_t pageSize)
{
    for (std::size_t i = 0; i < ReadU32(journal, kCountAt); ++i) {
        const StoredEntry entry = EntryAt(journal, i, pageSize);
        database.Write(std::uint64_t{Raw(entry.page)} * pageSize, entry.before);
    }
    database.Truncate(format::ReadScalar<std::uint64_t>(journal, kSizeBeforeAt));
    database.Flush();
}

}  // namespace

std::string JournalPath(const std::string& databasePath)
{
    return databasePath + ".journal";
}

Journal::~Journal()
{
    if (!file_) return;
    // An idle journal says nothing; one that a failed write set left behind is the next opener's.
    try {
        std::vector<std::byte> head(8);
        const bool idle =
            file_->Size() < head.size() ||
            (file_->Read(0, head), format::ReadScalar<std::uint64_t>(head, 0) != kMagic);
        file_.reset();
        if (idle) files_.Remove(JournalPath(databasePath_));
    } catch (const base::NumberedError&) {
        file_.reset();  // it stays; the next opener finds it idle
    }
}

Recovery Journal::Recover(io::File& database, std::size_t pageSize)
{
    const std::string path = JournalPath(databasePath_);
    if (!files_.Exists(path)) return Recovery::Nothing;
    OpenFile();
    std::vector<std::byte> journal(file_->Size());
    file_->Read(0, journal);
    if (!IsWhole(journal, pageSize)) return Recovery::Nothing;
    if (!BelongsTo(journal, database, pageSize)) {
        file_.reset();
        files_.Rename(path, path + ".set-aside");
        return Recovery::SetAside;
    }
    RollBack(journal, database, pageSize);
    End();
    return Recovery::RolledBack;
}

void Journal::Begin(std::span<const JournalEntry> entries, std::uint64_t databaseSize,
                    std::size_t pageSize)
{
    begun_ = false;
    OpenFile();
    std::vector<std::byte> journal(kHeadSize + entries.size() * EntrySize(pageSize));
    format::WriteScalar(format::MutableSpan(journal), 0, kMagic);
    WriteU32(journal, kPageSizeAt, static_cast<std::uint32_t>(pageSize));
    format::WriteScalar(format::MutableSpan(journal), kSizeBeforeAt, databaseSize);
    WriteU32(journal, kCountAt, static_cast<std::uint32_t>(entries.size()));
    std::size_t at = kHeadSize;
    for (const JournalEntry& entry : entries) {
        WriteU32(journal, at, Raw(entry.page));
        at += 4;
        for (std::size_t sector = 0; sector < pageSize; sector += kSector, at += 4) {
            WriteU32(journal, at, Checksum(Span(entry.after).subspan(sector, kSector)));
        }
        std::copy(entry.before.begin(), entry.before.end(),
                  journal.begin() + static_cast<std::ptrdiff_t>(at));
        at += pageSize;
    }
    WriteU32(journal, kChecksumAt, Checksum(Span(journal).subspan(kPageSizeAt)));
    file_->Write(0, journal);
    begun_ = true;
    file_->Flush();
}

void Journal::End()
{
    const std::vector<std::byte> nothing(8);
    file_->Write(0, nothing);
    file_->Flush();
    begun_ = false;
}

void Journal::Undo(io::File& database, std::size_t pageSize)
{
    if (!begun_) return;
    // End may have got as far as calling the set whole.
    std::vector<std::byte> magic(8);
    format::WriteScalar(format::MutableSpan(magic), 0, kMagic);
    file_->Write(0, magic);
    (void)Recover(database, pageSize);
    begun_ = false;
}

void Journal::OpenFile()
{
    if (file_) return;
    const std::string path = JournalPath(databasePath_);
    file_ = files_.Exists(path) ? files_.Open(path, io::OpenMode::ReadWrite) : files_.Create(path);
}

}  // namespace jet::pages
