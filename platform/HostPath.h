// SPDX-License-Identifier: Apache-2.0
// HostPath: the program's path spellings turned into names of files on this machine.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// The path with its separators made the host's; where they differ both "\" and "/" are read.
//
//     HostPath("/srv/shop\\Kelvaro.mdb")   // "/srv/shop/Kelvaro.mdb"
//     HostPath("\\Lodrin.Log")             // "/Lodrin.Log"
[[nodiscard]] std::string HostPath(std::string_view path);

// The spelling of an existing file or folder that differs from `path` at most in the case of ASCII
// letters; parts that exist in no spelling stay as given. Never fails.
[[nodiscard]] std::string ExistingPath(std::string_view path);

}  // namespace platform
