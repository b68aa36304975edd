// SPDX-License-Identifier: Apache-2.0
// ResumeNext: one statement fails, is reported, and the next one runs.
#pragma once

#include "app/modErrTrap.h"
#include "base/NumberedError.h"

#include <concepts>
#include <new>
#include <string_view>

namespace lodrin {

enum class IfItFails { TakeBranch, SkipBranch };

// The guard of one procedure.
//
//     const ResumeNext attempt(shop, "Sub frmLodrin!StartJob()");
//     attempt([&] { employee.Edit(); });
//     if (attempt.Test([&] { return employee.NoMatch(); }, IfItFails::TakeBranch)) return;
//
// Rule: one statement, one attempt. An error in the trap itself leaves the procedure.
class ResumeNext {
public:
    ResumeNext(Shop& shop, std::string_view location) : shop_(&shop), location_(location) {}

    // The guard of a procedure that ignores failures: nothing is reported.
    [[nodiscard]] static ResumeNext Silently() { return {}; }

    // Runs one statement. A failure goes to the error trap under this procedure's location and no
    // further, so that the next statement runs.
    void operator()(std::invocable auto&& statement) const
    {
        try {
            statement();
        } catch (const base::NumberedError& error) {
            Report(error.Number(), error.what());
        } catch (const std::bad_alloc&) {
            Report(kOutOfMemory, base::ErrorText(kOutOfMemory));
        }
    }

    // Answers one condition; `branch` says whether its block runs when the condition itself fails.
    [[nodiscard]] bool Test(std::predicate auto&& condition, IfItFails branch) const
    {
        bool answer = branch == IfItFails::TakeBranch;
        (*this)([&] { answer = condition(); });
        return answer;
    }

    // Runs one statement that others depend on; false when it failed.
    [[nodiscard]] bool Succeeds(std::invocable auto&& statement) const
    {
        bool succeeded = false;
        (*this)([&] {
            statement();
            succeeded = true;
        });
        return succeeded;
    }

private:
    ResumeNext() = default;
    void Report(int number, std::string_view description) const
    {
        if (shop_ != nullptr && number > 0) ErrTrap(*shop_, location_, number, description);
    }

    Shop* shop_ = nullptr;
    std::string_view location_;
};

}  // namespace lodrin
