// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Session.h"

namespace jet::sql {

format::SortOrder OrderOf(const format::TableDefinition& table)
{
    for (const format::ColumnDefinition& column : table.columns) {
        if (column.type == format::ColumnType::Text || column.type == format::ColumnType::Memo)
            return column.sortOrder;
    }
    return {};
}

Environment EnvironmentFor(const Session& session, const format::TableDefinition& table)
{
    return {session.now, OrderOf(table)};
}

}  // namespace jet::sql
