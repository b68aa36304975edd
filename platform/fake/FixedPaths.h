// SPDX-License-Identifier: Apache-2.0
// FixedPaths: a program that lies where the test says.
#pragma once

#include "platform/Paths.h"

#include <algorithm>

namespace platform {

// Rule: a program path's host name is the path with "/" for each "\"; nothing is looked up.
class FixedPaths : public Paths {
public:
    std::string programFolder = "C:\\Lodrin";
    std::string windowsDirectory = "C:\\Windows";

    [[nodiscard]] std::string ProgramFolder() const override { return programFolder; }
    [[nodiscard]] std::string WindowsDirectory() const override { return windowsDirectory; }
    [[nodiscard]] std::string ToHost(std::string_view path) const override
    {
        std::string host(path);
        std::replace(host.begin(), host.end(), '\\', '/');
        return host;
    }
};

}  // namespace platform
