// SPDX-License-Identifier: Apache-2.0
// LocationsTest: under which name each procedure reports what fails in it.
#include "app/Dispatch.h"
#include "app/frmLodrin.h"
#include "app/modErrTrap.h"
#include "base/NumberedError.h"
#include "data/DBOpen.h"
#include "data/SyncEmployees.h"
#include "data/modBuildLD.h"
#include "floor/StartJob.h"
#include "floor/cboRO.h"
#include "floor/grdEmp.h"
#include "jet/io/MemoryFile.h"
#include "labor/GetHistory.h"
#include "labor/WriteHistory.h"
#include "labor/WriteLabor.h"
#include "labor/cmdBreak.h"
#include "labor/cmdEndDay.h"
#include "setup/frmDateSel.h"
#include "setup/frmStatus.h"
#include "setup/mnuSetup.h"
#include "tests/support/ShopWorld.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace tests;

// A window that cannot be unloaded.
class StuckDialogs : public ScriptedDialogs {
public:
    void UnloadSplash(lodrin::Shop& /*shop*/) override { throw base::NumberedError(365); }
    void UnloadMain(lodrin::Shop& /*shop*/) override { throw base::NumberedError(365); }
    void UnloadGLSelect(lodrin::Shop& /*shop*/) override { throw base::NumberedError(365); }
    void ShowMain(lodrin::Shop& /*shop*/) override { throw base::NumberedError(360); }
};

// A program in which nothing is open: whatever a procedure needs is missing.
struct EmptyProgram {
    EmptyProgram()
    {
        world.shop.values.DataPath = "C:\\Shop";
        world.fakes.prompts.TakeAnyBox();
    }
    // Bob stands on the board, on his job or not.
    void OpenWithBob()
    {
        world.MakeDatabase();
        world.Given({Employee("Jones, Bob", 8), RepairOrder(1001)}).Select("Jones, Bob");
    }
    // A log on a drive without that folder: the failure goes on to the procedure above, where it is
    // a serious one and is shown.
    void LoseTheLog() { world.fakes.files.RefuseWrites("/Lodrin.Log", 76); }

    // The names in the log and in the boxes, without repetitions.
    [[nodiscard]] std::vector<std::string> Locations() const
    {
        std::vector<std::string> found;
        for (const std::string& report : world.Reports())
            found.push_back(report.substr(report.find(' ') + 1));
        for (const platform::Box& box : world.fakes.prompts.boxes) {
            const std::string& text = box.text;
            const std::size_t start = text.find(" in ");
            const std::size_t end = text.find(" (Line = 0)");
            if (box.title == "Application Error")
                found.push_back(text.substr(start + 4, end - start - 4));
        }
        return found;
    }

    jet::io::MemoryFileSystem disk;
    ShopWorld world{disk};
    lodrin::Shop& shop = world.shop;
    StuckDialogs stuck;
    lodrin::Shop stuckShop{stuck, world.services, world.engine};
};

struct Case {
    const char* name;
    const char* location;
    void (*fail)(EmptyProgram& program);
};

void PrintTo(const Case& each, std::ostream* out)
{
    *out << each.name;
}

void StandsStill()
{
    throw base::NumberedError(5);
}

const Case kCases[] = {
    {"Main", "Sub modErrTrap!General_Main()", [](EmptyProgram& p) { lodrin::Main(p.stuckShop); }},
    {"GetDataPath", "Sub frmLodrin!GetDataPath()",
     [](EmptyProgram& p) {
         // A folder too long for every buffer.
         p.world.fakes.files.Write("C:/Lodrin/Lodrin.ini",
                                   "[FileLoc]\r\nLodrin=" + std::string(17000, 'x') + "\r\n");
         p.world.fakes.prompts.Expect("The Ostrel database could not be located.  Do you wish to "
                                      "locate it now? (Selecting no will end the program.)",
                                      platform::Answer::No);
         EXPECT_THROW(lodrin::GetDataPath(p.shop), platform::ProgramEnded);
     }},
    {"mnuFileOpen_Click", "Sub frmLodrin!mnuFileOpen_Click()",
     [](EmptyProgram& p) {
         p.shop.values.DataPath.clear();
         p.world.fakes.prompts.ExpectFile("Kelvaro.mdb");  // a name without a folder
         lodrin::mnuFileOpen_Click(p.shop);
     }},
    {"DBOpen", "Sub frmLodrin!DBOpen()", [](EmptyProgram& p) { lodrin::DBOpen(p.shop); }},
    {"Form_Load", "Sub frmLodrin!Form_Load()",
     [](EmptyProgram& p) {
         p.world.MakeDatabase();
         p.world.fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
         p.shop.window.lblDate.changed = StandsStill;
         lodrin::Form_Load(p.shop);
     }},
    {"InitForm", "Sub frmLodrin!InitForm()",
     [](EmptyProgram& p) {
         p.world.fakes.files.Write("C:/Lodrin/Lodrin.ini", "[FileLoc]\r\nLodrin=C:\\Shop\r\n");
         p.LoseTheLog();
         lodrin::InitForm(p.shop);
     }},
    {"Form_Activate", "Sub frmLodrin!Form_Activate()",
     [](EmptyProgram& p) {
         p.stuckShop.state.firstActivation = true;
         lodrin::Form_Activate(p.stuckShop);
     }},
    {"Form_QueryUnload", "Sub frmLodrin!Form_QueryUnload()",
     [](EmptyProgram& p) { lodrin::Form_QueryUnload(p.stuckShop); }},
    {"Timer1_Timer", "Sub frmLodrin!Timer1_Timer()",
     [](EmptyProgram& p) {
         p.shop.window.caption.changed = StandsStill;
         lodrin::Timer1_Timer(p.shop);
     }},
    {"picExit_Click", "Sub frmLodrin!picExit_Click()",
     [](EmptyProgram& p) { lodrin::picExit_Click(p.stuckShop); }},
    {"cmdExit_Click", "Sub frmLodrin!cmdExit_Click()",
     [](EmptyProgram& p) { lodrin::cmdExit_Click(p.stuckShop); }},
    {"BuildLD", "Sub modBuildLD!BuildLD()",
     [](EmptyProgram& p) {
         p.world.fakes.files.Write("C:/Shop/Kelvaro.mdb", "");
         lodrin::BuildLD(p.shop, "C:\\Shop");
     }},
    {"SyncEmployees", "Sub frmLodrin!SyncEmployees()",
     [](EmptyProgram& p) { lodrin::SyncEmployees(p.shop); }},
    {"mnuSynchRO_Click", "Sub frmLodrin!mnuSynchRO_Click()",
     [](EmptyProgram& p) {
         p.LoseTheLog();
         lodrin::mnuSynchRO_Click(p.shop);
     }},
    {"EmpView", "Sub frmLodrin!EmpView()", [](EmptyProgram& p) { lodrin::EmpView(p.shop); }},
    {"grdEmp_Click", "Sub frmLodrin!grdEmp_Click()",
     [](EmptyProgram& p) {
         p.OpenWithBob();
         p.shop.window.lblEmpName.changed = StandsStill;
         lodrin::grdEmp_Click(p.shop);
     }},
    {"grdEmp_RowColChange", "Sub frmLodrin!grdEmp_RowColChange()",
     [](EmptyProgram& p) {
         p.OpenWithBob();
         p.shop.window.lblEmpName.changed = StandsStill;
         lodrin::grdEmp_RowColChange(p.shop, 0, 0);
     }},
    {"GetROList", "Sub frmLodrin!GetROList()", [](EmptyProgram& p) { lodrin::GetROList(p.shop); }},
    {"cboRO_Click", "Sub frmLodrin!cboRO_Click()",
     [](EmptyProgram& p) {
         p.shop.window.cboRO.SetText("Ford  blue");
         lodrin::cboRO_Click(p.shop);
     }},
    {"cboRO_KeyUp", "Sub frmLodrin!cboRO_KeyUp()",
     [](EmptyProgram& p) {
         p.shop.window.cboRO.SetText("Ford");
         lodrin::cboRO_KeyUp(p.shop, 13);
     }},
    {"StartJob", "Sub frmLodrin!StartJob()",
     [](EmptyProgram& p) {
         p.OpenWithBob();
         p.shop.state.workOrders = dao::Recordset();
         p.world.Picks("BL", "Paint");
         lodrin::StartJob(p.shop, 1001);
     }},
    {"frmGLSelect_Form_Load", "Sub frmGLSelect!Form_Load()",
     [](EmptyProgram& p) { p.shop.forms.glSelect.Form_Load(p.shop); }},
    {"frmGLSelect_Form_Activate", "Sub frmGLSelect!Form_Activate()",
     [](EmptyProgram& p) {
         p.shop.forms.glSelect.setFocusToGLCodes = StandsStill;
         p.shop.forms.glSelect.Form_Activate(p.shop);
     }},
    {"WriteHistory", "Sub frmLodrin!WriteHistory()",
     [](EmptyProgram& p) { lodrin::WriteHistory(p.shop); }},
    {"WriteLabor", "Sub frmLodrin!WriteLabor()",
     [](EmptyProgram& p) { lodrin::WriteLabor(p.shop); }},
    {"GetHistory", "Sub frmLodrin!GetHistory()",
     [](EmptyProgram& p) { lodrin::GetHistory(p.shop); }},
    {"GetHistoryView", "Sub frmLodrin!GetHistoryView()",
     [](EmptyProgram& p) { lodrin::GetHistoryView(p.shop); }},
    {"GetLast10", "Sub frmLodrin!GetLast10()", [](EmptyProgram& p) { lodrin::GetLast10(p.shop); }},
    {"lstHistory_DblClick", "Sub frmLodrin!lstHistory_DblClick()",
     [](EmptyProgram& p) { lodrin::lstHistory_DblClick(p.shop); }},
    {"cmdBreak_Click", "Sub frmLodrin!cmdBreak_Click()",
     [](EmptyProgram& p) {
         p.OpenWithBob();
         p.world.Picks("BL", "Paint").Starts(1001).ConfirmsProgress();
         p.shop.state.workOrders = dao::Recordset();
         lodrin::cmdBreak_Click(p.shop);
     }},
    {"cmdEndDay_Click", "Sub frmLodrin!cmdEndDay_Click()",
     [](EmptyProgram& p) {
         p.OpenWithBob();
         p.world.ConfirmsProgress();
         p.shop.state.workOrders = dao::Recordset();
         lodrin::cmdEndDay_Click(p.shop);
     }},
    {"frmStatus_Form_Load", "Sub frmStatus!Form_Load()",
     [](EmptyProgram& p) {
         p.LoseTheLog();
         lodrin::frmStatus().Form_Load(p.shop);
     }},
    {"InitializeGrid", "Sub frmStatus!InitializeGrid()",
     [](EmptyProgram& p) { lodrin::frmStatus().InitializeGrid(p.shop); }},
    {"QueryGrid", "Sub frmStatus!QueryGrid()",
     [](EmptyProgram& p) { lodrin::frmStatus().QueryGrid(p.shop); }},
    {"GetView", "Sub frmStatus!GetView()",
     [](EmptyProgram& p) { lodrin::frmStatus().GetView(p.shop); }},
    {"frmStatus_cmdExit_Click", "Sub frmStatus!cmdExit_Click()",
     [](EmptyProgram& p) {
         lodrin::frmStatus form;
         form.close = StandsStill;
         form.cmdExit_Click(p.shop);
     }},
    {"frmDateSel_Form_Activate", "Sub frmDateSel!Form_Activate()",
     [](EmptyProgram& p) {
         p.shop.forms.dateSel.Calendar1.changed = StandsStill;
         p.shop.forms.dateSel.Form_Activate(p.shop);
     }},
    {"Calendar1_DblClick", "Sub frmDateSel!Calendar1_DblClick()",
     [](EmptyProgram& p) {
         p.shop.forms.dateSel.hide = StandsStill;
         p.shop.forms.dateSel.Calendar1_DblClick(p.shop);
     }},
    {"frmDateSel_picExit_Click", "Sub frmDateSel!picExit_Click()",
     [](EmptyProgram& p) {
         p.shop.forms.dateSel.hide = StandsStill;
         p.shop.forms.dateSel.picExit_Click(p.shop);
     }},
    {"picCancel_Click", "Sub frmDateSel!picCancel_Click()",
     [](EmptyProgram& p) {
         p.shop.forms.dateSel.hide = StandsStill;
         p.shop.forms.dateSel.picCancel_Click(p.shop);
     }},
};

class LocationsTest : public ::testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(Procedures, LocationsTest, ::testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_P(LocationsTest, AFailureIsReportedUnderTheProceduresName)
{
    EmptyProgram program;
    GetParam().fail(program);
    const std::vector<std::string> locations = program.Locations();
    ASSERT_FALSE(locations.empty());
    EXPECT_EQ(locations.front(), GetParam().location);
}

}  // namespace
