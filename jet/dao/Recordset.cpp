// SPDX-License-Identifier: Apache-2.0
// The face of a record set: whether it is open, then the work of its state.
#include "jet/dao/Recordset.h"

#include "base/NumberedError.h"
#include "jet/dao/FieldTypes.h"
#include "jet/dao/RecordsetState.h"

namespace dao {

using base::NumberedError;
using State = Recordset::State;

namespace {

State& Opened(const std::shared_ptr<State>& state)
{
    if (!state) throw NumberedError(91);
    if (state->closed) throw NumberedError(3420);
    return *state;
}

}  // namespace

Recordset::Recordset() = default;
Recordset::Recordset(std::shared_ptr<State> state) : state_(std::move(state)) {}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

bool Recordset::IsSet() const noexcept
{
    return state_ != nullptr;
}

bool Recordset::Bof() const
{
    return Opened(state_).bof;
}

bool Recordset::Eof() const
{
    return Opened(state_).eof;
}

bool Recordset::NoMatch() const
{
    return Opened(state_).noMatch;
}

int Recordset::RecordCount() const
{
    return Opened(state_).RecordCount();
}

int Recordset::AbsolutePosition() const
{
    return Opened(state_).AbsolutePosition();
}

void Recordset::MoveFirst()
{
    Opened(state_).MoveFirst();
}

void Recordset::MoveLast()
{
    Opened(state_).MoveLast();
}

void Recordset::MoveNext()
{
    Opened(state_).MoveNext();
}

void Recordset::MovePrevious()
{
    Opened(state_).MovePrevious();
}

void Recordset::Refresh()
{
    Opened(state_).Refresh();
}

void Recordset::FindFirst(std::string_view criteria)
{
    Opened(state_).Find(criteria, State::From::End, State::Direction::Forward);
}

void Recordset::FindNext(std::string_view criteria)
{
    Opened(state_).Find(criteria, State::From::CurrentRow, State::Direction::Forward);
}

void Recordset::FindLast(std::string_view criteria)
{
    Opened(state_).Find(criteria, State::From::End, State::Direction::Backward);
}

void Recordset::FindPrevious(std::string_view criteria)
{
    Opened(state_).Find(criteria, State::From::CurrentRow, State::Direction::Backward);
}

void Recordset::Edit()
{
    Opened(state_).Edit();
}

void Recordset::AddNew()
{
    Opened(state_).AddNew();
}

void Recordset::Update()
{
    Opened(state_).Update();
}

void Recordset::CancelUpdate()
{
    Opened(state_).CancelUpdate();
}

void Recordset::Delete()
{
    Opened(state_).Delete();
}

int Recordset::FieldCount() const
{
    return static_cast<int>(Opened(state_).query->Fields().size());
}

Field Recordset::operator[](std::string_view name)
{
    return {*this, std::string(name)};
}

Field Recordset::operator[](int index)
{
    return {*this, index};
}

std::string Recordset::FieldName(int index) const
{
    return Opened(state_).FieldAt(index).name;
}

FieldType Recordset::TypeOf(int index) const
{
    return FieldTypeOf(Opened(state_).FieldAt(index).type);
}

int Recordset::SizeOf(int index) const
{
    const State& state = Opened(state_);
    const jet::sql::OutputField& field = state.FieldAt(index);
    if (field.column)
        return FieldSizeOf(state.query->Table()->rows->Definition().columns[*field.column],
                           state.bytesPerCharacter);
    jet::format::ColumnDefinition column;
    column.type = field.type;
    column.length = static_cast<std::uint16_t>(kLongestText * state.bytesPerCharacter);
    return FieldSizeOf(column, state.bytesPerCharacter);
}

BookmarkValue Recordset::Bookmark() const
{
    return Opened(state_).Bookmark();
}

void Recordset::SetBookmark(const BookmarkValue& bookmark)
{
    Opened(state_).SetBookmark(bookmark);
}

BookmarkValue Recordset::LastModified() const
{
    const State& state = Opened(state_);
    if (!state.lastModified) throw NumberedError(3021);
    return state.BookmarkOf(*state.lastModified);
}

dao::EditMode Recordset::EditMode() const
{
    return Opened(state_).edit.mode;
}

RecordsetType Recordset::Type() const
{
    return Opened(state_).type;
}

bool Recordset::Updatable() const
{
    return Opened(state_).Updatable();
}

void Recordset::Requery()
{
    Opened(state_).Requery();
}

void Recordset::Close()
{
    Opened(state_).Release();
}

base::Value Field::Value() const
{
    const State& state = Opened(records_->state_);
    return state.ValueOf(place_ ? state.PlaceOf(*place_) : state.FieldNamed(name_));
}

Field& Field::operator=(const base::Value& value)
{
    State& state = Opened(records_->state_);
    state.Assign(place_ ? state.PlaceOf(*place_) : state.FieldNamed(name_), value);
    return *this;
}

Field& Field::operator=(const Field& other)
{
    return *this = other.Value();
}

}  // namespace dao
