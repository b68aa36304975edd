// SPDX-License-Identifier: Apache-2.0
// ElidedLabel: one line of text that gives way when there is no room, and can be read whole in its
// tip.
#pragma once

#include <QLabel>

namespace platform::qt {

class ElidedLabel : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;
};

}  // namespace platform::qt
