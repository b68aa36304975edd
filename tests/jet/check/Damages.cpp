// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/check/Damages.h"

#include "jet/format/DataPage.h"
#include "jet/format/HeaderPage.h"
#include "jet/format/RowPointer.h"
#include "jet/format/RowView.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/TextCompression.h"
#include "jet/table/NativeTable.h"
#include "tests/jet/check/RelationshipDamages.h"

#include <algorithm>
#include <array>

namespace tests {

namespace {

namespace format = jet::format;
using jet::check::DefectKind;

using format::IndexPageContent;
using format::IndexPageView;

constexpr PageNumber kNowhere{999999}, kObjects{2}, kRights{3}, kQueries{4};

PageNumber DataPageOf(const DamagedFile& file)
{
    return file.JobPages().front();
}

// Where the parts lie in this format.
const format::IndexPageLayout& IndexLayout(const DamagedFile& file)
{
    return *file.Version().indexPage;
}

const format::DataPageLayout& DataLayout(const DamagedFile& file)
{
    return *file.Version().dataPage;
}

const format::TableDefinitionLayout& TableLayout(const DamagedFile& file)
{
    return file.Version().definition->table;
}

// Takes the entry at `at` off a leaf.
void EraseEntry(DamagedFile& file, PageNumber leaf, std::size_t at)
{
    IndexPageContent content =
        IndexPageContent::Of(IndexPageView(file.PageAt(leaf), IndexLayout(file)));
    content.entries.Erase(at);
    format::WriteIndexPage(file.PageAt(leaf), content, IndexLayout(file));
}

// The second entry of a leaf gets the key of the first.
void GiveKeyOfFirst(DamagedFile& file, PageNumber leaf)
{
    IndexPageContent content =
        IndexPageContent::Of(IndexPageView(file.PageAt(leaf), IndexLayout(file)));
    const auto entry =
        format::MakeEntry(format::KeyPart(content.entries[0]), format::RowPart(content.entries[1]));
    content.entries.Erase(1);
    content.entries.Insert(1, entry);
    format::WriteIndexPage(file.PageAt(leaf), content, IndexLayout(file));
}

void SetChild(DamagedFile& file, PageNumber node, PageNumber child)
{
    IndexPageContent content =
        IndexPageContent::Of(IndexPageView(file.PageAt(node), IndexLayout(file)));
    content.SetChild(0, child);
    format::WriteIndexPage(file.PageAt(node), content, IndexLayout(file));
}

// The place in the page where the slot of a row lies.
std::size_t SlotAt(const DamagedFile& file, const RowPlace& row)
{
    return DataLayout(file).slots + 2 * std::size_t{row.id.slot};
}

// Where column descriptors, names and trees lie in the definition of Job.
std::size_t ColumnAt(const DamagedFile& file, std::size_t column)
{
    const format::DefinitionLayout& layout = *file.Version().definition;
    return layout.table.statistics + file.Job().indexes.size() * layout.table.statisticsSize +
           column * layout.column.size;
}

std::size_t NameAt(const DamagedFile& file, std::size_t column)
{
    std::size_t at = ColumnAt(file, file.Job().columns.size());
    const std::size_t letter = file.Version().bytesPerCharacter;
    const std::size_t length = file.Version().definition->nameLength;
    for (std::size_t before = 0; before < column; ++before)
        at += length + letter * file.Job().columns[before].name.size();
    return at + length;
}

std::size_t TreesAt(const DamagedFile& file)
{
    return NameAt(file, file.Job().columns.size()) - file.Version().definition->nameLength;
}

void MarkDeleted(DamagedFile& file, const RowPlace& row)
{
    file.Put16(row.id.page, SlotAt(file, row),
               static_cast<std::uint16_t>(file.Get16(row.id.page, SlotAt(file, row)) | 0xC000));
}

// Clears a column's bit in the null mask. Requires: fewer than nine columns.
void MakeNull(DamagedFile& file, const RowPlace& row, unsigned column)
{
    const std::size_t at = row.offset + row.length - 1;
    const std::uint8_t mask = format::ReadU8(file.PageAt(row.id.page), at);
    file.Put8(row.id.page, at, static_cast<std::uint8_t>(mask & ~(1U << column)));
}

void CopyRowPart(DamagedFile& file, const RowPlace& from, std::size_t fromAt, const RowPlace& to,
                 std::size_t toAt, std::size_t length)
{
    const format::Span source = format::Slice(file.PageAt(from.id.page), fromAt, length);
    const std::vector<std::byte> bytes(source.begin(), source.end());
    std::copy(bytes.begin(), bytes.end(),
              file.PageAt(to.id.page).begin() + static_cast<std::ptrdiff_t>(toAt));
}

// Where a field of a catalog row lies in its page.
std::size_t FieldAt(DamagedFile& file, const RowPlace& row, const char* column)
{
    const format::Span bytes = format::Slice(file.PageAt(row.id.page), row.offset, row.length);
    const format::RowView view(bytes, file.Objects());
    const format::Span field = view.Field(file.Objects().FindColumn(column).value());
    return row.offset + static_cast<std::size_t>(field.data() - bytes.data());
}

void SetObjectId(DamagedFile& file, const char* object, std::uint32_t id)
{
    const RowPlace row = file.ObjectRow(object);
    file.Put32(row.id.page, FieldAt(file, row, "Id"), id);
}

// The header page is masked: a bit that flips there flips in what it says.
void FlipInHeader(DamagedFile& file, std::size_t at, std::uint16_t bits)
{
    file.Put16(PageNumber{0}, at, file.Get16(PageNumber{0}, at) ^ bits);
}

// Where a name stands in the definition of Job.
std::size_t FindName(DamagedFile& file, std::string_view name)
{
    const format::MutableSpan page = file.PageAt(file.Job().page);
    const auto bytes = format::EncodeTextIn(file.Version().codePage, name);
    const auto at = std::search(page.begin(), page.end(), bytes.begin(), bytes.end());
    return static_cast<std::size_t>(at - page.begin());
}

void Rename(DamagedFile& file, std::string_view name, std::string_view other)
{
    const auto bytes = format::EncodeTextIn(file.Version().codePage, other);
    const auto at = static_cast<std::ptrdiff_t>(FindName(file, name));
    std::copy(bytes.begin(), bytes.end(), file.PageAt(file.Job().page).begin() + at);
}

// Makes a field of the last row of a system table null.
void EmptyField(DamagedFile& file, PageNumber table, const char* field)
{
    const auto pager =
        jet::pages::Pager::Open(file.Files(), DamagedFile::kPath, jet::io::OpenMode::ReadWrite);
    jet::table::NativeTable rows(pager, table);
    const auto cursor = rows.Scan();
    RowId last;
    while (cursor->Next())
        last = cursor->Id();
    const std::size_t column = rows.Definition().FindColumn(field).value();
    rows.Update(last, std::vector<jet::table::Assignment>{{column, base::Null{}}});
}

const Damage kDamages[] = {
    {"FileOfNoWholePages", DefectKind::FileLength,
     [](DamagedFile& f) { f.Content().resize(f.Content().size() + 100); }},
    {"SystemTableElsewhere", DefectKind::HeaderField,
     [](DamagedFile& f) { f.Put8(PageNumber{0}, 0x24, 0); }},
    {"CodePageOfTheFileUnknown", DefectKind::HeaderField,
     [](DamagedFile& f) { FlipInHeader(f, f.Version().header->codePage, 0x0400); }},
    {"SortOrderOfTheFileWithoutLanguage", DefectKind::HeaderField,
     [](DamagedFile& f) { FlipInHeader(f, f.Version().header->language, 0x0409); }},
    {"UserStoppedWhileWriting", DefectKind::CommitPending,
     [](DamagedFile& f) { f.Put16(PageNumber{0}, f.Version().header->commitWords + 6, 0); }},

    {"DataPageOfAnotherType", DefectKind::DataPageType,
     [](DamagedFile& f) { f.Put8(DataPageOf(f), 0, 9); }},
    {"DataPageOfAnotherOwner", DefectKind::DataPageOwner,
     [](DamagedFile& f) { f.Put32(DataPageOf(f), DataLayout(f).owner, 2); }},
    {"WrongCountOfFreeBytes", DefectKind::DataPageFreeBytes,
     [](DamagedFile& f) {
         f.Put16(DataPageOf(f), 2, static_cast<std::uint16_t>(f.Get16(DataPageOf(f), 2) + 1));
     }},
    {"MoreSlotsThanAPageMayHave", DefectKind::DataPageSlots,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), DataLayout(f).slotCount, 300); }},
    {"RowStartOutsideThePage", DefectKind::RowOutsidePage,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), DataLayout(f).slots, 0x1FFF); }},
    {"RowStartInTheSlots", DefectKind::RowOutsidePage,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), DataLayout(f).slots + 2, 0x0002); }},
    {"RowsOverlap", DefectKind::RowOutsidePage,
     [](DamagedFile& f) {
         f.Put16(DataPageOf(f), DataLayout(f).slots + 2,
                 static_cast<std::uint16_t>(f.Get16(DataPageOf(f), DataLayout(f).slots) + 1));
     }},

    {"OwnedMapLacksAPage", DefectKind::IndexEntrySuperfluous,
     [](DamagedFile& f) { f.SetInMap(f.Job().ownedPages, DataPageOf(f), false); }},
    {"OwnedMapNamesAPageOfAnIndex", DefectKind::PageOwnedTwice,
     [](DamagedFile& f) { f.SetInMap(f.Job().ownedPages, f.Tree("ByName").root, true); }},
    {"OwnedMapNamesAPageBehindTheFile", DefectKind::MapPageOutside,
     [](DamagedFile& f) { f.SetInMap(f.Job().ownedPages, PageNumber{500}, true); }},
    {"MapOfRoomNamesAForeignPage", DefectKind::FreeMapNotOwned,
     [](DamagedFile& f) {
         f.SetInMap(f.Job().freePages, PageNumber{Raw(f.JobPages().back()) + 1}, true);
     }},
    {"PageInUseIsListedAsFree", DefectKind::PageFreeButOwned,
     [](DamagedFile& f) {
         f.SetInMap({PageNumber{1}, 0}, DataPageOf(f), true);
     }},
    {"LostPage", DefectKind::PageLost,
     [](DamagedFile& f) {
         const PageNumber page = f.PageCount();
         f.Content().resize(f.Content().size() + f.Version().pageSize);
         f.SetInMap({PageNumber{1}, 0}, page, false);
     }},
    {"MapOfUnknownForm", DefectKind::MapForm,
     [](DamagedFile& f) { f.Put8(f.Job().ownedPages.page, f.MapAt(f.Job().ownedPages), 7); }},
    {"MapOfFreePagesUnreadable", DefectKind::MapOfFreePages,
     [](DamagedFile& f) { f.Put8(PageNumber{1}, 0, 5); }},
    {"MapThatStartsBehindTheFile", DefectKind::MapForm,
     [](DamagedFile& f) {
         f.Put32(f.Job().ownedPages.page, f.MapAt(f.Job().ownedPages) + 1, Raw(kNowhere));
     }},
    {"MapNamesABitmapPageThatIsNone", DefectKind::MapBitmapPage,
     [](DamagedFile& f) {
         const std::size_t at = f.MapAt(f.Job().ownedPages);
         f.Put8(f.Job().ownedPages.page, at, 1);
         f.Put32(f.Job().ownedPages.page, at + 1, Raw(DataPageOf(f)));
     }},
    {"DefinitionNamesAMapThatIsNotThere", DefectKind::MapRow,
     [](DamagedFile& f) { f.Put8(f.Job().page, TableLayout(f).ownedPages, 250); }},
    {"TwoMapsInOnePlace", DefectKind::MapShared,
     [](DamagedFile& f) {
         f.Put8(f.Job().page, TableLayout(f).freePages,
                static_cast<std::uint8_t>(f.Job().ownedPages.slot));
     }},

    {"DefinitionGoesOnOnADataPage", DefectKind::DefinitionChain,
     [](DamagedFile& f) { f.Put32(f.Job().page, 4, Raw(DataPageOf(f))); }},
    {"DefinitionGoesOnInACircle", DefectKind::PageOwnedTwice,
     [](DamagedFile& f) { f.Put32(f.Job().page, 4, Raw(f.Job().page)); }},
    {"DefinitionGoesOnBehindTheFile", DefectKind::PageOutside,
     [](DamagedFile& f) { f.Put32(f.Job().page, 4, Raw(kNowhere)); }},
    {"DefinitionLongerThanItsPages", DefectKind::DefinitionLength,
     [](DamagedFile& f) { f.Put32(f.Job().page, 8, 60000); }},
    {"ColumnNumberBeyondTheCounter", DefectKind::DefinitionContent,
     [](DamagedFile& f) { f.Put16(f.Job().page, TableLayout(f).columnCounter, 1); }},
    {"DefinitionWithoutEndMark", DefectKind::DefinitionContent,
     [](DamagedFile& f) {
         const std::uint16_t length = f.Get16(f.Job().page, format::kDefinitionLength);
         f.Put16(f.Job().page, length - 2U, 0x0101);
     }},
    {"ColumnOfUnknownType", DefectKind::DefinitionContent,
     [](DamagedFile& f) { f.Put8(f.Job().page, ColumnAt(f, 2), 0x63); }},
    {"TwoColumnsOfOneName", DefectKind::DefinitionContent,
     [](DamagedFile& f) {
         const auto name = static_cast<std::ptrdiff_t>(NameAt(f, 1));
         const auto note = static_cast<std::ptrdiff_t>(NameAt(f, 2));
         const format::MutableSpan page = f.PageAt(f.Job().page);
         std::copy_n(page.begin() + note, 4 * f.Version().bytesPerCharacter, page.begin() + name);
     }},
    {"TwoColumnsOfOneNameButForCase", DefectKind::DefinitionContent,
     [](DamagedFile& f) { Rename(f, "Name", "nOTE"); }},
    {"IndexesNotInTheOrderOfTheirNames", DefectKind::DefinitionIndexOrder,
     [](DamagedFile& f) { Rename(f, "ByName", "ZyName"); }},
    {"TwoIndexesOfOneNameButForBlanks", DefectKind::DefinitionContent,
     [](DamagedFile& f) { Rename(f, "PrimaryKey", "bYnAME    "); }},
    {"FlagsOfAnIndexOfAnotherVersion", DefectKind::DefinitionContent,
     [](DamagedFile& f) {
         const std::size_t at = TreesAt(f) + f.Version().definition->index.flags;
         f.Put8(f.Job().page, at,
                static_cast<std::uint8_t>(format::ReadU8(f.PageAt(f.Job().page), at) ^ 0x80));
     }},
    {"MoreIndexesThanDescribed", DefectKind::DefinitionContent,
     [](DamagedFile& f) { f.Put32(f.Job().page, TableLayout(f).indexes, 30); }},
    {"SystemTableIsNoDefinition", DefectKind::DefinitionPage,
     [](DamagedFile& f) { f.Put8(PageNumber{2}, 0, 8); }},

    {"RowOfTooManyColumns", DefectKind::RowShape,
     [](DamagedFile& f) { f.PutNumber(f.Rows()[0].id.page, f.Rows()[0].offset, 9); }},
    {"VariableValueStartsBehindTheRow", DefectKind::RowShape,
     [](DamagedFile& f) {
         const RowPlace& row = f.Rows()[0];
         const std::size_t number = f.Version().row->number;
         f.PutNumber(row.id.page, row.offset + row.length - 1 - 2 * number, 250);
     }},
    {"MemoOfUnknownForm", DefectKind::RowValue,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(1);
         f.Put8(row.id.page, f.NoteAt(row) + 3, 0xC0);
     }},
    {"PointerToARowThatDidNotMove", DefectKind::RowPointer,
     [](DamagedFile& f) {
         format::WriteRowPointer(f.PageAt(f.Moved().id.page), f.Moved().offset, f.Rows()[0].id);
     }},
    {"PointerBehindTheFile", DefectKind::RowPointer,
     [](DamagedFile& f) {
         format::WriteRowPointer(f.PageAt(f.Moved().id.page), f.Moved().offset, {kNowhere, 0});
     }},
    {"PointerToItself", DefectKind::RowPointer,
     [](DamagedFile& f) {
         format::WriteRowPointer(f.PageAt(f.Moved().id.page), f.Moved().offset, f.Moved().id);
     }},
    {"PointerTakenForARow", DefectKind::RowMoved,
     [](DamagedFile& f) {
         const RowPlace& row = f.Moved();
         const std::size_t at = SlotAt(f, row);
         f.Put16(row.id.page, at, f.Get16(row.id.page, at) & format::kSlotOffsetBits);
     }},
    {"RowTakenForAMovedOne", DefectKind::RowMoved,
     [](DamagedFile& f) {
         const RowPlace& row = f.Rows()[0];
         const std::size_t at = SlotAt(f, row);
         f.Put16(row.id.page, at, static_cast<std::uint16_t>(f.Get16(row.id.page, at) | 0x8000));
     }},
    {"VariableColumnsBeyondTheTable", DefectKind::RowShape,
     [](DamagedFile& f) {
         const RowPlace& row = f.Rows()[0];
         f.PutNumber(row.id.page, row.offset + row.length - 1 - f.Version().row->number, 90);
     }},
    {"MovedRowWithoutPointer", DefectKind::RowMoved,
     [](DamagedFile& f) { MarkDeleted(f, f.Moved()); }},
    {"CountOfRowsWrong", DefectKind::RowCount,
     [](DamagedFile& f) { f.Put32(f.Job().page, TableLayout(f).rowCount, 1234); }},
    {"CounterBehindItsColumn", DefectKind::AutoNumber,
     [](DamagedFile& f) { f.Put32(f.Job().page, TableLayout(f).autoNumber, 17); }},

    {"MemoRefersToNothing", DefectKind::LongValueReference,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(1);
         f.Put8(row.id.page, f.NoteAt(row) + 4, 199);
     }},
    {"ChainOfAMemoLeavesTheFile", DefectKind::LongValueReference,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(2);
         const RowId first = format::ReadRowPointer(f.PageAt(row.id.page), f.NoteAt(row) + 4);
         format::WriteRowPointer(f.PageAt(first.page), f.PlaceOf(first).offset, {kNowhere, 0});
     }},
    {"ChainOfAMemoEndsEarly", DefectKind::LongValueLength,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(2);
         const RowId first = format::ReadRowPointer(f.PageAt(row.id.page), f.NoteAt(row) + 4);
         format::WriteRowPointer(f.PageAt(first.page), f.PlaceOf(first).offset, {});
     }},
    {"MemoRefersToARow", DefectKind::LongValueReference,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(1);
         format::WriteRowPointer(f.PageAt(row.id.page), f.NoteAt(row) + 4, f.Rows()[0].id);
     }},
    {"MemoInTheRowOfAnotherLength", DefectKind::RowShape,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(0);
         f.Put8(row.id.page, f.NoteAt(row), 99);
     }},
    {"PageOfMemosTakenForRows", DefectKind::DataPageOwner,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(1);
         const RowId value = format::ReadRowPointer(f.PageAt(row.id.page), f.NoteAt(row) + 4);
         f.Put32(value.page, DataLayout(f).owner, Raw(f.Job().page));
     }},
    {"MemoOfAnotherLength", DefectKind::LongValueLength,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(1);
         f.Put8(row.id.page, f.NoteAt(row),
                static_cast<std::uint8_t>(f.Get16(row.id.page, f.NoteAt(row)) + 1));
     }},
    {"ChainOfAMemoIsALoop", DefectKind::LongValueShared,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(2);
         const RowId first = format::ReadRowPointer(f.PageAt(row.id.page), f.NoteAt(row) + 4);
         format::WriteRowPointer(f.PageAt(first.page), f.PlaceOf(first).offset, first);
     }},
    {"TwoRowsHaveOneMemo", DefectKind::LongValueShared,
     [](DamagedFile& f) {
         const RowPlace& one = f.RowWithNote(1, 2);
         const RowPlace& other = f.RowWithNote(1, 3);
         CopyRowPart(f, one, f.NoteAt(one), other, f.NoteAt(other), 12);
     }},
    {"StampOfAChainWrong", DefectKind::LongValueStamp,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(2);
         f.Put32(row.id.page, f.NoteAt(row) + 8, 0x12345678);
     }},
    {"MemoThatNoRowRefersTo", DefectKind::LongValueUnused,
     [](DamagedFile& f) { MakeNull(f, f.RowWithNote(1), 2); }},

    {"LeafTakenForANode", DefectKind::PageOutside,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("ByName"), 0, format::kIndexNode); }},
    {"PrefixLongerThanTheEntries", DefectKind::IndexPage,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("ByName"), IndexLayout(f).prefix, 0xFA); }},
    {"EntryEndsBehindTheFirstFour", DefectKind::IndexPage,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("ByName"), IndexLayout(f).bitmap, 0x02); }},
    {"LeafLinkedToItself", DefectKind::IndexLinks,
     [](DamagedFile& f) {
         f.Put32(f.FirstLeaf("ByName"), IndexLayout(f).next, Raw(f.FirstLeaf("ByName")));
     }},
    {"RootWithANeighbour", DefectKind::IndexLinks,
     [](DamagedFile& f) {
         f.Put32(f.Tree("ByName").root, IndexLayout(f).next, Raw(f.FirstLeaf("ByName")));
     }},
    {"LeafWithAChild", DefectKind::IndexLinks,
     [](DamagedFile& f) { f.Put32(f.FirstLeaf("ByName"), IndexLayout(f).tail, 7); }},
    {"EntryOfAnotherRow", DefectKind::IndexEntrySuperfluous,
     [](DamagedFile& f) {
         // The last byte of the first entry is the slot of its row.
         f.Put8(f.FirstLeaf("PrimaryKey"), IndexLayout(f).area + 8, 251);
     }},
    {"TwoTreesOfOneRoot", DefectKind::PageOwnedTwice,
     [](DamagedFile& f) {
         const auto& index = f.Version().definition->index;
         const std::size_t trees = TreesAt(f);
         f.Put32(f.Job().page, trees + index.root, Raw(f.Tree("ByName").root));
         f.Put32(f.Job().page, trees + index.size + index.root, Raw(f.Tree("ByName").root));
     }},
    {"RootOfAnIndexIsNone", DefectKind::IndexPage,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, 0, 1); }},
    {"IndexPageOfAnotherTable", DefectKind::IndexOwner,
     [](DamagedFile& f) { f.Put32(f.FirstLeaf("ByName"), IndexLayout(f).owner, 2); }},
    {"NodeThatDoesNotTellItsLevel", DefectKind::IndexLevelMissing,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, IndexLayout(f).level, 0); }},
    {"LeafOfAHigherLevel", DefectKind::IndexLevel,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("ByName"), IndexLayout(f).level, 3); }},
    {"IndexPageCountsItsFreeBytesWrong", DefectKind::IndexFreeBytes,
     [](DamagedFile& f) { f.Put16(f.FirstLeaf("ByName"), IndexLayout(f).freeBytes, 1); }},
    {"LeafWithoutEntries", DefectKind::IndexEmptyPage,
     [](DamagedFile& f) {
         const format::MutableSpan page = f.PageAt(f.FirstLeaf("ByName"));
         const auto& at = IndexLayout(f);
         std::fill_n(page.begin() + static_cast<std::ptrdiff_t>(at.bitmap), at.area - at.bitmap,
                     std::byte{0});
     }},
    {"EntriesOutOfOrder", DefectKind::IndexOrder,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("PrimaryKey"), IndexLayout(f).area + 4, 0xEE); }},
    {"SeparatorTooLow", DefectKind::IndexSeparator,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, IndexLayout(f).area + 1, 0x01); }},
    {"SeparatorTooHigh", DefectKind::IndexSeparator,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, IndexLayout(f).area + 1, 0xFE); }},
    {"LeafNotLinkedToTheNext", DefectKind::IndexLinks,
     [](DamagedFile& f) { f.Put32(f.FirstLeaf("ByName"), IndexLayout(f).next, 0); }},
    {"ChildBehindTheFile", DefectKind::PageOutside,
     [](DamagedFile& f) { SetChild(f, f.Tree("ByName").root, kNowhere); }},
    {"TreeThatContainsItself", DefectKind::PageOwnedTwice,
     [](DamagedFile& f) { SetChild(f, f.Tree("ByName").root, f.Tree("ByName").root); }},
    {"PageOfATreeNotInItsMap", DefectKind::IndexMap,
     [](DamagedFile& f) { f.SetInMap(f.Tree("ByName").usageMap, f.FirstLeaf("ByName"), false); }},
    {"RowWithoutEntry", DefectKind::IndexEntryMissing,
     [](DamagedFile& f) { EraseEntry(f, f.FirstLeaf("ByName"), 3); }},
    {"EntryWithoutRow", DefectKind::IndexEntrySuperfluous,
     [](DamagedFile& f) { MarkDeleted(f, f.Rows()[0]); }},
    {"EntryWithAnotherKeyThanItsRow", DefectKind::IndexKey,
     [](DamagedFile& f) {
         f.Put32(f.Rows()[0].id.page, f.Rows()[0].offset + f.Version().row->number, 777);
     }},
    {"TwoRowsOfOneKey", DefectKind::IndexDuplicate,
     [](DamagedFile& f) { GiveKeyOfFirst(f, f.FirstLeaf("PrimaryKey")); }},
    {"RowWithoutPrimaryKey", DefectKind::IndexNull,
     [](DamagedFile& f) { MakeNull(f, f.Rows()[0], 0); }},

    {"TableThatIsADataPage", DefectKind::CatalogObject,
     [](DamagedFile& f) { SetObjectId(f, "Job", Raw(DataPageOf(f))); }},
    {"ObjectThatIsNowhere", DefectKind::CatalogObject,
     [](DamagedFile& f) { SetObjectId(f, "Job", 99999); }},
    {"DefinitionThatNobodyLists", DefectKind::DefinitionUnlisted,
     [](DamagedFile& f) { SetObjectId(f, "Job", 5); }},
    {"TwoObjectsOfOneId", DefectKind::CatalogId, [](DamagedFile& f) { SetObjectId(f, "Job", 5); }},
    {"TwoObjectsOfOneName", DefectKind::CatalogName,
     [](DamagedFile& f) {
         const RowPlace job = f.ObjectRow("Job"), jot = f.ObjectRow("Jot");
         CopyRowPart(f, job, FieldAt(f, job, "Name"), jot, FieldAt(f, jot, "Name"),
                     3 * f.Version().bytesPerCharacter);
     }},
    {"ObjectInNoContainer", DefectKind::CatalogParent,
     [](DamagedFile& f) {
         const RowPlace row = f.ObjectRow("Job");
         f.Put32(row.id.page, FieldAt(f, row, "ParentId"), 4711);
     }},
    {"PropertiesThatCannotBeRead", DefectKind::CatalogProperties,
     [](DamagedFile& f) {
         const RowPlace row = f.ObjectRow("Job");
         const RowId value =
             format::ReadRowPointer(f.PageAt(row.id.page), FieldAt(f, row, "LvProp") + 4);
         f.Put16(value.page, f.PlaceOf(value).offset + 4, 0xFFFF);
     }},
    {"PropertiesOfNoColumn", DefectKind::CatalogPropertiesOfNone,
     [](DamagedFile& f) { Rename(f, "Name", "Nome"); }},
    {"ObjectWithoutOwner", DefectKind::CatalogAccount,
     [](DamagedFile& f) { EmptyField(f, kObjects, "Owner"); }},
    {"RightsOfNoAccount", DefectKind::CatalogAccount,
     [](DamagedFile& f) { EmptyField(f, kRights, "SID"); }},
    {"PartOfNoQuery", DefectKind::CatalogQuery,
     [](DamagedFile& f) {
         const auto pager =
             jet::pages::Pager::Open(f.Files(), DamagedFile::kPath, jet::io::OpenMode::ReadWrite);
         jet::table::NativeTable queries(pager, kQueries);
         const std::size_t query = queries.Definition().FindColumn("ObjectId").value();
         const std::vector<jet::table::Assignment> row{{query, std::int32_t{4711}}};
         static_cast<void>(queries.Insert(row));
     }},
    {"RelationshipWithoutOtherSide", DefectKind::CatalogRelationship,
     [](DamagedFile& f) {
         // The first named index: no related index, no related table, no rules.
         const std::array<std::byte, 10> none{
             std::byte{0xFF}, std::byte{0xFF}, std::byte{0xFF}, std::byte{0xFF}, std::byte{0},
             std::byte{0},    std::byte{0},    std::byte{0},    std::byte{4},    std::byte{4}};
         const format::MutableSpan page = f.PageAt(f.Job().page);
         const auto at = std::search(page.begin(), page.end(), none.begin(), none.end());
         f.Put32(f.Job().page, static_cast<std::size_t>(at - page.begin()) + 4, 3);
     }},
    {"RightsOfNoObject", DefectKind::CatalogRights,
     [](DamagedFile& f) { SetObjectId(f, "MSysDb", 0x10000009); }},
};

}  // namespace

std::span<const Damage> Damages()
{
    static const std::vector<Damage> all = [] {
        std::vector<Damage> both(std::begin(kDamages), std::end(kDamages));
        const std::span<const Damage> further = RelationshipDamages();
        both.insert(both.end(), further.begin(), further.end());
        return both;
    }();
    return all;
}

}  // namespace tests
