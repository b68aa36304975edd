// SPDX-License-Identifier: Apache-2.0
#include "jet/table/RowPages.h"

#include "base/NumberedError.h"
#include "jet/format/RowPointer.h"
#include "jet/table/StoredRows.h"

#include <algorithm>

namespace jet::table {

namespace {

using format::DataPage;
using format::SlotKind;

// How many pages with room are tried before a row gets a new one.
constexpr std::size_t kTries = 4;

}  // namespace

RowPages::RowPages(pages::WriteSet& changes, const PageOwner& owner)
    : changes_(changes), owner_(owner), owned_(changes.Of(), owner.ownedMap),
      free_(changes.Of(), owner.freeMap)
{
}

RowId RowPages::Append(format::Span row)
{
    const PageNumber last = owned_.Last();
    if (last != PageNumber::None && Fits(last, row.size())) return PutOn(last, row, SlotKind::Row);
    const std::optional<PageNumber> page = NewPageAbove(last);
    // A full file may have room below: the order of entry is worth less than the row.
    if (!page) return Put(row, SlotKind::Row);
    const RowId place = PutOn(*page, row, SlotKind::Row);
    // It is the last page no more, and need not be kept for its slots' sake.
    if (last != PageNumber::None) SettleListing(last);
    return place;
}

RowId RowPages::Put(format::Span row, SlotKind kind)
{
    const std::vector<PageNumber> listed = free_.Pages();
    const std::size_t tries = std::min(listed.size(), kTries);
    for (std::size_t i = 0; i < tries; ++i) {
        const PageNumber page = listed[listed.size() - 1 - i];
        if (Fits(page, row.size())) return PutOn(page, row, kind);
    }
    return PutOn(NewPage(PageNumber::None), row, kind);
}

RowId RowPages::PutAlone(format::Span row)
{
    const PageNumber page = NewPage(PageNumber::None);
    free_.Remove(changes_, page);
    return {page, format::AppendRow(changes_.Change(page), row, SlotKind::Row)};
}

void RowPages::Remove(RowId row)
{
    format::DeleteRow(Changed(row.page), row.slot);
    SettleListing(row.page);
}

bool RowPages::Replace(RowId row, format::Span bytes, SlotKind kind)
{
    const pages::Page page = changes_.Of().Read(row.page);
    const DataPage view = OwnedPage(page.Bytes(), owner_.mark);
    if (bytes.size() > view.Row(row.slot).size() + view.Gap()) return false;
    const format::MutableSpan changed = Changed(row.page);
    format::ResizeRow(changed, row.slot, bytes.size());
    std::copy(bytes.begin(), bytes.end(), format::RowBytes(changed, row.slot).begin());
    format::SetSlotKind(changed, row.slot, kind);
    SettleListing(row.page);
    return true;
}

void RowPages::Redirect(RowId row, RowId target)
{
    const format::MutableSpan page = Changed(row.page);
    const DataPage view(page);
    const std::size_t length = view.Row(row.slot).size();
    if (format::kRowPointerSize > length + view.Gap()) throw base::NumberedError(3047);
    // Where the version has it so, the rest of the former row stays behind the pointer.
    if (length < format::kRowPointerSize || !changes_.Of().Version().pointersKeepLength)
        format::ResizeRow(page, row.slot, format::kRowPointerSize);
    format::WriteRowPointer(format::RowBytes(page, row.slot), 0, target);
    format::SetSlotKind(page, row.slot, SlotKind::Pointer);
}

// A page whose rows overlap is left as it is.
format::MutableSpan RowPages::Changed(PageNumber page)
{
    const format::MutableSpan bytes = changes_.Change(page);
    DataPage(bytes).RequireSound();
    return bytes;
}

bool RowPages::Fits(PageNumber page, std::size_t length) const
{
    const pages::Page bytes = changes_.Of().Read(page);
    return OwnedPage(bytes.Bytes(), owner_.mark).Fits(length);
}

RowId RowPages::PutOn(PageNumber page, format::Span row, SlotKind kind)
{
    const RowId place{page, format::AppendRow(Changed(page), row, kind)};
    SettleListing(page);
    return place;
}

// Nothing when the file is as large as its format lets it be, and has no free page there.
std::optional<PageNumber> RowPages::NewPageAbove(PageNumber last)
{
    constexpr int kFileIsFull = 3036;
    try {
        return NewPage(last);
    } catch (const base::NumberedError& error) {
        if (error.Number() != kFileIsFull || last == PageNumber::None) throw;
        return std::nullopt;
    }
}

PageNumber RowPages::NewPage(PageNumber above)
{
    const PageNumber page = changes_.Allocate(above);
    format::FormatDataPage(changes_.Change(page), owner_.mark);
    owned_.Add(changes_, page);
    free_.Add(changes_, page);
    return page;
}

void RowPages::GiveBack(PageNumber page)
{
    format::WriteU8(changes_.Change(page), 0, format::kFreedDataPageType);
    free_.Remove(changes_, page);
    owned_.Remove(changes_, page);
    changes_.Free(page);
}

void RowPages::SettleListing(PageNumber page)
{
    const pages::Page bytes = changes_.Of().Read(page);
    const DataPage view = OwnedPage(bytes.Bytes(), owner_.mark);
    const bool last = owned_.Last() == page;
    const bool stays = last && owner_.emptyLastPage == EmptyLastPage::Stays;
    if (view.Empty() && !stays) return GiveBack(page);
    const bool listed = last || view.Gap() >= bytes.Bytes().size() / 4;
    if (listed == free_.Contains(page)) return;
    if (listed)
        free_.Add(changes_, page);
    else
        free_.Remove(changes_, page);
}

}  // namespace jet::table
