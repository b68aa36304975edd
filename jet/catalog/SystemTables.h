// SPDX-License-Identifier: Apache-2.0
// SystemTables: the rows by which a database knows its objects and who may use them.
#pragma once

#include "base/Value.h"
#include "jet/pages/WriteSet.h"
#include "jet/table/NativeTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet::catalog {

// Where the engine finds its own tables in every file.
inline constexpr format::PageNumber kObjectsPage{2}, kRightsPage{3}, kQueriesPage{4},
    kRelationshipsPage{5};

// Ids of the containers and of the database itself.
inline constexpr std::int32_t kRootContainer = 0x0F000000, kTablesContainer = 0x0F000001,
                              kDatabasesContainer = 0x0F000002,
                              kRelationshipsContainer = 0x0F000003, kDatabaseObject = 0x10000000;

// Codes of the column Type of MSysObjects.
enum class ObjectType : std::int16_t {
    Table = 1,
    Database = 2,
    Container = 3,
    OdbcTable = 4,
    Query = 5,
    LinkedTable = 6,
    Relationship = 8,
};

// A row of MSysObjects. Rule: properties and texts without content are stored as null.
struct ObjectRow {
    std::int32_t id = 0, parent = 0;
    std::string name;
    ObjectType type = ObjectType::Table;
    std::uint32_t flags = 0;
    base::Bytes owner;
    base::Date created;
    base::Bytes properties;
    std::string database = {}, connect = {}, foreignName = {};  // of a linked table
};

// A row of MSysACEs: what an account may do with an object.
struct RightsRow {
    std::int32_t object = 0;
    base::Bytes account;
    std::int32_t rights = 0;
    bool inheritable = false;
};

// Place of a system table's column. Errors: 3343 when the table lacks it.
[[nodiscard]] std::size_t PlaceOf(const table::NativeTable& table, std::string_view column);

// A column's content; that of a default T when it is null or of another kind.
template <class T>
[[nodiscard]] T ContentOf(const table::NativeTable& table, const format::RowView& row,
                          std::size_t column)
{
    const base::Value value = table.ValueOf(row, column);
    const T* content = value.As<T>();
    return content == nullptr ? T{} : *content;
}

void InsertObject(pages::WriteSet& changes, table::NativeTable& objects, const ObjectRow& row);
// Takes an object's row and the rows of its rights away.
void DeleteObject(pages::WriteSet& changes, table::NativeTable& objects, table::NativeTable& rights,
                  std::int32_t id);
// The rows of a system table that have this value in this column.
[[nodiscard]] std::vector<format::RowId>
RowsWith(const table::NativeTable& table, std::string_view column, const base::Value& value);
// An id for an object that has no definition page. Rule: they count up from 0x80000000.
[[nodiscard]] std::int32_t NextObjectId(const table::NativeTable& objects);

void InsertRights(pages::WriteSet& changes, table::NativeTable& rights, const RightsRow& row);

// The account that owns the database and with it what is made in it.
// Errors: 3343 when the database says of no owner.
[[nodiscard]] base::Bytes OwnerOfDatabase(const table::NativeTable& objects);

// The rows that give a new object the rights of its container.
void InsertInheritedRights(pages::WriteSet& changes, table::NativeTable& rights,
                           std::int32_t object, std::int32_t container, const base::Bytes& owner);

// The rights a new object takes over from its container.
//
// Rule:   of the container's inheritable rows each account gets one, its rights joined; the
//         placeholder "creator" becomes `owner`.
// Source: docs/format/catalog.md
[[nodiscard]] std::vector<RightsRow>
InheritedRights(const table::NativeTable& rights, std::int32_t container, const base::Bytes& owner);

}  // namespace jet::catalog
