// SPDX-License-Identifier: Apache-2.0
// ErrorOf: the number of the error a call ends with.
#pragma once

#include "base/NumberedError.h"

#include <concepts>

namespace tests {

// 0 when the call ends without an error.
//
//     EXPECT_EQ(ErrorOf([&] { records.MoveFirst(); }), 3021);
[[nodiscard]] int ErrorOf(std::invocable auto&& call)
{
    try {
        call();
    } catch (const base::NumberedError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace tests
