// SPDX-License-Identifier: Apache-2.0
// Tests of setup/ui/frmPreviewView.cpp and platform/qt: GridPages, PreviewWidget, WindowFrame
#include "base/Calendar.h"
#include "data/Tables.h"
#include "platform/qt/GridPages.h"
#include "platform/qt/PreviewWidget.h"
#include "tests/support/SampleShopDays.h"
#include "tests/support/Samples.h"
#include "tests/support/ShopFixture.h"
#include "tests/support/StartTexts.h"
#include "tests/ui/Robot.h"
#include "tools/demo/StagedShop.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QLabel>
#include <QPainter>
#include <QPrinter>
#include <QPushButton>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <optional>

namespace tests {
namespace {

using lodrin::LDEmp;
using platform::qt::GridPage;
using platform::qt::GridPages;
using platform::qt::PageText;
using platform::qt::PreviewWidget;
using Kind = PageText::Kind;

const QSizeF kLetter{540, 720};  // less its margins

class PreviewTest : public ShopFixture {
protected:
    // A board of so many employees.
    void Board(int employees)
    {
        dao::Database database = engine.DefaultWorkspace().OpenDatabase(DatabasePath());
        dao::Recordset rows = database.OpenRecordset("LDEmp");
        for (int number = 1; number <= employees; ++number) {
            rows.AddNew();
            rows["Name"] = "Employee " + std::to_string(1000 + number) + ", Ann";
            rows.Update();
        }
        Open();
    }
    const platform::Grid& Grid() const { return shop.window.grdEmp; }
    static std::vector<std::string> Texts(const GridPage& page, Kind kind)
    {
        std::vector<std::string> texts;
        for (const PageText& text : page.texts)
            if (text.kind == kind) texts.push_back(text.text.toStdString());
        return texts;
    }
    static QImage Painted(const GridPages& pages, std::size_t page)
    {
        QImage image(kLetter.toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        pages.Paint(painter, page);
        return image;
    }
    static bool HasInk(const QImage& image, const QRectF& box)
    {
        const QRect inside = box.toRect().intersected(image.rect());
        for (int y = inside.top(); y <= inside.bottom(); ++y)
            for (int x = inside.left(); x <= inside.right(); ++x)
                if (qGray(image.pixel(x, y)) < 128) return true;
        return false;
    }
};

TEST_F(PreviewTest, PageCarriesTheShownColumnsInTheirOrderAndEveryRowOnce)
{
    Board(3);
    const GridPages pages(Grid(), "Employees", kLetter);
    ASSERT_EQ(pages.Pages().size(), 1U);
    const GridPage& page = pages.Pages()[0];
    EXPECT_EQ(Texts(page, Kind::Title), std::vector<std::string>{"Employees"});
    EXPECT_EQ(Texts(page, Kind::Caption),
              (std::vector<std::string>{"Employee", "Start Day", "Type", "Vehicle", "Customer",
                                        "WO #", "Job Start", "End Day"}));
    EXPECT_EQ(Texts(page, Kind::Footer), std::vector<std::string>{"Page 1 of 1"});
    EXPECT_EQ(Texts(page, Kind::Cell).size(), 3U * 8);
    EXPECT_EQ(Texts(page, Kind::Cell)[8], "Employee 1002, Ann");
}

TEST_F(PreviewTest, LongGridBreaksIntoPagesThatRepeatTitleAndCaptionsAndLoseNoRow)
{
    Board(120);
    const GridPages pages(Grid(), "Employees", kLetter);
    ASSERT_GT(pages.Pages().size(), 2U);
    std::vector<std::string> names;
    for (std::size_t number = 0; number < pages.Pages().size(); ++number) {
        const GridPage& page = pages.Pages()[number];
        EXPECT_EQ(Texts(page, Kind::Title).size(), 1U);
        EXPECT_EQ(Texts(page, Kind::Caption).size(), 8U);
        EXPECT_EQ(Texts(page, Kind::Footer).front(), "Page " + std::to_string(number + 1) + " of " +
                                                         std::to_string(pages.Pages().size()));
        const std::vector<std::string> cells = Texts(page, Kind::Cell);
        for (std::size_t cell = 0; cell < cells.size(); cell += 8)
            names.push_back(cells[cell]);
    }
    ASSERT_EQ(names.size(), 120U);
    for (int row = 1; row <= 120; ++row)
        EXPECT_EQ(names[static_cast<std::size_t>(row - 1)], Grid().Shown(row, LDEmp::Name.column));
}

TEST_F(PreviewTest, NothingLeavesThePaperAndNoRowReachesTheFooter)
{
    Board(60);
    const GridPages pages(Grid(), "Employees", kLetter);
    for (const GridPage& page : pages.Pages()) {
        double footer = 0, lowest = 0;
        for (const PageText& text : page.texts) {
            EXPECT_TRUE(QRectF({}, kLetter).adjusted(-0.1, -0.1, 0.1, 0.1).contains(text.box))
                << text.text.toStdString();
            if (text.kind == Kind::Footer) footer = text.box.top();
            if (text.kind == Kind::Cell) lowest = std::max(lowest, text.box.bottom());
        }
        EXPECT_LT(lowest, footer);
    }
}

TEST_F(PreviewTest, LongTextsAreBrokenIntoLinesNotCutOff)
{
    const std::string car = "1999 Ford Expedition Eddie Bauer 4WD with running boards, tow hitch "
                            "and a dent in the left rear door";
    Given({Employee("Jones, Bob", 8).With(LDEmp::VehDesc.name, car)});
    Open();
    const GridPages pages(Grid(), "Employees", {400, 720});
    for (const PageText& text : pages.Pages()[0].texts) {
        if (text.text.toStdString() != car) continue;
        QFont font = QGuiApplication::font();
        font.setPixelSize(10);
        const QRectF needed = QFontMetricsF(font).boundingRect(text.box.adjusted(4, 0, -4, 0),
                                                               Qt::TextWordWrap, text.text);
        EXPECT_LE(needed.height(), text.box.height()) << "broken between words";
        EXPECT_GT(text.box.height(), 30);
        return;
    }
    FAIL() << "the text is not on the page";
}

TEST_F(PreviewTest, GridWithoutRowsIsOnePageWithItsCaptions)
{
    Open();
    const GridPages pages(Grid(), "Employees", kLetter);
    ASSERT_EQ(pages.Pages().size(), 1U);
    EXPECT_EQ(Texts(pages.Pages()[0], Kind::Caption).size(), 8U);
    EXPECT_TRUE(Texts(pages.Pages()[0], Kind::Cell).empty());
}

TEST_F(PreviewTest, EveryTextIsReallyPaintedInItsPlace)
{
    Board(2);
    const GridPages pages(Grid(), "Employees", kLetter);
    const QImage image = Painted(pages, 0);
    for (const PageText& text : pages.Pages()[0].texts)
        EXPECT_EQ(HasInk(image, text.box.adjusted(3, 3, -3, -3)), !text.text.isEmpty())
            << text.text.toStdString();
}

TEST_F(PreviewTest, PrinterGetsAllPages)
{
    Board(80);
    ScratchFolder folder;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    const std::filesystem::path file = folder.Path() / "board.pdf";
    printer.setOutputFileName(QString::fromStdString(file.string()));
    platform::qt::Print(Grid(), "Employees", printer);
    const GridPages pages(Grid(), "Employees", printer.pageRect(QPrinter::Point).size());
    std::ifstream in(file, std::ios::binary);
    const std::string pdf((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(pdf.rfind("%PDF", 0), 0U);
    EXPECT_NE(pdf.find("/Count " + std::to_string(pages.Pages().size())), std::string::npos);
}

// The window, over the real main window of a staged program.
class PreviewWindowTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(folder.Path() / "program");
        dao::DBEngine engine({.now = [] { return base::Date{40177}; }});
        engine.CreateDatabase((folder.Path() / "Kelvaro.mdb").string());
        dao::Database database =
            engine.DefaultWorkspace().OpenDatabase((folder.Path() / "Kelvaro.mdb").string());
        for (const dao::TableDef& table : ManagementTables())
            database.Append(table);
        dao::Recordset profiles = database.OpenRecordset("Profile");
        profiles.AddNew();
        profiles["ProfileNumber"] = 1;
        profiles["Type"] = "Employee";
        profiles.Update();
        database.Close();
        staged.emplace(folder.Path() / "program", folder.Path(),
                       base::DateFrom({2009, 12, 30, 7, 0, 0}));
        Robot robot;
        robot.Box("Is this the correct date: Wednesday, December 30, 2009", QMessageBox::Yes);
        robot.Box(kEmployeesAdded);
        robot.Box(kNoDescriptions);
        staged->Start();
        Main().setGeometry(20, 30, 760, 700);
        QCoreApplication::processEvents();
        // A board of 120 employees, in memory.
        large.MakeDatabase();
        dao::Database board = large.engine.DefaultWorkspace().OpenDatabase(large.DatabasePath());
        dao::Recordset rows = board.OpenRecordset("LDEmp");
        for (int number = 1; number <= 120; ++number) {
            rows.AddNew();
            rows["Name"] = "Employee " + std::to_string(number) + ", Ann";
            rows.Update();
        }
        large.Open();
        form().GEXPreview1.Fill(large.shop.window.grdEmp, "Employees");
        staged->dialogs.ShowPreview(staged->shop);
        QCoreApplication::processEvents();
    }
    void TearDown() override
    {
        staged->dialogs.UnloadMain(staged->shop);
        staged.reset();
    }
    lodrin::frmPreview& form() { return staged->shop.forms.preview; }
    QWidget& Main() { return demo::Window("frmLodrin"); }
    QWidget& Window() { return demo::Window("frmPreview"); }
    PreviewWidget& Preview()
    {
        return static_cast<PreviewWidget&>(demo::Find<QWidget>(Window(), "GEXPreview1"));
    }
    void Press(const char* name) { demo::Find<QPushButton>(Window(), name).click(); }
    std::string Page() { return demo::Find<QLabel>(Window(), "lblPage").text().toStdString(); }
    static bool IsOpen()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == "frmPreview") return true;
        return false;
    }

    ScratchFolder folder;
    jet::io::MemoryFileSystem memory;
    ShopWorld large{memory};
    std::optional<demo::StagedShop> staged;
};

TEST_F(PreviewWindowTest, ComesUpInTheMainWindowsPlaceAndFillsItsInside)
{
    EXPECT_EQ(Window().windowTitle().toStdString(), "Print Preview");
    EXPECT_EQ(Window().geometry().topLeft(), QPoint(20, 30));
    EXPECT_EQ(Preview().geometry(), Window().rect());
    Window().resize(1100, 750);
    QCoreApplication::processEvents();
    EXPECT_EQ(Preview().geometry(), QRect(0, 0, 1100, 750));
}

TEST_F(PreviewWindowTest, PagesAreTurned)
{
    const int count = Preview().PageCount();
    ASSERT_GT(count, 2);
    EXPECT_EQ(Page(), "Page 1 of " + std::to_string(count));
    EXPECT_FALSE(demo::Find<QPushButton>(Window(), "cmdPrevious").isEnabled());
    Press("cmdNext");
    EXPECT_EQ(Page(), "Page 2 of " + std::to_string(count));
    Press("cmdPrevious");
    EXPECT_EQ(Page(), "Page 1 of " + std::to_string(count));
    for (int page = 1; page < count; ++page)
        Press("cmdNext");
    EXPECT_FALSE(demo::Find<QPushButton>(Window(), "cmdNext").isEnabled());
}

TEST_F(PreviewWindowTest, CloseHandsItsPlaceToTheMainWindow)
{
    Window().setGeometry(40, 50, 1000, 720);
    QCoreApplication::processEvents();
    Press("cmdClose");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Main().geometry(), QRect(40, 50, 1000, 720));
    EXPECT_EQ(form().GEXPreview1.Filled(), nullptr);
}

TEST_F(PreviewWindowTest, MaximisedPreviewLeavesTheMainWindowMaximised)
{
    Window().showMaximized();
    QCoreApplication::processEvents();
    Window().close();
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(Main().isMaximized());
}

TEST_F(PreviewWindowTest, HiddenMainWindowIsShownAgain)
{
    QWidget& main = Main();
    main.hide();
    Press("cmdClose");
    EXPECT_TRUE(main.isVisible());
}

TEST_F(PreviewWindowTest, MainWindowWorksOnMeanwhile)
{
    staged->shop.window.Timer1.SetInterval(1);
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return Main().windowTitle() == "Lodrin -      7:00:00 AM"; }, 2000));
}

TEST_F(PreviewWindowTest, ButtonsAreLargeEnoughForAThumb)
{
    for (const auto* button : Window().findChildren<QPushButton*>())
        EXPECT_GE(button->height(), 48) << button->objectName().toStdString();
}

}  // namespace
}  // namespace tests
