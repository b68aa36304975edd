// SPDX-License-Identifier: Apache-2.0
#include "base/Value.h"

namespace base {

bool Value::IsNumber() const noexcept
{
    return !IsNull() && !IsText() && !IsDate() && As<Bytes>() == nullptr && As<Guid>() == nullptr;
}

}  // namespace base
