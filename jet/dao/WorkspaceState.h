// SPDX-License-Identifier: Apache-2.0
// WorkspaceState: the files an engine has open, and the databases of one session.
#pragma once

#include "jet/dao/DBEngine.h"
#include "jet/dao/DatabaseState.h"
#include "jet/io/File.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dao {

// How a file shall be opened.
struct OpenWish {
    bool exclusive = false, readOnly = false;
    std::string_view password;
};

struct DBEngine::State : std::enable_shared_from_this<DBEngine::State> {
    EngineSettings settings;
    std::unique_ptr<jet::io::FileSystem> ownFiles;  // of this machine, unless others were given
    jet::io::FileSystem* files = nullptr;
    std::optional<Workspace> defaultWorkspace;

    // The core of a file, the one that is open already when there is one.
    // Errors: those of Workspace::OpenDatabase.
    [[nodiscard]] std::shared_ptr<Core> Open(const std::string& path, const OpenWish& wish);
    // A number for one more workspace, whose locks keep the others out.
    [[nodiscard]] std::uint64_t NextWorkspace() { return ++workspaces_; }

private:
    struct OpenFile {
        std::weak_ptr<Core> writable, readOnly;
    };
    [[nodiscard]] static std::shared_ptr<Core> OpenAlready(const OpenFile& known, bool readOnly);

    std::map<std::string, OpenFile> open_;  // by canonical path
    std::uint64_t workspaces_ = 0;
    std::shared_ptr<EditedRows> edited_ = std::make_shared<EditedRows>();
};

struct Workspace::State {
    std::weak_ptr<DBEngine::State> engine;
    std::uint64_t number = 0;
    bool isDefault = false;  // never closes
    bool closed = false;
    std::vector<std::weak_ptr<Database::State>> databases;
};

}  // namespace dao
