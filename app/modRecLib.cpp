// SPDX-License-Identifier: Apache-2.0
#include "app/modRecLib.h"

namespace lodrin {

base::Value fnCN(const base::Value& value, std::int16_t typeCode)
{
    if (!value.IsNull()) return value;
    if (typeCode == kString || typeCode == kVariant) return "";
    return 0;
}

}  // namespace lodrin
