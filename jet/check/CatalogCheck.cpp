// SPDX-License-Identifier: Apache-2.0
#include "jet/check/CatalogCheck.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/check/FieldContent.h"
#include "jet/check/LongValueCheck.h"
#include "jet/check/RelationshipCheck.h"
#include "jet/format/PropertyBlock.h"
#include "jet/format/TableDefinitionLayout.h"

#include <algorithm>
#include <set>

namespace jet::check {

namespace {

constexpr std::int32_t kRoot = 0x0F000000;
constexpr PageNumber kRights{3}, kQueries{4};
constexpr std::int16_t kLocalTable = 1, kOdbcTable = 4, kQuery = 5, kRelationship = 8;

// One row of the table of objects.
struct Object {
    RowId row;
    std::int32_t id = 0, parent = 0;
    std::int16_t type = 0;
    std::string name;
    bool owned = false;  // by some account
    std::optional<format::LongValueHeader> properties;
    std::vector<std::byte> propertiesInRow;
};

// Whether the column names an account.
bool NamesAccount(const format::RowView& row, std::string_view column)
{
    const auto account = ContentOf<base::Bytes>(row, column);
    return account && !account->empty();
}

std::optional<Object> ReadObject(const pages::Pager& pager, const TableFacts& objects, RowId row)
{
    const auto fetched = objects.Fetch(pager, row);
    if (!fetched) return std::nullopt;
    try {
        Object object{.row = row, .name = {}, .properties = {}, .propertiesInRow = {}};
        object.id = ContentOf<std::int32_t>(fetched->view, "Id").value_or(0);
        object.parent = ContentOf<std::int32_t>(fetched->view, "ParentId").value_or(0);
        object.type = ContentOf<std::int16_t>(fetched->view, "Type").value_or(0);
        object.name = ContentOf<std::string>(fetched->view, "Name").value_or("");
        object.owned = NamesAccount(fetched->view, "Owner");
        const auto column = objects.definition.FindColumn("LvProp");
        if (column && !fetched->view.IsNull(*column)) {
            const format::Span field = fetched->view.Field(*column);
            object.properties = format::ReadLongValueHeader(field);
            if (object.properties->form == format::LongValueForm::InRow &&
                field.size() > format::kLongValueHeaderSize)
                object.propertiesInRow.assign(
                    field.begin() + static_cast<std::ptrdiff_t>(format::kLongValueHeaderSize),
                    field.end());
        }
        return object;
    } catch (const base::NumberedError&) {
        return std::nullopt;  // found with the row
    }
}

std::vector<Object> ReadObjects(const pages::Pager& pager, const TableFacts& objects)
{
    std::vector<Object> all;
    for (const RowId row : objects.rows)
        if (auto object = ReadObject(pager, objects, row)) all.push_back(std::move(*object));
    return all;
}

class CatalogInspector {
public:
    CatalogInspector(Inspection& inspection, const Tables& tables, const TableFacts& objects)
        : inspection_(inspection), tables_(tables),
          objects_(ReadObjects(inspection.Pager(), objects))
    {
        for (const Object& object : objects_) {
            ids_.insert(object.id);
            if (object.type == kQuery) queries_.insert(object.id);
        }
    }

    void CheckObjects()
    {
        std::set<std::int32_t> ids;
        std::set<std::pair<std::int32_t, std::string>> names;
        for (const Object& object : objects_) {
            if (!ids.insert(object.id).second)
                Found(DefectKind::CatalogId, object, "has the id of another object");
            if (!names.emplace(object.parent, base::LowerName(object.name)).second)
                Found(DefectKind::CatalogName, object, "has the name of another object");
            if (object.parent != kRoot && !ids_.contains(object.parent))
                Found(DefectKind::CatalogParent, object,
                      "lies in container " + std::to_string(object.parent) +
                          ", which is not there");
            if (!object.owned) Found(DefectKind::CatalogAccount, object, "has no owner");
            CheckProperties(object);
        }
    }

    void CheckRights()
    {
        ForEachRow(kRights, [this](RowId row, const format::RowView& view) {
            const auto object = ContentOf<std::int32_t>(view, "ObjectId");
            if (!object || !ids_.contains(*object))
                FoundIn(row, DefectKind::CatalogRights,
                        "gives rights to object " + std::to_string(object.value_or(0)) +
                            ", which is not there");
            if (!NamesAccount(view, "SID"))
                FoundIn(row, DefectKind::CatalogAccount, "gives rights to no account");
        });
    }

    void CheckQueries()
    {
        ForEachRow(kQueries, [this](RowId row, const format::RowView& view) {
            const auto query = ContentOf<std::int32_t>(view, "ObjectId");
            if (query && queries_.contains(*query)) return;
            FoundIn(row, DefectKind::CatalogQuery,
                    "is part of query " + std::to_string(query.value_or(0)) +
                        ", which is not there");
        });
    }

    [[nodiscard]] ObjectNames Names() const
    {
        ObjectNames names;
        for (const Object& object : objects_) {
            std::string name = base::LowerName(object.name);
            if (object.type == kLocalTable)
                names.tables[std::move(name)] = PageNumber{static_cast<std::uint32_t>(object.id)};
            else if (object.type == kRelationship)
                names.relationships.insert(std::move(name));
            else
                names.others.insert(std::move(name));
        }
        return names;
    }

private:
    // The rows of a system table that can be read.
    template <class Visit>
    void ForEachRow(PageNumber page, Visit visit)
    {
        const auto table = tables_.find(page);
        if (table == tables_.end() || !table->second) return;
        for (const RowId row : table->second->rows) {
            const auto fetched = table->second->Fetch(inspection_.Pager(), row);
            if (!fetched) continue;
            try {
                visit(row, fetched->view);
            } catch (const base::NumberedError&) {
                continue;  // found with the row
            }
        }
    }

    void CheckProperties(const Object& object)
    {
        if (!object.properties || object.properties->length == 0) return;
        const auto bytes = object.properties->form == format::LongValueForm::InRow
                               ? std::optional(object.propertiesInRow)
                               : LongValueBytes(inspection_.Pager(), *object.properties);
        if (!bytes) return;  // found with the long values
        try {
            CheckOwners(object,
                        format::PropertyBlock::Parse(*bytes, inspection_.Pager().CodePage()));
        } catch (const base::NumberedError& error) {
            Found(DefectKind::CatalogProperties, object,
                  "has properties that cannot be read: " + error.Detail());
        }
    }

    // Properties are of the table itself or of a column that it has.
    void CheckOwners(const Object& object, const format::PropertyBlock& properties)
    {
        if (object.type != kLocalTable) return;
        const auto table = tables_.find(PageNumber{static_cast<std::uint32_t>(object.id)});
        if (table == tables_.end() || !table->second) return;
        for (const format::PropertyOwner& owner : properties.Owners()) {
            const bool known = owner.kind != format::PropertyOwner::Kind::Field ||
                               table->second->definition.FindColumn(owner.name);
            if (!known)
                Found(DefectKind::CatalogPropertiesOfNone, object,
                      "has properties of a column " + owner.name + ", which is not there");
        }
    }

    void FoundIn(RowId row, DefectKind kind, const std::string& what)
    {
        inspection_.Found(kind, row.page, 0, "row " + RowText(row) + " " + what);
    }

    void Found(DefectKind kind, const Object& object, const std::string& what)
    {
        inspection_.Found(kind, object.row.page, 0,
                          "object " + object.name + " (row " + RowText(object.row) + ") " + what);
    }

    Inspection& inspection_;
    const Tables& tables_;
    std::vector<Object> objects_;
    std::set<std::int32_t> ids_, queries_;
};

}  // namespace

std::vector<PageNumber> ListedTables(Inspection& inspection, const TableFacts& objects)
{
    std::vector<PageNumber> listed;
    for (const Object& object : ReadObjects(inspection.Pager(), objects)) {
        if (object.type != kLocalTable && object.type != kOdbcTable) continue;
        const PageNumber page{static_cast<std::uint32_t>(object.id)};
        const bool inside = object.id >= 2 && Raw(page) < inspection.Pager().PageCount();
        if (inside &&
            format::ReadU16(inspection.Pager().Read(page).Bytes(), 0) == format::kDefinitionPage) {
            listed.push_back(page);
            continue;
        }
        inspection.Found(DefectKind::CatalogObject, object.row.page, 0,
                         "object " + object.name + " (row " + RowText(object.row) +
                             ") is no table: no definition on page " + std::to_string(object.id));
    }
    std::sort(listed.begin(), listed.end());
    listed.erase(std::unique(listed.begin(), listed.end()), listed.end());
    return listed;
}

void CheckCatalog(Inspection& inspection, const Tables& tables)
{
    const auto objects = tables.find(kObjects);
    if (objects == tables.end() || !objects->second) return;
    CatalogInspector inspector(inspection, tables, *objects->second);
    inspector.CheckObjects();
    inspector.CheckRights();
    inspector.CheckQueries();
    CheckRelationships(inspection, tables, inspector.Names());
}

}  // namespace jet::check
