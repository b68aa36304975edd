// SPDX-License-Identifier: Apache-2.0
#include "app/modErrTrap.h"
#include "base/NumberedError.h"
#include "tests/support/ShellFixture.h"

namespace lodrin {
namespace {

constexpr const char* kLocation = "Sub frmLodrin!Form_Load()";

class ErrTrapTest : public tests::ShellFixture {
protected:
    void Trap(int number) { ErrTrap(shop, kLocation, number, base::ErrorText(number)); }

    static std::string ReportText(const std::string& version)
    {
        return "Error 61 in Sub frmLodrin!Form_Load() (Line = 0)\r\n"
               "while running Lodrin.exe " +
               version + "\r\n\r\nError = 'Disk full'";
    }
    static std::string BoxText(const std::string& report)
    {
        return report + "\r\n\r\nThis message has been copied to your clipboard for easy retreval."
                        "\r\n\r\n\r\nSelect 'OK' and the program will attempt to continue running.";
    }
};

TEST_F(ErrTrapTest, AnOrdinaryFailureAppendsOneQuotedLineAndShowsNothing)
{
    Trap(3021);
    EXPECT_EQ(Log(), "\"Error 3021 in Sub frmLodrin!Form_Load()Error = 'No current record.'"
                     "1/15/2024:5:55:03 PM\"\r\n");
    EXPECT_TRUE(fakes.prompts.boxes.empty());
}

TEST_F(ErrTrapTest, EachOrdinaryFailureIsALineOfItsOwn)
{
    Trap(3021);
    Trap(91);
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3021 Sub frmLodrin!Form_Load()",
                                                   "91 Sub frmLodrin!Form_Load()"}));
}

TEST_F(ErrTrapTest, TheLogIsWrittenInWindows1252)
{
    ErrTrap(shop, kLocation, 3265, "");
    ErrTrap(shop, kLocation, 3024, "C:\\Müller\\中.mdb");
    EXPECT_NE(Log().find("'C:\\M\xFCller\\?.mdb'"), std::string::npos);
}

TEST_F(ErrTrapTest, AnOrdinaryFailureTakesTheHourglassAway)
{
    fakes.pointer.Hourglass();
    Trap(3021);
    EXPECT_FALSE(fakes.pointer.hourglass);
}

TEST_F(ErrTrapTest, ALockedRecordShowsTheShortMessageAndWritesNothing)
{
    fakes.pointer.Hourglass();
    for (const int number : {3046, 3158, 3186, 3187, 3188, 3189, 3218, 3260, 3262}) {
        fakes.prompts.Expect("Locked.'1/15/2024:5:55:03 PM");
        ErrTrap(shop, kLocation, number, "Locked.");
        EXPECT_EQ(shop.values.LastErrNumber, number);
    }
    EXPECT_EQ(fakes.prompts.boxes.back(),
              (platform::Box{.text = "Locked.'1/15/2024:5:55:03 PM", .title = "Lodrin"}));
    EXPECT_EQ(Log(), "");
    EXPECT_TRUE(fakes.pointer.hourglass);
}

TEST_F(ErrTrapTest, ADiskFullShowsTheApplicationErrorAndGoesOn)
{
    const std::string report = ReportText("v1.00 (Build 5)");
    fakes.pointer.Hourglass();
    fakes.prompts.Expect(BoxText(report));
    Trap(61);
    EXPECT_EQ(fakes.prompts.boxes,
              (std::vector<platform::Box>{{.text = BoxText(report),
                                           .title = "Application Error",
                                           .icon = platform::Icon::Critical}}));
    EXPECT_EQ(fakes.clipboard.text, report);
    EXPECT_EQ(fakes.clipboard.clears, 1);
    EXPECT_FALSE(fakes.pointer.hourglass);
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(shop.values.LastErrNumber, 61);
}

TEST_F(ErrTrapTest, EverySeriousNumberIsShownAndNoneIsLogged)
{
    for (const int number : {7, 11, 61, 70, 76, 31001, 31036, 31037}) {
        const std::string report = "Error " + std::to_string(number) +
                                   " in L (Line = 0)\r\nwhile running Lodrin.exe v1.00 (Build "
                                   "5)\r\n\r\nError = 'D'";
        fakes.prompts.Expect(BoxText(report));
        ErrTrap(shop, "L", number, "D");
    }
    EXPECT_EQ(fakes.prompts.boxes.size(), 8U);
    EXPECT_EQ(Log(), "");
}

TEST_F(ErrTrapTest, TheReportNamesTheVersionThroughItsPatterns)
{
    const std::vector<std::pair<platform::Version, std::string>> versions{
        {{1, 0, 5}, "v1.00 (Build 5)"},
        {{0, 0, 0}, "v.00 (Build 0)"},
        {{2, 15, 0}, "v2.15 (Build 0)"}};
    for (const auto& version : versions) {
        const std::string report = ReportText(version.second);
        fakes.program.version = version.first;
        fakes.prompts.Expect(BoxText(report));
        Trap(61);
        EXPECT_EQ(fakes.clipboard.text, report);
    }
}

TEST_F(ErrTrapTest, AnObjectNoLongerSetIsSilent)
{
    fakes.pointer.Hourglass();
    Trap(3420);
    EXPECT_EQ(shop.values.LastErrNumber, 3420);
    EXPECT_EQ(Log(), "");
    EXPECT_TRUE(fakes.prompts.boxes.empty());
    EXPECT_TRUE(fakes.pointer.hourglass);
    EXPECT_FALSE(shop.values.MissingObjectFlag);
    EXPECT_EQ(shop.values.tableExists, 0);
}

TEST_F(ErrTrapTest, TableExistsIsRememberedAndForgotten)
{
    Trap(3010);
    EXPECT_EQ(shop.values.tableExists, 1);
    Trap(3265);
    EXPECT_EQ(shop.values.tableExists, 0);
    Trap(3020);
    EXPECT_EQ(shop.values.tableExists, 1);
    Trap(3191);
    EXPECT_EQ(shop.values.tableExists, 0);
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(shop.values.LastErrNumber, 3191);
}

TEST_F(ErrTrapTest, AMissingObjectIsRemembered)
{
    for (const int number : {3159, 3376, 32755}) {
        shop.values.MissingObjectFlag = false;
        Trap(number);
        EXPECT_TRUE(shop.values.MissingObjectFlag) << number;
    }
    EXPECT_EQ(Log(), "");
}

TEST_F(ErrTrapTest, ALogThatCannotBeWrittenLeavesTheTrap)
{
    fakes.files.RefuseWrites("/Lodrin.Log", 75);
    shop.values.LastErrNumber = 1;
    try {
        Trap(3021);
        FAIL() << "no error";
    } catch (const base::NumberedError& error) {
        EXPECT_EQ(error.Number(), 75);
    }
    EXPECT_EQ(shop.values.LastErrNumber, 1);
}

}  // namespace
}  // namespace lodrin
