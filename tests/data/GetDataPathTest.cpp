// SPDX-License-Identifier: Apache-2.0
#include "data/DBOpen.h"
#include "tests/support/ShopFixture.h"
#include "tests/support/StartTexts.h"

namespace lodrin {
namespace {

constexpr const char* kWarning =
    "The Ostrel database could not be located.  Do you wish to locate it now? (Selecting no will "
    "end the program.)";
constexpr const char* kNothingSelected =
    "You have not selected a database! You will not be able to use the Lodrin program until the "
    "appropriate database is selected.";

class GetDataPathTest : public tests::ShopFixture {
protected:
    GetDataPathTest() { shop.values.DataPath = "C:\\Before"; }

    void Settings(const std::string& folder)
    {
        fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=" + folder + "\r\n");
    }
    [[nodiscard]] std::string Settings() const { return fakes.files.Read("C:/Lodrin/Lodrin.ini"); }
};

TEST_F(GetDataPathTest, TheFolderOfTheSettingsIsTakenWithoutAQuestion)
{
    Settings("C:\\Shop\\Data");
    GetDataPath(shop);
    EXPECT_EQ(shop.values.DataPath, "C:\\Shop\\Data");
    EXPECT_TRUE(fakes.prompts.boxes.empty());
}

TEST_F(GetDataPathTest, NoToTheWarningEndsTheProgramWithoutFurtherMessages)
{
    fakes.prompts.Expect(kWarning, platform::Answer::No);
    EXPECT_THROW(GetDataPath(shop), platform::ProgramEnded);
    EXPECT_EQ(fakes.prompts.boxes,
              (std::vector<platform::Box>{{.text = kWarning,
                                           .title = "Database Not Found Warning",
                                           .buttons = platform::Buttons::YesNo}}));
}

TEST_F(GetDataPathTest, CancellingTheDialogShowsThatNothingIsSelectedAndAsksAgain)
{
    fakes.prompts.Expect(kWarning, platform::Answer::Yes);
    fakes.prompts.ExpectFileCancelled();
    fakes.prompts.Expect(kNothingSelected);
    fakes.prompts.Expect(kWarning, platform::Answer::No);
    EXPECT_THROW(GetDataPath(shop), platform::ProgramEnded);
    EXPECT_EQ(fakes.prompts.boxes[1], (platform::Box{.text = kNothingSelected, .title = "Lodrin"}));
    EXPECT_TRUE(shop.values.MissingObjectFlag);
    EXPECT_TRUE(Reports().empty());
}

TEST_F(GetDataPathTest, SettingsWithoutTheKeyAskToo)
{
    fakes.files.Write("C:/Lodrin/Lodrin.ini", "[Other]\r\nx=1\r\n");
    fakes.prompts.Expect(kWarning, platform::Answer::No);
    EXPECT_THROW(GetDataPath(shop), platform::ProgramEnded);
}

TEST_F(GetDataPathTest, PickingAnyFileStoresItsFolderAndOpensTheDatabaseInIt)
{
    fakes.prompts.Expect(kWarning, platform::Answer::Yes);
    fakes.prompts.ExpectFile("C:\\Shop\\readme.txt");
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    GetDataPath(shop);
    EXPECT_EQ(shop.values.DataPath, "C:\\Shop");
    EXPECT_EQ(Settings(), "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
    EXPECT_EQ(shop.state.database.Name(), DatabasePath());
    EXPECT_EQ(fakes.prompts.filters,
              (std::vector<std::string>{"Ostrel (Kelvaro.mdb)|Kelvaro.mdb|ALL (*.*)|*.*"}));
}

TEST_F(GetDataPathTest, TheHourglassIsGoneAfterwards)
{
    fakes.prompts.ExpectFile("C:\\Shop\\Kelvaro.mdb");
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    mnuFileOpen_Click(shop);
    EXPECT_EQ(fakes.pointer.hourglasses, 1);
    EXPECT_FALSE(fakes.pointer.hourglass);
}

TEST_F(GetDataPathTest, CancellingKeepsTheFolderStoresItAndOpensItAgain)
{
    shop.values.DataPath = "C:\\Shop";
    fakes.prompts.ExpectFileCancelled();
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    mnuFileOpen_Click(shop);
    EXPECT_EQ(shop.values.DataPath, "C:\\Shop");
    EXPECT_EQ(Settings(), "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
    EXPECT_TRUE(shop.state.database.IsSet());
}

TEST_F(GetDataPathTest, OnAHostWithSlashesTheFolderIsCutThere)
{
    fakes.prompts.ExpectFile("C:/Shop/Kelvaro.mdb");
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    mnuFileOpen_Click(shop);
    EXPECT_EQ(shop.values.DataPath, "C:/Shop");
}

TEST_F(GetDataPathTest, AFolderThatCannotBeStoredGivesWayToTheStoredOne)
{
    Settings("C:\\Shop");
    fakes.files.RefuseWrites("C:/Lodrin/Lodrin.ini", 75);
    fakes.prompts.ExpectFile("D:\\Other\\Kelvaro.mdb");
    fakes.prompts.Expect(tests::kNothingToSynchronise);
    mnuFileOpen_Click(shop);
    EXPECT_EQ(shop.values.DataPath, "C:\\Shop");
}

}  // namespace
}  // namespace lodrin
