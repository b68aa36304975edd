// SPDX-License-Identifier: Apache-2.0
// ListedCursor: walks the rows that begin on some of a table's pages, forwards or backwards.
#pragma once

#include "jet/table/SlotCursor.h"

#include <vector>

namespace jet::table {

// Rule: passes over pages that are not the table's, or not any more; rows on pages that are added
//       to the table meanwhile are not met.
class ListedCursor : public SlotCursor {
public:
    // `pages` ascend. Requires: the pager outlives it.
    ListedCursor(const pages::Pager& pager, std::shared_ptr<const format::TableDefinition> table,
                 std::vector<PageNumber> pages, Direction direction);

    [[nodiscard]] bool Next() override;

private:
    [[nodiscard]] bool NextPage();
    [[nodiscard]] bool NextSlot();
    void Look();

    Direction direction_;
    std::vector<PageNumber> pages_;  // in the order of the walk
    std::size_t next_ = 0;           // place in pages_
    std::uint64_t changeCount_ = 0;
    std::optional<pages::Page> page_;
    std::optional<format::DataPage> view_;  // of page_; nothing when it is not the table's
    std::uint16_t walked_ = 0;              // slots of it that were looked at
    std::uint16_t slots_ = 0;               // slots that it had when it was come to
};

}  // namespace jet::table
