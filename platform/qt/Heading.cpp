// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/Heading.h"

#include <QLabel>

namespace platform::qt {

QLabel* Heading(const QString& text, QWidget* control)
{
    auto* heading = new QLabel(text, control->parentWidget());
    heading->setObjectName("lbl" + control->objectName());
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    heading->setBuddy(control);
    return heading;
}

}  // namespace platform::qt
