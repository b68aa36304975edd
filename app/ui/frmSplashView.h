// SPDX-License-Identifier: Apache-2.0
// frmSplashView: the splash window on the screen.
#pragma once

#include <QWidget>

namespace lodrin {
struct Shop;
}

namespace lodrin::ui {

class frmSplashView : public QWidget {
public:
    explicit frmSplashView(Shop& shop);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace lodrin::ui
