// SPDX-License-Identifier: Apache-2.0
// Pager and WriteSet: pages read, changed all or not at all, and taken from the file's free ones.
#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
#include "jet/io/MemoryFile.h"
#include "jet/pages/FreePages.h"
#include "jet/pages/UsageMap.h"

#include <gtest/gtest.h>
#include <set>

namespace jet::pages {

namespace {

class PagerTest : public testing::TestWithParam<const format::FileVersion*> {
protected:
    io::MemoryFileSystem files_;
    std::shared_ptr<Pager> pager_ = Pager::Create(files_, "shop.mdb", *GetParam());
};
INSTANTIATE_TEST_SUITE_P(Versions, PagerTest, testing::Values(&format::kJet3, &format::kJet4),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param->name[0]);
                         });

TEST_P(PagerTest, CommittedPagesAreThereForTheNextOpener)
{
    PageNumber page{};
    {
        WriteSet changes(*pager_);
        page = changes.Allocate();
        format::WriteU32(changes.Change(page), 0, 0x0102);
        format::WriteU32(changes.Change(page), 8, 4711);
        changes.Commit();
    }
    pager_ = Pager::Open(files_, "shop.mdb", io::OpenMode::ReadWrite);
    EXPECT_EQ(format::ReadU32(pager_->Read(page).Bytes(), 8), 4711U);
    EXPECT_FALSE(IsFreePage(*pager_, page));
}

TEST_P(PagerTest, AnAbandonedSetLeavesTheFileAsItWas)
{
    const std::vector<std::byte> before = files_.Content("shop.mdb");
    {
        WriteSet changes(*pager_);
        const PageNumber page = changes.Allocate();
        EXPECT_EQ(pager_->PageCount(), 3U);
        format::WriteU32(changes.Change(page), 8, 1);
    }
    EXPECT_EQ(pager_->PageCount(), 2U);
    EXPECT_EQ(files_.Content("shop.mdb"), before);
}

TEST_P(PagerTest, AnOpenSetIsSeenByReaders)
{
    WriteSet changes(*pager_);
    const PageNumber page = changes.Allocate();
    format::WriteU32(changes.Change(page), 8, 42);
    EXPECT_EQ(format::ReadU32(pager_->Read(page).Bytes(), 8), 42U);
}

TEST_P(PagerTest, FreedPagesAreTakenAgainBeforeTheFileGrows)
{
    PageNumber first{};
    {
        WriteSet changes(*pager_);
        first = changes.Allocate();
        (void)changes.Allocate();
        changes.Commit();
    }
    {
        WriteSet changes(*pager_);
        changes.Free(first);
        changes.Commit();
    }
    WriteSet changes(*pager_);
    EXPECT_EQ(changes.Allocate(), first);
    EXPECT_THROW(changes.Free(PageNumber{900}), base::NumberedError);
}

TEST_P(PagerTest, TheMapOfFreePagesFollowsAFileOfThirtyFourThousandPages)
{
    constexpr std::uint32_t count = 34000;
    for (std::uint32_t made = 0; made < count;) {
        WriteSet changes(*pager_);
        for (int i = 0; i < 10000; ++i, ++made) {
            const PageNumber page = changes.Allocate();
            format::WriteU32(changes.Change(page), 0, 0x0102);
        }
        changes.Commit();
    }
    EXPECT_GE(pager_->PageCount(), count + 2);
    for (std::uint32_t page = 2; page < pager_->PageCount(); page += 97) {
        EXPECT_FALSE(IsFreePage(*pager_, PageNumber{page})) << page;
    }
    WriteSet changes(*pager_);
    changes.Free(PageNumber{33000});
    EXPECT_TRUE(IsFreePage(*pager_, PageNumber{33000}));
    EXPECT_EQ(changes.Allocate(), PageNumber{33000});
}

TEST_P(PagerTest, AUsageMapHoldsWhatWasAddedWhateverItsForm)
{
    WriteSet changes(*pager_);
    const PageNumber home = changes.Allocate();
    format::FormatDataPage(changes.Change(home), 0);
    const format::RowId where = UsageMap::Make(changes, home);
    UsageMap map(*pager_, where);
    std::set<std::uint32_t> model;
    for (const std::uint32_t page : {900U, 904U, 2000U, 100U, 40000U, 70000U, 7U, 30000U}) {
        map.Add(changes, PageNumber{page});
        model.insert(page);
        std::set<std::uint32_t> found;
        for (const PageNumber member : map.Pages())
            found.insert(Raw(member));
        EXPECT_EQ(found, model);
        EXPECT_TRUE(map.Contains(PageNumber{page}));
    }
    EXPECT_EQ(map.Last(), PageNumber{70000});
    map.Remove(changes, PageNumber{70000});
    EXPECT_FALSE(map.Contains(PageNumber{70000}));
    EXPECT_EQ(map.Last(), PageNumber{40000});
}

}  // namespace

}  // namespace jet::pages
