// SPDX-License-Identifier: Apache-2.0
// StdFilesTest: the small files of the program on a real file system.
#include "platform/StdFiles.h"

#include "platform/HostPath.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Samples.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

using tests::ErrorOf;

namespace fs = std::filesystem;

class StdFilesTest : public ::testing::Test {
protected:
    tests::ScratchFolder folder;
    platform::StdFiles files;

    std::string PathOf(const std::string& name) const { return (folder.Path() / name).string(); }

    int CountOfEntries() const
    {
        int count = 0;
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            count += entry.exists();
        return count;
    }
};

TEST_F(StdFilesTest, WrittenContentIsReadBackByteForByte)
{
    const std::string content("a\r\nb\n\0c", 7);
    files.Write(PathOf("x.ini"), content);
    EXPECT_EQ(files.Read(PathOf("x.ini")), content);
    files.Write(PathOf("x.ini"), "short");
    EXPECT_EQ(files.Read(PathOf("x.ini")), "short");
    EXPECT_EQ(CountOfEntries(), 1);
}

TEST_F(StdFilesTest, AppendedLinesFollowEachOther)
{
    files.Append(PathOf("Lodrin.Log"), "1\r\n");
    files.Append(PathOf("Lodrin.Log"), "2\r\n");
    EXPECT_EQ(files.Read(PathOf("Lodrin.Log")), "1\r\n2\r\n");
}

TEST_F(StdFilesTest, NamesOfAnotherCaseAreTheSameFile)
{
    fs::create_directory(folder.Path() / "Data");
    files.Write(PathOf("Data/Lodrin.ini"), "x");
    EXPECT_TRUE(files.Exists(PathOf("data/lodrin.INI")));
    EXPECT_EQ(files.Read(PathOf("DATA/lodrin.ini")), "x");
    files.Write(PathOf("data/LODRIN.INI"), "y");
    EXPECT_EQ(files.Read(PathOf("Data/Lodrin.ini")), "y");
    EXPECT_FALSE(fs::exists(folder.Path() / "data"));
}

TEST_F(StdFilesTest, FolderIsNoFile)
{
    EXPECT_FALSE(files.Exists(folder.Path().string()));
    EXPECT_FALSE(files.Exists(""));
    EXPECT_EQ(ErrorOf([&] { (void)files.Read(folder.Path().string()); }), 75);
}

TEST_F(StdFilesTest, MissingFileIs53AndMissingFolder76)
{
    EXPECT_EQ(ErrorOf([&] { (void)files.Read(PathOf("no.ini")); }), 53);
    EXPECT_EQ(ErrorOf([&] { (void)files.Read(PathOf("no/no.ini")); }), 76);
    EXPECT_EQ(ErrorOf([&] { files.Append(PathOf("no/no.ini"), "x"); }), 76);
    EXPECT_EQ(ErrorOf([&] { files.Write(PathOf("no/no.ini"), "x"); }), 76);
}

TEST_F(StdFilesTest, ReplacingKeepsThePermissionsOfTheFile)
{
    files.Write(PathOf("x.ini"), "old");
    const fs::perms shared = fs::perms::owner_read | fs::perms::owner_write |
                             fs::perms::group_read | fs::perms::group_write;
    fs::permissions(folder.Path() / "x.ini", shared);
    files.Write(PathOf("x.ini"), "new");
    EXPECT_EQ(fs::status(folder.Path() / "x.ini").permissions(), shared);
}

TEST_F(StdFilesTest, ReplacingAFileBehindALinkKeepsTheLink)
{
    files.Write(PathOf("real.ini"), "old");
    fs::create_symlink(folder.Path() / "real.ini", folder.Path() / "link.ini");
    files.Write(PathOf("link.ini"), "new");
    EXPECT_TRUE(fs::is_symlink(folder.Path() / "link.ini"));
    EXPECT_EQ(files.Read(PathOf("real.ini")), "new");
}

TEST_F(StdFilesTest, LeftOverOfAnInterruptedReplacementIsTakenOver)
{
    std::ofstream(folder.Path() / "x.ini.new") << "half";
    files.Write(PathOf("x.ini"), "whole");
    EXPECT_EQ(files.Read(PathOf("x.ini")), "whole");
    EXPECT_EQ(CountOfEntries(), 1);
}

#ifndef _WIN32
// While it lives no file of this process grows beyond `size` bytes: a write that would is stored up
// to there, and the next one is refused.
class NoRoomBeyond {
public:
    explicit NoRoomBeyond(rlim_t size) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{.rlim_cur = size, .rlim_max = former_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~NoRoomBeyond()
    {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, handler_);
    }
    NoRoomBeyond(const NoRoomBeyond&) = delete;
    NoRoomBeyond& operator=(const NoRoomBeyond&) = delete;

private:
    void (*handler_)(int);
    rlimit former_{};
};

TEST_F(StdFilesTest, RecordThatFindsNoRoomLeavesTheEarlierOnesWhole)
{
    const std::string path = PathOf("Lodrin.Log");
    files.Append(path, "1 whole\r\n");
    {
        const NoRoomBeyond limit(13);
        // The limit is a real one: a plain write is cut short there.
        std::ofstream(PathOf("plain"), std::ios::binary) << "0123456789abcdef" << std::flush;
        ASSERT_EQ(fs::file_size(PathOf("plain")), 13U);
        EXPECT_EQ(ErrorOf([&] { files.Append(path, "2 cut short\r\n"); }), 61);
        EXPECT_EQ(ErrorOf([&] { files.Append(path, std::string(100'000, 'x')); }), 61);
    }
    EXPECT_EQ(files.Read(path), "1 whole\r\n");
    files.Append(path, "3 whole\r\n");
    EXPECT_EQ(files.Read(path), "1 whole\r\n3 whole\r\n");
}

// What a power cut left of a record does not swallow the next one.
TEST_F(StdFilesTest, RecordBehindHalfAOneStartsOnItsOwnLine)
{
    const std::string path = PathOf("Lodrin.Log");
    files.Write(path, "1 whole\r\n2 ha");
    files.Append(path, "3 whole\r\n");
    files.Append(path, "4 whole\r\n");
    EXPECT_EQ(files.Read(path), "1 whole\r\n2 ha\r\n3 whole\r\n4 whole\r\n");
}

TEST_F(StdFilesTest, RecordIsAddedToALogThatMayNotBeRead)
{
    if (geteuid() == 0) GTEST_SKIP() << "the superuser is refused nothing";
    const std::string path = PathOf("Lodrin.Log");
    files.Write(path, "1\r\n");
    fs::permissions(path, fs::perms::owner_write);
    files.Append(path, "2\r\n");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(files.Read(path), "1\r\n2\r\n");
}

TEST_F(StdFilesTest, RefusedFileIs75AndStaysAsItWas)
{
    if (geteuid() == 0) GTEST_SKIP() << "the superuser is refused nothing";
    files.Write(PathOf("x.ini"), "old");
    fs::permissions(folder.Path() / "x.ini", fs::perms::owner_read);
    EXPECT_EQ(ErrorOf([&] { files.Write(PathOf("x.ini"), "new"); }), 75);
    EXPECT_EQ(files.Read(PathOf("x.ini")), "old");
}

TEST_F(StdFilesTest, FolderThatRefusesNewFilesIsWrittenInPlace)
{
    if (geteuid() == 0) GTEST_SKIP() << "the superuser is refused nothing";
    files.Write(PathOf("x.ini"), "old");
    fs::permissions(folder.Path(), fs::perms::owner_read | fs::perms::owner_exec);
    files.Write(PathOf("x.ini"), "new");
    EXPECT_EQ(files.Read(PathOf("x.ini")), "new");
    fs::permissions(folder.Path(), fs::perms::owner_all);
}

TEST_F(StdFilesTest, FullDiskIs61)
{
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "this system has no /dev/full";
    EXPECT_EQ(ErrorOf([&] { files.Append("/dev/full", "x"); }), 61);
}

TEST_F(StdFilesTest, ProgramPathsBecomeHostPaths)
{
    EXPECT_EQ(platform::HostPath("\\Lodrin.Log"), "/Lodrin.Log");
    EXPECT_EQ(platform::HostPath("/srv/shop\\Kelvaro.mdb"), "/srv/shop/Kelvaro.mdb");
}
#endif

TEST_F(StdFilesTest, UnknownPartsOfAPathKeepTheirSpelling)
{
    fs::create_directory(folder.Path() / "Data");
    EXPECT_EQ(platform::ExistingPath(PathOf("data/New.ini")), PathOf("Data/New.ini"));
    EXPECT_EQ(platform::ExistingPath(PathOf("none/New.ini")), PathOf("none/New.ini"));
    EXPECT_EQ(platform::ExistingPath(""), "");
}

}  // namespace
