// SPDX-License-Identifier: Apache-2.0
// The patterns of Like.
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/sql/Operators.h"

#include <vector>

namespace jet::sql {

namespace {

// One step of a pattern: what one character must be, or any run of them.
struct Step {
    enum class Kind { Run, Any, Digit, Literal, Set } kind = Kind::Literal;
    char16_t literal = 0;
    bool negated = false;
    std::vector<std::pair<char16_t, char16_t>> ranges;
};

char16_t Folded(char16_t unit)
{
    const bool upper =
        (unit >= u'A' && unit <= u'Z') || (unit >= 0xC0 && unit <= 0xDE && unit != 0xD7);
    return upper ? static_cast<char16_t>(unit + 32) : unit;
}

Step ReadSet(std::u16string_view pattern, std::size_t& at)
{
    Step step{Step::Kind::Set, 0, false, {}};
    const std::size_t end = pattern.find(u']', at + 1);
    if (end == std::u16string_view::npos) throw base::NumberedError(3071);
    std::size_t i = at + 1;
    if (i < end && pattern[i] == u'!' && i + 1 < end) {
        step.negated = true;
        ++i;
    }
    for (; i < end; ++i) {
        const bool range = i + 2 < end && pattern[i + 1] == u'-';
        step.ranges.emplace_back(Folded(pattern[i]), Folded(pattern[range ? i + 2 : i]));
        if (range) i += 2;
    }
    at = end;
    return step;
}

std::vector<Step> Steps(std::u16string_view pattern)
{
    std::vector<Step> steps;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const char16_t unit = pattern[at];
        if (unit == u'*') {
            steps.push_back({Step::Kind::Run, 0, false, {}});
        } else if (unit == u'?') {
            steps.push_back({Step::Kind::Any, 0, false, {}});
        } else if (unit == u'#') {
            steps.push_back({Step::Kind::Digit, 0, false, {}});
        } else if (unit == u'[') {
            steps.push_back(ReadSet(pattern, at));
        } else {
            steps.push_back({Step::Kind::Literal, Folded(unit), false, {}});
        }
    }
    return steps;
}

bool Fits(const Step& step, char16_t unit)
{
    const char16_t folded = Folded(unit);
    switch (step.kind) {
    case Step::Kind::Digit:
        return unit >= u'0' && unit <= u'9';
    case Step::Kind::Literal:
        return folded == step.literal;
    case Step::Kind::Set: {
        bool inside = false;
        for (const auto& [low, high] : step.ranges)
            inside = inside || (folded >= low && folded <= high);
        return inside != step.negated;
    }
    default:
        return true;
    }
}

}  // namespace

// Only the last run met is ever widened, so the time is bounded by text times pattern.
bool IsLike(std::string_view text, std::string_view pattern)
{
    const std::u16string units = base::ToUtf16(text);
    const std::vector<Step> steps = Steps(base::ToUtf16(pattern));
    std::size_t at = 0, step = 0, runStep = steps.size(), runStart = 0;
    while (at < units.size()) {
        if (step < steps.size() && steps[step].kind == Step::Kind::Run) {
            runStep = step++;
            runStart = at;
        } else if (step < steps.size() && Fits(steps[step], units[at])) {
            ++step;
            ++at;
        } else if (runStep < steps.size()) {
            step = runStep + 1;
            at = ++runStart;
        } else {
            return false;
        }
    }
    while (step < steps.size() && steps[step].kind == Step::Kind::Run)
        ++step;
    return step == steps.size();
}

}  // namespace jet::sql
