// SPDX-License-Identifier: Apache-2.0
#include "tests/support/StoredStates.h"

#include "base/Convert.h"
#include "jet/format/Bytes.h"
#include "jet/format/HeaderPage.h"
#include "tests/support/WatchedFileSystem.h"

#include <algorithm>
#include <array>

namespace tests {

namespace {

constexpr const char* kDatabase = "C:/Shop/Kelvaro.mdb";

std::string DesignOf(const dao::TableDef& table)
{
    std::string design = table.Name() + ":";
    for (const dao::FieldDef& field : table.Fields())
        design += " " + field.name + "/" + std::to_string(static_cast<int>(field.type)) + "/" +
                  std::to_string(field.size) + "/" + std::to_string(field.attributes) + "/" +
                  field.defaultValue + (field.allowZeroLength ? "/0" : "");
    for (const dao::IndexDef& index : table.Indexes()) {
        design += " " + index.name + (index.primary ? "!" : "") + (index.unique ? "=" : "");
        for (const auto& part : index.fields)
            design += "," + part.field + (part.ascending ? "" : "-");
    }
    return design;
}

// Whether every user's word says that nothing is being written.
bool IsWhole(const std::vector<std::byte>& database)
{
    const jet::format::HeaderPage header =
        jet::format::ReadHeaderPage(jet::format::Span(database).first(jet::format::kJet4.pageSize));
    for (std::size_t user = 0; user < jet::format::kCommitWords; ++user) {
        const std::size_t at = header.version->header->commitWords + 2 * user;
        if (jet::format::ReadU16(database, at) < jet::format::kFirstCommitWord) return false;
    }
    return true;
}

WholeDatabase WholeOf(const std::vector<std::byte>& database)
{
    jet::io::MemoryFileSystem copy;
    PutDatabase(copy, database);
    ShopWorld reader(copy);
    return WholeIn(reader);
}

}  // namespace

bool IsOperation(const std::string& call)
{
    constexpr std::array<const char*, 6> names{"Write ",  "Flush ",  "Truncate ",
                                               "Create ", "Remove ", "Rename "};
    return std::any_of(names.begin(), names.end(),
                       [&call](const char* name) { return call.rfind(name, 0) == 0; });
}

void PutDatabase(jet::io::MemoryFileSystem& disk, const std::vector<std::byte>& content)
{
    (void)disk.Create(kDatabase);
    disk.Content(kDatabase) = content;
}

WholeDatabase WholeIn(ShopWorld& world)
{
    WholeDatabase whole;
    whole.rows = world.Stored();
    dao::Database database = world.engine.DefaultWorkspace().OpenDatabase(world.DatabasePath());
    for (const auto& [table, rows] : whole.rows)
        whole.designs.push_back(DesignOf(database.TableDef(table)));
    return whole;
}

ActHistory::ActHistory(const ShopAct& act, FileKind kind)
{
    jet::io::MemoryFileSystem memory;
    {
        ShopWorld world(memory);
        world.kind = kind;
        act.make(world);
    }
    made_ = memory.Content(kDatabase);
    lastWhole_ = made_;
    states_.push_back(WholeOf(made_));
    WatchedFileSystem disk(memory);
    disk.beforeCall = [&] {
        if (IsOperation(disk.call)) Watch(disk.call, memory.Content(kDatabase));
    };
    {
        ShopWorld world(disk);
        world.fakes.prompts.TakeAnyBox();
        act.run(world);
    }
    disk.beforeCall = nullptr;
    Watch("", memory.Content(kDatabase));  // nothing follows
    moments_.pop_back();
}

void ActHistory::Watch(const std::string& call, const std::vector<std::byte>& database)
{
    if (database != lastWhole_ && IsWhole(database)) {
        lastWhole_ = database;
        WholeDatabase now = WholeOf(database);
        if (now != states_.back()) states_.push_back(std::move(now));
    }
    if (lastCall_ == std::string("Flush ") + kDatabase && database == lastWhole_)
        flushed_ = states_.size();
    lastCall_ = call;
    moments_.push_back({states_.size(), flushed_});
}

std::string ActHistory::Objection(const WholeDatabase& found, std::size_t operation,
                                  bool flushedOnly) const
{
    const Moment& moment = moments_.at(std::min(operation, moments_.size() - 1));
    // Behind the last operation everything is stored; its flush was before.
    const std::size_t least = (flushedOnly ? moment.flushed : moment.stored) - 1;
    const std::size_t most = std::min(moment.stored, states_.size() - 1);
    for (std::size_t state = least; state <= most; ++state)
        if (found == states_[state]) return {};
    const auto known = std::find(states_.begin(), states_.end(), found);
    if (known == states_.end()) return "rows or designs that no store leaves";
    return "state " + std::to_string(known - states_.begin()) + " and not " +
           std::to_string(least) + " to " + std::to_string(most);
}

}  // namespace tests
