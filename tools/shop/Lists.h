// SPDX-License-Identifier: Apache-2.0
// Lists: the small tables of a sample shop that its windows choose from.
#pragma once

#include "tools/shop/Dice.h"
#include "tools/shop/ShopFile.h"

namespace tools::shop {

// GenLedger, Departments and AutoLook.
void FillManagementLists(ShopFile& file, Dice dice);

// Status: the labor types the clock offers, and rows of another kind that it passes over.
void FillStatus(ShopFile& file);

}  // namespace tools::shop
