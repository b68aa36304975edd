// SPDX-License-Identifier: Apache-2.0
// RecordsetState: a record set's rows, position and pending edit, and what is done with them.
#pragma once

#include "jet/dao/DatabaseState.h"
#include "jet/dao/Recordset.h"
#include "jet/dao/RowList.h"
#include "jet/sql/QueryRows.h"

#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace dao {

// What a record set is made from.
struct RecordsetPlan {
    std::unique_ptr<jet::sql::Query> query;
    RecordsetType type = RecordsetType::Dynaset;
    bool readOnly = false;
};

// The pending Edit or AddNew: values by column of the table.
struct EditBuffer {
    EditMode mode = EditMode::None;
    jet::locks::PageLocks lock;          // of an edited row's page
    std::shared_ptr<const void> marked;  // the row, as being edited
    std::uint64_t ownCommits = 0;        // of this process, before
    std::vector<std::optional<base::Value>> assigned;
    std::vector<base::Value> initial;  // of a new row
};

// The current row as it was when it was fetched, if it was there.
class RowImage {
public:
    [[nodiscard]] bool IsSet() const { return row_.has_value(); }
    [[nodiscard]] RowId Id() const { return row_->id; }
    [[nodiscard]] const std::vector<std::byte>& Bytes() const { return row_->bytes; }
    // Made when it is first asked for. Requires: set; `source` is where the row comes from.
    [[nodiscard]] const jet::format::RowView& View(const jet::table::RowSource& source) const
    {
        if (!view_) view_.emplace(source.View(*row_));
        return *view_;
    }

    void Set(std::optional<jet::table::StoredRow> row)
    {
        view_.reset();
        row_ = std::move(row);
    }
    // The memory of the row before is used again.
    void Copy(RowId id, jet::format::Span bytes)
    {
        view_.reset();
        if (!row_) row_.emplace();
        row_->id = id;
        row_->bytes.assign(bytes.begin(), bytes.end());
    }
    void Reset() { Set(std::nullopt); }

private:
    std::optional<jet::table::StoredRow> row_;
    mutable std::optional<jet::format::RowView> view_;
};

class Criterion;

// Errors: as in Recordset.h; 91 and 3420 are seen to there.
struct Recordset::State {
    State(std::shared_ptr<Database::State> owner, RecordsetPlan plan);

    // Errors: 3420.
    [[nodiscard]] std::shared_ptr<Database::State> RequireOpen() const;
    // Closes the set and lets go of the file.
    void Release();

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Refresh();
    void Requery();

    enum class Direction { Forward, Backward };
    enum class From { End, CurrentRow };
    void Find(std::string_view criteria, From from, Direction direction);

    void Edit();
    void AddNew();
    void Update();
    void CancelUpdate();
    void Delete();
    void Assign(std::size_t place, const base::Value& value);

    // Place among the output fields. Errors: 3265.
    [[nodiscard]] std::size_t FieldNamed(std::string_view name) const;
    [[nodiscard]] std::size_t PlaceOf(int index) const;
    [[nodiscard]] const jet::sql::OutputField& FieldAt(int index) const
    {
        return query->Fields()[PlaceOf(index)];
    }
    [[nodiscard]] base::Value ValueOf(std::size_t field) const;

    [[nodiscard]] BookmarkValue Bookmark() const;
    void SetBookmark(const BookmarkValue& bookmark);
    [[nodiscard]] BookmarkValue BookmarkOf(RowId row) const;

    [[nodiscard]] int RecordCount();
    [[nodiscard]] int AbsolutePosition();
    [[nodiscard]] bool Updatable() const;

    std::uint64_t id = 0;
    std::weak_ptr<Database::State> database;
    bool closed = false;  // itself, or with its database
    RecordsetType type = RecordsetType::Dynaset;
    bool readOnly = false;
    std::size_t bytesPerCharacter = 2;

    std::unique_ptr<jet::sql::Query> query;
    bool ofValues = false;                   // rows are values worked out when opened
    std::vector<jet::sql::ValueRow> values;  // of those
    std::optional<RowList> rows;             // set from the start
    bool bof = true, eof = true, noMatch = false;
    std::optional<Spot> current;
    RowImage image;
    std::optional<RowId> lastModified;
    EditBuffer edit;

private:
    friend class PendingRow;
    void Populate();
    void StandOn(Spot spot);
    // After a step of the list, in the same reading.
    void StandOnReached(Spot spot);
    // The file in which the rows lie, acting for the set's workspace. Errors: 3420.
    [[nodiscard]] jet::pages::Pager& Pages() const;
    // Reads what belongs together, again when another program wrote meanwhile.
    using Look = jet::pages::Pager::Look;
    void Read(Look look, const std::function<void()>& read) const { Pages().ReadWhole(look, read); }
    void Fetch();
    Spot RequireRow() const;
    void RequireMovable() const;
    void RequireUpdatable() const;
    void DropEdit() { edit = {}; }
    void StandOnOrPass(std::optional<Spot> spot, bool& flag);
    [[nodiscard]] jet::table::RowSource& Source() const { return *query->Table()->rows; }
    [[nodiscard]] base::Value ColumnValue(std::size_t column) const;
    // What a reading of the current row gives; of its stored row, when long values are read.
    using ReadRow = std::function<base::Value(const jet::format::RowView&)>;
    [[nodiscard]] base::Value OfStoredRow(const ReadRow& read) const;
    void RequireUnchanged();
    [[nodiscard]] std::optional<Spot> Search(const Criterion& criterion, From from,
                                             Direction direction);
    [[nodiscard]] std::optional<Spot> SearchByKey(const jet::sql::Filter& keyed, From from,
                                                  Direction direction);
    void WriteEdit();
    void WriteNew();
};

}  // namespace dao
