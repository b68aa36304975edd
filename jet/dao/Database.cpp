// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/Database.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/dao/DatabaseState.h"
#include "jet/dao/Names.h"
#include "jet/dao/RecordsetState.h"
#include "jet/dao/TableDesign.h"
#include "jet/sql/Action.h"
#include "jet/sql/Parser.h"

#include <algorithm>

namespace dao {

using base::NumberedError;
using Look = jet::pages::Pager::Look;
using State = Database::State;

namespace {

State& Opened(const std::shared_ptr<State>& state)
{
    if (!state) throw NumberedError(91);
    if (!state->core) throw NumberedError(3420);
    return *state;
}

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// A set over a table by its name, or over a SELECT.
RecordsetPlan PlanFor(State& state, std::string_view source, RecordsetType type)
{
    const std::string_view text = Trimmed(source);
    RecordsetPlan plan;
    const std::string_view name = WithoutBrackets(text);
    if (jet::sql::TablePtr table = state.core->Table(name)) {
        // A link into its own file has another name than the table there.
        const bool linked = &table->rows->Pages() != &state.core->Pager() ||
                            !base::SameName(table->entry.name, name);
        if (linked && type == RecordsetType::Table) throw NumberedError(3219);
        const auto usual = linked ? RecordsetType::Dynaset : RecordsetType::Table;
        plan.type = type == RecordsetType::Default ? usual : type;
        plan.query = std::make_unique<jet::sql::Query>(std::move(table), state.session);
        return plan;
    }
    switch (jet::sql::StartOf(text)) {
    case jet::sql::StatementStart::Action:
        throw NumberedError(3219);
    case jet::sql::StatementStart::None:
        throw NumberedError(3078, {std::string(text)});
    case jet::sql::StatementStart::Select:
        break;
    }
    if (type == RecordsetType::Table) throw NumberedError(3219);
    plan.type = type == RecordsetType::Default ? RecordsetType::Dynaset : type;
    jet::sql::Statement statement = jet::sql::ParseStatement(text, state.session.now());
    plan.query = std::make_unique<jet::sql::Query>(
        std::get<jet::sql::SelectStatement>(std::move(statement)), state.session);
    return plan;
}

}  // namespace

void Database::State::Close()
{
    for (const std::weak_ptr<Recordset::State>& one : recordsets)
        if (const std::shared_ptr<Recordset::State> records = one.lock()) records->Release();
    recordsets.clear();
    core.reset();
}

Database::Database() = default;
Database::Database(std::shared_ptr<State> state) : state_(std::move(state)) {}
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::~Database() = default;

bool Database::IsSet() const noexcept
{
    return state_ != nullptr;
}

std::string Database::Name() const
{
    return Opened(state_).path;
}

std::string Database::Version() const
{
    return Opened(state_).core->Pager().Version().name;
}

bool Database::Updatable() const
{
    const State& state = Opened(state_);
    return !state.readOnly && !state.core->Pager().ReadOnly();
}

bool Database::HasSetJournalAside() const
{
    return Opened(state_).core->Pager().Recovered() == jet::pages::Recovery::SetAside;
}

std::vector<std::string> Database::TableNames() const
{
    const State& state = Opened(state_);
    std::vector<jet::catalog::CatalogEntry> entries;
    state.Pages().ReadWhole(Look::Always, [&] { entries = state.core->Catalog().Entries(); });
    std::vector<std::string> names;
    for (const jet::catalog::CatalogEntry& entry : entries)
        if (entry.kind == jet::catalog::ObjectKind::LocalTable ||
            entry.kind == jet::catalog::ObjectKind::LinkedTable ||
            entry.kind == jet::catalog::ObjectKind::OdbcTable)
            names.push_back(entry.name);
    return names;
}

dao::TableDef Database::TableDef(std::string_view name) const
{
    State& state = Opened(state_);
    jet::sql::TablePtr table;
    state.Pages().ReadWhole(Look::Always, [&] { table = state.core->Table(name); });
    if (!table) throw NumberedError(3265);
    dao::TableDef made = TableDefOf(*table);
    if (const auto link = state.core->Catalog().Link(name))
        made.SetLink(link->name, ConnectOf(*link), link->table);
    return made;
}

void Database::Append(const dao::TableDef& table)
{
    State& state = Opened(state_);
    if (!Updatable()) throw NumberedError(3027);
    static_cast<void>(state.Pages());
    if (table.Connect().empty())
        return state.core->Catalog().Create(NewTableOf(table), state.session.now());
    const jet::catalog::NewLink link = NewLinkOf(table);
    static_cast<void>(state.core->LinkedTable(link));  // it must lead somewhere
    state.core->Catalog().Create(link, state.session.now());
}

std::vector<RelationDef> Database::Relations() const
{
    const State& state = Opened(state_);
    std::vector<RelationDef> relations;
    state.Pages().ReadWhole(Look::Always, [&] {
        relations.clear();
        for (const auto& stored : state.core->Catalog().Relationships())
            relations.push_back(RelationDefOf(stored));
    });
    return relations;
}

void Database::Append(const RelationDef& relation)
{
    State& state = Opened(state_);
    if (!Updatable()) throw NumberedError(3027);
    state.Pages().Refresh();
    state.core->Catalog().Create(NewRelationshipOf(relation), state.session.now());
}

void Database::DeleteTableDef(std::string_view name)
{
    State& state = Opened(state_);
    if (!Updatable()) throw NumberedError(3027);
    state.Pages().Refresh();
    state.core->Catalog().DeleteLink(name);
}

void Database::DeleteRelation(std::string_view name)
{
    State& state = Opened(state_);
    if (!Updatable()) throw NumberedError(3027);
    state.Pages().Refresh();
    state.core->Catalog().DeleteRelationship(name, state.session.now());
}

Recordset Database::OpenRecordset(std::string_view source, RecordsetType type, int options)
{
    State& state = Opened(state_);
    std::shared_ptr<Recordset::State> records;
    state.Pages().ReadWhole(Look::Always, [&] {
        RecordsetPlan plan = PlanFor(state, source, type);
        plan.readOnly = !Updatable() || (options & kReadOnlySet) != 0;
        records = std::make_shared<Recordset::State>(state_, std::move(plan));
    });
    auto& all = state.recordsets;
    const auto gone = [](const std::weak_ptr<Recordset::State>& one) { return one.expired(); };
    all.erase(std::remove_if(all.begin(), all.end(), gone), all.end());
    all.push_back(records);
    return Recordset(std::move(records));
}

void Database::Execute(std::string_view sql, int options)
{
    State& state = Opened(state_);
    jet::sql::Statement statement = jet::sql::ParseStatement(sql, state.session.now());
    const bool isSelect = std::holds_alternative<jet::sql::SelectStatement>(statement);
    if (!isSelect && !Updatable()) throw NumberedError(3027);
    state.Pages().Refresh();
    const auto onRowError =
        (options & kFailOnError) != 0 ? jet::sql::OnRowError::Stop : jet::sql::OnRowError::PassOver;
    state.recordsAffected = jet::sql::Execute(std::move(statement), state.session, onRowError);
}

int Database::RecordsAffected() const
{
    return Opened(state_).recordsAffected;
}

void Database::Close()
{
    Opened(state_).Close();
}

}  // namespace dao
