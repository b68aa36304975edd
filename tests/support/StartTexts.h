// SPDX-License-Identifier: Apache-2.0
// StartTexts: what the program says when a shop is opened, for the tests that open one.
#pragma once

namespace tests {

// After synchronising, and when there are no labor type descriptions.
inline constexpr const char* kEmployeesAdded =
    "New Employees have been added to the Lodrin Database and existing employees have been "
    "updated.Please Exit the program and then restart Lodrin.  Note.... All data will remain as "
    "shown, you do NOT need to stop any times or end any jobs.";
inline constexpr const char* kNothingToSynchronise =
    "No employees found to add or update to the employee list.  Ensure employee data exists in the "
    "Tarvex Management system and try again.";
inline constexpr const char* kNoDescriptions =
    "You have not yet set up your status descriptions.  Select Setup/Status Descriptions from the "
    "menu before you start using the Lodrin program.";

}  // namespace tests
