// SPDX-License-Identifier: Apache-2.0
#include "jet/check/TableCheck.h"

#include "base/NumberedError.h"
#include "jet/check/DataPageCheck.h"
#include "jet/check/DefinitionCheck.h"
#include "jet/check/IndexCheck.h"
#include "jet/check/LongValueCheck.h"
#include "jet/check/MapCheck.h"
#include "jet/check/RowCheck.h"
#include "jet/format/DataPage.h"
#include "jet/format/RowPointer.h"
#include "jet/pages/PageWalk.h"

#include <algorithm>
#include <map>

namespace jet::check {

namespace {

using format::DataPage;
using format::SlotKind;

class TableInspector {
public:
    TableInspector(Inspection& inspection, TableFacts& facts)
        : inspection_(inspection), facts_(facts), table_(facts.definition),
          rowCheck_(inspection, table_)
    {
        for (const format::IndexDefinition& index : table_.indexes)
            expected_.emplace_back(table_, index);
    }

    void CheckRows()
    {
        pages::PageWalk walk(inspection_.Pager());
        walk.Begin(ClaimedPages());
        while (walk.Next())
            CheckPage(walk.Number(), walk.Bytes());
        CheckMoves();
        ExpectMoved();
        CheckCounter();
        inspection_.Report().rows += facts_.rows.size();
        if (facts_.rows.size() != table_.rowCount) {
            inspection_.Found(DefectKind::RowCount, table_.page, 0,
                              "says " + std::to_string(table_.rowCount) + " rows, has " +
                                  std::to_string(facts_.rows.size()));
        }
    }

    void CheckColumns()
    {
        for (std::size_t column = 0; column < table_.columns.size(); ++column) {
            const format::ColumnDefinition& definition = table_.columns[column];
            if (!definition.ownedPages) continue;
            const auto owned = OwnedPages(*definition.ownedPages, definition.freePages,
                                          "column " + definition.name);
            CheckLongValues(inspection_, table_, column, owned, references_);
        }
    }

    void CheckIndexes()
    {
        for (std::size_t index = 0; index < expected_.size(); ++index)
            CheckIndex(inspection_, facts_, index, expected_[index]);
    }

private:
    // The pages of rows that serve nothing else.
    std::vector<PageNumber> ClaimedPages()
    {
        std::vector<PageNumber> pages = OwnedPages(table_.ownedPages, table_.freePages, "table");
        pages.erase(std::remove_if(pages.begin(), pages.end(),
                                   [this](PageNumber page) {
                                       return !inspection_.Claim(page, PageUse::Rows, table_.page);
                                   }),
                    pages.end());
        return pages;
    }

    // The pages of an owned map; those of the map of pages with room must be among them.
    std::vector<PageNumber> OwnedPages(RowId owned, std::optional<RowId> room,
                                       const std::string& of)
    {
        const std::string whose = of + " of " + PageText(table_.page);
        auto pages =
            ReadMap(inspection_, owned, table_.page, table_.page, "map of pages of " + whose);
        if (!room) return pages;
        const auto listed =
            ReadMap(inspection_, *room, table_.page, table_.page, "map of room of " + whose);
        for (const PageNumber page : listed) {
            if (std::binary_search(pages.begin(), pages.end(), page)) continue;
            inspection_.Found(DefectKind::FreeMapNotOwned, page, 0,
                              "is listed as having room for the " + whose + ", which lacks it");
        }
        return pages;
    }

    void CheckPage(PageNumber number, format::Span page)
    {
        if (!CheckDataPage(inspection_, number, page, Raw(table_.page))) return;
        const DataPage view(page);
        for (std::uint16_t slot = 0; slot < view.SlotCount(); ++slot)
            CheckSlot(view, page, {number, slot});
    }

    void CheckSlot(const DataPage& view, format::Span page, RowId at)
    {
        const format::Span bytes = view.Row(at.slot);
        const auto offset = static_cast<std::size_t>(bytes.data() - page.data());
        switch (view.Kind(at.slot)) {
        case SlotKind::Deleted:
            return;
        case SlotKind::Pointer:
            facts_.rows.push_back(at);
            return TakePointer(bytes, at, offset);
        case SlotKind::Moved:
            moved_.emplace(at, 0);
            static_cast<void>(CheckRowAt(bytes, at, offset));
            return;
        case SlotKind::Row:
            facts_.rows.push_back(at);
            return Expect(at, CheckRowAt(bytes, at, offset));
        }
    }

    // The row, when all of it can be read.
    std::optional<format::RowView> CheckRowAt(format::Span bytes, RowId at, std::size_t offset)
    {
        const auto row = ViewRow(inspection_, bytes, table_, at, offset);
        if (!row || !rowCheck_.Check(*row, at, offset, references_)) return std::nullopt;
        NoteCounter(*row);
        return row;
    }

    // Notes what the indexes should say of a row.
    void Expect(RowId at, const std::optional<format::RowView>& row)
    {
        for (ExpectedEntries& index : expected_) {
            if (row)
                index.Take(at, *row);
            else
                index.TakeUnreadable();
        }
    }

    void NoteCounter(const format::RowView& row)
    {
        if (!autoNumber_ || row.IsNull(*autoNumber_)) return;
        counter_ = std::max(counter_, format::ReadI32(row.Field(*autoNumber_), 0));
    }

    // The next number given out must be new.
    void CheckCounter()
    {
        if (counter_ <= 0 || static_cast<std::uint32_t>(counter_) <= table_.lastAutoNumber) return;
        inspection_.Found(DefectKind::AutoNumber, table_.page, 0,
                          "last number given out is " + std::to_string(table_.lastAutoNumber) +
                              ", a row has " + std::to_string(counter_));
    }

    void TakePointer(format::Span bytes, RowId at, std::size_t offset)
    {
        if (bytes.size() < format::kRowPointerSize) {
            Expect(at, std::nullopt);
            return inspection_.Found(DefectKind::RowPointer, at.page, offset,
                                     "row " + RowText(at) + " is too short for a pointer");
        }
        pointers_.emplace_back(at, format::ReadRowPointer(bytes, 0));
    }

    // Every pointer leads to a moved row, and every moved row has one pointer.
    void CheckMoves()
    {
        for (const auto& [from, to] : pointers_) {
            const auto target = moved_.find(to);
            if (target != moved_.end() && ++target->second == 1) continue;
            inspection_.Found(
                DefectKind::RowPointer, from.page, 0,
                "row " + RowText(from) + " points to " + RowText(to) +
                    (target == moved_.end() ? ", which is no moved row" : " like another row"));
        }
        for (const auto& [row, pointers] : moved_) {
            if (pointers != 0) continue;
            inspection_.Found(DefectKind::RowMoved, row.page, 0,
                              "nothing points to the moved row " + RowText(row));
        }
    }

    // A moved row is indexed where its pointer lies.
    void ExpectMoved()
    {
        for (const auto& [from, to] : pointers_) {
            const auto row = facts_.Fetch(inspection_.Pager(), from);
            Expect(from, row ? std::optional(row->view) : std::nullopt);
        }
        for (ExpectedEntries& index : expected_)
            index.Close();
    }

    Inspection& inspection_;
    TableFacts& facts_;
    const format::TableDefinition& table_;
    RowCheck rowCheck_;
    std::vector<ExpectedEntries> expected_;  // one of each index
    std::optional<std::size_t> autoNumber_ = table_.FindAutoNumber();
    std::vector<std::pair<RowId, RowId>> pointers_;
    std::map<RowId, int> moved_;
    std::int32_t counter_ = 0;  // the largest number in the counter column
    std::vector<LongValueReference> references_;
};

std::optional<format::Span> SlotBytes(const pages::Page& page, std::uint16_t slot, SlotKind kind)
{
    if (!HasSoundSlots(page.Bytes())) return std::nullopt;
    const DataPage view(page.Bytes());
    if (slot >= view.SlotCount() || view.Kind(slot) != kind) return std::nullopt;
    return view.Row(slot);
}

}  // namespace

std::optional<FetchedRow> TableFacts::Fetch(const pages::Pager& pager, RowId row) const
{
    try {
        pages::Page page = pager.Read(row.page);
        if (const auto bytes = SlotBytes(page, row.slot, SlotKind::Row))
            return FetchedRow{page, format::RowView(*bytes, definition)};
        const auto pointer = SlotBytes(page, row.slot, SlotKind::Pointer);
        if (!pointer) return std::nullopt;
        const RowId target = format::ReadRowPointer(*pointer, 0);
        page = pager.Read(target.page);
        const auto moved = SlotBytes(page, target.slot, SlotKind::Moved);
        if (!moved) return std::nullopt;
        return FetchedRow{page, format::RowView(*moved, definition)};
    } catch (const base::NumberedError& error) {
        if (error.Number() == 3043) throw;
        return std::nullopt;
    }
}

std::unique_ptr<TableFacts> CheckTable(Inspection& inspection, PageNumber first)
{
    auto definition = CheckDefinition(inspection, first);
    if (!definition) return nullptr;
    ++inspection.Report().tables;
    auto facts = std::make_unique<TableFacts>();
    facts->definition = std::move(*definition);
    TableInspector inspector(inspection, *facts);
    inspector.CheckRows();
    inspector.CheckColumns();
    inspector.CheckIndexes();
    return facts;
}

}  // namespace jet::check
