// SPDX-License-Identifier: Apache-2.0
// ReadAhead: pages fetched before they are asked for, from the file and from memory.
#include "base/NumberedError.h"
#include "jet/format/PageEncoding.h"
#include "jet/pages/PagerState.h"

namespace jet::pages {

namespace {

// A scan waits for memory more than for anything else. The rows of a page lie from its end
// downwards, and so they are walked.
void FetchToProcessor(const PageBytes& page)
{
    constexpr std::size_t cacheLine = 64;
    __builtin_prefetch(page.data());
    for (std::size_t end = page.size(); end > cacheLine; end -= cacheLine)
        __builtin_prefetch(page.data() + end - cacheLine);
}

}  // namespace

// How many of the pages stand one behind the other in the file and are not in memory yet.
std::size_t Pager::State::RunToLoad(std::span<const PageNumber> next) const
{
    std::size_t run = 0;
    while (run < next.size() && Raw(next[run]) == Raw(next.front()) + run &&
           Raw(next[run]) < pageCount && cache.Find(next[run]) == nullptr)
        ++run;
    return run;
}

void Pager::State::LoadAhead(std::span<const PageNumber> next) const
{
    if (halfWritten || former) return;
    const std::size_t run = RunToLoad(next);
    if (run < 2) return;
    loadedAhead.resize(run * version.pageSize);
    try {
        file->Read(std::uint64_t{Raw(next.front())} * version.pageSize, loadedAhead);
    } catch (const base::NumberedError&) {
        return;  // whoever asks for the page is told
    }
    for (std::size_t i = 0; i < run; ++i) {
        const auto bytes = std::span(loadedAhead).subspan(i * version.pageSize, version.pageSize);
        format::ApplyPageEncoding(bytes, next[i], protection.encodingKey);
        cache.Put(next[i], std::make_shared<const PageBytes>(bytes.begin(), bytes.end()));
    }
}

void Pager::Expect(std::span<const PageNumber> next) const
{
    if (next.empty()) return;
    if (const auto* const kept = state_->cache.Find(next.front()))
        FetchToProcessor(**kept);
    else
        state_->LoadAhead(next);
}

}  // namespace jet::pages
