// SPDX-License-Identifier: Apache-2.0
#include "jet/check/IndexCheck.h"

#include "base/NumberedError.h"
#include "jet/check/IndexTree.h"
#include "jet/check/MapCheck.h"
#include "jet/format/IndexKey.h"
#include "jet/format/ValueCodec.h"

#include <algorithm>

namespace jet::check {

namespace {

using format::IndexColumn;
using format::IndexDefinition;
using format::Span;

// What the row says its key should be.
struct ExpectedKey {
    std::vector<std::byte> bytes;
    bool known = false;  // false when the row or its text cannot be keyed
    bool anyNull = false, allNull = true;
};

base::Value ValueOf(const format::RowView& row, std::size_t column)
{
    const format::ColumnDefinition& definition = row.Table().columns[column];
    if (definition.type == format::ColumnType::Boolean) return row.Boolean(column);
    if (row.IsNull(column)) return base::Null{};
    return format::DecodeValue(row.Field(column), definition);
}

class IndexInspector {
public:
    IndexInspector(Inspection& inspection, const TableFacts& facts, std::size_t place)
        : inspection_(inspection), facts_(facts), index_(facts.definition.indexes[place]),
          name_(NameOfTree(place)), seen_(facts.rows.size())
    {
    }

    void Check()
    {
        const PageNumber table = facts_.definition.page;
        const auto owned = ReadMap(inspection_, index_.usageMap, table, table, "map of " + name_);
        IndexTree tree(inspection_, facts_.definition, index_, name_,
                       [this](Span entry, PageNumber page) { TakeEntry(entry, page); });
        tree.Walk();
        if (!tree.Whole()) return;
        CheckMap(owned, tree.Pages());
        FindMissing();
    }

private:
    [[nodiscard]] std::string NameOfTree(std::size_t place) const
    {
        for (const format::NamedIndex& index : facts_.definition.namedIndexes)
            if (index.tree == place) return "index " + index.name;
        return "index " + std::to_string(place);
    }

    void CheckMap(const std::vector<PageNumber>& owned, std::vector<PageNumber> pages)
    {
        std::sort(pages.begin(), pages.end());
        if (pages == owned) return;
        std::vector<PageNumber> differing;
        std::set_symmetric_difference(pages.begin(), pages.end(), owned.begin(), owned.end(),
                                      std::back_inserter(differing));
        for (const PageNumber page : differing) {
            const bool inTree = std::binary_search(pages.begin(), pages.end(), page);
            inspection_.Found(DefectKind::IndexMap, page, 0,
                              name_ + (inTree ? ": is not in its map" : ": is only in its map"));
        }
    }

    void TakeEntry(Span entry, PageNumber page)
    {
        const RowId row = format::RowPart(entry);
        const auto found = std::lower_bound(facts_.rows.begin(), facts_.rows.end(), row);
        const auto place = static_cast<std::size_t>(found - facts_.rows.begin());
        const bool exists = found != facts_.rows.end() && *found == row;
        if (!exists || seen_[place]) {
            return inspection_.Found(DefectKind::IndexEntrySuperfluous, page, 0,
                                     name_ + ": an entry stands for row " + RowText(row) +
                                         (exists ? ", which has one" : ", which is not there"));
        }
        seen_[place] = true;
        CheckKey(format::KeyPart(entry), row, page);
    }

    void CheckKey(Span key, RowId row, PageNumber page)
    {
        const ExpectedKey expected = KeyOf(row);
        if (expected.known &&
            !std::equal(key.begin(), key.end(), expected.bytes.begin(), expected.bytes.end())) {
            inspection_.Found(DefectKind::IndexKey, page, 0,
                              name_ + ": the entry of row " + RowText(row) + " has another key");
        }
        if (index_.required && expected.anyNull) {
            inspection_.Found(DefectKind::IndexNull, page, 0,
                              name_ + ": row " + RowText(row) + " has no value");
        }
        const bool equal = std::equal(key.begin(), key.end(), last_.begin(), last_.end());
        if (index_.unique && equal && !last_.empty() && !expected.anyNull) {
            inspection_.Found(DefectKind::IndexDuplicate, page, 0,
                              name_ + ": row " + RowText(row) + " has the key of another row");
        }
        last_.assign(key.begin(), key.end());
    }

    void FindMissing()
    {
        for (std::size_t i = 0; i < seen_.size(); ++i) {
            if (seen_[i]) continue;
            const ExpectedKey expected = KeyOf(facts_.rows[i]);
            if (index_.ignoreNulls && expected.allNull) continue;
            inspection_.Found(DefectKind::IndexEntryMissing, facts_.rows[i].page, 0,
                              name_ + ": no entry for row " + RowText(facts_.rows[i]));
        }
    }

    [[nodiscard]] ExpectedKey KeyOf(RowId row) const
    {
        ExpectedKey key;
        const auto fetched = facts_.Fetch(inspection_.Pager(), row);
        if (!fetched) return key;
        try {
            for (const IndexColumn& part : index_.columns)
                AddPart(key, fetched->view, part);
            key.known = true;
        } catch (const base::NumberedError&) {
            // The row's own check has found what is wrong with it.
        }
        return key;
    }

    void AddPart(ExpectedKey& key, const format::RowView& row, const IndexColumn& part) const
    {
        const auto column = facts_.definition.FindNumber(part.columnNumber);
        if (!column) throw base::NumberedError(3343);
        const format::ColumnDefinition& definition = facts_.definition.columns[*column];
        const bool null = row.IsNull(*column);
        key.anyNull = key.anyNull || null;
        key.allNull = key.allNull && null;
        if (format::IsLongValue(definition.type)) throw base::NumberedError(3251);
        format::AppendKeyColumn(key.bytes, ValueOf(row, *column), definition, part.ascending);
    }

    Inspection& inspection_;
    const TableFacts& facts_;
    const IndexDefinition& index_;
    std::string name_;
    std::vector<bool> seen_;
    std::vector<std::byte> last_;  // key of the entry met last
};

}  // namespace

void CheckIndex(Inspection& inspection, const TableFacts& facts, std::size_t index)
{
    IndexInspector(inspection, facts, index).Check();
}

}  // namespace jet::check
