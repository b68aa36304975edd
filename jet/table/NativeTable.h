// SPDX-License-Identifier: Apache-2.0
// NativeTable: the rows of a table that lies in the database file itself.
#pragma once

#include "jet/pages/WriteSet.h"
#include "jet/table/DerivedIndex.h"
#include "jet/table/LiveDefinition.h"
#include "jet/table/RowRules.h"
#include "jet/table/RowSource.h"

#include <string>

namespace jet::table {

class RowChanges;

class NativeTable : public RowSource {
public:
    // `definition` is the page on which the table's definition begins; `name` is told when the
    // table cannot be written. Errors: 3343.
    NativeTable(std::shared_ptr<pages::Pager> pager, PageNumber definition, std::string name = {});
    ~NativeTable() override;

    // From here on no row is stored against these rules.
    void Obey(std::shared_ptr<const RowRules> rules) { rules_ = std::move(rules); }
    // From here on it uses these, which outlast its being open.
    void Use(std::shared_ptr<DerivedIndexes> indexes) { derived_ = std::move(indexes); }

    [[nodiscard]] const format::TableDefinition& Definition() const override;
    // The definition as the file has it now, the changes of an open write set included.
    [[nodiscard]] std::shared_ptr<const format::TableDefinition> CurrentDefinition() const
    {
        return definition_.Current();
    }
    // The file in which it lies.
    [[nodiscard]] pages::Pager& Pages() const { return *pager_; }
    [[nodiscard]] std::uint32_t RowCount() const override;

    [[nodiscard]] std::unique_ptr<RowCursor> ScanFor(std::span<const Assignment> keys,
                                                     Direction direction) const override;
    [[nodiscard]] std::optional<StoredRow> Fetch(RowId row) const override;
    [[nodiscard]] format::RowView View(const StoredRow& row) const override;
    [[nodiscard]] base::Value ValueOf(const format::RowView& row,
                                      std::size_t column) const override;
    [[nodiscard]] std::optional<std::vector<RowId>>
    FindByKey(std::span<const Assignment> keys) const override;

    [[nodiscard]] std::int32_t NextAutoNumber() override;
    RowId Insert(std::span<const Assignment> values) override;
    void Update(RowId row, std::span<const Assignment> values) override;
    void Delete(RowId row) override;
    void Apply(const std::function<std::vector<Change>()>& make) override;

    // The same as a part of a larger write set, which must be dropped when one of them fails.
    // Requires: `changes` is open on this table's pager.
    RowId Insert(pages::WriteSet& changes, std::span<const Assignment> values);
    void Update(pages::WriteSet& changes, RowId row, std::span<const Assignment> values);
    void Delete(pages::WriteSet& changes, RowId row);

private:
    [[nodiscard]] RowChanges ChangesIn(pages::WriteSet& changes);
    void Write(const std::function<void(pages::WriteSet&)>& change);

    std::shared_ptr<pages::Pager> pager_;
    std::string name_;
    mutable LiveDefinition definition_;
    std::shared_ptr<const RowRules> rules_;  // null: none
    std::shared_ptr<DerivedIndexes> derived_ = std::make_shared<DerivedIndexes>();
};

}  // namespace jet::table
