// SPDX-License-Identifier: Apache-2.0
#include "platform/fake/ScriptedPrompts.h"

#include "base/NumberedError.h"

#include <stdexcept>

namespace platform {

namespace {

constexpr int kCancelSelected = 32755;
constexpr const char* kFileDialog = "(open-file dialog)";

}  // namespace

void ScriptedPrompts::Expect(const std::string& text, platform::Answer answer)
{
    script_.push_back({.kind = Kind::Box, .text = text, .answer = answer, .typed = {}});
}

void ScriptedPrompts::ExpectInput(const std::string& text, const std::string& typed)
{
    script_.push_back({.kind = Kind::Input, .text = text, .answer = Answer::Ok, .typed = typed});
}

void ScriptedPrompts::ExpectFile(const std::string& path)
{
    script_.push_back(
        {.kind = Kind::File, .text = kFileDialog, .answer = Answer::Ok, .typed = path});
}

void ScriptedPrompts::ExpectFileCancelled()
{
    script_.push_back(
        {.kind = Kind::FileCancelled, .text = kFileDialog, .answer = Answer::Cancel, .typed = {}});
}

std::vector<std::string> ScriptedPrompts::Pending() const
{
    std::vector<std::string> texts;
    for (const Question& question : script_)
        texts.push_back(question.text);
    return texts;
}

ScriptedPrompts::Question ScriptedPrompts::Take(const std::string& text, bool (*fits)(Kind))
{
    transcript_.push_back(text);
    if (script_.empty()) throw std::logic_error("nobody expected the question: " + text);
    Question next = script_.front();
    if (!fits(next.kind) || next.text != text)
        throw std::logic_error("asked: " + text + "\nexpected: " + next.text);
    script_.pop_front();
    return next;
}

platform::Answer ScriptedPrompts::Show(const Box& box)
{
    boxes.push_back(box);
    if (whileBoxIsOpen) whileBoxIsOpen(box);
    if (takesAnyBox_ && (script_.empty() || script_.front().text != box.text)) {
        transcript_.push_back(box.text);
        return box.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
    }
    return Take(box.text, [](Kind kind) { return kind == Kind::Box; }).answer;
}

std::string ScriptedPrompts::Input(const InputPrompt& prompt)
{
    inputs.push_back(prompt);
    if (typesAnywhere_ && script_.empty()) {
        transcript_.push_back(prompt.text);
        return *typesAnywhere_;
    }
    return Take(prompt.text, [](Kind kind) { return kind == Kind::Input; }).typed;
}

std::string ScriptedPrompts::OpenFile(const std::string& filter)
{
    filters.push_back(filter);
    const Question next = Take(
        kFileDialog, [](Kind kind) { return kind == Kind::File || kind == Kind::FileCancelled; });
    if (next.kind == Kind::FileCancelled) throw base::NumberedError(kCancelSelected);
    return next.typed;
}

}  // namespace platform
