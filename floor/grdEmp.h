// SPDX-License-Identifier: Apache-2.0
// grdEmp: the employee board: its layout, and choosing an employee.
#pragma once

namespace lodrin {

struct Shop;

void EmpView(Shop& shop);
void grdEmp_Click(Shop& shop);
// The row and column that were current before; 0 for none.
void grdEmp_RowColChange(Shop& shop, int lastRow, int lastColumn);

}  // namespace lodrin
