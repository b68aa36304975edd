// SPDX-License-Identifier: Apache-2.0
// SilentCalls: which calls to the disk may fail without a word in the log, and why.
#pragma once

#include <string>
#include <vector>

namespace tests {

enum class Silence {
    None,      // the statement that makes the call reports its failure
    PINCheck,  // a check that cannot be made refuses
    Progress,  // the progress dialog works with what it has
    Tidying,   // around a store: the journal is told what others find out by a look at the file
    Closing,   // of a database: journal and user list are taken away
};

// A call to the disk in a procedure in which none fails.
struct DiskCall {
    std::string call;              // as WatchedFileSystem names it
    Silence part = Silence::None;  // of the procedure that the call was made in
};

// The silence about each call: that of its part, or what the engine keeps to itself.
[[nodiscard]] std::vector<Silence> SilencesOf(const std::vector<DiskCall>& calls);

}  // namespace tests
