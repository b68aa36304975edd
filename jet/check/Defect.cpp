// SPDX-License-Identifier: Apache-2.0
#include "jet/check/Defect.h"

#include <array>

namespace jet::check {

namespace {

struct KindFacts {
    DefectKind kind;
    std::string_view name;
    Severity severity = Severity::Damage;
};

constexpr std::array<KindFacts, static_cast<std::size_t>(DefectKind::Count_)> kKinds{{
    {DefectKind::FileLength, "file-length"},
    {DefectKind::HeaderField, "header-field"},
    {DefectKind::CommitPending, "commit-pending"},
    {DefectKind::PageOutside, "page-outside"},
    {DefectKind::PageOwnedTwice, "page-owned-twice"},
    {DefectKind::PageFreeButOwned, "page-free-but-owned"},
    {DefectKind::PageLost, "page-lost", Severity::Remark},
    {DefectKind::MapRow, "map-row"},
    {DefectKind::MapForm, "map-form"},
    {DefectKind::MapShared, "map-shared"},
    {DefectKind::MapBitmapPage, "map-bitmap-page"},
    {DefectKind::MapPageOutside, "map-page-outside"},
    {DefectKind::MapOfFreePages, "map-of-free-pages"},
    {DefectKind::FreeMapNotOwned, "free-map-not-owned"},
    {DefectKind::DefinitionPage, "definition-page"},
    {DefectKind::DefinitionChain, "definition-chain"},
    {DefectKind::DefinitionLength, "definition-length"},
    {DefectKind::DefinitionContent, "definition-content"},
    {DefectKind::DefinitionIndexOrder, "definition-index-order", Severity::Remark},
    {DefectKind::DefinitionUnlisted, "definition-unlisted", Severity::Remark},
    {DefectKind::DataPageType, "data-page-type"},
    {DefectKind::DataPageOwner, "data-page-owner"},
    {DefectKind::DataPageFreeBytes, "data-page-free-bytes"},
    {DefectKind::DataPageSlots, "data-page-slots"},
    {DefectKind::RowOutsidePage, "row-outside-page"},
    {DefectKind::RowShape, "row-shape"},
    {DefectKind::RowValue, "row-value"},
    {DefectKind::RowPointer, "row-pointer"},
    {DefectKind::RowMoved, "row-moved"},
    {DefectKind::RowCount, "row-count", Severity::Remark},
    {DefectKind::AutoNumber, "auto-number", Severity::Remark},
    {DefectKind::LongValueReference, "long-value-reference"},
    {DefectKind::LongValueLength, "long-value-length"},
    {DefectKind::LongValueShared, "long-value-shared"},
    {DefectKind::LongValueStamp, "long-value-stamp"},
    {DefectKind::LongValueUnused, "long-value-unused", Severity::Remark},
    {DefectKind::IndexPage, "index-page"},
    {DefectKind::IndexOwner, "index-owner"},
    {DefectKind::IndexLevel, "index-level"},
    {DefectKind::IndexLevelMissing, "index-level-missing", Severity::Remark},
    {DefectKind::IndexFreeBytes, "index-free-bytes"},
    {DefectKind::IndexEmptyPage, "index-empty-page"},
    {DefectKind::IndexOrder, "index-order"},
    {DefectKind::IndexSeparator, "index-separator"},
    {DefectKind::IndexLinks, "index-links"},
    {DefectKind::IndexMap, "index-map"},
    {DefectKind::IndexEntryMissing, "index-entry-missing"},
    {DefectKind::IndexEntrySuperfluous, "index-entry-superfluous"},
    {DefectKind::IndexKey, "index-key"},
    {DefectKind::IndexDuplicate, "index-duplicate"},
    {DefectKind::IndexNull, "index-null"},
    {DefectKind::CatalogObject, "catalog-object"},
    {DefectKind::CatalogId, "catalog-id"},
    {DefectKind::CatalogName, "catalog-name"},
    {DefectKind::CatalogParent, "catalog-parent"},
    {DefectKind::CatalogProperties, "catalog-properties"},
    {DefectKind::CatalogPropertiesOfNone, "catalog-properties-of-none", Severity::Remark},
    {DefectKind::CatalogAccount, "catalog-account"},
    {DefectKind::CatalogRights, "catalog-rights", Severity::Remark},
    {DefectKind::CatalogQuery, "catalog-query"},
    {DefectKind::CatalogRelationship, "catalog-relationship"},
    {DefectKind::RelationshipOrphan, "relationship-orphan", Severity::Remark},
}};

constexpr bool InOrder()
{
    for (std::size_t i = 0; i < kKinds.size(); ++i)
        if (kKinds[i].kind != static_cast<DefectKind>(i)) return false;
    return true;
}
static_assert(InOrder());

}  // namespace

std::string_view NameOf(DefectKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)].name;
}

Severity SeverityOf(DefectKind kind)
{
    return kKinds[static_cast<std::size_t>(kind)].severity;
}

}  // namespace jet::check
