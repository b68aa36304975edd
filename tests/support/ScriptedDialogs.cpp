// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ScriptedDialogs.h"

#include "app/Dispatch.h"
#include "app/Shop.h"

#include <stdexcept>

namespace tests {

namespace {

// Selects the entry with these first or only characters.
void Choose(platform::ListBox& list, const std::string& start, bool whole)
{
    for (int index = 0; index < list.ListCount(); ++index) {
        const std::string entry = list.List(index);
        if (whole ? entry == start : entry.rfind(start, 0) == 0) return list.SetListIndex(index);
    }
    throw std::logic_error("the dialog offers no entry " + start);
}

// What the view does when the user clicks an entry of the labor type dialog.
void ClickLabor(lodrin::Shop& shop, platform::ListBox& list, const std::string& start, bool whole)
{
    lodrin::DispatchInDialog(shop, [&](lodrin::Shop& on) {
        Choose(list, start, whole);
        on.forms.glSelect.SelectionChanged();
    });
}

}  // namespace

void ScriptedDialogs::Pick(const std::string& code, const std::string& department)
{
    choices_.push_back({Act::Pick, code, department});
}

void ScriptedDialogs::Confirm()
{
    choices_.push_back({Act::Confirm, {}, {}});
}

void ScriptedDialogs::ConfirmOrLeave()
{
    choices_.push_back({Act::ConfirmOrLeave, {}, {}});
}

void ScriptedDialogs::Leave()
{
    choices_.push_back({Act::Leave, {}, {}});
}

void ScriptedDialogs::ShowGLSelect(lodrin::Shop& shop)
{
    if (choices_.empty()) throw std::logic_error("nobody expected the labor type dialog");
    const Choice choice = choices_.front();
    choices_.pop_front();
    ++glSelects;

    lodrin::frmGLSelect& form = shop.forms.glSelect;
    form.setFocusToGLCodes = [this] { focusOnGLCodes = true; };
    bool closed = false;
    form.close = [&] { closed = true; };
    form.Form_Load(shop);
    form.Form_Activate(shop);
    if (whileGLSelectIsOpen) whileGLSelectIsOpen(shop);
    if (choice.act == Act::Pick) {
        ClickLabor(shop, form.lstGLCodes, choice.code + " ", false);
        ClickLabor(shop, form.lstDepartments, choice.department, true);
    }
    if (choice.act != Act::Leave) {
        lodrin::DispatchInDialog(shop, [&](lodrin::Shop& on) { form.cmdExit_Click(on); });
        if (!closed && choice.act != Act::ConfirmOrLeave)
            throw std::logic_error("the labor type dialog did not close");
    }
    form.close = nullptr;
}

void ScriptedDialogs::PickProgress(const std::string& text)
{
    progressActs_.push_back([text](lodrin::Shop& shop) {
        lodrin::frmProgress& form = shop.forms.progress;
        Choose(form.lstProgress, text, true);
        form.cmdOkay_Click(shop);
    });
}

void ScriptedDialogs::ConfirmProgress()
{
    progressActs_.push_back([](lodrin::Shop& shop) { shop.forms.progress.cmdOkay_Click(shop); });
}

void ScriptedDialogs::CancelProgress()
{
    progressActs_.push_back([](lodrin::Shop& shop) { shop.forms.progress.cmdCancel_Click(shop); });
}

void ScriptedDialogs::LeaveProgress()
{
    progressActs_.push_back([](lodrin::Shop& shop) { shop.forms.progress.close(); });
}

void ScriptedDialogs::ShowProgress(lodrin::Shop& shop)
{
    if (progressActs_.empty()) throw std::logic_error("nobody expected the progress dialog");
    const auto act = progressActs_.front();
    progressActs_.pop_front();
    ++progresses;

    lodrin::frmProgress& form = shop.forms.progress;
    bool closed = false;
    form.close = [&] { closed = true; };
    progressVisible = true;
    form.Form_Load(shop);
    if (whileProgressIsOpen) whileProgressIsOpen(shop);
    lodrin::DispatchInDialog(shop, act);
    if (!closed) throw std::logic_error("the progress dialog did not close");
    progressVisible = false;
    form.close = nullptr;
}

void ScriptedDialogs::UnloadGLSelect(lodrin::Shop& /*shop*/) {}

void ScriptedDialogs::ShowStatus(lodrin::Shop& shop)
{
    ++statuses;
    lodrin::frmStatus& form = *shop.forms.status;
    bool closed = false;
    form.close = [&] { closed = true; };
    form.Form_Load(shop);
    if (whileStatusIsOpen) whileStatusIsOpen(shop);
    lodrin::DispatchInDialog(shop, [&](lodrin::Shop& on) { form.cmdExit_Click(on); });
    if (!closed) throw std::logic_error("the status description window did not close");
    form.close = nullptr;
}

void ScriptedDialogs::ShowDateSel(lodrin::Shop& shop)
{
    lodrin::frmDateSel& form = shop.forms.dateSel;
    bool hidden = false;
    form.hide = [&] { hidden = true; };
    form.Form_Activate(shop);
    if (whileDateSelIsOpen) whileDateSelIsOpen(shop);
    if (!hidden) throw std::logic_error("the date dialog was not hidden");
    form.hide = nullptr;
}

void ScriptedDialogs::ShowPreview(lodrin::Shop& /*shop*/)
{
    ++previews;
}

void ScriptedDialogs::ShowSplash(lodrin::Shop& /*shop*/)
{
    ++splashes;
    splashVisible = true;
}

void ScriptedDialogs::UnloadSplash(lodrin::Shop& /*shop*/)
{
    splashVisible = false;
}

void ScriptedDialogs::ShowMain(lodrin::Shop& shop)
{
    ++mains;
    mainVisible = true;
    if (whenMainIsShown) whenMainIsShown(shop);
}

void ScriptedDialogs::UnloadMain(lodrin::Shop& /*shop*/)
{
    mainVisible = false;
}

void ScriptedDialogs::ShowProcMsg(lodrin::Shop& /*shop*/)
{
    ++procMsgs;
    procMsgVisible = true;
}

void ScriptedDialogs::UnloadProcMsg(lodrin::Shop& /*shop*/)
{
    procMsgVisible = false;
}

}  // namespace tests
