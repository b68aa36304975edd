// SPDX-License-Identifier: Apache-2.0
#include "floor/frmGLSelect.h"

#include "app/Dispatch.h"
#include "app/ForEachRecord.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "base/Text.h"
#include "data/Kelvaro.h"
#include "data/Tables.h"
#include "floor/ProgressTexts.h"

#include <cstdint>
#include <string>
#include <utility>

namespace lodrin {

namespace {

constexpr const char* kDepartmentsByPlace = "SELECT * FROM Departments ORDER BY Sequence ASC;";
constexpr const char* kHelp = "Select the desired Labor Type and Department for this entry "
                              "then press okay.";
constexpr const char* kBetweenCodeAndText = " ";
constexpr const char* kNoSuchSequence =
    "This department cannot be chosen: its sequence in the management system is beyond the numbers "
    "that a repair order can hold.\r\n\r\nChoose another department, or have its sequence "
    "corrected.";

using IfItFails::TakeBranch;

bool HasRecords(const ResumeNext& attempt, const dao::Recordset& records)
{
    return attempt.Test([&] { return records.RecordCount() > 0; }, TakeBranch);
}

// One entry per record that has a code: the code, a blank, the description.
void ListLaborTypes(const ResumeNext& attempt, dao::Recordset& records, std::string_view code,
                    std::string_view description, platform::ListBox& list)
{
    ForEachRecord(attempt, records, [&] {
        const auto coded = [&] { return !base::TextOf(records[code]).empty(); };
        if (!attempt.Test(coded, TakeBranch)) return;
        attempt([&] {
            list.AddItem(base::TextOf(records[code]) + kBetweenCodeAndText +
                         base::TextOf(records[description]));
        });
    });
}

// The shop's own descriptions, or the ledger's labor accounts when it has none.
void ListLaborTypes(const ResumeNext& attempt, Shop& shop, dao::Database& management,
                    platform::ListBox& list)
{
    dao::Recordset& descriptions = shop.state.rsStatus;
    if (!descriptions.IsSet()) return;
    if (HasRecords(attempt, descriptions)) {
        attempt([&] { descriptions.MoveFirst(); });
        ListLaborTypes(attempt, descriptions, Status::GLType, Status::Description, list);
        return;
    }
    dao::Recordset accounts;
    attempt([&] { management = OpenKelvaro(shop); });
    // The engine takes the text with and without the semicolon.
    OpenRecords(attempt, shop.state, management, accounts,
                std::string(GenLedger::laborAccounts) + ";");
    if (HasRecords(attempt, accounts))
        ListLaborTypes(attempt, accounts, GenLedger::GLCode, GenLedger::GLDescription, list);
}

// Each department carries its place in the shop.
void ListDepartments(const ResumeNext& attempt, dao::Recordset& departments,
                     platform::ListBox& list)
{
    if (!HasRecords(attempt, departments)) return;
    ForEachRecord(attempt, departments, [&] {
        attempt([&] { list.AddItem(base::TextOf(departments[Departments::Description])); });
        attempt([&] {
            list.SetItemData(list.ListCount() - 1,
                             base::ToLong(departments[Departments::Sequence]));
        });
    });
}

}  // namespace

void frmGLSelect::Form_Load(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmGLSelect!Form_Load()");
    dao::Database management;
    dao::Recordset departments;

    // The window starts empty each time.
    for (platform::ListBox* list : {&lstGLCodes, &lstDepartments, &lstProgress})
        list->Clear();

    // Labor types; the first is proposed.
    ListLaborTypes(attempt, shop, management, lstGLCodes);
    attempt([&] { lstGLCodes.SetListIndex(0); });

    // Departments in shop order; the first is proposed.
    attempt([&] { management = OpenKelvaro(shop); });
    OpenRecords(attempt, shop.state, management, departments, kDepartmentsByPlace);
    ListDepartments(attempt, departments, lstDepartments);
    if (lstDepartments.ListCount() > 0) attempt([&] { lstDepartments.SetListIndex(0); });
    attempt([&] { lblHelp.SetCaption(kHelp); });
    attempt([&] { management.Close(); });

    // Progress texts.
    ListProgressTexts(attempt, shop, lstProgress);

    SelectionChanged();
}

void frmGLSelect::Form_Activate(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmGLSelect!Form_Activate()");
    attempt([&] {
        if (setFocusToGLCodes) setFocusToGLCodes();
    });
}

void frmGLSelect::SelectionChanged()
{
    cmdExit.SetEnabled(lstGLCodes.ListIndex() >= 0 && lstDepartments.ListIndex() >= 0);
}

void frmGLSelect::cmdExit_Click(Shop& shop)
{
    if (!cmdExit.enabled) return;
    MainWindowState& state = shop.state;

    // A repair order holds a department of 16 bits. One beyond them is refused; nothing is chosen.
    const std::int32_t sequence = lstDepartments.ItemData(lstDepartments.ListIndex());
    if (!std::in_range<std::int16_t>(sequence)) return Say(shop, kNoSuchSequence);

    const std::string laborType = lstGLCodes.Text();
    const long blank = base::InStr(laborType, kBetweenCodeAndText);
    state.GLCode = base::Left(laborType, blank - 1);
    state.GLDesc = base::Mid(laborType, blank + 1);
    state.Department = lstDepartments.Text();
    state.Sequence = static_cast<std::int16_t>(sequence);
    if (close) close();
}

}  // namespace lodrin
