// SPDX-License-Identifier: Apache-2.0
// A machine that stops at any instant leaves the file as it was before the write set or after it.
#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "jet/pages/FreePages.h"
#include "jet/pages/UsageMap.h"
#include "tests/support/FaultFileSystem.h"

#include <gtest/gtest.h>
#include <string>
#include <tuple>

namespace jet::pages {

namespace {

using tests::FaultFileSystem;
using tests::LastWrite;
using tests::Unflushed;

constexpr const char* kPath = "shop.mdb";

struct Cut {
    LastWrite last;
    Unflushed unflushed;
};

// A kind of file.
struct Kind {
    const char* name;
    const format::FileVersion* version;
    std::uint32_t encodingKey;
};
const auto kKinds = testing::Values(Kind{"Jet3", &format::kJet3, format::kNotEncoded},
                                    Kind{"Jet4", &format::kJet4, format::kNotEncoded},
                                    Kind{"EncodedJet4", &format::kJet4, 0x5A17C0DE});

// Every page as the next opener reads it; the commit words of page 0 count commits and are left
// out.
std::vector<std::vector<std::byte>> PagesOf(const Pager& pager)
{
    std::vector<std::vector<std::byte>> pages;
    for (std::uint32_t number = 1; number < pager.PageCount(); ++number) {
        const Page page = pager.Read(PageNumber{number});
        pages.emplace_back(page.Bytes().begin(), page.Bytes().end());
    }
    return pages;
}

// A file with a few pages, some of them free.
void Prepare(io::FileSystem& files, const Kind& kind)
{
    const auto pager = Pager::Create(files, kPath, *kind.version, {kind.encodingKey, {}});
    WriteSet changes(*pager);
    std::vector<PageNumber> taken;
    for (int i = 0; i < 6; ++i) {
        taken.push_back(changes.Allocate());
        const format::MutableSpan bytes = changes.Change(taken.back());
        std::fill(bytes.begin(), bytes.end(), static_cast<std::byte>(i + 1));
    }
    changes.Free(taken[1]);
    changes.Commit();
}

// Changes old pages, takes a free one and two new ones, gives one back.
void Work(Pager& pager)
{
    WriteSet changes(pager);
    for (const std::uint32_t page : {2U, 4U, 5U}) {
        const format::MutableSpan bytes = changes.Change(PageNumber{page});
        std::fill(bytes.begin(), bytes.end(), std::byte{0xEE});
    }
    for (int i = 0; i < 3; ++i) {
        const format::MutableSpan bytes = changes.Change(changes.Allocate());
        std::fill(bytes.begin(), bytes.end(), std::byte{0xDD});
    }
    changes.Free(PageNumber{7});
    changes.Commit();
}

class FailureFixture : public testing::Test {
protected:
    explicit FailureFixture(const Kind& kind) : kind_(kind)
    {
        Prepare(memory_);
        before_ = PagesOf(*Pager::Open(memory_, kPath, io::OpenMode::ReadOnly));
        io::MemoryFileSystem copy;
        Prepare(copy);
        Work(*Pager::Open(copy, kPath, io::OpenMode::ReadWrite));
        after_ = PagesOf(*Pager::Open(copy, kPath, io::OpenMode::ReadOnly));
    }

    void Prepare(io::FileSystem& files) const { pages::Prepare(files, kind_); }

    Kind kind_;
    io::MemoryFileSystem memory_;
    std::vector<std::vector<std::byte>> before_, after_;
};

class FailureTest : public FailureFixture, public testing::WithParamInterface<Kind> {
protected:
    FailureTest() : FailureFixture(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Kinds, FailureTest, kKinds,
                         [](const auto& each) { return each.param.name; });

class CrashTest : public FailureFixture, public testing::WithParamInterface<std::tuple<Cut, Kind>> {
protected:
    CrashTest() : FailureFixture(std::get<1>(GetParam())) {}

    Cut cut_ = std::get<0>(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Cuts, CrashTest,
                         testing::Combine(testing::Values(Cut{LastWrite::Whole, Unflushed::Kept},
                                                          Cut{LastWrite::Torn, Unflushed::Kept},
                                                          Cut{LastWrite::Whole, Unflushed::Lost},
                                                          Cut{LastWrite::Torn, Unflushed::Lost}),
                                          kKinds),
                         [](const auto& each) {
                             const Cut& cut = std::get<0>(each.param);
                             return std::string(std::get<1>(each.param).name) +
                                    (cut.last == LastWrite::Torn ? "Torn" : "Whole") +
                                    (cut.unflushed == Unflushed::Lost ? "Lost" : "Kept");
                         });

TEST_P(CrashTest, LeavesTheOldFileOrTheNewOne)
{
    bool sawOld = false;
    bool finished = false;
    for (std::size_t cut = 0; !finished; ++cut) {
        ASSERT_LT(cut, 100U);
        io::MemoryFileSystem files;
        Prepare(files);
        FaultFileSystem disk(files);
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        disk.PullThePlugAfter(cut, cut_.last, cut_.unflushed);
        bool told = true;
        try {
            Work(*pager);
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), 3043);
            told = false;
        }
        finished = !disk.PowerIsOut();
        disk.Reboot();
        const auto found = PagesOf(*Pager::Open(disk, kPath, io::OpenMode::ReadWrite));
        EXPECT_TRUE(found == before_ || found == after_) << "cut " << cut;
        EXPECT_TRUE(!told || found == after_) << "cut " << cut;
        sawOld = sawOld || found == before_;
    }
    EXPECT_TRUE(sawOld);
}

TEST_P(CrashTest, ARollbackThatIsCutItselfIsFinishedByTheNextOpener)
{
    // Cut while the pages are being written, so that there is something to roll back.
    for (std::size_t first = 6; first < 11; ++first) {
        for (std::size_t second = 0; second < 16; ++second) {
            io::MemoryFileSystem files;
            Prepare(files);
            FaultFileSystem disk(files);
            {
                const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
                disk.PullThePlugAfter(first, cut_.last);
                EXPECT_THROW(Work(*pager), base::NumberedError);
            }
            disk.Reboot();
            disk.PullThePlugAfter(second, cut_.last, cut_.unflushed);
            try {
                (void)Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            } catch (const base::NumberedError& error) {
                EXPECT_EQ(error.Number(), 3043);
            }
            disk.Reboot();
            const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            EXPECT_EQ(PagesOf(*pager), before_) << first << ", " << second;
        }
    }
}

// The disk fails once and goes on working: the set is undone at once, in the file and in memory.
TEST_P(FailureTest, AFailedCommitIsUndoneAtOnce)
{
    for (const int number : {3043, 3026}) {
        bool failed = true;
        for (std::size_t operation = 0; failed; ++operation) {
            ASSERT_LT(operation, 100U);
            io::MemoryFileSystem files;
            Prepare(files);
            FaultFileSystem disk(files);
            const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            disk.FailOnce(operation, number);
            failed = false;
            try {
                Work(*pager);
            } catch (const base::NumberedError& error) {
                EXPECT_EQ(error.Number(), number);
                failed = true;
            }
            EXPECT_EQ(PagesOf(*pager), failed ? before_ : after_) << operation;
            EXPECT_EQ(PagesOf(*Pager::Open(disk, kPath, io::OpenMode::ReadWrite)),
                      failed ? before_ : after_)
                << operation;
            if (!failed) continue;
            Work(*pager);
            EXPECT_EQ(PagesOf(*pager), after_) << operation;
        }
    }
}

// The disk fails for good; what it stores after the failure no longer changes.
TEST_P(FailureTest, APagerThatCannotUndoAnswersNothing)
{
    std::size_t refused = 0;
    for (std::size_t cut = 0; cut < 14; ++cut) {
        io::MemoryFileSystem files;
        Prepare(files);
        FaultFileSystem disk(files);
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        disk.PullThePlugAfter(cut, LastWrite::Torn);
        bool told = true;
        try {
            Work(*pager);
        } catch (const base::NumberedError&) {
            told = false;
        }
        if (told) break;
        EXPECT_THROW((void)PagesOf(*pager), base::NumberedError) << cut;
        EXPECT_THROW(Work(*pager), base::NumberedError) << cut;
        ++refused;
    }
    EXPECT_GT(refused, 10U);
}

// Whether one of `tries` attempts is not stopped by the disk.
template <class Action>
bool SucceedsWithin(std::size_t tries, Action action)
{
    for (std::size_t i = 0; i < tries; ++i) {
        try {
            action();
            return true;
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), 3043);
        }
    }
    return false;
}

// The disk fails, also while the set is being undone, and works again later.
TEST_P(FailureTest, APagerUndoesAFailedSetAsSoonAsTheDiskLetsIt)
{
    for (std::size_t first = 0; first < 12; ++first) {
        for (std::size_t again = 0; again < 4; ++again) {
            io::MemoryFileSystem files;
            Prepare(files);
            FaultFileSystem disk(files);
            const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
            disk.FailFrom(first, again + 1);
            EXPECT_THROW(Work(*pager), base::NumberedError);
            EXPECT_TRUE(SucceedsWithin(again + 1, [&] { EXPECT_EQ(PagesOf(*pager), before_); }));
            EXPECT_TRUE(SucceedsWithin(again + 1, [&] { Work(*pager); }));
            EXPECT_EQ(PagesOf(*pager), after_) << first << ", " << again;
        }
    }
}

TEST_P(FailureTest, AJournalOfAnotherFileIsIgnored)
{
    io::MemoryFileSystem files;
    Prepare(files);
    FaultFileSystem disk(files);
    {
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        disk.PullThePlugAfter(7);
        EXPECT_THROW(Work(*pager), base::NumberedError);
    }
    disk.Reboot();
    // Somebody puts another file in its place.
    io::MemoryFileSystem other;
    Prepare(other);
    auto& strange = other.Content(kPath);
    std::fill(strange.begin() + 2 * static_cast<std::ptrdiff_t>(kind_.version->pageSize),
              strange.end(), std::byte{0x77});
    files.Content(kPath) = strange;
    const auto pager = Pager::Open(files, kPath, io::OpenMode::ReadWrite);
    EXPECT_EQ(pager->Recovered(), Recovery::Nothing);
    EXPECT_EQ(files.Content(kPath), strange);
    EXPECT_FALSE(files.Exists(JournalPath(kPath) + ".set-aside"));
}

TEST_P(FailureTest, AJournalOfANewerCopyIsSetAside)
{
    io::MemoryFileSystem files;
    Prepare(files);
    const auto older = files.Content(kPath);
    FaultFileSystem disk(files);
    {
        const auto pager = Pager::Open(disk, kPath, io::OpenMode::ReadWrite);
        Work(*pager);
        disk.PullThePlugAfter(7);
        EXPECT_THROW(Work(*pager), base::NumberedError);
    }
    disk.Reboot();
    files.Content(kPath) = older;
    const auto pager = Pager::Open(files, kPath, io::OpenMode::ReadWrite);
    EXPECT_EQ(pager->Recovered(), Recovery::SetAside);
    EXPECT_EQ(files.Content(kPath), older);
    EXPECT_TRUE(files.Exists(JournalPath(kPath) + ".set-aside"));
}

}  // namespace

}  // namespace jet::pages
