// SPDX-License-Identifier: GPL-3.0-or-later
// Where a window whose controls are drawn lies, when it is shown, and what its form is told of that.
#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct DrawnPlace : test::DrawnRig {
    DrawnPlace() : DrawnRig(FormStyle::Painted) {
        form.Activate.tie([this] { say("active"); });
        form.CloseRequest.tie([this](bool alt) { say(alt ? "close with Alt" : "close"); });
    }
    void moveForm(int left, int top) {
        form.Move(static_cast<float>(left) * kTwipsPerPixel, static_cast<float>(top) * kTwipsPerPixel);
    }
};

TEST_F(DrawnPlace, AFormIsShownInItsPlaceWithoutASightOfAnother) {
    moveForm(40, 60);
    form.Caption = "Corvane";
    window->bind();
    EXPECT_EQ(toldNow(), (Texts{"caption Corvane", "place 40 60 200 100"}));
    form.Show();
    EXPECT_EQ(toldNow(), Texts{"show"});
    form.Caption = "Other";
    form.SetFocus();
    EXPECT_EQ(toldNow(), (Texts{"caption Other", "activate"}));
    form.Enabled = false;
    EXPECT_FALSE(surface->usable);
    form.Hide();
    EXPECT_EQ(toldNow(), Texts{"hide"});
}

TEST_F(DrawnPlace, AFormIsAsLargeAsItsScaleSaysAndNeverWithoutAPixel) {
    screens.scale = 1.5;
    attach();
    EXPECT_EQ(surface->at, (PixelPlace{0, 0, 300, 150}));
    form.SetSize(0, 0);
    EXPECT_EQ(surface->at, (PixelPlace{0, 0, 1, 1}));
    form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
    toldNow();
    screens.scale = 2;
    window->scaleChanged();
    EXPECT_EQ(toldNow(), (Texts{"place 0 0 400 200", "paint all"}));
}

TEST_F(DrawnPlace, PaintedFormsCountFromThePrimaryScreenAndOthersFromThePanels) {
    screens.all = {{{100, 50, 1000, 800}, {100, 50, 1000, 800}}, {{1100, 0, 1000, 800}, {1100, 0, 1000, 800}}};
    screens.panelScreen = screens.all.back().shows;
    Form media("frmMedia", FormStyle::Media);
    EXPECT_EQ(screens.cornerFor(form), (PixelPoint{100, 50}));
    EXPECT_EQ(screens.cornerFor(media), (PixelPoint{1100, 0}));
    attach();
    EXPECT_EQ(surface->at.x, 100);
    surface->moveTo({130, 90});
    EXPECT_EQ(form.Left, 30 * kTwipsPerPixel);
    EXPECT_EQ(form.Top, 40 * kTwipsPerPixel);
    screens.all.clear();
    EXPECT_EQ(screens.cornerFor(form), (PixelPoint{0, 0}));
}

TEST_F(DrawnPlace, ADesktopMayGatherTheChangesOfAPlace) {
    surface->placesLater = true;
    attach();
    moveForm(40, 60);
    form.SetSize(300 * kTwipsPerPixel, 150 * kTwipsPerPixel);
    surface->at.x = 7;  // what the system says of the old place meanwhile is no news
    window->moved();
    EXPECT_EQ(form.Left, 40 * kTwipsPerPixel);
    EXPECT_GT(surface->placesWanted, 0);
    EXPECT_EQ(surface->at.width, 200);
    toldNow();
    window->settlePlace();
    EXPECT_EQ(toldNow(), Texts{"place 40 60 300 150"}) << "one step";
    window->settlePlace();
    EXPECT_EQ(toldNow(), Texts{}) << "and only one";
    moveForm(50, 60);
    window->refresh();
    EXPECT_EQ(toldNow(), (Texts{"place 50 60 300 150", "refresh"})) << "what is painted now is in its place";
    moveForm(60, 60);
    form.Hide();
    EXPECT_EQ(toldNow(), (Texts{"place 60 60 300 150", "hide"}));
}

TEST_F(DrawnPlace, WholeTwipsStayAsTheFormSetThem) {
    attach();
    form.Left = 101;
    EXPECT_EQ(surface->at.x, 7);
    window->moved();
    EXPECT_EQ(form.Left, 101.0F);
    surface->moveTo({8, 0});
    EXPECT_EQ(form.Left, 120.0F);
    EXPECT_EQ(toldNow(), (Texts{"place 7 0 200 100", "move 8 0"})) << "the form's answer moves nothing";
}

TEST_F(DrawnPlace, AWindowThatNoScreenWouldShowComesIntoSight) {
    moveForm(9000, 20);
    window->bind();
    form.Show();
    EXPECT_EQ(surface->at, (PixelPlace{800, 30, 200, 100})) << "below the bar";
    EXPECT_EQ(form.Left, 800 * kTwipsPerPixel) << "and its form knows";
}

TEST_F(DrawnPlace, WhenScreensChangeItStaysWhereAHandCanGrabIt) {
    attach();
    surface->moveTo({970, 40});
    toldNow();
    window->screensChanged();
    EXPECT_EQ(toldNow(), Texts{"paint all"});
    screens.all = {{{0, 0, 640, 480}, {0, 30, 640, 450}}};
    window->screensChanged();
    EXPECT_EQ(toldNow(), (Texts{"move 440 40", "paint all"}));
    surface->moveTo({10, -70});  // only the bar's place shows it
    toldNow();
    window->screensChanged();
    EXPECT_EQ(toldNow(), (Texts{"move 10 30", "paint all"}));
}

TEST_F(DrawnPlace, AMinimisedWindowComesIntoSightWhenItIsRestored) {
    attach();
    form.WindowState = WindowState::Minimized;
    EXPECT_EQ(toldNow(), Texts{"minimise"});
    surface->at.x = -190;
    window->moved();
    EXPECT_EQ(form.Left, 0.0F) << "where a minimised window lies is nobody's place";
    window->screensChanged();
    EXPECT_EQ(surface->at.x, -190);
    form.WindowState = WindowState::Normal;
    EXPECT_EQ(surface->at.x, 0);
    window->minimised(true);
    EXPECT_EQ(form.WindowState.get(), WindowState::Minimized) << "by the window manager";
}

TEST_F(DrawnPlace, AFormThatIsMinimisedBeforeItIsShownIsShownSo) {
    form.WindowState = WindowState::Minimized;
    window->bind();
    form.Show();
    EXPECT_EQ(toldNow(), (Texts{"caption ", "place 0 0 200 100", "minimise"}));
}

TEST_F(DrawnPlace, ActivationAndTheWishToCloseAreEventsOfTheirOwn) {
    attach();
    window->activated();
    window->requestClose();
    surface->altDown = true;
    window->requestClose();
    EXPECT_EQ(seenNow(), Texts{});
    loop.drain();
    EXPECT_EQ(seenNow(), (Texts{"active", "close", "close with Alt"}));
}

}  // namespace
}  // namespace corvane
