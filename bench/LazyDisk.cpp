// SPDX-License-Identifier: Apache-2.0
#include "bench/LazyDisk.h"

namespace bench {

namespace {

using jet::io::ByteRange;
using jet::io::LockKind;

class LazyFile : public jet::io::File {
public:
    explicit LazyFile(std::unique_ptr<File> below) : below_(std::move(below)) {}

    [[nodiscard]] std::uint64_t Size() const override { return below_->Size(); }
    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        below_->Read(offset, into);
    }
    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        below_->Write(offset, bytes);
    }
    void Truncate(std::uint64_t size) override { below_->Truncate(size); }
    void Flush() override {}
    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        return below_->IsNamed(path);
    }
    [[nodiscard]] bool TryLock(LockKind kind, std::uint64_t offset, std::uint64_t length) override
    {
        return below_->TryLock(kind, offset, length);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        below_->Unlock(offset, length);
    }
    [[nodiscard]] std::optional<ByteRange> FindLock(std::uint64_t offset,
                                                    std::uint64_t length) const override
    {
        return below_->FindLock(offset, length);
    }

private:
    std::unique_ptr<File> below_;
};

}  // namespace

std::unique_ptr<jet::io::File> LazyDisk::Open(const std::string& path, jet::io::OpenMode mode)
{
    return std::make_unique<LazyFile>(StdFileSystem::Open(path, mode));
}

std::unique_ptr<jet::io::File> LazyDisk::Create(const std::string& path)
{
    return std::make_unique<LazyFile>(StdFileSystem::Create(path));
}

}  // namespace bench
