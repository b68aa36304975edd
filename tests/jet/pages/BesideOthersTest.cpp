// SPDX-License-Identifier: Apache-2.0
// Readings while others write, and what a commit does to the file, step by step.
#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "jet/pages/CommitWords.h"
#include "jet/pages/WriteSet.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FaultFileSystem.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace jet::pages {

namespace {

using tests::ErrorOf;

constexpr const char* kPath = "shop.mdb";
constexpr PageNumber kPage{2};
constexpr std::size_t kWordsAt = 0xE00;

void Put(Pager& pager, std::uint32_t value)
{
    Write(pager, [&](WriteSet& changes) { format::WriteU32(changes.Change(kPage), 8, value); });
}

std::uint32_t ValueIn(const Pager& pager)
{
    return format::ReadU32(pager.Read(kPage).Bytes(), 8);
}

void MakeFile(io::FileSystem& files)
{
    const auto pager = Pager::Create(files, kPath, format::kJet4);
    WriteSet changes(*pager);
    ASSERT_EQ(changes.Allocate(), kPage);
    changes.Commit();
}

class BesideOthersTest : public testing::Test {
protected:
    BesideOthersTest()
    {
        MakeFile(files_);
        one_ = Open();
        other_ = Open();
    }

    std::shared_ptr<Pager> Open()
    {
        Sharing sharing;
        sharing.self = {"PC", "Admin"};
        sharing.pause = [this](std::chrono::milliseconds) {
            ++pauses_;
            if (whileWaiting_) whileWaiting_();
        };
        return Pager::Open(files_, kPath, io::OpenMode::ReadWrite, {}, sharing);
    }

    io::MemoryFileSystem files_;
    int pauses_ = 0;
    std::function<void()> whileWaiting_;
    std::shared_ptr<Pager> one_, other_;
};

TEST_F(BesideOthersTest, AReadingThatAnotherDisturbsIsRepeated)
{
    std::vector<std::uint32_t> seen;
    one_->ReadWhole(Pager::Look::Always, [&] {
        seen.push_back(ValueIn(*one_));
        if (seen.size() < 4) Put(*other_, static_cast<std::uint32_t>(seen.size()));
    });
    EXPECT_EQ(seen, (std::vector<std::uint32_t>{0, 1, 2, 3}));
}

TEST_F(BesideOthersTest, WhatLiesInMemoryNobodyDisturbs)
{
    one_->Refresh();
    (void)ValueIn(*one_);
    int readings = 0;
    one_->ReadWhole(Pager::Look::OnlyIfOld, [&] {
        ++readings;
        EXPECT_EQ(ValueIn(*one_), 0U);
        Put(*other_, 7);
    });
    EXPECT_EQ(readings, 1);
    one_->ReadWhole(Pager::Look::Always, [&] { EXPECT_EQ(ValueIn(*one_), 7U); });
}

TEST_F(BesideOthersTest, AnErrorOfADisturbedReadingCountsOnlyWhenItStays)
{
    int readings = 0;
    one_->ReadWhole(Pager::Look::Always, [&] {
        (void)ValueIn(*one_);
        if (++readings > 1) return;
        Put(*other_, 1);
        throw base::NumberedError(3343);
    });
    EXPECT_EQ(readings, 2);
    const auto damaged = [&] { throw base::NumberedError(3343); };
    EXPECT_EQ(ErrorOf([&] { one_->ReadWhole(Pager::Look::Always, damaged); }), 3343);
}

// The last time the others of this engine are kept from writing.
TEST_F(BesideOthersTest, WhoIsAlwaysDisturbedReadsInAQuietTime)
{
    int readings = 0, refused = 0;
    one_->ReadWhole(Pager::Look::Always, [&] {
        ++readings;
        (void)ValueIn(*one_);
        if (ErrorOf([&] { Put(*other_, static_cast<std::uint32_t>(readings)); }) == 3218) ++refused;
    });
    EXPECT_EQ(readings, locks::kTries);
    EXPECT_EQ(refused, 1);
    Put(*other_, 99);
    EXPECT_EQ(one_->ChangeCount() > 0, true);
}

TEST_F(BesideOthersTest, AReadingWaitsWhileAnotherWrites)
{
    auto& bytes = files_.Content(kPath);
    format::WriteU16(bytes, kWordsAt + 4, kWritingNow);  // of the other, who is there
    whileWaiting_ = [&] {
        if (pauses_ < 3) return;
        format::WriteU32(bytes, 2 * 4096 + 8, 5);
        format::WriteU16(bytes, kWordsAt + 4, 0x0177);
    };
    std::vector<std::uint32_t> seen;
    one_->ReadWhole(Pager::Look::Always, [&] { seen.push_back(ValueIn(*one_)); });
    EXPECT_EQ(seen, std::vector<std::uint32_t>{5});
    EXPECT_EQ(pauses_, 3);
}

// A program that keeps to no lock of ours writes between the working out of a set and its storing,
// and need not even say so.
TEST_F(BesideOthersTest, ASetThatWasWorkedOutFromOldPagesIsWorkedOutAgain)
{
    for (const bool saysSo : {true, false}) {
        Put(*one_, 0);
        auto& bytes = files_.Content(kPath);
        std::vector<std::uint32_t> seen;
        Write(*one_, [&](WriteSet& changes) {
            seen.push_back(ValueIn(*one_));
            format::WriteU32(changes.Change(kPage), 8, seen.back() + 1);
            if (seen.size() > 1) return;
            format::WriteU32(bytes, 2 * 4096 + 8, 40);
            if (saysSo) format::WriteU16(bytes, kWordsAt + 2 * 9, 0x0101);
        });
        EXPECT_EQ(seen, (std::vector<std::uint32_t>{0, 40})) << saysSo;
        EXPECT_EQ(format::ReadU32(bytes, 2 * 4096 + 8), 41U) << saysSo;
    }
}

TEST_F(BesideOthersTest, NoLockIsKeptAfterACommitOrItsFailure)
{
    const auto users = files_.Open("shop.ldb", io::OpenMode::ReadWrite);
    Put(*one_, 1);
    EXPECT_FALSE(users->FindLock(0x20000000, 0x10000000));
    EXPECT_EQ(ErrorOf([&] {
                  Write(*one_, [](WriteSet& changes) {
                      (void)changes.Change(kPage);
                      throw base::NumberedError(3022);
                  });
              }),
              3022);
    EXPECT_FALSE(users->FindLock(0x20000000, 0x10000000));
    EXPECT_EQ(ErrorOf([&] { Put(*other_, 2); }), 0);
}

TEST_F(BesideOthersTest, TheCounterGoesRoundWithoutASuspectWord)
{
    one_.reset();
    other_.reset();
    format::WriteU16(files_.Content(kPath), kWordsAt + 2, 0xFFFE);
    one_ = Open();
    for (const std::uint16_t word : std::initializer_list<std::uint16_t>{0xFFFF, 0x0100, 0x0101}) {
        Put(*one_, word);
        EXPECT_EQ(format::ReadU16(files_.Content(kPath), kWordsAt + 2), word);
    }
}

// Tells each write and flush, by file and offset.
class ToldFile : public io::File {
public:
    ToldFile(std::unique_ptr<io::File> below, std::string name, std::vector<std::string>& told)
        : below_(std::move(below)), name_(std::move(name)), told_(told)
    {
    }
    [[nodiscard]] std::uint64_t Size() const override { return below_->Size(); }
    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        below_->Read(offset, into);
    }
    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        told_.push_back(name_ + " " + std::to_string(offset) + "+" + std::to_string(bytes.size()));
        below_->Write(offset, bytes);
    }
    void Truncate(std::uint64_t size) override { below_->Truncate(size); }
    void Flush() override
    {
        told_.push_back(name_ + " flush");
        below_->Flush();
    }
    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        return below_->IsNamed(path);
    }
    [[nodiscard]] bool TryLock(io::LockKind kind, std::uint64_t offset,
                               std::uint64_t length) override
    {
        return below_->TryLock(kind, offset, length);
    }
    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        below_->Unlock(offset, length);
    }
    [[nodiscard]] std::optional<io::ByteRange> FindLock(std::uint64_t offset,
                                                        std::uint64_t length) const override
    {
        return below_->FindLock(offset, length);
    }

private:
    std::unique_ptr<io::File> below_;
    std::string name_;
    std::vector<std::string>& told_;
};

class ToldFileSystem : public io::MemoryFileSystem {
public:
    std::vector<std::string> told;

    [[nodiscard]] std::unique_ptr<io::File> Open(const std::string& path,
                                                 io::OpenMode mode) override
    {
        return std::make_unique<ToldFile>(MemoryFileSystem::Open(path, mode), path, told);
    }
    [[nodiscard]] std::unique_ptr<io::File> Create(const std::string& path) override
    {
        return std::make_unique<ToldFile>(MemoryFileSystem::Create(path), path, told);
    }
};

TEST(CommitTest, StoresTheJournalTheWordThePagesAndTheWordAndFlushesEach)
{
    ToldFileSystem files;
    MakeFile(files);
    const auto pager = Pager::Open(files, kPath, io::OpenMode::ReadWrite);
    Put(*pager, 1);
    files.told.clear();
    Put(*pager, 2);
    // A head, and of the one page its number, its counter's place, eight sums and its former
    // content; then what the others are told, and at last the journal's end.
    EXPECT_EQ(files.told, (std::vector<std::string>{
                              "shop.mdb.journal 4096+4180", "shop.mdb.journal flush",
                              "shop.mdb 3586+2", "shop.mdb flush", "shop.mdb 8192+4096",
                              "shop.mdb flush", "shop.mdb.journal 64+32", "shop.mdb 3586+2",
                              "shop.mdb flush", "shop.mdb.journal 4096+8"}));
}

TEST(CommitTest, ASetThatChangesNothingStoresNothing)
{
    ToldFileSystem files;
    MakeFile(files);
    const auto pager = Pager::Open(files, kPath, io::OpenMode::ReadWrite);
    Put(*pager, 1);
    files.told.clear();
    const std::uint64_t commits = pager->OwnCommits();
    Put(*pager, 1);
    EXPECT_EQ(files.told, std::vector<std::string>());
    EXPECT_EQ(pager->OwnCommits(), commits);
    Put(*pager, 2);
    EXPECT_EQ(files.told.size(), 10U) << "the next one is stored as ever";
}

// A set that does nothing but draw a number, on a page that stands for a table's definition.
class DrawnNumberTest : public testing::Test {
protected:
    static constexpr std::size_t kCounterAt = 20;

    DrawnNumberTest()
    {
        const auto pager = Pager::Create(files_, kPath, format::kJet4);
        WriteSet changes(*pager);
        page_ = changes.Allocate();
        format::WriteU8(changes.Change(page_), 0, 2);
        changes.Commit();
    }
    void Draw(Pager& pager, std::uint32_t number)
    {
        Write(pager, [&](WriteSet& changes) {
            format::WriteU32(changes.Change(page_), kCounterAt, number);
        });
    }
    [[nodiscard]] std::uint32_t Drawn(const Pager& pager) const
    {
        return format::ReadU32(pager.Read(page_).Bytes(), kCounterAt);
    }
    // A set that stores more of the page.
    void Store(Pager& pager)
    {
        Write(pager, [&](WriteSet& changes) {
            const format::MutableSpan bytes = changes.Change(page_);
            format::WriteU32(bytes, 0x100, format::ReadU32(bytes, 0x100) + 1);
        });
    }

    ToldFileSystem files_;
    PageNumber page_{};
};

TEST_F(DrawnNumberTest, IsStoredWithoutJournalAndFlush)
{
    const auto pager = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
    Store(*pager);
    files_.told.clear();
    Draw(*pager, 7);
    const std::size_t at = Raw(page_) * format::kJet4.pageSize + kCounterAt;
    EXPECT_EQ(files_.told, (std::vector<std::string>{"shop.mdb " + std::to_string(at) + "+1",
                                                     "shop.mdb.journal 64+32", "shop.mdb 3586+2"}));
    EXPECT_EQ(Drawn(*Pager::Open(files_, kPath, io::OpenMode::ReadOnly)), 7U);
}

TEST_F(DrawnNumberTest, AnotherProgramSeesItAtOnce)
{
    const auto ours = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
    const auto theirs = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
    EXPECT_EQ(Drawn(*theirs), 0U);
    Draw(*ours, 7);
    theirs->Refresh();
    EXPECT_EQ(Drawn(*theirs), 7U);
}

TEST_F(DrawnNumberTest, WhoseWordChangesItsHigherByteIsStoredInFull)
{
    const auto pager = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
    std::size_t flushed = 0;
    for (std::uint32_t number = 1; number <= 0x200; ++number) {
        files_.told.clear();
        Draw(*pager, number);
        const auto isFlush = [](const std::string& call) { return call.ends_with("flush"); };
        if (std::any_of(files_.told.begin(), files_.told.end(), isFlush)) ++flushed;
    }
    EXPECT_EQ(flushed, 2U);
    EXPECT_EQ(Drawn(*pager), 0x200U);
}

TEST_F(DrawnNumberTest, APowerCutInTheNextSetUndoesItWhateverBecameOfTheNumber)
{
    for (const auto unflushed : {tests::Unflushed::Kept, tests::Unflushed::Lost}) {
        for (std::size_t cut = 0; cut < 12; ++cut) {
            io::MemoryFileSystem files;
            (void)files.Create(kPath);
            files.Content(kPath) = files_.Content(kPath);
            tests::FaultFileSystem disk(files);
            {
                const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
                Store(*pager);
                disk.PullThePlugAfter(cut, tests::LastWrite::Whole, unflushed);
                try {
                    Draw(*pager, 7);
                    Store(*pager);
                } catch (const base::NumberedError&) {
                }
            }
            disk.Reboot();
            const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            EXPECT_NE(pager->Recovered(), Recovery::SetAside) << cut;
            const std::uint32_t stored = format::ReadU32(pager->Read(page_).Bytes(), 0x100);
            EXPECT_TRUE(stored == 1 || stored == 2) << cut;
            EXPECT_TRUE(stored == 1 || Drawn(*pager) == 7) << cut;
        }
    }
}

// The word reached the disk and the number did not, or the other way round.
TEST_F(DrawnNumberTest, OfAnUnfinishedSetEitherNumberIsItsOwn)
{
    for (const std::uint32_t number : {0U, 7U}) {
        io::MemoryFileSystem files;
        (void)files.Create(kPath);
        files.Content(kPath) = files_.Content(kPath);
        tests::FaultFileSystem disk(files);
        {
            const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            Draw(*pager, 7);
            // The journal and the word that says that somebody writes.
            disk.PullThePlugAfter(4);
            EXPECT_THROW(Store(*pager), base::NumberedError);
        }
        disk.Reboot();
        const std::size_t at = Raw(page_) * std::size_t{4096};
        format::WriteU32(files.Content(kPath), at + kCounterAt, number);
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        EXPECT_EQ(pager->Recovered(), Recovery::RolledBack);
        EXPECT_EQ(format::ReadU32(pager->Read(page_).Bytes(), 0x100), 0U);
    }
}

// The words of drawn numbers are not flushed, so the one that is torn may be any of them.
TEST_F(DrawnNumberTest, AWordTornBetweenAnEarlierNumbersAndTheBeginningOfASetUndoesTheSet)
{
    constexpr std::size_t wordAt = 0xE00 + 2;
    for (const int earlier : {1, 2}) {
        io::MemoryFileSystem files;
        (void)files.Create(kPath);
        files.Content(kPath) = files_.Content(kPath);
        tests::FaultFileSystem disk(files);
        {
            const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            Store(*pager);
            Draw(*pager, 7);
            Draw(*pager, 8);
            // The journal is stored, the word that says that somebody writes is not.
            disk.PullThePlugAfter(2);
            EXPECT_THROW(Store(*pager), base::NumberedError);
        }
        disk.Reboot();
        std::vector<std::byte>& bytes = files.Content(kPath);
        const int torn = (format::ReadU16(bytes, wordAt) - earlier) & 0xFF;
        ASSERT_GT(torn, kMetDamage);
        format::WriteU16(bytes, wordAt, static_cast<std::uint16_t>(torn));
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        EXPECT_EQ(pager->Recovered(), Recovery::RolledBack);
        EXPECT_EQ(format::ReadU32(pager->Read(page_).Bytes(), 0x100), 1U);
        EXPECT_FALSE(files.Exists(JournalPath(kPath) + ".set-aside"));
    }
}

}  // namespace

}  // namespace jet::pages
