// SPDX-License-Identifier: Apache-2.0
// WindowFrame: a widget that stands on the screen where its Window says, and tells it when the user
// moves it.
#pragma once

#include "platform/controls/Window.h"

class QEvent;
class QWidget;

namespace platform::qt {

// From now on the widget follows each change of the frame.
void ObeyFrame(Window& frame, QWidget* shownBy);
// Whether after this event the widget stands elsewhere, or is shown or hidden.
[[nodiscard]] bool IsAboutItsPlace(const QEvent& event);
// The frame learns where the widget stands.
void TellFrame(Window& frame, const QWidget& shownBy);

}  // namespace platform::qt
