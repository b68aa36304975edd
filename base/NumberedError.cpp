// SPDX-License-Identifier: Apache-2.0
#include "base/NumberedError.h"

namespace base {

NumberedError::NumberedError(int number, const std::vector<std::string>& marks)
    : std::runtime_error(ErrorText(number, marks)), number_(number)
{
}

NumberedError NumberedError::At(std::string_view detail) const
{
    NumberedError located = *this;
    located.detail_ = detail;
    return located;
}

}  // namespace base
