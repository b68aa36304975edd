// SPDX-License-Identifier: Apache-2.0
// ConnectText: the parts of a connect string, which tells how to reach another file.
#pragma once

#include <string>
#include <string_view>

namespace jet::catalog {

// "KIND;NAME=VALUE;NAME=VALUE", of which each part may be missing.
//
//     PartOf(";PWD=secret;DATABASE=/shop/Parts.mdb", "pwd")     // "secret"
//
// Rule: case is ignored in kind and names; the first of two parts of one name counts. A value ends
//       at the next semicolon, a path too.
[[nodiscard]] std::string_view PartOf(std::string_view connect, std::string_view name);
// All but the parts of that name. Rule: what remains when only semicolons do is nothing.
[[nodiscard]] std::string WithoutPart(std::string_view connect, std::string_view name);

// Whether it leads to a file of our own kind: it names no kind, or "MS Access".
[[nodiscard]] bool LeadsToOurKind(std::string_view connect);
// The first part where it is no NAME=VALUE. It may be told to anybody, for no password is in it.
[[nodiscard]] std::string_view KindIn(std::string_view connect);

}  // namespace jet::catalog
