// SPDX-License-Identifier: Apache-2.0
// DatabaseState: what a Database and the record sets opened through it know of it.
#pragma once

#include "jet/dao/Core.h"
#include "jet/dao/Database.h"

#include <memory>
#include <string>
#include <vector>

namespace dao {

struct Database::State {
    std::shared_ptr<Core> core;   // null once closed
    std::string path;             // as opened
    std::uint64_t workspace = 0;  // in whose name it locks
    bool readOnly = false;
    jet::sql::Session session;
    int recordsAffected = 0;
    std::vector<std::weak_ptr<Recordset::State>> recordsets;

    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() { Close(); }
    // Its pages, locked in the name of its workspace. Requires: not closed.
    [[nodiscard]] jet::pages::Pager& Pages() const
    {
        core->Pager().ActFor(workspace);
        return core->Pager();
    }
    // Lets go of the file, and its record sets with it.
    void Close();
};

}  // namespace dao
