// SPDX-License-Identifier: Apache-2.0
// DBEngine: where everything of DAO begins; it knows which files this process has open.
#pragma once

#include "base/Value.h"
#include "jet/dao/Workspace.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace jet::io {
class FileSystem;
}

namespace dao {

// What the engine asks of the world outside.
struct EngineSettings {
    std::function<base::Date()> now;  // for Now(), Date(), Time() in expressions and defaults
    // How others are told who keeps them waiting; without a text this machine's name.
    std::string machine = {};
    // Waits between two attempts to get a lock; when null, it sleeps.
    std::function<void(std::chrono::milliseconds)> pause = {};
};

// Rule: all databases opened on one file through one engine share one page cache, so a change made
//       through one is at once seen by the others.
class DBEngine {
public:
    struct State;
    // The files of this machine.
    explicit DBEngine(EngineSettings settings);
    // Requires: `files` outlives the engine.
    DBEngine(EngineSettings settings, jet::io::FileSystem& files);
    ~DBEngine();
    DBEngine(const DBEngine&) = delete;
    DBEngine& operator=(const DBEngine&) = delete;

    // The default workspace, made on first use.
    [[nodiscard]] Workspace& DefaultWorkspace();
    // Errors: 3029 for any user but "admin" with an empty password.
    [[nodiscard]] Workspace CreateWorkspace(std::string_view name, std::string_view user,
                                            std::string_view password);

    // A new, empty database file. Errors: 3204 when the file exists, 3044, 3051.
    void CreateDatabase(const std::string& path, DatabaseVersion version = DatabaseVersion::Jet4,
                        DatabaseEncoding encoding = DatabaseEncoding::Plain);

private:
    std::shared_ptr<State> state_;
};

}  // namespace dao
