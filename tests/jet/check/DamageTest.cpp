// SPDX-License-Identifier: Apache-2.0
// Every kind of damage is found: each test spoils a sound file in one way.
#include "jet/format/DataPage.h"
#include "jet/format/HeaderPage.h"
#include "jet/format/RowPointer.h"
#include "jet/format/RowView.h"
#include "tests/jet/check/DamageFixture.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

namespace jet::check {

namespace {

using format::IndexPageContent;
using format::IndexPageView;
using format::kIndexPageJet4;
using tests::DamagedFile;
using tests::RowPlace;

constexpr PageNumber kNowhere{999999};

struct Damage {
    const char* name;  // of the test
    DefectKind found;  // what must be found
    void (*plant)(DamagedFile&);
};

PageNumber DataPageOf(const DamagedFile& file)
{
    return file.JobPages().front();
}

// Takes the entry at `at` off a leaf.
void EraseEntry(DamagedFile& file, PageNumber leaf, std::size_t at)
{
    IndexPageContent content =
        IndexPageContent::Of(IndexPageView(file.PageAt(leaf), kIndexPageJet4));
    content.entries.Erase(at);
    format::WriteIndexPage(file.PageAt(leaf), content, kIndexPageJet4);
}

void SetChild(DamagedFile& file, PageNumber node, PageNumber child)
{
    IndexPageContent content =
        IndexPageContent::Of(IndexPageView(file.PageAt(node), kIndexPageJet4));
    content.SetChild(0, child);
    format::WriteIndexPage(file.PageAt(node), content, kIndexPageJet4);
}

// The place in the page where the slot of a row lies.
std::size_t SlotAt(const RowPlace& row)
{
    return format::kDataPageJet4.slots + 2 * std::size_t{row.id.slot};
}

void MarkDeleted(DamagedFile& file, const RowPlace& row)
{
    file.Put16(row.id.page, SlotAt(row),
               static_cast<std::uint16_t>(file.Get16(row.id.page, SlotAt(row)) | 0xC000));
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

// Catalog rows keep Id at 2 and ParentId at 6.
void SetObjectId(DamagedFile& file, const char* object, std::uint32_t id)
{
    const RowPlace row = file.ObjectRow(object);
    file.Put32(row.id.page, row.offset + 2, id);
}

const Damage kDamages[] = {
    {"FileOfNoWholePages", DefectKind::FileLength,
     [](DamagedFile& f) { f.Content().resize(f.Content().size() + 100); }},
    {"SystemTableElsewhere", DefectKind::HeaderField,
     [](DamagedFile& f) { f.Put8(PageNumber{0}, 0x24, 0); }},
    {"UserStoppedWhileWriting", DefectKind::CommitPending,
     [](DamagedFile& f) { f.Put16(PageNumber{0}, format::kHeaderPageJet4.commitWords + 6, 0); }},

    {"DataPageOfAnotherType", DefectKind::DataPageType,
     [](DamagedFile& f) { f.Put8(DataPageOf(f), 0, 9); }},
    {"DataPageOfAnotherOwner", DefectKind::DataPageOwner,
     [](DamagedFile& f) { f.Put32(DataPageOf(f), 4, 2); }},
    {"WrongCountOfFreeBytes", DefectKind::DataPageFreeBytes,
     [](DamagedFile& f) {
         f.Put16(DataPageOf(f), 2, static_cast<std::uint16_t>(f.Get16(DataPageOf(f), 2) + 1));
     }},
    {"MoreSlotsThanAPageMayHave", DefectKind::DataPageSlots,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), 0x0C, 300); }},
    {"RowStartOutsideThePage", DefectKind::RowOutsidePage,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), 0x0E, 0x1FFF); }},
    {"RowStartInTheSlots", DefectKind::RowOutsidePage,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), 0x10, 0x0002); }},
    {"RowsOverlap", DefectKind::RowOutsidePage,
     [](DamagedFile& f) { f.Put16(DataPageOf(f), 0x10, f.Get16(DataPageOf(f), 0x0E) + 1); }},

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
         const PageNumber page{static_cast<std::uint32_t>(f.Content().size() / 4096)};
         f.Content().resize(f.Content().size() + 4096);
         f.SetInMap({PageNumber{1}, 0}, page, false);
     }},
    {"MapOfUnknownForm", DefectKind::MapForm,
     [](DamagedFile& f) { f.Put8(f.Job().ownedPages.page, f.MapAt(f.Job().ownedPages), 7); }},
    {"MapOfFreePagesUnreadable", DefectKind::MapOfFreePages,
     [](DamagedFile& f) { f.Put8(PageNumber{1}, 0, 5); }},
    {"MapNamesABitmapPageThatIsNone", DefectKind::MapBitmapPage,
     [](DamagedFile& f) {
         const std::size_t at = f.MapAt(f.Job().ownedPages);
         f.Put8(f.Job().ownedPages.page, at, 1);
         f.Put32(f.Job().ownedPages.page, at + 1, Raw(DataPageOf(f)));
     }},
    {"DefinitionNamesAMapThatIsNotThere", DefectKind::MapRow,
     [](DamagedFile& f) { f.Put8(f.Job().page, 55, 250); }},
    {"TwoMapsInOnePlace", DefectKind::MapShared,
     [](DamagedFile& f) {
         f.Put8(f.Job().page, 59, static_cast<std::uint8_t>(f.Job().ownedPages.slot));
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
     [](DamagedFile& f) { f.Put16(f.Job().page, 41, 1); }},
    {"SystemTableIsNoDefinition", DefectKind::DefinitionPage,
     [](DamagedFile& f) { f.Put8(PageNumber{2}, 0, 8); }},

    {"RowOfTooManyColumns", DefectKind::RowShape,
     [](DamagedFile& f) { f.Put16(f.Rows()[0].id.page, f.Rows()[0].offset, 9); }},
    {"VariableValueStartsBehindTheRow", DefectKind::RowShape,
     [](DamagedFile& f) {
         const RowPlace& row = f.Rows()[0];
         f.Put16(row.id.page, row.offset + row.length - 5, 4000);
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
    {"MovedRowWithoutPointer", DefectKind::RowMoved,
     [](DamagedFile& f) { MarkDeleted(f, f.Moved()); }},
    {"CountOfRowsWrong", DefectKind::RowCount,
     [](DamagedFile& f) { f.Put32(f.Job().page, 16, 1234); }},
    {"CounterBehindItsColumn", DefectKind::AutoNumber,
     [](DamagedFile& f) { f.Put32(f.Job().page, 20, 17); }},

    {"MemoRefersToNothing", DefectKind::LongValueReference,
     [](DamagedFile& f) {
         const RowPlace& row = f.RowWithNote(1);
         f.Put8(row.id.page, f.NoteAt(row) + 4, 199);
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

    {"RootOfAnIndexIsNone", DefectKind::IndexPage,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, 0, 1); }},
    {"IndexPageOfAnotherTable", DefectKind::IndexOwner,
     [](DamagedFile& f) { f.Put32(f.FirstLeaf("ByName"), kIndexPageJet4.owner, 2); }},
    {"NodeThatDoesNotTellItsLevel", DefectKind::IndexLevelMissing,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, kIndexPageJet4.level, 0); }},
    {"LeafOfAHigherLevel", DefectKind::IndexLevel,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("ByName"), kIndexPageJet4.level, 3); }},
    {"IndexPageCountsItsFreeBytesWrong", DefectKind::IndexFreeBytes,
     [](DamagedFile& f) { f.Put16(f.FirstLeaf("ByName"), kIndexPageJet4.freeBytes, 1); }},
    {"LeafWithoutEntries", DefectKind::IndexEmptyPage,
     [](DamagedFile& f) {
         const format::MutableSpan page = f.PageAt(f.FirstLeaf("ByName"));
         std::fill(page.begin() + kIndexPageJet4.bitmap, page.begin() + kIndexPageJet4.area,
                   std::byte{0});
     }},
    {"EntriesOutOfOrder", DefectKind::IndexOrder,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("PrimaryKey"), kIndexPageJet4.area + 4, 0xEE); }},
    {"SeparatorTooLow", DefectKind::IndexSeparator,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, kIndexPageJet4.area + 1, 0x01); }},
    {"SeparatorTooHigh", DefectKind::IndexSeparator,
     [](DamagedFile& f) { f.Put8(f.Tree("ByName").root, kIndexPageJet4.area + 1, 0xFE); }},
    {"LeafNotLinkedToTheNext", DefectKind::IndexLinks,
     [](DamagedFile& f) { f.Put32(f.FirstLeaf("ByName"), kIndexPageJet4.next, 0); }},
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
     [](DamagedFile& f) { f.Put32(f.Rows()[0].id.page, f.Rows()[0].offset + 2, 777); }},
    {"TwoRowsOfOneKey", DefectKind::IndexDuplicate,
     [](DamagedFile& f) { f.Put8(f.FirstLeaf("PrimaryKey"), kIndexPageJet4.area + 9 + 4, 1); }},
    {"RowWithoutPrimaryKey", DefectKind::IndexNull,
     [](DamagedFile& f) { MakeNull(f, f.Rows()[0], 0); }},

    {"ObjectThatIsNowhere", DefectKind::CatalogObject,
     [](DamagedFile& f) { SetObjectId(f, "Job", 99999); }},
    {"DefinitionThatNobodyLists", DefectKind::DefinitionUnlisted,
     [](DamagedFile& f) { SetObjectId(f, "Job", 5); }},
    {"TwoObjectsOfOneId", DefectKind::CatalogId, [](DamagedFile& f) { SetObjectId(f, "Job", 5); }},
    {"TwoObjectsOfOneName", DefectKind::CatalogName,
     [](DamagedFile& f) {
         const RowPlace databases = f.ObjectRow("Databases");
         const RowPlace tables = f.ObjectRow("Tables");
         CopyRowPart(f, tables, tables.offset + 32, databases, databases.offset + 32, 12);
         const format::MutableSpan page = f.PageAt(databases.id.page);
         const std::size_t tail = databases.offset + databases.length - 5 - 2;
         format::WriteU16(page, tail - 2, static_cast<std::uint16_t>(32 + 12));
     }},
    {"ObjectInNoContainer", DefectKind::CatalogParent,
     [](DamagedFile& f) {
         const RowPlace row = f.ObjectRow("Job");
         f.Put32(row.id.page, row.offset + 6, 4711);
     }},
    {"PropertiesThatCannotBeRead", DefectKind::CatalogProperties,
     [](DamagedFile& f) {
         const RowPlace row = f.ObjectRow("Job");
         const format::RowView view(format::Slice(f.PageAt(row.id.page), row.offset, row.length),
                                    f.Objects());
         const format::Span field = view.Field(f.Objects().FindColumn("LvProp").value());
         const RowId value = format::ReadRowPointer(field, 4);
         f.Put16(value.page, f.PlaceOf(value).offset + 4, 0xFFFF);
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

bool Contains(const CheckReport& report, DefectKind kind)
{
    return std::any_of(report.defects.begin(), report.defects.end(),
                       [kind](const Defect& defect) { return defect.kind == kind; });
}

TEST(DamageTest, EveryKindIsFound)
{
    for (const Damage& damage : kDamages) {
        SCOPED_TRACE(damage.name);
        DamagedFile file;
        damage.plant(file);
        const CheckReport report = file.Check();
        std::string found;
        for (const Defect& defect : report.defects)
            found += "\n  " + std::string(NameOf(defect.kind)) + " " + defect.text;
        EXPECT_TRUE(Contains(report, damage.found))
            << NameOf(damage.found) << " is not among:" << found;
        EXPECT_TRUE(SeverityOf(damage.found) == Severity::Remark || !report.Clean());
    }
}

TEST(DamageTest, EveryKindIsPlanted)
{
    for (int i = 0; i < static_cast<int>(DefectKind::Count_); ++i) {
        const auto kind = static_cast<DefectKind>(i);
        EXPECT_TRUE(std::any_of(std::begin(kDamages), std::end(kDamages),
                                [kind](const Damage& damage) { return damage.found == kind; }))
            << NameOf(kind);
    }
}

// Noise of every sort: the checker answers, whatever the bytes say.
TEST(DamageTest, NoBytesMakeTheCheckerFail)
{
    std::mt19937 random(20240229);
    for (int round = 0; round < 60; ++round) {
        DamagedFile file;
        auto& bytes = file.Content();
        const int changes = 1 << (round % 8);
        for (int i = 0; i < changes; ++i) {
            // Not the signature: a file of another kind is refused.
            const std::size_t at = 0x98 + random() % (bytes.size() - 0x98);
            bytes[at] = static_cast<std::byte>(round % 3 == 0 ? 0xFF : random());
        }
        EXPECT_NO_THROW({
            const CheckReport report = file.Check();
            EXPECT_LE(report.defects.size(), kMostDefects);
        }) << round;
    }
}

TEST(DamageTest, AFileCutShortIsFound)
{
    for (const std::size_t pages : {2U, 3U, 8U, 20U}) {
        DamagedFile file;
        file.Content().resize(pages * 4096);
        EXPECT_FALSE(file.Check().Clean()) << pages;
    }
}

TEST(SoundFileTest, NothingIsFoundBeforeItIsSpoilt)
{
    DamagedFile file;
    EXPECT_SPOTLESS(file.Files(), DamagedFile::kPath);
    EXPECT_GE(file.Rows().size(), 299U);
    EXPECT_GE(file.JobPages().size(), 3U);
    EXPECT_NE(file.FirstLeaf("ByName"), file.Tree("ByName").root);
}

}  // namespace

}  // namespace jet::check
