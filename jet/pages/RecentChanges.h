// SPDX-License-Identifier: Apache-2.0
// RecentChanges: what the last changes of the file, our own and those of others, did to its rows.
#pragma once

#include "jet/format/PageNumber.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace jet::pages {

// Counts changes and remembers, of the last ones, which pages of rows each touched.
class RecentChanges {
public:
    using Pages = std::vector<format::PageNumber>;

    // One change; without pages, and when memory runs out, it is not known what it touched.
    void Add(std::optional<Pages> rowPages) noexcept;
    [[nodiscard]] std::uint64_t Count() const { return count_; }
    // The count after the last change of which nothing is known.
    [[nodiscard]] std::uint64_t LastUnknown() const { return lastUnknown_; }
    // The pages touched since the count was `count`; nothing when that is not known any more.
    [[nodiscard]] std::optional<Pages> Since(std::uint64_t count) const;

private:
    std::uint64_t count_ = 0;
    std::uint64_t lastUnknown_ = 0;
    std::uint64_t forgotten_ = 0;  // the count before the first change in `last_`
    std::deque<Pages> last_;       // the newest behind
};

}  // namespace jet::pages
