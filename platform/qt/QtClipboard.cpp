// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/QtClipboard.h"

#include "platform/qt/QtText.h"

#include <QClipboard>
#include <QGuiApplication>

namespace platform::qt {

void QtClipboard::Clear()
{
    QGuiApplication::clipboard()->clear();
}

void QtClipboard::SetText(std::string_view text)
{
    QGuiApplication::clipboard()->setText(ToQt(text));
}

}  // namespace platform::qt
