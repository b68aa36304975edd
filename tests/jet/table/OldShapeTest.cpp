// SPDX-License-Identifier: Apache-2.0
// OldShapeTest: rows that were written before fields were added to their table and removed from it.
#include "jet/catalog/TableMaker.h"
#include "jet/table/DefinitionPages.h"
#include "tests/jet/table/TableFixture.h"

#include <algorithm>

namespace {

using jet::format::ColumnDefinition;
using jet::format::TableDefinition;
using tests::Assignments;
using tests::Column;
using tests::ColumnType;
using tests::NativeTable;
using tests::RowId;
using tests::RowValues;
using tests::Value;

// Another program changes the table's design; nothing of a row is touched.
class OldShapeTest : public tests::TableFixture,
                     public testing::WithParamInterface<const jet::format::FileVersion*> {
protected:
    OldShapeTest() : TableFixture(*GetParam())
    {
        jet::catalog::NewTable design;
        design.name = "Jobs";
        design.columns = {Column("ID", ColumnType::Long), Column("Hours", ColumnType::Double),
                          Column("Name", ColumnType::Text, 50),
                          Column("Town", ColumnType::Text, 50), Column("Note", ColumnType::Memo)};
        jobs_ = Make(design);
        first_ = jobs_->Insert(Assignments({1, 1.5, "Ann", "York", "short"}));
        jobs_->Insert(Assignments({2, 2.5, "Bob", {}, std::string(3000, 'n')}));
        definition_ = jobs_->Definition();
        columns_ = definition_.columns;
    }

    // A field such as the others of its kind, under the next number.
    void AddField(const char* name, const ColumnDefinition& like)
    {
        ColumnDefinition column = like;
        column.name = name;
        column.number = definition_.columnCounter++;
        column.ordinal = column.number;
        if (column.fixed) {
            std::size_t end = 0;
            for (const ColumnDefinition& other : definition_.columns)
                if (other.fixed && other.type != ColumnType::Boolean)
                    end = std::max(end, std::size_t{other.fixedOffset} + other.length);
            column.fixedOffset = static_cast<std::uint16_t>(end);
        } else {
            column.variableIndex = definition_.variableColumnCounter++;
        }
        definition_.columns.push_back(column);
    }

    void RemoveField(const char* name)
    {
        std::erase_if(definition_.columns,
                      [name](const auto& column) { return column.name == name; });
    }

    void Redesign()
    {
        jet::pages::WriteSet changes(*pager_);
        const std::uint32_t rows = jet::table::StoredRowCount(*pager_, definition_.page);
        jet::catalog::WriteDefinition(changes, definition_);
        const auto written = jet::table::StoredRowCount(*pager_, definition_.page);
        jet::table::ChangeRowCount(changes, definition_.page,
                                   static_cast<std::int32_t>(rows - written));
        changes.Commit();
        jobs_ = std::make_unique<NativeTable>(pager_, definition_.page);
    }

    [[nodiscard]] RowValues RowNumber(std::size_t place) const
    {
        return tests::Scanned(*jobs_).at(place).values;
    }

    std::unique_ptr<NativeTable> jobs_;
    RowId first_;
    TableDefinition definition_;
    std::vector<ColumnDefinition> columns_;
};
INSTANTIATE_TEST_SUITE_P(Versions, OldShapeTest,
                         testing::Values(&jet::format::kJet3, &jet::format::kJet4),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param->name[0]);
                         });

TEST_P(OldShapeTest, FieldsAddedLaterAreNull)
{
    AddField("Rate", columns_[1]);
    AddField("Street", columns_[2]);
    ColumnDefinition done = columns_[0];
    done.type = ColumnType::Boolean;
    AddField("Done", done);
    Redesign();
    EXPECT_EQ(RowNumber(0), (RowValues{1, 1.5, "Ann", "York", "short", {}, {}, false}));
    EXPECT_EQ(RowNumber(1), (RowValues{2, 2.5, "Bob", {}, std::string(3000, 'n'), {}, {}, false}));

    const std::vector<jet::table::Assignment> values{{5, 7.25}, {6, "High Street"}, {7, true}};
    jobs_->Update(first_, values);
    jobs_->Insert(Assignments({3, 3.5, "Cid", "Hull", {}, 8.25, "Low Road", true}));
    EXPECT_EQ(RowNumber(0), (RowValues{1, 1.5, "Ann", "York", "short", 7.25, "High Street", true}));
    EXPECT_EQ(RowNumber(1), (RowValues{2, 2.5, "Bob", {}, std::string(3000, 'n'), {}, {}, false}));
    EXPECT_EQ(RowNumber(2), (RowValues{3, 3.5, "Cid", "Hull", {}, 8.25, "Low Road", true}));
}

TEST_P(OldShapeTest, FieldsRemovedLeaveTheOthersInTheirPlaces)
{
    RemoveField("Hours");
    RemoveField("Name");
    Redesign();
    EXPECT_EQ(RowNumber(0), (RowValues{1, "York", "short"}));
    jobs_->Insert(Assignments({3, "Hull", "new"}));
    const std::vector<jet::table::Assignment> values{{1, "Leeds"}};
    jobs_->Update(first_, values);
    EXPECT_EQ(RowNumber(0), (RowValues{1, "Leeds", "short"}));
    EXPECT_EQ(RowNumber(1), (RowValues{2, {}, std::string(3000, 'n')}));
    EXPECT_EQ(RowNumber(2), (RowValues{3, "Hull", "new"}));
}

// Their first rows have no table of offsets; what they end with is no number of texts.
TEST_P(OldShapeTest, TableWithoutTextsGetsOneLosesItAndGetsAnother)
{
    jet::catalog::NewTable design;
    design.name = "Times";
    design.columns = {Column("ID", ColumnType::Long), Column("Hours", ColumnType::Double)};
    jobs_ = Make(design);
    // Numbers whose last bytes could be taken for a count of offsets and for offsets.
    const RowId first = jobs_->Insert(Assignments({1, 0x1.0004000500060p+1}));
    jobs_->Insert(Assignments({2, -1e300}));
    definition_ = jobs_->Definition();
    AddField("Name", columns_[2]);
    Redesign();
    jobs_->Insert(Assignments({3, 3.5, "Cid"}));
    EXPECT_EQ(RowNumber(0), (RowValues{1, 0x1.0004000500060p+1, {}}));
    EXPECT_EQ(RowNumber(2), (RowValues{3, 3.5, "Cid"}));
    definition_ = jobs_->Definition();
    RemoveField("Name");
    Redesign();
    EXPECT_EQ(RowNumber(0), (RowValues{1, 0x1.0004000500060p+1}));
    EXPECT_EQ(RowNumber(2), (RowValues{3, 3.5}));
    jobs_->Insert(Assignments({4, 4.5}));
    definition_ = jobs_->Definition();
    AddField("Town", columns_[3]);
    AddField("Note", columns_[3]);
    Redesign();
    EXPECT_EQ(RowNumber(0), (RowValues{1, 0x1.0004000500060p+1, {}, {}}));
    EXPECT_EQ(RowNumber(1), (RowValues{2, -1e300, {}, {}}));
    EXPECT_EQ(RowNumber(2), (RowValues{3, 3.5, {}, {}}));
    EXPECT_EQ(RowNumber(3), (RowValues{4, 4.5, {}, {}}));
    const std::vector<jet::table::Assignment> values{{2, "York"}};
    jobs_->Update(first, values);
    jobs_->Insert(Assignments({5, 5.5, "Hull", "x"}));
    EXPECT_EQ(RowNumber(0), (RowValues{1, 0x1.0004000500060p+1, "York", {}}));
    EXPECT_EQ(RowNumber(4), (RowValues{5, 5.5, "Hull", "x"}));
    // A field that tells of rows as old as that.
    definition_ = jobs_->Definition();
    RemoveField("Hours");
    Redesign();
    EXPECT_EQ(RowNumber(1), (RowValues{2, {}, {}}));
}

TEST_P(OldShapeTest, RemovedAndAddedAgainIsAnotherField)
{
    RemoveField("Name");
    AddField("Name", columns_[2]);
    Redesign();
    RemoveField("Hours");
    AddField("Hours", columns_[1]);
    Redesign();
    EXPECT_EQ(RowNumber(0), (RowValues{1, "York", "short", {}, {}}));
    const std::vector<jet::table::Assignment> values{{3, "Dora"}, {4, 9.0}};
    jobs_->Update(first_, values);
    EXPECT_EQ(RowNumber(0), (RowValues{1, "York", "short", "Dora", 9.0}));
    EXPECT_EQ(RowNumber(1), (RowValues{2, {}, std::string(3000, 'n'), {}, {}}));
}

}  // namespace
