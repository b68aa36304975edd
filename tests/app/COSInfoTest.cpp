// SPDX-License-Identifier: Apache-2.0
#include "app/COSInfo.h"

#include "platform/fake/FixedPaths.h"

#include <gtest/gtest.h>

using lodrin::TrimNulls;

TEST(COSInfoTest, TheWindowsDirectoryEndsAtItsFirstNul)
{
    platform::FixedPaths paths;
    paths.windowsDirectory = std::string("C:\\WINNT\0\0\0", 11);
    EXPECT_EQ(lodrin::COSInfo(paths).WindowsDirectory(), "C:\\WINNT");
}

TEST(COSInfoTest, TextIsCutAtItsFirstNul)
{
    EXPECT_EQ(TrimNulls("abc"), "abc");
    EXPECT_EQ(TrimNulls(std::string("a\0b\0", 4)), "a");
    EXPECT_EQ(TrimNulls(std::string("\0abc", 4)), "");
    EXPECT_EQ(TrimNulls(""), "");
}
