// SPDX-License-Identifier: Apache-2.0
// Window: whether a full board and a long list of repair orders are handled within a frame, in the
// real main window.
#include "bench/BenchShop.h"
#include "bench/Race.h"
#include "bench/Stopwatch.h"
#include "jet/io/StdFile.h"
#include "tests/support/Samples.h"
#include "tools/demo/Hands.h"
#include "tools/demo/Robot.h"
#include "tools/demo/StagedShop.h"
#include "tools/shop/SampleShop.h"

#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

namespace {

constexpr int kEmployees = 120;
constexpr int kOrders = 20000;
constexpr int kOrdersMade = 23000;      // some have no number yet
constexpr double kFrame = 1000.0 / 60;  // milliseconds

// A day with everybody at work and every order open.
void MakeShop(const std::filesystem::path& folder)
{
    jet::io::StdFileSystem disk;
    const std::string path = folder / "Kelvaro.mdb";
    tools::shop::MakeSampleShop(disk, path,
                                {.employees = kEmployees,
                                 .orders = kOrdersMade,
                                 .history = 5000,
                                 .today = bench::Today(),
                                 .papers = false},
                                [](std::string_view, int) {});
    dao::DBEngine engine({bench::Today});
    engine.DefaultWorkspace().OpenDatabase(path).Execute(
        "UPDATE WorkOrder SET WOType = 'WorkOrder', Archived = FALSE "
        "WHERE WorkOrderNumber Is Not Null");
}

// The slowest of the times is what a person notices.
template <class Act>
double Slowest(int times, const Act& act)
{
    double slowest = 0;
    for (int turn = 0; turn < times; ++turn) {
        const bench::Stopwatch watch;
        act(turn);
        QApplication::processEvents();
        slowest = std::max(slowest, watch.Milliseconds());
    }
    return slowest;
}

class WindowAsked {
public:
    explicit WindowAsked(bench::Races& races) : races_(races) {}

    template <class Act>
    void Frames(const char* what, int times, const Act& act)
    {
        races_.Report({'w', what, times},
                      {.ours = Slowest(times, act), .limit = kFrame, .unit = " ms"});
    }

private:
    bench::Races& races_;
};

void AskBoard(WindowAsked& ask)
{
    auto& board = demo::Find<QTableView>(demo::Window("frmLodrin"), "grdEmp");
    if (board.model()->rowCount() != kEmployees) throw std::logic_error("the board is not full");
    QScrollBar& bar = *board.verticalScrollBar();
    ask.Frames("a board of 120 painted anew, slowest of", 30,
               [&](int) { board.viewport()->repaint(); });
    ask.Frames("a board of 120 scrolled by a page, slowest of", 30, [&](int turn) {
        bar.setValue(turn % 2 == 0 ? bar.maximum() : bar.minimum());
        board.viewport()->repaint();
    });
    ask.Frames("another employee of 120 clicked, slowest of", 60,
               [&](int turn) { demo::ClickRow(board, turn * 7 % kEmployees); });
}

void AskOrders(WindowAsked& ask)
{
    auto& orders = demo::Find<QComboBox>(demo::Window("frmLodrin"), "cboRO");
    if (orders.count() < kOrders)
        throw std::logic_error("only " + std::to_string(orders.count()) + " orders");
    QLineEdit& field = *orders.lineEdit();
    field.setFocus();
    const QString number = orders.itemText(kOrders / 2).section(' ', 0, 0);
    ask.Frames("a letter typed into a box of 20,000 orders, slowest of", 60, [&](int turn) {
        const int at = turn % static_cast<int>(number.size() + 1);
        if (at == number.size())
            field.clear();
        else
            QTest::keyClick(&orders, number[at].toLatin1());
    });
    field.clear();
    ask.Frames("the list of 20,000 orders opened and closed, slowest of", 20, [&](int turn) {
        if (turn % 2 == 0)
            orders.showPopup();
        else
            orders.hidePopup();
    });
    orders.showPopup();
    QScrollBar& bar = *orders.view()->verticalScrollBar();
    ask.Frames("the list of 20,000 orders scrolled by a tenth, slowest of", 30, [&](int turn) {
        bar.setValue(bar.maximum() / 10 * (turn % 10));
        orders.view()->viewport()->repaint();
    });
    orders.hidePopup();
}

int Ask(const bench::BenchShop&)
{
    const tests::ScratchFolder folder;
    MakeShop(folder.Path());
    bench::Races races("W");
    WindowAsked ask(races);
    demo::StagedShop staged(folder.Path(), folder.Path(), bench::Today());
    demo::Robot robot([&](const std::string& fault) { races.Fail(fault); });
    robot.Otherwise([](QDialog& box) {
        auto* const question = qobject_cast<QMessageBox*>(&box);
        if (question == nullptr) throw std::logic_error("an unexpected window");
        const bool asks = question->standardButtons().testFlag(QMessageBox::Yes);
        demo::Press(box, asks ? QMessageBox::Yes : QMessageBox::Ok);
    });
    staged.Start();
    AskBoard(ask);
    AskOrders(ask);
    staged.dialogs.UnloadMain(staged.shop);
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    QApplication application(count, words);
    return bench::Main(count, words, Ask);
}
