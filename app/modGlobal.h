// SPDX-License-Identifier: Apache-2.0
// modGlobal: the two settings files, and whether a file is there.
#pragma once

#include "platform/Services.h"

#include <string>
#include <string_view>

namespace lodrin {

// Both settings files lie in the program's folder and have the one section; the key is the product.
inline constexpr std::string_view kFileLoc = "FileLoc";
inline constexpr std::string_view kOstrelIni = "\\Ostrel.ini";
inline constexpr std::string_view kOstrelKey = "Ostrel";
inline constexpr std::string_view kLodrinIni = "\\Lodrin.ini";
inline constexpr std::string_view kLodrinKey = "Lodrin";

// The value of a key, whole; `defaultValue` when file, section or key is missing.
//
// Rule:   `file` without a folder lies in the Windows directory. The text may be UTF-8 or
//         Windows-1252.
// Errors: 6 for a value of 16382 bytes or more.
[[nodiscard]] std::string ReadIniString(const platform::Services& services,
                                        std::string_view section, std::string_view key,
                                        std::string_view defaultValue = "",
                                        std::string_view file = "win.ini");

// Rule: inverted on purpose: false means the value was written.
bool WriteIniString(const platform::Services& services, std::string_view section,
                    std::string_view key, std::string_view value, std::string_view file);

// Whether a file, and no folder, of that name is there. Never fails.
[[nodiscard]] bool FileExists(const platform::Services& services, std::string_view path);

}  // namespace lodrin
