// SPDX-License-Identifier: Apache-2.0
// FieldTypes: DAO's type codes and sizes for the columns of the file.
#pragma once

#include "jet/dao/Types.h"
#include "jet/format/TableDefinition.h"

#include <cstddef>
#include <optional>

namespace dao {

using jet::format::kLongestText;

[[nodiscard]] FieldType FieldTypeOf(jet::format::ColumnType type);
// Nothing for a type that no new field can have.
[[nodiscard]] std::optional<jet::format::ColumnType> ColumnTypeOf(FieldType type);

// Units: characters of text, bytes of everything else; 0 for long values.
[[nodiscard]] int FieldSizeOf(const jet::format::ColumnDefinition& column,
                              std::size_t bytesPerCharacter);

}  // namespace dao
