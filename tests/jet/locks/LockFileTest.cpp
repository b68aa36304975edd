// SPDX-License-Identifier: Apache-2.0
// The lock file as other programs see it: its entries, and the bytes that are locked when.
#include "jet/io/MemoryFile.h"
#include "jet/io/StdFile.h"
#include "jet/locks/PageLocks.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Samples.h"
#include "tests/support/WatchedFileSystem.h"

#include <gtest/gtest.h>

namespace jet::locks {

namespace {

using io::ByteRange;
using io::LockKind;
using io::OpenMode;
using tests::ErrorOf;

enum class Kind { Machine, Memory };

// Errors as users read them.
std::string TextOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const base::NumberedError& error) {
        return std::to_string(error.Number()) + " " + error.what();
    }
    return "no error";
}

// On the machine's own files and on those in memory.
class LockFileTest : public testing::TestWithParam<Kind> {
protected:
    LockFileTest()
    {
        if (GetParam() == Kind::Machine) {
            files_ = std::make_unique<io::StdFileSystem>();
        } else {
            files_ = std::make_unique<io::MemoryFileSystem>();
        }
    }

    std::shared_ptr<LockFile> Join(const std::string& machine, bool alone = false)
    {
        return std::make_shared<LockFile>(*files_, database_, User{machine, "Admin"}, alone,
                                          pause_);
    }
    // What a program that knows only the published bytes sees; `length` 0 for no lock.
    [[nodiscard]] ByteRange LockAt(std::uint64_t offset, std::uint64_t length = 1) const
    {
        return files_->Open(path_, OpenMode::ReadWrite)
            ->FindLock(offset, length)
            .value_or(ByteRange{});
    }
    [[nodiscard]] std::string Content() const
    {
        const auto file = files_->Open(path_, OpenMode::ReadOnly);
        std::vector<std::byte> bytes(static_cast<std::size_t>(file->Size()));
        file->Read(0, bytes);
        std::string text;
        for (const std::byte byte : bytes)
            text += static_cast<char>(byte);
        return text;
    }

    tests::ScratchFolder folder_;
    std::string database_ = (folder_.Path() / "Kelvaro.mdb").string();
    std::string path_ = (folder_.Path() / "Kelvaro.ldb").string();
    std::unique_ptr<io::FileSystem> files_;
    int pauses_ = 0;
    Pause pause_ = [this](std::chrono::milliseconds) { ++pauses_; };
};

INSTANTIATE_TEST_SUITE_P(All, LockFileTest, testing::Values(Kind::Machine, Kind::Memory));

TEST_P(LockFileTest, LiesBesideTheDatabaseUnderItsName)
{
    EXPECT_EQ(LockFilePath("/shop/Kelvaro.mdb"), "/shop/Kelvaro.ldb");
    EXPECT_EQ(LockFilePath("/shop.old/Kelvaro"), "/shop.old/Kelvaro.ldb");
    EXPECT_EQ(LockFilePath("Kelvaro.ldb"), "Kelvaro.ldb.ldb");
}

TEST_P(LockFileTest, EachUserHasAPlaceAnEntryAndAByte)
{
    const auto one = Join("FRONT-DESK");
    const auto other = Join("BAY-2");
    EXPECT_EQ(one->Place(), 1U);
    EXPECT_EQ(other->Place(), 2U);
    EXPECT_EQ(LockAt(0x10000001).length, 1U);
    EXPECT_EQ(LockAt(0x10000002).length, 1U);
    EXPECT_EQ(LockAt(0x10000003).length, 0U);
    const std::string content = Content();
    ASSERT_EQ(content.size(), 128U);
    EXPECT_EQ(content.substr(0, 12), std::string("FRONT-DESK\0 ", 12));
    EXPECT_EQ(content.substr(32, 7), std::string("Admin\0 ", 7));
    EXPECT_EQ(content.substr(64, 7), std::string("BAY-2\0 ", 7));
    EXPECT_TRUE(one->IsTaken(2));
    EXPECT_FALSE(one->IsTaken(1)) << "that is he himself";
    EXPECT_FALSE(one->IsTaken(3));
}

TEST_P(LockFileTest, APlaceThatWasLeftIsTakenAgain)
{
    auto one = Join("A");
    const auto other = Join("B");
    one.reset();
    EXPECT_EQ(Join("C")->Place(), 1U);
}

// The published examples: page 0x53 written by user 1, definition page 0x64 read by user 1.
TEST_P(LockFileTest, PagesAndTablesAreLockedAtThePublishedOffsets)
{
    const auto users = Join("A");
    ASSERT_FALSE(users->TryLock(PageNumber{0x53}, 1));
    EXPECT_EQ(LockAt(0x2000A601).offset, 0x2000A601U);
    EXPECT_EQ(LockAt(0x2000A701).length, 257U);
    EXPECT_EQ(LockAt(0x2000A702).length, 0U);
    ASSERT_FALSE(users->TryUse(Region::TableReaders, PageNumber{0x64}));
    EXPECT_EQ(LockAt(0x4000C801).offset, 0x4000C801U);
    EXPECT_EQ(LockAt(0x4000C801).length, 1U);
    users->Unlock(PageNumber{0x53});
    users->EndUse(Region::TableReaders, PageNumber{0x64});
    EXPECT_EQ(LockAt(0x20000000, 0x60000000).length, 0U);
}

TEST_P(LockFileTest, AWriterIsNamed)
{
    const auto one = Join("FRONT-DESK");
    const auto other = Join("BAY-2");
    ASSERT_FALSE(other->TryLock(PageNumber{7}, 1));
    const auto conflict = one->TryLock(PageNumber{7}, 1);
    ASSERT_TRUE(conflict);
    EXPECT_EQ(TextOf([&] { throw PageIsLocked(*conflict); }),
              "3260 Could not update; currently locked by user 'Admin' on machine 'BAY-2'.");
    EXPECT_FALSE(one->TryLock(PageNumber{8}, 1)) << "the page beside it is free";
}

TEST_P(LockFileTest, AReaderOfAPageIsNamed)
{
    const auto one = Join("FRONT-DESK");
    const auto other = Join("BAY-2");
    const auto file = files_->Open(path_, OpenMode::ReadWrite);
    ASSERT_TRUE(file->TryLock(LockKind::Exclusive, 0x20000000 + 512 * 7 + 2, 1));
    const auto conflict = one->TryLock(PageNumber{7}, 1);
    ASSERT_TRUE(conflict);
    EXPECT_EQ(TextOf([&] { throw PageIsLocked(*conflict); }),
              "3186 Could not save; currently locked by user 'Admin' on machine 'BAY-2'.");
}

TEST_P(LockFileTest, WhoeverHasNoEntryIsNotNamed)
{
    const auto one = Join("FRONT-DESK");
    const auto file = files_->Open(path_, OpenMode::ReadWrite);
    ASSERT_TRUE(file->TryLock(LockKind::Exclusive, 0x20000000 + 512 * 7 + 1, 256 + 9));
    EXPECT_EQ(TextOf([&] { throw PageIsLocked(*one->TryLock(PageNumber{7}, 1)); }),
              "3218 Could not update; currently locked.");
    ASSERT_TRUE(file->TryLock(LockKind::Exclusive, 0x20000000 + 512 * 8 + 9, 1));
    EXPECT_EQ(TextOf([&] { throw PageIsLocked(*one->TryLock(PageNumber{8}, 1)); }),
              "3046 Could not save; currently locked by another user.");
}

TEST_P(LockFileTest, SessionsOfOneProgramKeepEachOtherOut)
{
    const auto users = Join("A");
    ASSERT_FALSE(users->TryLock(PageNumber{7}, 1));
    ASSERT_FALSE(users->TryLock(PageNumber{7}, 1)) << "a session does not keep itself out";
    EXPECT_EQ(TextOf([&] { throw PageIsLocked(*users->TryLock(PageNumber{7}, 2)); }),
              "3188 Could not update; currently locked by another session on this machine.");
    users->Unlock(PageNumber{7});
    EXPECT_TRUE(users->TryLock(PageNumber{7}, 2)) << "locked twice, unlocked once";
    users->Unlock(PageNumber{7});
    EXPECT_FALSE(users->TryLock(PageNumber{7}, 2));
}

TEST_P(LockFileTest, PageLocksEndWithTheirObject)
{
    const auto one = Join("A");
    const auto other = Join("B");
    {
        PageLocks locks(one);
        ASSERT_FALSE(locks.TryLock(PageNumber{7}, 1));
        PageLocks kept = std::move(locks);
        EXPECT_TRUE(other->TryLock(PageNumber{7}, 1));
    }
    EXPECT_FALSE(other->TryLock(PageNumber{7}, 1));
}

TEST_P(LockFileTest, ATableThatSomebodyDeniesIsNamedWithHim)
{
    const auto one = Join("FRONT-DESK");
    const auto other = Join("BAY-2");
    const auto file = files_->Open(path_, OpenMode::ReadWrite);
    ASSERT_TRUE(file->TryLock(LockKind::Exclusive, 0x40000000 + 512 * 9 + 1, 256 + 2));
    const auto kept = one->TryUse(Region::TableReaders, PageNumber{9});
    ASSERT_TRUE(kept);
    EXPECT_EQ(TextOf([&] { throw TableIsKept("Labor", *kept); }),
              "3189 Table 'Labor' is exclusively locked by user 'Admin' on machine 'BAY-2'.");
    EXPECT_FALSE(one->FindDenial(PageNumber{9}));
    ASSERT_TRUE(file->TryLock(LockKind::Exclusive, 0x60000000 + 512 * 9 + 2, 1));
    const auto denial = one->FindDenial(PageNumber{9});
    ASSERT_TRUE(denial);
    EXPECT_EQ(
        TextOf([&] { throw TableIsDenied("Labor", *denial); }),
        "3262 Could not lock table 'Labor'; currently in use by user 'Admin' on machine 'BAY-2'.");
}

TEST_P(LockFileTest, ATableThatIsKeptIsOpenToNobodyElse)
{
    const auto one = Join("FRONT-DESK");
    const auto other = Join("BAY-2");
    ASSERT_FALSE(one->TryUse(Region::TableReaders, PageNumber{9}));
    const auto used = other->TryKeep(PageNumber{9});
    ASSERT_TRUE(used);
    EXPECT_EQ(TextOf([&] { throw TableIsDenied("Labor", *used); }),
              "3262 Could not lock table 'Labor'; currently in use by user 'Admin' on machine "
              "'FRONT-DESK'.");
    one->EndUse(Region::TableReaders, PageNumber{9});
    ASSERT_FALSE(other->TryKeep(PageNumber{9}));
    const auto kept = one->TryUse(Region::TableReaders, PageNumber{9});
    ASSERT_TRUE(kept);
    EXPECT_EQ(TextOf([&] { throw TableIsKept("Labor", *kept); }),
              "3189 Table 'Labor' is exclusively locked by user 'Admin' on machine 'BAY-2'.");
    EXPECT_FALSE(one->TryUse(Region::TableReaders, PageNumber{8})) << "the table beside it is free";
    other->EndKeep(PageNumber{9});
    EXPECT_FALSE(one->TryUse(Region::TableReaders, PageNumber{9}));
}

TEST_P(LockFileTest, OnesOwnUseOutlastsTheKeeping)
{
    const auto one = Join("FRONT-DESK");
    const auto other = Join("BAY-2");
    ASSERT_FALSE(other->TryUse(Region::TableReaders, PageNumber{9}));
    ASSERT_FALSE(other->TryKeep(PageNumber{9}));
    other->EndKeep(PageNumber{9});
    EXPECT_FALSE(one->TryUse(Region::TableReaders, PageNumber{9}));
    one->EndUse(Region::TableReaders, PageNumber{9});
    EXPECT_TRUE(one->TryKeep(PageNumber{9}));
    other->EndUse(Region::TableReaders, PageNumber{9});
    EXPECT_FALSE(one->TryKeep(PageNumber{9}));
}

TEST(LockAttempts, TakeTwoSecondsAndAreQuickAtFirst)
{
    std::chrono::milliseconds all{0};
    for (int tries = 1; tries < kTries; ++tries) {
        all += PauseAfter(tries);
        EXPECT_LE(PauseAfter(tries), kPause);
    }
    EXPECT_NEAR(static_cast<double>(all.count()), 2000, 100);
    EXPECT_EQ(PauseAfter(1), std::chrono::milliseconds{1});
}

TEST_P(LockFileTest, TwoHundredAndFiftySixUsersAreTooMany)
{
    std::vector<std::shared_ptr<LockFile>> users;
    for (int i = 0; i < 255; ++i)
        users.push_back(Join("PC-" + std::to_string(i)));
    EXPECT_EQ(users.back()->Place(), 255U);
    EXPECT_EQ(ErrorOf([&] { (void)Join("PC-256"); }), 3239);
    EXPECT_EQ(pauses_, kTries - 1);
}

TEST_P(LockFileTest, OneAloneKeepsTheOthersOut)
{
    auto alone = Join("OFFICE", true);
    EXPECT_EQ(alone->Place(), 0U);
    EXPECT_EQ(LockAt(0x10000001).length, 255U);
    const std::string refusal = "3356 You attempted to open a database that is already opened "
                                "exclusively by user 'Admin' on "
                                "machine 'OFFICE'.  Try again when the database is available.";
    EXPECT_EQ(TextOf([&] { (void)Join("BAY-2"); }), refusal);
    EXPECT_EQ(TextOf([&] { (void)Join("BAY-3", true); }), refusal);
    alone.reset();
    EXPECT_EQ(Join("BAY-2")->Place(), 1U);
}

TEST_P(LockFileTest, NobodyIsAloneBesideOthers)
{
    const auto one = Join("BAY-2");
    EXPECT_EQ(
        TextOf([&] { (void)Join("OFFICE", true); }),
        "3704 You attempted to open a database that is already opened by user 'Admin' on machine "
        "'BAY-2'.  Try again when the database is available.");
}

TEST_P(LockFileTest, WhoIsThereWithoutANameIsNotNamed)
{
    const std::string inUse = "3045 Could not use '" + database_ + "'; file already in use.";
    auto nobody = Join("", true);
    EXPECT_EQ(TextOf([&] { (void)Join("BAY-2"); }), inUse);
    EXPECT_EQ(TextOf([&] { (void)Join("OFFICE", true); }), inUse);
    nobody.reset();
    nobody = Join("");
    EXPECT_EQ(TextOf([&] { (void)Join("OFFICE", true); }), inUse);
    EXPECT_EQ(Join("BAY-2")->Place(), 2U);
}

// All tries found him there, and when it is asked who he is he is gone.
TEST_P(LockFileTest, WhoLeavesAfterTheLastTryIsNotNamed)
{
    auto alone = Join("OFFICE", true);
    tests::WatchedFileSystem watched(*files_);
    watched.beforeCall = [&] {
        if (watched.call.starts_with("FindLock")) alone.reset();
    };
    const auto join = [&] { LockFile(watched, database_, {"BAY-2", "Admin"}, false, pause_); };
    EXPECT_EQ(TextOf(join), "3045 Could not use '" + database_ + "'; file already in use.");
    EXPECT_FALSE(alone);
    EXPECT_EQ(pauses_, kTries - 1);
    EXPECT_EQ(TextOf(join), "no error");
}

TEST_P(LockFileTest, TheLastOneTakesTheFileAway)
{
    auto one = Join("A");
    auto other = Join("B");
    one.reset();
    EXPECT_TRUE(files_->Exists(path_));
    other.reset();
    EXPECT_FALSE(files_->Exists(path_));
}

TEST_P(LockFileTest, AFileThatWasLeftLyingIsHarmless)
{
    files_->Create(path_)->Write(0, std::vector<std::byte>(640, std::byte{'x'}));
    EXPECT_EQ(Join("A")->Place(), 1U);
    EXPECT_FALSE(files_->Exists(path_));
}

// A server lets a station take the file away although a program on the server has it open.
TEST_P(LockFileTest, LocksAreTakenAnewWhenTheFileWasTakenAway)
{
    const auto users = Join("A");
    ASSERT_FALSE(users->TryLock(PageNumber{7}, 1));
    ASSERT_FALSE(users->TryUse(Region::TableReaders, PageNumber{9}));
    files_->Remove(path_);
    const auto newcomer = Join("B");
    ASSERT_EQ(newcomer->Place(), 1U);
    users->RequireNamed();
    EXPECT_EQ(users->Place(), 2U);
    EXPECT_TRUE(newcomer->TryLock(PageNumber{7}, 1));
    EXPECT_EQ(LockAt(0x40000000 + 512 * 9 + 2).length, 1U);
}

TEST_P(LockFileTest, LocksThatAnotherHasMeanwhileAreLost)
{
    const auto users = Join("A");
    ASSERT_FALSE(users->TryLock(PageNumber{7}, 1));
    files_->Remove(path_);
    const auto newcomer = Join("B");
    ASSERT_FALSE(newcomer->TryLock(PageNumber{7}, 1));
    EXPECT_EQ(ErrorOf([&] { users->RequireNamed(); }), 3050);
}

// Grants every lock, as a share that does not pass locks on does.
class LooseFile : public io::File {
public:
    explicit LooseFile(std::unique_ptr<io::File> below) : below_(std::move(below)) {}
    [[nodiscard]] std::uint64_t Size() const override { return below_->Size(); }
    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        below_->Read(offset, into);
    }
    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        below_->Write(offset, bytes);
    }
    void Truncate(std::uint64_t size) override { below_->Truncate(size); }
    void Flush() override { below_->Flush(); }
    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        return below_->IsNamed(path);
    }
    [[nodiscard]] bool TryLock(LockKind, std::uint64_t, std::uint64_t) override { return true; }
    void Unlock(std::uint64_t, std::uint64_t) override {}
    [[nodiscard]] std::optional<ByteRange> FindLock(std::uint64_t, std::uint64_t) const override
    {
        return std::nullopt;
    }

private:
    std::unique_ptr<io::File> below_;
};

class LooseFileSystem : public io::MemoryFileSystem {
public:
    [[nodiscard]] std::unique_ptr<io::File> Open(const std::string& path, OpenMode mode) override
    {
        return std::make_unique<LooseFile>(MemoryFileSystem::Open(path, mode));
    }
    [[nodiscard]] std::unique_ptr<io::File> Create(const std::string& path) override
    {
        return std::make_unique<LooseFile>(MemoryFileSystem::Create(path));
    }
};

TEST(LocksThatDoNotWork, AreNoticedBeforeAnythingIsWritten)
{
    LooseFileSystem files;
    const auto join = [&] { LockFile(files, "Kelvaro.mdb", {"A", "Admin"}, false, [](auto) {}); };
    EXPECT_EQ(TextOf(join), "3050 Could not lock file.");
    EXPECT_TRUE(files.Content("Kelvaro.ldb").empty());
}

TEST(LocksThatDoNotWork, AreToldWhenTheSystemRefusesThem)
{
    io::MemoryFileSystem below;
    tests::WatchedFileSystem files(below);
    for (const int number : {3050, 3051, 3044}) {
        files.beforeCall = [number] { throw base::NumberedError(number); };
        const auto join = [&] {
            LockFile(files, "Kelvaro.mdb", {"A", "Admin"}, false, [](auto) {});
        };
        EXPECT_EQ(ErrorOf(join), 3050) << number;
    }
}

}  // namespace

}  // namespace jet::locks
