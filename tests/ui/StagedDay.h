// SPDX-License-Identifier: Apache-2.0
// StagedDay: the whole program on real files for a test, with a robot that answers its boxes.
#pragma once

#include "base/Calendar.h"
#include "jet/io/StdFile.h"
#include "tests/support/FileKind.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Records.h"
#include "tests/support/SampleShopDays.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopTables.h"
#include "tests/support/StartTexts.h"
#include "tests/ui/Robot.h"
#include "tools/demo/StagedShop.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <fstream>
#include <optional>

namespace tests {

inline constexpr const char* kTheDate = "Is this the correct date: Wednesday, December 30, 2009";
inline constexpr const char* kUnknownOrder =
    "The RO you selected no long exists in the database, or is not accessable.";

class WorkingDayTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(Program());
        std::filesystem::create_directories(Data());
    }
    void TearDown() override
    {
        if (staged) staged->dialogs.UnloadMain(staged->shop);
    }
    std::filesystem::path Program() const { return folder.Path() / "program"; }
    std::filesystem::path Data() const { return folder.Path() / "data"; }
    std::filesystem::path File() const { return Data() / "Kelvaro.mdb"; }

    // Starts the program at 07:00 AM of December 30, 2009; the boxes come after the date question.
    void Start(std::initializer_list<const char*> boxes)
    {
        staged.emplace(Program(), Data(), base::DateFrom({2009, 12, 30, 7, 0, 0}));
        robot.Box(kTheDate, QMessageBox::Yes);
        for (const char* box : boxes)
            robot.Box(box);
        staged->Start();
    }
    void TakeSample(const char* name)
    {
        sample = SampleFolder() / name / "Kelvaro.mdb";
        SKIP_WITHOUT_SAMPLE(sample);
        if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
        std::filesystem::copy_file(sample, File());
        std::filesystem::permissions(File(), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
    }

    QWidget& Window() { return demo::Window("frmLodrin"); }
    std::string LabelText(const char* name)
    {
        return demo::Find<QLabel>(Window(), name).text().toStdString();
    }
    void Choose(const std::string& employee)
    {
        auto& board = demo::Find<QTableView>(Window(), "grdEmp");
        ASSERT_GE(demo::RowOf(board, employee), 0) << employee;
        demo::ClickRow(board, demo::RowOf(board, employee));
        EXPECT_EQ(LabelText("lblEmpName"), employee);
    }
    // What he answers when he starts a job.
    void PinAndLabor(const char* pin, const char* code, const char* department)
    {
        robot.Pin(pin);
        robot.Labor(code, department);
    }
    void ExpectTitle(const char* title)
    {
        EXPECT_TRUE(
            QTest::qWaitFor([this, title] { return Window().windowTitle() == title; }, 2000))
            << Window().windowTitle().toStdString();
    }
    void Type(const std::string& number)
    {
        demo::TypeAndEnter(demo::Find<QComboBox>(Window(), "cboRO"), number);
    }
    void Pick(const std::string& entry)
    {
        auto& orders = demo::Find<QComboBox>(Window(), "cboRO");
        const int place = orders.findText(QString::fromStdString(entry), Qt::MatchStartsWith);
        ASSERT_GE(place, 0) << entry;
        demo::PickFromList(orders, place);
    }
    void DoubleClickFirstLastJob(const std::string& entry)
    {
        auto& jobs = demo::Find<QListWidget>(Window(), "lstHistory");
        ASSERT_GT(jobs.count(), 0);
        ASSERT_EQ(jobs.item(0)->text().toStdString(), entry);
        demo::DoubleClickEntry(jobs, 0);
    }
    void Exit()
    {
        demo::Find<QPushButton>(Window(), "cmdExit").click();
        EXPECT_TRUE(staged->closed);
        jet::io::StdFileSystem files;
        EXPECT_CLEAN(files, File().string());
    }
    std::string DailyCell(int row, int column)
    {
        auto& daily = demo::Find<QTableView>(Window(), "grdDaily");
        return daily.model()->index(row, column).data().toString().toStdString();
    }
    std::vector<std::string> Log() const
    {
        std::ifstream file(Program() / "Lodrin.Log");
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    ScratchFolder folder;
    std::filesystem::path sample;
    Robot robot;
    std::optional<demo::StagedShop> staged;
};

// A shop of our own making: two technicians, two orders.
class OwnShopTest : public WorkingDayTest {
protected:
    void SetUp() override
    {
        WorkingDayTest::SetUp();
        dao::DBEngine engine({.now = [] { return base::Date{40177}; }});
        CreateDatabase(engine, File().string(), ShopKind());
        dao::Database database = engine.DefaultWorkspace().OpenDatabase(File().string());
        for (const dao::TableDef& table : ManagementTables())
            database.Append(table);
        for (const ShopEntry& entry :
             {Employee("Adams, Al", 1), Employee("Baker, Bo", 2).With("PIN", "77"),
              RepairOrder(1001), RepairOrder(1002), Department("Body", 30), Department("Paint", 70),
              LedgerAccount("BL", "Body Labor", true), LedgerAccount("RL", "Refinish Labor", true),
              ProgressText("In paint")})
            for (const NewRow& row : entry.Rows())
                if (row.table != "LDEmp") Add(database, row);
        database.Close();
    }
    // The first start: everybody is new, and the labor types have no wording.
    void StartNewShop() { Start({kEmployeesAdded, kNoDescriptions}); }
    static void Add(dao::Database& database, const NewRow& row)
    {
        dao::Recordset table = database.OpenRecordset(row.table);
        table.AddNew();
        for (const auto& field : row.values)
            table[field.first] = field.second;
        table.Update();
    }
    // What the file holds, read afresh.
    std::vector<Record> Rows(const std::string& sql) const
    {
        dao::DBEngine engine({.now = [] { return base::Date{40177}; }});
        dao::Database database = engine.DefaultWorkspace().OpenDatabase(File().string());
        dao::Recordset rows = database.OpenRecordset(sql);
        return RowsOf(rows);
    }
};

}  // namespace tests
