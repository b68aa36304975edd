// SPDX-License-Identifier: Apache-2.0
// frmPreviewTest: the window that shows how a grid looks on paper.
#include "setup/frmPreview.h"

#include "base/NumberedError.h"
#include "tests/support/ShellFixture.h"

namespace {

using namespace tests;
using platform::Place;
using platform::WindowState;

class frmPreviewTest : public ShellFixture {
protected:
    frmPreviewTest()
    {
        main.Found(WindowState::Normal, {1, 2, 300, 400}, false);
        form.frame.Found(WindowState::Normal, {50, 60, 700, 800}, true);
        form.innerWidth = 690;
        form.innerHeight = 770;
    }
    lodrin::frmPreview& form = shop.forms.preview;
    platform::Window& main = shop.window.frame;
};

TEST_F(frmPreviewTest, ResizeLetsThePreviewFillTheInnerArea)
{
    form.Form_Resize(shop);
    EXPECT_EQ(form.GEXPreview1.Where(), (Place{0, 0, 690, 770}));
    form.frame.Found(WindowState::Maximized, {}, true);
    form.innerWidth = 1900;
    form.Form_Resize(shop);
    EXPECT_EQ(form.GEXPreview1.Where(), (Place{0, 0, 1900, 770}));
}

TEST_F(frmPreviewTest, ResizeOfAMinimisedWindowMovesNothing)
{
    form.Form_Resize(shop);
    form.frame.Found(WindowState::Minimized, {}, true);
    form.innerWidth = 1;
    form.Form_Resize(shop);
    EXPECT_EQ(form.GEXPreview1.Where(), (Place{0, 0, 690, 770}));
}

TEST_F(frmPreviewTest, UnloadHandsItsPlaceToTheMainWindowAndShowsIt)
{
    form.Form_Unload(shop);
    EXPECT_EQ(main.Where(), (Place{50, 60, 700, 800}));
    EXPECT_EQ(main.State(), WindowState::Normal);
    EXPECT_TRUE(main.Visible());
    EXPECT_FALSE(form.frame.Visible());
}

TEST_F(frmPreviewTest, UnloadOfAMaximisedOrMinimisedPreviewHandsOverItsState)
{
    for (const WindowState state : {WindowState::Maximized, WindowState::Minimized}) {
        form.frame.Found(state, {}, true);
        form.Form_Unload(shop);
        EXPECT_EQ(main.State(), state);
        EXPECT_EQ(main.Where(), (Place{1, 2, 300, 400}));
        EXPECT_TRUE(main.Visible());
        EXPECT_FALSE(form.frame.Visible());
    }
}

TEST_F(frmPreviewTest, MainWindowThatCannotBeMovedIsShownAllTheSameAndNothingIsReported)
{
    main.Found(WindowState::Maximized, {}, false);
    form.Form_Unload(shop);
    EXPECT_EQ(main.Where(), (Place{1, 2, 300, 400}));
    EXPECT_TRUE(main.Visible());
    EXPECT_FALSE(form.frame.Visible());
    EXPECT_TRUE(Reports().empty());
    EXPECT_EQ(shop.values.LastErrNumber, 0);
}

TEST_F(frmPreviewTest, FinishedPreviewUnloadsTheWindow)
{
    int unloads = 0;
    form.unload = [&] { ++unloads; };
    form.GEXPreview1_Close(shop);
    EXPECT_EQ(unloads, 1);
}

TEST_F(frmPreviewTest, FailuresAreReportedUnderTheLocationThatShopsKnow)
{
    form.unload = [] { throw base::NumberedError(482); };
    form.GEXPreview1_Close(shop);
    form.GEXPreview1.changed = [] { throw base::NumberedError(482); };
    form.Form_Resize(shop);
    EXPECT_EQ(Reports(), std::vector<std::string>(2, "482 Sub frmPreview!lstGLCodes_KeyUp()"));
}

}  // namespace
