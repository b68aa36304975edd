// SPDX-License-Identifier: Apache-2.0
// Tests of platform/qt: paths, formats, single instance, pointer, clipboard and clock.
#include "base/Calendar.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtEvents.h"
#include "platform/qt/QtInstance.h"
#include "platform/qt/QtPaths.h"
#include "platform/qt/QtPointer.h"
#include "platform/qt/QtSystemFormats.h"
#include "platform/qt/QtText.h"
#include "platform/qt/ShopStyle.h"
#include "tests/support/Samples.h"

#include <QApplication>
#include <QClipboard>
#include <QDateTime>

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tests {
namespace {

using namespace platform::qt;

class QtPathsTest : public testing::Test {
protected:
    std::string In(const std::string& name) const { return (folder.Path() / name).string(); }

    ScratchFolder folder;
    QtPaths paths{folder.Path().string() + "/", folder.Path().string()};
};

TEST_F(QtPathsTest, ProgramFolderHasNoTrailingSeparator)
{
    EXPECT_EQ(paths.ProgramFolder(), folder.Path().string());
}

TEST_F(QtPathsTest, BackslashAloneIsTheRootOfTheDrive)
{
    EXPECT_EQ(paths.ToHost("\\Lodrin.Log"), In("Lodrin.Log"));
    EXPECT_EQ(QtPaths("/opt").ToHost("\\no-such.Log"), "/no-such.Log");
}

TEST_F(QtPathsTest, DatabaseIsFoundInAnyCase)
{
    std::ofstream(In("KELVARO.MDB")) << "x";
    EXPECT_EQ(paths.ToHost(folder.Path().string() + "\\Kelvaro.mdb"), In("KELVARO.MDB"));
}

TEST_F(QtPathsTest, ExactNameIsPreferred)
{
    std::ofstream(In("kelvaro.mdb")) << "x";
    std::ofstream(In("Kelvaro.mdb")) << "x";
    EXPECT_EQ(paths.ToHost(folder.Path().string() + "\\kelvaro.mdb"), In("kelvaro.mdb"));
}

TEST(QtSystemFormatsTest, PrintsAsInTheUnitedStates)
{
    const QtSystemFormats formats(QLocale(QLocale::English, QLocale::UnitedStates));
    const base::Date date = base::DateFrom(
        {.year = 2024, .month = 1, .day = 15, .hour = 17, .minute = 55, .second = 3});
    EXPECT_EQ(formats.LongDate(date), "Monday, January 15, 2024");
    EXPECT_EQ(formats.ShortDate(date), "1/15/2024");
    EXPECT_EQ(formats.Time(date), "5:55:03 PM");
}

TEST(QtSystemFormatsTest, MachineWithoutALocaleCountsAsTheUnitedStates)
{
    const QtSystemFormats formats(QLocale::c());
    const base::Date date = base::DateFrom({.year = 2024, .month = 1, .day = 15, .hour = 0});
    EXPECT_EQ(formats.ShortDate(date), "1/15/2024");
    EXPECT_EQ(formats.Time(date), "12:00:00 AM");
}

TEST(QtSystemFormatsTest, FollowsALocaleOfItsOwn)
{
    const QtSystemFormats formats(QLocale(QLocale::German, QLocale::Germany));
    const base::Date date = base::DateFrom({.year = 2024, .month = 1, .day = 15, .hour = 17});
    EXPECT_EQ(formats.ShortDate(date), "15.01.2024");
    EXPECT_EQ(formats.Time(date), "17:00:00");
}

// Runs `check` in another process and answers what it answered.
bool InAnotherProcess(const std::function<bool()>& check)
{
    const pid_t child = fork();
    if (child == 0) _exit(check() ? 1 : 0);
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
}

class QtInstanceTest : public testing::Test {
protected:
    ScratchFolder folder;
    std::string lock = (folder.Path() / "one.lock").string();
    bool OtherSeesAnother()
    {
        return InAnotherProcess([this] { return QtInstance(lock).AnotherRuns(); });
    }
};

TEST_F(QtInstanceTest, SecondCopyIsRefusedWhileTheFirstLives)
{
    {
        QtInstance first(lock);
        EXPECT_FALSE(first.AnotherRuns());
        EXPECT_FALSE(first.AnotherRuns());
        EXPECT_TRUE(OtherSeesAnother());
    }
    EXPECT_FALSE(OtherSeesAnother());
}

TEST_F(QtInstanceTest, KilledCopyLeavesNoLock)
{
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0) {
        QtInstance first(lock);
        const char answer = first.AnotherRuns() ? 'y' : 'n';
        (void)!write(ready[1], &answer, 1);
        pause();
    }
    char answer = 0;
    ASSERT_EQ(read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'n');
    EXPECT_TRUE(OtherSeesAnother());
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_FALSE(OtherSeesAnother());
}

TEST_F(QtInstanceTest, ContentOfTheFileDoesNotMatter)
{
    std::ofstream(lock) << "garbage";
    QtInstance first(lock);
    EXPECT_FALSE(first.AnotherRuns());
    EXPECT_TRUE(OtherSeesAnother());
}

TEST(QtPointerTest, OneDefaultEndsAnyNumberOfHourglasses)
{
    QtPointer pointer;
    pointer.Hourglass();
    pointer.Hourglass();
    pointer.Default();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    pointer.Default();
}

TEST(QtClipboardTest, HoldsTheText)
{
    QtClipboard clipboard;
    clipboard.SetText("Error 91 in Müller");
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "Error 91 in Müller");
    clipboard.Clear();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().isEmpty());
}

TEST(QtClockTest, TellsTheLocalTimeInWholeSeconds)
{
    const base::DateParts now = base::PartsOf(QtClock().Now());
    const QDateTime read(QDate(now.year, now.month, now.day),
                         QTime(now.hour, now.minute, now.second));
    EXPECT_LE(std::abs(read.secsTo(QDateTime::currentDateTime())), 2);
}

TEST(QtEventsTest, WhatIsPostedRuns)
{
    QObject watcher;
    int posted = 0;
    QMetaObject::invokeMethod(
        &watcher, [&posted] { ++posted; }, Qt::QueuedConnection);
    QtEvents().LetPendingRun();
    EXPECT_EQ(posted, 1);
}

TEST(ShopStyleTest, SelectionCanBeReadAndStaysWithoutFocus)
{
    const QPalette palette = QApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        EXPECT_GE(Contrast(palette.color(group, QPalette::Highlight),
                           palette.color(group, QPalette::HighlightedText)),
                  4.5);
        EXPECT_EQ(palette.color(group, QPalette::Highlight),
                  palette.color(QPalette::Active, QPalette::Highlight));
    }
    EXPECT_GE(QApplication::font().pointSizeF(), 12);
}

}  // namespace
}  // namespace tests
