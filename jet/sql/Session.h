// SPDX-License-Identifier: Apache-2.0
// Session: what a statement runs against.
#pragma once

#include "jet/catalog/Catalog.h"
#include "jet/sql/Functions.h"

#include <functional>
#include <memory>
#include <string_view>

namespace jet::sql {

using TablePtr = std::shared_ptr<catalog::OpenTable>;

struct Session {
    // A table by its name, however spelled; null when there is none.
    std::function<TablePtr(std::string_view)> open;
    std::function<base::Date()> now;
    // Reads through its argument, again when somebody else wrote meanwhile; null: nobody does.
    std::function<void(const std::function<void()>&)> whole;
    std::size_t bytesPerCharacter = 2;  // of a text column's length; 1 in Jet 3 files
};

// How texts of this table compare: as its first text column says.
[[nodiscard]] format::SortOrder OrderOf(const format::TableDefinition& table);

// The environment of statements on a table.
[[nodiscard]] Environment EnvironmentFor(const Session& session,
                                         const format::TableDefinition& table);

}  // namespace jet::sql
