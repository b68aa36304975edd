// SPDX-License-Identifier: Apache-2.0
#include "app/modRecLib.h"

#include "app/ResumeNext.h"

namespace lodrin {

base::Value fnCN(Shop& shop, const base::Value& value, std::int16_t typeCode)
{
    const ResumeNext attempt(shop, "Sub modRecLib!General_fnCN()");
    const bool isText = typeCode == kString || typeCode == kVariant;
    base::Value result = isText ? base::Value("") : base::Value(0);
    attempt([&] {
        if (!value.IsNull()) result = value;
    });
    return result;
}

}  // namespace lodrin
