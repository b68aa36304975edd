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

struct DBEngine::State {
    EngineSettings settings;
    std::unique_ptr<jet::io::FileSystem> ownFiles;  // of this machine, unless others were given
    jet::io::FileSystem* files = nullptr;
    std::optional<Workspace> defaultWorkspace;

    // The core of a file, the one that is open already when there is one.
    // Errors: those of Workspace::OpenDatabase.
    [[nodiscard]] std::shared_ptr<Core> Open(const std::string& path, bool readOnly,
                                             std::string_view password);

private:
    struct OpenFile {
        std::weak_ptr<Core> writable, readOnly;
    };
    [[nodiscard]] static std::shared_ptr<Core> OpenAlready(const OpenFile& known, bool readOnly);

    std::map<std::string, OpenFile> open_;  // by canonical path
};

struct Workspace::State {
    std::weak_ptr<DBEngine::State> engine;
    bool isDefault = false;  // never closes
    bool closed = false;
    std::vector<std::weak_ptr<Database::State>> databases;
};

}  // namespace dao
