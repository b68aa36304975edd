// SPDX-License-Identifier: Apache-2.0
// Opening, positions and fields of a record set.
#include "jet/dao/RecordsetState.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/dao/Names.h"

namespace dao {

using base::NumberedError;
using jet::sql::OutputField;

namespace {

std::uint64_t NextId()
{
    static std::uint64_t last = 0;
    return ++last;
}

// Rows of values have places instead of row ids.
std::vector<RowId> Places(std::size_t count)
{
    std::vector<RowId> places(count);
    for (std::size_t i = 0; i < count; ++i)
        places[i].page = static_cast<jet::format::PageNumber>(i);
    return places;
}

}  // namespace

Recordset::State::State(std::shared_ptr<Database::State> owner, RecordsetPlan plan)
    : id(NextId()), database(owner), type(plan.type), readOnly(plan.readOnly),
      bytesPerCharacter(owner->session.bytesPerCharacter), query(std::move(plan.query))
{
    if (query->Table()) bytesPerCharacter = query->Table()->bytesPerCharacter;
    ofValues = !query->GivesTableRows() || type == RecordsetType::Snapshot ||
               type == RecordsetType::ForwardOnly;
    Read(Look::OnlyIfOld, [&] { Populate(); });
}

// Everything that can fail comes before the first change.
void Recordset::State::Populate()
{
    std::optional<RowList> found;
    std::vector<jet::sql::ValueRow> worked;
    if (ofValues) {
        worked = RowsOf(*query);
        found.emplace(Places(worked.size()));
    } else if (query->InStorageOrder()) {
        found.emplace([this](jet::table::Direction direction) {
            return std::make_unique<jet::sql::RowFinder>(Source(), query->Where(), direction);
        });
    } else {
        found.emplace(RowIdsOf(*query));
    }
    const std::optional<Spot> first = found->First();
    rows = std::move(found);
    values = std::move(worked);
    bof = eof = true;
    current.reset();
    image.Reset();
    if (first) StandOnReached(*first);
}

void Recordset::State::Release()
{
    closed = true;
    DropEdit();
    rows.reset();
    values.clear();
    image.Reset();
    query.reset();
}

std::shared_ptr<Database::State> Recordset::State::RequireOpen() const
{
    std::shared_ptr<Database::State> owner = database.lock();
    if (closed || !owner || !owner->core) throw NumberedError(3420);
    return owner;
}

jet::pages::Pager& Recordset::State::Pages() const
{
    const std::shared_ptr<Database::State> owner = RequireOpen();
    if (!query->Table()) return owner->Pages();
    jet::pages::Pager& pages = query->Table()->rows->Pages();
    pages.ActFor(owner->workspace);
    return pages;
}

void Recordset::State::Fetch()
{
    if (ofValues || rows->IsHole(*current)) {
        image.Reset();
    } else {
        image.Set(Source().Fetch(rows->Id(*current)));
    }
}

void Recordset::State::StandOn(Spot spot)
{
    current = spot;
    bof = eof = false;
    Fetch();
}

// A step that read the row spares the second look at it.
void Recordset::State::StandOnReached(Spot spot)
{
    const jet::format::RowView* const row = ofValues ? nullptr : rows->JustRead(spot);
    if (row == nullptr) return StandOn(spot);
    current = spot;
    bof = eof = false;
    image.Copy(rows->Id(spot), row->Bytes());
}

void Recordset::State::RequireMovable() const
{
    if (type == RecordsetType::ForwardOnly) throw NumberedError(3251);
}

Spot Recordset::State::RequireRow() const
{
    if (bof || eof || !current) throw NumberedError(3021);
    if (rows->IsHole(*current) || (!ofValues && !image.IsSet())) throw NumberedError(3167);
    return *current;
}

void Recordset::State::StandOnOrPass(std::optional<Spot> spot, bool& flag)
{
    if (spot) return StandOnReached(*spot);
    flag = true;
    current.reset();
    image.Reset();
}

void Recordset::State::MoveFirst()
{
    RequireMovable();
    DropEdit();
    std::optional<Spot> first;
    Read(Look::OnlyIfOld, [&] {
        first = rows->First();
        if (first) StandOnReached(*first);
    });
    if (first) return;
    bof = eof = true;
    throw NumberedError(3021);
}

void Recordset::State::MoveLast()
{
    RequireMovable();
    DropEdit();
    std::optional<Spot> last;
    Read(Look::OnlyIfOld, [&] {
        last = rows->Last();
        if (last) StandOnReached(*last);
    });
    if (last) return;
    bof = eof = true;
    throw NumberedError(3021);
}

void Recordset::State::MoveNext()
{
    if (eof) throw NumberedError(3021);
    DropEdit();
    const std::optional<Spot> from = bof ? std::nullopt : current;
    bof = false;
    Read(Look::OnlyIfOld, [&] { StandOnOrPass(from ? rows->Next(*from) : rows->First(), eof); });
}

void Recordset::State::MovePrevious()
{
    RequireMovable();
    if (bof) throw NumberedError(3021);
    const std::optional<Spot> from = eof ? std::nullopt : current;
    bool none = false;
    Read(Look::OnlyIfOld, [&] {
        const std::optional<Spot> previous = from ? rows->Previous(*from) : rows->Last();
        none = !from && !previous;
        if (none) return;
        DropEdit();
        StandOnOrPass(previous, bof);
    });
    if (none) throw NumberedError(3021);
}

void Recordset::State::Refresh()
{
    if (bof || eof || !current) throw NumberedError(3021);
    DropEdit();
    Read(Look::Always, [&] { Fetch(); });
    RequireRow();
}

void Recordset::State::Requery()
{
    if (type == RecordsetType::Table) throw NumberedError(3251);
    Read(Look::Always, [&] {
        DropEdit();
        noMatch = false;
        Populate();
    });
}

std::size_t Recordset::State::FieldNamed(std::string_view name) const
{
    const std::string_view wanted = WithoutBrackets(name);
    const std::vector<OutputField>& fields = query->Fields();
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (base::SameName(fields[i].name, wanted)) return i;
    throw NumberedError(3265);
}

std::size_t Recordset::State::PlaceOf(int index) const
{
    if (index < 0 || static_cast<std::size_t>(index) >= query->Fields().size())
        throw NumberedError(3265);
    return static_cast<std::size_t>(index);
}

BookmarkValue Recordset::State::BookmarkOf(RowId row) const
{
    return {id, jet::format::Raw(row.page), row.slot};
}

BookmarkValue Recordset::State::Bookmark() const
{
    return BookmarkOf(rows->Id(RequireRow()));
}

void Recordset::State::SetBookmark(const BookmarkValue& bookmark)
{
    if (type == RecordsetType::ForwardOnly) throw NumberedError(3251);
    const RowId row{static_cast<jet::format::PageNumber>(bookmark.page), bookmark.slot};
    const std::optional<Spot> spot =
        bookmark.recordset == id ? rows->Find(row) : std::optional<Spot>();
    if (!spot) throw NumberedError(3159);
    if (rows->IsHole(*spot)) throw NumberedError(3167);
    Read(Look::Always, [&] {
        if (!ofValues && !Source().Fetch(row)) throw NumberedError(3167);
        DropEdit();
        StandOn(*spot);
    });
}

int Recordset::State::RecordCount()
{
    if (type == RecordsetType::Table) return static_cast<int>(Source().RowCount());
    std::size_t count = 0;
    Read(Look::OnlyIfOld, [&] { count = rows->Count(); });
    return static_cast<int>(count);
}

int Recordset::State::AbsolutePosition()
{
    if (bof || eof || !current) return -1;
    std::size_t position = 0;
    Read(Look::OnlyIfOld, [&] { position = rows->Ordinal(*current); });
    return static_cast<int>(position);
}

}  // namespace dao
