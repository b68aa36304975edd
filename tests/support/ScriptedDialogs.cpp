// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ScriptedDialogs.h"

#include "app/Dispatch.h"
#include "app/Shop.h"

#include <stdexcept>

namespace tests {

namespace {

// What the view does when the user clicks the entry with these first or only characters.
void Choose(lodrin::Shop& shop, platform::ListBox& list, const std::string& start, bool whole)
{
    for (int index = 0; index < list.ListCount(); ++index) {
        const std::string entry = list.List(index);
        if (whole ? entry != start : entry.rfind(start, 0) != 0) continue;
        lodrin::DispatchInDialog(shop, [&](lodrin::Shop& on) {
            list.SetListIndex(index);
            on.forms.glSelect.SelectionChanged();
        });
        return;
    }
    throw std::logic_error("the labor type dialog offers no entry " + start);
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
        Choose(shop, form.lstGLCodes, choice.code + " ", false);
        Choose(shop, form.lstDepartments, choice.department, true);
    }
    if (choice.act != Act::Leave) {
        lodrin::DispatchInDialog(shop, [&](lodrin::Shop& on) { form.cmdExit_Click(on); });
        if (!closed) throw std::logic_error("the labor type dialog did not close");
    }
    form.close = nullptr;
}

void ScriptedDialogs::UnloadGLSelect(lodrin::Shop& /*shop*/) {}

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
