// SPDX-License-Identifier: Apache-2.0
// QtPaths: the program's folder, and the program's path spellings as this machine names them.
#pragma once

#include "platform/Paths.h"

namespace platform::qt {

class QtPaths : public Paths {
public:
    // The folder of the running program file.
    [[nodiscard]] static std::string RunningProgramFolder();

    // `driveRoot` is what a path that begins with a backslash begins at.
    explicit QtPaths(std::string programFolder, std::string driveRoot = "/");

    [[nodiscard]] std::string ProgramFolder() const override { return programFolder_; }
    [[nodiscard]] std::string WindowsDirectory() const override { return "/etc"; }
    // Rule: as long as the exact name exists it is taken; otherwise each part of the path that is
    //       missing is looked for without regard to case. What is nowhere keeps its spelling.
    [[nodiscard]] std::string ToHost(std::string_view path) const override;

private:
    std::string programFolder_;
    std::string driveRoot_;
};

}  // namespace platform::qt
