// SPDX-License-Identifier: Apache-2.0
#include "app/modGlobal.h"

#include "base/NumberedError.h"
#include "platform/fake/Fakes.h"
#include "platform/fake/OtherServices.h"

#include <gtest/gtest.h>

namespace lodrin {
namespace {

constexpr const char* kFile = "C:\\Lodrin\\Lodrin.ini";

// Files in memory that count how often they are read.
class CountingFiles : public platform::MemoryFiles {
public:
    mutable int reads = 0;

    [[nodiscard]] std::string Read(std::string_view path) const override
    {
        ++reads;
        return MemoryFiles::Read(path);
    }
};

// Paths that cannot be mapped.
class BadPaths : public platform::FixedPaths {
public:
    [[nodiscard]] std::string ToHost(std::string_view /*path*/) const override
    {
        throw base::NumberedError(52);
    }
};

class modGlobalTest : public testing::Test {
protected:
    void Settings(const std::string& content) { files_.Write("C:/Lodrin/Lodrin.ini", content); }
    [[nodiscard]] std::string Folder() const
    {
        return ReadIniString(services_, "FileLoc", "Lodrin", "", kFile);
    }

    [[nodiscard]] platform::Services With(platform::Paths& paths)
    {
        return platform::With(platform::With(fakes_.AsServices(), files_), paths);
    }

    platform::Fakes fakes_;
    CountingFiles files_;
    platform::Services services_ = With(fakes_.paths);
};

TEST_F(modGlobalTest, AnAbsentKeySectionOrFileYieldsTheEmptyString)
{
    EXPECT_EQ(Folder(), "");
    Settings("[Other]\r\nLodrin=C:\\x\r\n");
    EXPECT_EQ(Folder(), "");
    Settings("[FileLoc]\r\nOstrel=C:\\x\r\n");
    EXPECT_EQ(Folder(), "");
}

TEST_F(modGlobalTest, ADefaultStandsInForWhatIsMissing)
{
    EXPECT_EQ(ReadIniString(services_, "FileLoc", "Lodrin", "d", kFile), "d");
    Settings("[FileLoc]\r\nLodrin=\r\n");
    EXPECT_EQ(ReadIniString(services_, "FileLoc", "Lodrin", "d", kFile), "");
}

TEST_F(modGlobalTest, AFolderWithBackslashesIsReadAsItStands)
{
    Settings("; c\r\n[FileLoc]\r\nLodrin = \"C:\\Shop Data\" \r\n");
    EXPECT_EQ(ReadIniString(services_, "fileloc", "LODRIN", "", kFile), "C:\\Shop Data");
}

TEST_F(modGlobalTest, AValueThatMightBeCutIsReadAgainWithALargerBuffer)
{
    const auto readsFor = [&](std::size_t length) {
        const std::string value = "C:\\" + std::string(length - 6, 'x') + "end";
        Settings("[FileLoc]\r\nLodrin=" + value + "\r\n");
        files_.reads = 0;
        EXPECT_EQ(Folder(), value);
        return files_.reads;
    };
    EXPECT_EQ(readsFor(253), 1);
    EXPECT_EQ(readsFor(254), 2);
    EXPECT_EQ(readsFor(255), 2);
    EXPECT_EQ(readsFor(256), 2);
    EXPECT_EQ(readsFor(509), 2);
    EXPECT_EQ(readsFor(510), 3);
    EXPECT_EQ(readsFor(16381), 7);
}

TEST_F(modGlobalTest, AValueBeyondEveryBufferOverflows)
{
    Settings("[FileLoc]\r\nLodrin=" + std::string(16382, 'x') + "\r\n");
    try {
        (void)Folder();
        FAIL() << "no error";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 6);
    }
}

TEST_F(modGlobalTest, AFileWithoutAFolderLiesInTheWindowsDirectory)
{
    files_.Write("C:/Windows/win.ini", "[Desktop]\r\nPattern=none\r\n");
    EXPECT_EQ(ReadIniString(services_, "Desktop", "Pattern"), "none");
}

TEST_F(modGlobalTest, OlderFilesInWindows1252AreReadToo)
{
    Settings("[FileLoc]\r\nLodrin=C:\\M\xFCller\r\n");
    EXPECT_EQ(Folder(), "C:\\Müller");
    Settings("[FileLoc]\r\nLodrin=C:\\Müller\r\n");
    EXPECT_EQ(Folder(), "C:\\Müller");
}

TEST_F(modGlobalTest, WritingAnswersFalseWhenItSucceeded)
{
    EXPECT_FALSE(WriteIniString(services_, "FileLoc", "Lodrin", "C:\\Shop", kFile));
    EXPECT_EQ(Folder(), "C:\\Shop");
}

TEST_F(modGlobalTest, WritingAnswersTrueWhenItFailed)
{
    files_.RefuseWrites("C:/Lodrin/Lodrin.ini", 75);
    EXPECT_TRUE(WriteIniString(services_, "FileLoc", "Lodrin", "C:\\Shop", kFile));
    EXPECT_EQ(Folder(), "");
}

TEST_F(modGlobalTest, AFileExistsUnderAnyCaseOfItsName)
{
    EXPECT_FALSE(FileExists(services_, "C:\\Lodrin\\lodrin.ini"));
    Settings("");
    EXPECT_TRUE(FileExists(services_, "C:\\Lodrin\\lodrin.ini"));
}

TEST_F(modGlobalTest, ABadPathIsNoFile)
{
    BadPaths bad;
    const platform::Services withBadPaths = With(bad);
    EXPECT_FALSE(FileExists(withBadPaths, "?"));
}

}  // namespace
}  // namespace lodrin
