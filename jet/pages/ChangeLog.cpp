// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/ChangeLog.h"

#include "jet/format/ByteWriter.h"
#include "jet/pages/Checksum.h"

#include <algorithm>
#include <array>

namespace jet::pages {

namespace {

using format::PageNumber;
using format::ReadU16;
using format::ReadU32;
using format::Span;

// An entry; its place follows from its number, so that the newest takes the place of the oldest.
//
//   part      width   meaning
//   sequence  4       from 1
//   user      2       place of the commit word that confirmed the set
//   word      2       that word
//   pages     4 each  pages of rows; 0 where there is none
//   checksum  4       of everything before it
constexpr std::size_t kUserAt = 4, kWordAt = 6, kPagesAt = 8, kMostPages = 5, kChecksumAt = 28,
                      kEntrySize = 32, kEntries = kChangeLogSize / kEntrySize;

std::vector<std::byte> Encode(std::uint32_t sequence, const LoggedSet& set)
{
    format::ByteWriter out;
    out.U32(sequence);
    out.U16(set.user);
    out.U16(set.word);
    for (std::size_t i = 0; i < kMostPages; ++i)
        out.U32(i < set.rowPages.size() ? Raw(set.rowPages[i]) : 0);
    out.U32(Checksum(out.Written()));
    return out.Take();
}

}  // namespace

void ChangeLog::Append(io::File& journal, const LoggedSet& set)
{
    if (set.rowPages.size() > kMostPages) return;
    const ChangeLog log(journal);
    if (!log.exists_) journal.Write(0, std::vector<std::byte>(kChangeLogSize));
    const std::uint32_t sequence = log.Newest() + 1;
    journal.Write((sequence % kEntries) * kEntrySize, Encode(sequence, set));
}

ChangeLog::ChangeLog(const io::File& journal) : exists_(journal.Size() >= kChangeLogSize)
{
    if (!exists_) return;
    std::array<std::byte, kChangeLogSize> bytes{};
    journal.Read(0, bytes);
    for (std::size_t at = 0; at < bytes.size(); at += kEntrySize) {
        const Span entry = Span(bytes).subspan(at, kEntrySize);
        const std::uint32_t sequence = ReadU32(entry, 0);
        if (sequence == 0 || ReadU32(entry, kChecksumAt) != Checksum(entry.first(kChecksumAt)))
            continue;
        Entry found{sequence, {ReadU16(entry, kUserAt), ReadU16(entry, kWordAt), {}}};
        for (std::size_t i = 0; i < kMostPages; ++i)
            if (const std::uint32_t page = ReadU32(entry, kPagesAt + 4 * i); page != 0)
                found.set.rowPages.push_back(PageNumber{page});
        entries_.push_back(std::move(found));
    }
}

// The number of the newest set; 0 for an empty log.
std::uint32_t ChangeLog::Newest() const
{
    std::uint32_t newest = 0;
    for (const Entry& entry : entries_)
        newest = std::max(newest, entry.sequence);
    return newest;
}

const LoggedSet* ChangeLog::Find(std::uint16_t user, std::uint16_t word) const
{
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.set.user == user && entry.set.word == word;
    });
    return found == entries_.end() ? nullptr : &found->set;
}

std::optional<std::vector<PageNumber>> ChangeLog::RowPagesBetween(const CommitWords& before,
                                                                  const CommitWords& after) const
{
    std::vector<PageNumber> pages;
    for (std::uint16_t user = 0; user < format::kCommitWords; ++user) {
        const std::uint16_t end = after.Of(user);
        if (end == kWritingNow) continue;
        for (std::uint16_t word = before.Of(user); word != end;) {
            word = NextCommitWord(word);
            const LoggedSet* const set = Find(user, word);
            if (set == nullptr) return std::nullopt;
            pages.insert(pages.end(), set->rowPages.begin(), set->rowPages.end());
        }
    }
    std::sort(pages.begin(), pages.end());
    pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
    return pages;
}

}  // namespace jet::pages
