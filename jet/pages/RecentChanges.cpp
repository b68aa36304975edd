// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/RecentChanges.h"

#include <new>

namespace jet::pages {

namespace {

constexpr std::size_t kRemembered = 1024;

}  // namespace

void RecentChanges::Add(std::optional<Pages> rowPages) noexcept
{
    ++count_;
    try {
        if (rowPages) {
            last_.push_back(*std::move(rowPages));
            if (last_.size() <= kRemembered) return;
            last_.pop_front();
            ++forgotten_;
            return;
        }
    } catch (const std::bad_alloc&) {
    }
    lastUnknown_ = forgotten_ = count_;
    last_.clear();
}

std::optional<RecentChanges::Pages> RecentChanges::Since(std::uint64_t count) const
{
    if (count < forgotten_) return std::nullopt;
    Pages pages;
    for (std::uint64_t change = count; change < count_; ++change) {
        const Pages& touched = last_[static_cast<std::size_t>(change - forgotten_)];
        pages.insert(pages.end(), touched.begin(), touched.end());
    }
    return pages;
}

}  // namespace jet::pages
