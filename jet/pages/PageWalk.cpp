// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/PageWalk.h"

#include <algorithm>

namespace jet::pages {

namespace {

// Fewer pages are worth keeping.
constexpr std::size_t kMany = 64;
// Read together at most: 128 KB, which the processor's own memory holds.
constexpr std::size_t kRun = 32;

}  // namespace

void PageWalk::Begin(std::vector<PageNumber> pages, PageNumber from)
{
    pages_ = std::move(pages);
    const auto place = std::lower_bound(pages_.begin(), pages_.end(), from);
    next_ = begin_ = static_cast<std::size_t>(place - pages_.begin());
    runAt_ = runLength_ = 0;
}

bool PageWalk::Next()
{
    if (next_ >= pages_.size()) return false;
    if (!TakeFromRun()) {
        ReadRun();
        if (!TakeFromRun()) {
            kept_ = pager_->Read(pages_[next_]);
            bytes_ = kept_->Bytes();
            if (next_ + 1 < pages_.size()) pager_->Announce(pages_[next_ + 1]);
        }
    }
    ++next_;
    return true;
}

bool PageWalk::TakeFromRun()
{
    if (next_ >= runAt_ + runLength_) return false;
    const std::size_t pageSize = run_.size() / runLength_;
    bytes_ = std::span(run_).subspan((next_ - runAt_) * pageSize, pageSize);
    return true;
}

// Who looks at few rows shall not wait for many pages: a run is as long as the way before it.
void PageWalk::ReadRun()
{
    runLength_ = 0;
    if (pages_.size() < kMany) return;
    const std::size_t length = std::min({next_ - begin_, pages_.size() - next_, kRun});
    runAt_ = next_;
    runLength_ = pager_->ReadTogether(std::span(pages_).subspan(next_, length), run_);
}

}  // namespace jet::pages
