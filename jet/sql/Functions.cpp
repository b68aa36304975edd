// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Functions.h"

#include "base/Text.h"

#include <array>

namespace jet::sql {

namespace {

// Those of which the evaluator evaluates only the branch that is needed.
constexpr std::array<FunctionInfo, 3> kChoices{{
    {"IIf", 3, 3, ValueKind::Any, nullptr, OnNull::IsCalled},
    {"Switch", 2, kAnyCount, ValueKind::Any, nullptr, OnNull::IsCalled},
    {"Choose", 2, kAnyCount, ValueKind::Any, nullptr, OnNull::IsCalled},
}};

}  // namespace

const FunctionInfo* FindFunction(std::string_view name)
{
    for (const std::span<const FunctionInfo> group :
         {TextFunctions(), NumberFunctions(), DateFunctions(),
          std::span<const FunctionInfo>(kChoices)}) {
        for (const FunctionInfo& function : group)
            if (base::SameName(function.name, name)) return &function;
    }
    return nullptr;
}

}  // namespace jet::sql
