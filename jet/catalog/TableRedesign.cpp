// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/TableRedesign.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/TableDesign.h"
#include "jet/catalog/TableMaker.h"
#include "jet/format/IndexPage.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/TableDefinitionReader.h"
#include "jet/format/TableDefinitionWriter.h"
#include "jet/index/Index.h"
#include "jet/pages/UsageMap.h"

#include <algorithm>

namespace jet::catalog {

using base::NumberedError;
using format::IndexDefinition;
using format::NamedIndex;
using format::TableDefinition;

TableRedesign::TableRedesign(pages::WriteSet& changes, format::PageNumber table)
    : changes_(changes), joined_(table::JoinDefinition(changes.Of(), table))
{
    joined_.bytes.resize(format::DefinitionPage(joined_.bytes).Length());
}

std::uint32_t TableRedesign::Add(IndexDefinition tree)
{
    const TableDefinition table = Table();
    MapPages maps(changes_, table.ownedPages.page);
    tree.usageMap = maps.Make(1)[0];
    tree.root = index::Index::MakeRoot(changes_, joined_.pages.front(), tree.usageMap);
    format::AddTree(joined_.bytes, tree, changes_.Of().Version());
    return static_cast<std::uint32_t>(table.indexes.size());
}

void TableRedesign::Add(const NamedIndex& index, format::SortOrder order)
{
    const TableDefinition table = Table();
    if (table.namedIndexes.size() >= kMostIndexes) throw NumberedError(3001);
    std::size_t place = 0;
    for (const NamedIndex& known : table.namedIndexes) {
        if (base::SameName(known.name, index.name)) throw NumberedError(3284);
        if (format::CompareText(known.name, index.name, order) < 0) ++place;
    }
    format::AddNamedIndex(joined_.bytes, index, place, table.columns.front(),
                          changes_.Of().Version());
}

void TableRedesign::Remove(std::uint32_t number)
{
    const TableDefinition table = Table();
    const auto& named = table.namedIndexes;
    const auto gone = std::find_if(named.begin(), named.end(), [number](const NamedIndex& index) {
        return index.number == number && index.kind == format::kRelationship;
    });
    if (gone == named.end()) return;
    const format::FileVersion& version = changes_.Of().Version();
    format::RemoveNamedIndex(joined_.bytes, static_cast<std::size_t>(gone - named.begin()),
                             version);
    const auto users = std::count_if(named.begin(), named.end(), [&](const NamedIndex& index) {
        return index.tree == gone->tree;
    });
    if (users > 1) return;
    GiveBack(table, gone->tree);
    format::RemoveTree(joined_.bytes, gone->tree, version);
}

void TableRedesign::GiveBack(const TableDefinition& table, std::uint32_t tree)
{
    const IndexDefinition& gone = table.indexes[tree];
    pages::UsageMap map(changes_.Of(), gone.usageMap);
    RequireOwnPages(table, tree, map.Pages());
    for (const format::PageNumber page : map.Pages()) {
        map.Remove(changes_, page);
        changes_.Free(page);
    }
    pages::UsageMap::Drop(changes_, gone.usageMap);
}

// All pages of a tree are in its map, the root included, and no others: those would be written over
// by whoever takes them next.
void TableRedesign::RequireOwnPages(const TableDefinition& table, std::uint32_t tree,
                                    const std::vector<format::PageNumber>& pages) const
{
    const auto require = [](bool holds, format::PageNumber page, const char* what) {
        if (!holds) throw NumberedError(3343).At("page " + std::to_string(Raw(page)) + what);
    };
    const format::PageNumber root = table.indexes[tree].root;
    require(std::find(pages.begin(), pages.end(), root) != pages.end(), root,
            " is the index's root and not in its map");
    std::vector<pages::UsageMap> others;
    for (std::uint32_t other = 0; other < table.indexes.size(); ++other)
        if (other != tree) others.emplace_back(changes_.Of(), table.indexes[other].usageMap);
    const format::IndexPageLayout& layout = *changes_.Of().Version().indexPage;
    for (const format::PageNumber page : pages) {
        const pages::Page stored = changes_.Of().Read(page);
        require(format::IndexPageView(stored.Bytes(), layout).Owner() == joined_.pages.front(),
                page, " is no page of the index");
        for (const pages::UsageMap& map : others)
            require(!map.Contains(page), page, " is of two indexes");
    }
}

TableDefinition TableRedesign::Table() const
{
    return format::ReadTableDefinition(joined_.bytes, changes_.Of().Version(),
                                       changes_.Of().CodePage());
}

void TableRedesign::Write()
{
    RewriteDefinition(changes_, joined_);
}

}  // namespace jet::catalog
