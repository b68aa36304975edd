// SPDX-License-Identifier: Apache-2.0
// Tests of jet/format/IndexPage: pages of real files read and written, damaged pages refused.
#include "jet/format/IndexPage.h"

#include "base/NumberedError.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>
#include <random>

namespace jet::format {
namespace {

using tests::FromHex;
using tests::ToHex;

using PageBytes = std::vector<std::byte>;

// A page from the beginnings of its three parts.
PageBytes PageOf(std::string_view header, std::string_view bitmap, std::string_view area)
{
    PageBytes page(kIndexPageJet4.pageSize);
    const auto put = [&page](std::size_t at, std::string_view hex) {
        const std::vector<std::byte> bytes = FromHex(hex);
        std::copy(bytes.begin(), bytes.end(), page.begin() + static_cast<std::ptrdiff_t>(at));
    };
    put(0, header);
    put(kIndexPageJet4.bitmap, bitmap);
    put(kIndexPageJet4.area, area);
    return page;
}

// The first three entries of a compressed leaf of a descending index.
PageBytes CompressedLeaf()
{
    return PageOf("0401 0b0e 0f000000 00000000 00000000 21000000 00000000 0300 00", "008220",
                  "807fffed3200001438 ed3300001437 ed3400001436");
}

TEST(IndexPageTest, LeafOfARealFileIsReadWithItsPrefix)
{
    const PageBytes page = CompressedLeaf();
    const IndexPageView view(page, kIndexPageJet4);
    EXPECT_TRUE(view.IsLeaf());
    EXPECT_EQ(view.Owner(), PageNumber{15});
    EXPECT_EQ(view.Next(), PageNumber{33});
    ASSERT_EQ(view.Count(), 3U);
    EXPECT_EQ(ToHex(view.Entry(0)), "807fffed3200001438");
    EXPECT_EQ(ToHex(view.Entry(1)), "807fffed3300001437");
    EXPECT_EQ(RowPart(view.Entry(2)), (RowId{PageNumber{0x14}, 0x36}));
}

TEST(IndexPageTest, NodeOfARealFileIsReadWithItsChildren)
{
    const PageBytes page = PageOf("0301 130e 0f000000 00000000 00000000 00000000 21000000 0000 01",
                                  "0020", "807fffffec00001100 00000020");
    const IndexPageView view(page, kIndexPageJet4);
    EXPECT_FALSE(view.IsLeaf());
    EXPECT_EQ(view.Level(), 1);
    ASSERT_EQ(view.Count(), 1U);
    EXPECT_EQ(view.Child(0), PageNumber{32});
    EXPECT_EQ(view.Child(1), PageNumber{33});
    EXPECT_EQ(ToHex(SeparatorPart(view.Entry(0))), "807fffffec00001100");
}

TEST(IndexPageTest, LowerBoundFindsTheFirstEntryNotLess)
{
    const PageBytes page = CompressedLeaf();
    const IndexPageView view(page, kIndexPageJet4);
    EXPECT_EQ(view.LowerBound(FromHex("807fffed3300001437")), 1U);
    EXPECT_EQ(view.LowerBound(FromHex("807fffed3300001438")), 2U);
    EXPECT_EQ(view.LowerBound(FromHex("0000000000")), 0U);
    EXPECT_EQ(view.LowerBound(FromHex("ff00001439")), 3U);
}

// Entries of a leaf as they stand in a real file: eight keys of a long column.
TEST(IndexPageTest, WrittenLeafIsByteForByteTheRealOne)
{
    IndexPageContent content;
    content.owner = PageNumber{2};
    for (std::uint32_t i = 0; i < 8; ++i) {
        const std::vector<std::byte> key = {std::byte{0x7F}, std::byte{0x80}, std::byte{0},
                                            std::byte{0}, static_cast<std::byte>(2 + i)};
        content.entries.Append(MakeEntry(key, {PageNumber{14}, static_cast<std::uint16_t>(4 + i)}));
    }
    PageBytes page(4096, std::byte{0xAA});
    WriteIndexPage(page, content, kIndexPageJet4);
    EXPECT_EQ(ToHex(Span(page).first(27)), "0401d80d02000000" + std::string(38, '0'));
    EXPECT_EQ(ToHex(Span(page).subspan(27, 12)), "000204081020408000010000");
    EXPECT_EQ(ToHex(Span(page).subspan(480, 18)), "7f8000000200000e047f8000000300000e05");
}

IndexEntries ManyEntries(std::size_t count, std::size_t keyLength)
{
    IndexEntries entries;
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<std::byte> key(keyLength, std::byte{0x55});
        key[keyLength - 2] = static_cast<std::byte>(i >> 8);
        key[keyLength - 1] = static_cast<std::byte>(i);
        entries.Append(MakeEntry(key, {PageNumber{7}, static_cast<std::uint16_t>(i & 0xFF)}));
    }
    return entries;
}

TEST(IndexPageTest, CrowdedLeafLeavesOutItsPrefixAndReadsBackWhole)
{
    IndexPageContent content;
    content.entries = ManyEntries(300, 100);
    ASSERT_TRUE(Fits(content.entries, true, kIndexPageJet4));
    ASSERT_FALSE(Fits(content.entries, false, kIndexPageJet4));
    PageBytes page(4096);
    WriteIndexPage(page, content, kIndexPageJet4);
    const IndexPageView view(page, kIndexPageJet4);
    EXPECT_EQ(view.PrefixLength(), 98U);
    EXPECT_EQ(view.FreeBytes(), 4096 - 480 - (104 + 299 * 6));
    const IndexPageContent back = IndexPageContent::Of(view);
    ASSERT_EQ(back.entries.Count(), 300U);
    for (std::size_t i = 0; i < 300; ++i)
        ASSERT_EQ(ToHex(back.entries[i]), ToHex(content.entries[i])) << i;
}

// A damaged leaf: what stands between first and last has less in common than they have.
TEST(IndexPageTest, CrowdedLeafOutOfOrderLosesNothingWhenWrittenAnew)
{
    IndexPageContent content;
    content.entries = ManyEntries(50, 100);
    std::vector<std::byte> strange(90, std::byte{0x55});
    strange[60] = std::byte{0x44};
    content.entries.Insert(20, strange);
    ASSERT_GT(content.entries.Size(), kIndexPageJet4.Room());
    ASSERT_TRUE(Fits(content.entries, true, kIndexPageJet4));
    PageBytes page(4096);
    WriteIndexPage(page, content, kIndexPageJet4);
    const IndexPageContent back = IndexPageContent::Of(IndexPageView(page, kIndexPageJet4));
    ASSERT_EQ(back.entries.Count(), content.entries.Count());
    for (std::size_t i = 0; i < back.entries.Count(); ++i)
        ASSERT_EQ(ToHex(back.entries[i]), ToHex(content.entries[i])) << i;
}

TEST(IndexPageTest, LeafWithRoomKeepsItsEntriesWhole)
{
    IndexPageContent content;
    content.entries = ManyEntries(30, 100);
    PageBytes page(4096);
    WriteIndexPage(page, content, kIndexPageJet4);
    EXPECT_EQ(IndexPageView(page, kIndexPageJet4).PrefixLength(), 0U);
}

TEST(IndexPageTest, ChangeInPlaceSaysWhatThePageWrittenAnewSays)
{
    IndexPageContent content;
    content.entries = ManyEntries(300, 100);
    PageBytes page(4096);
    WriteIndexPage(page, content, kIndexPageJet4);
    const std::vector<std::byte> taken(content.entries[7].begin(), content.entries[7].end());
    ASSERT_TRUE(EraseInPlace(page, IndexPageView(page, kIndexPageJet4), 7, kIndexPageJet4));
    content.entries.Erase(7);
    PageBytes anew(4096);
    WriteIndexPage(anew, content, kIndexPageJet4);
    const std::size_t compared = 4096 - IndexPageView(anew, kIndexPageJet4).FreeBytes();
    EXPECT_EQ(ToHex(Span(page).first(compared)), ToHex(Span(anew).first(compared)));
    ASSERT_TRUE(InsertInPlace(page, IndexPageView(page, kIndexPageJet4), 7, taken, kIndexPageJet4));
    EXPECT_EQ(ToHex(IndexPageView(page, kIndexPageJet4).Entry(7)), ToHex(taken));
    EXPECT_EQ(IndexPageView(page, kIndexPageJet4).Count(), 300U);
}

TEST(IndexPageTest, EntryWithoutThePrefixAndTheFirstOneAreNotChangedInPlace)
{
    IndexPageContent content;
    content.entries = ManyEntries(300, 100);
    PageBytes page(4096);
    WriteIndexPage(page, content, kIndexPageJet4);
    const PageBytes before = page;
    const IndexPageView view(page, kIndexPageJet4);
    const std::vector<std::byte> other(104, std::byte{0x56});
    EXPECT_FALSE(InsertInPlace(page, view, 300, other, kIndexPageJet4));
    EXPECT_FALSE(InsertInPlace(page, view, 0, view.Entry(1), kIndexPageJet4));
    EXPECT_FALSE(EraseInPlace(page, view, 0, kIndexPageJet4));
    EXPECT_TRUE(page == before);
}

TEST(IndexPageTest, OneByteOfAFullPageStaysFree)
{
    IndexEntries entries;
    const std::size_t room = kIndexPageJet4.Room();
    entries.Append(std::vector<std::byte>(room - 100, std::byte{1}));
    entries.Append(std::vector<std::byte>(100, std::byte{2}));
    EXPECT_TRUE(Fits(entries, true, kIndexPageJet4));
    entries.Insert(0, std::vector<std::byte>(1, std::byte{0}));
    EXPECT_FALSE(Fits(entries, true, kIndexPageJet4));
}

TEST(IndexPageTest, PageOfTheOlderFormatKeepsItsPrefixInOneByte)
{
    IndexPageContent content;
    content.kind = kIndexNode;
    content.level = 1;
    content.tail = PageNumber{432};
    content.entries.Append(FromHex("7f8000288f0001a52e000001aa"));
    PageBytes page(2048);
    WriteIndexPage(page, content, kIndexPageJet3);
    EXPECT_EQ(ToHex(Span(page).first(4)), "0301fb06");
    EXPECT_EQ(ToHex(Span(page).subspan(16, 8)), "b001000000010020");
    const IndexPageView view(page, kIndexPageJet3);
    EXPECT_EQ(view.PrefixLength(), 0U);
    EXPECT_EQ(view.Child(0), PageNumber{426});
}

void ExpectDamaged(const PageBytes& page)
{
    try {
        const IndexPageView view(page, kIndexPageJet4);
        FAIL() << "read as " << view.Count() << " entries";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 3343);
    }
}

TEST(IndexPageTest, DamagedPagesAreRefused)
{
    PageBytes otherKind = CompressedLeaf();
    otherKind[0] = std::byte{1};
    ExpectDamaged(otherKind);
    PageBytes longPrefix = CompressedLeaf();
    longPrefix[24] = std::byte{10};
    ExpectDamaged(longPrefix);
    PageBytes shortEntry = CompressedLeaf();
    shortEntry[27] = std::byte{4};
    ExpectDamaged(shortEntry);
    PageBytes beyond = CompressedLeaf();
    beyond[479] = std::byte{0x80};
    ExpectDamaged(beyond);
    ExpectDamaged(PageBytes(100, std::byte{4}));
}

TEST(IndexPageTest, RandomBytesAreReadOrRefused)
{
    std::mt19937 random(3);
    for (int i = 0; i < 2000; ++i) {
        PageBytes page = CompressedLeaf();
        for (int change = 0; change < 8; ++change)
            page[random() % 600] = static_cast<std::byte>(random());
        page[0] = std::byte{static_cast<unsigned char>(3 + random() % 2)};
        try {
            const IndexPageView view(page, kIndexPageJet4);
            for (std::size_t at = 0; at < view.Count(); ++at)
                ASSERT_GE(view.Entry(at).size(), 4U);
            ASSERT_LE(view.LowerBound(FromHex("807fffed3300001437")), view.Count());
        } catch (const base::NumberedError& error) {
            ASSERT_EQ(error.Number(), 3343);
        }
    }
}

}  // namespace
}  // namespace jet::format
