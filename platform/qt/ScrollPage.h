// SPDX-License-Identifier: Apache-2.0
// ScrollPage: a part of a window that is scrolled where its screen is too small for the whole of
// it.
#pragma once

#include <QScrollArea>

namespace platform::qt {

// Rule: it wishes to show its content whole and takes no keyboard for itself; the Tab key scrolls
//       what it comes to into view. Requires: `content` has its layout.
class ScrollPage : public QScrollArea {
public:
    ScrollPage(QWidget* content, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
};

}  // namespace platform::qt
