// SPDX-License-Identifier: Apache-2.0
// Lodrin: makes the services and the shop, runs Main, and lives as long as the main window is open.

#include "app/Dispatch.h"
#include "app/Shop.h"
#include "app/modErrTrap.h"
#include "app/ui/EventDoor.h"
#include "app/ui/QtDialogs.h"
#include "platform/qt/QtServices.h"
#include "platform/qt/ShopStyle.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Lodrin");
    QApplication::setQuitOnLastWindowClosed(false);
    platform::qt::ShopStyle::ApplyTo(application);

    platform::qt::QtServices services(
        {LODRIN_VERSION_MAJOR, LODRIN_VERSION_MINOR, LODRIN_VERSION_PATCH});
    platform::Services world = services.AsServices();
    dao::DBEngine engine({.now = [&services] { return services.clock.Now(); }});
    lodrin::ui::QtDialogs dialogs;
    dialogs.mainClosed = [] { QCoreApplication::quit(); };
    lodrin::Shop shop(dialogs, world, engine);
    try {
        // As one event: no click and no tick comes in before the window is up.
        lodrin::Dispatch(shop, &lodrin::Main);
    } catch (const platform::ProgramEnded& ended) {
        lodrin::ui::LeaveProcess(shop, ended.exitCode);
    }
    return QApplication::exec();
}
