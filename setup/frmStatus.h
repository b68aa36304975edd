// SPDX-License-Identifier: Apache-2.0
// frmStatus: the window in which the shop words its labor types.
#pragma once

#include "jet/dao/Database.h"
#include "jet/dao/Recordset.h"
#include "platform/controls/Grid.h"
#include "platform/controls/Label.h"

#include <functional>
#include <string>

namespace lodrin {

struct Shop;

// Rule: it works through a database of its own, open from its load to its exit. Location of each
//       procedure: "Sub frmStatus!" + its name + "()".
struct frmStatus {
    platform::Label caption{"Status Descriptions"};
    platform::Label lblHelp{"Type the wording that technicians see when they start a job. Enter "
                            "stores it, Escape brings the stored one back."};
    platform::Grid grdStatus;  // rows of Status; its description column is typed into
    platform::Label cmdExit{"&Exit"};
    std::function<void()> close;  // set by the view

    dao::Database database;
    std::string sqlText;  // text of the query opened last
    dao::Recordset genLedger;
    dao::Recordset status;  // bound to the grid

    // Completes the descriptions, then shows them.
    void Form_Load(Shop& shop);
    // Every labor account has its row; rows that are there stay as they are.
    void InitializeGrid(Shop& shop);
    void QueryGrid(Shop& shop);
    void GetView(Shop& shop);
    // Requires: what was typed has been stored.
    void cmdExit_Click(Shop& shop);

    // The user typed a description; whether it is stored now.
    // Units: rows of the grid, from 1.
    // Rule:  a refusal goes to the error trap, is told in one box, and changes nothing.
    [[nodiscard]] bool StoreDescription(Shop& shop, int row, const std::string& typed);
};

}  // namespace lodrin
