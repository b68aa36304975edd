// SPDX-License-Identifier: Apache-2.0
#include "tools/demo/Day.h"

#include "app/Dispatch.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "tools/demo/Hands.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <stdexcept>

namespace demo {

namespace {

constexpr int kScreenSettles = 80;  // milliseconds
constexpr int kTick = 10;           // milliseconds
constexpr const char* kTooLong =
    "Collision work, the whole of it, from the first dent pulled to the last gap set";
constexpr const char* kNoSuchOrder = "999999";

}  // namespace

Day::Day(StagedShop& staged, Album& album)
    : staged_(staged), album_(album),
      robot_([this](const std::string& fault) { faults_.push_back(fault); })
{
}

void Day::Play()
{
    StartUp();
    SecondCopy();
    FirstJobs();
    WrongPin();
    JobChange();
    UnknownOrder();
    BackToAnEarlierJob();
    Menus();
    Break();
    EndOfDay();
    Wordings();
    ReadyWindows();
    Leave();
    if (robot_.Waiting() > 0)
        faults_.push_back(std::to_string(robot_.Waiting()) + " windows never came");
}

// 07:42. The date is confirmed, the employees are synchronised, the window comes up.
void Day::StartUp()
{
    staged_.At("07:42 AM");
    robot_.Then([this](QDialog& box) {
        album_.Take("date-question");
        album_.WatchFor("frmSplash", "splash");
        Press(box, QMessageBox::Yes);
    });
    // The synchronisation reports; a shop without labor type descriptions is told so.
    robot_.Otherwise([this](QDialog& box) {
        album_.Take("start-up-box");
        Press(box, QMessageBox::Ok);
    });
    staged_.Start();
    robot_.Otherwise({});
    // The clock in the caption keeps up with the script.
    staged_.shop.window.Timer1.SetInterval(kTick);
    Settle();
    album_.Take("main-window");

    const std::vector<Technician> all = Technicians();
    if (all.size() < 3) throw std::logic_error("the demo needs three employees");
    first_ = all[0];
    second_ = all[1];
    third_ = all[2];
    for (const Technician& technician : all)
        if (!technician.pin.empty() && technician.row > second_.row) {
            third_ = technician;
            break;
        }
}

// Somebody starts the program once more.
void Day::SecondCopy()
{
    platform::qt::QtInstance another(staged_.paths.ProgramFolder() + "/Lodrin.lock");
    if (!another.AnotherRuns()) faults_.push_back("a second copy was not noticed");
}

// 07:55 and 08:05. Two technicians start their day: one types a number, one picks from the list.
void Day::FirstJobs()
{
    staged_.At("07:55 AM");
    Choose(first_);
    ExpectPin(first_, "pin");
    ExpectLabor("BL", "Body", "labor-type");
    TypeAndEnter(Orders(), OrderNumber(3));
    Settle();
    album_.Take("first-job");

    staged_.At("08:05 AM");
    Choose(second_);
    Orders().showPopup();
    Settle();
    album_.Take("repair-orders");
    ExpectPin(second_);
    ExpectLabor("RL", "Paint");
    PickFromList(Orders(), 6);
    Settle();
    album_.Take("second-technician");
}

// 08:10. A wrong PIN starts nothing.
void Day::WrongPin()
{
    if (third_.pin.empty()) return;
    staged_.At("08:10 AM");
    Choose(third_);
    robot_.Then([](QDialog& prompt) { AnswerPrompt(prompt, "0"); });
    ExpectBox(QMessageBox::Ok, "invalid-pin");
    TypeAndEnter(Orders(), OrderNumber(1));
}

// 10:20. The first technician goes over to another car.
void Day::JobChange()
{
    staged_.At("10:20 AM");
    Choose(first_);
    ExpectPin(first_);
    ExpectLabor("BL", "Body");
    TypeAndEnter(Orders(), OrderNumber(8));
    Settle();
    album_.Take("job-changed");
}

// 10:31. A number that no repair order has.
void Day::UnknownOrder()
{
    staged_.At("10:31 AM");
    Choose(second_);
    ExpectPin(second_);
    ExpectLabor("RL", "Paint");
    ExpectBox(QMessageBox::Ok, "unknown-order");
    TypeAndEnter(Orders(), kNoSuchOrder);
}

// 11:35. Back to the first car, from the list of his last jobs.
void Day::BackToAnEarlierJob()
{
    staged_.At("11:35 AM");
    Choose(first_);
    ExpectPin(first_);
    ExpectLabor("BL", "Body");
    DoubleClickEntry(LastJobs(), 0);
    Settle();
    album_.Take("back-again");
}

// 11:40. The menus, and the dialog that picks another database, left without a choice.
void Day::Menus()
{
    staged_.At("11:40 AM");
    QWidget& window = Window("frmLodrin");
    auto& file = Find<QMenu>(window, "mnuFile");
    file.popup(window.mapToGlobal(QPoint(8, 36)));
    Settle();
    album_.Take("menu");
    file.close();

    Find<QAction>(window, "mnuSynchRO").trigger();
    robot_.Then([this](QDialog& dialog) {
        Settle();
        album_.Take("open-database");
        dialog.reject();
    });
    // The database that is set already is opened again, employees included.
    album_.WatchFor("frmProcMsg", "processing");
    ExpectBox(QMessageBox::Ok, "synchronised-again");
    Find<QAction>(window, "mnuFileOpen").trigger();
    Settle();
}

// 12:00. The first technician goes to lunch.
void Day::Break()
{
    staged_.At("12:00 PM");
    Choose(first_);
    ExpectPin(first_);
    ExpectProgress(2, "progress");
    Find<QPushButton>(Window("frmLodrin"), "cmdBreak").click();
    Settle();
    album_.Take("on-break");
}

// 12:45 and 04:30 PM. He works on, and goes home.
void Day::EndOfDay()
{
    staged_.At("12:45 PM");
    ExpectPin(first_);
    ExpectLabor("BL", "Body");
    DoubleClickEntry(LastJobs(), 0);
    staged_.At("04:30 PM");
    Settle();
    ExpectBox(QMessageBox::Yes, "end-of-day-question");
    ExpectPin(first_);
    ExpectProgress(1, "progress-again");
    Find<QPushButton>(Window("frmLodrin"), "cmdEndDay").click();
    Settle();
    album_.Take("day-ended");
}

// 04:32 PM. The shop words a labor type; a wording that is too long is refused and stays.
void Day::Wordings()
{
    staged_.At("04:32 PM");
    robot_.Then([this](QDialog& window) {
        Settle();
        album_.Take("status-descriptions");
        auto& grid = Find<QTableView>(window, "grdStatus");
        QTest::keyClick(&grid, Qt::Key_Down);
        QTest::keyClick(&grid, Qt::Key_F2);
        auto& line = Find<QLineEdit>(window, "cellEditor");
        QTest::keyClicks(&line, kTooLong);
        Settle();
        album_.Take("status-typing");
        // The robot is busy with this window: the box over it is answered apart.
        QTimer::singleShot(kScreenSettles, &window, [this] {
            Settle();
            auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            album_.Take("status-refused");
            Press(*box, QMessageBox::Ok);
        });
        QTest::keyClick(&line, Qt::Key_Return);
        line.setText("Collision");
        Find<QPushButton>(window, "cmdExit").click();
    });
    Find<QAction>(Window("frmLodrin"), "mnuSetupItems").trigger();
}

// Two windows that nothing in the program opens yet.
void Day::ReadyWindows()
{
    robot_.Then([this](QDialog& window) {
        Settle();
        album_.Take("date-selection");
        window.close();
    });
    lodrin::Dispatch(staged_.shop, [](lodrin::Shop& shop) { lodrin::ShowDateSel(shop); });

    staged_.shop.forms.preview.GEXPreview1.Fill(staged_.shop.window.grdEmp, "Employees");
    staged_.dialogs.ShowPreview(staged_.shop);
    Settle();
    album_.Take("print-preview");
    Find<QPushButton>(Window("frmPreview"), "cmdClose").click();
    Settle();
}

// 04:35 PM. The window is closed; that ends the program.
void Day::Leave()
{
    staged_.At("04:35 PM");
    Find<QPushButton>(Window("frmLodrin"), "cmdExit").click();
    if (!staged_.closed) faults_.push_back("the window did not close");
}

std::vector<Day::Technician> Day::Technicians()
{
    std::vector<Technician> all;
    dao::Recordset profiles = staged_.shop.state.database.OpenRecordset("SELECT * FROM Profile");
    for (int row = 0; row < Board().model()->rowCount(); ++row) {
        const auto cell = [&](const lodrin::BoardField& field) {
            return Board().model()->index(row, field.column - 1).data().toString().toStdString();
        };
        profiles.FindFirst("ProfileNumber = " + cell(lodrin::LDEmp::EmpID));
        if (profiles.NoMatch()) continue;
        all.push_back(
            {row, cell(lodrin::LDEmp::Name), base::TextOf(profiles[lodrin::Profile::PIN].Value())});
    }
    return all;
}

void Day::Choose(const Technician& technician)
{
    ClickRow(Board(), technician.row);
    Settle();
}

void Day::ExpectPin(const Technician& technician, const QString& picture)
{
    if (technician.pin.empty()) return;
    robot_.Then([this, technician, picture](QDialog& prompt) {
        if (!picture.isEmpty()) album_.Take(picture);
        AnswerPrompt(prompt, technician.pin);
    });
}

void Day::ExpectLabor(const std::string& code, const std::string& department,
                      const QString& picture)
{
    robot_.Then([this, code, department, picture](QDialog& dialog) {
        Settle();
        if (!picture.isEmpty()) album_.Take(picture);
        ChooseLabor(dialog, code, department);
    });
}

void Day::ExpectProgress(int entry, const QString& picture)
{
    robot_.Then([this, entry, picture](QDialog& dialog) {
        ClickEntry(Find<QListWidget>(dialog, "lstProgress"), entry);
        Settle();
        album_.Take(picture);
        Find<QPushButton>(dialog, "cmdOkay").click();
    });
}

void Day::ExpectBox(QMessageBox::StandardButton button, const QString& picture)
{
    robot_.Then([this, button, picture](QDialog& box) {
        album_.Take(picture);
        Press(box, button);
    });
}

std::string Day::OrderNumber(int entry)
{
    const std::string text = Orders().itemText(entry).toStdString();
    return text.substr(0, text.find(' '));
}

void Day::Settle()
{
    QTest::qWait(kScreenSettles);
}

QTableView& Day::Board()
{
    return Find<QTableView>(Window("frmLodrin"), "grdEmp");
}

QComboBox& Day::Orders()
{
    return Find<QComboBox>(Window("frmLodrin"), "cboRO");
}

QListWidget& Day::LastJobs()
{
    return Find<QListWidget>(Window("frmLodrin"), "lstHistory");
}

}  // namespace demo
