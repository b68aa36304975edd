// SPDX-License-Identifier: Apache-2.0
// TableCursor: walks the rows of a table in storage order.
#pragma once

#include "jet/table/RowSource.h"
#include "jet/table/StoredRows.h"

#include <vector>

namespace jet::table {

// Requires: the pager outlives it.
// Rule:   looks up each page once and makes nothing of a row but its view. When the file was
//         changed meanwhile, it goes on behind the place it had reached.
// Errors: 3343.
class TableCursor : public RowCursor {
public:
    TableCursor(pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table);

    [[nodiscard]] bool Next() override;
    [[nodiscard]] RowId Id() const override { return id_; }
    [[nodiscard]] const format::RowView& Row() const override { return *row_; }

private:
    void ReadMap();
    void Resume();
    [[nodiscard]] bool NextPage();
    void TakePage(PageNumber page);
    [[nodiscard]] bool TakeSlot(std::uint16_t slot);

    pages::Pager* pager_;
    std::shared_ptr<const format::TableDefinition> table_;
    std::uint64_t changeCount_ = 0;
    std::vector<PageNumber> pages_;  // the table's pages, ascending
    std::size_t nextPage_ = 0;       // place in pages_
    std::uint16_t nextSlot_ = 0;
    std::optional<pages::Page> page_;
    std::optional<format::DataPage> view_;
    std::optional<pages::Page> movedPage_;  // keeps a moved row's bytes alive
    RowId id_;
    std::optional<format::RowView> row_;
};

}  // namespace jet::table
