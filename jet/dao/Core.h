// SPDX-License-Identifier: Apache-2.0
// Core: the one instance of an open file that all databases opened on it share.
#pragma once

#include "jet/catalog/Catalog.h"
#include "jet/pages/Pager.h"
#include "jet/sql/Session.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace dao {

// Rows that are being edited, of all files that an engine has open.
using EditedRows = std::set<std::pair<const jet::pages::Pager*, jet::format::RowId>>;

class Core : public std::enable_shared_from_this<Core> {
public:
    using Opener =
        std::function<std::shared_ptr<Core>(const jet::catalog::NewLink& link, bool readOnly)>;

    // `now` tells the time to the rules of the tables, `openOther` opens the files to which tables
    // are linked.
    Core(std::shared_ptr<jet::pages::Pager> pager, std::function<base::Date()> now,
         Opener openOther, std::shared_ptr<EditedRows> edited)
        : pager_(std::move(pager)), catalog_(pager_), now_(std::move(now)),
          openOther_(std::move(openOther)), edited_(std::move(edited))
    {
    }

    [[nodiscard]] jet::pages::Pager& Pager() { return *pager_; }
    [[nodiscard]] jet::catalog::Catalog& Catalog() { return catalog_; }
    // Bytes that a text column's length counts for each character.
    [[nodiscard]] std::size_t BytesPerCharacter() const;

    // A table of this file or a link to one of another file; all who have it open share one. Null
    // when there is none. Others see that it is open as long as the answer lives.
    // Errors: 3189, 3262 and their nameless forms; of a link 3024, 3044 and the others of opening
    //         the file, 3011 no such table there, 3170 a file of another kind.
    [[nodiscard]] jet::sql::TablePtr Table(std::string_view name);
    // The table to which a link leads. Errors: those of Table.
    [[nodiscard]] jet::sql::TablePtr LinkedTable(const jet::catalog::NewLink& link);

    // Says that a row of this or of a linked file is being edited, until the answer goes. Errors:
    // 3188 when it is already.
    [[nodiscard]] std::shared_ptr<const void> MarkEdited(const jet::pages::Pager& file,
                                                         jet::format::RowId row);

private:
    // What is known of the file's design, until somebody may have changed it.
    struct Design {
        std::uint64_t asOf = 0;  // the pager's count of the last unknown change
        std::map<std::string, std::optional<jet::catalog::CatalogEntry>, std::less<>> entries;
        std::map<std::int32_t, std::shared_ptr<jet::catalog::OpenTable>> tables;  // by catalog id
    };
    [[nodiscard]] Design& Known();
    [[nodiscard]] std::optional<jet::catalog::CatalogEntry> Entry(std::string_view name);
    [[nodiscard]] jet::sql::TablePtr LocalTable(const jet::catalog::CatalogEntry& entry);
    // A table by the page of its definition, for the relationships that lead to it; kept open as
    // long as anybody has a table of this file open.
    [[nodiscard]] jet::sql::TablePtr RelatedTable(jet::format::PageNumber page);
    // Opens a table and takes it among those that are shared.
    [[nodiscard]] jet::sql::TablePtr Opened(const jet::catalog::CatalogEntry& entry);
    // The table as the file describes it; it obeys its rules from here on.
    [[nodiscard]] std::shared_ptr<jet::catalog::OpenTable>
    Loaded(const jet::catalog::CatalogEntry& entry);

    std::shared_ptr<jet::pages::Pager> pager_;
    jet::catalog::Catalog catalog_;
    std::function<base::Date()> now_;
    Opener openOther_;
    Design design_;
    std::map<std::int32_t, std::weak_ptr<jet::catalog::OpenTable>> tables_;        // by catalog id
    std::map<std::int32_t, std::shared_ptr<jet::table::DerivedIndexes>> derived_;  // by catalog id
    using RelatedTables = std::map<jet::format::PageNumber, jet::sql::TablePtr>;
    std::weak_ptr<RelatedTables> related_;
    std::shared_ptr<EditedRows> edited_;
};

}  // namespace dao
