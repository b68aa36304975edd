// SPDX-License-Identifier: Apache-2.0
// NewLink: a table of another file under a name of this one, to be made or as a database tells it.
#pragma once

#include <string>

namespace jet::catalog {

struct NewLink {
    std::string name;
    std::string database;  // path of the other file
    std::string table;     // its name there
    std::string connect;   // of files of another kind, or with a password; empty for ours
};

}  // namespace jet::catalog
