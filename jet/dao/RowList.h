// SPDX-License-Identifier: Apache-2.0
// RowList: which rows a record set has, in order; filled as far as somebody has walked.
#pragma once

#include "jet/sql/Filter.h"

#include <memory>
#include <optional>
#include <vector>

namespace dao {

using jet::format::RowId;

// A place in the list; stays true while the list grows.
struct Spot {
    bool added = false;  // among the rows that the record set itself added, which come last
    std::size_t index = 0;
    friend bool operator==(const Spot&, const Spot&) = default;
};

// Rule: a row deleted through the list stays in it as a hole, so its neighbours keep their places;
//       First, Last, Next and Previous pass over holes.
class RowList {
public:
    // All rows at once.
    explicit RowList(std::vector<RowId> rows);
    // Found one by one.
    explicit RowList(std::unique_ptr<jet::sql::RowFinder> finder) : finder_(std::move(finder)) {}

    [[nodiscard]] std::optional<Spot> First();
    [[nodiscard]] std::optional<Spot> Last();
    [[nodiscard]] std::optional<Spot> Next(Spot spot);
    [[nodiscard]] std::optional<Spot> Previous(Spot spot);
    // The row's place, as far as the list is filled.
    [[nodiscard]] std::optional<Spot> Find(RowId row) const;

    [[nodiscard]] RowId Id(Spot spot) const { return At(spot).id; }
    [[nodiscard]] bool IsHole(Spot spot) const { return At(spot).hole; }
    void MakeHole(Spot spot);
    void Add(RowId row);

    // Rows reached so far, holes not counted.
    [[nodiscard]] std::size_t Count() const { return found_.size() + added_.size() - holes_; }
    // Rows before this one, holes not counted.
    [[nodiscard]] std::size_t Ordinal(Spot spot) const;

private:
    struct Entry {
        RowId id;
        bool hole = false;
    };

    [[nodiscard]] const Entry& At(Spot spot) const
    {
        return spot.added ? added_[spot.index] : found_[spot.index];
    }
    // Fills the list up to `index`; false when it ends before.
    bool Reach(std::size_t index);
    [[nodiscard]] std::optional<Spot> FirstFrom(Spot spot);

    std::unique_ptr<jet::sql::RowFinder> finder_;  // null once the list is full
    std::vector<Entry> found_, added_;
    std::size_t holes_ = 0;
};

}  // namespace dao
