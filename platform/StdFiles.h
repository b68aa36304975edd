// SPDX-License-Identifier: Apache-2.0
// StdFiles: Files over the file system of this machine.
#pragma once

#include "platform/Files.h"

namespace platform {

// Rule: Write replaces the file through a new one beside it, so that a power cut leaves the old
//       content or the new; only where the folder refuses new files it writes in place. What
//       Append could not add whole it takes back.
class StdFiles : public Files {
public:
    [[nodiscard]] bool Exists(std::string_view path) const override;
    [[nodiscard]] std::string Read(std::string_view path) const override;
    void Write(std::string_view path, std::string_view content) override;
    void Append(std::string_view path, std::string_view content) override;
};

}  // namespace platform
