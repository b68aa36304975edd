// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/check/RelationshipDamages.h"

#include "jet/catalog/Catalog.h"

#include <gtest/gtest.h>
#include <utility>

namespace tests {

namespace {

namespace table = jet::table;
using jet::check::DefectKind;

constexpr PageNumber kObjects{2}, kRelationships{5};
constexpr base::Date kToday{38061};
constexpr std::int32_t kNobody = 4711;  // no job has this number

// The table Part.
table::NativeTable Parts(const std::shared_ptr<jet::pages::Pager>& pager)
{
    const auto id = jet::catalog::Catalog(pager).Find("Part").value().id;
    return {pager, PageNumber{static_cast<std::uint32_t>(id)}};
}

void AddPart(const std::shared_ptr<jet::pages::Pager>& pager, std::int32_t job)
{
    const std::vector<table::Assignment> row{{0, job}};
    static_cast<void>(Parts(pager).Insert(row));
}

// Changes the row of a system table that has the relationship's name in this column, or, without
// values, takes it away.
void SpoilRow(DamagedFile& file, PageNumber page, const char* column,
              const std::vector<std::pair<const char*, base::Value>>& values)
{
    const auto pager = RelateParts(file);
    table::NativeTable rows(pager, page);
    const std::size_t place = rows.Definition().FindColumn(column).value();
    std::vector<table::Assignment> changes;
    for (const auto& [name, value] : values)
        changes.push_back({rows.Definition().FindColumn(name).value(), value});
    const auto cursor = rows.Scan();
    while (cursor->Next()) {
        if (!(rows.ValueOf(cursor->Row(), place) == base::Value("JobPart"))) continue;
        if (changes.empty()) return rows.Delete(cursor->Id());
        return rows.Update(cursor->Id(), changes);
    }
    FAIL() << "no relationship is there";
}

void SpoilListed(DamagedFile& file, const char* column, const base::Value& value)
{
    SpoilRow(file, kRelationships, "szRelationship", {{column, value}});
}

const Damage kDamages[] = {
    {"RelationshipWithoutObject", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilRow(f, kObjects, "Name", {}); }},
    {"RelationshipNotListed", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilRow(f, kRelationships, "szRelationship", {}); }},
    {"RelationshipOfAnotherTable", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilListed(f, "szReferencedObject", "Jobs"); }},
    {"RelationshipOfAnotherColumn", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilListed(f, "szReferencedColumn", "Name"); }},
    {"RelationshipThatCascadesOtherwise", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilListed(f, "grbit", std::int32_t{0}); }},
    {"RelationshipNotEnforcedWithIndex", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilListed(f, "grbit", std::int32_t{0x1002}); }},
    {"RelationshipListedIncompletely", DefectKind::CatalogRelationship,
     [](DamagedFile& f) { SpoilListed(f, "ccolumn", std::int32_t{2}); }},
    {"RowThatRefersToNone", DefectKind::RelationshipOrphan,
     [](DamagedFile& f) { AddPart(RelateParts(f), kNobody); }},
};

}  // namespace

std::shared_ptr<jet::pages::Pager> RelateParts(DamagedFile& file)
{
    auto pager =
        jet::pages::Pager::Open(file.Files(), DamagedFile::kPath, jet::io::OpenMode::ReadWrite);
    jet::catalog::Catalog catalog(pager);
    jet::catalog::NewTable part;
    part.name = "Part";
    part.columns.resize(1);
    part.columns[0].name = "Job";
    catalog.Create(part, kToday);
    AddPart(pager, 1);
    const jet::catalog::NewRelationship relationship{
        .name = "JobPart",
        .referenced = "Job",
        .referencing = "Part",
        .columns = {{.referenced = "Id", .referencing = "Job"}},
        .flags = jet::catalog::kCascadeDeletes};
    catalog.Create(relationship, kToday);
    return pager;
}

std::span<const Damage> RelationshipDamages()
{
    return kDamages;
}

}  // namespace tests
