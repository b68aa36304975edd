// SPDX-License-Identifier: Apache-2.0
#include "app/frmLodrin.h"

#include "app/Dispatch.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Calendar.h"
#include "base/Format.h"
#include "data/DBOpen.h"
#include "data/Kelvaro.h"
#include "data/Tables.h"
#include "labor/ClockTime.h"
#include "labor/cmdEndDay.h"

namespace lodrin {

namespace {

constexpr int kOneSecond = 1000;

constexpr const char* kNoStatusDescriptions =
    "You have not yet set up your status descriptions.  Select Setup/Status Descriptions from the "
    "menu before you start using the Lodrin program.";

// The labor type descriptions, through a database of their own. A set that could not be opened
// counts as an empty one.
void OpenStatus(const ResumeNext& attempt, Shop& shop)
{
    MainWindowState& state = shop.state;
    attempt([&] { state.statusDatabase = OpenKelvaro(shop); });
    OpenRecords(attempt, state, state.statusDatabase, state.rsStatus, Status::descriptions);
    if (attempt.Test([&] { return state.rsStatus.RecordCount() < 1; }, IfItFails::TakeBranch))
        attempt([&] { Say(shop, kNoStatusDescriptions); });
}

bool IsLastMinute(const platform::Clock& clock)
{
    return base::MinutesBetween(base::TimePartOf(clock.Now()), *base::ReadDate(kLastMinute)) == 0;
}

// Sets the flag while it lives, however the end of the day goes.
class Unattended {
public:
    explicit Unattended(bool& flag) : flag_(flag) { flag_ = true; }
    ~Unattended() { flag_ = false; }
    Unattended(const Unattended&) = delete;
    Unattended& operator=(const Unattended&) = delete;

private:
    bool& flag_;
};

bool DayIsOpen(const platform::Grid& board)
{
    return board.Text(LDEmp::EndDay.column).empty() && !board.Text(LDEmp::StartDay.column).empty();
}

// Ends the day of whoever is chosen on the board, unless he has done so.
//
// Rule: once for each row, and always the same, chosen one: the others are closed out when the
//       database is opened next. While his day cannot be ended, every round tries again.
void EndForgottenDay(const ResumeNext& attempt, Shop& shop)
{
    const platform::Grid& board = shop.window.grdEmp;
    for (int row = 1; row <= board.RowCount(); ++row) {
        // A day of which nothing can be read stays open.
        if (!attempt.Test([&] { return DayIsOpen(board); }, IfItFails::SkipBranch)) continue;
        const Unattended unattended(shop.state.automaticEndOfDay);
        attempt([&] { cmdEndDay_Click(shop); });
    }
}

}  // namespace

void Form_Load(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!Form_Load()");
    frmLodrin& window = shop.window;

    // The clock runs from now on; the date stays as it was when the window came up.
    attempt([&] { window.Timer1.SetInterval(kOneSecond); });
    attempt([&] { window.lblDate.SetCaption(base::Format(shop.platform.clock.Now(), kClockDay)); });

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
    if (IsLastMinute(services.clock)) EndForgottenDay(attempt, shop);
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
