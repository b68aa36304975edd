// SPDX-License-Identifier: Apache-2.0
#include "platform/StdFiles.h"

#include "base/NumberedError.h"
#include "platform/HostPath.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <unistd.h>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLineBreak = "\r\n";
constexpr int kFileNotFound = 53;
constexpr int kDiskFull = 61;
constexpr int kPermissionDenied = 70;
constexpr int kPathFileAccess = 75;
constexpr int kPathNotFound = 76;

bool FolderExists(const fs::path& path)
{
    std::error_code ignored;
    const fs::path folder = path.parent_path();
    return folder.empty() || fs::is_directory(folder, ignored);
}

// The program's number for what the C library said of `path`.
int NumberOf(int error, const std::string& path)
{
    switch (error) {
    case ENOENT:
        return FolderExists(path) ? kFileNotFound : kPathNotFound;
    case ENOTDIR:
        return kPathNotFound;
    case EBUSY:
    case EAGAIN:
    case ETXTBSY:
        return kPermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return kDiskFull;
    default:
        return kPathFileAccess;
    }
}

[[noreturn]] void Fail(int error, const std::string& path)
{
    throw base::NumberedError(NumberOf(error, path)).At(path);
}

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, Closer>;

OpenFile Open(const std::string& path, const char* mode)
{
    OpenFile file(std::fopen(path.c_str(), mode));
    if (!file) Fail(errno, path);
    return file;
}

// Whether the disk holds what was written. A file system that cannot say so has done what it can.
bool IsOnDisk(std::FILE* file)
{
    return ::fsync(::fileno(file)) == 0 || errno == EINVAL || errno == EROFS;
}

enum class Until { Closed, OnDisk };

// Writes all of it and closes, so that a full disk is seen here.
void WriteAll(OpenFile file, std::string_view content, const std::string& path,
              Until until = Until::Closed)
{
    errno = 0;
    const bool written =
        std::fwrite(content.data(), 1, content.size(), file.get()) == content.size();
    const bool flushed =
        written && std::fflush(file.get()) == 0 && (until == Until::Closed || IsOnDisk(file.get()));
    const int error = errno;
    const bool closed = std::fclose(file.release()) == 0;
    if (!flushed) Fail(error, path);
    if (!closed) Fail(errno, path);
}

// The file a link stands for, so that replacing it keeps the link.
std::string Target(std::string_view path)
{
    const std::string existing = ExistingPath(path);
    std::error_code failed;
    const fs::path target = fs::canonical(existing, failed);
    return failed ? existing : target.string();
}

// A new file beside `path`; one that a power cut left behind is taken over. Null when the folder
// refuses new files.
OpenFile OpenBeside(const std::string& path)
{
    std::error_code ignored;
    fs::remove(path, ignored);
    return OpenFile(std::fopen(path.c_str(), "wbx"));
}

void Replace(const std::string& path, const std::string& beside, OpenFile file,
             std::string_view content)
{
    try {
        // Before it takes the former file's place: a power cut leaves one of the two, whole.
        WriteAll(std::move(file), content, beside, Until::OnDisk);
        std::error_code failed;
        const fs::file_status former = fs::status(path, failed);
        if (fs::exists(former)) fs::permissions(beside, former.permissions(), failed);
        fs::rename(beside, path, failed);
        if (failed) Fail(failed.value(), path);
    } catch (const base::NumberedError&) {
        std::error_code ignored;
        fs::remove(beside, ignored);
        throw;
    }
}

// Whether the file ends within a line, as a power cut may leave it. One that is no file or cannot
// be read does not.
bool EndsWithinALine(const std::string& path)
{
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) return false;
    const OpenFile file(std::fopen(path.c_str(), "rb"));
    if (!file || std::fseek(file.get(), -1, SEEK_END) != 0) return false;
    const int last = std::fgetc(file.get());
    return last != EOF && last != '\n';
}

}  // namespace

bool StdFiles::Exists(std::string_view path) const
{
    std::error_code failed;
    const fs::file_status status = fs::status(ExistingPath(path), failed);
    return fs::exists(status) && !fs::is_directory(status);
}

std::string StdFiles::Read(std::string_view path) const
{
    const std::string existing = ExistingPath(path);
    const OpenFile file = Open(existing, "rb");
    std::string content;
    std::array<char, 4096> part{};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), file.get()))
        content.append(part.data(), count);
    if (std::ferror(file.get()) != 0) Fail(errno, existing);
    return content;
}

void StdFiles::Write(std::string_view path, std::string_view content)
{
    const std::string target = Target(path);
    // A file that may not be written is not replaced either, even when its folder would allow it.
    if (Exists(target)) Open(target, "r+b");
    const std::string beside = target + ".new";
    if (OpenFile file = OpenBeside(beside))
        Replace(target, beside, std::move(file), content);
    else
        WriteAll(Open(target, "wb"), content, target);
}

void StdFiles::Append(std::string_view path, std::string_view content)
{
    const std::string existing = ExistingPath(path);
    OpenFile file = Open(existing, "ab");
    std::error_code noLength;
    const std::uintmax_t length = fs::file_size(existing, noLength);
    const std::string lineBreak = EndsWithinALine(existing) ? kLineBreak : "";
    try {
        WriteAll(std::move(file), lineBreak + std::string(content), existing);
    } catch (const base::NumberedError&) {
        // What a full disk took of it goes again, so that the next one starts on its own line.
        std::error_code ignored;
        if (!noLength) fs::resize_file(existing, length, ignored);
        throw;
    }
}

}  // namespace platform
