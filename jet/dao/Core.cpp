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
    std::weak_ptr<jet::catalog::OpenTable>& known = tables_[entry->id];
    if (jet::sql::TablePtr open = known.lock()) return open;
    struct Used {
        std::shared_ptr<const void> use;
        jet::catalog::OpenTable table;
    };
    const jet::format::PageNumber definition{static_cast<std::uint32_t>(entry->id)};
    const auto used = std::make_shared<Used>(
        Used{pager_->UseTable(definition, entry->name), catalog_.Open(name)});
    used->table.rows->Obey(std::make_shared<jet::sql::TableRules>(used->table, now_));
    jet::sql::TablePtr opened(used, &used->table);
    known = opened;
    return opened;
}

std::shared_ptr<const void> Core::MarkEdited(jet::format::RowId row)
{
    const auto place = std::pair{row.page, row.slot};
    if (!edited_->insert(place).second) throw base::NumberedError(3188);
    const auto erase = [edited = edited_, place](const void*) { edited->erase(place); };
    return {static_cast<const void*>(this), erase};
}

}  // namespace dao
