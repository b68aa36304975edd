// SPDX-License-Identifier: Apache-2.0
#include "jet/check/RelationshipCheck.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/NewRelationship.h"
#include "jet/check/FieldContent.h"
#include "jet/format/IndexKey.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/ValueCodec.h"

#include <algorithm>
#include <vector>

namespace jet::check {

namespace {

using format::NamedIndex;
using format::TableDefinition;

constexpr PageNumber kRelationshipsPage{5};

// One row of MSysRelationships.
struct ListedPair {
    std::string name, table, column, referencedTable, referencedColumn;
    std::uint32_t flags = 0;
    std::int32_t count = 0, place = 0;
};

ListedPair PairOf(const format::RowView& row)
{
    const auto text = [&](const char* column) {
        return base::LowerName(ContentOf<std::string>(row, column).value_or(""));
    };
    const auto number = [&](const char* column) {
        return ContentOf<std::int32_t>(row, column).value_or(0);
    };
    return {.name = text("szRelationship"),
            .table = text("szObject"),
            .column = text("szColumn"),
            .referencedTable = text("szReferencedObject"),
            .referencedColumn = text("szReferencedColumn"),
            .flags = static_cast<std::uint32_t>(number("grbit")),
            .count = number("ccolumn"),
            .place = number("icolumn")};
}

// Lower-case names of an index's columns.
std::vector<std::string> ColumnNames(const TableDefinition& table, std::uint32_t tree)
{
    std::vector<std::string> names;
    for (const format::IndexColumn& column : table.indexes[tree].columns) {
        const auto place = table.FindNumber(column.columnNumber);
        names.push_back(place ? base::LowerName(table.columns[*place].name) : std::string());
    }
    return names;
}

// The key of a row by the columns of `index`, as the index of the referenced table has it; nothing
// when it has a null, or cannot be told.
std::optional<std::vector<std::byte>> ReferredKey(const format::RowView& row,
                                                  const format::IndexDefinition& index,
                                                  const TableDefinition& referenced,
                                                  const format::IndexDefinition& key)
{
    std::vector<std::byte> bytes;
    try {
        for (std::size_t i = 0; i < std::min(index.columns.size(), key.columns.size()); ++i) {
            const auto from = row.Table().FindNumber(index.columns[i].columnNumber);
            const auto to = referenced.FindNumber(key.columns[i].columnNumber);
            if (!from || !to || row.IsNull(*from)) return std::nullopt;
            format::AppendKeyColumn(
                bytes, format::DecodeValue(row.Field(*from), row.Table().columns[*from]),
                referenced.columns[*to], true);
        }
    } catch (const base::NumberedError&) {
        return std::nullopt;  // found with the row, or of an order that we cannot key
    }
    return bytes;
}

class RelationshipInspector {
public:
    RelationshipInspector(Inspection& inspection, const Tables& tables, const ObjectNames& names)
        : inspection_(inspection), tables_(tables), names_(names)
    {
    }

    void Check()
    {
        ReadList();
        for (const auto& [name, pairs] : listed_)
            CheckListed(name, pairs);
        for (const std::string& name : names_.relationships)
            if (!listed_.contains(name))
                Found("relationship " + name + " is an object and not listed");
        for (const auto& [page, facts] : tables_)
            if (facts) CheckIndexes(page, *facts);
    }

private:
    void ReadList()
    {
        const TableFacts* const list = FactsOf(kRelationshipsPage);
        if (list == nullptr) return;
        for (const RowId row : list->rows) {
            const auto fetched = list->Fetch(inspection_.Pager(), row);
            if (!fetched) continue;
            try {
                ListedPair pair = PairOf(fetched->view);
                listed_[pair.name].push_back(std::move(pair));
            } catch (const base::NumberedError&) {
                continue;  // found with the row
            }
        }
    }

    void CheckListed(const std::string& name, std::vector<ListedPair> pairs)
    {
        std::sort(pairs.begin(), pairs.end(),
                  [](const auto& one, const auto& other) { return one.place < other.place; });
        for (std::size_t i = 0; i < pairs.size(); ++i)
            if (pairs[i].place != static_cast<std::int32_t>(i) ||
                pairs[i].count != static_cast<std::int32_t>(pairs.size()))
                return Found("relationship " + name + " is listed incompletely");
        if (!names_.relationships.contains(name))
            Found("relationship " + name + " is listed and no object");
        const bool tables = IsTable(pairs[0].table) && IsTable(pairs[0].referencedTable);
        if (!tables) return Found("relationship " + name + " is of a table that is not there");
        const TableFacts* const referencing = FactsNamed(pairs[0].table);
        const TableFacts* const referenced = FactsNamed(pairs[0].referencedTable);
        for (const ListedPair& pair : pairs)
            if ((referencing && !referencing->definition.FindColumn(pair.column)) ||
                (referenced && !referenced->definition.FindColumn(pair.referencedColumn)))
                return Found("relationship " + name + " is of a column that is not there");
        if (referencing != nullptr && referenced != nullptr)
            CheckSides(pairs, *referencing, *referenced);
    }

    // An enforced relationship has its indexes, and no other.
    void CheckSides(const std::vector<ListedPair>& pairs, const TableFacts& referencing,
                    const TableFacts& referenced)
    {
        const std::string& name = pairs[0].name;
        const NamedIndex* const side = ReferencingSide(referencing.definition, name);
        const bool enforced = (pairs[0].flags & catalog::kNotEnforced) == 0;
        if (enforced != (side != nullptr))
            return Found("relationship " + name + (enforced ? " has no index" : " has an index"));
        if (side == nullptr) return;
        const bool updates = (pairs[0].flags & catalog::kCascadeUpdates) != 0;
        const bool deletes = (pairs[0].flags & catalog::kCascadeDeletes) != 0;
        if (updates != (side->cascadeUpdates == format::kCascade) ||
            deletes != (side->cascadeDeletes == format::kCascade))
            Found("relationship " + name + " cascades otherwise than its index says");
        const NamedIndex* const other = OtherSide(*side);
        if (other == nullptr) return;  // found with the index
        const auto from = ColumnNames(referencing.definition, side->tree);
        const auto to = ColumnNames(referenced.definition, other->tree);
        bool fits = side->relatedTable == referenced.definition.page &&
                    from.size() == pairs.size() && to.size() == pairs.size();
        for (const ListedPair& pair : pairs) {
            const auto at = std::find(from.begin(), from.end(), pair.column);
            const auto place = static_cast<std::size_t>(at - from.begin());
            fits = fits && at != from.end() && to[place] == pair.referencedColumn;
        }
        if (!fits) Found("relationship " + name + " is over other columns than its indexes");
    }

    // The indexes of a table that belong to relationships.
    void CheckIndexes(PageNumber page, const TableFacts& facts)
    {
        for (const NamedIndex& index : facts.definition.namedIndexes) {
            if (index.relatedTable == PageNumber::None) continue;
            const NamedIndex* const other = OtherSide(index);
            if (other == nullptr || !AreSides(page, index, *other)) {
                Found("relationship " + index.name + " has no other side at " +
                          PageText(index.relatedTable),
                      page);
                continue;
            }
            if (index.relationKind != format::kReferencingSide) continue;
            if (!listed_.contains(base::LowerName(index.name)))
                Found("relationship " + index.name + " has an index and is not listed", page);
            CheckReferences(facts, index, *FactsOf(index.relatedTable), *other);
        }
    }

    static bool AreSides(PageNumber page, const NamedIndex& index, const NamedIndex& other)
    {
        return other.relatedTable == page && other.relatedIndex == index.number &&
               other.relationKind + index.relationKind == 3 &&
               other.cascadeUpdates == index.cascadeUpdates &&
               other.cascadeDeletes == index.cascadeDeletes;
    }

    // Every row refers to one that is there.
    void CheckReferences(const TableFacts& facts, const NamedIndex& index,
                         const TableFacts& referenced, const NamedIndex& other)
    {
        const auto& key = referenced.definition.indexes[other.tree];
        std::set<std::vector<std::byte>> keys;
        ForEachKey(referenced, key, referenced.definition, key,
                   [&](RowId, auto found) { keys.insert(std::move(found)); });
        std::vector<RowId> lost;
        ForEachKey(facts, facts.definition.indexes[index.tree], referenced.definition, key,
                   [&](RowId row, const auto& found) {
                       if (!keys.contains(found)) lost.push_back(row);
                   });
        if (lost.empty()) return;
        inspection_.Found(DefectKind::RelationshipOrphan, lost[0].page, 0,
                          std::to_string(lost.size()) + " rows refer to none by relationship " +
                              index.name + ", the first is row " + RowText(lost[0]));
    }

    template <class Visit>
    void ForEachKey(const TableFacts& facts, const format::IndexDefinition& index,
                    const TableDefinition& referenced, const format::IndexDefinition& key,
                    Visit visit) const
    {
        for (const RowId row : facts.rows) {
            const auto fetched = facts.Fetch(inspection_.Pager(), row);
            if (!fetched) continue;  // found with the row
            if (auto found = ReferredKey(fetched->view, index, referenced, key))
                visit(row, *std::move(found));
        }
    }

    static const NamedIndex* ReferencingSide(const TableDefinition& table, const std::string& name)
    {
        for (const NamedIndex& index : table.namedIndexes)
            if (index.relationKind == format::kReferencingSide && base::SameName(index.name, name))
                return &index;
        return nullptr;
    }

    [[nodiscard]] const NamedIndex* OtherSide(const NamedIndex& index) const
    {
        const TableFacts* const other = FactsOf(index.relatedTable);
        if (other == nullptr) return nullptr;
        for (const NamedIndex& one : other->definition.namedIndexes)
            if (one.number == index.relatedIndex) return &one;
        return nullptr;
    }

    [[nodiscard]] bool IsTable(const std::string& name) const
    {
        return names_.tables.contains(name) || names_.others.contains(name);
    }

    [[nodiscard]] const TableFacts* FactsNamed(const std::string& name) const
    {
        const auto table = names_.tables.find(name);
        return table == names_.tables.end() ? nullptr : FactsOf(table->second);
    }

    // Null when the table could not be read.
    [[nodiscard]] const TableFacts* FactsOf(PageNumber page) const
    {
        const auto table = tables_.find(page);
        return table == tables_.end() ? nullptr : table->second.get();
    }

    void Found(const std::string& what, PageNumber page = kRelationshipsPage)
    {
        inspection_.Found(DefectKind::CatalogRelationship, page, 0, what);
    }

    Inspection& inspection_;
    const Tables& tables_;
    const ObjectNames& names_;
    std::map<std::string, std::vector<ListedPair>> listed_;  // by name
};

}  // namespace

void CheckRelationships(Inspection& inspection, const Tables& tables, const ObjectNames& names)
{
    RelationshipInspector(inspection, tables, names).Check();
}

}  // namespace jet::check
