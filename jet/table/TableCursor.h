// SPDX-License-Identifier: Apache-2.0
// TableCursor: walks the rows of a table in storage order.
#pragma once

#include "jet/pages/PageWalk.h"
#include "jet/table/SlotCursor.h"

namespace jet::table {

// Requires: the pager outlives it.
// Rule:   looks up each page once and makes nothing of a row but its view. When the file was
//         changed meanwhile, it goes on behind the place it had reached.
// Errors: 3343.
class TableCursor : public SlotCursor {
public:
    TableCursor(pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table);

    [[nodiscard]] bool Next() override;
    void ForEach(const Visit& visit) override;

private:
    void Begin(PageNumber from);
    void Resume();
    [[nodiscard]] bool NextPage();

    pages::Pager& file_;
    std::uint64_t changeCount_ = 0;
    pages::PageWalk walk_;  // over the table's pages
    std::uint16_t nextSlot_ = 0;
    std::optional<format::DataPage> view_;
};

}  // namespace jet::table
