// SPDX-License-Identifier: Apache-2.0
// The cache keeps what is asked for and never more than it may.
#include "jet/pages/PagerState.h"

#include <gtest/gtest.h>

namespace jet::pages {

namespace {

std::shared_ptr<const PageBytes> Bytes(std::uint32_t number)
{
    return std::make_shared<const PageBytes>(1, static_cast<std::byte>(number));
}

TEST(PageCacheTest, NeverHoldsMoreThanItMay)
{
    PageCache cache(10);
    for (std::uint32_t number = 0; number < 1000; ++number) {
        cache.Put(PageNumber{number}, Bytes(number));
        ASSERT_LE(cache.Size(), 10U);
        const auto* kept = cache.Find(PageNumber{number});
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ((**kept)[0], static_cast<std::byte>(number));
    }
}

TEST(PageCacheTest, APageThatIsAskedForAgainAndAgainStays)
{
    PageCache cache(10);
    cache.Put(PageNumber{500}, Bytes(500));
    for (std::uint32_t number = 0; number < 100; ++number) {
        cache.Put(PageNumber{number}, Bytes(number));
        ASSERT_NE(cache.Find(PageNumber{500}), nullptr) << number;
    }
}

TEST(PageCacheTest, APageThatWentStaysWithWhoHoldsIt)
{
    PageCache cache(1);
    cache.Put(PageNumber{1}, Bytes(1));
    const std::shared_ptr<const PageBytes> held = *cache.Find(PageNumber{1});
    cache.Put(PageNumber{2}, Bytes(2));
    EXPECT_EQ(cache.Find(PageNumber{1}), nullptr);
    EXPECT_EQ((*held)[0], std::byte{1});
}

TEST(PageCacheTest, IsEmptyOnceCleared)
{
    PageCache cache(10);
    cache.Put(PageNumber{3}, Bytes(3));
    cache.Clear();
    EXPECT_EQ(cache.Size(), 0U);
    EXPECT_EQ(cache.Find(PageNumber{3}), nullptr);
}

}  // namespace

}  // namespace jet::pages
