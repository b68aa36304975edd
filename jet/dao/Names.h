// SPDX-License-Identifier: Apache-2.0
// Names: how a caller may write the name of a table or field.
#pragma once

#include <string_view>

namespace dao {

// The name inside "[WO#]", or the name as it is.
[[nodiscard]] constexpr std::string_view WithoutBrackets(std::string_view name)
{
    const bool bracketed = name.size() >= 2 && name.front() == '[' && name.back() == ']';
    return bracketed ? name.substr(1, name.size() - 2) : name;
}

}  // namespace dao
