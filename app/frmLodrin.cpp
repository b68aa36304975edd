// SPDX-License-Identifier: Apache-2.0
#include "app/frmLodrin.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Format.h"
#include "data/DBOpen.h"
#include "data/Kelvaro.h"

namespace lodrin {

namespace {

constexpr int kOneSecond = 1000;

constexpr const char* kStatusQuery =
    "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType";
constexpr const char* kNoStatusDescriptions =
    "You have not yet set up your status descriptions.  Select Setup/Status Descriptions from the "
    "menu before you start using the Lodrin program.";

// The labor type descriptions, through a database of their own. A set that could not be opened
// counts as an empty one.
void OpenStatus(const ResumeNext& attempt, Shop& shop)
{
    MainWindowState& state = shop.state;
    attempt([&] { state.statusDatabase = OpenKelvaro(shop); });
    state.sqlText = kStatusQuery;
    attempt([&] { state.rsStatus = state.statusDatabase.OpenRecordset(state.sqlText); });
    if (attempt.Test([&] { return state.rsStatus.RecordCount() < 1; }, IfItFails::TakeBranch))
        attempt([&] { Say(shop, kNoStatusDescriptions); });
}

}  // namespace

void Form_Load(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!Form_Load()");
    frmLodrin& window = shop.window;

    // The clock runs from now on; the date stays as it was when the window came up.
    attempt([&] { window.Timer1.SetInterval(kOneSecond); });
    attempt(
        [&] { window.lblDate.SetCaption(base::Format(shop.platform.clock.Now(), "mm/dd/yyyy")); });

    // The database is found and opened, forgotten days are closed, the lists are filled.
    attempt([&] { InitForm(shop); });
    OpenStatus(attempt, shop);

    shop.state.firstActivation = true;
}

void InitForm(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!InitForm()");
    attempt([&] { GetDataPath(shop); });
    attempt([&] { DBOpen(shop); });
}

void Form_Activate(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!Form_Activate()");

    // Only the first time: the splash has done its work.
    if (!shop.state.firstActivation) return;
    attempt([&] { shop.dialogs.UnloadSplash(shop); });
    attempt([&] { shop.window.stsLD.SetCaption("Database Path: " + shop.values.DataPath); });
    shop.state.firstActivation = false;
}

void Timer1_Timer(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!Timer1_Timer()");
    const platform::Services& services = shop.platform;

    attempt([&] {
        shop.window.caption.SetCaption("Lodrin - " + std::string(5, ' ') +
                                       services.formats.Time(services.clock.Now()));
    });
}

void Form_QueryUnload(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!Form_QueryUnload()");
    attempt([&] { shop.dialogs.UnloadGLSelect(shop); });
}

void cmdExit_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!cmdExit_Click()");
    attempt([&] { shop.dialogs.UnloadMain(shop); });
}

void picExit_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!picExit_Click()");
    attempt([&] { shop.dialogs.UnloadMain(shop); });
}

}  // namespace lodrin
