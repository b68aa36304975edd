// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtEvents.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace platform::qt {

void QtEvents::LetPendingRun()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace platform::qt
