// SPDX-License-Identifier: Apache-2.0
// SampleShopDays: what one day's work must leave in the two sample shops, whoever does it.
#pragma once

#include "tests/support/ExpectExport.h"

#include <filesystem>

namespace tests {

// The sample "shop" after the evening of December 30, 2009: Anthony Jones (PIN 0992) has refinished
// 10152 since 08:23 AM; at 05:30 PM he goes over to 10125 (BL, Paint), at 06:10 PM to 10011 (RL,
// Mechanical), at 08:00 PM back to 10125 (ML, Paint).
void ExpectEvening(const std::filesystem::path& before, const std::filesystem::path& after);

// The sample "shop-fresh" after its first morning: Michelle Gomez (PIN 7802) starts at 07:30 AM on
// 10037 (FL, Paint), at 09:00 AM on 10112 (DL, Body), at 10:10 AM on 10037 again (BL, Paint).
void ExpectFirstMorning(const std::filesystem::path& before, const std::filesystem::path& after);

}  // namespace tests
