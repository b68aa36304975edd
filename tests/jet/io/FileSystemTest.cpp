// SPDX-License-Identifier: Apache-2.0
// What holds for every file system: the machine's own, the one in memory, and the one that fails.
#include "jet/io/MemoryFile.h"
#include "jet/io/StdFile.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/Samples.h"

#include <array>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using jet::io::FileSystem;
using jet::io::LockKind;
using jet::io::OpenMode;
using tests::ErrorOf;

std::vector<std::byte> Bytes(std::string_view text)
{
    std::vector<std::byte> bytes(text.size());
    std::memcpy(bytes.data(), text.data(), text.size());
    return bytes;
}

std::string Text(const jet::io::File& file)
{
    std::vector<std::byte> bytes(static_cast<std::size_t>(file.Size()));
    file.Read(0, bytes);
    std::string text(bytes.size(), ' ');
    std::memcpy(text.data(), bytes.data(), bytes.size());
    return text;
}

enum class Kind { Std, Memory, Fault };

class FileSystemTest : public testing::TestWithParam<Kind> {
protected:
    FileSystemTest()
    {
        if (GetParam() == Kind::Std) {
            files_ = std::make_unique<jet::io::StdFileSystem>();
        } else {
            files_ = std::make_unique<jet::io::MemoryFileSystem>();
        }
        if (GetParam() == Kind::Fault) {
            below_ = std::move(files_);
            files_ = std::make_unique<tests::FaultFileSystem>(*below_);
        }
    }

    [[nodiscard]] std::string Path(const char* name) const
    {
        return (folder_.Path() / name).string();
    }

    void Make(const char* name, std::string_view content)
    {
        files_->Create(Path(name))->Write(0, Bytes(content));
    }

    tests::ScratchFolder folder_;
    std::unique_ptr<FileSystem> below_;
    std::unique_ptr<FileSystem> files_;
};

INSTANTIATE_TEST_SUITE_P(All, FileSystemTest,
                         testing::Values(Kind::Std, Kind::Memory, Kind::Fault));

TEST_P(FileSystemTest, WhatIsWrittenIsThereAfterReopening)
{
    Make("a.mdb", "first");
    EXPECT_EQ(Text(*files_->Open(Path("a.mdb"), OpenMode::ReadOnly)), "first");
}

TEST_P(FileSystemTest, WritingBeyondTheEndFillsTheGapWithZeros)
{
    const auto file = files_->Create(Path("a.mdb"));
    file->Write(3, Bytes("x"));
    EXPECT_EQ(Text(*file), std::string("\0\0\0x", 4));
}

TEST_P(FileSystemTest, TwoOpeningsShareOneContent)
{
    Make("a.mdb", "old");
    const auto one = files_->Open(Path("a.mdb"), OpenMode::ReadWrite);
    const auto other = files_->Open(Path("a.mdb"), OpenMode::ReadOnly);
    one->Write(0, Bytes("new"));
    EXPECT_EQ(Text(*other), "new");
}

TEST_P(FileSystemTest, TruncateCutsAndLengthens)
{
    Make("a.mdb", "abcdef");
    const auto file = files_->Open(Path("a.mdb"), OpenMode::ReadWrite);
    file->Truncate(2);
    EXPECT_EQ(Text(*file), "ab");
    file->Truncate(4);
    EXPECT_EQ(Text(*file), std::string("ab\0\0", 4));
}

TEST_P(FileSystemTest, ReadingBeyondTheEndIsADiskError)
{
    Make("a.mdb", "abc");
    const auto file = files_->Open(Path("a.mdb"), OpenMode::ReadOnly);
    std::array<std::byte, 4> four{};
    EXPECT_EQ(ErrorOf([&] { file->Read(0, four); }), 3043);
    EXPECT_EQ(ErrorOf([&] { file->Read(100, four); }), 3043);
}

TEST_P(FileSystemTest, AMissingFileIs3024)
{
    EXPECT_EQ(ErrorOf([&] { (void)files_->Open(Path("no.mdb"), OpenMode::ReadOnly); }), 3024);
}

TEST_P(FileSystemTest, AFileThatExistsIsNotMadeAnew)
{
    Make("a.mdb", "kept");
    EXPECT_EQ(ErrorOf([&] { (void)files_->Create(Path("a.mdb")); }), 3204);
    EXPECT_EQ(Text(*files_->Open(Path("a.mdb"), OpenMode::ReadOnly)), "kept");
}

TEST_P(FileSystemTest, AFileOpenedForReadingIsNotWritten)
{
    Make("a.mdb", "kept");
    const auto file = files_->Open(Path("a.mdb"), OpenMode::ReadOnly);
    EXPECT_EQ(ErrorOf([&] { file->Write(0, Bytes("lost")); }), 3027);
    EXPECT_EQ(ErrorOf([&] { file->Truncate(0); }), 3027);
    EXPECT_EQ(Text(*file), "kept");
}

TEST_P(FileSystemTest, RemovedFilesAreGone)
{
    Make("a.mdb", "x");
    files_->Remove(Path("a.mdb"));
    EXPECT_FALSE(files_->Exists(Path("a.mdb")));
    EXPECT_NO_THROW(files_->Remove(Path("a.mdb")));
}

TEST_P(FileSystemTest, RenamingReplacesTheTarget)
{
    Make("a.mdb", "a");
    Make("b.mdb", "b");
    files_->Rename(Path("a.mdb"), Path("b.mdb"));
    EXPECT_FALSE(files_->Exists(Path("a.mdb")));
    EXPECT_EQ(Text(*files_->Open(Path("b.mdb"), OpenMode::ReadOnly)), "a");
}

TEST_P(FileSystemTest, AnOpenFileOutlivesItsName)
{
    Make("a.mdb", "still here");
    const auto file = files_->Open(Path("a.mdb"), OpenMode::ReadOnly);
    files_->Remove(Path("a.mdb"));
    EXPECT_EQ(Text(*file), "still here");
}

// Locks exist on the machine's own files; elsewhere there is no second program.
class StdFileTest : public testing::Test {
protected:
    [[nodiscard]] std::string Path(const char* name) const
    {
        return (folder_.Path() / name).string();
    }

    tests::ScratchFolder folder_;
    jet::io::StdFileSystem files_;
};

TEST_F(StdFileTest, AnExclusiveLockKeepsOthersOut)
{
    const auto one = files_.Create(Path("a.ldb"));
    const auto other = files_.Open(Path("a.ldb"), OpenMode::ReadWrite);
    ASSERT_TRUE(one->TryLock(LockKind::Exclusive, 0x10000001, 1));
    EXPECT_FALSE(other->TryLock(LockKind::Exclusive, 0x10000001, 1));
    EXPECT_FALSE(other->TryLock(LockKind::Shared, 0x10000000, 16));
    EXPECT_TRUE(other->TryLock(LockKind::Exclusive, 0x10000002, 1));
    one->Unlock(0x10000001, 1);
    EXPECT_TRUE(other->TryLock(LockKind::Exclusive, 0x10000001, 1));
}

TEST_F(StdFileTest, SharedLocksAgree)
{
    const auto one = files_.Create(Path("a.ldb"));
    const auto other = files_.Open(Path("a.ldb"), OpenMode::ReadWrite);
    EXPECT_TRUE(one->TryLock(LockKind::Shared, 7, 1));
    EXPECT_TRUE(other->TryLock(LockKind::Shared, 7, 1));
    EXPECT_FALSE(other->TryLock(LockKind::Exclusive, 7, 1));
}

TEST_F(StdFileTest, ClosingOneOpeningKeepsTheLocksOfAnother)
{
    const auto one = files_.Create(Path("a.ldb"));
    ASSERT_TRUE(one->TryLock(LockKind::Exclusive, 7, 1));
    files_.Open(Path("a.ldb"), OpenMode::ReadOnly).reset();
    const auto other = files_.Open(Path("a.ldb"), OpenMode::ReadWrite);
    EXPECT_FALSE(other->TryLock(LockKind::Exclusive, 7, 1));
}

TEST_F(StdFileTest, AMissingFolderIs3044)
{
    EXPECT_EQ(ErrorOf([&] { (void)files_.Open(Path("no/a.mdb"), OpenMode::ReadOnly); }), 3044);
    EXPECT_EQ(ErrorOf([&] { (void)files_.Create(Path("no/a.mdb")); }), 3044);
}

TEST_F(StdFileTest, AFolderIsNoFile)
{
    EXPECT_EQ(ErrorOf([&] { (void)files_.Open(folder_.Path().string(), OpenMode::ReadOnly); }),
              3051);
}

TEST_F(StdFileTest, AFileTheSystemProtectsIs3051)
{
    if (::geteuid() == 0) GTEST_SKIP() << "the system protects nothing from this user";
    (void)files_.Create(Path("a.mdb"));
    ASSERT_EQ(::chmod(Path("a.mdb").c_str(), 0400), 0);
    EXPECT_EQ(ErrorOf([&] { (void)files_.Open(Path("a.mdb"), OpenMode::ReadWrite); }), 3051);
}

TEST_F(StdFileTest, TwoSpellingsOfAPathHaveOneCanonicalName)
{
    (void)files_.Create(Path("a.mdb"));
    ASSERT_EQ(::symlink(Path("a.mdb").c_str(), Path("link.mdb").c_str()), 0);
    EXPECT_EQ(files_.Canonical(Path("link.mdb")), files_.Canonical(Path("a.mdb")));
    EXPECT_EQ(files_.Canonical(Path("./a.mdb")), files_.Canonical(Path("a.mdb")));
}

// The double itself, on which all crash tests rely.
class FaultFileSystemTest : public testing::Test {
protected:
    FaultFileSystemTest()
    {
        memory_.Create("a.mdb")->Write(0, Bytes("0000"));
        file_ = disk_.Open("a.mdb", OpenMode::ReadWrite);
    }

    jet::io::MemoryFileSystem memory_;
    tests::FaultFileSystem disk_{memory_};
    std::unique_ptr<jet::io::File> file_;

    [[nodiscard]] std::string Stored() { return Text(*memory_.Open("a.mdb", OpenMode::ReadOnly)); }
};

TEST_F(FaultFileSystemTest, NothingIsStoredAfterTheCut)
{
    disk_.PullThePlugAfter(1);
    file_->Write(0, Bytes("1"));
    EXPECT_EQ(ErrorOf([&] { file_->Write(1, Bytes("2")); }), 3043);
    EXPECT_EQ(ErrorOf([&] { file_->Write(2, Bytes("3")); }), 3043);
    EXPECT_EQ(ErrorOf([&] { disk_.Remove("a.mdb"); }), 3043);
    disk_.Reboot();
    EXPECT_EQ(Stored(), "1000");
    EXPECT_EQ(ErrorOf([&] { file_->Flush(); }), 3043);
}

TEST_F(FaultFileSystemTest, ATornWriteStoresHalf)
{
    disk_.PullThePlugAfter(0, tests::LastWrite::Torn);
    EXPECT_EQ(ErrorOf([&] { file_->Write(0, Bytes("1234")); }), 3043);
    EXPECT_EQ(Stored(), "1200");
}

TEST_F(FaultFileSystemTest, UnconfirmedWritesMayBeLost)
{
    disk_.PullThePlugAfter(4, tests::LastWrite::Whole, tests::Unflushed::Lost);
    file_->Write(0, Bytes("1"));
    file_->Flush();
    file_->Write(1, Bytes("2"));
    file_->Write(3, Bytes("345"));
    EXPECT_EQ(ErrorOf([&] { file_->Flush(); }), 3043);
    disk_.Reboot();
    EXPECT_EQ(Stored(), "1000");
}

TEST_F(FaultFileSystemTest, APlannedFailureHappensOnce)
{
    disk_.FailOnce(0, 3026);
    EXPECT_EQ(ErrorOf([&] { file_->Write(0, Bytes("1")); }), 3026);
    file_->Write(1, Bytes("2"));
    EXPECT_EQ(Stored(), "0200");
}

}  // namespace
