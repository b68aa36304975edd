// SPDX-License-Identifier: Apache-2.0
#include "floor/ProgressTexts.h"

#include "app/ForEachRecord.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "data/Kelvaro.h"
#include "data/Tables.h"

namespace lodrin {

namespace {

constexpr const char* kProgressTexts = "SELECT * FROM AutoLook WHERE Type = 'Progress';";

}  // namespace

void ListProgressTexts(const ResumeNext& attempt, Shop& shop, platform::ListBox& list)
{
    dao::Database management;
    dao::Recordset texts;
    attempt([&] { management = OpenKelvaro(shop); });
    OpenRecords(attempt, shop.state, management, texts, kProgressTexts);
    ForEachRecord(attempt, texts, [&] {
        attempt([&] { list.AddItem(base::TextOf(texts[AutoLook::Description])); });
    });
    if (list.ListCount() > 0) attempt([&] { list.SetListIndex(0); });
    if (texts.IsSet()) attempt([&] { texts.Close(); });
    attempt([&] { management.Close(); });
}

}  // namespace lodrin
