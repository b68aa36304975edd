// SPDX-License-Identifier: Apache-2.0
// Workspace: a session in which databases are opened.
#pragma once

#include "jet/dao/Database.h"

#include <memory>
#include <string>
#include <string_view>

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
    // `connect` names the file's password as ";pwd=SECRET"; a file without one opens for any.
    // Errors: 3024 no such file, 3044 no such folder, 3051, 3343 no Jet file or one that a user
    //         was stopped writing, 3428 damage that a user met, 3031 another password, 3420 after
    //         Close; 3045, 3356 somebody else has it to himself, 3704 somebody has it open and we
    //         want it exclusively, 3239 too many users, 3050 it cannot be shared.
    [[nodiscard]] Database OpenDatabase(const std::string& path, bool exclusive = false,
                                        bool readOnly = false, std::string_view connect = {});

    // Closes every database opened in it. Rule: the default workspace stays open.
    void Close();

private:
    std::shared_ptr<State> state_;
};

}  // namespace dao
