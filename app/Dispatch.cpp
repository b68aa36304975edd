// SPDX-License-Identifier: Apache-2.0
#include "app/Dispatch.h"

#include "app/Shop.h"
#include "app/modErrTrap.h"
#include "base/NumberedError.h"

#include <new>

namespace lodrin {

namespace {

using Modal = EventGate::Modal;

// What the platform does with an error that nobody handles: it is shown once, and that is the end.
[[noreturn]] void EndUnhandled(Shop& shop, int number, const std::string& description)
{
    const EventGate::Window window(shop.gate, Modal::Box);
    shop.platform.prompts.Show(
        {.text = "Run-time error '" + std::to_string(number) + "':\r\n\r\n" + description,
         .icon = platform::Icon::Critical});
    throw platform::ProgramEnded{.exitCode = 1};
}

void RunToItsEnd(Shop& shop, const std::function<void(Shop&)>& procedure)
{
    try {
        procedure(shop);
    } catch (const base::NumberedError& error) {
        EndUnhandled(shop, error.Number(), error.what());
    } catch (const std::bad_alloc&) {
        EndUnhandled(shop, kOutOfMemory, base::ErrorText(kOutOfMemory));
    }
}

void Run(Shop& shop, const std::function<void(Shop&)>& procedure)
{
    const EventGate::Procedure running(shop.gate);
    RunToItsEnd(shop, procedure);
}

}  // namespace

void Dispatch(Shop& shop, const std::function<void(Shop&)>& procedure)
{
    if (shop.gate.MainMayRun()) Run(shop, procedure);
}

void DispatchInDialog(Shop& shop, const std::function<void(Shop&)>& procedure)
{
    if (shop.gate.DialogMayRun()) Run(shop, procedure);
}

void DispatchAlways(Shop& shop, const std::function<void(Shop&)>& procedure)
{
    RunToItsEnd(shop, procedure);
}

platform::Answer Ask(Shop& shop, const platform::Box& box)
{
    const EventGate::Window window(shop.gate, Modal::Box);
    return shop.platform.prompts.Show(box);
}

void Say(Shop& shop, const std::string& text, const std::string& title)
{
    Ask(shop, {.text = text, .title = title});
}

std::string AskInput(Shop& shop, const platform::InputPrompt& prompt)
{
    const EventGate::Window window(shop.gate, Modal::Box);
    return shop.platform.prompts.Input(prompt);
}

std::string AskFile(Shop& shop, const std::string& filter)
{
    const EventGate::Window window(shop.gate, Modal::Box);
    return shop.platform.prompts.OpenFile(filter);
}

void ShowGLSelect(Shop& shop)
{
    const EventGate::Window window(shop.gate, Modal::Dialog);
    shop.dialogs.ShowGLSelect(shop);
}

void ShowProgress(Shop& shop)
{
    const EventGate::Window window(shop.gate, Modal::Dialog);
    shop.dialogs.ShowProgress(shop);
}

void ShowStatus(Shop& shop)
{
    const EventGate::Window window(shop.gate, Modal::Dialog);
    shop.dialogs.ShowStatus(shop);
}

void ShowDateSel(Shop& shop)
{
    const EventGate::Window window(shop.gate, Modal::Dialog);
    shop.dialogs.ShowDateSel(shop);
}

void DoEvents(Shop& shop)
{
    shop.platform.events.LetPendingRun();
}

}  // namespace lodrin
