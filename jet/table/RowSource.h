// SPDX-License-Identifier: Apache-2.0
// RowSource: rows by id, the one seam between record sets and where rows come from.
#pragma once

#include "base/Value.h"
#include "jet/format/RowView.h"
#include "jet/format/TableDefinition.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace jet::table {

using format::RowId;

enum class Direction { Forward, Backward };

// Walks rows in storage order or against it. Storage order: pages ascending, slots ascending, moved
// rows at their original slot. Rule: tolerates changes to the table between two calls of Next; a
// row added behind its place is met.
class RowCursor {
public:
    RowCursor() = default;
    RowCursor(const RowCursor&) = delete;
    RowCursor& operator=(const RowCursor&) = delete;
    virtual ~RowCursor() = default;

    // Goes to the next row; false at the end.
    [[nodiscard]] virtual bool Next() = 0;
    [[nodiscard]] RowId Id() const { return id_; }
    // Valid until the next call of Next.
    [[nodiscard]] const format::RowView& Row() const { return *row_; }

    // Shows all rows that follow, one after the other. Requires: nothing is changed meanwhile.
    using Visit = std::function<void(RowId id, const format::RowView& row)>;
    virtual void ForEach(const Visit& visit)
    {
        while (Next())
            visit(id_, *row_);
    }

protected:
    RowId id_;
    std::optional<format::RowView> row_;
};

// A row's stored bytes, kept: what a record set compares to see whether somebody else changed it.
struct StoredRow {
    RowId id;
    std::vector<std::byte> bytes;
};

// One value to write. Requires: `value` is null or already of the column's own type.
struct Assignment {
    std::size_t column = 0;  // place in Definition().columns
    base::Value value;
};

// One row to be inserted (`row` does not count), changed or deleted (`values` do not count).
struct Change {
    enum class Kind { Insert, Update, Delete } kind = Kind::Update;
    RowId row;
    std::vector<Assignment> values;
};

// Errors: 3343/3049 for damaged bytes, and those of each writer.
class RowSource {
public:
    RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;
    virtual ~RowSource() = default;

    [[nodiscard]] virtual const format::TableDefinition& Definition() const = 0;
    // Rows stored now.
    [[nodiscard]] virtual std::uint32_t RowCount() const = 0;

    // All rows in storage order.
    [[nodiscard]] std::unique_ptr<RowCursor> Scan() const
    {
        return ScanFor({}, Direction::Forward);
    }
    // Of the rows whose columns do not all equal `keys`, as many may be left out as is easy.
    // Rule: with keys or backwards, rows that are added meanwhile need not be met.
    [[nodiscard]] virtual std::unique_ptr<RowCursor> ScanFor(std::span<const Assignment> keys,
                                                             Direction direction) const = 0;
    // Nothing when the row was deleted.
    [[nodiscard]] virtual std::optional<StoredRow> Fetch(RowId row) const = 0;
    [[nodiscard]] virtual format::RowView View(const StoredRow& row) const = 0;
    // One column's value, long values read whole.
    [[nodiscard]] virtual base::Value ValueOf(const format::RowView& row,
                                              std::size_t column) const = 0;

    // Ids of the rows whose leading index columns equal `keys` (column, value), in storage order,
    // when an index of the file answers that; nothing when none does.
    [[nodiscard]] virtual std::optional<std::vector<RowId>>
    FindByKey(std::span<const Assignment> keys) const = 0;

    // Draws the next counter value and stores it as used. Requires: the table has a counter column.
    [[nodiscard]] virtual std::int32_t NextAutoNumber() = 0;

    // Each call is one atomic write set. Columns not assigned are null (booleans false) in a new
    // row and keep their stored value in an update. Errors: 3022 duplicate key, 3058 null in a key,
    // 3047 record too large, 3027 read-only, 3167 the
    //         row is gone, and the number for text that cannot be keyed; nothing is written then.
    virtual RowId Insert(std::span<const Assignment> values) = 0;
    virtual void Update(RowId row, std::span<const Assignment> values) = 0;
    virtual void Delete(RowId row) = 0;
    // All changes in one write set, in this order: when one fails, nothing is written.
    // Rule: they are made by `make` from rows that nobody else can change until they are stored;
    //       it may be called again when somebody else did. A row to be deleted that is gone already
    //       is no failure.
    virtual void Apply(const std::function<std::vector<Change>()>& make) = 0;
};

}  // namespace jet::table
