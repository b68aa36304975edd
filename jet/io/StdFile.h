// SPDX-License-Identifier: Apache-2.0
// StdFileSystem: the files of this machine.
#pragma once

#include "jet/io/File.h"

namespace jet::io {

// Rule: a file that may not be written opens when it is asked for ReadOnly, otherwise raises 3051.
class StdFileSystem : public FileSystem {
public:
    [[nodiscard]] std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override;
    [[nodiscard]] std::unique_ptr<File> Create(const std::string& path) override;
    [[nodiscard]] bool Exists(const std::string& path) const override;
    void Remove(const std::string& path) override;
    void Rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] std::string Canonical(const std::string& path) const override;
};

// The name by which others on the network know this machine.
[[nodiscard]] std::string MachineName();

}  // namespace jet::io
