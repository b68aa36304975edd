// SPDX-License-Identifier: Apache-2.0
#include "jet/check/IndexCheck.h"

#include "jet/check/IndexTree.h"
#include "jet/check/MapCheck.h"

#include <algorithm>

namespace jet::check {

namespace {

using format::IndexDefinition;
using format::Span;

class IndexInspector {
public:
    IndexInspector(Inspection& inspection, const TableFacts& facts, std::size_t place,
                   const ExpectedEntries& expected)
        : inspection_(inspection), facts_(facts), index_(facts.definition.indexes[place]),
          expected_(expected), maker_(facts.definition, index_), name_(NameOfTree(place))
    {
    }

    void Check()
    {
        const PageNumber table = facts_.definition.page;
        const auto owned = ReadMap(inspection_, index_.usageMap, table, table, "map of " + name_);
        IndexTree tree(inspection_, facts_.definition, index_, name_,
                       [this](Span entry, bool repeats) { CountEntry(entry, repeats); });
        tree.Walk();
        const bool asExpected = tree.Whole() && !repeated_ && expected_.Agree(met_);
        if (!asExpected) CompareEntries(tree);
        if (!tree.Whole()) return;
        CheckMap(owned, tree.Pages());
        if (!asExpected) FindMissing();
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

    void CountEntry(Span entry, bool repeats)
    {
        expected_.AddMet(entry, met_);
        if (repeats && index_.unique && !repeated_) repeated_ = !HasNull(format::RowPart(entry));
    }

    // Entries of rows with nulls may have one key.
    [[nodiscard]] bool HasNull(RowId row) { return KeyOf(row).anyNull; }

    // Each entry against its row, for what is wrong and where.
    void CompareEntries(const IndexTree& tree)
    {
        seen_.resize(facts_.rows.size());
        tree.ForEachEntry([this](Span entry, PageNumber page) { TakeEntry(entry, page); });
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
        const RowKey expected = KeyOf(row);
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
            const RowKey expected = KeyOf(facts_.rows[i]);
            if (index_.ignoreNulls && expected.allNull) continue;
            inspection_.Found(DefectKind::IndexEntryMissing, facts_.rows[i].page, 0,
                              name_ + ": no entry for row " + RowText(facts_.rows[i]));
        }
    }

    [[nodiscard]] RowKey KeyOf(RowId row) const
    {
        RowKey key;
        if (const auto fetched = facts_.Fetch(inspection_.Pager(), row))
            maker_.Make(fetched->view, key);
        return key;
    }

    Inspection& inspection_;
    const TableFacts& facts_;
    const IndexDefinition& index_;
    const ExpectedEntries& expected_;
    KeyMaker maker_;
    std::string name_;
    EntrySum met_;
    bool repeated_ = false;        // a key that may stand once stands twice
    std::vector<bool> seen_;       // rows that have an entry
    std::vector<std::byte> last_;  // key of the entry met last
};

}  // namespace

void CheckIndex(Inspection& inspection, const TableFacts& facts, std::size_t index,
                const ExpectedEntries& expected)
{
    IndexInspector(inspection, facts, index, expected).Check();
}

}  // namespace jet::check
