// SPDX-License-Identifier: Apache-2.0
#include "jet/check/DataPageCheck.h"

#include "jet/format/DataPage.h"

#include <optional>

namespace jet::check {

namespace {

constexpr std::uint16_t kOffsetBits = 0x1FFF, kUnknownFlag = 0x2000;
constexpr std::uint16_t kDataPage = 0x0101;  // its first two bytes

struct SlotWalk {
    std::size_t lowest = 0;          // where the last row starts
    std::optional<std::size_t> bad;  // the first slot that lies
};

std::size_t SlotAt(format::Span page, std::size_t slot)
{
    return format::DataPageLayoutOf(page).slots + 2 * slot;
}

SlotWalk WalkSlots(format::Span page, std::size_t count)
{
    SlotWalk walk{.lowest = page.size(), .bad = {}};
    for (std::size_t slot = 0; slot < count; ++slot) {
        const std::uint16_t word = format::ReadU16(page, SlotAt(page, slot));
        const std::size_t start = word & kOffsetBits;
        if ((word & kUnknownFlag) != 0 || start < SlotAt(page, count) || start > walk.lowest) {
            walk.bad = slot;
            return walk;
        }
        walk.lowest = start;
    }
    return walk;
}

}  // namespace

bool HasSoundSlots(format::Span page)
{
    if (format::ReadU16(page, 0) != kDataPage) return false;
    const std::size_t count = format::ReadU16(page, format::DataPageLayoutOf(page).slotCount);
    return count <= format::kSlotLimit + 1 && !WalkSlots(page, count).bad;
}

bool CheckDataPage(Inspection& inspection, PageNumber number, format::Span page,
                   std::uint32_t owner)
{
    const format::DataPageLayout& at = format::DataPageLayoutOf(page);
    if (format::ReadU16(page, 0) != kDataPage) {
        inspection.Found(DefectKind::DataPageType, number, 0,
                         "type " + std::to_string(format::ReadU16(page, 0)) +
                             " where a data page is expected");
        return false;
    }
    if (format::ReadU32(page, at.owner) != owner) {
        inspection.Found(DefectKind::DataPageOwner, number, at.owner,
                         "owner " + std::to_string(format::ReadU32(page, at.owner)) + " and not " +
                             std::to_string(owner));
    }
    const std::size_t count = format::ReadU16(page, at.slotCount);
    if (count > format::kSlotLimit + 1) {
        inspection.Found(DefectKind::DataPageSlots, number, at.slotCount,
                         std::to_string(count) + " slots");
        return false;
    }
    const SlotWalk walk = WalkSlots(page, count);
    if (walk.bad) {
        inspection.Found(DefectKind::RowOutsidePage, number, SlotAt(page, *walk.bad),
                         "slot " + std::to_string(*walk.bad) + " says " +
                             std::to_string(format::ReadU16(page, SlotAt(page, *walk.bad))) +
                             ", the row above starts at " + std::to_string(walk.lowest));
        return false;
    }
    const std::size_t free = walk.lowest - SlotAt(page, count);
    if (format::ReadU16(page, at.freeBytes) != free) {
        inspection.Found(DefectKind::DataPageFreeBytes, number, at.freeBytes,
                         "says " + std::to_string(format::ReadU16(page, at.freeBytes)) +
                             " free bytes, has " + std::to_string(free));
    }
    return true;
}

}  // namespace jet::check
