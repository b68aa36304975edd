// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/Catalog.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/SystemTables.h"
#include "jet/catalog/TableDesign.h"
#include "jet/catalog/TableMaker.h"
#include "jet/format/PropertyBlock.h"
#include "jet/format/SortKey.h"
#include "jet/table/NativeTable.h"

namespace jet::catalog {

namespace {

using table::NativeTable;

// Flag bits of the engine's own objects and of those the office suite keeps.
constexpr std::uint32_t kEngineObject = 0x80000000, kSuiteObject = 0x00000002;

ObjectKind KindOf(std::int16_t type, std::int32_t parent)
{
    if (parent != kTablesContainer) return ObjectKind::Other;
    switch (static_cast<ObjectType>(type)) {
    case ObjectType::Table:
        return ObjectKind::LocalTable;
    case ObjectType::OdbcTable:
        return ObjectKind::OdbcTable;
    case ObjectType::Query:
        return ObjectKind::Query;
    case ObjectType::LinkedTable:
        return ObjectKind::LinkedTable;
    case ObjectType::Database:
    case ObjectType::Container:
    case ObjectType::Relationship:
        break;
    }
    return ObjectKind::Other;
}

// MSysObjects with the places of the columns that the catalog reads.
class Objects {
public:
    explicit Objects(const std::shared_ptr<pages::Pager>& pager) : table_(pager, kObjectsPage)
    {
        id_ = PlaceOf(table_, "Id");
        parent_ = PlaceOf(table_, "ParentId");
        name_ = PlaceOf(table_, "Name");
        type_ = PlaceOf(table_, "Type");
        flags_ = PlaceOf(table_, "Flags");
        properties_ = PlaceOf(table_, "LvProp");
    }

    [[nodiscard]] NativeTable& Table() { return table_; }
    // The order in which this database compares names.
    [[nodiscard]] format::SortOrder Order() const { return NameColumn().sortOrder; }
    [[nodiscard]] DatabaseText Text() const
    {
        return {NameColumn().sortOrder, NameColumn().codePage, NameColumn().country};
    }

    [[nodiscard]] CatalogEntry Entry(const format::RowView& row) const
    {
        CatalogEntry entry;
        entry.id = ContentOf<std::int32_t>(table_, row, id_);
        entry.name = ContentOf<std::string>(table_, row, name_);
        entry.kind = KindOf(ContentOf<std::int16_t>(table_, row, type_),
                            ContentOf<std::int32_t>(table_, row, parent_));
        entry.flags = static_cast<std::uint32_t>(ContentOf<std::int32_t>(table_, row, flags_));
        entry.system = (entry.flags & (kEngineObject | kSuiteObject)) != 0;
        return entry;
    }

    // The entry of that name and its row's place; only what shares the tables' names counts.
    [[nodiscard]] std::optional<std::pair<CatalogEntry, format::RowId>>
    Find(std::string_view name) const
    {
        const auto rows = table_.Scan();
        while (rows->Next()) {
            CatalogEntry entry = Entry(rows->Row());
            if (entry.kind == ObjectKind::Other) continue;
            if (base::SameName(entry.name, name) ||
                format::CompareText(entry.name, name, Order()) == 0)
                return std::pair{std::move(entry), rows->Id()};
        }
        return std::nullopt;
    }

    // The table whose definition begins on this page.
    [[nodiscard]] std::optional<CatalogEntry> Find(format::PageNumber page) const
    {
        const auto rows = table_.Scan();
        while (rows->Next()) {
            CatalogEntry entry = Entry(rows->Row());
            if (entry.kind == ObjectKind::LocalTable &&
                entry.id == static_cast<std::int32_t>(Raw(page)))
                return entry;
        }
        return std::nullopt;
    }

    [[nodiscard]] base::Bytes Properties(format::RowId id) const
    {
        const auto row = table_.Fetch(id);
        return row ? ContentOf<base::Bytes>(table_, table_.View(*row), properties_) : base::Bytes{};
    }

    [[nodiscard]] std::vector<CatalogEntry> All() const
    {
        std::vector<CatalogEntry> entries;
        const auto rows = table_.Scan();
        while (rows->Next())
            entries.push_back(Entry(rows->Row()));
        return entries;
    }

private:
    [[nodiscard]] const format::ColumnDefinition& NameColumn() const
    {
        return table_.Definition().columns[name_];
    }

    NativeTable table_;
    std::size_t id_ = 0, parent_ = 0, name_ = 0, type_ = 0, flags_ = 0, properties_ = 0;
};

// What damaged bytes raise.
constexpr int kDamaged = 3343, kUnreadable = 3049;

// Errors: 3343.
void TakeProperties(OpenTable& table, const base::Bytes& bytes, std::uint16_t codePage)
{
    const auto block =
        bytes.empty() ? format::PropertyBlock() : format::PropertyBlock::Parse(bytes, codePage);
    for (const format::ColumnDefinition& column : table.rows->Definition().columns)
        table.properties.push_back(ReadProperties(block, column.name));
    table.rule = ReadRule(block, {});
}

}  // namespace

Catalog::Catalog(std::shared_ptr<pages::Pager> pager) : pager_(std::move(pager)) {}

Catalog::~Catalog() = default;

std::vector<CatalogEntry> Catalog::Entries() const
{
    return Objects(pager_).All();
}

std::optional<CatalogEntry> Catalog::Find(std::string_view name) const
{
    auto found = Objects(pager_).Find(name);
    if (!found) return std::nullopt;
    return std::move(found->first);
}

std::optional<CatalogEntry> Catalog::Find(format::PageNumber page) const
{
    return Objects(pager_).Find(page);
}

OpenTable Catalog::Open(std::string_view name) const
{
    const Objects objects(pager_);
    auto found = objects.Find(name);
    if (!found) throw base::NumberedError(3078, {std::string(name)});
    if (found->first.kind != ObjectKind::LocalTable)
        throw base::NumberedError(3078, {std::string(name)}).At("no table of this file");

    OpenTable table;
    table.entry = std::move(found->first);
    table.rows = std::make_unique<NativeTable>(
        pager_, format::PageNumber{static_cast<std::uint32_t>(table.entry.id)}, table.entry.name);
    table.bytesPerCharacter = pager_->Version().bytesPerCharacter;
    try {
        TakeProperties(table, objects.Properties(found->second), objects.Text().codePage);
    } catch (const base::NumberedError& error) {
        // A disk that fails this once may answer the next time.
        if (error.Number() != kDamaged && error.Number() != kUnreadable) throw;
        table.properties.assign(table.rows->Definition().columns.size(), {});
        table.unread = base::NumberedError(error.Number(), {table.entry.name}).At(error.Detail());
    }
    return table;
}

void Catalog::RequireFreeName(const std::string& name) const
{
    const auto taken = Find(name);
    if (!taken) return;
    throw base::NumberedError(taken->kind == ObjectKind::Query ? 3012 : 3010, {name});
}

void Catalog::Create(const NewTable& wish, base::Date now)
{
    Objects objects(pager_);
    const format::TableDefinition table = DesignOf(wish, objects.Text(), pager_->Version());
    RequireFreeName(wish.name);
    const base::Bytes owner = OwnerOfDatabase(objects.Table());
    NativeTable rights(pager_, kRightsPage);

    pages::Write(*pager_, [&](pages::WriteSet& changes) {
        RequireFreeName(wish.name);
        // The table's own pages come first, so that the catalog's row never names what is not
        // there.
        format::TableDefinition made = table;
        made.page = changes.Allocate();
        MapPages maps(changes);
        MakeMapsAndRoots(changes, maps, made);
        WriteDefinition(changes, made);

        const auto id = static_cast<std::int32_t>(Raw(made.page));
        InsertObject(changes, objects.Table(),
                     {.id = id,
                      .parent = kTablesContainer,
                      .name = wish.name,
                      .type = ObjectType::Table,
                      .flags = 0,
                      .owner = owner,
                      .created = now,
                      .properties = PropertiesOf(wish, objects.Text().codePage)});
        InsertInheritedRights(changes, rights, id, kTablesContainer, owner);
    });
}

}  // namespace jet::catalog
