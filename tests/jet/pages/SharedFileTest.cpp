// SPDX-License-Identifier: Apache-2.0
// Two programs on one file: each sees what the other wrote, and only one writes at a time.
#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "jet/io/StdFile.h"
#include "jet/pages/WriteSet.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FaultFileSystem.h"
#include "tests/support/Samples.h"

#include <gtest/gtest.h>

namespace jet::pages {

namespace {

using tests::ErrorOf;

constexpr PageNumber kPage{2};

void Put(Pager& pager, std::uint32_t value)
{
    WriteSet changes(pager);
    format::WriteU32(changes.Change(kPage), 8, value);
    changes.Commit();
}

std::uint32_t Get(Pager& pager)
{
    pager.Refresh();
    return format::ReadU32(pager.Read(kPage).Bytes(), 8);
}

void MakePage(Pager& pager)
{
    WriteSet changes(pager);
    ASSERT_EQ(changes.Allocate(), kPage);
    format::WriteU32(changes.Change(kPage), 0, 0x0101);
    changes.Commit();
}

class SharedFileTest : public testing::Test {
protected:
    SharedFileTest() { MakePage(*one_); }

    tests::ScratchFolder folder_;
    std::string path_ = (folder_.Path() / "shop.mdb").string();
    io::StdFileSystem files_;
    std::shared_ptr<Pager> one_ = Pager::Create(files_, path_, format::kJet4);
    std::shared_ptr<Pager> other_ = Pager::Open(files_, path_, io::OpenMode::ReadWrite);
};

TEST_F(SharedFileTest, EachSeesWhatTheOtherCommitted)
{
    EXPECT_EQ(Get(*other_), 0U);
    const std::uint64_t before = other_->ChangeCount();
    Put(*one_, 7);
    EXPECT_EQ(Get(*other_), 7U);
    EXPECT_NE(other_->ChangeCount(), before);
    Put(*other_, 8);
    EXPECT_EQ(Get(*one_), 8U);
}

TEST_F(SharedFileTest, WritersTakeTurnsOnTheNewestPages)
{
    for (std::uint32_t i = 0; i < 20; ++i) {
        Pager& pager = i % 2 == 0 ? *one_ : *other_;
        WriteSet changes(pager);
        const format::MutableSpan page = changes.Change(kPage);
        format::WriteU32(page, 8, format::ReadU32(page, 8) + 1);
        changes.Commit();
    }
    EXPECT_EQ(Get(*one_), 20U);
}

TEST_F(SharedFileTest, NobodyElseWritesWhileASetIsOpen)
{
    WriteSet changes(*one_);
    try {
        WriteSet second(*other_);
        FAIL() << "two sets are open";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 3218);
    }
}

TEST_F(SharedFileTest, TheJournalGoesWithTheLastProgram)
{
    Put(*one_, 1);
    other_.reset();
    one_.reset();
    EXPECT_FALSE(files_.Exists(JournalPath(path_)));
    other_ = Pager::Open(files_, path_, io::OpenMode::ReadWrite);
    EXPECT_EQ(Get(*other_), 1U);
}

TEST_F(SharedFileTest, AJournalTakenAwayByAnotherIsMadeAnew)
{
    Put(*one_, 1);
    Put(*other_, 2);
    one_.reset();  // takes the journal away
    ASSERT_FALSE(files_.Exists(JournalPath(path_)));
    Put(*other_, 3);
    EXPECT_TRUE(files_.Exists(JournalPath(path_)));
}

TEST_F(SharedFileTest, AnEmptySetWritesNothing)
{
    const std::uint64_t before = one_->ChangeCount();
    WriteSet changes(*one_);
    changes.Commit();
    EXPECT_EQ(one_->ChangeCount(), before);
}

// A program that stops in the middle of writing, beside others.
class StoppedWriterTest : public testing::Test {
protected:
    StoppedWriterTest()
    {
        const auto pager = Pager::Create(files_, kPath, format::kJet4);
        MakePage(*pager);
        Put(*pager, 1);
    }

    // Writes 2 and stops when half of it is stored.
    void StopWhileWriting()
    {
        tests::FaultFileSystem disk(files_);
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        WriteSet changes(*pager);
        format::WriteU32(changes.Change(kPage), 8, 2);
        (void)changes.Allocate();
        // The journal is made, stored and flushed, then the commit word, then pages follow.
        disk.PullThePlugAfter(6);
        EXPECT_THROW(changes.Commit(), base::NumberedError);
    }

    std::shared_ptr<Pager> Open() { return Pager::Open(files_, kPath, io::OpenMode::ReadWrite); }
    std::uint16_t Word(std::size_t user)
    {
        return format::ReadU16(files_.Content(kPath), 0xE00 + 2 * user);
    }

    static constexpr const char* kPath = "shop.mdb";
    io::MemoryFileSystem files_;
};

TEST_F(StoppedWriterTest, AReaderLooksPastItsPages)
{
    StopWhileWriting();
    const auto stored = files_.Content(kPath);
    const auto reader = Pager::Open(files_, kPath, io::OpenMode::ReadOnly);
    EXPECT_EQ(Get(*reader), 1U);
    EXPECT_EQ(reader->PageCount(), 3U);
    EXPECT_EQ(files_.Content(kPath), stored);
}

TEST_F(StoppedWriterTest, AnotherWriterUndoesItFirst)
{
    const auto other = Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
    StopWhileWriting();
    {
        WriteSet changes(*other);
        EXPECT_EQ(format::ReadU32(changes.Change(kPage), 8), 1U);
    }
    EXPECT_EQ(other->Recovered(), Recovery::RolledBack);
    EXPECT_EQ(other->PageCount(), 3U);
}

TEST_F(StoppedWriterTest, ItsWordSaysWhatItLeft)
{
    EXPECT_EQ(Word(1), 0x0102);
    StopWhileWriting();
    EXPECT_EQ(Word(1), 0x0000) << "half of the set is stored";
    (void)Open();
    EXPECT_EQ(Word(1), 0x0104) << "neither the last word that counts nor the one that was due";
}

TEST_F(StoppedWriterTest, WhatAnotherUserChangedSinceIsNotUndone)
{
    StopWhileWriting();
    auto& bytes = files_.Content(kPath);
    format::WriteU32(bytes, 2 * 4096 + 600, 0x77);  // a program that knows no journal
    const auto stored = bytes;
    EXPECT_EQ(ErrorOf([&] { (void)Open(); }), 3343);
    EXPECT_EQ(files_.Content(kPath), stored);
    EXPECT_TRUE(files_.Exists(JournalPath(kPath) + ".set-aside"));
    EXPECT_EQ(ErrorOf([&] { (void)Open(); }), 3343) << "nor later";
}

TEST_F(StoppedWriterTest, IsUndoneBesideWhatAnotherUserWroteElsewhere)
{
    StopWhileWriting();
    auto& bytes = files_.Content(kPath);
    format::WriteU16(bytes, 0xE00 + 4, 0x0133);
    const auto pager = Open();
    EXPECT_EQ(pager->Recovered(), Recovery::RolledBack);
    EXPECT_EQ(Get(*pager), 1U);
    EXPECT_EQ(Word(2), 0x0133);
}

TEST_F(StoppedWriterTest, AJournalThatIsNotWholeUndoesNothing)
{
    StopWhileWriting();
    auto& journal = files_.Content(JournalPath(kPath));
    const auto whole = journal;
    const auto database = files_.Content(kPath);
    for (const std::size_t at : {9U, 17U, 37U, 41U, 100U, 2000U}) {
        journal = whole;
        journal[kChangeLogSize + at] ^= std::byte{1};
        files_.Content(kPath) = database;
        EXPECT_EQ(ErrorOf([&] { (void)Open(); }), 3343) << at;
        EXPECT_EQ(files_.Content(kPath), database) << at;
    }
}

// The last thing that is flushed is the word; zeroing the journal may be lost.
TEST_F(StoppedWriterTest, AJournalWhoseSetIsConfirmedIsIgnored)
{
    StopWhileWriting();
    const auto journal = files_.Content(JournalPath(kPath));
    {
        const auto pager = Open();
        Put(*pager, 3);
    }
    (void)files_.Create(JournalPath(kPath));
    files_.Content(JournalPath(kPath)) = journal;
    const auto pager = Open();
    EXPECT_EQ(pager->Recovered(), Recovery::Nothing);
    EXPECT_EQ(Get(*pager), 3U);
}

// A program that knows no journal was stopped; nobody can say what of its row is stored.
TEST_F(StoppedWriterTest, OneWithoutAJournalMakesTheFileSuspect)
{
    struct Case {
        std::uint16_t word;
        int number;
    };
    for (const Case& now : {Case{0x0000, 3343}, Case{0x0001, 3428}, Case{0x00FF, 3343}}) {
        for (const std::size_t user : {0U, 1U, 2U, 255U}) {
            auto& bytes = files_.Content(kPath);
            const auto sound = bytes;
            format::WriteU16(bytes, 0xE00 + 2 * user, now.word);
            const auto stored = bytes;
            EXPECT_EQ(ErrorOf([&] { (void)Open(); }), now.number) << user;
            EXPECT_EQ(files_.Content(kPath), stored) << user;
            files_.Content(kPath) = sound;
        }
    }
    EXPECT_EQ(ErrorOf([&] { (void)Open(); }), 0);
}

TEST_F(StoppedWriterTest, OneWhoIsStillThereIsNoSuspect)
{
    const auto users = std::make_unique<locks::LockFile>(
        files_, kPath, locks::User{"BAY-2", "Admin"}, false, [](auto) {});
    ASSERT_EQ(users->Place(), 1U);
    format::WriteU16(files_.Content(kPath), 0xE00 + 2, 0x0000);
    EXPECT_EQ(ErrorOf([&] { (void)Open(); }), 0);
}

}  // namespace

}  // namespace jet::pages
