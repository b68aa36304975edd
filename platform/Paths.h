// SPDX-License-Identifier: Apache-2.0
// Paths: where the program lies, and what its path spellings mean on this machine.
#pragma once

#include <string>
#include <string_view>

namespace platform {

class Paths {
public:
    Paths() = default;
    Paths(const Paths&) = delete;
    Paths& operator=(const Paths&) = delete;
    virtual ~Paths() = default;

    // Folder of the program file, without a trailing separator.
    [[nodiscard]] virtual std::string ProgramFolder() const = 0;
    // The Windows directory; elsewhere the folder for profiles named without a folder.
    [[nodiscard]] virtual std::string WindowsDirectory() const = 0;
    // The host's name of a path as the program spells it (DataPath + "\\Kelvaro.mdb",
    // "\\Lodrin.Log"): separators made the host's; on case-sensitive systems an existing file of
    // another case is taken.
    [[nodiscard]] virtual std::string ToHost(std::string_view path) const = 0;
};

}  // namespace platform
