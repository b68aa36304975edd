// SPDX-License-Identifier: Apache-2.0
// Which pages an index in memory leads to, and when there is one.
#include "jet/table/DerivedIndex.h"
#include "tests/jet/table/TableFixture.h"

namespace jet::table {
namespace {

using tests::Assignments;
using tests::Column;
using tests::RowValues;
using tests::Value;

class DerivedIndexesTest : public tests::TableFixture {
protected:
    DerivedIndexesTest()
    {
        // The first table of a file stands where a shop's file has its catalog.
        catalog::NewTable first;
        first.name = "First";
        first.columns = {Column("A", tests::ColumnType::Long)};
        static_cast<void>(Make(first));
        catalog::NewTable design;
        design.name = "Jobs";
        design.columns = {Column("EmpID", tests::ColumnType::Long),
                          Column("WorkDate", tests::ColumnType::Date),
                          Column("Note", tests::ColumnType::Text, 100)};
        jobs_ = Make(design);
        // Each employee's rows lie together.
        for (int i = 0; i < 1500; ++i)
            Add(i / 100, i % 10);
    }

    RowId Add(int employee, int day)
    {
        return jobs_->Insert(
            Assignments(RowValues{Value(std::int32_t{employee}), Value(base::Date{40000.0 + day}),
                                  Value(std::string(60, 'x'))}));
    }
    std::optional<std::vector<PageNumber>> PagesOf(const std::vector<Assignment>& keys)
    {
        return indexes_.PagesWith(
            *pager_, std::make_shared<const format::TableDefinition>(jobs_->Definition()), keys);
    }
    static Assignment Employee(int id) { return {0, Value(std::int32_t{id})}; }
    static Assignment Day(int day) { return {1, Value(base::Date{40000.0 + day})}; }
    // The pages on which the employee's rows begin.
    std::vector<PageNumber> TruePages(int employee)
    {
        std::vector<PageNumber> pages;
        for (const auto rows = jobs_->Scan(); rows->Next();)
            if (jobs_->ValueOf(rows->Row(), 0) == Value(std::int32_t{employee}) &&
                (pages.empty() || pages.back() != rows->Id().page))
                pages.push_back(rows->Id().page);
        return pages;
    }

    std::unique_ptr<NativeTable> jobs_;
    DerivedIndexes indexes_;
};

TEST_F(DerivedIndexesTest, IsMadeWhenItIsAskedForTheSecondTime)
{
    EXPECT_EQ(PagesOf({Employee(7)}), std::nullopt);
    EXPECT_EQ(PagesOf({Employee(7)}), TruePages(7));
    EXPECT_EQ(PagesOf({Employee(8)}), TruePages(8));
    EXPECT_EQ(PagesOf({Employee(99)}), std::vector<PageNumber>{});
}

TEST_F(DerivedIndexesTest, WhoDoesWithoutMakesNone)
{
    const auto table = std::make_shared<const format::TableDefinition>(jobs_->Definition());
    const std::vector<Assignment> keys{Employee(7)};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(indexes_.PagesWith(*pager_, table, keys, DerivedIndexes::Missing::DoWithout),
                  std::nullopt);
    static_cast<void>(PagesOf(keys));
    static_cast<void>(PagesOf(keys));
    EXPECT_EQ(indexes_.PagesWith(*pager_, table, keys, DerivedIndexes::Missing::DoWithout),
              TruePages(7));
}

TEST_F(DerivedIndexesTest, EachSetOfColumnsHasOneOfItsOwn)
{
    static_cast<void>(PagesOf({Employee(7)}));
    EXPECT_EQ(PagesOf({Employee(7), Day(3)}), std::nullopt);
    const auto both = PagesOf({Day(3), Employee(7)});
    ASSERT_TRUE(both);
    EXPECT_EQ(*both, TruePages(7));
    EXPECT_EQ(PagesOf({Employee(7), Day(11)}), std::vector<PageNumber>{});
}

TEST_F(DerivedIndexesTest, RowsThatAreAddedAreKnownWithoutAnotherScan)
{
    static_cast<void>(PagesOf({Employee(7)}));
    static_cast<void>(PagesOf({Employee(7)}));
    for (int i = 0; i < 700; ++i)
        Add(7, 1);
    EXPECT_EQ(PagesOf({Employee(7)}), TruePages(7));
}

TEST_F(DerivedIndexesTest, AfterAChangeOfWhichNothingIsKnownAScanComesFirst)
{
    static_cast<void>(PagesOf({Employee(7)}));
    ASSERT_TRUE(PagesOf({Employee(7)}));
    // Another user's word: somebody wrote who tells nothing.
    format::WriteU16(files_.Content(pager_->Path()), 0xE00 + 2 * 9, 0x0177);
    pager_->Refresh();
    EXPECT_EQ(PagesOf({Employee(7)}), std::nullopt);
    EXPECT_EQ(PagesOf({Employee(7)}), TruePages(7));
}

TEST_F(DerivedIndexesTest, NullAndTextAreNoKeys)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(PagesOf({{2, Value("x")}}), std::nullopt);
    jobs_->Insert(Assignments(RowValues{Value(), Value(), Value("nobody")}));
    static_cast<void>(PagesOf({Employee(0)}));
    EXPECT_EQ(PagesOf({Employee(0)}), TruePages(0));
}

TEST_F(DerivedIndexesTest, InsideAWriteSetThereIsNone)
{
    static_cast<void>(PagesOf({Employee(7)}));
    ASSERT_TRUE(PagesOf({Employee(7)}));
    const pages::WriteSet changes(*pager_);
    EXPECT_EQ(PagesOf({Employee(7)}), std::nullopt);
}

}  // namespace
}  // namespace jet::table
