// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtPointer.h"

#include <QCursor>
#include <QGuiApplication>

namespace platform::qt {

void QtPointer::Hourglass()
{
    // Qt keeps a stack; the program knows one pointer.
    if (QGuiApplication::overrideCursor() == nullptr)
        QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
}

void QtPointer::Default()
{
    while (QGuiApplication::overrideCursor() != nullptr)
        QGuiApplication::restoreOverrideCursor();
}

}  // namespace platform::qt
