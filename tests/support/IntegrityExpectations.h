// SPDX-License-Identifier: Apache-2.0
// IntegrityExpectations: after every test that writes, the file must be sound.
#pragma once

#include "jet/io/File.h"

#include <gtest/gtest.h>
#include <string>

namespace tests {

// No damage; the message lists what was found.
[[nodiscard]] testing::AssertionResult IsClean(jet::io::FileSystem& files, const std::string& path);
// No remark either: every page in use or free, every count exact.
[[nodiscard]] testing::AssertionResult IsSpotless(jet::io::FileSystem& files,
                                                  const std::string& path);

}  // namespace tests

// For a file that others wrote before us.
#define EXPECT_CLEAN(files, path) EXPECT_TRUE(::tests::IsClean(files, path))
// For a file that only we have written.
#define EXPECT_SPOTLESS(files, path) EXPECT_TRUE(::tests::IsSpotless(files, path))
