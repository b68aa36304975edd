// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WatchedFileSystem.h"

namespace tests {

using jet::io::File;
using jet::io::LockKind;
using jet::io::OpenMode;

namespace {

class WatchedFile : public File {
public:
    WatchedFile(std::unique_ptr<File> below, const WatchedFileSystem& disk)
        : below_(std::move(below)), disk_(disk)
    {
    }

    [[nodiscard]] std::uint64_t Size() const override
    {
        disk_.Tell();
        return below_->Size();
    }
    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        disk_.Tell();
        below_->Read(offset, into);
    }
    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        disk_.Tell();
        below_->Write(offset, bytes);
    }
    void Truncate(std::uint64_t size) override
    {
        disk_.Tell();
        below_->Truncate(size);
    }
    void Flush() override
    {
        disk_.Tell();
        below_->Flush();
    }
    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        return below_->IsNamed(path);
    }
    [[nodiscard]] bool TryLock(LockKind kind, std::uint64_t offset, std::uint64_t length) override
    {
        disk_.Tell();
        return below_->TryLock(kind, offset, length);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        below_->Unlock(offset, length);
    }
    [[nodiscard]] std::optional<jet::io::ByteRange> FindLock(std::uint64_t offset,
                                                             std::uint64_t length) const override
    {
        disk_.Tell();
        return below_->FindLock(offset, length);
    }

private:
    std::unique_ptr<File> below_;
    const WatchedFileSystem& disk_;
};

}  // namespace

std::unique_ptr<File> WatchedFileSystem::Open(const std::string& path, OpenMode mode)
{
    Tell();
    return std::make_unique<WatchedFile>(below_.Open(path, mode), *this);
}

std::unique_ptr<File> WatchedFileSystem::Create(const std::string& path)
{
    Tell();
    return std::make_unique<WatchedFile>(below_.Create(path), *this);
}

bool WatchedFileSystem::Exists(const std::string& path) const
{
    return below_.Exists(path);
}

void WatchedFileSystem::Remove(const std::string& path)
{
    Tell();
    below_.Remove(path);
}

void WatchedFileSystem::Rename(const std::string& from, const std::string& to)
{
    Tell();
    below_.Rename(from, to);
}

std::string WatchedFileSystem::Canonical(const std::string& path) const
{
    return below_.Canonical(path);
}

}  // namespace tests
