// SPDX-License-Identifier: Apache-2.0
// What the programs of this engine tell each other of their write sets is believed as far as the
// commit words bear it out, and no further.
#include "jet/pages/ChangeLog.h"

#include "jet/io/MemoryFile.h"
#include "jet/pages/RecentChanges.h"
#include "jet/pages/WriteSet.h"

#include <gtest/gtest.h>

namespace jet::pages {

namespace {

using Pages = std::vector<PageNumber>;

class ChangeLogTest : public testing::Test {
protected:
    void Append(std::uint16_t user, std::uint16_t word, Pages pages)
    {
        ChangeLog::Append(*journal_, {user, word, std::move(pages)});
    }
    static CommitWords Words(std::uint16_t first, std::uint16_t second)
    {
        CommitWords words;
        words.Set(1, first);
        words.Set(2, second);
        return words;
    }
    [[nodiscard]] std::optional<Pages> Between(const CommitWords& before,
                                               const CommitWords& after) const
    {
        return ChangeLog(*journal_).RowPagesBetween(before, after);
    }

    io::MemoryFileSystem files_;
    std::unique_ptr<io::File> journal_ = files_.Create("shop.mdb.journal");
};

TEST_F(ChangeLogTest, SetsOfSeveralUsersAreExplainedTogether)
{
    Append(1, 0x0101, {PageNumber{7}, PageNumber{9}});
    Append(2, 0x0201, {PageNumber{9}});
    Append(1, 0x0102, {PageNumber{8}});
    EXPECT_EQ(Between(Words(0x0100, 0x0200), Words(0x0102, 0x0201)),
              (Pages{PageNumber{7}, PageNumber{8}, PageNumber{9}}));
    EXPECT_EQ(Between(Words(0x0101, 0x0201), Words(0x0102, 0x0201)), Pages{PageNumber{8}});
    EXPECT_EQ(Between(Words(0x0102, 0x0201), Words(0x0102, 0x0201)), Pages{});
}

TEST_F(ChangeLogTest, AWordThatNobodyToldOfExplainsNothing)
{
    Append(1, 0x0101, {PageNumber{7}});
    Append(1, 0x0103, {PageNumber{8}});
    EXPECT_EQ(Between(Words(0x0100, 0x0200), Words(0x0103, 0x0200)), std::nullopt);
    EXPECT_EQ(Between(Words(0x0100, 0x0200), Words(0x0101, 0x0201)), std::nullopt);
    EXPECT_EQ(Between(Words(0x0101, 0x0200), Words(0x0100, 0x0200)), std::nullopt);
}

TEST_F(ChangeLogTest, OneWhoIsWritingIsLeftForLater)
{
    Append(1, 0x0101, {PageNumber{7}});
    EXPECT_EQ(Between(Words(0x0100, 0x0200), Words(0x0101, kWritingNow)), Pages{PageNumber{7}});
}

TEST_F(ChangeLogTest, TheWordGoesRoundAfterItsLastValue)
{
    Append(1, 0xFFFF, {PageNumber{7}});
    Append(1, 0x0100, {PageNumber{8}});
    EXPECT_EQ(Between(Words(0xFFFE, 0x0200), Words(0x0100, 0x0200)),
              (Pages{PageNumber{7}, PageNumber{8}}));
}

TEST_F(ChangeLogTest, TheNewestTakesThePlaceOfTheOldest)
{
    for (std::uint16_t i = 1; i <= 200; ++i)
        Append(1, static_cast<std::uint16_t>(0x0100 + i), {PageNumber{i}});
    EXPECT_EQ(journal_->Size(), kChangeLogSize);
    const auto last = static_cast<std::uint16_t>(0x0100 + 200);
    EXPECT_EQ(Between(Words(last - 128, 0), Words(last, 0))->size(), 128U);
    EXPECT_EQ(Between(Words(last - 129, 0), Words(last, 0)), std::nullopt);
}

TEST_F(ChangeLogTest, ASetOfManyPagesIsNotExplained)
{
    Append(1, 0x0101, Pages(6, PageNumber{7}));
    EXPECT_EQ(Between(Words(0x0100, 0), Words(0x0101, 0)), std::nullopt);
    Append(1, 0x0101, Pages(5, PageNumber{7}));
    EXPECT_EQ(Between(Words(0x0100, 0), Words(0x0101, 0)), Pages{PageNumber{7}});
}

TEST_F(ChangeLogTest, AnEntryThatIsHalfWrittenCountsForNone)
{
    Append(1, 0x0101, {PageNumber{7}});
    for (std::size_t at = 32; at < 64; ++at) {
        auto& bytes = files_.Content("shop.mdb.journal");
        bytes[at] ^= std::byte{0x10};
        EXPECT_EQ(Between(Words(0x0100, 0), Words(0x0101, 0)), std::nullopt) << at;
        bytes[at] ^= std::byte{0x10};
    }
    EXPECT_TRUE(Between(Words(0x0100, 0), Words(0x0101, 0)));
}

TEST_F(ChangeLogTest, AnEmptyFileIsAnEmptyLog)
{
    EXPECT_EQ(Between(Words(0x0100, 0), Words(0x0100, 0)), Pages{});
    EXPECT_EQ(Between(Words(0x0100, 0), Words(0x0101, 0)), std::nullopt);
}

TEST(RecentChangesTest, WhatIsKnownIsToldAndWhatIsNotIsNot)
{
    RecentChanges changes;
    changes.Add(Pages{PageNumber{3}});
    changes.Add(Pages{PageNumber{4}, PageNumber{5}});
    EXPECT_EQ(changes.Since(0), (Pages{PageNumber{3}, PageNumber{4}, PageNumber{5}}));
    EXPECT_EQ(changes.Since(2), Pages{});
    EXPECT_EQ(changes.LastUnknown(), 0U);
    changes.Add(std::nullopt);
    changes.Add(Pages{PageNumber{6}});
    EXPECT_EQ(changes.Since(2), std::nullopt);
    EXPECT_EQ(changes.Since(3), Pages{PageNumber{6}});
    EXPECT_EQ(changes.LastUnknown(), 3U);
}

TEST(RecentChangesTest, TheOldestAreForgotten)
{
    RecentChanges changes;
    for (std::uint32_t i = 1; i <= 2000; ++i)
        changes.Add(Pages{PageNumber{i}});
    EXPECT_EQ(changes.Since(2000 - 1024)->size(), 1024U);
    EXPECT_EQ(changes.Since(2000 - 1025), std::nullopt);
    EXPECT_EQ(changes.LastUnknown(), 0U);
}

// Two programs on one file.
class ToldChangesTest : public testing::Test {
protected:
    static constexpr const char* kPath = "shop.mdb";

    void SetUp() override
    {
        const auto pager = Pager::Create(files_, kPath, format::kJet4);
        WriteSet changes(*pager);
        page_ = changes.Allocate();
        MakeRowPage(changes, page_, 5);
        catalog_ = changes.Allocate();
        MakeRowPage(changes, catalog_, 2);
        changes.Commit();
        ours_ = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
        theirs_ = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
    }
    static void MakeRowPage(WriteSet& changes, PageNumber page, std::uint32_t owner)
    {
        const format::MutableSpan bytes = changes.Change(page);
        format::WriteU8(bytes, 0, 1);
        format::WriteU32(bytes, 4, owner);
    }
    static void Put(Pager& pager, PageNumber page, std::uint32_t number)
    {
        Write(pager,
              [&](WriteSet& changes) { format::WriteU32(changes.Change(page), 100, number); });
    }

    io::MemoryFileSystem files_;
    PageNumber page_{}, catalog_{};
    std::shared_ptr<Pager> ours_, theirs_;
};

TEST_F(ToldChangesTest, OnesOwnSetAndThatOfAnotherProgramAreKnown)
{
    const std::uint64_t before = ours_->ChangeCount();
    Put(*ours_, page_, 1);
    Put(*theirs_, page_, 2);
    Put(*theirs_, page_, 3);
    ours_->Refresh();
    EXPECT_GT(ours_->ChangeCount(), before);
    const auto pages = ours_->RowPagesChangedSince(before);
    ASSERT_TRUE(pages);
    for (const PageNumber page : *pages)
        EXPECT_EQ(page, page_);
    EXPECT_FALSE(pages->empty());
}

TEST_F(ToldChangesTest, ASetThatChangesTheCatalogIsUnknownToAll)
{
    Put(*theirs_, catalog_, 2);
    ours_->Refresh();
    EXPECT_EQ(ours_->LastUnknownChange(), ours_->ChangeCount());
    EXPECT_EQ(theirs_->LastUnknownChange(), theirs_->ChangeCount());
}

TEST_F(ToldChangesTest, WhatAProgramWritesThatKnowsNoLogIsUnknown)
{
    const std::uint64_t before = ours_->ChangeCount();
    format::WriteU16(files_.Content(kPath), 0xE00 + 2 * 9, 0x0177);
    ours_->Refresh();
    EXPECT_GT(ours_->ChangeCount(), before);
    EXPECT_EQ(ours_->RowPagesChangedSince(before), std::nullopt);
}

TEST_F(ToldChangesTest, WithoutTheJournalNothingIsKnown)
{
    const std::uint64_t before = ours_->ChangeCount();
    Put(*theirs_, page_, 2);
    files_.Content(JournalPath(kPath)).clear();
    ours_->Refresh();
    EXPECT_EQ(ours_->RowPagesChangedSince(before), std::nullopt);
}

}  // namespace

}  // namespace jet::pages
