// SPDX-License-Identifier: Apache-2.0
#include "setup/frmDateSel.h"

#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Calendar.h"
#include "base/Convert.h"
#include "base/Format.h"
#include "labor/ClockTime.h"

#include <optional>

namespace lodrin {

namespace {

// The date without its time. Errors: 13 for a text that is no date.
base::Date DateOnly(const base::Value& date)
{
    return base::ToDate(base::Format(date, kClockDay));
}

// The date a text names. A time alone is what a date that nobody has selected yet looks like.
std::optional<base::Date> DateNamed(const std::string& text)
{
    const std::optional<base::Date> read = base::ReadDate(text);
    if (!read || base::DatePartOf(*read).days == 0) return std::nullopt;
    return read;
}

void Hide(const frmDateSel& form)
{
    if (form.hide) form.hide();
}

void SelectAndHide(const ResumeNext& attempt, Shop& shop, const frmDateSel& form,
                   const base::Value& date)
{
    attempt([&] { shop.values.selectedDate = DateOnly(date); });
    attempt([&] { Hide(form); });
}

// The two buttons have no error trap.
void SelectAndHide(Shop& shop, const frmDateSel& form, const base::Value& date)
{
    shop.values.selectedDate = DateOnly(date);
    Hide(form);
}

}  // namespace

void frmDateSel::Form_Activate(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmDateSel!Form_Activate()");
    attempt([&] { startingDate = base::TextOf(shop.values.selectedDate); });
    const std::optional<base::Date> start = DateNamed(startingDate);
    attempt(
        [&] { Calendar1.SetValue(start ? *start : base::DatePartOf(shop.platform.clock.Now())); });
}

void frmDateSel::Calendar1_DblClick(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmDateSel!Calendar1_DblClick()");
    SelectAndHide(attempt, shop, *this, Calendar1.Value());
}

void frmDateSel::picExit_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmDateSel!picExit_Click()");
    SelectAndHide(attempt, shop, *this, Calendar1.Value());
}

void frmDateSel::picCancel_Click(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmDateSel!picCancel_Click()");
    SelectAndHide(attempt, shop, *this, startingDate);
}

void frmDateSel::cmdExit_Click(Shop& shop)
{
    SelectAndHide(shop, *this, Calendar1.Value());
}

void frmDateSel::Command1_Click(Shop& shop)
{
    SelectAndHide(shop, *this, startingDate);
}

}  // namespace lodrin
