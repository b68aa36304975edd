// SPDX-License-Identifier: Apache-2.0
#include "app/ui/frmLodrinView.h"

#include "app/Shop.h"
#include "app/ui/JobSentence.h"
#include "data/DBOpen.h"
#include "data/SyncEmployees.h"
#include "data/Tables.h"
#include "floor/cboRO.h"
#include "floor/grdEmp.h"
#include "labor/GetHistory.h"
#include "labor/cmdBreak.h"
#include "labor/cmdEndDay.h"
#include "platform/qt/ElidedLabel.h"
#include "platform/qt/GridWidget.h"
#include "platform/qt/Heading.h"
#include "platform/qt/ListWidget.h"
#include "platform/qt/Mirror.h"
#include "platform/qt/Placing.h"
#include "platform/qt/QtText.h"
#include "platform/qt/RepairOrderBox.h"
#include "platform/qt/ScrollPage.h"
#include "platform/qt/ShopStyle.h"
#include "platform/qt/WindowFrame.h"
#include "setup/mnuSetup.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QVBoxLayout>

namespace lodrin::ui {

namespace {

using namespace platform::qt;

constexpr int kMargin = 16;
constexpr double kNameSize = 1.9;  // of the usual font
constexpr QSize kWholeSize(1280, 960);
constexpr const char* kChooseName = "Choose your name on the board.";

QFont Scaled(QFont font, double factor, bool bold)
{
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setBold(bold);
    return font;
}

}  // namespace

frmLodrinView::frmLodrinView(Shop& shop, EventDoor door)
    : shop_(shop), door_(std::move(door)), timer_(this)
{
    setObjectName("frmLodrin");
    shop_.window.cmdExit.tip = "Exit Time Clock";
    MirrorCaption(shop_.window.caption, this);
    ObeyFrame(shop_.window.frame, this);
    BuildMenus();
    BuildContent();
    BuildStatusBar();
    WireBoard();
    WireJobStart();
    WireTimer();
    OrderTabs();
    FitScreen();
    ShowJob();
}

void frmLodrinView::BuildMenus()
{
    frmLodrin& form = shop_.window;
    menuBar()->setObjectName("menuBar");
    QMenu* file = menuBar()->addMenu(QString());
    MirrorMenu(form.mnuFile, file, "mnuFile");
    file->addAction(MakeAction(form.mnuFileOpen, "mnuFileOpen"));
    file->addAction(MakeAction(form.mnuSyncEmp, "mnuSyncEmp"));
    file->addAction(MakeAction(form.mnuSynchRO, "mnuSynchRO"));
    QMenu* setup = menuBar()->addMenu(QString());
    MirrorMenu(form.mnuSetup, setup, "mnuSetup");
    setup->addAction(MakeAction(form.mnuSetupItems, "mnuSetupItems"));

    const auto wire = [this](const char* name, void (*procedure)(Shop&)) {
        connect(findChild<QAction*>(name), &QAction::triggered, this,
                [this, procedure] { Run(procedure); });
    };
    wire("mnuFileOpen", &mnuFileOpen_Click);
    wire("mnuSyncEmp", &mnuSyncEmp_Click);
    wire("mnuSynchRO", &mnuSynchRO_Click);
    connect(findChild<QAction*>("mnuSetupItems"), &QAction::triggered, this,
            [this] { Run([](Shop& shop) { mnuSetupItems_Click(shop, 0); }); });

    // The date stands in the corner, where it takes no room from the board.
    auto* corner = new QWidget(menuBar());
    corner->setObjectName("dateCorner");
    auto* row = new QHBoxLayout(corner);
    row->setContentsMargins(0, 0, kMargin, 0);
    corner->setMinimumHeight(kRowHeight);
    auto* caption = new QLabel(corner);
    auto* date = new QLabel(corner);
    MirrorLabel(form.lblCurrentDate, caption, "lblCurrentDate");
    MirrorLabel(form.lblDate, date, "lblDate");
    date->setFont(Scaled(date->font(), 1, true));
    row->addWidget(caption);
    row->addWidget(date);
    menuBar()->setCornerWidget(corner);
}

QAction* frmLodrinView::MakeAction(platform::Label& label, const char* name)
{
    auto* action = new QAction(this);
    MirrorAction(label, action, name);
    return action;
}

void frmLodrinView::BuildStatusBar()
{
    // A label of its own: the bar's messages vanish as soon as a menu opens.
    auto* path = new ElidedLabel(this);
    MirrorLabel(shop_.window.stsLD, path, "stsLDText");
    NameControl(statusBar(), "stsLD", "Where the database lies");
    path->setContentsMargins(kMargin - 2, 0, 0, 2);
    statusBar()->addWidget(path, 1);
}

void frmLodrinView::BuildContent()
{
    auto* content = new QWidget(this);
    content->setObjectName("central");

    auto* page = new QVBoxLayout(content);
    page->setContentsMargins(kMargin, kMargin, kMargin, kMargin / 2);
    page->setSpacing(kSpacing);
    page->addLayout(BuildHeader(content));
    page->addLayout(BuildBoard(content), 5);
    auto* lower = new QHBoxLayout;
    lower->setSpacing(kMargin);
    lower->addLayout(BuildJobs(content), 5);
    lower->addLayout(BuildJobStart(content), 3);
    page->addLayout(lower, 4);

    auto* scroll = new ScrollPage(content, this);
    scroll->setObjectName("scroll");
    setCentralWidget(scroll);
}

QBoxLayout* frmLodrinView::BuildHeader(QWidget* content)
{
    auto* name = new ElidedLabel(content);
    MirrorLabel(shop_.window.lblEmpName, name, "lblEmpName");
    name->setFont(Scaled(name->font(), kNameSize, true));
    job_ = new ElidedLabel(content);
    job_->setObjectName("lblJob");
    auto* who = new QVBoxLayout;
    who->setSpacing(2);
    who->addWidget(name);
    who->addWidget(job_);

    break_ = MakeButton(shop_.window.cmdBreak, "cmdBreak", content);
    endDay_ = MakeButton(shop_.window.cmdEndDay, "cmdEndDay", content);
    exit_ = MakeButton(shop_.window.cmdExit, "cmdExit", content);
    connect(break_, &QPushButton::clicked, this, [this] { Run(&cmdBreak_Click); });
    connect(endDay_, &QPushButton::clicked, this, [this] { Run(&cmdEndDay_Click); });
    connect(exit_, &QPushButton::clicked, this, [this] { Run(&cmdExit_Click); });

    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    row->addLayout(who, 1);
    row->addWidget(break_);
    row->addWidget(endDay_);
    row->addSpacing(2 * kSpacing);
    row->addWidget(exit_);
    return row;
}

QPushButton* frmLodrinView::MakeButton(platform::Label& label, const char* name, QWidget* content)
{
    auto* button = new QPushButton(content);
    MirrorButton(label, button, name);
    return button;
}

QBoxLayout* frmLodrinView::BuildBoard(QWidget* content)
{
    board_ = new GridWidget(shop_.window.grdEmp, {LDEmp::VehDesc.column, LDEmp::Customer.column},
                            content);
    NameControl(board_, "grdEmp", "Employee board");
    board_->TellRows([this](int row) { return BoardRowInWords(shop_.window.grdEmp, row); });
    board_->setMinimumHeight(kHeaderHeight + 3 * kRowHeight);
    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(Heading("E&mployees", board_));
    column->addWidget(board_, 1);
    return column;
}

QBoxLayout* frmLodrinView::BuildJobs(QWidget* content)
{
    daily_ = new GridWidget(shop_.window.grdDaily, {LDHistory::Column::VehDesc}, content);
    NameControl(daily_, "grdDaily", "Jobs of today");
    // To be read only: a second chosen row beside the board's would mislead.
    daily_->setSelectionMode(QAbstractItemView::NoSelection);
    daily_->TellRows([this](int row) { return JobRowInWords(shop_.window.grdDaily, row); });
    daily_->setMinimumHeight(kHeaderHeight + 2 * kRowHeight);
    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(Heading("&Jobs Today", daily_));
    column->addWidget(daily_, 1);
    return column;
}

QBoxLayout* frmLodrinView::BuildJobStart(QWidget* content)
{
    repairOrders_ = new RepairOrderBox(shop_.window.cboRO, content);
    NameControl(repairOrders_, "cboRO", "Repair order to start on");
    NameControl(repairOrders_->lineEdit(), "cboRO", "Repair order to start on");
    history_ = new ListWidget(shop_.window.lstHistory, content);
    NameControl(history_, "lstHistory", "Last jobs; double-click or Enter starts one again");
    history_->setMinimumHeight(2 * kRowHeight);
    auto* column = new QVBoxLayout;
    column->setSpacing(4);
    column->addWidget(Heading("Start on &Repair Order", repairOrders_));
    column->addWidget(repairOrders_);
    column->addSpacing(kSpacing - 4);
    column->addWidget(Heading("&Last Jobs (double-click to start again)", history_));
    column->addWidget(history_, 1);
    return column;
}

void frmLodrinView::WireBoard()
{
    board_->clickedRow = [this] { Run(&grdEmp_Click); };
    board_->moved = [this](int row, int lastRow, int lastColumn) {
        Run([row, lastRow, lastColumn](Shop& shop) {
            shop.window.grdEmp.SetRow(row);
            grdEmp_RowColChange(shop, lastRow, lastColumn);
        });
    };
    daily_->moved = [this](int row, int, int) {
        Run([row](Shop& shop) { shop.window.grdDaily.SetRow(row); });
    };
}

void frmLodrinView::WireJobStart()
{
    repairOrders_->picked = [this] { Run(&cboRO_Click); };
    repairOrders_->entered = [this] { Run([](Shop& shop) { cboRO_KeyUp(shop, kEnterKey); }); };
    history_->chosen = [this](int entry) {
        Run([entry](Shop& shop) { shop.window.lstHistory.SetListIndex(entry); });
    };
    history_->doubleClicked = [this] { Run(&lstHistory_DblClick); };
}

void frmLodrinView::WireTimer()
{
    timer_.setObjectName("Timer1");
    connect(&timer_, &QTimer::timeout, this, [this] { Run(&Timer1_Timer); });
    Follow(shop_.window.Timer1, this, [this] {
        const int interval = shop_.window.Timer1.interval;
        if (interval > 0)
            timer_.start(interval);
        else
            timer_.stop();
    });
}

void frmLodrinView::OrderTabs()
{
    QWidget* const order[] = {board_, repairOrders_, history_, daily_, break_, endDay_, exit_};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
    board_->setFocus();
}

// As large as its work needs; on a small screen, all of it.
void frmLodrinView::FitScreen()
{
    setMinimumSize(480, 300);
    const QRect free = screen()->availableGeometry();
    resize(WithinScreen(*this, kWholeSize));
    move(free.center() - QPoint(width() / 2, height() / 2));
    if (size() != kWholeSize) setWindowState(Qt::WindowMaximized);
}

void frmLodrinView::Run(const EventDoor::Procedure& procedure)
{
    door_.Main(procedure);
    ShowJob();
}

void frmLodrinView::ShowJob()
{
    const bool chosen = shop_.state.currentEmployee >= 0;
    job_->setText(chosen ? ToQt(JobSentence(shop_.window.grdEmp)) : kChooseName);
}

void frmLodrinView::Activate()
{
    door_.Always(&Form_Activate);
    ShowJob();
}

void frmLodrinView::Unload()
{
    unloading_ = true;
    close();
}

bool frmLodrinView::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) Activate();
    const bool done = QMainWindow::event(event);
    if (IsAboutItsPlace(*event)) TellFrame(shop_.window.frame, *this);
    return done;
}

void frmLodrinView::closeEvent(QCloseEvent* event)
{
    // A close request that arrives while a procedure lets windows repaint waits for its end.
    if (!unloading_ && !shop_.gate.MainMayRun()) {
        event->ignore();
        QTimer::singleShot(50, this, [this] { close(); });
        return;
    }
    door_.Always(&Form_QueryUnload);
    timer_.stop();
    event->accept();
    if (closed) closed();
}

}  // namespace lodrin::ui
