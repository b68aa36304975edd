// SPDX-License-Identifier: Apache-2.0
// Tests of data/ui/frmProcMsgView.cpp: what is on the screen at each step of a long procedure.
#include "app/Dispatch.h"
#include "app/ui/QtDialogs.h"
#include "data/SyncEmployees.h"
#include "data/modBuildLD.h"
#include "platform/fake/OtherServices.h"
#include "tests/support/ShopFixture.h"
#include "tests/support/StartTexts.h"
#include "tools/demo/Hands.h"

#include <QApplication>
#include <QGroupBox>
#include <QImage>
#include <QLabel>

#include <map>

namespace tests {
namespace {

// Looks over the shoulder of the label that tells the step: what it was painted with, in order.
class Painted : public QObject {
public:
    std::vector<std::string> texts;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const auto* label = qobject_cast<QLabel*>(watched);
        if (label == nullptr || label->objectName() != "Label1" || !label->isVisible() ||
            event->type() != QEvent::Paint)
            return false;
        const std::string text = label->text().toStdString();
        if (!text.empty() && (texts.empty() || texts.back() != text)) texts.push_back(text);
        return false;
    }
};

// Pixels that differ from the background.
int InkOf(const QImage& image)
{
    int ink = 0;
    const QRgb ground = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += image.pixel(x, y) != ground;
    return ink;
}

// A desktop that really repaints, and is photographed each time.
class PaintingEvents : public platform::Events {
public:
    std::map<std::string, int> inks;  // of the label, by what it told

    void LetPendingRun() override
    {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* label = window->findChild<QLabel*>("Label1");
            if (label != nullptr && window->objectName() == "frmProcMsg" && window->isVisible())
                inks[label->text().toStdString()] = InkOf(label->grab().toImage());
        }
    }
};

class ProcMsgTest : public ShopFixture {
protected:
    ProcMsgTest()
    {
        qApp->installEventFilter(&painted);
        real.values.DataPath = shop.values.DataPath;
    }
    void ExpectInk()
    {
        for (const std::string& text : painted.texts)
            EXPECT_GT(events.inks[text], 100) << text;
    }

    Painted painted;
    PaintingEvents events;
    platform::Services painting = platform::With(fakes.AsServices(), events);
    lodrin::ui::QtDialogs qt;
    lodrin::Shop real{qt, painting, engine};
};

TEST_F(ProcMsgTest, EachStepOfTheSchemaBuildIsPaintedBeforeItBegins)
{
    fakes.files.Write("C:/Shop/Kelvaro.mdb", "");
    lodrin::Dispatch(real, [](lodrin::Shop& on) { lodrin::BuildLD(on, on.values.DataPath); });
    EXPECT_EQ(painted.texts, (std::vector<std::string>{
                                 "Building/Verifying Kelvaro.mdb - LD Employee Table",
                                 "Building/Verifying Kelvaro.mdb - LD Totals Table",
                                 "Building/Verifying Kelvaro.mdb - LD History Table",
                                 "Building/Verifying Kelvaro.mdb - Status Description Table"}));
    ExpectInk();
    EXPECT_THROW((void)demo::Window("frmProcMsg"), std::logic_error);
}

TEST_F(ProcMsgTest, EachStepOfTheSynchronisationIsPainted)
{
    Given({Employee("Jones, Bob", 8).Without("LDEmp"), Employee("Smith, Ann", 7)});
    Open();
    real.state = std::move(shop.state);
    fakes.prompts.Expect(kEmployeesAdded);
    lodrin::Dispatch(real, lodrin::mnuSyncEmp_Click);
    EXPECT_EQ(painted.texts,
              (std::vector<std::string>{"Synchronizing LD - Preparing to execute process",
                                        "Synchronizing LD - Adding employee: Bob Jones",
                                        "Synchronizing LD - Processing employees"}));
    ExpectInk();
}

TEST_F(ProcMsgTest, WindowWearsTheCaptionThatShopsKnow)
{
    qt.ShowProcMsg(real);
    QWidget& window = demo::Window("frmProcMsg");
    EXPECT_EQ(window.windowTitle().toStdString(), "Form1");
    EXPECT_NE(window.findChild<QGroupBox*>("Frame1"), nullptr);
    qt.UnloadProcMsg(real);
}

}  // namespace
}  // namespace tests
