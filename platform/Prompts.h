// SPDX-License-Identifier: Apache-2.0
// Prompts: message boxes, the input prompt and the open-file dialog.
#pragma once

#include <string>

namespace platform {

enum class Buttons { Ok, YesNo };
enum class Icon { None, Critical };
enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

// The title of every box that has none of its own.
inline constexpr const char* kApplicationTitle = "Lodrin";

// A message box. Rule: plain text; line breaks are CR LF. An OK box always answers Ok; a Yes/No box
// stays until one of the two is chosen.
struct Box {
    std::string text;
    std::string title = kApplicationTitle;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    friend bool operator==(const Box&, const Box&) = default;
};

struct InputPrompt {
    std::string text;
    std::string title = kApplicationTitle;
    friend bool operator==(const InputPrompt&, const InputPrompt&) = default;
};

class Prompts {
public:
    Prompts() = default;
    Prompts(const Prompts&) = delete;
    Prompts& operator=(const Prompts&) = delete;
    virtual ~Prompts() = default;

    virtual Answer Show(const Box& box) = 0;
    // What was typed; empty when cancelled.
    [[nodiscard]] virtual std::string Input(const InputPrompt& prompt) = 0;
    // Full path of the chosen file. `filter` is "label|pattern|label|pattern".
    // Errors: 32755 when cancelled.
    [[nodiscard]] virtual std::string OpenFile(const std::string& filter) = 0;
};

}  // namespace platform
