// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/RowList.h"

#include <algorithm>
#include <limits>

namespace dao {

using jet::table::Direction;
using Part = Spot::Part;

RowList::RowList(const std::vector<RowId>& rows) : full_(true)
{
    front_.entries.reserve(rows.size());
    for (const RowId row : rows)
        front_.entries.push_back({row, false});
}

RowList::RowList(MakeFinder make) : make_(std::move(make)) {}

const std::vector<RowList::Entry>& RowList::EntriesOf(Part part) const
{
    switch (part) {
    case Part::Front:
        return front_.entries;
    case Part::Back:
        return back_.entries;
    case Part::Added:
        break;
    }
    return added_;
}

bool RowList::Step(End& end, const End& other, Direction direction)
{
    if (full_) return false;
    if (!end.finder) end.finder = make_(direction);
    while (end.finder->Next()) {
        const RowId id = end.finder->Id();
        if (!other.entries.empty()) {
            const RowId met = other.entries.back().id;
            if (direction == Direction::Forward ? id >= met : id <= met) break;
        }
        // A row that this set added while it was walked has its place at the end already.
        const auto same = [&](const Entry& entry) { return entry.id == id; };
        if (std::any_of(added_.begin(), added_.end(), same)) continue;
        end.entries.push_back({id, false});
        end.stepped = true;
        return true;
    }
    full_ = true;
    return false;
}

bool RowList::Reach(Part part, std::size_t index)
{
    const bool forward = part == Part::Front;
    End& end = forward ? front_ : back_;
    const End& other = forward ? back_ : front_;
    const Direction direction = forward ? Direction::Forward : Direction::Backward;
    while (end.entries.size() <= index && Step(end, other, direction)) {
    }
    return index < end.entries.size();
}

void RowList::Fill()
{
    static_cast<void>(Reach(Part::Front, std::numeric_limits<std::size_t>::max() - 1));
}

std::optional<Spot> RowList::NextPlace(Spot spot)
{
    ++spot.index;
    if (spot.part == Part::Front) {
        if (Reach(Part::Front, spot.index)) return spot;
        spot = {Part::Back, back_.entries.size() + 1};
    }
    if (spot.part == Part::Back) {
        // Counted from behind: the next one has the number before.
        if (spot.index > 1) return Spot{Part::Back, spot.index - 2};
        spot = {Part::Added, 0};
    }
    if (spot.index < added_.size()) return spot;
    return std::nullopt;
}

std::optional<Spot> RowList::PreviousPlace(Spot spot)
{
    if (spot.part == Part::Added) {
        if (spot.index > 0) return Spot{Part::Added, spot.index - 1};
        if (Reach(Part::Back, 0)) return Spot{Part::Back, 0};
        spot = {Part::Front, front_.entries.size()};
    }
    if (spot.part == Part::Back) {
        ++spot.index;
        if (Reach(Part::Back, spot.index)) return spot;
        spot = {Part::Front, front_.entries.size()};
    }
    if (spot.index > 0) return Spot{Part::Front, spot.index - 1};
    return std::nullopt;
}

std::optional<Spot> RowList::First()
{
    constexpr std::size_t beforeTheFirst = std::numeric_limits<std::size_t>::max();
    return Next({Part::Front, beforeTheFirst});
}

std::optional<Spot> RowList::Last()
{
    counted_ = true;
    return Previous({Part::Added, added_.size()});
}

std::optional<Spot> RowList::Next(Spot spot)
{
    front_.stepped = back_.stepped = false;
    std::optional<Spot> next = NextPlace(spot);
    while (next && IsHole(*next))
        next = NextPlace(*next);
    return next;
}

std::optional<Spot> RowList::Previous(Spot spot)
{
    front_.stepped = back_.stepped = false;
    std::optional<Spot> previous = PreviousPlace(spot);
    while (previous && IsHole(*previous))
        previous = PreviousPlace(*previous);
    return previous;
}

const jet::format::RowView* RowList::JustRead(Spot spot) const
{
    if (spot.part == Part::Added) return nullptr;
    const End& end = spot.part == Part::Front ? front_ : back_;
    const bool standsThere = end.stepped && spot.index + 1 == end.entries.size();
    return standsThere ? &end.finder->Row() : nullptr;
}

namespace {

// Fewer rows are looked through as quickly.
constexpr std::size_t kFew = 64;

std::uint64_t KeyOf(RowId row)
{
    constexpr int slotBits = 16;
    return std::uint64_t{Raw(row.page)} << slotBits | row.slot;
}

}  // namespace

std::optional<Spot> RowList::Find(RowId row)
{
    if (front_.entries.size() + back_.entries.size() + added_.size() < kFew) return Search(row);
    for (const Part part : {Part::Front, Part::Back, Part::Added})
        NotePlaces(part);
    const auto found = places_.find(KeyOf(row));
    if (found == places_.end()) return std::nullopt;
    // Another row may have come to the place of one that was deleted.
    return IsHole(found->second) ? Search(row) : found->second;
}

// The row that was added last counts where several have had the same id.
void RowList::NotePlaces(Part part)
{
    const std::vector<Entry>& entries = EntriesOf(part);
    std::size_t& noted = noted_[static_cast<std::size_t>(part)];
    for (; noted < entries.size(); ++noted)
        places_[KeyOf(entries[noted].id)] = Spot{part, noted};
}

std::optional<Spot> RowList::Search(RowId row) const
{
    std::optional<Spot> hole;
    for (const Part part : {Part::Added, Part::Back, Part::Front}) {
        const std::vector<Entry>& entries = EntriesOf(part);
        for (std::size_t i = entries.size(); i-- > 0;) {
            if (entries[i].id != row) continue;
            if (!entries[i].hole) return Spot{part, i};
            if (!hole) hole = Spot{part, i};
        }
    }
    return hole;
}

std::optional<Spot> RowList::Locate(RowId row)
{
    while (front_.entries.empty() || front_.entries.back().id < row)
        if (!Step(front_, back_, Direction::Forward)) break;
    return Find(row);
}

bool RowList::IsBefore(Spot one, Spot other)
{
    if (one.part != other.part) return one.part < other.part;
    return one.part == Part::Back ? one.index > other.index : one.index < other.index;
}

void RowList::MakeHole(Spot spot)
{
    std::vector<Entry>& entries = spot.part == Part::Front  ? front_.entries
                                  : spot.part == Part::Back ? back_.entries
                                                            : added_;
    Entry& entry = entries[spot.index];
    if (!entry.hole) ++holes_;
    entry.hole = true;
}

void RowList::Add(RowId row)
{
    added_.push_back({row, false});
}

std::size_t RowList::Count()
{
    if (counted_) Fill();
    return front_.entries.size() + back_.entries.size() + added_.size() - holes_;
}

std::size_t RowList::Ordinal(Spot spot)
{
    if (spot.part != Part::Front) Fill();
    const auto holes = [&](Part part, std::size_t from, std::size_t to) {
        const auto begin = EntriesOf(part).begin();
        return static_cast<std::size_t>(std::count_if(
            begin + static_cast<std::ptrdiff_t>(from), begin + static_cast<std::ptrdiff_t>(to),
            [](const Entry& entry) { return entry.hole; }));
    };
    const auto before = [&](Part part, std::size_t from, std::size_t to) {
        return to - from - (holes_ == 0 ? 0 : holes(part, from, to));
    };
    if (spot.part == Part::Front) return before(Part::Front, 0, spot.index);
    const std::size_t front = before(Part::Front, 0, front_.entries.size());
    const std::size_t behind = back_.entries.size();
    if (spot.part == Part::Back) return front + before(Part::Back, spot.index + 1, behind);
    return front + before(Part::Back, 0, behind) + before(Part::Added, 0, spot.index);
}

}  // namespace dao
