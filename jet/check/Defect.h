// SPDX-License-Identifier: Apache-2.0
// Defect: one thing that is wrong with a database file, and where.
#pragma once

#include "jet/format/PageNumber.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace jet::check {

using format::PageNumber;
using format::RowId;

// Damage is what no sound file shows. A remark is found in files that work: space that a crash
// left unused, a count that is no longer exact.
enum class Severity { Damage, Remark };

enum class DefectKind {
    FileLength,
    HeaderField,
    CommitPending,
    PageOutside,
    PageOwnedTwice,
    PageFreeButOwned,
    PageLost,
    MapRow,
    MapForm,
    MapShared,
    MapBitmapPage,
    MapPageOutside,
    MapOfFreePages,
    FreeMapNotOwned,
    DefinitionPage,
    DefinitionChain,
    DefinitionLength,
    DefinitionContent,
    DefinitionIndexOrder,
    DefinitionUnlisted,
    DataPageType,
    DataPageOwner,
    DataPageFreeBytes,
    DataPageSlots,
    RowOutsidePage,
    RowShape,
    RowValue,
    RowPointer,
    RowMoved,
    RowCount,
    AutoNumber,
    LongValueReference,
    LongValueLength,
    LongValueShared,
    LongValueStamp,
    LongValueUnused,
    IndexPage,
    IndexOwner,
    IndexLevel,
    IndexLevelMissing,
    IndexFreeBytes,
    IndexEmptyPage,
    IndexOrder,
    IndexSeparator,
    IndexLinks,
    IndexMap,
    IndexEntryMissing,
    IndexEntrySuperfluous,
    IndexKey,
    IndexDuplicate,
    IndexNull,
    CatalogObject,
    CatalogId,
    CatalogName,
    CatalogParent,
    CatalogProperties,
    CatalogPropertiesOfNone,
    CatalogAccount,
    CatalogRights,
    CatalogQuery,
    CatalogRelationship,
    RelationshipOrphan,
    Count_,
};

// The name tools print; it never changes.
[[nodiscard]] std::string_view NameOf(DefectKind kind);
[[nodiscard]] Severity SeverityOf(DefectKind kind);

// Units: offset in bytes from the page's start, 0 when the whole page is meant.
struct Defect {
    DefectKind kind = DefectKind::FileLength;
    PageNumber page = PageNumber::None;
    std::size_t offset = 0;
    std::string text;
};

}  // namespace jet::check
