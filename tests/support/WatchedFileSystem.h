// SPDX-License-Identifier: Apache-2.0
// WatchedFileSystem: another file system that tells of each call before it is made.
#pragma once

#include "jet/io/File.h"

#include <functional>
#include <memory>
#include <string>

namespace tests {

//     WatchedFileSystem disk(memory);
//     disk.beforeCall = [&] { if (++calls == 7) throw base::NumberedError(3043); };
//
// Rule: only calls that may fail are told; one that raises an error is not made.
class WatchedFileSystem : public jet::io::FileSystem {
public:
    // Requires: `below` outlives it, and it outlives its files.
    explicit WatchedFileSystem(jet::io::FileSystem& below) : below_(below) {}

    std::function<void()> beforeCall;
    // The call that it is told of: the function's name, a blank, and the path of the file.
    mutable std::string call;

    [[nodiscard]] std::unique_ptr<jet::io::File> Open(const std::string& path,
                                                      jet::io::OpenMode mode) override;
    [[nodiscard]] std::unique_ptr<jet::io::File> Create(const std::string& path) override;
    [[nodiscard]] bool Exists(const std::string& path) const override;
    void Remove(const std::string& path) override;
    void Rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] std::string Canonical(const std::string& path) const override;

    void Tell(const std::string& function, const std::string& path) const
    {
        call = function + " " + path;
        if (beforeCall) beforeCall();
    }

private:
    jet::io::FileSystem& below_;
};

}  // namespace tests
