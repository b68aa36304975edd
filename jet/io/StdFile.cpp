// SPDX-License-Identifier: Apache-2.0
#include "jet/io/StdFile.h"

#include "base/NumberedError.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace jet::io {

namespace {

[[noreturn]] void RaiseDiskError(int code, std::string_view what)
{
    const int number = code == ENOSPC || code == EDQUOT || code == EFBIG ? 3026
                       : code == EROFS || code == EBADF                  ? 3027
                                                                         : 3043;
    throw base::NumberedError(number).At(std::string(what) + ": " + std::strerror(code));
}

[[noreturn]] void RaiseLockError(int code)
{
    throw base::NumberedError(3050).At(std::strerror(code));
}

[[noreturn]] void RaiseOpenError(int code, const std::string& path)
{
    const std::string detail = std::strerror(code);
    if (code == EEXIST) throw base::NumberedError(3204).At(detail);
    if (code == ENOENT || code == ENOTDIR) {
        const std::filesystem::path folder = std::filesystem::path(path).parent_path();
        std::error_code ignored;
        const bool folderThere = folder.empty() || std::filesystem::is_directory(folder, ignored);
        throw base::NumberedError(folderThere ? 3024 : 3044, {path}).At(detail);
    }
    throw base::NumberedError(3051, {path}).At(detail);
}

// A new name survives a power cut only when its folder was flushed. Folders of some systems cannot
// be; their names are stored at once.
void FlushFolderOf(const std::string& path)
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    const int descriptor =
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    (void)::fsync(descriptor);
    ::close(descriptor);
}

class StdFile : public File {
public:
    StdFile(int descriptor, std::string path) : descriptor_(descriptor), newPath_(std::move(path))
    {
    }
    ~StdFile() override { ::close(descriptor_); }

    [[nodiscard]] std::uint64_t Size() const override
    {
        struct stat status {};
        if (::fstat(descriptor_, &status) != 0) RaiseDiskError(errno, "size");
        return static_cast<std::uint64_t>(status.st_size);
    }

    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        while (!into.empty()) {
            const ssize_t count =
                ::pread(descriptor_, into.data(), into.size(), static_cast<off_t>(offset));
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) RaiseDiskError(errno, "read");
            if (count == 0) throw base::NumberedError(3043).At("read beyond the end");
            into = into.subspan(static_cast<std::size_t>(count));
            offset += static_cast<std::uint64_t>(count);
        }
    }

    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        while (!bytes.empty()) {
            const ssize_t count =
                ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) RaiseDiskError(errno, "write");
            bytes = bytes.subspan(static_cast<std::size_t>(count));
            offset += static_cast<std::uint64_t>(count);
        }
    }

    void Truncate(std::uint64_t size) override
    {
        if (::ftruncate(descriptor_, static_cast<off_t>(size)) == 0) return;
        // The system says EINVAL for a file that was opened for reading.
        RaiseDiskError(errno == EINVAL ? EBADF : errno, "truncate");
    }

    void Flush() override
    {
        if (::fdatasync(descriptor_) != 0) RaiseDiskError(errno, "flush");
        // Who opened the file cannot know whether its name was ever flushed.
        if (!newPath_.empty()) FlushFolderOf(newPath_);
        newPath_.clear();
    }

    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        struct stat mine {};
        struct stat named {};
        return ::fstat(descriptor_, &mine) == 0 && ::stat(path.c_str(), &named) == 0 &&
               mine.st_dev == named.st_dev && mine.st_ino == named.st_ino;
    }

    [[nodiscard]] bool TryLock(LockKind kind, std::uint64_t offset, std::uint64_t length) override
    {
        return SetLock(kind == LockKind::Shared ? F_RDLCK : F_WRLCK, offset, length);
    }

    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        SetLock(F_UNLCK, offset, length);
    }

    [[nodiscard]] std::optional<ByteRange> FindLock(std::uint64_t offset,
                                                    std::uint64_t length) const override
    {
        struct flock lock = LockOf(F_WRLCK, offset, length);
        if (::fcntl(descriptor_, F_OFD_GETLK, &lock) != 0) RaiseLockError(errno);
        if (lock.l_type == F_UNLCK) return std::nullopt;
        return ByteRange{static_cast<std::uint64_t>(lock.l_start),
                         static_cast<std::uint64_t>(lock.l_len)};
    }

private:
    static struct flock LockOf(short kind, std::uint64_t offset, std::uint64_t length)
    {
        struct flock lock {};
        lock.l_type = kind;
        lock.l_whence = SEEK_SET;
        lock.l_start = static_cast<off_t>(offset);
        lock.l_len = static_cast<off_t>(length);
        return lock;
    }

    // Locks belong to this open file, not to the process, so that a second one of ours conflicts
    // too, and closing another opening of the file gives none of them back.
    bool SetLock(short kind, std::uint64_t offset, std::uint64_t length)
    {
        struct flock lock = LockOf(kind, offset, length);
        if (::fcntl(descriptor_, F_OFD_SETLK, &lock) == 0) return true;
        if (errno == EAGAIN || errno == EACCES) return false;
        RaiseLockError(errno);
    }

    int descriptor_;
    std::string newPath_;  // until its folder was flushed
};

std::unique_ptr<File> OpenFile(const std::string& path, int flags)
{
    const int descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
    if (descriptor < 0) RaiseOpenError(errno, path);
    return std::make_unique<StdFile>(descriptor, path);
}

}  // namespace

std::string MachineName()
{
    std::array<char, 256> name{};
    if (::gethostname(name.data(), name.size() - 1) != 0) return "localhost";
    return name.data();
}

std::unique_ptr<File> StdFileSystem::Open(const std::string& path, OpenMode mode)
{
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        throw base::NumberedError(3051, {path}).At("a folder");
    return OpenFile(path, mode == OpenMode::ReadOnly ? O_RDONLY : O_RDWR);
}

std::unique_ptr<File> StdFileSystem::Create(const std::string& path)
{
    return OpenFile(path, O_RDWR | O_CREAT | O_EXCL);
}

bool StdFileSystem::Exists(const std::string& path) const
{
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

void StdFileSystem::Remove(const std::string& path)
{
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) RaiseDiskError(errno, "remove " + path);
}

void StdFileSystem::Rename(const std::string& from, const std::string& to)
{
    if (::rename(from.c_str(), to.c_str()) != 0) RaiseDiskError(errno, "rename " + from);
    FlushFolderOf(to);
}

std::string StdFileSystem::Canonical(const std::string& path) const
{
    std::error_code failed;
    const std::filesystem::path canonical = std::filesystem::weakly_canonical(path, failed);
    return failed ? path : canonical.string();
}

}  // namespace jet::io
