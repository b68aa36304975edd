// SPDX-License-Identifier: Apache-2.0
#include "floor/VerifyPIN.h"

#include "app/Dispatch.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "base/Text.h"
#include "data/Tables.h"

#include <optional>
#include <string>

namespace lodrin {

namespace {

constexpr const char* kQuestion = "Please enter your PIN";
constexpr const char* kTitle = "Enter PIN";

}  // namespace

bool VerifyPIN(Shop& shop)
{
    const ResumeNext attempt = ResumeNext::Silently();
    const platform::Grid& board = shop.window.grdEmp;
    dao::Recordset profile;

    // The PIN in the management system's profile of the employee.
    OpenRecords(attempt, shop.state, shop.state.database, profile, [&] {
        return "SELECT PIN FROM Profile WHERE ProfileNumber = " + board.Text(LDEmp::EmpID.column);
    });
    std::optional<std::string> stored;
    attempt([&] { stored = base::Trim(base::TextOf(profile[Profile::PIN])); });

    // Nobody proceeds whose profile is missing or cannot be read.
    if (!stored) return false;

    // Without a PIN he is not asked.
    std::string entered;
    if (!stored->empty())
        attempt([&] { entered = AskInput(shop, {.text = kQuestion, .title = kTitle}); });
    return base::Trim(entered) == *stored;
}

}  // namespace lodrin
