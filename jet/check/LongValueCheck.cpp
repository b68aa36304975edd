// SPDX-License-Identifier: Apache-2.0
#include "jet/check/LongValueCheck.h"

#include "base/NumberedError.h"
#include "jet/check/DataPageCheck.h"
#include "jet/format/DataPage.h"
#include "jet/format/RowPointer.h"

#include <map>

namespace jet::check {

namespace {

using format::DataPage;
using format::SlotKind;

// A row of a long-value page and the page that keeps it alive.
struct Piece {
    pages::Page page;
    format::Span bytes;
};

// What the first page of a chain says; nothing but 0 where the version has no stamps.
std::uint32_t StampOf(const pages::Page& page)
{
    const std::size_t at = format::DataPageLayoutOf(page.Bytes()).stamp;
    return at == format::kAbsent ? 0 : format::ReadU32(page.Bytes(), at);
}

std::optional<Piece> PieceAt(const pages::Pager& pager, RowId where)
{
    if (where.page == PageNumber::None || Raw(where.page) >= pager.PageCount()) return std::nullopt;
    Piece piece{pager.Read(where.page), {}};
    if (!HasSoundSlots(piece.page.Bytes())) return std::nullopt;
    const DataPage view(piece.page.Bytes());
    if (view.Owner() != format::kLongValueOwner || where.slot >= view.SlotCount())
        return std::nullopt;
    if (view.Kind(where.slot) != SlotKind::Row) return std::nullopt;
    piece.bytes = view.Row(where.slot);
    return piece;
}

class ColumnInspector {
public:
    ColumnInspector(Inspection& inspection, const format::TableDefinition& table,
                    std::size_t column)
        : inspection_(inspection), table_(table), name_(table.columns[column].name)
    {
    }

    void TakePage(PageNumber number)
    {
        if (!inspection_.Claim(number, PageUse::LongValues, table_.page)) return;
        const pages::Page page = inspection_.Pager().Read(number);
        if (!CheckDataPage(inspection_, number, page.Bytes(), format::kLongValueOwner)) return;
        used_[number].resize(DataPage(page.Bytes()).SlotCount());
    }

    void Follow(const LongValueReference& reference)
    {
        ++inspection_.Report().longValues;
        const format::LongValueHeader& header = reference.header;
        const auto first = Take(reference, header.first);
        if (!first) return;
        if (header.form == format::LongValueForm::Single) {
            return CheckLength(reference, first->bytes.size());
        }
        if (StampOf(first->page) != header.stamp) {
            Found(DefectKind::LongValueStamp, reference,
                  "has stamp " + std::to_string(header.stamp) + ", its page another");
        }
        FollowChain(reference, *first);
    }

    void FindUnused()
    {
        for (const auto& [number, slots] : used_) {
            const pages::Page page = inspection_.Pager().Read(number);
            const DataPage view(page.Bytes());
            for (std::uint16_t slot = 0; slot < slots.size(); ++slot) {
                if (slots[slot] || view.Kind(slot) == SlotKind::Deleted) continue;
                inspection_.Found(DefectKind::LongValueUnused, number, 0,
                                  "no row of " + PageText(table_.page) + " refers to " +
                                      RowText({number, slot}) + " of column " + name_);
            }
        }
    }

private:
    void Found(DefectKind kind, const LongValueReference& reference, const std::string& what)
    {
        inspection_.Found(kind, reference.row.page, 0,
                          "column " + name_ + " of row " + RowText(reference.row) + " " + what);
    }

    // The row at `where`, now used. Each can be used once, so every chain ends.
    std::optional<Piece> Take(const LongValueReference& reference, RowId where)
    {
        const auto slots = used_.find(where.page);
        auto piece = slots == used_.end() ? std::nullopt : PieceAt(inspection_.Pager(), where);
        if (!piece) {
            Found(DefectKind::LongValueReference, reference,
                  "refers to " + RowText(where) + ", where no long value of it lies");
            return std::nullopt;
        }
        if (slots->second[where.slot]) {
            Found(DefectKind::LongValueShared, reference,
                  "refers to " + RowText(where) + ", which is in use");
            return std::nullopt;
        }
        slots->second[where.slot] = true;
        return piece;
    }

    void FollowChain(const LongValueReference& reference, Piece piece)
    {
        std::uint64_t length = 0;
        while (piece.bytes.size() >= format::kRowPointerSize) {
            length += piece.bytes.size() - format::kRowPointerSize;
            const RowId next = format::ReadRowPointer(piece.bytes, 0);
            if (next == RowId{}) return CheckLength(reference, length);
            auto following = Take(reference, next);
            if (!following) return;
            piece = std::move(*following);
        }
        Found(DefectKind::LongValueLength, reference, "has a piece without pointer");
    }

    void CheckLength(const LongValueReference& reference, std::uint64_t length)
    {
        if (length == reference.header.length) return;
        Found(DefectKind::LongValueLength, reference,
              "says " + std::to_string(reference.header.length) + " bytes, has " +
                  std::to_string(length));
    }

    Inspection& inspection_;
    const format::TableDefinition& table_;
    const std::string& name_;
    std::map<PageNumber, std::vector<bool>> used_;
};

}  // namespace

void CheckLongValues(Inspection& inspection, const format::TableDefinition& table,
                     std::size_t column, const std::vector<PageNumber>& owned,
                     std::span<const LongValueReference> references)
{
    ColumnInspector inspector(inspection, table, column);
    for (const PageNumber page : owned)
        inspector.TakePage(page);
    for (const LongValueReference& reference : references)
        if (reference.column == column) inspector.Follow(reference);
    inspector.FindUnused();
}

std::optional<std::vector<std::byte>> LongValueBytes(const pages::Pager& pager,
                                                     const format::LongValueHeader& header)
{
    std::vector<std::byte> bytes;
    auto piece = PieceAt(pager, header.first);
    if (!piece) return std::nullopt;
    if (header.form == format::LongValueForm::Single) {
        bytes.assign(piece->bytes.begin(), piece->bytes.end());
        return bytes;
    }
    // A chain has a piece on every page at most.
    for (std::uint32_t steps = 0; steps < pager.PageCount(); ++steps) {
        if (piece->bytes.size() < format::kRowPointerSize) return std::nullopt;
        const format::Span data = piece->bytes.subspan(format::kRowPointerSize);
        bytes.insert(bytes.end(), data.begin(), data.end());
        const RowId next = format::ReadRowPointer(piece->bytes, 0);
        if (next == RowId{}) return bytes;
        piece = PieceAt(pager, next);
        if (!piece) return std::nullopt;
    }
    return std::nullopt;
}

}  // namespace jet::check
