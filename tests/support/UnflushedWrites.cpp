// SPDX-License-Identifier: Apache-2.0
#include "tests/support/UnflushedWrites.h"

#include <algorithm>
#include <array>

namespace tests {

using jet::io::OpenMode;

namespace {

constexpr std::uint64_t kSector = 512;

std::vector<std::byte> ContentOf(const jet::io::File& file, std::uint64_t from, std::uint64_t to)
{
    const std::uint64_t end = std::min(file.Size(), to);
    std::vector<std::byte> bytes(static_cast<std::size_t>(end - std::min(end, from)));
    if (!bytes.empty()) file.Read(from, bytes);
    return bytes;
}

bool Happens(std::mt19937& dice, unsigned percent)
{
    return dice() % 100 < percent;
}

}  // namespace

void UnflushedWrites::Remember(const std::string& path, Change change)
{
    const auto file = below_.Open(path, OpenMode::ReadOnly);
    change.sizeBefore = file->Size();
    const std::uint64_t end = change.cut ? change.sizeBefore : change.offset + change.bytes.size();
    change.before = ContentOf(*file, change.offset, end);
    changes_[path].push_back(std::move(change));
}

void UnflushedWrites::Write(const std::string& path, std::uint64_t offset,
                            std::span<const std::byte> bytes)
{
    Remember(path, {.offset = offset, .bytes = {bytes.begin(), bytes.end()}});
}

void UnflushedWrites::Truncate(const std::string& path, std::uint64_t size)
{
    Remember(path, {.cut = true, .offset = size});
}

void UnflushedWrites::Create(const std::string& path)
{
    if (!below_.Exists(path)) names_[path].emplace_back();
}

void UnflushedWrites::Remove(const std::string& path)
{
    if (!below_.Exists(path)) return;
    const auto file = below_.Open(path, OpenMode::ReadOnly);
    names_[path].push_back({true, ContentOf(*file, 0, file->Size()), changes_[path]});
    changes_.erase(path);
}

void UnflushedWrites::Rename(const std::string& from, const std::string& to)
{
    changes_.erase(to);
    const auto moved = changes_.find(from);
    if (moved != changes_.end()) changes_[to] = std::move(moved->second);
    changes_.erase(from);
    names_.erase(from);
    names_.erase(to);
}

void UnflushedWrites::Flush(const std::string& path)
{
    changes_.erase(path);
    names_.erase(path);
}

void UnflushedWrites::Forget()
{
    changes_.clear();
    names_.clear();
}

void UnflushedWrites::Undo(const std::string& path, const Changes& changes)
{
    const auto file = below_.Open(path, OpenMode::ReadWrite);
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        file->Truncate(change->sizeBefore);
        if (!change->before.empty()) file->Write(change->offset, change->before);
    }
}

void UnflushedWrites::Lose()
{
    for (const auto& [path, changes] : changes_)
        if (below_.Exists(path)) Undo(path, changes);
    Forget();
}

void UnflushedWrites::ChooseNames(std::mt19937& dice)
{
    for (auto& [path, formers] : names_) {
        const std::size_t choice = dice() % (formers.size() + 1);
        if (choice == formers.size()) continue;  // as it is now
        Former& former = formers[choice];
        if (below_.Exists(path)) below_.Remove(path);
        changes_.erase(path);
        if (!former.there) continue;
        below_.Create(path)->Write(0, former.bytes);
        changes_[path] = std::move(former.changes);
    }
}

std::vector<UnflushedWrites::Piece> UnflushedWrites::PiecesOf(const Changes& changes,
                                                              std::mt19937& dice)
{
    std::vector<Piece> pieces;
    for (const Change& change : changes) {
        if (change.cut) pieces.push_back({.cut = true, .offset = change.offset});
        std::span<const std::byte> rest(change.bytes);
        for (std::uint64_t at = change.offset; !rest.empty();) {
            std::uint64_t length = std::min<std::uint64_t>(rest.size(), kSector - at % kSector);
            // A few bytes, as a commit word, may be torn too.
            if (rest.size() < kSector && length > 1 && Happens(dice, 10)) length = length / 2;
            pieces.push_back({.offset = at, .bytes = rest.first(static_cast<std::size_t>(length))});
            rest = rest.subspan(static_cast<std::size_t>(length));
            at += length;
        }
    }
    return pieces;
}

void UnflushedWrites::Choose(const std::string& path, const Changes& changes, std::mt19937& dice)
{
    Undo(path, changes);
    constexpr std::array<unsigned, 7> percents{0, 5, 30, 50, 70, 95, 100};
    const unsigned kept = percents.at(dice() % percents.size());
    std::vector<Piece> pieces = PiecesOf(changes, dice);
    std::shuffle(pieces.begin(), pieces.end(), dice);
    const auto file = below_.Open(path, OpenMode::ReadWrite);
    std::uint64_t longest = 0;
    for (const Piece& piece : pieces) {
        longest = std::max(longest, piece.offset + piece.bytes.size());
        if (!Happens(dice, kept)) continue;
        if (piece.cut)
            file->Truncate(piece.offset);
        else
            file->Write(piece.offset, piece.bytes);
    }
    if (file->Size() < longest && Happens(dice, 25)) file->Truncate(longest);
}

void UnflushedWrites::Shuffle(std::mt19937& dice)
{
    ChooseNames(dice);
    for (const auto& [path, changes] : changes_)
        if (below_.Exists(path)) Choose(path, changes, dice);
    Forget();
}

}  // namespace tests
