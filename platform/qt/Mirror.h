// SPDX-License-Identifier: Apache-2.0
// Mirror: widgets that show a control and follow its changes.
#pragma once

#include "platform/controls/Label.h"

#include <QPointer>

#include <functional>

class QAbstractButton;
class QAction;
class QLabel;
class QMenu;
class QWidget;

namespace platform::qt {

// Shows the control now and after each of its changes.
// Rule: neither side needs the other to live; a widget that is gone is no longer shown to.
void Follow(Control& control, QObject* shownBy, const std::function<void()>& show);

// Rule: names and tips follow one rule everywhere: the widget's object name is the control's name,
//       its caption is what assistive technology reads, its description is the control's name.
void MirrorLabel(Label& label, QLabel* shownBy, const char* name);
void MirrorButton(Label& label, QAbstractButton* shownBy, const char* name);
void MirrorAction(Label& label, QAction* shownBy, const char* name);
void MirrorMenu(Label& label, QMenu* shownBy, const char* name);
void MirrorCaption(Label& caption, QWidget* window);

// For a control without a caption: its name, and what it is in words.
void NameControl(QWidget* widget, const char* name, const QString& description);

}  // namespace platform::qt
