// SPDX-License-Identifier: Apache-2.0
// SampleShopDays: what one day's work must leave in the two sample shops, whoever does it.
#pragma once

#include "tests/support/ExpectExport.h"

#include <filesystem>

namespace tests {

// What the program says when the shop is opened: after synchronising, and when there are no labor
// type descriptions.
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

// The sample "shop" after the evening of December 30, 2009: Anthony Jones (PIN 0992) has refinished
// 10152 since 08:23 AM; at 05:30 PM he goes over to 10125 (BL, Paint), at 06:10 PM to 10011 (RL,
// Mechanical), at 08:00 PM back to 10125 (ML, Paint).
void ExpectEvening(const std::filesystem::path& before, const std::filesystem::path& after);

// The sample "shop-fresh" after its first morning: Michelle Gomez (PIN 7802) starts at 07:30 AM on
// 10037 (FL, Paint), at 09:00 AM on 10112 (DL, Body), at 10:10 AM on 10037 again (BL, Paint).
void ExpectFirstMorning(const std::filesystem::path& before, const std::filesystem::path& after);

}  // namespace tests
