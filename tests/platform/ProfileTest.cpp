// SPDX-License-Identifier: Apache-2.0
// ProfileTest: profile files are read as the system does, and changed line by line.
#include "platform/Profile.h"

#include "platform/fake/MemoryFiles.h"

#include <gtest/gtest.h>
#include <string>

namespace {

constexpr const char* kPath = "C:/Lodrin/Lodrin.ini";

class ProfileTest : public ::testing::Test {
protected:
    platform::MemoryFiles files;

    std::string ReadFrom(const std::string& content, const std::string& section = "FileLoc",
                         const std::string& key = "Lodrin", const std::string& fallback = "",
                         std::size_t size = 256)
    {
        files.Write(kPath, content);
        return platform::ReadProfile(files, kPath, section, key, fallback, size);
    }

    std::string WrittenTo(const std::string& content, const std::string& key,
                          const std::string& value, const std::string& section = "FileLoc")
    {
        files.Write(kPath, content);
        EXPECT_TRUE(platform::WriteProfile(files, kPath, section, key, value));
        return files.Read(kPath);
    }
};

TEST_F(ProfileTest, NamesCompareWithoutCaseAndOuterBlanks)
{
    EXPECT_EQ(
        ReadFrom("; c\r\n[ FileLoc ]\r\n Lodrin = \"C:\\Shop Data\" \r\n", " fileloc", "LODRIN "),
        "C:\\Shop Data");
}

TEST_F(ProfileTest, ValueKeepsBackslashesEqualSignsAndWhatLooksLikeAComment)
{
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=C:\\new\\x=1 ; tail\n"), "C:\\new\\x=1 ; tail");
}

TEST_F(ProfileTest, OneEnclosingPairOfQuotesIsRemoved)
{
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin='C:\\Shop'"), "C:\\Shop");
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=\"\"x\"\""), "\"x\"");
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=\"x'"), "\"x'");
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=\""), "\"");
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=\" x \""), " x ");
}

TEST_F(ProfileTest, EmptyValueIsNotTheFallback)
{
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=\n", "FileLoc", "Lodrin", "d"), "");
}

TEST_F(ProfileTest, MissingFileSectionOrKeyReadsAsTheFallbackWithoutTrailingBlanks)
{
    EXPECT_EQ(platform::ReadProfile(files, "C:/no.ini", "FileLoc", "Lodrin", "d  ", 256), "d");
    EXPECT_EQ(ReadFrom("[Other]\nLodrin=x\n", "FileLoc", "Lodrin", "d"), "d");
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin\n", "FileLoc", "Lodrin", "d"), "d");
}

TEST_F(ProfileTest, FirstSectionAndFirstKeyWin)
{
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=1\nlodrin=2\n[FileLoc]\nLodrin=3\n"), "1");
    EXPECT_EQ(ReadFrom("[FileLoc]\nA=1\n[FileLoc]\nLodrin=3\n", "FileLoc", "Lodrin", "d"), "d");
}

TEST_F(ProfileTest, CommentedKeyIsNoKeyAndHashIsNoComment)
{
    EXPECT_EQ(ReadFrom("[FileLoc]\n  ;Lodrin=1\nLodrin=2\n"), "2");
    EXPECT_EQ(ReadFrom("[FileLoc]\n#Lodrin=1\n", "FileLoc", "#Lodrin"), "1");
}

TEST_F(ProfileTest, TextAfterTheBracketIsIgnoredAndAnOpenBracketIsNoHeader)
{
    EXPECT_EQ(ReadFrom("[FileLoc] old\nLodrin=1\n"), "1");
    EXPECT_EQ(ReadFrom("[FileLoc\nLodrin=1\n", "FileLoc", "Lodrin", "d"), "d");
}

TEST_F(ProfileTest, EveryLineEndCountsAndAByteOrderMarkIsSkipped)
{
    EXPECT_EQ(ReadFrom("\xEF\xBB\xBF[FileLoc]\rLodrin=1\rB=2"), "1");
    EXPECT_EQ(ReadFrom("[FileLoc]\r\nA=0\nLodrin=1"), "1");
}

TEST_F(ProfileTest, AnswerFitsTheBuffer)
{
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=abcdef\n", "FileLoc", "Lodrin", "", 4), "abc");
    EXPECT_EQ(ReadFrom("[FileLoc]\nLodrin=abcdef\n", "FileLoc", "Lodrin", "", 0), "");
}

TEST_F(ProfileTest, ChangedKeyKeepsItsSpellingAndEveryOtherByteOfTheFile)
{
    EXPECT_EQ(WrittenTo("; top\r\n\r\n[FileLoc]\n; c1\r\nLodrin = old\r\nB=2\r\n\r\n[X]\r\ny=1",
                        "LODRIN", "new"),
              "; top\r\n\r\n[FileLoc]\n; c1\r\nLodrin=new\r\nB=2\r\n\r\n[X]\r\ny=1");
}

TEST_F(ProfileTest, NewKeyGoesBehindTheLastUsedLineOfItsSection)
{
    EXPECT_EQ(WrittenTo("[FileLoc]\r\nB=2\r\n\r\n[X]\r\ny=1\r\n", "Added", "z"),
              "[FileLoc]\r\nB=2\r\nAdded=z\r\n\r\n[X]\r\ny=1\r\n");
    EXPECT_EQ(WrittenTo("[FileLoc]\r\nB=2", "Added", "z"), "[FileLoc]\r\nB=2\r\nAdded=z\r\n");
    EXPECT_EQ(WrittenTo("[FileLoc]", "Added", "z"), "[FileLoc]\r\nAdded=z\r\n");
}

TEST_F(ProfileTest, NewSectionGoesToTheEndOfTheFile)
{
    EXPECT_EQ(WrittenTo("[X]\r\ny=1", "Lodrin", "C:\\Shop"),
              "[X]\r\ny=1\r\n[FileLoc]\r\nLodrin=C:\\Shop\r\n");
    EXPECT_EQ(WrittenTo("", "Lodrin", "C:\\Shop"), "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
}

TEST_F(ProfileTest, MissingFileIsMade)
{
    EXPECT_TRUE(platform::WriteProfile(files, "C:/new.ini", "FileLoc", "Lodrin", "C:\\Shop"));
    EXPECT_EQ(files.Read("C:/new.ini"), "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
}

TEST_F(ProfileTest, OnlyTheFirstOfTwoEqualKeysChanges)
{
    EXPECT_EQ(WrittenTo("[FileLoc]\nLodrin=1\nLodrin=2\n[FileLoc]\nLodrin=3\n", "Lodrin", "x"),
              "[FileLoc]\nLodrin=x\nLodrin=2\n[FileLoc]\nLodrin=3\n");
}

TEST_F(ProfileTest, LeadingBlanksOfAValueAreDroppedAndAnEmptyValueStays)
{
    EXPECT_EQ(WrittenTo("[FileLoc]\nLodrin=1\n", "Lodrin", "  x "), "[FileLoc]\nLodrin=x \n");
    EXPECT_EQ(WrittenTo("[FileLoc]\nLodrin=1\n", "Lodrin", ""), "[FileLoc]\nLodrin=\n");
}

TEST_F(ProfileTest, RefusedWriteIsAnsweredWithFalse)
{
    files.RefuseWrites(kPath, 75);
    EXPECT_FALSE(platform::WriteProfile(files, kPath, "FileLoc", "Lodrin", "x"));
    EXPECT_FALSE(files.Exists(kPath));
}

}  // namespace
