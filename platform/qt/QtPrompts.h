// SPDX-License-Identifier: Apache-2.0
// QtPrompts: the program's boxes, its input prompt and its file dialog as windows.
#pragma once

#include "platform/Prompts.h"

#include <QString>
#include <QStringList>

namespace platform::qt {

// Rule: each window stands over the active one, and the pointer is the arrow while it is open.
class QtPrompts : public Prompts {
public:
    Answer Show(const Box& box) override;
    [[nodiscard]] std::string Input(const InputPrompt& prompt) override;
    [[nodiscard]] std::string OpenFile(const std::string& filter) override;

private:
    QString lastFolder_;
};

// "Ostrel (Kelvaro.mdb)|Kelvaro.mdb|ALL (*.*)|*.*" as name filters of a file dialog.
[[nodiscard]] QStringList NameFilters(const std::string& filter);

}  // namespace platform::qt
