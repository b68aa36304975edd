// SPDX-License-Identifier: Apache-2.0
// MemoryFileSystem: files that live as long as this object, for tests and for building a file at
// once.
#pragma once

#include "jet/io/File.h"

#include <map>
#include <vector>

namespace jet::io {

// Every path lies in a folder that exists.
class MemoryFileSystem : public FileSystem {
public:
    [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override;
    [[nodiscard]] std::unique_ptr<File> Create(const std::string& path) override;
    [[nodiscard]] bool Exists(const std::string& path) const override;
    void Remove(const std::string& path) override;
    void Rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] std::string Canonical(const std::string& path) const override;

    // The content of a file, to be looked at, changed or copied. Errors: 3024.
    [[nodiscard]] std::vector<std::byte>& Content(const std::string& path);

private:
    friend class MemoryFile;
    struct Lock {
        const void* owner = nullptr;  // the open file
        LockKind kind = LockKind::Exclusive;
        std::uint64_t begin = 0, end = 0;
    };
    struct Stored {
        std::vector<std::byte> bytes;
        std::vector<Lock> locks;
    };
    std::map<std::string, std::shared_ptr<Stored>> files_;
};

}  // namespace jet::io
