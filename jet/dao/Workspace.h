// SPDX-License-Identifier: Apache-2.0
// Workspace: a session in which databases are opened.
#pragma once

#include "jet/dao/Database.h"

#include <memory>
#include <string>

namespace dao {

// Moves and does not copy.
class Workspace {
public:
    struct State;
    explicit Workspace(std::shared_ptr<State> state);
    Workspace(Workspace&&) noexcept;
    Workspace& operator=(Workspace&&) noexcept;
    ~Workspace();

    // Opens a database file, shared and for reading and writing; read-only when the file is.
    // Errors: 3024 no such file, 3044 no such folder, 3051, 3343 no Jet file, 3031 password,
    //         3420 after Close.
    [[nodiscard]] Database OpenDatabase(const std::string& path, bool exclusive = false,
                                        bool readOnly = false);

    // Closes every database opened in it. Rule: the default workspace stays open.
    void Close();

private:
    std::shared_ptr<State> state_;
};

}  // namespace dao
