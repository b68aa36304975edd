// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/OwnedDialog.h"

#include "platform/qt/Placing.h"

namespace platform::qt {

void OwnedDialog::showEvent(QShowEvent* event)
{
    StandOverOwner(*this);
    QDialog::showEvent(event);
}

}  // namespace platform::qt
