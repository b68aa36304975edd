// SPDX-License-Identifier: Apache-2.0
// DataPage: a page of slots with rows, packed from the page's end downwards.
#pragma once

#include "jet/format/Layout.h"
#include "jet/format/PageNumber.h"

#include <cstdint>
#include <optional>

namespace jet::format {

// Where a data page keeps its parts.                        docs/format/data-page.md
//
//   part        width   meaning
//   freeBytes   2       bytes between the slot table and the last row
//   owner       4       table definition that owns the rows; "LVAL" for long values; 0 for usage
//                       maps
//   stamp       4       of the first page of a chain of long values: as its row tells; Jet 4
//   slotCount   2       slots, deleted ones included
//   slots       2 each  offset of each row; the top two bits are flags
struct DataPageLayout {
    std::size_t freeBytes, owner, stamp, slotCount, slots;
};
inline constexpr DataPageLayout kDataPageJet3{
    .freeBytes = 0x02, .owner = 0x04, .stamp = kAbsent, .slotCount = 0x08, .slots = 0x0A};
inline constexpr DataPageLayout kDataPageJet4{
    .freeBytes = 0x02, .owner = 0x04, .stamp = 0x08, .slotCount = 0x0C, .slots = 0x0E};

// The size of a page tells its version.
[[nodiscard]] inline const DataPageLayout& DataPageLayoutOf(Span page)
{
    constexpr std::size_t jet3PageSize = 2048;
    return page.size() == jet3PageSize ? kDataPageJet3 : kDataPageJet4;
}

inline constexpr std::uint8_t kDataPageType = 0x01;
inline constexpr std::uint8_t kFreedDataPageType = 0x09;
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"
inline constexpr std::size_t kSlotLimit = 255;                // a slot number has eight bits

inline constexpr std::uint16_t kSlotKindBits = 0xC000;
inline constexpr std::uint16_t kSlotOffsetBits = 0x1FFF;

enum class SlotKind : std::uint16_t {
    Row = 0x0000,
    Pointer = 0x4000,  // the row moved: its first four bytes tell where
    Moved = 0x8000,    // reached only through its pointer
    Deleted = 0xC000,
};

// A view. Requires: `page` is one whole page and outlives the view.
// Errors: 3343 when the page is of another kind or contradicts itself.
class DataPage {
public:
    explicit DataPage(Span page);

    [[nodiscard]] std::uint32_t Owner() const { return ReadU32(page_, at_->owner); }
    [[nodiscard]] std::uint16_t FreeBytes() const { return ReadU16(page_, at_->freeBytes); }
    [[nodiscard]] std::uint16_t SlotCount() const { return slotCount_; }
    [[nodiscard]] SlotKind Kind(std::uint16_t slot) const
    {
        return static_cast<SlotKind>(Word(slot) & kSlotKindBits);
    }
    // The bytes of a slot, whatever its kind.
    [[nodiscard]] Span Row(std::uint16_t slot) const
    {
        const std::size_t start = Start(slot);
        const std::size_t end = End(slot);
        if (start > end || end > page_.size() || start < at_->slots + 2U * slotCount_)
            RefuseRow(slot);
        return page_.subspan(start, end - start);
    }
    // Whether no slot holds a row, a pointer or a moved row.
    [[nodiscard]] bool Empty() const;
    // Bytes between the slot table and the last row, as the slots tell; FreeBytes may lie.
    [[nodiscard]] std::size_t Gap() const;
    // Whether one more row of `length` bytes has room.
    [[nodiscard]] bool Fits(std::size_t length) const;
    // To be asked before the page is changed. Errors: 3343 when rows overlap.
    void RequireSound() const;

private:
    // In the header, because every row of every scan passes here.
    [[nodiscard]] std::uint16_t Word(std::size_t slot) const
    {
        if (slot >= slotCount_) RefuseSlot(slot);
        return ReadU16(page_, at_->slots + 2 * slot);
    }
    [[nodiscard]] std::size_t Start(std::size_t slot) const { return Word(slot) & kSlotOffsetBits; }
    [[nodiscard]] std::size_t End(std::size_t slot) const
    {
        return slot == 0 ? page_.size() : Start(slot - 1);
    }
    [[noreturn]] static void RefuseSlot(std::size_t slot);
    [[noreturn]] static void RefuseRow(std::size_t slot);

    Span page_;
    const DataPageLayout* at_;
    std::uint16_t slotCount_;
};

// Makes `page` an empty data page.
void FormatDataPage(MutableSpan page, std::uint32_t owner);
// Adds a row in a new slot. Requires: DataPage::Fits. Returns the slot.
std::uint16_t AppendRow(MutableSpan page, Span row, SlotKind kind = SlotKind::Row);
// Gives a slot another length; rows of higher slots move. The bytes kept are the first ones.
// Requires: growth fits into the free bytes.
void ResizeRow(MutableSpan page, std::uint16_t slot, std::size_t length);
// The bytes of a slot, to be changed in place.
[[nodiscard]] MutableSpan RowBytes(MutableSpan page, std::uint16_t slot);
void SetSlotKind(MutableSpan page, std::uint16_t slot, SlotKind kind);
// Marks a slot deleted and closes the gap.
void DeleteRow(MutableSpan page, std::uint16_t slot);

}  // namespace jet::format
