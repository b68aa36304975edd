// SPDX-License-Identifier: Apache-2.0
// RowList: which rows a record set has, in order; filled as far as somebody has walked.
#pragma once

#include "jet/sql/Filter.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace dao {

using jet::format::RowId;

// A place in the list; stays true while the list grows.
struct Spot {
    // Reached from the front; reached from the back, and counted from there; and rows that the
    // record set itself added, which come last.
    enum class Part { Front, Back, Added } part = Part::Front;
    std::size_t index = 0;
    friend bool operator==(const Spot&, const Spot&) = default;
};

// Rule: a row deleted through the list stays in it as a hole, so its neighbours keep their places;
//       First, Last, Next and Previous pass over holes. Who goes to the last row of many finds it
//       from behind; the rows between are found when somebody walks to them or counts.
class RowList {
public:
    using MakeFinder = std::function<std::unique_ptr<jet::sql::RowFinder>(jet::table::Direction)>;

    // All rows at once.
    explicit RowList(const std::vector<RowId>& rows);
    // Found one by one.
    explicit RowList(MakeFinder make);

    [[nodiscard]] std::optional<Spot> First();
    [[nodiscard]] std::optional<Spot> Last();
    [[nodiscard]] std::optional<Spot> Next(Spot spot);
    [[nodiscard]] std::optional<Spot> Previous(Spot spot);
    // The row's place, as far as the list is filled.
    [[nodiscard]] std::optional<Spot> Find(RowId row);
    // The same, after filling the list as far as the row would stand.
    [[nodiscard]] std::optional<Spot> Locate(RowId row);
    // Whether one place comes before the other.
    [[nodiscard]] static bool IsBefore(Spot one, Spot other);
    // Whether the rows stand as in the table, but for those that the record set added.
    [[nodiscard]] bool IsInStorageOrder() const { return make_ != nullptr; }

    // The stored bytes of the row, when the last step found it by reading them; null otherwise.
    // Rule: good for the reading that made the step.
    [[nodiscard]] const jet::format::RowView* JustRead(Spot spot) const;
    [[nodiscard]] RowId Id(Spot spot) const { return At(spot).id; }
    [[nodiscard]] bool IsHole(Spot spot) const { return At(spot).hole; }
    void MakeHole(Spot spot);
    void Add(RowId row);

    // Rows reached so far, holes not counted; all of them once somebody has gone to the last.
    [[nodiscard]] std::size_t Count();
    // Rows before this one, holes not counted.
    [[nodiscard]] std::size_t Ordinal(Spot spot);

private:
    struct Entry {
        RowId id;
        bool hole = false;
    };
    // One end of the list, and what finds further rows from there.
    struct End {
        std::vector<Entry> entries;
        std::unique_ptr<jet::sql::RowFinder> finder;  // null before the first step
        bool stepped = false;                         // the last step of the list took a row here
    };

    [[nodiscard]] const std::vector<Entry>& EntriesOf(Spot::Part part) const;
    [[nodiscard]] const Entry& At(Spot spot) const { return EntriesOf(spot.part)[spot.index]; }
    // Fills one end up to `index`; false when the other end, or nothing, comes before.
    bool Reach(Spot::Part part, std::size_t index);
    // Takes one more row; false when the list is full.
    bool Step(End& end, const End& other, jet::table::Direction direction);
    void Fill();
    void NotePlaces(Spot::Part part);
    [[nodiscard]] std::optional<Spot> Search(RowId row) const;
    [[nodiscard]] std::optional<Spot> NextPlace(Spot spot);
    [[nodiscard]] std::optional<Spot> PreviousPlace(Spot spot);

    MakeFinder make_;
    End front_, back_;
    std::vector<Entry> added_;
    bool full_ = false;     // the ends have met
    bool counted_ = false;  // somebody has gone to the last row
    std::size_t holes_ = 0;
    // Where the rows stand, of as many of each part as were noted; worked out when it is asked for.
    std::unordered_map<std::uint64_t, Spot> places_;
    std::array<std::size_t, 3> noted_{};
};

}  // namespace dao
