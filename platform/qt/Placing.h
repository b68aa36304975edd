// SPDX-License-Identifier: Apache-2.0
// Placing: where a window stands and how large it can be on the screen that there is.
#pragma once

#include <QSize>

class QWidget;

namespace platform::qt {

// Units: logical pixels.

// The wished size of a window, or as much of it as its screen has room for beside the frame.
[[nodiscard]] QSize WithinScreen(const QWidget& window, const QSize& wish);

// Puts a window in the middle of its owner, or of the screen when it has none that is shown, but
// whole on the screen. Rule: said while the window is being shown, so that no desktop puts it
// elsewhere.
void StandOverOwner(QWidget& window);

}  // namespace platform::qt
