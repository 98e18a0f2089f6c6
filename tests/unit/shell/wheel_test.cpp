// SPDX-License-Identifier: GPL-3.0-or-later
// The wheel over a window whose controls are drawn, and tips that follow the pointer.
#include <limits>

#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct Wheel : test::DrawnRig {
    Wheel() : DrawnRig(FormStyle::Painted) {
        form.Picture = test::plain(200, 100);
        place(slide, 20, 10, 100, 20);
        place(other, 20, 50, 100, 20);
        for (MouseControl* each : std::initializer_list<MouseControl*>{&form, &slide}) {
            each->MouseWheel.tie([this, each](const WheelArgs& wheel) {
                say(each->name() + " " + std::to_string(wheel.notches) + " " + std::to_string(wheel.shift));
            });
        }
        attach();
    }
    void turn(double notches, double x, double y) { window->wheelTurned(notches, 0, {x, y}); }
    PictureBox slide{&form, "slide"};
    PictureBox other{&form, "other"};
};

/// HAND-40: The wheel is told to the control under the pointer, else to its form
TEST_F(Wheel, TellsTheControlUnderThePointerElseTheForm) {
    turn(1, 50, 15);
    turn(-2, 50, 55);
    turn(1, 150, 90);
    window->wheelTurned(1, kCtrlMask, {50, 15});
    EXPECT_EQ(seenNow(), (Texts{"slide 1 0", "frmTried -2 0", "frmTried 1 0", "slide 1 2"}));
}

/// HAND-41: Parts of a notch are gathered, for one control and one direction
TEST_F(Wheel, GathersPartsOfANotch) {
    for (int i = 0; i < 7; ++i) turn(0.25, 50, 15);
    EXPECT_EQ(seenNow(), Texts{"slide 1 0"});
    turn(-0.5, 50, 15);
    turn(-0.5, 50, 15);
    EXPECT_EQ(seenNow(), Texts{"slide -1 0"}) << "the other way begins afresh";
    turn(0.75, 50, 15);
    turn(0.75, 150, 90);
    EXPECT_TRUE(seenNow().empty()) << "another control begins afresh";
}

/// HAND-42: What no hand could turn is held, or means nothing
TEST_F(Wheel, HoldsWhatNoHandCouldTurn) {
    turn(1e300, 50, 15);
    turn(std::numeric_limits<double>::quiet_NaN(), 50, 15);
    turn(0, 50, 15);
    EXPECT_EQ(seenNow(), Texts{"slide 10 0"});
}

/// HAND-43: Not while a box is up, a button is held, the window is not to be used, or the form has gone
TEST_F(Wheel, MeansNothingWhileTheMouseMeansNothing) {
    surface->boxUp = true;
    turn(1, 50, 15);
    surface->boxUp = false;
    {
        const EventLoop::Hold hold(loop);
        turn(1, 50, 15);
    }
    press(50, 15);
    seen.clear();
    turn(1, 50, 15);
    release(50, 15);
    window->unbind();
    turn(1, 50, 15);
    EXPECT_TRUE(seenNow().empty());
}

/// HAND-44: A tip that tells the place says it anew a pixel on; without a text the control's own tip stands
TEST_F(Wheel, ATipTellsThePlaceUnderThePointer) {
    slide.ToolTipText = "Slider";
    bool has = true;
    slide.TipAt = [&has](float x) { return has ? std::to_string(static_cast<int>(x)) : std::string(); };
    const DrawnWindow::Tip tip = window->tipAt({50, 15});
    EXPECT_EQ(tip.text, std::to_string(30 * 15));
    EXPECT_EQ(toText(tip.place), "50 10 1 20");
    EXPECT_TRUE(tip.moves);
    has = false;
    EXPECT_EQ(window->tipAt({50, 15}).text, "Slider");
    EXPECT_EQ(toText(window->tipAt({50, 15}).place), "20 10 100 20");
    EXPECT_FALSE(window->tipAt({50, 15}).moves);
}

/// HAND-23
TEST_F(Wheel, AFormIsToldThatAKeyIsHeld) {
    form.KeyDown.tie([this](const KeyArgs& key) { say(key.isRepeat ? "held" : "pressed"); });
    key(kKeyF11);
    key(kKeyF11, 0, true);
    EXPECT_EQ(seenNow(), (Texts{"pressed", "held"}));
}

}  // namespace
}  // namespace corvane
