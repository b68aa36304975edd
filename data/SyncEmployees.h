// SPDX-License-Identifier: Apache-2.0
// SyncEmployees: brings the employee board's table in line with the management system's profiles.
#pragma once

namespace lodrin {

struct Shop;

void SyncEmployees(Shop& shop);
void mnuSyncEmp_Click(Shop& shop);

}  // namespace lodrin
