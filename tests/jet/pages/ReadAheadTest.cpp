// SPDX-License-Identifier: Apache-2.0
// Pages fetched before they are asked for are the same pages, and what cannot be fetched is no
// error.
#include "jet/io/MemoryFile.h"
#include "jet/pages/PagerState.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

namespace jet::pages {

namespace {

class ReadAheadTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto pager = Pager::Create(files_, "shop.mdb", format::kJet4);
        WriteSet changes(*pager);
        for (std::uint32_t i = 0; i < 8; ++i) {
            pages_.push_back(changes.Allocate());
            format::WriteU32(changes.Change(pages_.back()), 8, i);
        }
        changes.Commit();
        pager_ = Pager::Open(files_, "shop.mdb", io::OpenMode::ReadWrite);
    }

    [[nodiscard]] std::uint32_t NumberOn(std::size_t page) const
    {
        return format::ReadU32(pager_->Read(pages_[page]).Bytes(), 8);
    }
    // Changes a page behind the pager's back.
    void Overwrite(std::size_t page, std::uint32_t number)
    {
        const std::size_t at = std::size_t{Raw(pages_[page])} * format::kJet4.pageSize;
        format::WriteU32(files_.Content("shop.mdb"), at + 8, number);
    }

    io::MemoryFileSystem files_;
    std::shared_ptr<Pager> pager_;
    std::vector<PageNumber> pages_;
};

TEST_F(ReadAheadTest, EveryPageIsTheOneThatIsStored)
{
    pager_->Expect(pages_);
    for (std::size_t i = 0; i < pages_.size(); ++i)
        EXPECT_EQ(NumberOn(i), i);
}

TEST_F(ReadAheadTest, PagesOfAnEncodedFileComeDecoded)
{
    const auto pager = Pager::Create(files_, "encoded.mdb", format::kJet4, {0xA7B773E0, ""});
    {
        WriteSet changes(*pager);
        for (std::uint32_t i = 0; i < 8; ++i)
            format::WriteU32(changes.Change(changes.Allocate()), 8, i);
        changes.Commit();
    }
    const auto other = Pager::Open(files_, "encoded.mdb", io::OpenMode::ReadWrite);
    other->Expect(pages_);
    for (std::uint32_t i = 0; i < 8; ++i)
        EXPECT_EQ(format::ReadU32(other->Read(pages_[i]).Bytes(), 8), i);
    const std::size_t first = Raw(pages_[0]) * std::size_t{4096};
    EXPECT_NE(files_.Content("encoded.mdb")[first + 12], std::byte{0});
}

TEST_F(ReadAheadTest, PagesThatFollowEachOtherComeTogether)
{
    pager_->Expect(std::span(pages_).first(3));
    for (std::size_t i = 0; i < pages_.size(); ++i)
        Overwrite(i, 99);
    EXPECT_EQ(NumberOn(2), 2U);
    EXPECT_EQ(NumberOn(3), 99U);
}

TEST_F(ReadAheadTest, TheRunEndsBeforeAPageThatIsKnown)
{
    EXPECT_EQ(NumberOn(2), 2U);
    Overwrite(2, 99);
    pager_->Expect(pages_);
    Overwrite(1, 99);
    Overwrite(3, 99);
    EXPECT_EQ(NumberOn(1), 1U);
    EXPECT_EQ(NumberOn(2), 2U);
    EXPECT_EQ(NumberOn(3), 99U);
}

TEST_F(ReadAheadTest, WhatOthersStoreIsSeenAfterTheNextLook)
{
    pager_->Expect(pages_);
    const auto other = Pager::Open(files_, "shop.mdb", io::OpenMode::ReadWrite);
    WriteSet changes(*other);
    format::WriteU32(changes.Change(pages_[4]), 8, 77);
    changes.Commit();
    pager_->Refresh();
    EXPECT_EQ(NumberOn(4), 77U);
}

TEST_F(ReadAheadTest, APageOfAnOpenSetStaysAsTheSetHasIt)
{
    WriteSet changes(*pager_);
    format::WriteU32(changes.Change(pages_[4]), 8, 77);
    pager_->Expect(pages_);
    EXPECT_EQ(NumberOn(4), 77U);
    EXPECT_EQ(NumberOn(5), 5U);
}

TEST_F(ReadAheadTest, WhatIsNotThereIsNoErrorUntilItIsRead)
{
    const PageNumber behind{pager_->PageCount()};
    const std::vector<PageNumber> next{pages_.back(), behind, PageNumber{Raw(behind) + 1}};
    pager_->Expect(next);
    pager_->Expect(std::span(next).subspan(1));
    pager_->Expect({});
    EXPECT_EQ(tests::ErrorOf([&] { (void)pager_->Read(behind); }), 3343);
}

TEST_F(ReadAheadTest, AFileThatBecameShorterIsNoErrorUntilItIsRead)
{
    files_.Content("shop.mdb").resize(std::size_t{Raw(pages_[2])} * format::kJet4.pageSize);
    pager_->Expect(pages_);
    EXPECT_EQ(NumberOn(0), 0U);
    EXPECT_EQ(tests::ErrorOf([&] { (void)pager_->Read(pages_[2]); }), 3043);
}

}  // namespace

}  // namespace jet::pages
