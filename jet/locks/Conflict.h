// SPDX-License-Identifier: Apache-2.0
// Conflict: who stands in the way of a lock, and the error that says so.
#pragma once

#include "base/NumberedError.h"

#include <optional>
#include <string>

namespace jet::locks {

// How a user is named to others.
struct User {
    std::string machine;
    std::string name = "Admin";
};

struct Conflict {
    enum class Holder { Reader, Writer, OwnProcess } holder = Holder::Writer;
    std::optional<User> user;  // when his entry tells
};

// 3188 for another session of this process; for a page that is read 3186, or 3046 when nobody knows
// by whom; for one that is written 3260 or 3218.
[[nodiscard]] base::NumberedError PageIsLocked(const Conflict& conflict);
// A table that may not be read: 3189, or 3008 when nobody knows who keeps it.
[[nodiscard]] base::NumberedError TableIsKept(const std::string& table, const Conflict& conflict);
// A table that may not be written: 3262, or 3009.
[[nodiscard]] base::NumberedError TableIsDenied(const std::string& table, const Conflict& conflict);

}  // namespace jet::locks
