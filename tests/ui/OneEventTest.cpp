// SPDX-License-Identifier: Apache-2.0
// OneEventTest: the whole program with its real windows takes one event at a time, and ends when it
// cannot write down what went wrong.
#include "base/Calendar.h"
#include "jet/io/StdFile.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopWorld.h"
#include "tests/support/StartTexts.h"
#include "tests/ui/Robot.h"
#include "tools/demo/StagedShop.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <optional>
#include <vector>

namespace tests {
namespace {

constexpr const char* kTheDate = "Is this the correct date: Monday, March 15, 2004";

class OneEventTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(Program());
        std::filesystem::create_directories(Data());
        ShopWorld made(Data());
        made.MakeDatabase();
        made.Given({Employee("Adams, Al", 1), Employee("Baker, Bo", 2).With("PIN", "77"),
                    RepairOrder(1001), RepairOrder(1002)});
    }
    void TearDown() override
    {
        staged->dialogs.UnloadMain(staged->shop);
        staged.reset();
        jet::io::StdFileSystem files;
        EXPECT_SPOTLESS(files, (Data() / "Kelvaro.mdb").string());
    }
    std::filesystem::path Program() const { return folder.Path() / "program"; }
    std::filesystem::path Data() const { return folder.Path() / "data"; }

    // Starts the program, which only notes when it leaves the process, and chooses Baker, whose
    // clock ticks a thousand times a second.
    void StartWithBaker()
    {
        staged.emplace(Program(), Data(), base::DateFrom({2004, 3, 15, 7, 0, 0}));
        robot.Box(kTheDate, QMessageBox::Yes);
        robot.Box(kNothingToSynchronise);
        staged->dialogs.leave = [this](int exitCode) { ended.push_back(exitCode); };
        staged->Start();
        auto& board = Find<QTableView>("grdEmp");
        demo::ClickRow(board, demo::RowOf(board, "Baker, Bo"));
        staged->shop.window.Timer1.SetInterval(1);
        ExpectTitle("Lodrin -      7:00:00 AM");
    }
    void Type(const char* number) { demo::TypeAndEnter(Find<QComboBox>("cboRO"), number); }
    QWidget& Window() { return demo::Window("frmLodrin"); }
    template <class Control>
    Control& Find(const char* name)
    {
        return demo::Find<Control>(Window(), name);
    }
    void ExpectTitle(const char* title)
    {
        EXPECT_TRUE(
            QTest::qWaitFor([this, title] { return Window().windowTitle() == title; }, 2000))
            << Window().windowTitle().toStdString();
    }
    // While `open` is open the clock in the title stands still, and whatever is pressed is lost. A
    // window that came all the same would find no answer laid down, and fail the test.
    void ExpectNothingComesThrough(QDialog& open)
    {
        const QString title = Window().windowTitle();
        const std::string employee = Find<QLabel>("lblEmpName").text().toStdString();
        staged->clock.Advance(60);
        for (const char* button : {"cmdBreak", "cmdEndDay", "cmdExit"})
            Find<QPushButton>(button).click();
        for (const char* item : {"mnuSyncEmp", "mnuSynchRO", "mnuFileOpen", "mnuSetupItems"})
            Find<QAction>(item).trigger();
        demo::ClickRow(Find<QTableView>("grdEmp"), 0);
        Type("10106");
        QTest::qWait(30);
        EXPECT_EQ(Window().windowTitle(), title);
        EXPECT_EQ(Find<QLabel>("lblEmpName").text().toStdString(), employee);
        EXPECT_EQ(staged->shop.state.currentEmployee, 2);
        EXPECT_TRUE(open.isVisible());
        EXPECT_FALSE(staged->closed);
        EXPECT_TRUE(ended.empty());
    }

    ScratchFolder folder;
    Robot robot;
    std::optional<demo::StagedShop> staged;
    std::vector<int> ended;  // the exit codes with which the program left
};

TEST_F(OneEventTest, NothingComesThroughAPromptOrTheBoxBehindIt)
{
    StartWithBaker();
    robot.Then([this](QDialog& prompt) {
        ExpectNothingComesThrough(prompt);
        demo::AnswerPrompt(prompt, "78");
    });
    robot.Then([this](QDialog& box) {
        EXPECT_EQ(box.windowTitle().toStdString(), "Invalid PIN");
        ExpectNothingComesThrough(box);
        demo::Press(box, QMessageBox::Ok);
    });
    Type("1001  ");
    ExpectTitle("Lodrin -      7:02:00 AM");
}

TEST_F(OneEventTest, NothingComesThroughTheDialogsOfAJob)
{
    StartWithBaker();
    robot.Pin("77");
    robot.Then([this](QDialog& dialog) {
        ExpectNothingComesThrough(dialog);
        demo::ChooseLabor(dialog, "BL", "Body");
    });
    Type("1001  ");
    robot.Pin("77");
    robot.Then([this](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle().toStdString(), "Update Progress");
        ExpectNothingComesThrough(dialog);
        demo::Find<QPushButton>(dialog, "cmdOkay").click();
    });
    Find<QPushButton>("cmdBreak").click();
    EXPECT_EQ(Find<QLabel>("lblJob").text().toStdString(),
              "Day started 07:01 AM \u00b7 no job open");
}

TEST_F(OneEventTest, NothingComesThroughAQuestionOrTheFileDialog)
{
    StartWithBaker();
    robot.Then([this](QDialog& question) {
        EXPECT_EQ(question.windowTitle().toStdString(), "End Of Day");
        ExpectNothingComesThrough(question);
        demo::Press(question, QMessageBox::No);
    });
    Find<QPushButton>("cmdEndDay").click();
    // A cancelled dialog opens the same database again.
    robot.Then([this](QDialog& dialog) {
        ExpectNothingComesThrough(dialog);
        dialog.reject();
    });
    robot.Then([](QDialog& box) { demo::Press(box, QMessageBox::Ok); });
    Find<QAction>("mnuFileOpen").trigger();
}

TEST_F(OneEventTest, TrapThatCannotWriteItsLogEndsTheProgramWithThePlatformsMessage)
{
    StartWithBaker();
    // Where the log should be is a folder; a bare number is a failure that belongs into the log.
    std::filesystem::create_directory(Program() / "Lodrin.Log");
    robot.Then([](QDialog& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.windowTitle().toStdString(), "Lodrin");
        EXPECT_EQ(box.text().toStdString(), "Run-time error '75':\n\nPath/File access error");
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        box.accept();
    });
    Type("1001");
    EXPECT_EQ(ended, (std::vector<int>{1}));
    ShopWorld found(Data());
    EXPECT_EQ(found.EmployeeRecord("Baker, Bo").Text("Customer"), "");
    EXPECT_TRUE(found.Jobs().empty());
}

}  // namespace
}  // namespace tests
