// SPDX-License-Identifier: Apache-2.0
#include "platform/controls/ListBox.h"

#include "base/NumberedError.h"

#include <cstddef>

namespace platform {

namespace {

constexpr int kInvalidPropertyValue = 380;
constexpr int kInvalidPropertyArrayIndex = 381;

// The place of entry `index`. Errors: 381 when there is none.
std::size_t PlaceOf(int index, std::size_t count)
{
    if (index < 0 || static_cast<std::size_t>(index) >= count)
        throw base::NumberedError(kInvalidPropertyArrayIndex);
    return static_cast<std::size_t>(index);
}

}  // namespace

void ListBox::Clear()
{
    entries_.clear();
    selected_ = -1;
    Changed();
}

void ListBox::AddItem(std::string_view text, std::int32_t data)
{
    entries_.push_back({std::string(text), data});
    Changed();
}

int ListBox::ListCount() const
{
    return static_cast<int>(entries_.size());
}

std::string ListBox::List(int index) const
{
    if (index < 0 || index >= ListCount()) return {};
    return entries_[static_cast<std::size_t>(index)].text;
}

std::int32_t ListBox::ItemData(int index) const
{
    return entries_[PlaceOf(index, entries_.size())].data;
}

void ListBox::SetItemData(int index, std::int32_t data)
{
    entries_[PlaceOf(index, entries_.size())].data = data;
    Changed();
}

int ListBox::ListIndex() const
{
    return selected_;
}

void ListBox::SetListIndex(int index)
{
    if (index < -1 || index >= ListCount()) throw base::NumberedError(kInvalidPropertyValue);
    selected_ = index;
    Changed();
}

std::string ListBox::Text() const
{
    return List(selected_);
}

void ComboBox::Clear()
{
    entries_.clear();
    text_.clear();
    Changed();
}

void ComboBox::AddItem(std::string_view text)
{
    entries_.emplace_back(text);
    Changed();
}

int ComboBox::ListCount() const
{
    return static_cast<int>(entries_.size());
}

std::string ComboBox::List(int index) const
{
    if (index < 0 || index >= ListCount()) return {};
    return entries_[static_cast<std::size_t>(index)];
}

const std::string& ComboBox::Text() const
{
    return text_;
}

void ComboBox::SetText(std::string_view text)
{
    text_ = text;
    Changed();
}

}  // namespace platform
