// SPDX-License-Identifier: Apache-2.0
#include "app/ui/JobSentence.h"

#include "data/Tables.h"
#include "platform/controls/Grid.h"

#include <initializer_list>

namespace lodrin::ui {

namespace {

constexpr const char* kDot = " \u00b7 ";
constexpr const char* kComma = ", ";

std::string Joined(const char* between, std::initializer_list<std::string> parts)
{
    std::string joined;
    for (const std::string& part : parts)
        if (!part.empty()) joined += (joined.empty() ? "" : between) + part;
    return joined;
}

// One row of the board as it is shown.
class BoardRow {
public:
    BoardRow(const platform::Grid& board, int row) : board_(board), row_(row) {}
    std::string operator[](BoardField field) const { return board_.Shown(row_, field.column); }

private:
    const platform::Grid& board_;
    int row_;
};

// What an employee without an open job is told by.
std::string Day(const BoardRow& row, const char* between)
{
    if (!row[LDEmp::EndDay].empty()) return "Day ended " + row[LDEmp::EndDay];
    if (row[LDEmp::StartDay].empty()) return "Day not started";
    return Joined(between, {"Day started " + row[LDEmp::StartDay], "no job open"});
}

std::string InSentence(std::string text)
{
    if (text.rfind("Day ", 0) == 0) text[0] = 'd';
    return text;
}

bool HasBoardColumns(const platform::Grid& board, int row)
{
    return row >= 1 && row <= board.RowCount() && board.ColumnCount() >= LDEmp::GLType.column;
}

}  // namespace

std::string JobSentence(const platform::Grid& board)
{
    if (!HasBoardColumns(board, board.Row())) return {};
    const BoardRow row(board, board.Row());
    if (row[LDEmp::Customer].empty()) return Day(row, kDot);
    return Joined(kDot,
                  {"WO " + row[LDEmp::WONumber], row[LDEmp::GLType],
                   "since " + row[LDEmp::StartJob], row[LDEmp::VehDesc], row[LDEmp::Customer]});
}

std::string BoardRowInWords(const platform::Grid& board, int number)
{
    if (!HasBoardColumns(board, number)) return {};
    const BoardRow row(board, number);
    if (row[LDEmp::Customer].empty())
        return Joined(kComma, {row[LDEmp::Name], InSentence(Day(row, kComma))});
    return Joined(kComma, {row[LDEmp::Name],
                           "working on repair order " + row[LDEmp::WONumber] + " since " +
                               row[LDEmp::StartJob],
                           row[LDEmp::GLType], row[LDEmp::VehDesc], row[LDEmp::Customer]});
}

std::string JobRowInWords(const platform::Grid& jobs, int row)
{
    using Column = LDHistory::Column;
    if (row < 1 || row > jobs.RowCount() || jobs.ColumnCount() < Column::VehDesc) return {};
    const auto shown = [&](int column) { return jobs.Shown(row, column); };
    return Joined(kComma,
                  {"Repair order " + shown(Column::WONumb), shown(Column::VehDesc),
                   shown(Column::GLType), shown(Column::JobStart) + " to " + shown(Column::JobEnd),
                   shown(Column::Hrs) + " hours"});
}

}  // namespace lodrin::ui
