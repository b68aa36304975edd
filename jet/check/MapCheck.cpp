// SPDX-License-Identifier: Apache-2.0
#include "jet/check/MapCheck.h"

#include "jet/check/DataPageCheck.h"
#include "jet/format/DataPage.h"
#include "jet/pages/MapRow.h"

namespace jet::check {

namespace {

using format::Span;

// Walks the bits of one map. `each(page, isMember)` gets every page the map speaks of.
class MapWalk {
public:
    MapWalk(Inspection& inspection, RowId where, PageNumber table, std::string whose)
        : inspection_(inspection), where_(where), table_(table), whose_(std::move(whose))
    {
    }

    template <class Each>
    void Walk(Span row, Each each)
    {
        const std::uint8_t form = row.empty() ? 2 : format::ReadU8(row, 0);
        if (row.size() < pages::kMapHead || form > 1) {
            return inspection_.Found(DefectKind::MapForm, where_.page, 0,
                                     whose_ + " at " + RowText(where_) + " has form " +
                                         std::to_string(form) + " and " +
                                         std::to_string(row.size()) + " bytes");
        }
        if (form == 0) return WalkInline(row, each);
        for (std::size_t i = 0; 1 + 4 * (i + 1) <= row.size(); ++i)
            WalkBitmapPage(PageNumber{format::ReadU32(row, 1 + 4 * i)}, i, each);
    }

private:
    template <class Each>
    void WalkInline(Span row, Each each)
    {
        const std::uint32_t start = format::ReadU32(row, 1);
        if (start > inspection_.Pager().PageCount() + 8) {
            inspection_.Found(DefectKind::MapForm, where_.page, 0,
                              whose_ + " at " + RowText(where_) + " starts at page " +
                                  std::to_string(start));
            return;
        }
        WalkBits(row.subspan(pages::kMapHead), start, each);
    }

    template <class Each>
    void WalkBitmapPage(PageNumber number, std::size_t place, Each each)
    {
        if (number == PageNumber::None) return;
        const auto page = inspection_.Read(number, where_.page, 0, whose_);
        if (!page || !inspection_.Claim(number, PageUse::Bitmap, table_)) return;
        if (format::ReadU8(page->Bytes(), 0) != pages::kBitmapPageType) {
            return inspection_.Found(DefectKind::MapBitmapPage, number, 0,
                                     "is no bitmap page, though " + whose_ + " says so");
        }
        const std::uint32_t covered = pages::PagesPerBitmap(inspection_.PageSize());
        WalkBits(page->Bytes().subspan(pages::kBitmapPageHead),
                 static_cast<std::uint32_t>(place * covered), each);
    }

    template <class Each>
    void WalkBits(Span bitmap, std::uint32_t start, Each each)
    {
        for (std::size_t bit = 0; bit < 8 * bitmap.size(); ++bit)
            each(start + static_cast<std::uint32_t>(bit), pages::TestBit(bitmap, bit));
    }

    Inspection& inspection_;
    RowId where_;
    PageNumber table_;
    std::string whose_;
};

// The row of a map; nothing (and a finding) when there is none.
std::optional<pages::Page> MapPage(Inspection& inspection, RowId where, PageNumber table,
                                   PageNumber from, const std::string& whose)
{
    auto page = inspection.Read(where.page, from, 0, whose);
    if (!page || !inspection.Claim(where.page, PageUse::UsageMaps, table)) return std::nullopt;
    if (!inspection.ClaimMap(where)) return std::nullopt;
    if (HasSoundSlots(page->Bytes())) {
        const format::DataPage view(page->Bytes());
        if (where.slot < view.SlotCount() && view.Kind(where.slot) == format::SlotKind::Row)
            return page;
    }
    inspection.Found(DefectKind::MapRow, where.page, 0, whose + ": no map at " + RowText(where));
    return std::nullopt;
}

}  // namespace

std::vector<PageNumber> ReadMap(Inspection& inspection, RowId where, PageNumber table,
                                PageNumber from, const std::string& whose)
{
    std::vector<PageNumber> members;
    const auto page = MapPage(inspection, where, table, from, whose);
    if (!page) return members;
    std::uint64_t outside = 0;
    MapWalk(inspection, where, table, whose)
        .Walk(format::DataPage(page->Bytes()).Row(where.slot), [&](std::uint32_t number, bool in) {
            if (!in) return;
            if (number >= 2 && number < inspection.Pager().PageCount())
                members.push_back(PageNumber{number});
            else
                ++outside;
        });
    if (outside != 0) {
        inspection.Found(DefectKind::MapPageOutside, where.page, 0,
                         whose + " at " + RowText(where) + " names " + std::to_string(outside) +
                             " pages outside the file");
    }
    return members;
}

std::vector<bool> ReadFreePages(Inspection& inspection)
{
    // What no bitmap covers is free.
    std::vector<bool> isFree(inspection.Pager().PageCount(), true);
    const auto page =
        MapPage(inspection, kFreePages, PageNumber::None, PageNumber::None, "map of free pages");
    if (!page) {
        inspection.Found(DefectKind::MapOfFreePages, kFreePages.page, 0, "cannot be read");
        isFree.assign(isFree.size(), false);
        return isFree;
    }
    MapWalk(inspection, kFreePages, PageNumber::None, "map of free pages")
        .Walk(format::DataPage(page->Bytes()).Row(0), [&](std::uint32_t number, bool in) {
            if (number < isFree.size()) isFree[number] = in;
        });
    (void)ReadMap(inspection, kSecondMap, PageNumber::None, PageNumber::None, "second map");
    return isFree;
}

}  // namespace jet::check
