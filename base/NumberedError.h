// SPDX-License-Identifier: Apache-2.0
// NumberedError: the one exception of this project, a failure with the number its users know it by.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace base {

// A failure with its number and the text that belongs to that number.
//
//     throw base::NumberedError(3021);                       // "No current record."
//     throw base::NumberedError(3265, {"WO#"});              // the mark filled in
//     throw base::NumberedError(3343, {path}).At("page 7, offset 0x20");
//
// Units:   numbers below 1000 and 31001..32755 are the program's run time; 3000..3999 the engine's.
// Rule:    what() is the text a user may see; Detail() is for tools and never shown in a box.
// Source:  base/ErrorTexts.cpp holds the catalogue.
class NumberedError : public std::runtime_error {
public:
    explicit NumberedError(int number, const std::vector<std::string>& marks = {});

    // Adds where the failure lies: file, page and offset.
    [[nodiscard]] NumberedError At(std::string_view detail) const;

    [[nodiscard]] int Number() const noexcept { return number_; }
    [[nodiscard]] const std::string& Detail() const noexcept { return detail_; }

private:
    int number_;
    std::string detail_;
};

// The text that belongs to `number`, with its marks (|1, |2, |3) replaced by `marks` in order.
//
// Rule: a mark that was not given is left out; an unknown number has the text "Application-defined
// or object-defined error".
[[nodiscard]] std::string ErrorText(int number, const std::vector<std::string>& marks = {});

}  // namespace base
