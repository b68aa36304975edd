// SPDX-License-Identifier: Apache-2.0
// The catalogue of numbered errors, with its marks filled in.
#include "base/NumberedError.h"

#include <gtest/gtest.h>

using base::ErrorText;
using base::NumberedError;

TEST(ErrorTextsTest, AnErrorCarriesItsNumberAndText)
{
    const NumberedError error(3021);
    EXPECT_EQ(error.Number(), 3021);
    EXPECT_STREQ(error.what(), "No current record.");
}

TEST(ErrorTextsTest, PlainMarksAreFilledInOrder)
{
    EXPECT_EQ(ErrorText(3261, {"LDEmp", "Ann", "FRONT"}),
              "Table 'LDEmp' is exclusively locked by user 'Ann' on machine 'FRONT'.");
}

TEST(ErrorTextsTest, NumberedMarksAreFilledByTheirNumber)
{
    EXPECT_EQ(ErrorText(3260, {"FRONT", "Admin"}),
              "Could not update; currently locked by user 'Admin' on machine 'FRONT'.");
    EXPECT_EQ(ErrorText(3075, {"Syntax error in date", "WorkDate = ##"}),
              "Syntax error in date in query expression 'WorkDate = ##'.");
}

TEST(ErrorTextsTest, MarksInsideAMarkAreLeftAlone)
{
    EXPECT_EQ(ErrorText(3024, {"/data/a|1b.mdb"}), "Could not find file '/data/a|1b.mdb'.");
}

TEST(ErrorTextsTest, AMarkThatWasNotGivenIsLeftOut)
{
    EXPECT_EQ(ErrorText(3343), "Unrecognized database format ''.");
}

TEST(ErrorTextsTest, TwoBlanksStandBetweenTheSentencesOfTheEngine)
{
    EXPECT_EQ(
        ErrorText(3078, {"LDEmp"}),
        "The Microsoft Jet database engine cannot find the input table or query 'LDEmp'.  Make "
        "sure it exists and that its name is spelled correctly.");
    EXPECT_EQ(ErrorText(3061, {"1"}), "Too few parameters. Expected 1.");
}

TEST(ErrorTextsTest, RunTimeTextsHaveNoFullStopButOne)
{
    EXPECT_EQ(ErrorText(91), "Object variable or With block variable not set");
    EXPECT_EQ(ErrorText(31036), "Error saving to file");
    EXPECT_EQ(ErrorText(340, {"3"}), "Control array element '3' doesn't exist");
    EXPECT_EQ(ErrorText(32755), "Cancel was selected.");
}

TEST(ErrorTextsTest, AnUnknownNumberHasTheCommonText)
{
    EXPECT_EQ(ErrorText(2), "Application-defined or object-defined error");
    EXPECT_EQ(ErrorText(999999), "Application-defined or object-defined error");
}

TEST(ErrorTextsTest, TheDetailIsForToolsAndNotPartOfTheText)
{
    const NumberedError error = NumberedError(3343, {"a.mdb"}).At("page 7");
    EXPECT_STREQ(error.what(), "Unrecognized database format 'a.mdb'.");
    EXPECT_EQ(error.Detail(), "page 7");
    EXPECT_EQ(error.Number(), 3343);
}
