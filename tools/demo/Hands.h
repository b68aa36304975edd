// SPDX-License-Identifier: Apache-2.0
// Hands: what a user does with mouse and keyboard at the program's windows.
#pragma once

#include <QComboBox>
#include <QListWidget>
#include <QMessageBox>
#include <QTableView>

#include <stdexcept>
#include <string>

namespace demo {

// The control of that name. Errors: std::logic_error when the window has none.
template <class Control>
[[nodiscard]] Control& Find(QWidget& window, const char* name)
{
    auto* found = window.findChild<Control*>(name);
    if (found == nullptr) throw std::logic_error(std::string("no control ") + name);
    return *found;
}

// The visible window of that name. Errors: std::logic_error when there is none.
[[nodiscard]] QWidget& Window(const char* name);

// Units: rows and entries count from 0.
void ClickRow(QTableView& table, int row);
// The row of the board that shows the name; -1 when none does.
[[nodiscard]] int RowOf(const QTableView& board, const std::string& employee);
void ClickEntry(QListWidget& list, int entry);
void DoubleClickEntry(QListWidget& list, int entry);
// The first entry that is or begins with the text; -1 when there is none.
enum class Match { Whole, Beginning };
[[nodiscard]] int EntryOf(const QListWidget& list, const std::string& text,
                          Match match = Match::Beginning);
// Types into the box and presses Enter.
void TypeAndEnter(QComboBox& box, const std::string& text);
// Opens the list and clicks the entry.
void PickFromList(QComboBox& box, int entry);
// Presses a button of a message box.
void Press(QDialog& box, QMessageBox::StandardButton button);
// Types into the prompt and presses Enter.
void AnswerPrompt(QDialog& prompt, const std::string& text);
// Picks in the progress dialog and confirms.
void ChooseProgress(QDialog& dialog, const std::string& text);
// Picks in the labor type dialog and confirms.
void ChooseLabor(QDialog& dialog, const std::string& code, const std::string& department);

}  // namespace demo
