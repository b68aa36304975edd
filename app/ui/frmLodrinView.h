// SPDX-License-Identifier: Apache-2.0
// frmLodrinView: the main window on the screen.
#pragma once

#include "app/ui/EventDoor.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>

class QAction;
class QBoxLayout;
class QLabel;
class QPushButton;

namespace platform {
class Label;
}
namespace platform::qt {
class GridWidget;
class ListWidget;
class RepairOrderBox;
}  // namespace platform::qt

namespace lodrin::ui {

// Rule: it mirrors `shop.window` and hands every event to its procedure; it decides nothing.
class frmLodrinView : public QMainWindow {
public:
    frmLodrinView(Shop& shop, EventDoor door);

    // The first activation; also called once after showing, for desktops that activate nothing.
    void Activate();
    // Closes the window, also while one of its own procedures runs.
    void Unload();

    // Called when the window has closed.
    std::function<void()> closed;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void BuildMenus();
    void BuildStatusBar();
    void BuildContent();
    [[nodiscard]] QBoxLayout* BuildHeader(QWidget* content);
    [[nodiscard]] QBoxLayout* BuildBoard(QWidget* content);
    [[nodiscard]] QBoxLayout* BuildJobs(QWidget* content);
    [[nodiscard]] QBoxLayout* BuildJobStart(QWidget* content);
    [[nodiscard]] QPushButton* MakeButton(platform::Label& label, const char* name,
                                          QWidget* content);
    [[nodiscard]] QAction* MakeAction(platform::Label& label, const char* name);
    void WireBoard();
    void WireJobStart();
    void WireTimer();
    void OrderTabs();
    void FitScreen();
    void Run(const EventDoor::Procedure& procedure);
    void ShowJob();

    Shop& shop_;
    EventDoor door_;
    QTimer timer_;
    platform::qt::GridWidget* board_ = nullptr;
    platform::qt::GridWidget* daily_ = nullptr;
    platform::qt::RepairOrderBox* repairOrders_ = nullptr;
    platform::qt::ListWidget* history_ = nullptr;
    QPushButton *break_ = nullptr, *endDay_ = nullptr, *exit_ = nullptr;
    QLabel* job_ = nullptr;
    bool unloading_ = false;
};

}  // namespace lodrin::ui
