// SPDX-License-Identifier: Apache-2.0
// OwnedDialog: a dialog that stands in the middle of the window it belongs to.
#pragma once

#include <QDialog>

namespace platform::qt {

class OwnedDialog : public QDialog {
public:
    using QDialog::QDialog;

protected:
    void showEvent(QShowEvent* event) override;
};

}  // namespace platform::qt
