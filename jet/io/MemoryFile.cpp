// SPDX-License-Identifier: Apache-2.0
#include "jet/io/MemoryFile.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <limits>

namespace jet::io {

class MemoryFile : public File {
public:
    using Stored = MemoryFileSystem::Stored;
    using Lock = MemoryFileSystem::Lock;

    MemoryFile(MemoryFileSystem& files, std::shared_ptr<Stored> stored, OpenMode mode)
        : files_(files), stored_(std::move(stored)), bytes_(&stored_->bytes), mode_(mode)
    {
    }
    ~MemoryFile() override { GiveBack(0, std::numeric_limits<std::uint64_t>::max()); }

    [[nodiscard]] std::uint64_t Size() const override { return bytes_->size(); }

    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        if (offset > bytes_->size() || bytes_->size() - offset < into.size()) {
            throw base::NumberedError(3043).At("read beyond the end");
        }
        std::copy_n(bytes_->begin() + static_cast<std::ptrdiff_t>(offset), into.size(),
                    into.begin());
    }

    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        RequireWritable();
        if (bytes_->size() < offset + bytes.size()) bytes_->resize(offset + bytes.size());
        std::copy(bytes.begin(), bytes.end(),
                  bytes_->begin() + static_cast<std::ptrdiff_t>(offset));
    }

    void Truncate(std::uint64_t size) override
    {
        RequireWritable();
        bytes_->resize(size);
    }

    void Flush() override {}
    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        return files_.Exists(path) && &files_.Content(path) == bytes_;
    }

    [[nodiscard]] bool TryLock(LockKind kind, std::uint64_t offset, std::uint64_t length) override
    {
        for (const Lock& lock : stored_->locks) {
            const bool both = kind == LockKind::Shared && lock.kind == LockKind::Shared;
            if (!both && IsOther(lock, offset, length)) return false;
        }
        GiveBack(offset, offset + length);
        stored_->locks.push_back({this, kind, offset, offset + length});
        return true;
    }

    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        GiveBack(offset, offset + length);
    }

    [[nodiscard]] std::optional<ByteRange> FindLock(std::uint64_t offset,
                                                    std::uint64_t length) const override
    {
        for (const Lock& lock : stored_->locks)
            if (IsOther(lock, offset, length)) return ByteRange{lock.begin, lock.end - lock.begin};
        return std::nullopt;
    }

private:
    [[nodiscard]] bool IsOther(const Lock& lock, std::uint64_t offset, std::uint64_t length) const
    {
        return lock.owner != this && lock.begin < offset + length && offset < lock.end;
    }

    // Takes a range out of our own locks; what lies before and behind it stays locked.
    void GiveBack(std::uint64_t begin, std::uint64_t end)
    {
        std::vector<Lock> kept;
        for (const Lock& lock : stored_->locks) {
            if (lock.owner != this || lock.end <= begin || end <= lock.begin) {
                kept.push_back(lock);
                continue;
            }
            if (lock.begin < begin) kept.push_back({this, lock.kind, lock.begin, begin});
            if (end < lock.end) kept.push_back({this, lock.kind, end, lock.end});
        }
        stored_->locks = std::move(kept);
    }

    void RequireWritable() const
    {
        if (mode_ == OpenMode::ReadOnly) throw base::NumberedError(3027);
    }

    MemoryFileSystem& files_;
    std::shared_ptr<Stored> stored_;
    std::vector<std::byte>* bytes_;
    OpenMode mode_;
};

std::unique_ptr<File> MemoryFileSystem::Open(const std::string& path, OpenMode mode)
{
    const auto found = files_.find(path);
    if (found == files_.end()) throw base::NumberedError(3024, {path});
    return std::make_unique<MemoryFile>(*this, found->second, mode);
}

std::unique_ptr<File> MemoryFileSystem::Create(const std::string& path)
{
    if (Exists(path)) throw base::NumberedError(3204);
    const auto stored = std::make_shared<Stored>();
    files_[path] = stored;
    return std::make_unique<MemoryFile>(*this, stored, OpenMode::ReadWrite);
}

bool MemoryFileSystem::Exists(const std::string& path) const
{
    return files_.contains(path);
}

void MemoryFileSystem::Remove(const std::string& path)
{
    files_.erase(path);
}

void MemoryFileSystem::Rename(const std::string& from, const std::string& to)
{
    const auto found = files_.find(from);
    if (found == files_.end()) throw base::NumberedError(3024, {from});
    files_[to] = found->second;
    files_.erase(from);
}

std::string MemoryFileSystem::Canonical(const std::string& path) const
{
    return path;
}

std::vector<std::byte>& MemoryFileSystem::Content(const std::string& path)
{
    const auto found = files_.find(path);
    if (found == files_.end()) throw base::NumberedError(3024, {path});
    return found->second->bytes;
}

}  // namespace jet::io
