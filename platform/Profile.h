// SPDX-License-Identifier: Apache-2.0
// Profile: values in the sections of a profile (INI) file, read and written byte for byte.
#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

// What the system's profile reader answers for a buffer of `size` bytes: at most size - 1 of the
// value's bytes.
// Rule: section and key compare without case and outer blanks; the first match wins; one enclosing
//       pair of quotes is removed; a missing file, section or key reads as `fallback`.
[[nodiscard]] std::string ReadProfile(const Files& files, std::string_view path,
                                      std::string_view section, std::string_view key,
                                      std::string_view fallback, std::size_t size);

// Sets one key; every other line stays byte for byte. Returns whether it was written; never fails.
[[nodiscard]] bool WriteProfile(Files& files, std::string_view path, std::string_view section,
                                std::string_view key, std::string_view value);

}  // namespace platform
