// SPDX-License-Identifier: Apache-2.0
// RelationshipDamageTest: a relationship whose indexes are damaged is not deleted, and no page is
// given away that may be another's.
#include "jet/catalog/Catalog.h"
#include "jet/catalog/SystemTables.h"
#include "jet/format/DataPage.h"
#include "jet/pages/UsageMap.h"
#include "tests/jet/dao/RelationshipFixture.h"

#include <algorithm>

namespace dao {
namespace {

using jet::format::PageNumber;
using jet::format::RowId;
using jet::format::TableDefinition;
using jet::pages::UsageMap;
using jet::pages::WriteSet;

// The file, opened by one who spoils it.
struct Spoiler {
    std::shared_ptr<jet::pages::Pager> pager;
    WriteSet& changes;

    [[nodiscard]] TableDefinition Table(const char* name) const
    {
        const auto id = jet::catalog::Catalog(pager).Find(name).value().id;
        return jet::table::NativeTable(pager, PageNumber{static_cast<std::uint32_t>(id)})
            .Definition();
    }
    [[nodiscard]] static const jet::format::IndexDefinition& Tree(const TableDefinition& table,
                                                                  const char* index)
    {
        const auto found = std::find_if(table.namedIndexes.begin(), table.namedIndexes.end(),
                                        [index](const auto& named) { return named.name == index; });
        return table.indexes[found->tree];
    }
    // The map of the tree that goes with the relationship.
    [[nodiscard]] RowId Map() const { return Tree(Table("Orders"), "CustomersOrders").usageMap; }
    void Lists(PageNumber page) const { UsageMap(*pager, Map()).Add(changes, page); }
};
using Damage = std::function<void(const Spoiler&)>;

class RelationshipDamageTest : public RelationshipFixture {
protected:
    RelationshipDamageTest()
    {
        Relate(0);
        Fill();
    }

    // The file is as it was afterwards.
    void ExpectKeptAfter(const Damage& damage, const char* relationship = "CustomersOrders")
    {
        database.Close();
        const auto sound = files.Content(kFile);
        {
            const auto pager = jet::pages::Pager::Open(files, kFile, jet::io::OpenMode::ReadWrite);
            jet::pages::Write(*pager, [&](WriteSet& changes) { damage({pager, changes}); });
        }
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
        const auto damaged = files.Content(kFile);
        EXPECT_FALSE(damaged == sound);
        EXPECT_EQ(FailureOf([&] { database.DeleteRelation(relationship); }),
                  "3343 " + base::ErrorText(3343));
        EXPECT_TRUE(files.Content(kFile) == damaged);
        database.Close();
        files.Content(kFile) = sound;
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, RelationshipDamageTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(RelationshipDamageTest, NoPageOfAnotherTableIsGivenAway)
{
    ExpectKeptAfter([](const Spoiler& spoiler) {
        spoiler.Lists(Spoiler::Tree(spoiler.Table("Customers"), "PrimaryKey").root);
    });
    ExpectKeptAfter([](const Spoiler& spoiler) {
        spoiler.Lists(UsageMap(*spoiler.pager, spoiler.Table("Customers").ownedPages).Last());
    });
    ExpectKeptAfter([](const Spoiler& spoiler) { spoiler.Lists(spoiler.Table("Customers").page); });
    // Sound, it goes.
    database.DeleteRelation("CustomersOrders");
}

TEST_P(RelationshipDamageTest, NoPageOfTheTableItselfIsGivenAway)
{
    ExpectKeptAfter([](const Spoiler& spoiler) {
        spoiler.Lists(Spoiler::Tree(spoiler.Table("Orders"), "PrimaryKey").root);
    });
    ExpectKeptAfter([](const Spoiler& spoiler) {
        spoiler.Lists(UsageMap(*spoiler.pager, spoiler.Table("Orders").ownedPages).Last());
    });
}

TEST_P(RelationshipDamageTest, MapWithoutTheRootIsNotTakenAway)
{
    ExpectKeptAfter([](const Spoiler& spoiler) {
        const PageNumber root = Spoiler::Tree(spoiler.Table("Orders"), "CustomersOrders").root;
        UsageMap(*spoiler.pager, spoiler.Map()).Remove(spoiler.changes, root);
    });
}

TEST_P(RelationshipDamageTest, MapSpreadOverPagesThatAreNoneOfAMapIsNotTakenAway)
{
    ExpectKeptAfter([](const Spoiler& spoiler) {
        const RowId map = spoiler.Map();
        const auto row = jet::format::RowBytes(spoiler.changes.Change(map.page), map.slot);
        std::fill(row.begin(), row.end(), std::byte{0});
        row[0] = std::byte{1};
        jet::format::WriteU32(row, 1, Raw(spoiler.Table("Customers").page));
    });
}

TEST_P(RelationshipDamageTest, RelationshipWhoseIndexHasAnotherNameIsKept)
{
    const auto rename = [](const Spoiler& spoiler) {
        jet::table::NativeTable listed(spoiler.pager, jet::catalog::kRelationshipsPage);
        const std::size_t name = jet::catalog::PlaceOf(listed, "szRelationship");
        const auto rows = jet::catalog::RowsWith(listed, "szRelationship", "CustomersOrders");
        ASSERT_EQ(rows.size(), 1U);
        const jet::table::Assignment renamed{name, "OrdersOfCustomers"};
        listed.Update(spoiler.changes, rows[0], {&renamed, 1});
    };
    ExpectKeptAfter(rename, "OrdersOfCustomers");
}

}  // namespace
}  // namespace dao
