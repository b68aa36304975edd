// SPDX-License-Identifier: Apache-2.0
#include "jet/dao/DBEngine.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/dao/WorkspaceState.h"
#include "jet/io/StdFile.h"

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
    return Workspace(std::move(made));
}

void DBEngine::CreateDatabase(const std::string& path, DatabaseVersion version)
{
    const bool jet3 = version == DatabaseVersion::Jet3;
    jet::catalog::Catalog::CreateDatabase(*state_->files, path,
                                          jet3 ? jet::format::kJet3 : jet::format::kJet4);
}

std::shared_ptr<Core> DBEngine::State::Open(const std::string& path, bool readOnly)
{
    using jet::io::OpenMode;
    OpenFile& known = open_[files->Canonical(path)];
    if (std::shared_ptr<Core> core = known.writable.lock()) return core;
    if (readOnly) {
        if (std::shared_ptr<Core> core = known.readOnly.lock()) return core;
    }
    const auto open = [&](OpenMode mode) {
        return std::make_shared<Core>(jet::pages::Pager::Open(*files, path, mode), settings.now);
    };
    if (!readOnly) {
        try {
            std::shared_ptr<Core> core = open(OpenMode::ReadWrite);
            known.writable = core;
            return core;
        } catch (const NumberedError& error) {
            // A file that may only be read opens for that.
            if (error.Number() != 3051) throw;
        }
    }
    std::shared_ptr<Core> core = open(OpenMode::ReadOnly);
    known.readOnly = core;
    return core;
}

}  // namespace dao
