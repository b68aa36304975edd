// SPDX-License-Identifier: Apache-2.0
// Files: the small text files beside the program (profiles, log), by host path.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Errors: 53 no such file, 75 access refused or a folder, 76 no such folder, 70 locked,
//         61 disk full.
class Files {
public:
    Files() = default;
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;
    virtual ~Files() = default;

    // Whether a file (no folder) of that name is there; the case of names does not count.
    // Errors: none.
    [[nodiscard]] virtual bool Exists(std::string_view path) const = 0;
    [[nodiscard]] virtual std::string Read(std::string_view path) const = 0;
    // Replaces the content whole; the file is made when missing.
    virtual void Write(std::string_view path, std::string_view content) = 0;
    // Adds to the end, behind a line break where the last line has none; the file is made when
    // missing.
    virtual void Append(std::string_view path, std::string_view content) = 0;
};

}  // namespace platform
