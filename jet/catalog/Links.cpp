// SPDX-License-Identifier: Apache-2.0
// The links of a catalog to tables of other files, and the making of new ones.
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/Catalog.h"
#include "jet/catalog/ConnectText.h"
#include "jet/catalog/SystemTables.h"
#include "jet/catalog/TableDesign.h"

namespace jet::catalog {

namespace {

constexpr std::uint32_t kLinkFlags = 0x00200000;

}  // namespace

std::optional<NewLink> Catalog::Link(std::string_view name) const
{
    const auto entry = Find(name);
    if (!entry || entry->kind != ObjectKind::LinkedTable) return std::nullopt;
    const table::NativeTable objects(pager_, kObjectsPage);
    const std::size_t id = PlaceOf(objects, "Id");
    const auto rows = objects.Scan();
    while (rows->Next()) {
        const format::RowView& row = rows->Row();
        if (ContentOf<std::int32_t>(objects, row, id) != entry->id) continue;
        const auto text = [&](const char* column) {
            return ContentOf<std::string>(objects, row, PlaceOf(objects, column));
        };
        NewLink link{entry->name, text("Database"), text("ForeignName"), text("Connect")};
        if (link.database.empty()) link.database = PartOf(link.connect, "DATABASE");
        return link;
    }
    return std::nullopt;
}

void Catalog::Create(const NewLink& link, base::Date now)
{
    RequireGoodName(link.name);
    table::NativeTable objects(pager_, kObjectsPage), rights(pager_, kRightsPage);
    const base::Bytes owner = OwnerOfDatabase(objects);
    pages::Write(*pager_, [&](pages::WriteSet& changes) {
        RequireFreeName(link.name);
        const std::int32_t id = NextObjectId(objects);
        InsertObject(changes, objects,
                     {.id = id,
                      .parent = kTablesContainer,
                      .name = link.name,
                      .type = ObjectType::LinkedTable,
                      .flags = kLinkFlags,
                      .owner = owner,
                      .created = now,
                      .properties = {},
                      .database = link.database,
                      .connect = link.connect,
                      .foreignName = link.table});
        InsertInheritedRights(changes, rights, id, kTablesContainer, owner);
    });
}

void Catalog::DeleteLink(std::string_view name)
{
    table::NativeTable objects(pager_, kObjectsPage), rights(pager_, kRightsPage);
    pages::Write(*pager_, [&](pages::WriteSet& changes) {
        const auto entry = Find(name);
        if (!entry || entry->kind == ObjectKind::Query) throw base::NumberedError(3265);
        if (entry->kind != ObjectKind::LinkedTable)
            throw base::NumberedError(3251).At("table " + entry->name +
                                               " lies in this file or on a server");
        DeleteObject(changes, objects, rights, entry->id);
    });
}

}  // namespace jet::catalog
