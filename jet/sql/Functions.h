// SPDX-License-Identifier: Apache-2.0
// Functions: what an expression may call.                                docs/sql.md lists them
#pragma once

#include "base/Value.h"
#include "jet/format/TableDefinition.h"
#include "jet/sql/Ast.h"

#include <functional>
#include <span>
#include <string_view>

namespace jet::sql {

// What expressions ask of the world around the row.
struct Environment {
    std::function<base::Date()> now;
    format::SortOrder order;  // in which texts are compared
};

using Arguments = std::span<const base::Value>;
using FunctionBody = base::Value (*)(Arguments, const Environment&);

enum class OnNull { AnswersNull, IsCalled };

// Errors of the bodies: the run time's numbers (5, 6, 13, 94); the evaluator translates them.
struct FunctionInfo {
    std::string_view name;
    std::size_t fewest = 0, most = 0;  // arguments
    ValueKind result = ValueKind::Any;
    FunctionBody body = nullptr;  // null: the evaluator itself, which evaluates only what is needed
    OnNull onNull = OnNull::AnswersNull;
};

inline constexpr std::size_t kAnyCount = 30;  // arguments of Switch and Choose

// Nothing for an unknown name. Rule: case is ignored.
[[nodiscard]] const FunctionInfo* FindFunction(std::string_view name);

[[nodiscard]] std::span<const FunctionInfo> TextFunctions();
[[nodiscard]] std::span<const FunctionInfo> NumberFunctions();
[[nodiscard]] std::span<const FunctionInfo> DateFunctions();

}  // namespace jet::sql
