// SPDX-License-Identifier: Apache-2.0
// frmStatusTest: the window in which the shop words its labor types.
#include "setup/frmStatus.h"

#include "app/Dispatch.h"
#include "base/NumberedError.h"
#include "data/Tables.h"
#include "setup/mnuSetup.h"
#include "tests/support/ShopFixture.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace tests;
using lodrin::Status;

constexpr const char* kAllDescriptions = "SELECT * FROM Status ORDER BY GLType";

class frmStatusTest : public ShopFixture {
protected:
    frmStatusTest() { GivenNo("Status"); }

    // Opens the window from the menu, lets `user` act in it, and leaves it by Exit.
    void Show(const std::function<void(lodrin::frmStatus&)>& user = [](lodrin::frmStatus&) {})
    {
        if (!shop.state.database.IsSet()) Open();
        dialogs.whileStatusIsOpen = [&](lodrin::Shop& on) { user(*on.forms.status); };
        lodrin::Dispatch(shop, [](lodrin::Shop& on) { lodrin::mnuSetupItems_Click(on, 0); });
    }
    // Types into the row of that code; whether it was taken.
    bool Word(const std::string& code, const std::string& description)
    {
        lodrin::frmStatus& form = *shop.forms.status;
        for (int row = 1; row <= form.grdStatus.RowCount(); ++row) {
            if (form.grdStatus.Shown(row, 3) != code) continue;
            bool stored = false;
            lodrin::DispatchInDialog(shop, [&](lodrin::Shop& on) {
                stored = form.StoreDescription(on, row, description);
            });
            return stored;
        }
        throw std::logic_error("no row " + code);
    }
    // Code and wording of each stored row.
    std::map<std::string, std::string> Wordings()
    {
        std::map<std::string, std::string> wordings;
        for (const Record& row : Rows(kAllDescriptions))
            wordings[row.Text(Status::GLType)] = row.Text(Status::Description);
        return wordings;
    }
    using Map = std::map<std::string, std::string>;
};

TEST_F(frmStatusTest, AccountIsWordedWithItsFirstWordAndWholeWithoutABlank)
{
    Given({LedgerAccount("BL", "BODY LABOR", true), LedgerAccount("FL", "Frame", true)});
    Show();
    const std::vector<Record> rows = Rows(kAllDescriptions);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0][Status::AcctType], "LDStatus");
    EXPECT_EQ(rows[0][Status::GLType], "BL");
    EXPECT_EQ(rows[0][Status::GLDesc], "BODY LABOR");
    EXPECT_EQ(rows[0][Status::Description], "BODY");
    EXPECT_EQ(rows[1][Status::Description], "Frame");
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmStatusTest, DescriptionBeginningWithABlankIsWordedEmpty)
{
    Given({LedgerAccount("BL", " BODY LABOR", true)});
    Show();
    EXPECT_EQ(Wordings(), (Map{{"BL", ""}}));
}

TEST_F(frmStatusTest, OpeningTheWindowTwiceAddsNothingTheSecondTime)
{
    Given({LedgerAccount("BL", "Body Labor", true), LedgerAccount("", "Nameless", true),
           LedgerAccount("RL", "Refinish Labor", true)});
    Show();
    const std::vector<Record> once = Rows(kAllDescriptions);
    EXPECT_EQ(once.size(), 3U);
    Show();
    EXPECT_EQ(Rows(kAllDescriptions), once);
}

TEST_F(frmStatusTest, AccountWithoutACodeIsWordedOnlyOnce)
{
    Given({LedgerAccount("x", "Nameless", true).With(lodrin::GenLedger::GLCode, base::Null{})});
    Show();
    Show();
    EXPECT_EQ(Wordings().size(), 1U);
    EXPECT_EQ(Rows(kAllDescriptions).size(), 1U);
}

TEST_F(frmStatusTest, AccountWithoutANameHasNoWordingUntilTheShopGivesItOne)
{
    Given({LedgerAccount("BL", "x", true).With(lodrin::GenLedger::GLDescription, base::Null{})});
    Show();
    Show([this](lodrin::frmStatus& form) {
        const std::vector<Record> rows = Rows(kAllDescriptions);
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_TRUE(rows[0][Status::GLDesc].IsNull());
        EXPECT_TRUE(rows[0][Status::Description].IsNull());
        EXPECT_EQ(form.grdStatus.Shown(1, Status::Column::Description), "");
        EXPECT_TRUE(form.StoreDescription(shop, 1, "Body"));
    });
    EXPECT_EQ(Wordings(), (Map{{"BL", "Body"}}));
    EXPECT_TRUE(Reports().empty());
}

TEST_F(frmStatusTest, AccountRemovedFromTheLaborAccountsKeepsItsRow)
{
    Given({LaborType("BL", "Body"), LedgerAccount("BL", "Body Labor", false),
           LaborType("ZZ", "No account at all")});
    Show();
    EXPECT_EQ(Wordings(), (Map{{"BL", "Body"}, {"ZZ", "No account at all"}}));
}

TEST_F(frmStatusTest, RowsThatAreThereStayWhenTheAccountsNameChanges)
{
    Given({LaborType("BL", "Our wording"), LedgerAccount("BL", "Renamed Labor", true)});
    const std::vector<Record> before = Rows(kAllDescriptions);
    Show();
    EXPECT_EQ(Rows(kAllDescriptions), before);
}

TEST_F(frmStatusTest, RowsOfOtherKindsAreNeitherShownNorCounted)
{
    Given({LaborType("BL", "Theirs").With(Status::AcctType, "Other"),
           LedgerAccount("BL", "Body Labor", true)});
    Show([](lodrin::frmStatus& form) { EXPECT_EQ(form.grdStatus.RowCount(), 1); });
    EXPECT_EQ(Rows(kAllDescriptions).size(), 2U);
}

TEST_F(frmStatusTest, OnlyColumnsThreeToFiveAreVisibleInThatOrderWithTheirCaptions)
{
    Given({LedgerAccount("BL", "Body Labor", true)});
    Show([](lodrin::frmStatus& form) {
        ASSERT_EQ(form.grdStatus.ColumnCount(), 5);
        std::map<int, std::string> shown;
        for (int column = 1; column <= 5; ++column) {
            const platform::Column& each = form.grdStatus.ColumnAt(column);
            if (each.visible)
                shown[each.position] =
                    std::to_string(column) + " " + each.caption + " " + std::to_string(each.width);
        }
        std::vector<std::string> inOrder;
        for (const auto& place : shown)
            inOrder.push_back(place.second);
        EXPECT_EQ(inOrder, (std::vector<std::string>{"3 GL Type 1000", "4 GL Description 1500",
                                                     "5 Status Description 3000"}));
    });
}

TEST_F(frmStatusTest, OnlyTheWordingCanBeTypedInto)
{
    Show([](lodrin::frmStatus& form) {
        EXPECT_TRUE(form.grdStatus.allowEdit);
        for (int column = 1; column <= 5; ++column)
            EXPECT_EQ(form.grdStatus.ColumnAt(column).editable, column == 5) << column;
    });
}

TEST_F(frmStatusTest, RowsStandInTheOrderOfTheirCodesAlsoTheNewOnes)
{
    Given({LaborType("RL", "Refinish"), LedgerAccount("BL", "Body Labor", true)});
    Show([](lodrin::frmStatus& form) {
        EXPECT_EQ(form.grdStatus.Shown(1, 3), "BL");
        EXPECT_EQ(form.grdStatus.Shown(2, 3), "RL");
        EXPECT_EQ(form.sqlText,
                  "SELECT * FROM Status WHERE AcctType = 'LDStatus' ORDER BY GLType;");
    });
}

TEST_F(frmStatusTest, TypedWordingStandsInItsRowAtOnceAndNoOtherChanges)
{
    Given({LaborType("BL", "Body"), LaborType("RL", "Refinish")});
    Show([this](lodrin::frmStatus& form) {
        EXPECT_TRUE(Word("RL", "Paint"));
        EXPECT_EQ(Wordings(), (Map{{"BL", "Body"}, {"RL", "Paint"}}));
        EXPECT_EQ(form.grdStatus.Shown(2, 5), "Paint");
    });
    EXPECT_EQ(Wordings(), (Map{{"BL", "Body"}, {"RL", "Paint"}}));
}

TEST_F(frmStatusTest, WordingCanBeEmptied)
{
    Given({LaborType("BL", "Body")});
    Show([this](lodrin::frmStatus&) { EXPECT_TRUE(Word("BL", "")); });
    EXPECT_EQ(Rows(kAllDescriptions)[0][Status::Description], "");
}

TEST_F(frmStatusTest, WordingThatIsTooLongIsToldAndChangesNothing)
{
    Given({LaborType("BL", "Body")});
    fakes.prompts.Expect(
        "The description was not stored.\r\n\r\nThe field is too small to accept the amount of "
        "data you attempted to add.  Try inserting or pasting less data.\r\n\r\nA description has "
        "room for 75 characters; yours has 76.\r\n\r\nWhat you typed is still there. Escape brings "
        "the stored description back.");
    Show([this](lodrin::frmStatus& form) {
        EXPECT_FALSE(Word("BL", std::string(76, 'x')));
        EXPECT_EQ(form.grdStatus.Shown(1, 5), "Body");
        EXPECT_EQ(form.status.EditMode(), dao::EditMode::None);
        EXPECT_TRUE(Word("BL", std::string(75, 'x')));
    });
    EXPECT_EQ(Wordings(), (Map{{"BL", std::string(75, 'x')}}));
    EXPECT_EQ(Reports(), (std::vector<std::string>{"3163 Sub frmStatus!StoreDescription()"}));
}

// The trap's own box is enough: the user is not told twice.
TEST_F(frmStatusTest, FullDiskIsToldByTheTrapAlone)
{
    Given({LaborType("BL", "Body")});
    fakes.prompts.Expect(
        "Error 61 in Sub frmStatus!StoreDescription() (Line = 0)\r\nwhile running Lodrin.exe v1.00 "
        "(Build 5)\r\n\r\nError = 'Disk full'\r\n\r\nThis message has been copied to your "
        "clipboard "
        "for easy retreval.\r\n\r\n\r\nSelect 'OK' and the program will attempt to continue "
        "running.");
    Show([this](lodrin::frmStatus& form) {
        form.grdStatus.changed = [] { throw base::NumberedError(61); };
        EXPECT_FALSE(Word("BL", "Paint"));
        form.grdStatus.changed = nullptr;
    });
}

TEST_F(frmStatusTest, RowDeletedMeanwhileIsTold)
{
    Given({LaborType("BL", "Body")});
    fakes.prompts.Expect("The description was not stored.\r\n\r\n" + base::ErrorText(3167) +
                         "\r\n\r\nWhat you typed is still there. Escape brings the stored "
                         "description back.");
    Show([this](lodrin::frmStatus&) {
        GivenNo("Status");
        EXPECT_FALSE(Word("BL", "Paint"));
    });
    EXPECT_TRUE(Wordings().empty());
}

TEST_F(frmStatusTest, LedgerWithoutALaborFlagIsReportedAndTheRowsAreShown)
{
    dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    Given({LaborType("BL", "Body")});
    // The ledger as the management system of another year has it: out of reach under that name.
    shop.values.DataPath = "C:\\Old";
    engine.CreateDatabase(DatabasePath());
    dao::Database old = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
    dao::TableDef ledger("GenLedger");
    ledger.Append(dao::TableDef::CreateField("GLCode", dao::FieldType::Text, 10));
    old.Append(ledger);
    for (const dao::TableDef& table : ProgramTables())
        old.Append(table);
    Given({LaborType("RL", "Refinish")});
    shop.forms.status = std::make_unique<lodrin::frmStatus>();
    lodrin::frmStatus& form = *shop.forms.status;
    form.Form_Load(shop);
    EXPECT_EQ(form.grdStatus.RowCount(), 1);
    EXPECT_EQ(form.grdStatus.Shown(1, 5), "Refinish");
    ASSERT_FALSE(Reports().empty());
    EXPECT_EQ(Reports().front(), "3061 Sub frmStatus!InitializeGrid()");
    EXPECT_SPOTLESS(disk, DatabasePath());
}

TEST_F(frmStatusTest, CodeWithAnApostropheIsReportedAndStopsNothing)
{
    Given({LedgerAccount("A'B", "Odd Labor", true), LedgerAccount("BL", "Body Labor", true)});
    Show();
    EXPECT_EQ(Wordings(), (Map{{"BL", "Body"}}));
    ASSERT_EQ(Reports().size(), 1U);
    EXPECT_EQ(Reports().front().substr(4), " Sub frmStatus!InitializeGrid()");
}

TEST_F(frmStatusTest, ExitClosesTheWindowsDatabaseAndNoOther)
{
    Given({LaborType("BL", "Body")});
    Show([](lodrin::frmStatus& form) { EXPECT_EQ(form.status.RecordCount(), 1); });
    EXPECT_THROW((void)shop.forms.status->status.RecordCount(), base::NumberedError);
    EXPECT_EQ(shop.state.rsStatus.RecordCount(), 1);
    EXPECT_FALSE(shop.forms.status->close);
}

TEST_F(frmStatusTest, LaborTypeDialogOffersTheNewWordingAfterwards)
{
    Given({LaborType("BL", "Body"), LaborType("RL", "Refinish")});
    Show([this](lodrin::frmStatus&) { EXPECT_TRUE(Word("RL", "Paint shop")); });
    shop.forms.glSelect.Form_Load(shop);
    EXPECT_EQ(shop.forms.glSelect.lstGLCodes.List(0), "BL Body");
    EXPECT_EQ(shop.forms.glSelect.lstGLCodes.List(1), "RL Paint shop");
}

// The main window keeps the set that it opened at its load; a set does not take in rows that others
// add.
TEST_F(frmStatusTest, RowsThatCameWithTheWindowAreOfferedFromTheNextStartOn)
{
    Given({LedgerAccount("BL", "Body Labor", true)});
    Show([this](lodrin::frmStatus&) { EXPECT_TRUE(Word("BL", "Metal")); });
    shop.forms.glSelect.Form_Load(shop);
    EXPECT_EQ(shop.forms.glSelect.lstGLCodes.List(0), "BL Body Labor");
    Open();
    shop.forms.glSelect.Form_Load(shop);
    EXPECT_EQ(shop.forms.glSelect.lstGLCodes.List(0), "BL Metal");
}

TEST_F(frmStatusTest, WithoutDatabaseTheWindowIsEmptyAndEveryStepIsReported)
{
    Open();
    shop.values.DataPath = "C:\\Nowhere";
    shop.forms.status = std::make_unique<lodrin::frmStatus>();
    shop.forms.status->Form_Load(shop);
    EXPECT_EQ(shop.forms.status->grdStatus.RowCount(), 0);
    for (const std::string& report : Reports())
        EXPECT_NE(report.find("Sub frmStatus!"), std::string::npos) << report;
    EXPECT_FALSE(Reports().empty());
    shop.values.DataPath = "C:\\Shop";
}

}  // namespace
