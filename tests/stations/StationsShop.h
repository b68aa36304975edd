// SPDX-License-Identifier: Apache-2.0
// StationsShop: a shop on the disk that many programs use at once.
#pragma once

#include "tests/support/Samples.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace tests {

class StationsShop : public testing::Test {
protected:
    // Employees 1 to `seats` (NameOfSeat), repair orders from 1001 on.
    void MakeShop(int seats, int dozensOfOrders);

    // What holds of the file whatever was done to it.
    void ExpectSoundFile();

    ScratchFolder folder;
    std::filesystem::path file = folder.Path() / "Kelvaro.mdb";
};

}  // namespace tests
