// SPDX-License-Identifier: Apache-2.0
// SampleShopTest: an evening and a morning in two real shops, looked at by an independent reader.
#include "app/Dispatch.h"
#include "app/frmLodrin.h"
#include "base/Calendar.h"
#include "floor/cboRO.h"
#include "jet/io/StdFile.h"
#include "labor/GetHistory.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopWorld.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using namespace tests;

constexpr int kEnter = 13;
constexpr const char* kEmployeesAdded =
    "New Employees have been added to the Lodrin Database and existing employees have been "
    "updated.Please Exit the program and then restart Lodrin.  Note.... All data will remain as "
    "shown, you do NOT need to stop any times or end any jobs.";
constexpr const char* kNoDescriptions =
    "You have not yet set up your status descriptions.  Select Setup/Status Descriptions from the "
    "menu before you start using the Lodrin program.";

bool Same(const std::string& left, const std::string& right)
{
    if (left == right) return true;
    char* leftEnd = nullptr;
    char* rightEnd = nullptr;
    const double leftNumber = std::strtod(left.c_str(), &leftEnd);
    const double rightNumber = std::strtod(right.c_str(), &rightEnd);
    return !left.empty() && !right.empty() && *leftEnd == '\0' && *rightEnd == '\0' &&
           std::abs(leftNumber - rightNumber) < 1e-9;
}

// The row has these values; of its other fields nothing is said.
void ExpectFields(const ExportedRow& row, const ExportedRow& expected)
{
    for (const auto& field : expected) {
        const auto found = row.find(field.first);
        ASSERT_NE(found, row.end()) << field.first;
        EXPECT_TRUE(Same(found->second, field.second))
            << field.first << ": " << found->second << " instead of " << field.second;
    }
}

// These fields changed, to these values, and no others.
void ExpectChange(const ExportedRow& former, const ExportedRow& row, const ExportedRow& expected)
{
    const ExportedRow changed = ChangedFields(former, row);
    ExpectFields(changed, expected);
    for (const auto& field : changed)
        EXPECT_EQ(expected.count(field.first), 1U) << field.first << " changed unexpectedly";
}

const ExportedRow& RowWith(const std::vector<ExportedRow>& rows, const std::string& field,
                           const std::string& value)
{
    for (const ExportedRow& row : rows) {
        if (row.at(field) == value) return row;
    }
    throw std::runtime_error("no row with " + field + " = " + value);
}

class SampleShopTest : public ::testing::Test {
protected:
    ScratchFolder folder;
    std::filesystem::path sample, file;
    std::unique_ptr<ShopWorld> world;

    // Copies the shop and opens the main window over it. False when the sample is not present.
    void OpenShop(const char* name, std::initializer_list<const char*> boxes)
    {
        sample = SampleFolder() / name / "Kelvaro.mdb";
        SKIP_WITHOUT_SAMPLE(sample);
        if (!MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
        file = folder.Copy(sample);
        world = std::make_unique<ShopWorld>(folder.Path());
        world->fakes.clock.Set(base::DateFrom({2009, 12, 30, 7, 0, 0}));
        world->fakes.files.Write("C:/Lodrin/Lodrin.ini",
                                 "[FileLoc]\r\nLodrin=" + folder.Path().string() + "\r\n");
        world->fakes.files.Write(file.string(), "");
        for (const char* box : boxes)
            world->fakes.prompts.Expect(box);
        lodrin::Dispatch(world->shop, lodrin::Form_Load);
        lodrin::Dispatch(world->shop, lodrin::Form_Activate);
    }

    void TypeNumber(const char* number)
    {
        world->shop.window.cboRO.SetText(number);
        lodrin::Dispatch(world->shop,
                         [](lodrin::Shop& shop) { lodrin::cboRO_KeyUp(shop, kEnter); });
    }

    void DoubleClickFirstOfLastJobs(const char* entry)
    {
        platform::ListBox& list = world->shop.window.lstHistory;
        ASSERT_EQ(list.List(0), entry);
        list.SetListIndex(0);
        lodrin::Dispatch(world->shop, lodrin::lstHistory_DblClick);
    }

    ExportedChange Change(const char* table)
    {
        return ChangeBetween(MdbExport(sample, table), MdbExport(file, table));
    }

    // All but these tables read exactly as before.
    void ExpectOtherTablesUnchanged(std::initializer_list<std::string> changed)
    {
        for (const std::string& table : MdbTables(sample)) {
            if (std::find(changed.begin(), changed.end(), table) != changed.end()) continue;
            EXPECT_EQ(MdbExport(sample, table), MdbExport(file, table)) << table;
        }
    }

    // Nothing was asked that was not laid down, and all that was; the file is sound.
    void ExpectTalkIsOver()
    {
        jet::io::StdFileSystem files;
        EXPECT_CLEAN(files, file.string());
        EXPECT_TRUE(world->fakes.prompts.Pending().empty());
        EXPECT_EQ(world->dialogs.Pending(), 0U);
    }
};

TEST_F(SampleShopTest, AnEveningInTheShopLeavesExactlyItsJobs)
{
    OpenShop("shop", {kEmployeesAdded});
    if (IsSkipped()) return;

    // Anthony Jones has refinished since 08:23 AM. He turns to the Honda, later to the Hyundai, and
    // comes back to the Honda.
    world->At("05:30 PM").Select("Jones, Anthony").Types("0992").Picks("BL", "Paint");
    TypeNumber("10125");
    world->At("06:10 PM").Types("0992").Picks("RL", "Mechanical").PicksOrder(10011);
    world->At("08:00 PM").Types("0992").Picks("ML", "Paint");
    DoubleClickFirstOfLastJobs("10125   1996 Honda CR-V EX AWD");
    ExpectTalkIsOver();
    // A number typed without the separator is the one thing that is reported.
    EXPECT_EQ(world->Reports(), (std::vector<std::string>{"5 Sub frmLodrin!cboRO_KeyUp()"}));

    // The board: his row, and the row that synchronisation adds beside a hidden one.
    const ExportedChange board = Change("LDEmp");
    ASSERT_EQ(board.removed.size(), 1U);
    ASSERT_EQ(board.added.size(), 2U);
    ExpectChange(board.removed[0], RowWith(board.added, "EmpID", "9"),
                 {{"StartJob", "1899-12-30 20:00:00"},
                  {"WO#", "10125"},
                  {"WOID", "119"},
                  {"VehDesc", "1996 Honda CR-V EX AWD"},
                  {"Customer", "Harris, Mary"},
                  {"GLType", "ML"}});
    ExpectFields(RowWith(board.added, "EmpID", "28"),
                 {{"EmpEntry", "15"}, {"Name", "Carter, Edward"}, {"StartDay", kExportedNull}});

    // Three closed jobs.
    const ExportedChange history = Change("LDHistory");
    EXPECT_TRUE(history.removed.empty());
    ASSERT_EQ(history.added.size(), 3U);
    ExpectFields(RowWith(history.added, "ID", "901"), {{"EmpID", "9"},
                                                       {"WorkDate", "2009-12-30 00:00:00"},
                                                       {"JobStart", "1899-12-30 08:23:00"},
                                                       {"JobEnd", "1899-12-30 17:30:00"},
                                                       {"WONumb", "10152"},
                                                       {"WOID", "158"},
                                                       {"GLType", "RL"},
                                                       {"Hrs", "9.12"},
                                                       {"VehDesc", "1994 Hyundai Sonata LX"},
                                                       {"Customer", "Ward, Debra"}});
    ExpectFields(RowWith(history.added, "ID", "902"), {{"EmpID", "9"},
                                                       {"WorkDate", "2009-12-30 00:00:00"},
                                                       {"JobStart", "1899-12-30 17:30:00"},
                                                       {"JobEnd", "1899-12-30 18:10:00"},
                                                       {"WONumb", "10125"},
                                                       {"WOID", "119"},
                                                       {"GLType", "BL"},
                                                       {"Hrs", "0.67"},
                                                       {"VehDesc", "1996 Honda CR-V EX AWD"},
                                                       {"Customer", "Harris, Mary"}});
    ExpectFields(RowWith(history.added, "ID", "903"), {{"EmpID", "9"},
                                                       {"WorkDate", "2009-12-30 00:00:00"},
                                                       {"JobStart", "1899-12-30 18:10:00"},
                                                       {"JobEnd", "1899-12-30 20:00:00"},
                                                       {"WONumb", "10011"},
                                                       {"WOID", "5"},
                                                       {"GLType", "RL"},
                                                       {"Hrs", "1.83"},
                                                       {"VehDesc", "1996 Hyundai Sonata LX"},
                                                       {"Customer", "Evans, Ryan"}});

    // Three labor lines, each with the order it was worked on.
    const ExportedChange labor = Change("Labor");
    EXPECT_TRUE(labor.removed.empty());
    ASSERT_EQ(labor.added.size(), 3U);
    ExpectFields(RowWith(labor.added, "LaborID", "901"), {{"EmployeeID", "9"},
                                                          {"WONumber", "158"},
                                                          {"WorkOrder", "10152"},
                                                          {"EmpRate", "22.4300"},
                                                          {"LastName", "Jones"},
                                                          {"FirstName", "Anthony"},
                                                          {"GLType", "RL"},
                                                          {"FlagDate", "2009-12-30 00:00:00"},
                                                          {"TimeIN", "1899-12-30 08:23:00"},
                                                          {"TimeOut", "1899-12-30 17:30:00"},
                                                          {"HrsFlagged", "9.12"},
                                                          {"MiscDesc", "1994 Hyundai Sonata LX"},
                                                          {"Paid", "0"}});
    ExpectFields(RowWith(labor.added, "LaborID", "902"),
                 {{"WONumber", "119"}, {"WorkOrder", "10125"}, {"HrsFlagged", "0.67"}});
    ExpectFields(RowWith(labor.added, "LaborID", "903"),
                 {{"WONumber", "5"}, {"WorkOrder", "10011"}, {"HrsFlagged", "1.83"}});

    // Two orders: stamps, and the hours of the jobs closed while they were chosen.
    const ExportedChange orders = Change("WorkOrder");
    ASSERT_EQ(orders.removed.size(), 2U);
    ASSERT_EQ(orders.added.size(), 2U);
    ExpectChange(RowWith(orders.removed, "WorkOrderNumber", "10125"),
                 RowWith(orders.added, "WorkOrderNumber", "10125"),
                 {{"BLTech", "9"},
                  {"DeptSequence", "70"},
                  {"AuditNotes", "\r\n[Jones, Anthony - 12/30/2009 - 05:30 PM] Department changed "
                                 "to Paint"},
                  {"Started", "2009-12-30 17:30:00"},
                  {"RefinishWorked", "10.95"},
                  {"RefinishCost", "245.6085"}});
    ExpectChange(RowWith(orders.removed, "WorkOrderNumber", "10011"),
                 RowWith(orders.added, "WorkOrderNumber", "10011"),
                 {{"RLTech", "9"}, {"BodyWorked", "18.15"}, {"BodyCost", "408.3281"}});
    ExpectOtherTablesUnchanged({"LDEmp", "LDHistory", "Labor", "WorkOrder"});
}

TEST_F(SampleShopTest, FirstMorningInANewShopBuildsItsTablesAndKeepsTheRest)
{
    OpenShop("shop-fresh", {kEmployeesAdded, kNoDescriptions});
    if (IsSkipped()) return;

    // Michelle Gomez straightens the Chevrolet, cleans the truck, and comes back to the Chevrolet.
    world->At("07:30 AM").Select("Gomez, Michelle").Types("7802").Picks("FL", "Paint");
    TypeNumber("10037");
    world->At("09:00 AM").Types("7802").Picks("DL", "Body").PicksOrder(10112);
    world->At("10:10 AM").Types("7802").Picks("BL", "Paint");
    DoubleClickFirstOfLastJobs("10037   2001 Chevrolet Malibu LT");
    ExpectTalkIsOver();

    const std::vector<ExportedRow> board = MdbExport(file, "LDEmp");
    EXPECT_EQ(board.size(), 14U);
    ExpectFields(RowWith(board, "Name", "Gomez, Michelle"),
                 {{"EmpID", "9"},
                  {"StartDay", "1899-12-30 07:30:00"},
                  {"EndDay", kExportedNull},
                  {"WorkDate", "2009-12-30 00:00:00"},
                  {"StartJob", "1899-12-30 10:10:00"},
                  {"WO#", "10037"},
                  {"WOID", "33"},
                  {"VehDesc", "2001 Chevrolet Malibu LT"},
                  {"Customer", "Ward, David"},
                  {"GLType", "BL"}});
    ExpectFields(RowWith(board, "Name", "Taylor, Stephanie"),
                 {{"EmpID", "4"}, {"StartDay", kExportedNull}, {"WO#", "0"}});

    const std::vector<ExportedRow> history = MdbExport(file, "LDHistory");
    ASSERT_EQ(history.size(), 2U);
    ExpectFields(RowWith(history, "ID", "1"), {{"EmpID", "9"},
                                               {"JobStart", "1899-12-30 07:30:00"},
                                               {"JobEnd", "1899-12-30 09:00:00"},
                                               {"WONumb", "10037"},
                                               {"WOID", "33"},
                                               {"GLType", "FL"},
                                               {"Hrs", "1.5"}});
    ExpectFields(RowWith(history, "ID", "2"), {{"JobStart", "1899-12-30 09:00:00"},
                                               {"JobEnd", "1899-12-30 10:10:00"},
                                               {"WONumb", "10112"},
                                               {"WOID", "117"},
                                               {"GLType", "DL"},
                                               {"Hrs", "1.17"}});

    const ExportedChange labor = Change("Labor");
    EXPECT_TRUE(labor.removed.empty());
    ASSERT_EQ(labor.added.size(), 2U);
    ExpectFields(RowWith(labor.added, "LaborID", "901"),
                 {{"EmployeeID", "9"}, {"WONumber", "33"}, {"HrsFlagged", "1.5"}});

    const ExportedChange orders = Change("WorkOrder");
    ASSERT_EQ(orders.added.size(), 2U);
    const ExportedRow& chevrolet = RowWith(orders.removed, "WorkOrderNumber", "10037");
    ExpectChange(chevrolet, RowWith(orders.added, "WorkOrderNumber", "10037"),
                 {{"BLTech", "9"},
                  {"DeptSequence", "70"},
                  {"AuditNotes", chevrolet.at("AuditNotes") +
                                     "\r\n[Gomez, Michelle - 12/30/2009 - 07:30 AM] Department "
                                     "changed to Paint"},
                  {"Started", "2009-12-30 07:30:00"},
                  {"OtherWorked", "1.17"},
                  {"OtherCost", "19.8549"}});
    const ExportedRow& truck = RowWith(orders.removed, "WorkOrderNumber", "10112");
    ExpectChange(truck, RowWith(orders.added, "WorkOrderNumber", "10112"),
                 {{"DeptSequence", "30"},
                  {"AuditNotes", truck.at("AuditNotes") +
                                     "\r\n[Gomez, Michelle - 12/30/2009 - 09:00 AM] Department "
                                     "changed to Body"},
                  {"FrameWorked", "22.37"},
                  {"FrameCost", "495.0300"}});
    EXPECT_TRUE(MdbExport(file, "LDTotals").empty());
    EXPECT_TRUE(MdbExport(file, "Status").empty());
    ExpectOtherTablesUnchanged({"Labor", "WorkOrder"});
}

}  // namespace
