// SPDX-License-Identifier: Apache-2.0
// DBOpen: finds and opens the database, closes out forgotten days, fills the window.
#pragma once

namespace lodrin {

struct Shop;

void GetDataPath(Shop& shop);
void mnuFileOpen_Click(Shop& shop);
void DBOpen(Shop& shop);

}  // namespace lodrin
