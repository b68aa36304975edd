// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/Core.h"

#include "base/NumberedError.h"
#include "jet/catalog/ConnectText.h"
#include "jet/sql/TableRules.h"

namespace dao {

using base::NumberedError;
using jet::catalog::CatalogEntry;
using jet::catalog::ObjectKind;

std::size_t Core::BytesPerCharacter() const
{
    return pager_->Version().bytesPerCharacter;
}

jet::sql::TablePtr Core::Table(std::string_view name)
{
    const std::optional<CatalogEntry> entry = Entry(name);
    if (!entry) return nullptr;
    if (entry->kind == ObjectKind::LocalTable) return LocalTable(*entry);
    if (entry->kind == ObjectKind::OdbcTable)
        throw NumberedError(3170).At("table " + entry->name + " is linked through ODBC");
    if (entry->kind != ObjectKind::LinkedTable) return nullptr;
    return LinkedTable(catalog_.Link(name).value());
}

Core::Design& Core::Known()
{
    if (design_.asOf != pager_->LastUnknownChange()) design_ = {};
    design_.asOf = pager_->LastUnknownChange();
    return design_;
}

std::optional<CatalogEntry> Core::Entry(std::string_view name)
{
    auto& entries = Known().entries;
    const auto known = entries.find(name);
    if (known != entries.end()) return known->second;
    return entries.emplace(name, catalog_.Find(name)).first->second;
}

jet::sql::TablePtr Core::LocalTable(const CatalogEntry& entry)
{
    struct Shared {
        jet::sql::TablePtr table;
        std::shared_ptr<RelatedTables> related;
    };
    auto opened = std::make_shared<Shared>(Shared{tables_[entry.id].lock(), related_.lock()});
    if (!opened->table) opened->table = Opened(entry);
    if (!opened->related) related_ = opened->related = std::make_shared<RelatedTables>();
    return {opened, opened->table.get()};
}

jet::sql::TablePtr Core::LinkedTable(const jet::catalog::NewLink& link)
{
    if (!jet::catalog::LeadsToOurKind(link.connect))
        throw NumberedError(3170).At("table " + link.name + " is linked to " +
                                     std::string(jet::catalog::KindIn(link.connect)));
    // A link leads to a table itself, so a ring of links has no end that could be missed.
    struct Linked {
        std::shared_ptr<Core> core;
        jet::sql::TablePtr table;
    };
    auto linked = std::make_shared<Linked>();
    linked->core = openOther_(link, pager_->ReadOnly());
    Core& other = *linked->core;
    other.Pager().ReadWhole(jet::pages::Pager::Look::Always, [&] {
        const std::optional<CatalogEntry> entry = other.catalog_.Find(link.table);
        if (!entry || entry->kind != ObjectKind::LocalTable)
            throw NumberedError(3011, {link.table});
        linked->table = other.LocalTable(*entry);
    });
    // Whoever has the table keeps its file open.
    return {linked, linked->table.get()};
}

jet::sql::TablePtr Core::RelatedTable(jet::format::PageNumber page)
{
    const std::shared_ptr<RelatedTables> related = related_.lock();
    if (!related) return nullptr;  // nobody has a table open
    jet::sql::TablePtr& kept = (*related)[page];
    if (!kept) kept = tables_[static_cast<std::int32_t>(Raw(page))].lock();
    if (!kept)
        if (const auto entry = catalog_.Find(page)) kept = Opened(*entry);
    return kept;
}

jet::sql::TablePtr Core::Opened(const CatalogEntry& entry)
{
    struct Used {
        std::shared_ptr<const void> use;
        std::shared_ptr<jet::catalog::OpenTable> table;
    };
    const jet::format::PageNumber definition{static_cast<std::uint32_t>(entry.id)};
    std::shared_ptr<const void> use = pager_->UseTable(definition, entry.name);
    const auto& known = Known().tables;
    const auto found = known.find(entry.id);
    const auto table = found == known.end() ? Loaded(entry) : found->second;
    // Properties that could not be read are read anew the next time.
    if (!table->unread) Known().tables[entry.id] = table;
    const auto used = std::make_shared<Used>(Used{std::move(use), table});
    const jet::sql::TablePtr kept(used, table.get());
    tables_[entry.id] = kept;
    return kept;
}

std::shared_ptr<jet::catalog::OpenTable> Core::Loaded(const CatalogEntry& entry)
{
    const auto table = std::make_shared<jet::catalog::OpenTable>(catalog_.Open(entry.name));
    const std::weak_ptr<Core> core = weak_from_this();
    const auto related = [core](jet::format::PageNumber page) {
        const std::shared_ptr<Core> open = core.lock();
        return open ? open->RelatedTable(page) : nullptr;
    };
    std::shared_ptr<jet::table::DerivedIndexes>& derived = derived_[entry.id];
    if (!derived) derived = std::make_shared<jet::table::DerivedIndexes>();
    table->rows->Use(derived);
    table->rows->Obey(std::make_shared<jet::sql::TableRules>(*table, now_, related));
    return table;
}

std::shared_ptr<const void> Core::MarkEdited(const jet::pages::Pager& file, jet::format::RowId row)
{
    const auto place = std::pair{&file, row};
    if (!edited_->insert(place).second) throw base::NumberedError(3188);
    const auto erase = [edited = edited_, place](const void*) { edited->erase(place); };
    return {static_cast<const void*>(this), erase};
}

}  // namespace dao
