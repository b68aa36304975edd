// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/WindowFaults.h"

#include "platform/qt/ElidedLabel.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTableView>

namespace tests {

namespace {

constexpr int kThumb = 48;

class Inspection {
public:
    std::vector<std::string> faults;

    void Window(QWidget& window)
    {
        const QRect free = window.screen()->availableGeometry();
        if (!free.contains(window.frameGeometry())) Fault(window, "sticks out of the screen");
        for (QWidget* widget : window.findChildren<QWidget*>())
            if (widget->isVisibleTo(&window) && widget->window() == &window) Control(*widget);
    }

private:
    void Fault(const QWidget& widget, const std::string& what)
    {
        const QRect place = widget.geometry();
        faults.push_back(widget.objectName().toStdString() + " (" +
                         widget.metaObject()->className() + " " + std::to_string(place.x()) + "," +
                         std::to_string(place.y()) + " " + std::to_string(place.width()) + "x" +
                         std::to_string(place.height()) + ") " + what);
    }

    void Control(QWidget& widget)
    {
        if (auto* button = qobject_cast<QAbstractButton*>(&widget)) Button(*button);
        if (auto* label = qobject_cast<QLabel*>(&widget)) Label(*label);
        if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) View(*view);
        if (auto* bar = qobject_cast<QMenuBar*>(&widget)) Actions(*bar);
        if (auto* menu = qobject_cast<QMenu*>(&widget)) Actions(*menu);
        const bool field = qobject_cast<QComboBox*>(&widget) != nullptr ||
                           (qobject_cast<QLineEdit*>(&widget) != nullptr &&
                            qobject_cast<QComboBox*>(widget.parentWidget()) == nullptr);
        if (field) Target(widget, widget.size());
        if (widget.focusPolicy() != Qt::NoFocus) Told(widget);
    }

    void Button(const QAbstractButton& button)
    {
        Inside(button);
        Apart(button);
        Target(button, button.size());
        const int text = button.fontMetrics().horizontalAdvance(QString(button.text()).remove('&'));
        if (text + 8 > button.width()) Fault(button, "has a caption that is cut");
        Told(button);
    }

    void Label(const QLabel& label)
    {
        Inside(label);
        if (dynamic_cast<const platform::qt::ElidedLabel*>(&label) != nullptr) return;
        const int needed =
            label.wordWrap() ? label.heightForWidth(label.width()) : label.sizeHint().height();
        const bool narrow = !label.wordWrap() && label.width() < label.sizeHint().width();
        if (label.height() < needed || narrow) Fault(label, "has a text that is cut");
        if (IsScrolled(label)) Page(label);
    }

    static bool IsScrolled(const QWidget& widget)
    {
        const QWidget* holder = widget.parentWidget();
        return holder != nullptr && holder->objectName() == "qt_scrollarea_viewport";
    }

    // A text on a page of its own.
    void Page(const QLabel& text)
    {
        const QFontMetrics font = text.fontMetrics();
        const QRect page = text.parentWidget()->rect();
        if (page.height() % font.lineSpacing() != 0) Fault(text, "has a line that is cut through");
        const QRect written = font.boundingRect(text.contentsRect(), Qt::TextWordWrap, text.text());
        if (written.right() + 4 > page.right()) Fault(text, "stands too close to the scroll bar");
    }

    void View(QAbstractItemView& view)
    {
        if (qobject_cast<QHeaderView*>(&view) != nullptr) return;
        Inside(view);
        const QModelIndex first = view.model()->index(0, 0, view.rootIndex());
        if (!first.isValid()) return;
        auto* table = qobject_cast<QTableView*>(&view);
        const int row = table != nullptr ? table->rowHeight(0) : view.visualRect(first).height();
        if (row < kThumb) Fault(view, "has rows of " + std::to_string(row));
        if (view.viewport()->height() < kThumb) Fault(view, "has no room for a row");
    }

    template <class Menu>
    void Actions(Menu& menu)
    {
        for (QAction* action : menu.actions())
            if (!action->isSeparator()) Target(menu, menu.actionGeometry(action).size());
    }

    void Inside(const QWidget& widget)
    {
        const QWidget* holder = widget.parentWidget();
        if (holder == nullptr || IsScrolled(widget)) return;
        if (!holder->rect().contains(widget.geometry())) Fault(widget, "sticks out");
    }

    void Apart(const QWidget& widget)
    {
        for (const QObject* other : widget.parent()->children()) {
            const auto* beside = qobject_cast<const QAbstractButton*>(other);
            if (beside != nullptr && beside != &widget && beside->isVisible() &&
                beside->geometry().intersects(widget.geometry()))
                Fault(widget, "lies over " + beside->objectName().toStdString());
        }
    }

    void Target(const QWidget& widget, QSize size)
    {
        if (size.height() < kThumb || size.width() < kThumb)
            Fault(widget, "is too small to be touched: " + std::to_string(size.width()) + "x" +
                              std::to_string(size.height()));
    }

    void Told(const QWidget& widget)
    {
        QAccessibleInterface* told =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));  // NOLINT
        if (told == nullptr) return;
        if (told->text(QAccessible::Name).isEmpty()) Fault(widget, "has no accessible name");
    }
};

}  // namespace

std::vector<std::string> FaultsOf(QWidget& window)
{
    Inspection inspection;
    inspection.Window(window);
    return inspection.faults;
}

}  // namespace tests
