// SPDX-License-Identifier: Apache-2.0
// ScriptedPrompts: a user whose answers are laid down before, in order.
#pragma once

#include "platform/Prompts.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

//     prompts.Expect("Invalid PIN entered");
//     prompts.ExpectInput("Please enter your PIN", "1234");
//
// Rule: a question nobody expected, or another than the next expected one, throws
//       std::logic_error, which no guard catches: the test fails at that question. A test that
//       cares for questions that never came looks at Pending().
class ScriptedPrompts : public Prompts {
public:
    // A box with this text comes next. Rule: an OK box answers Ok.
    void Expect(const std::string& text, platform::Answer answer = Answer::Ok);
    // The input prompt comes next; "" types nothing or cancels.
    void ExpectInput(const std::string& text, const std::string& typed);
    // The open-file dialog comes next.
    void ExpectFile(const std::string& path);
    void ExpectFileCancelled();
    // From now on a box that nobody laid down is answered with OK, or with Yes.
    void TakeAnyBox() { takesAnyBox_ = true; }
    // From now on he types this at a prompt that nobody laid down.
    void TakeAnyInput(const std::string& typed) { typesAnywhere_ = typed; }

    // Called while a box is open, before its answer.
    std::function<void(const Box& box)> whileBoxIsOpen;

    // What was shown so far, whole.
    std::vector<Box> boxes;
    std::vector<InputPrompt> inputs;
    std::vector<std::string> filters;

    // The texts shown so far, boxes and prompts in one order.
    [[nodiscard]] const std::vector<std::string>& Transcript() const { return transcript_; }
    // The texts of the questions still to come.
    [[nodiscard]] std::vector<std::string> Pending() const;

    platform::Answer Show(const Box& box) override;
    [[nodiscard]] std::string Input(const InputPrompt& prompt) override;
    [[nodiscard]] std::string OpenFile(const std::string& filter) override;

private:
    enum class Kind { Box, Input, File, FileCancelled };
    struct Question {
        Kind kind = Kind::Box;
        std::string text;
        platform::Answer answer = Answer::Ok;
        std::string typed;
    };
    // The next expected question, when it is this one.
    Question Take(const std::string& text, bool (*fits)(Kind));

    std::deque<Question> script_;
    bool takesAnyBox_ = false;
    std::optional<std::string> typesAnywhere_;
    std::vector<std::string> transcript_;
};

}  // namespace platform
