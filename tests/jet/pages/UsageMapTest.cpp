// SPDX-License-Identifier: Apache-2.0
// Usage maps and free pages against a model, with random pages and every form.
#include "jet/pages/UsageMap.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
#include "jet/io/MemoryFile.h"
#include "jet/pages/FreePages.h"
#include "jet/pages/MapRow.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace jet::pages {

namespace {

// Bytes of a new map, and pages it stands for.
struct NewMap {
    const format::FileVersion* version;
    std::size_t bytes;
    std::uint32_t pages;
};

class UsageMapTest : public testing::TestWithParam<NewMap> {
protected:
    io::MemoryFileSystem files_;
    std::shared_ptr<Pager> pager_ = Pager::Create(files_, "shop.mdb", *GetParam().version);

    static PageNumber MapPage(WriteSet& changes)
    {
        const PageNumber page = changes.Allocate();
        format::FormatDataPage(changes.Change(page), 0);
        return page;
    }

    [[nodiscard]] MapForm Form(format::RowId where) const
    {
        return FormOf(MapBytes(pager_->Read(where.page), where));
    }

    static std::set<std::uint32_t> Members(const UsageMap& map)
    {
        std::set<std::uint32_t> members;
        for (const PageNumber page : map.Pages())
            members.insert(Raw(page));
        return members;
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, UsageMapTest,
                         testing::Values(NewMap{&format::kJet3, 133, 1024},
                                         NewMap{&format::kJet4, 69, 512}),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param.version->name[0]);
                         });

TEST_P(UsageMapTest, AgreesWithASetWhateverIsAddedAndRemoved)
{
    std::mt19937 random(7);
    for (const std::uint32_t reach : {100U, 600U, 5000U, 60000U}) {
        WriteSet changes(*pager_);
        const PageNumber home = MapPage(changes);
        std::vector<UsageMap> maps;
        std::vector<std::set<std::uint32_t>> models(3);
        for (std::size_t i = 0; i < models.size(); ++i)
            maps.emplace_back(*pager_, UsageMap::Make(changes, home));
        for (int step = 0; step < 400; ++step) {
            const std::size_t which = random() % maps.size();
            const auto page = static_cast<std::uint32_t>(2 + random() % reach);
            if (random() % 3 != 0) {
                maps[which].Add(changes, PageNumber{page});
                models[which].insert(page);
            } else {
                maps[which].Remove(changes, PageNumber{page});
                models[which].erase(page);
            }
            ASSERT_EQ(maps[which].Contains(PageNumber{page}), models[which].contains(page));
        }
        for (std::size_t i = 0; i < maps.size(); ++i) {
            EXPECT_EQ(Members(maps[i]), models[i]) << reach;
            EXPECT_EQ(Raw(maps[i].Last()), models[i].empty() ? 0 : *models[i].rbegin());
        }
    }
}

TEST_P(UsageMapTest, AnInlineMapGrowsByTheFewestBytes)
{
    WriteSet changes(*pager_);
    const format::RowId where = UsageMap::Make(changes, MapPage(changes));
    UsageMap map(*pager_, where);
    map.Add(changes, PageNumber{3});
    const auto [version, bytes, pages] = GetParam();
    map.Add(changes, PageNumber{pages - 1});
    EXPECT_EQ(MapBytes(pager_->Read(where.page), where).size(), bytes);
    map.Add(changes, PageNumber{pages});
    EXPECT_EQ(MapBytes(pager_->Read(where.page), where).size(), bytes + 4);
    map.Add(changes, PageNumber{pages + 248});
    EXPECT_EQ(MapBytes(pager_->Read(where.page), where).size(), bytes + 32);
    EXPECT_EQ(Form(where), MapForm::Inline);
}

TEST_P(UsageMapTest, AnEmptyMapStartsAtItsFirstPage)
{
    WriteSet changes(*pager_);
    const format::RowId where = UsageMap::Make(changes, MapPage(changes));
    UsageMap(*pager_, where).Add(changes, PageNumber{GetParam().pages + 226});
    EXPECT_EQ(format::ReadU32(MapBytes(pager_->Read(where.page), where), 1),
              GetParam().pages + 224);
    EXPECT_EQ(Form(where), MapForm::Inline);
}

TEST_P(UsageMapTest, APageBeforeTheStartMakesItAReference)
{
    WriteSet changes(*pager_);
    const format::RowId where = UsageMap::Make(changes, MapPage(changes));
    UsageMap map(*pager_, where);
    map.Add(changes, PageNumber{GetParam().pages + 226});
    map.Add(changes, PageNumber{20});
    EXPECT_EQ(Form(where), MapForm::Reference);
    EXPECT_EQ(Members(map), (std::set<std::uint32_t>{20, GetParam().pages + 226}));
    EXPECT_EQ(MapBytes(pager_->Read(where.page), where).size(), GetParam().bytes);
}

TEST_P(UsageMapTest, AMapOfUnknownFormIsDamage)
{
    WriteSet changes(*pager_);
    const format::RowId where = UsageMap::Make(changes, MapPage(changes));
    format::RowBytes(changes.Change(where.page), where.slot)[0] = std::byte{9};
    EXPECT_THROW((void)UsageMap(*pager_, where).Pages(), base::NumberedError);
    EXPECT_THROW(UsageMap(*pager_, where).Add(changes, PageNumber{3}), base::NumberedError);
}

TEST_P(UsageMapTest, FreePagesAgreeWithASet)
{
    std::mt19937 random(11);
    std::set<std::uint32_t> stored{0, 1};
    for (int round = 0; round < 20; ++round) {
        WriteSet changes(*pager_);
        std::set<std::uint32_t> used = stored;
        for (int step = 0; step < 60; ++step) {
            if (random() % 3 != 0 || used.size() < 4) {
                std::uint32_t lowest = 0;
                while (used.contains(lowest))
                    ++lowest;
                const PageNumber taken = changes.Allocate();
                ASSERT_EQ(Raw(taken), lowest);
                used.insert(lowest);
            } else {
                auto given = used.begin();
                std::advance(given, 2 + static_cast<std::ptrdiff_t>(random() % (used.size() - 2)));
                changes.Free(PageNumber{*given});
                used.erase(given);
            }
        }
        // Every other set is dropped, and with it what it took and gave.
        if (round % 2 == 1) continue;
        changes.Commit();
        stored = used;
    }
    for (std::uint32_t page = 0; page < pager_->PageCount(); ++page)
        EXPECT_EQ(IsFreePage(*pager_, PageNumber{page}), !stored.contains(page)) << page;
}

TEST_P(UsageMapTest, APageThatIsFreeCannotBeGivenBack)
{
    WriteSet changes(*pager_);
    const PageNumber page = changes.Allocate();
    changes.Free(page);
    EXPECT_THROW(changes.Free(page), base::NumberedError);
    EXPECT_THROW(changes.Free(PageNumber{1}), base::NumberedError);
    EXPECT_THROW(changes.Free(PageNumber{70000}), base::NumberedError);
}

}  // namespace

}  // namespace jet::pages
