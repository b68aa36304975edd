// SPDX-License-Identifier: Apache-2.0
#include "tools/demo/Album.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <iostream>

namespace demo {

namespace {

constexpr int kStrip = 30;  // height of a title strip
constexpr int kBorder = 24;
const QColor kDesktop(0x5b, 0x6b, 0x7a);
const QColor kTitle(0x2b, 0x33, 0x3b);

bool IsPopup(const QWidget* window)
{
    return window->windowType() == Qt::Popup;
}

bool HasTitle(const QWidget* window)
{
    return !IsPopup(window) && !window->windowFlags().testFlag(Qt::FramelessWindowHint);
}

// From the one at the bottom to the one on top.
QList<QWidget*> VisibleWindows()
{
    QList<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowType() != Qt::ToolTip) windows << window;
    const auto height = [](const QWidget* window) {
        return IsPopup(window)                               ? 4
               : window == QApplication::activeModalWidget() ? 3
               : window->isModal()                           ? 2
               : window->parentWidget() != nullptr           ? 1
                                                             : 0;
    };
    std::stable_sort(windows.begin(), windows.end(),
                     [&](QWidget* left, QWidget* right) { return height(left) < height(right); });
    return windows;
}

QRect Framed(const QWidget* window)
{
    return window->geometry().adjusted(0, HasTitle(window) ? -kStrip : 0, 0, 0);
}

void Paint(QPainter& painter, QWidget* window)
{
    const QRect framed = Framed(window);
    painter.drawPixmap(window->geometry().topLeft(), window->grab());
    if (HasTitle(window)) {
        const QRect strip(framed.left(), framed.top(), framed.width(), kStrip);
        painter.fillRect(strip, kTitle);
        painter.setPen(Qt::white);
        painter.drawText(strip.adjusted(10, 0, -10, 0), Qt::AlignVCenter | Qt::AlignLeft,
                         window->windowTitle());
        painter.drawText(strip.adjusted(10, 0, -10, 0), Qt::AlignVCenter | Qt::AlignRight,
                         QString(QChar(0x2715)));  // the X that closes it
    }
    painter.setPen(kTitle);
    painter.drawRect(framed.adjusted(0, 0, -1, -1));
}

}  // namespace

Album::Album(QString folder) : folder_(std::move(folder))
{
    QDir().mkpath(folder_);
    startTimer(0);
}

void Album::Take(const QString& name)
{
    const QList<QWidget*> windows = VisibleWindows();
    QRect whole;
    for (const QWidget* window : windows)
        whole = whole.united(Framed(window));
    whole.adjust(-kBorder, -kBorder, kBorder, kBorder);

    const double ratio = QApplication::primaryScreen()->devicePixelRatio();
    QPixmap picture((QSizeF(whole.size()) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(kDesktop);
    QPainter painter(&picture);
    painter.translate(-whole.topLeft());
    for (QWidget* window : windows)
        Paint(painter, window);
    painter.end();

    const QString file =
        QString("%1/%2-%3.png").arg(folder_).arg(++taken_, 2, 10, QChar('0')).arg(name);
    if (!picture.save(file)) std::cerr << "cannot write " << file.toStdString() << "\n";
}

void Album::WatchFor(const QString& window, const QString& name)
{
    watched_ = window;
    watchedName_ = name;
}

void Album::timerEvent(QTimerEvent*)
{
    if (watched_.isEmpty()) return;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() != watched_ || !window->isVisible()) continue;
        watched_.clear();
        return Take(watchedName_);
    }
}

}  // namespace demo
