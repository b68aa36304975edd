// SPDX-License-Identifier: Apache-2.0
// QtInstance: one running copy per machine, by a lock that the system frees when the process ends.
#pragma once

#include "platform/Desktop.h"

#include <string>

namespace platform::qt {

// Rule: the file is never deleted and its content does not matter. When the lock cannot be made at
//       all, this copy counts as the only one: a shop must be able to clock in.
class QtInstance : public Instance {
public:
    // The lock all copies on this machine share.
    [[nodiscard]] static std::string MachineLockFile();

    explicit QtInstance(std::string lockFile) : lockFile_(std::move(lockFile)) {}
    ~QtInstance() override;

    // Takes the lock and holds it as long as this object lives.
    [[nodiscard]] bool AnotherRuns() override;

private:
    std::string lockFile_;
    int descriptor_ = -1;
};

}  // namespace platform::qt
