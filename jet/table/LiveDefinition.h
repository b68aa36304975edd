// SPDX-License-Identifier: Apache-2.0
// LiveDefinition: a table's definition, read again when its pages have changed.
#pragma once

#include "jet/table/DefinitionPages.h"

#include <memory>

namespace jet::table {

// Requires: the pager outlives it.
class LiveDefinition {
public:
    // Errors: 3343.
    LiveDefinition(const pages::Pager& pager, PageNumber first);

    // The definition as the file has it now.
    // Rule:   its rowCount and lastAutoNumber are as old as the reading; the counters of
    //         DefinitionPages.h are not. Definitions given out before stay valid.
    // Errors: 3343.
    [[nodiscard]] const std::shared_ptr<const format::TableDefinition>& Current();
    // The same without a look at the file.
    [[nodiscard]] const format::TableDefinition& Known() const { return *readings_.back(); }

private:
    void Load();

    const pages::Pager* pager_;
    PageNumber first_;
    std::uint64_t changeCount_ = 0;
    std::vector<std::byte> design_;  // joined bytes without counters
    std::vector<std::shared_ptr<const format::TableDefinition>> readings_;
};

}  // namespace jet::table
