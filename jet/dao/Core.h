// SPDX-License-Identifier: Apache-2.0
// Core: the one instance of an open file that all databases opened on it share.
#pragma once

#include "jet/catalog/Catalog.h"
#include "jet/pages/Pager.h"
#include "jet/sql/Session.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string_view>

namespace dao {

class Core : public std::enable_shared_from_this<Core> {
public:
    // `now` tells the time to the rules of the tables.
    Core(std::shared_ptr<jet::pages::Pager> pager, std::function<base::Date()> now)
        : pager_(std::move(pager)), catalog_(pager_), now_(std::move(now))
    {
    }

    [[nodiscard]] jet::pages::Pager& Pager() { return *pager_; }
    [[nodiscard]] jet::catalog::Catalog& Catalog() { return catalog_; }
    // Bytes that a text column's length counts for each character.
    [[nodiscard]] std::size_t BytesPerCharacter() const;

    // A table of this file; all who have it open share one. Null when there is none.
    // Others see that it is open as long as the answer lives.
    // Errors: 3189, 3262 and their nameless forms.
    [[nodiscard]] jet::sql::TablePtr Table(std::string_view name);

    // Says that a row is being edited, until the answer goes. Errors: 3188 when it is already.
    [[nodiscard]] std::shared_ptr<const void> MarkEdited(jet::format::RowId row);

private:
    // A table by the page of its definition, kept open for the relationships that lead to it.
    [[nodiscard]] jet::sql::TablePtr RelatedTable(jet::format::PageNumber page);
    // Takes an opened table among those that are shared; from here on it obeys its rules.
    jet::sql::TablePtr Keep(jet::catalog::OpenTable table);

    std::shared_ptr<jet::pages::Pager> pager_;
    jet::catalog::Catalog catalog_;
    std::function<base::Date()> now_;
    std::map<std::int32_t, std::weak_ptr<jet::catalog::OpenTable>> tables_;  // by catalog id
    using EditedRows = std::set<std::pair<jet::format::PageNumber, std::uint16_t>>;
    std::shared_ptr<EditedRows> edited_ = std::make_shared<EditedRows>();
    std::map<jet::format::PageNumber, jet::sql::TablePtr> related_;
};

}  // namespace dao
