// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/Catalog.h"
#include "jet/catalog/SystemTables.h"
#include "jet/catalog/TableDesign.h"
#include "jet/catalog/TableMaker.h"
#include "jet/format/HeaderPage.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/table/NativeTable.h"

#include <algorithm>
#include <array>
#include <bit>

namespace jet::catalog {

namespace {

using format::ColumnType;
using format::FileVersion;
using format::TableDefinition;
using table::NativeTable;

// The accounts of a new file, before they are masked.
using AccountId = std::array<std::uint8_t, 2>;
constexpr AccountId kEngine{0x02, 0x03}, kAdmin{0x03, 0x01}, kCreator{0x02, 0x04},
    kUsers{0x02, 0x01};

// The moment every system row of a new file carries.
constexpr std::uint64_t kCreatedBits = 0x40E4AB3E3BD3FB4E;

constexpr std::uint32_t kEngineObject = 0x80000000;
// Column flags of system tables, and of their columns that hold account ids.
constexpr std::uint8_t kSystemColumn = 0x10, kAccountColumn = 0x20;

NewColumn Column(const char* name, ColumnType type)
{
    NewColumn column;
    column.name = name;
    column.type = type;
    return column;
}

NewTable ObjectsWish()
{
    using enum ColumnType;
    return {.name = "MSysObjects",
            .columns = {Column("Id", Long), Column("ParentId", Long), Column("Name", Text),
                        Column("Type", Integer), Column("DateCreate", Date),
                        Column("DateUpdate", Date), Column("Owner", Binary), Column("Flags", Long),
                        Column("Database", Memo), Column("Connect", Memo),
                        Column("ForeignName", Text), Column("RmtInfoShort", Binary),
                        Column("RmtInfoLong", Ole), Column("Lv", Ole), Column("LvProp", Ole),
                        Column("LvModule", Ole), Column("LvExtra", Ole)},
            .indexes = {{.name = "ParentIdName",
                         .columns = {{.column = "ParentId"}, {.column = "Name"}},
                         .unique = true},
                        {.name = "Id", .columns = {{.column = "Id"}}, .unique = true}}};
}

NewTable RightsWish()
{
    using enum ColumnType;
    return {
        .name = "MSysACEs",
        .columns = {Column("ObjectId", Long), Column("SID", Binary), Column("ACM", Long),
                    Column("FInheritable", Boolean)},
        .indexes = {{.name = "ObjectId", .columns = {{.column = "ObjectId"}}, .required = true}}};
}

NewTable QueriesWish(const FileVersion& version)
{
    using enum ColumnType;
    NewTable wish{
        .name = "MSysQueries",
        .columns = {Column("ObjectId", Long), Column("Attribute", Byte), Column("Order", Binary),
                    Column("Name1", Text), Column("Name2", Text), Column("Expression", Memo),
                    Column("Flag", Integer)},
        .indexes = {
            {.name = "ObjectIdAttribute",
             .columns = {{.column = "ObjectId"}, {.column = "Attribute"}, {.column = "Order"}},
             .unique = true}}};
    if (version.code >= format::kJet4.code) wish.columns.push_back(Column("LvExtra", Long));
    return wish;
}

NewTable RelationshipsWish()
{
    using enum ColumnType;
    const auto over = [](const char* column) {
        return NewIndex{.name = column, .columns = {{.column = column}}, .ignoreNulls = true};
    };
    return {.name = "MSysRelationships",
            .columns = {Column("szRelationship", Text), Column("grbit", Long),
                        Column("ccolumn", Long), Column("icolumn", Long), Column("szObject", Text),
                        Column("szColumn", Text), Column("szReferencedObject", Text),
                        Column("szReferencedColumn", Text)},
            .indexes = {over("szRelationship"), over("szObject"), over("szReferencedObject")}};
}

// Turns an ordinary design into that of a system table, whose primary key (when it has one) asks
// for no value.
TableDefinition SystemDesign(const NewTable& wish, const FileVersion& version,
                             format::PageNumber page, const char* primary)
{
    TableDefinition table = DesignOf(wish, NewDatabaseText(version), version);
    table.page = page;
    table.systemTable = true;
    for (format::ColumnDefinition& column : table.columns) {
        column.ordinal = 0;
        column.flags |= kSystemColumn;
        if (column.name == "Owner" || column.name == "SID") column.flags |= kAccountColumn;
    }
    if (version.definition->systemColumnsByName) {
        std::sort(table.columns.begin(), table.columns.end(),
                  [](const auto& left, const auto& right) { return left.name < right.name; });
    }
    for (format::NamedIndex& index : table.namedIndexes)
        if (index.name == primary) index.kind = format::kPrimaryKey;
    return table;
}

void MakeSystemTables(pages::WriteSet& changes)
{
    const FileVersion& version = changes.Of().Version();
    std::array<TableDefinition, 4> tables{
        SystemDesign(ObjectsWish(), version, kObjectsPage, "Id"),
        SystemDesign(RightsWish(), version, kRightsPage, ""),
        SystemDesign(QueriesWish(version), version, kQueriesPage, "ObjectIdAttribute"),
        SystemDesign(RelationshipsWish(), version, kRelationshipsPage, "")};
    // The file is new, so these four are the pages at which every reader looks for them.
    for (TableDefinition& table : tables)
        table.page = changes.Allocate();
    MapPages maps(changes);
    for (TableDefinition& table : tables)
        MakeMapsAndRoots(changes, maps, table);
    for (TableDefinition& table : tables)
        WriteDefinition(changes, table);
}

base::Bytes Account(const AccountId& id, const FileVersion& version)
{
    const auto& mask = version.header->newAccountMask;
    return {static_cast<std::byte>(id[0] ^ mask[0]), static_cast<std::byte>(id[1] ^ mask[1])};
}

void FillObjects(pages::WriteSet& changes, NativeTable& objects)
{
    const FileVersion& version = changes.Of().Version();
    base::Date created;
    static_assert(sizeof(created.days) == sizeof(kCreatedBits));
    created.days = std::bit_cast<double>(kCreatedBits);
    const auto add = [&](std::int32_t id, std::int32_t parent, const char* name, ObjectType type,
                         const AccountId& owner) {
        InsertObject(changes, objects,
                     {.id = id,
                      .parent = parent,
                      .name = name,
                      .type = type,
                      .flags = kEngineObject,
                      .owner = Account(owner, version),
                      .created = created,
                      .properties = {}});
    };
    add(kTablesContainer, kRootContainer, "Tables", ObjectType::Container, kEngine);
    add(kDatabasesContainer, kRootContainer, "Databases", ObjectType::Container, kEngine);
    add(kRelationshipsContainer, kRootContainer, "Relationships", ObjectType::Container, kEngine);
    add(kDatabaseObject, kDatabasesContainer, "MSysDb", ObjectType::Database, kAdmin);
    add(2, kTablesContainer, "MSysObjects", ObjectType::Table, kEngine);
    add(3, kTablesContainer, "MSysACEs", ObjectType::Table, kEngine);
    add(4, kTablesContainer, "MSysQueries", ObjectType::Table, kEngine);
    add(5, kTablesContainer, "MSysRelationships", ObjectType::Table, kEngine);
}

void FillRights(pages::WriteSet& changes, NativeTable& rights)
{
    const FileVersion& version = changes.Of().Version();
    const auto add = [&](std::int32_t object, const AccountId& account, std::int32_t allowed,
                         bool inheritable = false) {
        InsertRights(changes, rights,
                     {.object = object,
                      .account = Account(account, version),
                      .rights = allowed,
                      .inheritable = inheritable});
    };
    add(2, kAdmin, 0x60000);
    add(3, kAdmin, 0x60000);
    add(4, kAdmin, 0x60000);
    add(5, kAdmin, 0xE0000);
    add(kTablesContainer, kCreator, 0xF00FE, true);
    add(kTablesContainer, kAdmin, 0x60001);
    add(kRelationshipsContainer, kCreator, 0xF00FE, true);
    add(kRelationshipsContainer, kAdmin, 0x60001);
    add(kDatabasesContainer, kAdmin, 0x60000);
    add(kDatabaseObject, kAdmin, 0x6000E);
    add(kDatabaseObject, kUsers, 0x0000E);
    add(4, kUsers, 0x00014);
    add(5, kUsers, 0x00014);
    add(2, kUsers, 0x00014);
    add(kTablesContainer, kUsers, 0xFFEFF, true);
    add(kRelationshipsContainer, kUsers, 0xFFFFF, true);
}

void FillNewFile(const std::shared_ptr<pages::Pager>& pager)
{
    pages::WriteSet changes(*pager);
    MakeSystemTables(changes);
    NativeTable objects(pager, kObjectsPage);
    FillObjects(changes, objects);
    NativeTable rights(pager, kRightsPage);
    FillRights(changes, rights);
    changes.Commit();
}

}  // namespace

void Catalog::CreateDatabase(io::FileSystem& files, const std::string& path,
                             const format::FileVersion& version,
                             const format::Protection& protection)
{
    auto pager = pages::Pager::Create(files, path, version, protection);
    try {
        FillNewFile(pager);
    } catch (...) {
        // Half a database is worse than none.
        pager.reset();
        files.Remove(path);
        throw;
    }
}

}  // namespace jet::catalog
