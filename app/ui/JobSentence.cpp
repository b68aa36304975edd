// SPDX-License-Identifier: Apache-2.0
#include "app/ui/JobSentence.h"

#include "data/Tables.h"
#include "platform/controls/Grid.h"

namespace lodrin::ui {

namespace {

constexpr const char* kDot = " \u00b7 ";

std::string OpenJob(const platform::Grid& board)
{
    const auto shown = [&board](BoardField field) {
        return board.Shown(board.Row(), field.column);
    };
    std::string sentence = "WO " + shown(LDEmp::WONumber);
    for (const std::string& part : {shown(LDEmp::GLType), "since " + shown(LDEmp::StartJob),
                                    shown(LDEmp::VehDesc), shown(LDEmp::Customer)})
        if (!part.empty()) sentence += kDot + part;
    return sentence;
}

}  // namespace

std::string JobSentence(const platform::Grid& board)
{
    if (board.Row() == 0 || board.ColumnCount() < LDEmp::GLType.column) return {};
    const auto shown = [&board](BoardField field) {
        return board.Shown(board.Row(), field.column);
    };
    if (!shown(LDEmp::Customer).empty()) return OpenJob(board);
    if (!shown(LDEmp::EndDay).empty()) return "Day ended " + shown(LDEmp::EndDay);
    if (!shown(LDEmp::StartDay).empty())
        return "Day started " + shown(LDEmp::StartDay) + kDot + "no job open";
    return "Day not started";
}

}  // namespace lodrin::ui
