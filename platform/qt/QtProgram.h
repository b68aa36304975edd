// SPDX-License-Identifier: Apache-2.0
// QtProgram: the program's version and the name of its file.
#pragma once

#include "platform/Desktop.h"

namespace platform::qt {

class QtProgram : public Program {
public:
    explicit QtProgram(Version version) : version_(version) {}

    [[nodiscard]] Version VersionNumbers() const override { return version_; }
    [[nodiscard]] std::string ExecutableName() const override;

private:
    Version version_;
};

}  // namespace platform::qt
