// SPDX-License-Identifier: Apache-2.0
#include "platform/qt/Mirror.h"

#include "platform/qt/QtText.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>

namespace platform::qt {

void Follow(Control& control, QObject* shownBy, const std::function<void()>& show)
{
    control.changed = [watched = QPointer<QObject>(shownBy), show] {
        if (watched) show();
    };
    show();
}

void MirrorLabel(Label& label, QLabel* shownBy, const char* name)
{
    shownBy->setObjectName(name);
    shownBy->setAccessibleDescription(name);
    shownBy->setTextFormat(Qt::PlainText);
    Follow(label, shownBy, [&label, shownBy] { shownBy->setText(ToQt(label.Caption())); });
}

void MirrorButton(Label& label, QAbstractButton* shownBy, const char* name)
{
    shownBy->setObjectName(name);
    shownBy->setAccessibleDescription(name);
    Follow(label, shownBy, [&label, shownBy] {
        shownBy->setText(ToQt(label.Caption()));
        shownBy->setToolTip(PlainTip(ToQt(label.tip)));
        shownBy->setEnabled(label.enabled);
    });
}

void MirrorAction(Label& label, QAction* shownBy, const char* name)
{
    shownBy->setObjectName(name);
    Follow(label, shownBy, [&label, shownBy] {
        shownBy->setText(ToQt(label.Caption()));
        shownBy->setToolTip(PlainTip(ToQt(label.tip)));
        shownBy->setStatusTip(ToQt(label.tip));
        shownBy->setEnabled(label.enabled);
    });
}

void MirrorMenu(Label& label, QMenu* shownBy, const char* name)
{
    shownBy->setObjectName(name);
    shownBy->setToolTipsVisible(true);
    Follow(label, shownBy, [&label, shownBy] { shownBy->setTitle(ToQt(label.Caption())); });
}

void MirrorCaption(Label& caption, QWidget* window)
{
    Follow(caption, window,
           [&caption, window] { window->setWindowTitle(ToQt(caption.Caption())); });
}

void NameControl(QWidget* widget, const char* name, const QString& description)
{
    widget->setObjectName(name);
    widget->setAccessibleName(name);
    widget->setAccessibleDescription(description);
}

}  // namespace platform::qt
