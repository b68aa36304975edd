// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/Core.h"

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
    auto opened = std::make_shared<jet::catalog::OpenTable>(catalog_.Open(name));
    opened->rows->Obey(std::make_shared<jet::sql::TableRules>(*opened, now_));
    known = opened;
    return opened;
}

}  // namespace dao
