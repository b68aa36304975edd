// SPDX-License-Identifier: Apache-2.0
#include "jet/io/MemoryFile.h"

#include "base/NumberedError.h"

#include <algorithm>

namespace jet::io {

namespace {

class MemoryFile : public File {
public:
    MemoryFile(MemoryFileSystem& files, std::shared_ptr<std::vector<std::byte>> bytes,
               OpenMode mode)
        : files_(files), bytes_(std::move(bytes)), mode_(mode)
    {
    }

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
        return files_.Exists(path) && &files_.Content(path) == bytes_.get();
    }
    [[nodiscard]] bool TryLock(LockKind, std::uint64_t, std::uint64_t) override { return true; }
    void Unlock(std::uint64_t, std::uint64_t) override {}

private:
    void RequireWritable() const
    {
        if (mode_ == OpenMode::ReadOnly) throw base::NumberedError(3027);
    }

    MemoryFileSystem& files_;
    std::shared_ptr<std::vector<std::byte>> bytes_;
    OpenMode mode_;
};

}  // namespace

std::unique_ptr<File> MemoryFileSystem::Open(const std::string& path, OpenMode mode)
{
    const auto found = files_.find(path);
    if (found == files_.end()) throw base::NumberedError(3024, {path});
    return std::make_unique<MemoryFile>(*this, found->second, mode);
}

std::unique_ptr<File> MemoryFileSystem::Create(const std::string& path)
{
    if (Exists(path)) throw base::NumberedError(3204);
    const Bytes bytes = std::make_shared<std::vector<std::byte>>();
    files_[path] = bytes;
    return std::make_unique<MemoryFile>(*this, bytes, OpenMode::ReadWrite);
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
    return *found->second;
}

}  // namespace jet::io
