// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/Workspace.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/ConnectText.h"
#include "jet/dao/WorkspaceState.h"

#include <algorithm>

namespace dao {

using base::NumberedError;

namespace {

// A name without extension is a database's.
std::string WithExtension(const std::string& path)
{
    const std::size_t folderEnd = path.find_last_of("/\\");
    const std::size_t point = path.find_last_of('.');
    const bool has =
        point != std::string::npos && (folderEnd == std::string::npos || point > folderEnd);
    return has ? path : path + ".mdb";
}

}  // namespace

Workspace::Workspace(std::shared_ptr<State> state) : state_(std::move(state)) {}
Workspace::Workspace(Workspace&&) noexcept = default;
Workspace& Workspace::operator=(Workspace&&) noexcept = default;
Workspace::~Workspace() = default;

Database Workspace::OpenDatabase(const std::string& path, bool exclusive, bool readOnly,
                                 std::string_view connect)
{
    if (!state_) throw NumberedError(91);
    const std::shared_ptr<DBEngine::State> engine = state_->engine.lock();
    if (state_->closed || !engine) throw NumberedError(3420);
    if (base::Trim(path).empty()) throw NumberedError(3055);
    const std::string file = WithExtension(path);
    auto opened = std::make_shared<Database::State>();
    opened->core = engine->Open(file, {.exclusive = exclusive,
                                       .readOnly = readOnly,
                                       .password = jet::catalog::PartOf(connect, "PWD")});
    opened->workspace = state_->number;
    opened->path = file;
    opened->readOnly = readOnly;
    opened->session.now = engine->settings.now;
    opened->session.bytesPerCharacter = opened->core->BytesPerCharacter();
    const std::weak_ptr<Core> core = opened->core;
    opened->session.open = [core, number = state_->number](std::string_view name) {
        const std::shared_ptr<Core> open = core.lock();
        jet::sql::TablePtr table = open ? open->Table(name) : nullptr;
        if (table) table->rows->Pages().ActFor(number);  // of another file, when it is a link
        return table;
    };
    opened->session.whole = [core](const std::function<void()>& read) {
        const std::shared_ptr<Core> open = core.lock();
        if (!open) throw NumberedError(3420);
        open->Pager().ReadWhole(jet::pages::Pager::Look::OnlyIfOld, read);
    };
    auto& all = state_->databases;
    all.erase(std::remove_if(all.begin(), all.end(), [](const auto& one) { return one.expired(); }),
              all.end());
    all.push_back(opened);
    return Database(std::move(opened));
}

void Workspace::Close()
{
    if (!state_) throw NumberedError(91);
    if (state_->isDefault) return;
    if (state_->closed) throw NumberedError(3420);
    for (const std::weak_ptr<Database::State>& one : state_->databases)
        if (const std::shared_ptr<Database::State> database = one.lock()) database->Close();
    state_->databases.clear();
    state_->closed = true;
}

}  // namespace dao
