// SPDX-License-Identifier: Apache-2.0
#include "tools/demo/Hands.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace demo {

namespace {

constexpr int kNameColumn = 2;      // of the board's model
constexpr int kPopupSettles = 400;  // milliseconds; before, a popup ignores clicks

QString Text(const std::string& text)
{
    return QString::fromStdString(text);
}

}  // namespace

QWidget& Window(const char* name)
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == name && window->isVisible()) return *window;
    throw std::logic_error(std::string("no window ") + name);
}

void ClickRow(QTableView& table, int row)
{
    const QModelIndex cell = table.model()->index(row, kNameColumn);
    table.scrollTo(cell);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, table.visualRect(cell).center());
}

int RowOf(const QTableView& board, const std::string& employee)
{
    for (int row = 0; row < board.model()->rowCount(); ++row)
        if (board.model()->index(row, kNameColumn).data().toString() == Text(employee)) return row;
    return -1;
}

void ClickEntry(QListWidget& list, int entry)
{
    list.scrollToItem(list.item(entry));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                      list.visualItemRect(list.item(entry)).center());
}

void DoubleClickEntry(QListWidget& list, int entry)
{
    ClickEntry(list, entry);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                       list.visualItemRect(list.item(entry)).center());
}

int EntryOf(const QListWidget& list, const std::string& text, Match match)
{
    const Qt::MatchFlag how = match == Match::Whole ? Qt::MatchExactly : Qt::MatchStartsWith;
    const QList<QListWidgetItem*> found = list.findItems(Text(text), how | Qt::MatchCaseSensitive);
    return found.isEmpty() ? -1 : list.row(found.constFirst());
}

void TypeAndEnter(QComboBox& box, const std::string& text)
{
    box.setFocus();
    box.lineEdit()->selectAll();
    QTest::keyClicks(&box, Text(text));
    QTest::keyClick(&box, Qt::Key_Return);
}

void PickFromList(QComboBox& box, int entry)
{
    box.showPopup();
    QTest::qWait(kPopupSettles);
    QAbstractItemView& list = *box.view();
    const QModelIndex picked = box.model()->index(entry, 0);
    list.scrollTo(picked);
    const QPoint place = list.visualRect(picked).center();
    QTest::mouseMove(list.viewport(), place);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
}

void Press(QDialog& box, QMessageBox::StandardButton button)
{
    auto* message = qobject_cast<QMessageBox*>(&box);
    if (message == nullptr || message->button(button) == nullptr)
        throw std::logic_error("no such button on this window");
    message->button(button)->click();
}

void AnswerPrompt(QDialog& prompt, const std::string& text)
{
    auto& line = Find<QLineEdit>(prompt, "txtInput");
    QTest::keyClicks(&line, Text(text));
    QTest::keyClick(&line, Qt::Key_Return);
}

void ChooseProgress(QDialog& dialog, const std::string& text)
{
    auto& texts = Find<QListWidget>(dialog, "lstProgress");
    ClickEntry(texts, EntryOf(texts, text, Match::Whole));
    Find<QPushButton>(dialog, "cmdOkay").click();
}

void ChooseLabor(QDialog& dialog, const std::string& code, const std::string& department)
{
    auto& codes = Find<QListWidget>(dialog, "lstGLCodes");
    auto& departments = Find<QListWidget>(dialog, "lstDepartments");
    ClickEntry(codes, EntryOf(codes, code + " "));
    ClickEntry(departments, EntryOf(departments, department, Match::Whole));
    Find<QPushButton>(dialog, "cmdExit").click();
}

}  // namespace demo
