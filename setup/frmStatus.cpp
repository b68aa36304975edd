// SPDX-License-Identifier: Apache-2.0
#include "setup/frmStatus.h"

#include "app/Dispatch.h"
#include "app/ForEachRecord.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "app/modErrTrap.h"
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "data/Kelvaro.h"
#include "data/Tables.h"
#include "floor/ColumnLayout.h"
#include "floor/FindRecord.h"

#include <array>

namespace lodrin {

namespace {

using IfItFails::SkipBranch;
using IfItFails::TakeBranch;

constexpr const char* kOwnRows = "LDStatus";
constexpr const char* kEndOfFirstWord = " ";

constexpr int kTooLong = 3163;
constexpr std::array<ColumnLayout, 3> kColumns{{
    {Status::Column::GLType, "GL Type", 1000},
    {Status::Column::GLDesc, "GL Description", 1500},
    {Status::Column::Description, "Status Description", 3000},
}};

constexpr const char* kNotStored = "The description was not stored.\r\n\r\n";
constexpr const char* kStillThere =
    "\r\n\r\nWhat you typed is still there. Escape brings the stored description back.";

// BODY LABOR is worded BODY, Frame stays Frame, and what has no name has no wording.
base::Value FirstWord(const base::Value& name)
{
    if (name.IsNull()) return name;
    const std::string text = base::TextOf(name);
    const long blank = base::InStr(text, kEndOfFirstWord);
    return blank > 0 ? base::Left(text, blank - 1) : text;
}

// The row of the labor account at hand.
void AddDescription(const ResumeNext& attempt, dao::Recordset& account, dao::Recordset& status)
{
    attempt([&] { status.AddNew(); });
    attempt([&] { status[Status::AcctType] = kOwnRows; });
    // An account without a code is worded too, once: its row is found again as the empty code.
    attempt([&] { status[Status::GLType] = base::TextOf(account[GenLedger::GLCode]); });
    attempt([&] { status[Status::GLDesc] = account[GenLedger::GLDescription]; });
    attempt([&] { status[Status::Description] = FirstWord(account[GenLedger::GLDescription]); });
    attempt([&] { status.Update(); });
}

// Adds the account's row when it has none. A search that failed has no answer: nothing is added.
void CompleteAccount(const ResumeNext& attempt, dao::Recordset& account, dao::Recordset& status)
{
    const auto itsRow = [&] {
        return "GLType = '" + base::TextOf(account[GenLedger::GLCode]) + "'";
    };
    if (!Searches(attempt, status, itsRow)) return;
    if (attempt.Test([&] { return status.NoMatch(); }, SkipBranch))
        AddDescription(attempt, account, status);
}

// Why the engine refused the text, in words that help.
std::string Refusal(const base::NumberedError& error, const std::string& typed,
                    const dao::Recordset& status)
{
    std::string text = kNotStored + std::string(error.what());
    if (error.Number() == kTooLong)
        text += "\r\n\r\nA description has room for " +
                std::to_string(status.SizeOf(Status::Column::Description - 1)) +
                " characters; yours has " + std::to_string(base::Length(typed)) + ".";
    return text + kStillThere;
}

}  // namespace

void frmStatus::Form_Load(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmStatus!Form_Load()");
    attempt([&] { InitializeGrid(shop); });
    attempt([&] { QueryGrid(shop); });
}

void frmStatus::InitializeGrid(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmStatus!InitializeGrid()");

    // The window's own database, and in it the labor accounts and their descriptions.
    attempt([&] { database = OpenKelvaro(shop); });
    attempt([&] { sqlText = GenLedger::laborAccounts; });
    attempt([&] { genLedger = database.OpenRecordset(sqlText); });
    attempt([&] { sqlText = Status::descriptions; });
    attempt([&] { status = database.OpenRecordset(sqlText); });

    // An account that has no row yet gets one, worded with the first word of its name.
    const auto thereAreAccounts = [&] {
        return !(genLedger.Bof() && genLedger.Eof()) && genLedger.RecordCount() > 0;
    };
    if (attempt.Test(thereAreAccounts, TakeBranch)) {
        attempt([&] { genLedger.MoveFirst(); });
        ForEachRecord(attempt, genLedger, [&] { CompleteAccount(attempt, genLedger, status); });
    }
    attempt([&] { genLedger.Close(); });
}

void frmStatus::QueryGrid(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmStatus!QueryGrid()");
    // The engine takes the text with and without the semicolon.
    attempt([&] { sqlText = std::string(Status::descriptions) + ";"; });
    attempt([&] { status = database.OpenRecordset(sqlText); });

    // What is typed into the grid goes straight into the row.
    attempt([&] { grdStatus.Reset(); });
    attempt([&] { grdStatus.Bind(status); });
    attempt([&] { GetView(shop); });
}

void frmStatus::GetView(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmStatus!GetView()");
    const platform::ChangesHeld held(grdStatus);
    LayOut(attempt, grdStatus, kColumns);
    // The wording is the shop's; code and account belong to the management system.
    attempt([&] { grdStatus.ColumnAt(Status::Column::Description).editable = true; });
    attempt([&] { grdStatus.allowEdit = true; });
    attempt([&] { grdStatus.LayoutChanged(); });
}

void frmStatus::cmdExit_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmStatus!cmdExit_Click()");
    attempt([&] { database.Close(); });
    attempt([&] {
        if (close) close();
    });
}

bool frmStatus::StoreDescription(Shop& shop, int row, const std::string& typed)
{
    try {
        grdStatus.SetRow(row);
        grdStatus.SetValue(Status::Column::Description, typed);
        return true;
    } catch (const base::NumberedError& error) {
        ErrTrap(shop, "Sub frmStatus!StoreDescription()", error.Number(), error.what());
        if (!IsTold(error.Number())) Say(shop, Refusal(error, typed, status));
        return false;
    }
}

}  // namespace lodrin
