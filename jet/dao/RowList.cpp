// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/RowList.h"

#include <algorithm>
#include <limits>

namespace dao {

RowList::RowList(std::vector<RowId> rows)
{
    found_.reserve(rows.size());
    for (const RowId row : rows)
        found_.push_back({row, false});
}

bool RowList::Reach(std::size_t index)
{
    while (finder_ && found_.size() <= index) {
        if (!finder_->Next()) {
            finder_.reset();
            break;
        }
        // A row that this set added while it was walked has its place at the end already.
        const RowId id = finder_->Id();
        const auto same = [&](const Entry& entry) { return entry.id == id; };
        if (std::none_of(added_.begin(), added_.end(), same)) found_.push_back({id, false});
    }
    return index < found_.size();
}

std::optional<Spot> RowList::FirstFrom(Spot spot)
{
    if (!spot.added) {
        for (; Reach(spot.index); ++spot.index)
            if (!found_[spot.index].hole) return spot;
        spot = {true, 0};
    }
    for (; spot.index < added_.size(); ++spot.index)
        if (!added_[spot.index].hole) return spot;
    return std::nullopt;
}

std::optional<Spot> RowList::First()
{
    return FirstFrom({false, 0});
}

std::optional<Spot> RowList::Next(Spot spot)
{
    ++spot.index;
    return FirstFrom(spot);
}

std::optional<Spot> RowList::Previous(Spot spot)
{
    if (spot.added) {
        while (spot.index > 0)
            if (!added_[--spot.index].hole) return spot;
        Reach(std::numeric_limits<std::size_t>::max() - 1);
        spot = {false, found_.size()};
    }
    while (spot.index > 0)
        if (!found_[--spot.index].hole) return spot;
    return std::nullopt;
}

std::optional<Spot> RowList::Last()
{
    return Previous({true, added_.size()});
}

std::optional<Spot> RowList::Find(RowId row) const
{
    const auto in = [&](const std::vector<Entry>& entries, bool added) -> std::optional<Spot> {
        std::optional<Spot> hole;
        for (std::size_t i = entries.size(); i-- > 0;) {
            if (entries[i].id != row) continue;
            if (!entries[i].hole) return Spot{added, i};
            hole = Spot{added, i};
        }
        return hole;
    };
    const std::optional<Spot> added = in(added_, true);
    if (added && !IsHole(*added)) return added;
    const std::optional<Spot> found = in(found_, false);
    return found ? found : added;
}

void RowList::MakeHole(Spot spot)
{
    Entry& entry = spot.added ? added_[spot.index] : found_[spot.index];
    if (!entry.hole) ++holes_;
    entry.hole = true;
}

void RowList::Add(RowId row)
{
    added_.push_back({row, false});
}

std::size_t RowList::Ordinal(Spot spot) const
{
    const auto holesBefore = [](const std::vector<Entry>& entries, std::size_t end) {
        const auto stop = entries.begin() + static_cast<std::ptrdiff_t>(end);
        return static_cast<std::size_t>(
            std::count_if(entries.begin(), stop, [](const Entry& entry) { return entry.hole; }));
    };
    const std::size_t found = spot.added ? found_.size() : spot.index;
    const std::size_t added = spot.added ? spot.index : 0;
    if (holes_ == 0) return found + added;
    return found + added - holesBefore(found_, found) - holesBefore(added_, added);
}

}  // namespace dao
