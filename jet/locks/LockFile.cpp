// SPDX-License-Identifier: Apache-2.0
#include "jet/locks/LockFile.h"

#include <algorithm>
#include <array>
#include <vector>

namespace jet::locks {

using base::NumberedError;

namespace {

// A user's entry: the machine and his name, each ended by a zero and filled up with blanks.
constexpr std::size_t kEntrySize = 64, kNameSize = 32;

void PutName(std::span<std::byte> field, std::string_view name)
{
    std::fill(field.begin(), field.end(), std::byte{' '});
    const std::string_view fitting = name.substr(0, field.size() - 1);
    std::transform(fitting.begin(), fitting.end(), field.begin(),
                   [](char letter) { return static_cast<std::byte>(letter); });
    field[fitting.size()] = std::byte{0};
}

std::string NameIn(std::span<const std::byte> field)
{
    std::string name;
    for (const std::byte letter : field) {
        if (letter == std::byte{0}) break;
        name += static_cast<char>(letter);
    }
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

// Whatever goes wrong with the lock file, the database cannot be shared.
NumberedError CannotLock(const std::string& why)
{
    return NumberedError(3050).At(why);
}

}  // namespace

std::string LockFilePath(const std::string& databasePath)
{
    const std::size_t folderEnd = databasePath.find_last_of("/\\");
    const std::size_t point = databasePath.find_last_of('.');
    const bool hasExtension =
        point != std::string::npos && (folderEnd == std::string::npos || point > folderEnd);
    std::string path = (hasExtension ? databasePath.substr(0, point) : databasePath) + ".ldb";
    return path == databasePath ? path + ".ldb" : path;
}

LockFile::LockFile(io::FileSystem& files, const std::string& databasePath, User self, bool alone,
                   const Pause& pause)
    : files_(files), databasePath_(databasePath), path_(LockFilePath(databasePath)),
      self_(std::move(self)), alone_(alone)
{
    try {
        Join(pause);
    } catch (const NumberedError& error) {
        if (error.Number() == 3051 || error.Number() == 3044)
            throw CannotLock(path_ + ": " + error.Detail());
        throw;
    }
}

LockFile::~LockFile()
{
    // Others who come just now wait until the file is gone, and make a new one.
    try {
        if (TryLock(kAllUserBytes) && file_->IsNamed(path_)) files_.Remove(path_);
    } catch (const NumberedError&) {
        file_.reset();  // a file that stays is harmless
    }
}

void LockFile::Join(const Pause& pause)
{
    for (int i = 0; i < kTries; ++i) {
        if (OpenFile() && TakePlace()) {
            // Whoever left last may have taken the file away meanwhile.
            if (file_->IsNamed(path_)) {
                TestLocks();
                return WriteEntry();
            }
            continue;
        }
        if (file_ && file_->IsNamed(path_) && i + 1 == kTries) throw Refusal();
        pause(PauseAfter(i + 1));
    }
    throw CannotLock(path_ + " comes and goes");
}

// False when another process made it or took it away in this instant.
bool LockFile::OpenFile()
{
    file_.reset();
    try {
        file_ = files_.Exists(path_) ? files_.Open(path_, io::OpenMode::ReadWrite)
                                     : files_.Create(path_);
        return true;
    } catch (const NumberedError& error) {
        if (error.Number() == 3204 || error.Number() == 3024) return false;
        throw;
    }
}

bool LockFile::TakePlace()
{
    place_ = 0;
    if (alone_) return TryLock(kAllUserBytes);
    for (std::size_t place = 1; place <= kMostUsers; ++place) {
        if (!TryLock(UserByte(place))) continue;
        place_ = place;
        return true;
    }
    return false;
}

bool LockFile::TryLock(io::ByteRange range)
{
    return file_->TryLock(io::LockKind::Exclusive, range.offset, range.length);
}

void LockFile::Unlock(io::ByteRange range) noexcept
{
    try {
        file_->Unlock(range.offset, range.length);
    } catch (const NumberedError&) {
        return;  // closing the file gives it back
    }
}

// A file system that only seems to lock would let two programs write one page.
void LockFile::TestLocks() const
{
    const io::ByteRange ours = UserByte(std::max<std::size_t>(place_, 1));
    const auto second = files_.Open(path_, io::OpenMode::ReadWrite);
    if (second->TryLock(io::LockKind::Exclusive, ours.offset, ours.length))
        throw CannotLock(path_ + ": the file system grants one lock twice");
}

void LockFile::WriteEntry()
{
    std::array<std::byte, kEntrySize> entry{};
    PutName(std::span(entry).first(kNameSize), self_.machine);
    PutName(std::span(entry).subspan(kNameSize), self_.name);
    file_->Write((std::max<std::size_t>(place_, 1) - 1) * kEntrySize, entry);
}

// Why there is no place for us.
NumberedError LockFile::Refusal() const
{
    const std::optional<io::ByteRange> taken =
        file_->FindLock(kAllUserBytes.offset, kAllUserBytes.length);
    if (!taken) return NumberedError(3045, {databasePath_});
    const bool byOneAlone = taken->length >= kMostUsers;
    if (!alone_ && !byOneAlone) return NumberedError(3239);
    const std::size_t place =
        static_cast<std::size_t>(taken->offset - static_cast<std::uint64_t>(Region::User));
    const std::optional<User> user = NameOf(place);
    if (!user) return NumberedError(3045, {databasePath_});
    return NumberedError(alone_ && !byOneAlone ? 3704 : 3356, {user->machine, user->name});
}

bool LockFile::IsTaken(std::size_t place) const
{
    if (place == 0 || place == place_) return false;
    const io::ByteRange byte = UserByte(place);
    return file_->FindLock(byte.offset, byte.length).has_value();
}

std::optional<User> LockFile::NameOf(std::size_t place) const
{
    std::array<std::byte, kEntrySize> entry{};
    const std::uint64_t offset = (std::uint64_t{place} - 1) * kEntrySize;
    if (place < 1 || place > kMostUsers || file_->Size() < offset + kEntrySize) return std::nullopt;
    file_->Read(offset, entry);
    User user{NameIn(std::span(entry).first(kNameSize)),
              NameIn(std::span(entry).subspan(kNameSize))};
    if (user.machine.empty()) return std::nullopt;
    return user;
}

// Whose lock stands in the range; `start` is where the page's bytes begin.
Conflict LockFile::ConflictIn(io::ByteRange range, std::uint64_t start) const
{
    const std::optional<io::ByteRange> lock = file_->FindLock(range.offset, range.length);
    if (!lock) return {};  // gone in this instant
    const std::uint64_t last = lock->offset + lock->length - 1 - start;
    const bool oneByte = lock->length == 1;
    const std::uint64_t place = oneByte ? last : last - std::min(last, kRangeStart);
    return {oneByte ? Conflict::Holder::Reader : Conflict::Holder::Writer,
            NameOf(static_cast<std::size_t>(place))};
}

std::optional<Conflict> LockFile::TryLock(PageNumber page, Owner owner)
{
    const auto held = pages_.find(page);
    if (held != pages_.end()) {
        if (held->second.owner != owner) return Conflict{Conflict::Holder::OwnProcess, {}};
        ++held->second.count;
        return std::nullopt;
    }
    const io::ByteRange range = RangeOf(Region::Pages, page, place_);
    if (!TryLock(range)) return ConflictIn(range, StartOf(Region::Pages, page));
    pages_[page] = {owner, 1};
    return std::nullopt;
}

void LockFile::Unlock(PageNumber page) noexcept
{
    const auto held = pages_.find(page);
    if (held == pages_.end() || --held->second.count > 0) return;
    pages_.erase(held);
    Unlock(RangeOf(Region::Pages, page, place_));
}

std::optional<Conflict> LockFile::TryUse(Region region, PageNumber table)
{
    const io::ByteRange byte = ByteOf(region, table, place_);
    int& count = tables_[{region, table}];
    if (count == 0 && !TryLock(byte)) {
        tables_.erase({region, table});
        return ConflictIn(byte, StartOf(region, table));
    }
    ++count;
    return std::nullopt;
}

void LockFile::EndUse(Region region, PageNumber table) noexcept
{
    const auto held = tables_.find({region, table});
    if (held == tables_.end() || --held->second > 0) return;
    tables_.erase(held);
    Unlock(ByteOf(region, table, place_));
}

std::optional<Conflict> LockFile::TryKeep(PageNumber table)
{
    if (alone_) return std::nullopt;
    const io::ByteRange range = RangeOf(Region::TableReaders, table, place_);
    if (TryLock(range)) return std::nullopt;
    return ConflictIn(range, StartOf(Region::TableReaders, table));
}

void LockFile::EndKeep(PageNumber table) noexcept
{
    if (alone_) return;
    const io::ByteRange range = RangeOf(Region::TableReaders, table, place_);
    if (!tables_.contains({Region::TableReaders, table})) return Unlock(range);
    // Our own byte, which the range has covered, stays.
    const io::ByteRange own = ByteOf(Region::TableReaders, table, place_);
    if (own.offset > range.offset) Unlock({range.offset, own.offset - range.offset});
    Unlock({own.offset + 1, kRangeStart});
}

std::optional<Conflict> LockFile::FindDenial(PageNumber table) const
{
    const io::ByteRange bytes = AllBytesOf(Region::TableDenial, table);
    if (!file_->FindLock(bytes.offset, bytes.length)) return std::nullopt;
    return ConflictIn(bytes, StartOf(Region::TableDenial, table));
}

void LockFile::RequireNamed()
{
    if (file_->IsNamed(path_)) return;
    Join([](std::chrono::milliseconds) {});
    const auto require = [this](io::ByteRange range) {
        if (!TryLock(range)) throw CannotLock(path_ + " was taken away, and with it our locks");
    };
    for (const auto& [page, held] : pages_)
        require(RangeOf(Region::Pages, page, place_));
    for (const auto& [use, count] : tables_)
        require(ByteOf(use.first, use.second, place_));
}

}  // namespace jet::locks
