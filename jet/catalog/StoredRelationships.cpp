// SPDX-License-Identifier: Apache-2.0
// The relationships that a catalog lists, and the making of new ones.
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/Catalog.h"
#include "jet/catalog/RelationshipMaker.h"
#include "jet/catalog/SystemTables.h"
#include "jet/catalog/TableDesign.h"

#include <algorithm>

namespace jet::catalog {

namespace {

using base::NumberedError;
using format::PageNumber;
using table::Assignment;
using table::NativeTable;

constexpr std::size_t kMostColumns = 10;

// The page of a table of this file. Errors: 3011.
PageNumber PageOf(const Catalog& catalog, const std::string& name)
{
    const auto entry = catalog.Find(name);
    if (!entry || entry->kind != ObjectKind::LocalTable) throw NumberedError(3011, {name});
    return PageNumber{static_cast<std::uint32_t>(entry->id)};
}

// Errors: 3125, 3001, 3012.
void RequireMakeable(const NewRelationship& wish, const std::vector<NewRelationship>& known)
{
    RequireGoodName(wish.name);
    if (wish.columns.empty() || wish.columns.size() > kMostColumns) throw NumberedError(3001);
    for (const NewRelationship& one : known)
        if (base::SameName(one.name, wish.name)) throw NumberedError(3012, {wish.name});
}

// Names as the tables have them. Errors: 3018.
void TakeStoredNames(NewRelationship& wish, const pages::Pager& pager, PageNumber referenced,
                     PageNumber referencing)
{
    const auto stored = [](const format::TableDefinition& table, std::string& name) {
        const auto place = table.FindColumn(name);
        if (!place) throw NumberedError(3018);
        name = table.columns[*place].name;
    };
    const auto one = table::LoadDefinition(pager, referenced);
    const auto many = table::LoadDefinition(pager, referencing);
    for (NewRelationship::Pair& pair : wish.columns) {
        stored(one, pair.referenced);
        stored(many, pair.referencing);
    }
}

void InsertPairs(pages::WriteSet& changes, NativeTable& relationships, const NewRelationship& wish)
{
    const auto at = [&](const char* column) { return PlaceOf(relationships, column); };
    const auto count = static_cast<std::int32_t>(wish.columns.size());
    for (std::int32_t i = 0; i < count; ++i) {
        const NewRelationship::Pair& pair = wish.columns[static_cast<std::size_t>(i)];
        const std::vector<Assignment> row{{at("szRelationship"), wish.name},
                                          {at("grbit"), static_cast<std::int32_t>(wish.flags)},
                                          {at("ccolumn"), count},
                                          {at("icolumn"), i},
                                          {at("szObject"), wish.referencing},
                                          {at("szColumn"), pair.referencing},
                                          {at("szReferencedObject"), wish.referenced},
                                          {at("szReferencedColumn"), pair.referenced}};
        static_cast<void>(relationships.Insert(changes, row));
    }
}

// Its design has changed now.
void Touch(pages::WriteSet& changes, NativeTable& objects, PageNumber table, base::Date now)
{
    const std::size_t id = PlaceOf(objects, "Id");
    const std::vector<Assignment> date{{PlaceOf(objects, "DateUpdate"), now}};
    const auto rows = objects.Scan();
    while (rows->Next()) {
        if (ContentOf<std::int32_t>(objects, rows->Row(), id) !=
            static_cast<std::int32_t>(Raw(table)))
            continue;
        return objects.Update(changes, rows->Id(), date);
    }
}

// The objects of relationships of that name.
std::vector<std::int32_t> ObjectsNamed(const NativeTable& objects, const std::string& name)
{
    const std::size_t id = PlaceOf(objects, "Id"), type = PlaceOf(objects, "Type"),
                      named = PlaceOf(objects, "Name");
    constexpr auto kWanted = static_cast<std::int16_t>(ObjectType::Relationship);
    std::vector<std::int32_t> found;
    const auto rows = objects.Scan();
    while (rows->Next())
        if (ContentOf<std::int16_t>(objects, rows->Row(), type) == kWanted &&
            base::SameName(ContentOf<std::string>(objects, rows->Row(), named), name))
            found.push_back(ContentOf<std::int32_t>(objects, rows->Row(), id));
    return found;
}

}  // namespace

std::vector<NewRelationship> Catalog::Relationships() const
{
    const NativeTable table(pager_, kRelationshipsPage);
    const auto text = [&](const format::RowView& row, const char* column) {
        return ContentOf<std::string>(table, row, PlaceOf(table, column));
    };
    const auto number = [&](const format::RowView& row, const char* column) {
        return ContentOf<std::int32_t>(table, row, PlaceOf(table, column));
    };
    std::vector<NewRelationship> all;
    const auto rows = table.Scan();
    while (rows->Next()) {
        const format::RowView& row = rows->Row();
        const std::string name = text(row, "szRelationship");
        auto known = std::find_if(all.begin(), all.end(), [&](const NewRelationship& one) {
            return base::SameName(one.name, name);
        });
        if (known == all.end()) {
            all.push_back({.name = name,
                           .referenced = text(row, "szReferencedObject"),
                           .referencing = text(row, "szObject"),
                           .columns = {},
                           .flags = static_cast<std::uint32_t>(number(row, "grbit"))});
            known = all.end() - 1;
        }
        const auto place = static_cast<std::size_t>(std::max(number(row, "icolumn"), 0));
        const std::size_t last = kMostColumns - 1;
        if (known->columns.size() <= std::min(place, last))
            known->columns.resize(std::min(place, last) + 1);
        known->columns[std::min(place, last)] = {text(row, "szReferencedColumn"),
                                                 text(row, "szColumn")};
    }
    return all;
}

void Catalog::Create(const NewRelationship& asked, base::Date now)
{
    NewRelationship wish = asked;
    RequireMakeable(wish, Relationships());
    const PageNumber referenced = PageOf(*this, wish.referenced);
    const PageNumber referencing = PageOf(*this, wish.referencing);
    TakeStoredNames(wish, *pager_, referenced, referencing);
    wish.referenced = Find(wish.referenced)->name;
    wish.referencing = Find(wish.referencing)->name;
    NativeTable objects(pager_, kObjectsPage), rights(pager_, kRightsPage),
        relationships(pager_, kRelationshipsPage);
    const base::Bytes owner = OwnerOfDatabase(objects);
    const format::SortOrder order =
        objects.Definition().columns[PlaceOf(objects, "Name")].sortOrder;

    // Whoever has one of them open goes on by the design that he has read.
    const bool enforced = (wish.flags & kNotEnforced) == 0;
    std::vector<std::shared_ptr<const void>> kept;
    if (enforced) kept.push_back(pager_->KeepTable(referencing, wish.referencing));
    if (enforced && referenced != referencing)
        kept.push_back(pager_->KeepTable(referenced, wish.referenced));
    pages::Write(*pager_, [&](pages::WriteSet& changes) {
        NewRelationship made = wish;
        if (enforced) {
            MakeRelationIndexes(changes, made, referenced, referencing, order);
            Touch(changes, objects, referenced, now);
            if (referencing != referenced) Touch(changes, objects, referencing, now);
        }
        InsertPairs(changes, relationships, made);
        const std::int32_t id = NextObjectId(objects);
        InsertObject(changes, objects,
                     {.id = id,
                      .parent = kRelationshipsContainer,
                      .name = made.name,
                      .type = ObjectType::Relationship,
                      .flags = 0,
                      .owner = owner,
                      .created = now,
                      .properties = {}});
        InsertInheritedRights(changes, rights, id, kRelationshipsContainer, owner);
    });
}

void Catalog::DeleteRelationship(std::string_view name, base::Date now)
{
    const std::vector<NewRelationship> all = Relationships();
    const auto gone = std::find_if(all.begin(), all.end(), [&](const NewRelationship& one) {
        return base::SameName(one.name, name);
    });
    if (gone == all.end()) throw NumberedError(3265);
    NativeTable objects(pager_, kObjectsPage), rights(pager_, kRightsPage),
        relationships(pager_, kRelationshipsPage);

    // Whoever has one of them open goes on by the design that he has read.
    std::vector<std::shared_ptr<const void>> kept;
    std::vector<PageNumber> tables;
    if ((gone->flags & kNotEnforced) == 0) {
        tables.push_back(PageOf(*this, gone->referencing));
        kept.push_back(pager_->KeepTable(tables.back(), gone->referencing));
        if (!base::SameName(gone->referencing, gone->referenced)) {
            tables.push_back(PageOf(*this, gone->referenced));
            kept.push_back(pager_->KeepTable(tables.back(), gone->referenced));
        }
    }
    pages::Write(*pager_, [&](pages::WriteSet& changes) {
        const auto rows = RowsWith(relationships, "szRelationship", gone->name);
        const bool isFound =
            tables.empty() || RemoveRelationIndexes(changes, gone->name, tables.front());
        // Where another program has deleted it meanwhile there is nothing left to do. Indexes under
        // another name would go on refusing rows for a relationship that nobody sees.
        if (!isFound && !rows.empty())
            throw base::NumberedError(3343).At("no index of the relationship " + gone->name);
        for (const PageNumber table : tables)
            Touch(changes, objects, table, now);
        for (const format::RowId row : rows)
            relationships.Delete(changes, row);
        for (const std::int32_t id : ObjectsNamed(objects, gone->name))
            DeleteObject(changes, objects, rights, id);
    });
}

}  // namespace jet::catalog
