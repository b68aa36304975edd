// SPDX-License-Identifier: Apache-2.0
// Dispatch: the one door through which events enter the program, one at a time.
#pragma once

#include "platform/Prompts.h"

#include <functional>
#include <string>

namespace lodrin {

struct Shop;

// Runs an event procedure of the main window, or drops the event when a procedure is running or a
// box or dialog is open. An error that reaches this door is shown once and ends the program.
// Rule: no error with a number ever leaves it, only platform::ProgramEnded.
void Dispatch(Shop& shop, const std::function<void(Shop&)>& procedure);

// The same for an event of the modal dialog that is open: it runs while the procedure that opened
// the dialog waits, and is dropped while a box stands over the dialog.
void DispatchInDialog(Shop& shop, const std::function<void(Shop&)>& procedure);

// Activation and closing of a window, which come in whatever is running.
void DispatchAlways(Shop& shop, const std::function<void(Shop&)>& procedure);

// Boxes and dialogs, with the main window's events kept out while they are open.
platform::Answer Ask(Shop& shop, const platform::Box& box);
void Say(Shop& shop, const std::string& text,
         const std::string& title = platform::kApplicationTitle);
[[nodiscard]] std::string AskInput(Shop& shop, const platform::InputPrompt& prompt);
[[nodiscard]] std::string AskFile(Shop& shop, const std::string& filter);
void ShowGLSelect(Shop& shop);
void ShowProgress(Shop& shop);
void ShowStatus(Shop& shop);
void ShowDateSel(Shop& shop);

// Lets windows repaint.
void DoEvents(Shop& shop);

}  // namespace lodrin
