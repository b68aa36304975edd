// SPDX-License-Identifier: Apache-2.0
// The disk of the simulated power cuts loses and reorders what was not flushed, and nothing else.
#include "tests/support/UnflushedWrites.h"

#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/FaultFileSystem.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using namespace tests;
using jet::io::OpenMode;

constexpr const char* kFile = "shop.mdb";
constexpr std::uint32_t kSeeds = 400;

std::vector<std::byte> Filled(std::size_t count, int value)
{
    return std::vector<std::byte>(count, static_cast<std::byte>(value));
}

// What the disk holds after `work` and a cut: one letter for each sector, its size, "-" for no
// file.
template <class Work>
std::set<std::string> Outcomes(Work work)
{
    std::set<std::string> outcomes;
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        jet::io::MemoryFileSystem memory;
        memory.Create(kFile)->Write(0, Filled(1024, 'a'));
        FaultFileSystem disk(memory);
        disk.PutUnflushedAtRisk(seed);
        work(disk);
        disk.Reboot();
        std::string outcome = "-";
        if (memory.Exists(kFile)) {
            const std::vector<std::byte>& content = memory.Content(kFile);
            outcome.clear();
            for (std::size_t at = 0; at < content.size(); at += 512)
                outcome += content[at] == std::byte{0} ? '0' : static_cast<char>(content[at]);
        }
        outcomes.insert(outcome);
    }
    return outcomes;
}

using Found = std::set<std::string>;

TEST(UnflushedWritesTest, EachSectorIsLostOrStoredForItself)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) {
                  disk.Open(kFile, OpenMode::ReadWrite)->Write(0, Filled(1024, 'b'));
              }),
              (Found{"aa", "ab", "ba", "bb"}));
}

TEST(UnflushedWritesTest, ALaterWriteMayBeStoredWithoutAnEarlierOne)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) {
                  const auto file = disk.Open(kFile, OpenMode::ReadWrite);
                  file->Write(0, Filled(512, 'b'));
                  file->Write(512, Filled(512, 'c'));
              }),
              (Found{"aa", "ba", "ac", "bc"}));
}

TEST(UnflushedWritesTest, AFlushConfirmsWhatWasWrittenBefore)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) {
                  const auto file = disk.Open(kFile, OpenMode::ReadWrite);
                  file->Write(0, Filled(512, 'b'));
                  file->Flush();
                  file->Write(512, Filled(512, 'c'));
              }),
              (Found{"ba", "bc"}));
}

TEST(UnflushedWritesTest, AFileGrowsWithoutWhatWasWrittenThere)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) {
                  const auto file = disk.Open(kFile, OpenMode::ReadWrite);
                  file->Write(1024, Filled(512, 'b'));
                  file->Write(1536, Filled(512, 'c'));
              }),
              (Found{"aa", "aab", "aabc", "aa0c", "aa00", "aab0"}));
}

TEST(UnflushedWritesTest, ACutFileMayComeBackLong)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) {
                  disk.Open(kFile, OpenMode::ReadWrite)->Truncate(512);
              }),
              (Found{"aa", "a"}));
}

TEST(UnflushedWritesTest, ANameThatWasTakenAwayMayComeBack)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) { disk.Remove(kFile); }), (Found{"aa", "-"}));
}

TEST(UnflushedWritesTest, ANewFileMayBeGoneOrEmptyOrTheFormerOne)
{
    const auto replace = [](FaultFileSystem& disk) {
        disk.Remove(kFile);
        disk.Create(kFile)->Write(0, Filled(512, 'n'));
    };
    EXPECT_EQ(Outcomes(replace), (Found{"aa", "-", "", "0", "n"}));
    EXPECT_EQ(Outcomes([&](FaultFileSystem& disk) {
                  replace(disk);
                  disk.Open(kFile, OpenMode::ReadWrite)->Flush();
              }),
              (Found{"n"}));
}

TEST(UnflushedWritesTest, AnOperationOfNamesDuringTheCutIsDoneOrNot)
{
    EXPECT_EQ(Outcomes([](FaultFileSystem& disk) {
                  disk.PullThePlugAfter(0, LastWrite::Torn, Unflushed::Shuffled);
                  EXPECT_THROW(disk.Rename(kFile, "other"), base::NumberedError);
              }),
              (Found{"aa", "-"}));
}

}  // namespace
