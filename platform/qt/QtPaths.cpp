// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtPaths.h"

#include "platform/HostPath.h"
#include "platform/qt/QtText.h"

#include <QCoreApplication>

namespace platform::qt {

std::string QtPaths::RunningProgramFolder()
{
    return FromQt(QCoreApplication::applicationDirPath());
}

QtPaths::QtPaths(std::string programFolder, std::string driveRoot)
    : programFolder_(std::move(programFolder)), driveRoot_(std::move(driveRoot))
{
    while (programFolder_.ends_with('/'))
        programFolder_.pop_back();
    if (!driveRoot_.ends_with('/')) driveRoot_ += '/';
}

std::string QtPaths::ToHost(std::string_view path) const
{
    if (path.starts_with('\\')) return ExistingPath(driveRoot_ + HostPath(path.substr(1)));
    return ExistingPath(HostPath(path));
}

}  // namespace platform::qt
