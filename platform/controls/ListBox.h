// SPDX-License-Identifier: Apache-2.0
// ListBox, ComboBox: entries with an attached number each, one of them selected.
#pragma once

#include "platform/controls/Control.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

class ListBox : public Control {
public:
    void Clear();
    // Adds at the end; selects nothing.
    void AddItem(std::string_view text, std::int32_t data = 0);

    [[nodiscard]] int ListCount() const;
    // Entries are counted from 0; an index out of range reads as the empty text.
    [[nodiscard]] std::string List(int index) const;
    // Errors: 381 for an index out of range.
    [[nodiscard]] std::int32_t ItemData(int index) const;
    void SetItemData(int index, std::int32_t data);

    // -1 when nothing is selected.
    [[nodiscard]] int ListIndex() const;
    // Errors: 380 for an index that is neither -1 nor an entry's.
    void SetListIndex(int index);
    // Of the selected entry; empty when none is.
    [[nodiscard]] std::string Text() const;

private:
    struct Entry {
        std::string text;
        std::int32_t data = 0;
    };
    std::vector<Entry> entries_;
    int selected_ = -1;
};

// A drop-down list with an edit field. Rule: typed text is never added to the list; clearing the
// list empties the text; setting the text picks nothing.
class ComboBox : public Control {
public:
    void Clear();
    void AddItem(std::string_view text);
    [[nodiscard]] int ListCount() const;
    [[nodiscard]] std::string List(int index) const;

    [[nodiscard]] const std::string& Text() const;
    void SetText(std::string_view text);

private:
    std::vector<std::string> entries_;
    std::string text_;
};

}  // namespace platform
