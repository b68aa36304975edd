// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/Placing.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace platform::qt {

namespace {

// What a desktop puts around a window.
constexpr int kSide = 8, kTitle = 40;

QRect Room(const QWidget& window)
{
    return window.screen()->availableGeometry().adjusted(kSide, kTitle, -kSide, -kSide);
}

}  // namespace

QSize WithinScreen(const QWidget& window, const QSize& wish)
{
    return wish.boundedTo(Room(window).size());
}

void StandOverOwner(QWidget& window)
{
    const QWidget* owner = window.parentWidget();
    const bool over = owner != nullptr && owner->isVisible() && !owner->isMinimized();
    const QRect room = Room(over ? *owner : window);
    QRect place(QPoint(), window.size());
    place.moveCenter(over ? owner->geometry().center() : room.center());
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() + 1 - place.width())));
    place.moveTop(std::max(room.top(), std::min(place.top(), room.bottom() + 1 - place.height())));
    // A window is moved by the corner of its frame.
    window.move(place.topLeft() - (window.geometry().topLeft() - window.pos()));
}

}  // namespace platform::qt
