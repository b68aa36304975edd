// SPDX-License-Identifier: Apache-2.0
#include "jet/format/DataPage.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace jet::format {

namespace {

[[noreturn]] void Damaged(const std::string& what)
{
    throw base::NumberedError(3343).At("data page: " + what);
}

std::size_t SlotAt(Span page, std::uint16_t slot)
{
    return DataPageLayoutOf(page).slots + std::size_t{2} * slot;
}

std::uint16_t Word(Span page, std::uint16_t slot)
{
    return ReadU16(page, SlotAt(page, slot));
}

void UpdateFreeBytes(MutableSpan page)
{
    const DataPageLayout& at = DataPageLayoutOf(page);
    const std::uint16_t count = ReadU16(page, at.slotCount);
    const std::size_t end =
        count == 0
            ? page.size()
            : std::size_t{Word(page, static_cast<std::uint16_t>(count - 1))} & kSlotOffsetBits;
    WriteU16(page, at.freeBytes, static_cast<std::uint16_t>(end - SlotAt(page, count)));
}

}  // namespace

DataPage::DataPage(Span page)
    : page_(page), at_(&DataPageLayoutOf(page)), slotCount_(ReadU16(page, at_->slotCount))
{
    if (ReadU8(page, 0) != kDataPageType) Damaged("type " + std::to_string(ReadU8(page, 0)));
    if (slotCount_ > kSlotLimit + 1 || SlotAt(page_, slotCount_) > page.size())
        Damaged("too many slots");
}

void DataPage::RefuseSlot(std::size_t slot)
{
    Damaged("no slot " + std::to_string(slot));
}

void DataPage::RefuseRow(std::size_t slot)
{
    Damaged("slot " + std::to_string(slot) + " outside the page");
}

bool DataPage::Empty() const
{
    for (std::uint16_t slot = 0; slot < slotCount_; ++slot) {
        if (Kind(slot) != SlotKind::Deleted) return false;
    }
    return true;
}

std::size_t DataPage::Gap() const
{
    const std::size_t slots = SlotAt(page_, slotCount_);
    const std::size_t end = End(slotCount_);
    return end < slots ? 0 : std::min(end, page_.size()) - slots;
}

bool DataPage::Fits(std::size_t length) const
{
    return slotCount_ < kSlotLimit && length + 2 <= Gap();
}

void DataPage::RequireSound() const
{
    for (std::uint16_t slot = 0; slot < slotCount_; ++slot)
        static_cast<void>(Row(slot));
}

void FormatDataPage(MutableSpan page, std::uint32_t owner)
{
    std::fill(page.begin(), page.end(), std::byte{0});
    WriteU8(page, 0, kDataPageType);
    WriteU8(page, 1, 1);
    WriteU32(page, DataPageLayoutOf(page).owner, owner);
    UpdateFreeBytes(page);
}

namespace {

// A row lies below all rows before it, so the last slot tells where the gap ends.
void RequireRoom(const DataPage& page, std::size_t bytes)
{
    page.RequireSound();
    if (bytes > page.Gap()) Damaged("no room for " + std::to_string(bytes) + " bytes");
}

}  // namespace

std::uint16_t AppendRow(MutableSpan page, Span row, SlotKind kind)
{
    RequireRoom(DataPage(page), row.size() + 2);
    const std::size_t countAt = DataPageLayoutOf(page).slotCount;
    const std::uint16_t slot = ReadU16(page, countAt);
    const std::size_t end =
        slot == 0 ? page.size()
                  : std::size_t{Word(page, static_cast<std::uint16_t>(slot - 1))} & kSlotOffsetBits;
    const std::size_t start = end - row.size();
    if (!row.empty()) std::memcpy(page.data() + start, row.data(), row.size());
    WriteU16(page, SlotAt(page, slot),
             static_cast<std::uint16_t>(start | static_cast<std::uint16_t>(kind)));
    WriteU16(page, countAt, static_cast<std::uint16_t>(slot + 1));
    UpdateFreeBytes(page);
    return slot;
}

void ResizeRow(MutableSpan page, std::uint16_t slot, std::size_t length)
{
    const DataPage view(page);
    const Span row = view.Row(slot);
    const auto start = static_cast<std::size_t>(row.data() - page.data());
    const std::size_t last = view.SlotCount() - 1U;
    const std::size_t lowest = Word(page, static_cast<std::uint16_t>(last)) & kSlotOffsetBits;
    if (length > row.size()) RequireRoom(view, length - row.size());
    view.RequireSound();

    // Bytes to keep move towards the page's end by `shift` (or away from it when the row grows).
    const std::ptrdiff_t shift =
        static_cast<std::ptrdiff_t>(row.size()) - static_cast<std::ptrdiff_t>(length);
    const std::size_t kept = std::min(length, row.size());
    std::memmove(page.data() + static_cast<std::ptrdiff_t>(lowest) + shift, page.data() + lowest,
                 start + kept - lowest);
    if (shift < 0) {
        std::memset(page.data() + static_cast<std::ptrdiff_t>(start + kept) + shift, 0,
                    length - kept);
    }
    for (std::size_t i = slot; i <= last; ++i) {
        const auto index = static_cast<std::uint16_t>(i);
        const std::uint16_t word = Word(page, index);
        const auto moved =
            static_cast<std::uint16_t>(static_cast<std::ptrdiff_t>(word & kSlotOffsetBits) + shift);
        WriteU16(page, SlotAt(page, index),
                 static_cast<std::uint16_t>(moved | (word & kSlotKindBits)));
    }
    UpdateFreeBytes(page);
}

MutableSpan RowBytes(MutableSpan page, std::uint16_t slot)
{
    const Span row = DataPage(page).Row(slot);
    return page.subspan(static_cast<std::size_t>(row.data() - page.data()), row.size());
}

void SetSlotKind(MutableSpan page, std::uint16_t slot, SlotKind kind)
{
    const std::uint16_t word = Word(page, slot);
    WriteU16(
        page, SlotAt(page, slot),
        static_cast<std::uint16_t>((word & kSlotOffsetBits) | static_cast<std::uint16_t>(kind)));
}

void DeleteRow(MutableSpan page, std::uint16_t slot)
{
    ResizeRow(page, slot, 0);
    SetSlotKind(page, slot, SlotKind::Deleted);
}

}  // namespace jet::format
