// SPDX-License-Identifier: Apache-2.0
// OwnMemory: what the system tells of this process's memory.
#pragma once

#include <string_view>

namespace tests {

// A figure of /proc/self/status, such as "VmHWM", the most this process ever had in memory. Units:
// kilobytes. Errors: std::runtime_error when the system does not tell it.
[[nodiscard]] long OwnMemory(std::string_view figure);

}  // namespace tests
