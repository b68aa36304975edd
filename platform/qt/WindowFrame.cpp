// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/WindowFrame.h"

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace platform::qt {

namespace {

constexpr Qt::WindowStates kStates = Qt::WindowMaximized | Qt::WindowMinimized;

Qt::WindowStates StateOf(WindowState state)
{
    switch (state) {
    case WindowState::Minimized:
        return Qt::WindowMinimized;
    case WindowState::Maximized:
        return Qt::WindowMaximized;
    case WindowState::Normal:
        break;
    }
    return Qt::WindowNoState;
}

void Obey(const Window& frame, QWidget& shownBy)
{
    const Place where = frame.Where();
    const Qt::WindowStates state = StateOf(frame.State());
    if ((shownBy.windowState() & kStates) != state)
        shownBy.setWindowState((shownBy.windowState() & ~kStates) | state);
    const QRect place(where.left, where.top, where.width, where.height);
    if (frame.State() == WindowState::Normal && where.width > 0 && shownBy.geometry() != place)
        shownBy.setGeometry(place);
    if (shownBy.isVisible() != frame.Visible()) shownBy.setVisible(frame.Visible());
    if (frame.Visible()) shownBy.raise();
}

}  // namespace

void ObeyFrame(Window& frame, QWidget* shownBy)
{
    frame.changed = [&frame, widget = QPointer<QWidget>(shownBy)] {
        if (widget) Obey(frame, *widget);
    };
}

bool IsAboutItsPlace(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
    case QEvent::Show:
    case QEvent::Hide:
        return true;
    default:
        return false;
    }
}

void TellFrame(Window& frame, const QWidget& shownBy)
{
    const QRect place = shownBy.geometry();
    const WindowState state = shownBy.isMinimized()   ? WindowState::Minimized
                              : shownBy.isMaximized() ? WindowState::Maximized
                                                      : WindowState::Normal;
    frame.Found(state, {place.left(), place.top(), place.width(), place.height()},
                shownBy.isVisible());
}

}  // namespace platform::qt
