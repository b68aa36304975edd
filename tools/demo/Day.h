// SPDX-License-Identifier: Apache-2.0
// Day: one working day at the time clock, played through the real windows.
#pragma once

#include "tools/demo/Album.h"
#include "tools/demo/Robot.h"
#include "tools/demo/StagedShop.h"

#include <string>
#include <vector>

class QComboBox;
class QListWidget;
class QTableView;

namespace demo {

class Day {
public:
    Day(StagedShop& staged, Album& album);

    void Play();
    // What went otherwise than the script; empty when all went well.
    [[nodiscard]] const std::vector<std::string>& Faults() const { return faults_; }

private:
    void StartUp();
    void SecondCopy();
    void FirstJobs();
    void WrongPin();
    void JobChange();
    void UnknownOrder();
    void BackToAnEarlierJob();
    void Menus();
    void Break();
    void EndOfDay();
    void Wordings();
    void ReadyWindows();
    void Leave();

    // An employee of the board: his row, and the PIN he knows.
    struct Technician {
        int row = 0;
        std::string name, pin;
    };
    [[nodiscard]] std::vector<Technician> Technicians();
    void Choose(const Technician& technician);
    void ExpectPin(const Technician& technician, const QString& picture = {});
    void ExpectLabor(const std::string& code, const std::string& department,
                     const QString& picture = {});
    void ExpectProgress(int entry, const QString& picture);
    void ExpectBox(QMessageBox::StandardButton button, const QString& picture);
    [[nodiscard]] std::string OrderNumber(int entry);
    void Settle();

    [[nodiscard]] QTableView& Board();
    [[nodiscard]] QComboBox& Orders();
    [[nodiscard]] QListWidget& LastJobs();

    StagedShop& staged_;
    Album& album_;
    std::vector<std::string> faults_;
    Robot robot_;
    Technician first_, second_, third_;
};

}  // namespace demo
