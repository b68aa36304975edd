// SPDX-License-Identifier: Apache-2.0
#include "jet/locks/Conflict.h"

namespace jet::locks {

using base::NumberedError;

NumberedError PageIsLocked(const Conflict& conflict)
{
    if (conflict.holder == Conflict::Holder::OwnProcess) return NumberedError(3188);
    const bool isRead = conflict.holder == Conflict::Holder::Reader;
    if (!conflict.user) return NumberedError(isRead ? 3046 : 3218);
    return NumberedError(isRead ? 3186 : 3260, {conflict.user->machine, conflict.user->name});
}

NumberedError TableIsKept(const std::string& table, const Conflict& conflict)
{
    if (!conflict.user) return NumberedError(3008, {table});
    return NumberedError(3189, {table, conflict.user->machine, conflict.user->name});
}

NumberedError TableIsDenied(const std::string& table, const Conflict& conflict)
{
    if (!conflict.user) return NumberedError(3009, {table});
    return NumberedError(3262, {table, conflict.user->machine, conflict.user->name});
}

}  // namespace jet::locks
