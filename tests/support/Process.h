// SPDX-License-Identifier: Apache-2.0
// Process: another program, started by a test and ended with this object.
#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace tests {

// Moves and does not copy. Its standard input and output are ours.
class Process {
public:
    // Errors: std::runtime_error when it cannot be started.
    explicit Process(const std::vector<std::string>& words);
    Process(Process&& other) noexcept;
    Process& operator=(Process&& other) noexcept;
    // Kills it when it still runs.
    ~Process();

    // The next line it prints; "" when it has ended.
    [[nodiscard]] std::string Line();
    // No more input comes; what it was told to do until then is over.
    void CloseInput();
    // Ends it in the middle of whatever it does.
    void Kill();
    // Waits for its end. The status it ended with; -1 when it was killed.
    int Wait();
    [[nodiscard]] bool Runs();

private:
    void Forget();

    pid_t id_ = -1;
    int input_ = -1, output_ = -1;
    int status_ = -1;
};

}  // namespace tests
