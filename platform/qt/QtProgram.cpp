// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtProgram.h"

#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace platform::qt {

std::string QtProgram::ExecutableName() const
{
    return FromQt(QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName());
}

}  // namespace platform::qt
