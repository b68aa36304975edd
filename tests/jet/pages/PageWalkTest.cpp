// SPDX-License-Identifier: Apache-2.0
// Pages walked in a row are the same pages as those read one by one, whatever happens meanwhile.
#include "jet/pages/PageWalk.h"

#include "jet/io/MemoryFile.h"
#include "jet/pages/WriteSet.h"
#include "tests/support/ErrorOf.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace jet::pages {

namespace {

// So many that they are read together.
constexpr std::uint32_t kPages = 200;

class PageWalkTest : public testing::Test {
protected:
    void SetUp() override { Make("shop.mdb", {}); }

    void Make(const std::string& path, const format::Protection& protection)
    {
        pages_.clear();
        auto pager = Pager::Create(files_, path, format::kJet4, protection);
        {
            WriteSet changes(*pager);
            for (std::uint32_t i = 0; i < kPages; ++i) {
                pages_.push_back(changes.Allocate());
                format::WriteU32(changes.Change(pages_.back()), 8, i);
            }
            changes.Commit();
        }
        pager.reset();
        pager_ = Pager::Open(files_, path, io::OpenMode::ReadWrite);
    }

    // What stands on the pages that a walk comes to.
    [[nodiscard]] std::vector<std::uint32_t> Walked(std::vector<PageNumber> pages,
                                                    PageNumber from = PageNumber::None) const
    {
        PageWalk walk(*pager_);
        walk.Begin(std::move(pages), from);
        std::vector<std::uint32_t> numbers;
        while (walk.Next()) {
            EXPECT_EQ(Raw(walk.Number()) - Raw(pages_[0]), format::ReadU32(walk.Bytes(), 8));
            numbers.push_back(format::ReadU32(walk.Bytes(), 8));
        }
        return numbers;
    }
    [[nodiscard]] static std::vector<std::uint32_t> From(std::uint32_t first)
    {
        std::vector<std::uint32_t> numbers;
        for (std::uint32_t i = first; i < kPages; ++i)
            numbers.push_back(i);
        return numbers;
    }
    // How many pages are read together.
    [[nodiscard]] std::size_t TogetherFrom(std::size_t first) const
    {
        std::vector<std::byte> bytes;
        return pager_->ReadTogether(std::span(pages_).subspan(first), bytes);
    }

    io::MemoryFileSystem files_;
    std::shared_ptr<Pager> pager_;
    std::vector<PageNumber> pages_;
};

TEST_F(PageWalkTest, EveryPageIsTheOneThatIsStored)
{
    EXPECT_EQ(Walked(pages_), From(0));
    EXPECT_EQ(TogetherFrom(1), kPages - 1);
}

TEST_F(PageWalkTest, PagesOfAnEncodedFileComeDecoded)
{
    Make("encoded.mdb", {0xA7B773E0, ""});
    EXPECT_EQ(Walked(pages_), From(0));
    EXPECT_EQ(TogetherFrom(1), kPages - 1);
    const std::size_t first = Raw(pages_[0]) * std::size_t{4096};
    EXPECT_NE(files_.Content("encoded.mdb")[first + 12], std::byte{0});
}

TEST_F(PageWalkTest, BeginsAtThePageThatIsNamedOrTheNextOne)
{
    EXPECT_EQ(Walked(pages_, pages_[70]), From(70));
    std::vector<PageNumber> without = pages_;
    without.erase(without.begin() + 70);
    EXPECT_EQ(Walked(without, pages_[70]), From(71));
}

TEST_F(PageWalkTest, PagesThatStandApartAreReadOneByOne)
{
    std::vector<PageNumber> some;
    std::vector<std::byte> bytes;
    for (std::uint32_t i = 0; i < kPages; i += 2)
        some.push_back(pages_[i]);
    EXPECT_EQ(pager_->ReadTogether(some, bytes), 1U);
    EXPECT_EQ(bytes.size(), format::kJet4.pageSize);
}

TEST_F(PageWalkTest, APageThatStandsAloneIsKeptWhenItIsWalkedOverForTheThirdTime)
{
    std::vector<PageNumber> some;
    for (std::uint32_t i = 0; i < kPages; i += 2)
        some.push_back(pages_[i]);
    for (int kept : {0, 0, 0, 1}) {
        const std::size_t at = std::size_t{Raw(some[20])} * format::kJet4.pageSize;
        const std::uint32_t before = format::ReadU32(files_.Content("shop.mdb"), at + 12);
        // Behind the pager's back.
        format::WriteU32(files_.Content("shop.mdb"), at + 12, before + 1);
        PageWalk walk(*pager_);
        walk.Begin(some);
        for (int i = 0; i <= 20; ++i)
            ASSERT_TRUE(walk.Next());
        EXPECT_EQ(format::ReadU32(walk.Bytes(), 12), kept == 1 ? before : before + 1);
    }
}

// Pages before the one at hand may have been given back meanwhile.
TEST_F(PageWalkTest, BeginsAnewAmongFewerPages)
{
    PageWalk walk(*pager_);
    walk.Begin(pages_);
    for (int i = 0; i < 40; ++i)
        ASSERT_TRUE(walk.Next());
    walk.Begin({pages_.begin() + 35, pages_.end()}, pages_[39]);
    for (std::uint32_t i = 39; i < kPages; ++i) {
        ASSERT_TRUE(walk.Next());
        EXPECT_EQ(format::ReadU32(walk.Bytes(), 8), i);
    }
    EXPECT_FALSE(walk.Next());
}

TEST_F(PageWalkTest, ARunEndsWhereAPageIsMissing)
{
    std::vector<PageNumber> odd;
    std::vector<std::uint32_t> expected;
    for (std::uint32_t i = 0; i < kPages; ++i) {
        if (i % 10 == 9) continue;
        odd.push_back(pages_[i]);
        expected.push_back(i);
    }
    EXPECT_EQ(Walked(odd), expected);
}

TEST_F(PageWalkTest, APageOfAnOpenSetIsWalkedAsTheSetHasIt)
{
    WriteSet changes(*pager_);
    format::WriteU32(changes.Change(pages_[4]), 12, 77);
    EXPECT_EQ(TogetherFrom(0), 0U);
    PageWalk walk(*pager_);
    walk.Begin(pages_, pages_[4]);
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(format::ReadU32(walk.Bytes(), 12), 77U);
    EXPECT_EQ(Walked(pages_), From(0));
}

TEST_F(PageWalkTest, WhatOthersStoredIsSeenByTheNextWalk)
{
    EXPECT_EQ(Walked(pages_), From(0));
    const auto other = Pager::Open(files_, "shop.mdb", io::OpenMode::ReadWrite);
    WriteSet changes(*other);
    format::WriteU32(changes.Change(pages_[90]), 12, 77);
    changes.Commit();
    PageWalk walk(*pager_);
    walk.Begin(pages_, pages_[88]);
    ASSERT_TRUE(walk.Next() && walk.Next() && walk.Next());
    EXPECT_EQ(format::ReadU32(walk.Bytes(), 12), 77U);
}

TEST_F(PageWalkTest, AWalkKeepsNoPages)
{
    EXPECT_EQ(Walked(pages_), From(0));
    // Behind the pager's back: what it does not keep it reads again.
    const std::size_t at = std::size_t{Raw(pages_[50])} * format::kJet4.pageSize;
    format::WriteU32(files_.Content("shop.mdb"), at + 12, 99);
    EXPECT_EQ(format::ReadU32(pager_->Read(pages_[50]).Bytes(), 12), 99U);
}

TEST_F(PageWalkTest, AFileThatBecameShorterIsAnErrorWhereItEnds)
{
    files_.Content("shop.mdb").resize(std::size_t{Raw(pages_[60])} * format::kJet4.pageSize);
    PageWalk walk(*pager_);
    walk.Begin(pages_);
    for (std::uint32_t i = 0; i < 60; ++i) {
        ASSERT_TRUE(walk.Next());
        EXPECT_EQ(format::ReadU32(walk.Bytes(), 8), i);
    }
    EXPECT_EQ(tests::ErrorOf([&] { (void)walk.Next(); }), 3043);
}

TEST_F(PageWalkTest, APageBehindTheFilesEndIsDamage)
{
    std::vector<PageNumber> more = pages_;
    more.push_back(PageNumber{pager_->PageCount()});
    PageWalk walk(*pager_);
    walk.Begin(more, pages_.back());
    ASSERT_TRUE(walk.Next());
    EXPECT_EQ(tests::ErrorOf([&] { (void)walk.Next(); }), 3343);
}

}  // namespace

}  // namespace jet::pages
