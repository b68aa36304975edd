// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/DBEngine.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/ConnectText.h"
#include "jet/dao/WorkspaceState.h"
#include "jet/io/StdFile.h"

#include <random>

namespace dao {

using base::NumberedError;

DBEngine::DBEngine(EngineSettings settings) : state_(std::make_shared<State>())
{
    state_->settings = std::move(settings);
    state_->ownFiles = std::make_unique<jet::io::StdFileSystem>();
    state_->files = state_->ownFiles.get();
}

DBEngine::DBEngine(EngineSettings settings, jet::io::FileSystem& files)
    : state_(std::make_shared<State>())
{
    state_->settings = std::move(settings);
    state_->files = &files;
}

DBEngine::~DBEngine() = default;

Workspace& DBEngine::DefaultWorkspace()
{
    if (!state_->defaultWorkspace) {
        auto made = std::make_shared<Workspace::State>();
        made->engine = state_;
        made->number = state_->NextWorkspace();
        made->isDefault = true;
        state_->defaultWorkspace.emplace(std::move(made));
    }
    return *state_->defaultWorkspace;
}

Workspace DBEngine::CreateWorkspace(std::string_view, std::string_view user,
                                    std::string_view password)
{
    if (!base::SameName(user, "admin") || !password.empty()) throw NumberedError(3029);
    auto made = std::make_shared<Workspace::State>();
    made->engine = state_;
    made->number = state_->NextWorkspace();
    return Workspace(std::move(made));
}

void DBEngine::CreateDatabase(const std::string& path, DatabaseVersion version,
                              DatabaseEncoding encoding)
{
    const bool jet3 = version == DatabaseVersion::Jet3;
    jet::format::Protection protection;
    if (encoding == DatabaseEncoding::Encoded)
        protection.encodingKey = std::random_device()() | 1;  // any key but none
    jet::catalog::Catalog::CreateDatabase(
        *state_->files, path, jet3 ? jet::format::kJet3 : jet::format::kJet4, protection);
}

std::shared_ptr<Core> DBEngine::State::OpenAlready(const OpenFile& known, bool readOnly)
{
    std::shared_ptr<Core> core = known.writable.lock();
    return core || !readOnly ? core : known.readOnly.lock();
}

std::shared_ptr<Core> DBEngine::State::Open(const std::string& path, const OpenWish& wish)
{
    using jet::io::OpenMode;
    using jet::pages::Sharing;
    OpenFile& known = open_[files->Canonical(path)];
    Sharing sharing;
    sharing.use = wish.exclusive ? Sharing::Use::Alone : Sharing::Use::Shared;
    sharing.self.machine = settings.machine.empty() ? jet::io::MachineName() : settings.machine;
    sharing.pause = settings.pause;
    if (std::shared_ptr<Core> core = OpenAlready(known, wish.readOnly || wish.exclusive)) {
        core->Pager().RequirePassword(wish.password);
        if (wish.exclusive) throw NumberedError(3704, {sharing.self.machine, sharing.self.name});
        return core;
    }
    const auto openAs = [&](OpenMode mode) {
        return std::make_shared<Core>(
            jet::pages::Pager::Open(*files, path, mode, wish.password, sharing), settings.now,
            [engine = weak_from_this()](const jet::catalog::NewLink& link, bool toRead) {
                const std::shared_ptr<State> alive = engine.lock();
                if (!alive) throw NumberedError(3420);
                return alive->Open(link.database,
                                   {.exclusive = false,
                                    .readOnly = toRead,
                                    .password = jet::catalog::PartOf(link.connect, "PWD")});
            },
            edited_);
    };
    if (!wish.readOnly) {
        try {
            std::shared_ptr<Core> core = openAs(OpenMode::ReadWrite);
            known.writable = core;
            return core;
        } catch (const NumberedError& error) {
            // A file that may only be read opens for that.
            if (error.Number() != 3051) throw;
        }
    }
    std::shared_ptr<Core> core = openAs(OpenMode::ReadOnly);
    known.readOnly = core;
    return core;
}

}  // namespace dao
