// SPDX-License-Identifier: Apache-2.0
#include "jet/table/LiveDefinition.h"

namespace jet::table {

LiveDefinition::LiveDefinition(const pages::Pager& pager, PageNumber first)
    : pager_(&pager), first_(first)
{
    Load();
}

const std::shared_ptr<const format::TableDefinition>& LiveDefinition::Current()
{
    if (pager_->ChangeCount() != changeCount_) Load();
    return readings_.back();
}

void LiveDefinition::Load()
{
    changeCount_ = pager_->ChangeCount();
    JoinedDefinition joined = JoinDefinition(*pager_, first_);
    BlankCounters(joined.bytes, pager_->Version());
    if (format::SameBytes(joined.bytes, design_)) return;
    readings_.push_back(
        std::make_shared<const format::TableDefinition>(LoadDefinition(*pager_, first_)));
    design_ = std::move(joined.bytes);
}

}  // namespace jet::table
