// SPDX-License-Identifier: Apache-2.0
// Schema: a table's definition as text, for people and for programs.
#pragma once

#include "jet/catalog/Catalog.h"

#include <string>

namespace tools {

// Several lines: the name, each field with its type, size, attributes and properties, each index.
[[nodiscard]] std::string SchemaText(const jet::catalog::OpenTable& table,
                                     std::size_t bytesPerCharacter);

// One JSON object on one line: table, rows, columns (name, type, length, autoNumber) and indexes
// (name, primary, unique, columns with + or - before each name).
// Units: length in characters for text, in bytes otherwise.
[[nodiscard]] std::string SchemaJson(const jet::catalog::OpenTable& table,
                                     std::size_t bytesPerCharacter);

}  // namespace tools
