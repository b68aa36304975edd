// SPDX-License-Identifier: Apache-2.0
#include "floor/frmProgress.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "base/Text.h"
#include "data/Kelvaro.h"
#include "floor/ProgressTexts.h"

#include <string>

namespace lodrin {

namespace {

constexpr long kLongestProgress = 50;  // characters the repair order takes

}  // namespace

void frmProgress::Form_Load(Shop& shop)
{
    const ResumeNext attempt = ResumeNext::Silently();
    // The window starts empty each time.
    lstProgress.Clear();
    ListProgressTexts(attempt, shop, lstProgress);
}

void frmProgress::cmdOkay_Click(Shop& shop)
{
    const ResumeNext attempt = ResumeNext::Silently();
    dao::Database management;
    std::string& sqlText = shop.state.sqlText;

    // Without a selection the empty text is written. A quote in the text spoils the statement, and
    // nothing is written.
    isCancelled = false;
    attempt([&] { management = OpenKelvaro(shop); });
    std::string progress;
    attempt([&] { progress = base::Left(lstProgress.Text(), kLongestProgress); });
    attempt([&] {
        sqlText = "UPDATE Workorder SET Progress = '" + progress + "' WHERE " +
                  "EntryNumber = " + base::TextOf(lngWOID);
    });
    attempt([&] { management.Execute(sqlText); });
    attempt([&] { management.Close(); });
    if (close) close();
}

void frmProgress::cmdCancel_Click(Shop& /*shop*/)
{
    isCancelled = true;
    if (close) close();
}

}  // namespace lodrin
