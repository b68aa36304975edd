// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/Core.h"

#include "base/NumberedError.h"
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
    const std::optional<CatalogEntry> entry = catalog_.Find(name);
    if (!entry) return nullptr;
    if (entry->kind == ObjectKind::LocalTable) return LocalTable(*entry);
    if (entry->kind != ObjectKind::LinkedTable) return nullptr;
    return LinkedTable(catalog_.Link(name).value());
}

jet::sql::TablePtr Core::LocalTable(const CatalogEntry& entry)
{
    if (jet::sql::TablePtr open = tables_[entry.id].lock()) return open;
    return Keep(catalog_.Open(entry.name));
}

jet::sql::TablePtr Core::LinkedTable(const jet::catalog::NewLink& link)
{
    // What does not begin with a semicolon names another kind of file.
    if (!link.connect.empty() && link.connect.front() != ';') throw NumberedError(3170);
    // A link leads to a table itself, so a ring of links has no end that could be missed.
    struct Linked {
        std::shared_ptr<Core> core;
        jet::sql::TablePtr table;
    };
    auto linked = std::make_shared<Linked>();
    linked->core = openOther_(link, pager_->ReadOnly());
    if (linked->core != shared_from_this()) linked->core->Pager().Refresh();
    const std::optional<CatalogEntry> entry = linked->core->catalog_.Find(link.table);
    if (!entry || entry->kind != ObjectKind::LocalTable) throw NumberedError(3011, {link.table});
    linked->table = linked->core->LocalTable(*entry);
    // Whoever has the table keeps its file open.
    return {linked, linked->table.get()};
}

jet::sql::TablePtr Core::RelatedTable(jet::format::PageNumber page)
{
    jet::sql::TablePtr& kept = related_[page];
    if (!kept) kept = tables_[static_cast<std::int32_t>(Raw(page))].lock();
    if (!kept)
        if (auto opened = catalog_.OpenAt(page)) kept = Keep(*std::move(opened));
    return kept;
}

jet::sql::TablePtr Core::Keep(jet::catalog::OpenTable table)
{
    struct Used {
        std::shared_ptr<const void> use;
        jet::catalog::OpenTable table;
    };
    const jet::format::PageNumber definition{static_cast<std::uint32_t>(table.entry.id)};
    auto use = pager_->UseTable(definition, table.entry.name);
    const auto used = std::make_shared<Used>(Used{std::move(use), std::move(table)});
    const jet::sql::TablePtr kept(used, &used->table);
    tables_[kept->entry.id] = kept;
    const std::weak_ptr<Core> core = weak_from_this();
    const auto related = [core](jet::format::PageNumber page) {
        const std::shared_ptr<Core> open = core.lock();
        return open ? open->RelatedTable(page) : nullptr;
    };
    kept->rows->Obey(std::make_shared<jet::sql::TableRules>(*kept, now_, related));
    return kept;
}

std::shared_ptr<const void> Core::MarkEdited(const jet::pages::Pager& file, jet::format::RowId row)
{
    const auto place = std::pair{&file, row};
    if (!edited_->insert(place).second) throw base::NumberedError(3188);
    const auto erase = [edited = edited_, place](const void*) { edited->erase(place); };
    return {static_cast<const void*>(this), erase};
}

}  // namespace dao
