// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WatchedFileSystem.h"

namespace tests {

using jet::io::File;
using jet::io::LockKind;
using jet::io::OpenMode;

namespace {

class WatchedFile : public File {
public:
    WatchedFile(std::unique_ptr<File> below, std::string path, const WatchedFileSystem& disk)
        : below_(std::move(below)), path_(std::move(path)), disk_(disk)
    {
    }

    [[nodiscard]] std::uint64_t Size() const override
    {
        disk_.Tell("Size", path_);
        return below_->Size();
    }
    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        disk_.Tell("Read", path_);
        below_->Read(offset, into);
    }
    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        disk_.Tell("Write", path_);
        below_->Write(offset, bytes);
    }
    void Truncate(std::uint64_t size) override
    {
        disk_.Tell("Truncate", path_);
        below_->Truncate(size);
    }
    void Flush() override
    {
        disk_.Tell("Flush", path_);
        below_->Flush();
    }
    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        return below_->IsNamed(path);
    }
    [[nodiscard]] bool TryLock(LockKind kind, std::uint64_t offset, std::uint64_t length) override
    {
        disk_.Tell("TryLock", path_);
        return below_->TryLock(kind, offset, length);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        below_->Unlock(offset, length);
    }
    [[nodiscard]] std::optional<jet::io::ByteRange> FindLock(std::uint64_t offset,
                                                             std::uint64_t length) const override
    {
        disk_.Tell("FindLock", path_);
        return below_->FindLock(offset, length);
    }

private:
    std::unique_ptr<File> below_;
    std::string path_;
    const WatchedFileSystem& disk_;
};

}  // namespace

std::unique_ptr<File> WatchedFileSystem::Open(const std::string& path, OpenMode mode)
{
    Tell("Open", path);
    return std::make_unique<WatchedFile>(below_.Open(path, mode), path, *this);
}

std::unique_ptr<File> WatchedFileSystem::Create(const std::string& path)
{
    Tell("Create", path);
    return std::make_unique<WatchedFile>(below_.Create(path), path, *this);
}

bool WatchedFileSystem::Exists(const std::string& path) const
{
    return below_.Exists(path);
}

void WatchedFileSystem::Remove(const std::string& path)
{
    Tell("Remove", path);
    below_.Remove(path);
}

void WatchedFileSystem::Rename(const std::string& from, const std::string& to)
{
    Tell("Rename", from);
    below_.Rename(from, to);
}

std::string WatchedFileSystem::Canonical(const std::string& path) const
{
    return below_.Canonical(path);
}

}  // namespace tests
