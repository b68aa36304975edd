// SPDX-License-Identifier: Apache-2.0
#include "app/ui/EventDoor.h"

#include "app/Dispatch.h"
#include "app/Shop.h"

#include <cstdlib>

namespace lodrin::ui {

void EventDoor::Main(const Procedure& procedure) const noexcept
{
    Enter(&Dispatch, procedure);
}

void EventDoor::Dialog(const Procedure& procedure) const noexcept
{
    Enter(&DispatchInDialog, procedure);
}

void EventDoor::Always(const Procedure& procedure) const noexcept
{
    Enter(&DispatchAlways, procedure);
}

void EventDoor::Enter(Dispatcher dispatch, const Procedure& procedure) const noexcept
{
    try {
        dispatch(*shop_, procedure);
    } catch (const platform::ProgramEnded& ended) {
        leave_(ended.exitCode);
    }
}

void LeaveProcess(Shop& shop, int exitCode)
{
    shop.state = MainWindowState();
    std::_Exit(exitCode);
}

}  // namespace lodrin::ui
