// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/Core.h"

#include "base/NumberedError.h"
#include "jet/sql/TableRules.h"

namespace dao {

using jet::catalog::CatalogEntry;
using jet::catalog::ObjectKind;

std::size_t Core::BytesPerCharacter() const
{
    return pager_->Version().bytesPerCharacter;
}

jet::sql::TablePtr Core::Table(std::string_view name)
{
    const std::optional<CatalogEntry> entry = catalog_.Find(name);
    if (!entry || entry->kind != ObjectKind::LocalTable) return nullptr;
    if (jet::sql::TablePtr open = tables_[entry->id].lock()) return open;
    return Keep(catalog_.Open(name));
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

std::shared_ptr<const void> Core::MarkEdited(jet::format::RowId row)
{
    const auto place = std::pair{row.page, row.slot};
    if (!edited_->insert(place).second) throw base::NumberedError(3188);
    const auto erase = [edited = edited_, place](const void*) { edited->erase(place); };
    return {static_cast<const void*>(this), erase};
}

}  // namespace dao
