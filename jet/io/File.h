// SPDX-License-Identifier: Apache-2.0
// File: what the engine needs of a file, and of the folder it lies in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace jet::io {

enum class OpenMode { ReadOnly, ReadWrite };
enum class LockKind { Shared, Exclusive };

struct ByteRange {
    std::uint64_t offset = 0, length = 0;
};

// One open file. Units: bytes.
// Errors: 3043 for a disk or network failure, 3026 when the disk is full, 3027 for a read-only
// file.
class File {
public:
    File() = default;
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    virtual ~File() = default;

    [[nodiscard]] virtual std::uint64_t Size() const = 0;
    // Fills `into` whole. Errors: 3043 when the file ends before.
    virtual void Read(std::uint64_t offset, std::span<std::byte> into) const = 0;
    // Writes at once; a write beyond the end lengthens the file.
    virtual void Write(std::uint64_t offset, std::span<const std::byte> bytes) = 0;
    virtual void Truncate(std::uint64_t size) = 0;
    // Returns when everything written so far, and the file's name, would survive a power cut.
    virtual void Flush() = 0;
    // Whether `path` still leads to this file; somebody may have removed or replaced it since.
    [[nodiscard]] virtual bool IsNamed(const std::string& path) const = 0;

    // Byte-range locks; a range may lie beyond the end of the file.
    // Rule: they belong to this open file: a second opening conflicts, in the same process too, and
    //       closing gives all of them back. Locks of one opening never conflict; they are replaced.
    [[nodiscard]] virtual bool TryLock(LockKind kind, std::uint64_t offset,
                                       std::uint64_t length) = 0;
    virtual void Unlock(std::uint64_t offset, std::uint64_t length) = 0;
    // A lock of somebody else inside this range.
    [[nodiscard]] virtual std::optional<ByteRange> FindLock(std::uint64_t offset,
                                                            std::uint64_t length) const = 0;
};

// The files of a machine, by host path.
class FileSystem {
public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    // Errors: 3024 no such file, 3044 no such folder, 3051 the system refuses, 3045 held
    // exclusively.
    [[nodiscard]] virtual std::unique_ptr<File> Open(const std::string& path, OpenMode mode) = 0;
    // Creates an empty file. Errors: 3204 when it exists, 3044, 3051.
    [[nodiscard]] virtual std::unique_ptr<File> Create(const std::string& path) = 0;
    [[nodiscard]] virtual bool Exists(const std::string& path) const = 0;
    virtual void Remove(const std::string& path) = 0;
    virtual void Rename(const std::string& from, const std::string& to) = 0;  // flushes the name
    // The one name of a file that two spellings of its path share.
    [[nodiscard]] virtual std::string Canonical(const std::string& path) const = 0;
};

}  // namespace jet::io
