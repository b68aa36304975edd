// SPDX-License-Identifier: Apache-2.0
#include "setup/mnuSetup.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "floor/cboRO.h"

namespace lodrin {

namespace {

constexpr std::int16_t kStatusDescriptions = 0;

}  // namespace

void mnuSetupItems_Click(Shop& shop, std::int16_t index)
{
    if (index != kStatusDescriptions) return;
    if (!shop.forms.status) shop.forms.status = std::make_unique<frmStatus>();
    ShowStatus(shop);
}

void mnuSynchRO_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!mnuSynchRO_Click()");
    attempt([&] { GetROList(shop); });
}

}  // namespace lodrin
