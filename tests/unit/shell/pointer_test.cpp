// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/pointer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fake/fake_loop.h"
#include "shell/painted_layout.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A form with a button at 150, 150 twips and a box at 150, 900 whose unit is pixels.
struct PointerOnAForm : ::testing::Test, Pointer::Host {
    PointerOnAForm() {
        shown.SetSize(3000, 1500);
        button.Move(150, 150);
        button.SetSize(300, 300);
        box.Move(150, 900);
        box.SetSize(300, 150);
        box.Scale = ScaleMode::InPixels;
        tie(shown, "form");
        tie(button, "button");
        tie(box, "box");
    }
    void tie(MouseControl& control, const std::string& name) {
        control.MouseDown.tie([this, name](const MouseArgs& args) {
            seen.push_back(name + " down " + std::to_string(static_cast<int>(args.x)));
        });
        control.MouseUp.tie([this, name](const MouseArgs&) { seen.push_back(name + " up"); });
        control.Click.tie([this, name] { seen.push_back(name + " click"); });
        control.DblClick.tie([this, name] { seen.push_back(name + " double"); });
    }
    void click(Pointer::Place at, bool isDouble = false) {
        pointer.press(kLeftButton, 0, at, isDouble);
        pointer.release(kLeftButton, 0, at);
    }

    bool bound() const override { return isBound; }
    Form& form() const override { return shown; }
    Rectangle hitRect(const Control& control) const override { return hitPlace(shown, control, 0); }
    void pressedChanged(Control&) override { ++changes; }
    void enter(const EventLoop::Handler& handler) override { handler(); }
    void post(EventLoop::Handler handler) override { loop.post(std::move(handler)); }

    mutable Form shown{"frmTried", FormStyle::Painted};
    CommandButton button{&shown, "cmdTried"};
    PictureBox box{&shown, "pctTried"};
    FakeLoop loop;
    Pointer pointer{*this};
    bool isBound = true;
    int changes = 0;
    Texts seen;
};

/// BTN-24
TEST_F(PointerOnAForm, AButtonIsClickedBeforeItsRelease) {
    click({200, 200});
    EXPECT_EQ(seen, (Texts{"button down 50", "button click", "button up"}));
    EXPECT_EQ(changes, 2);
}

/// COM-23: A click is told when the button comes up inside what it was pressed on, by the left button alone, to the
///     control that is topmost
TEST_F(PointerOnAForm, OtherControlsAreClickedAfterTheirReleaseInTheirOwnUnit) {
    click({180, 950});
    EXPECT_EQ(seen, (Texts{"box down 2", "box up", "box click"}));
    seen.clear();
    click({180, 950}, true);
    EXPECT_EQ(seen, (Texts{"box down 2", "box double", "box up", "box click"}));
}

TEST_F(PointerOnAForm, AControlIsClickedWhateverLiesAboveIt) {
    CommandButton above{&shown, "cmdAbove"};
    above.Move(150, 150);
    above.SetSize(300, 300);
    tie(above, "above");
    pointer.click(button, kLeftButton);
    EXPECT_EQ(seen, (Texts{"button down 150", "button click", "button up"}));
    seen.clear();
    pointer.click(shown, kRightButton);
    EXPECT_EQ(seen, (Texts{"form down 1500", "form up"}));
    EXPECT_FALSE(pointer.holdsButton());
}

/// BTN-49: A disabled button takes no click
TEST_F(PointerOnAForm, ADisabledControlIsNotClicked) {
    button.Enabled = false;
    pointer.click(button, kLeftButton);
    EXPECT_EQ(seen, Texts{});
    EXPECT_FALSE(pointer.holdsButton());
}

/// COM-23
TEST_F(PointerOnAForm, AButtonIsHeldOnlyWhileThePointerIsInside) {
    pointer.press(kLeftButton, 0, {200, 200}, false);
    EXPECT_EQ(pointer.pressed(), &button);
    pointer.move(0, {900, 200});
    EXPECT_EQ(pointer.pressed(), nullptr);
    pointer.release(kLeftButton, 0, {900, 200});
    EXPECT_EQ(seen, (Texts{"button down 50", "button up"}));
}

/// COM-23
TEST_F(PointerOnAForm, ADisabledButtonLeavesTheRightButtonToTheForm) {
    button.Enabled = false;
    click({200, 200});
    EXPECT_EQ(seen, Texts{});
    pointer.press(kRightButton, 0, {200, 200}, false);
    EXPECT_EQ(seen, Texts{"form down 200"});
}

TEST_F(PointerOnAForm, WhatIsHeldIsLetGoWhenThePointerIsTakenAway) {
    pointer.press(kLeftButton, 0, {200, 200}, false);
    seen.clear();
    pointer.lose();
    EXPECT_EQ(pointer.pressed(), nullptr);
    EXPECT_EQ(seen, Texts{}) << "told later";
    loop.drain();
    EXPECT_EQ(seen, Texts{"button up"});
    pointer.release(kLeftButton, 0, {200, 200});
    EXPECT_EQ(seen, Texts{"button up"}) << "told once";
}

/// BTN-45: A window that was dragged was not clicked
TEST_F(PointerOnAForm, AMovedWindowsReleaseIsNoClick) {
    pointer.press(kLeftButton, 0, {2000, 200}, false);
    pointer.beginDrag();
    EXPECT_TRUE(pointer.dragging());
    pointer.moved();
    pointer.release(kLeftButton, 0, {2000, 200});
    EXPECT_FALSE(pointer.dragging());
    EXPECT_EQ(seen, Texts{"form down 2000"});
}

TEST_F(PointerOnAForm, APressThatIsLetGoInItsOwnEventIsNoDoubleClick) {
    box.MouseDown.tie([this](const MouseArgs&) { pointer.letGo(); });
    click({180, 950}, true);
    EXPECT_EQ(seen, Texts{});
}

/// What the other button began, such as a pan, would never end.
TEST_F(PointerOnAForm, BehindADragTheReleaseOfAnotherButtonIsTold) {
    pointer.press(kMiddleButton, 0, {2000, 200}, false);
    pointer.press(kLeftButton, 0, {2000, 200}, false);
    pointer.beginDrag();
    pointer.moved();
    seen.clear();
    pointer.release(kLeftButton, 0, {2000, 200});
    EXPECT_EQ(seen, Texts{});
    pointer.release(kMiddleButton, 0, {2000, 200});
    EXPECT_EQ(seen, Texts{"form up"});
}

TEST_F(PointerOnAForm, AnotherButtonPressedInADragMakesItNoClick) {
    pointer.press(kLeftButton, 0, {180, 950}, false);
    pointer.beginDrag();
    pointer.moved();
    pointer.press(kRightButton, 0, {180, 950}, false);
    pointer.release(kRightButton, 0, {180, 950});
    seen.clear();
    pointer.release(kLeftButton, 0, {180, 950});
    EXPECT_EQ(seen, Texts{}) << "the settings would open behind a drag of the display";
}

/// COM-27
TEST_F(PointerOnAForm, AnotherButtonOfTheMouseGoesToWhatIsHeld) {
    pointer.press(kLeftButton, 0, {200, 200}, false);
    pointer.press(kRightButton, 0, {2000, 200}, false);
    EXPECT_EQ(seen, (Texts{"button down 50", "button down 1850"}));
    pointer.release(kLeftButton, 0, {200, 200});
    EXPECT_TRUE(pointer.holdsButton());
    pointer.release(kRightButton, 0, {200, 200});
    EXPECT_FALSE(pointer.holdsButton());
    EXPECT_EQ(seen, (Texts{"button down 50", "button down 1850", "button click", "button up", "button up"}));
}

/// COM-23
/// COM-27
TEST_F(PointerOnAForm, AButtonHiddenOrDisabledWhileHeldIsLetGo) {
    for (const PropertyId property : {PropertyId::Visible, PropertyId::Enabled}) {
        pointer.press(kLeftButton, 0, {200, 200}, false);
        pointer.controlChanged(box, property);
        pointer.controlChanged(button, PropertyId::Caption);
        EXPECT_EQ(pointer.pressed(), &button) << "nothing of it has changed";
        pointer.controlChanged(button, property);
        EXPECT_EQ(pointer.pressed(), nullptr);
        pointer.release(kLeftButton, 0, {200, 200});
    }
}

/// COM-27
TEST_F(PointerOnAForm, AMoveIsToldToWhatLiesThereUnlessItIsDisabled) {
    for (MouseControl* const control : {static_cast<MouseControl*>(&shown), static_cast<MouseControl*>(&button)}) {
        control->MouseMove.tie([this, control](const MouseArgs& args) {
            seen.push_back(control->name() + " " + std::to_string(static_cast<int>(args.x)));
        });
    }
    pointer.move(0, {200, 200});
    pointer.move(0, {2000, 200});
    button.Enabled = false;
    pointer.move(0, {200, 200});
    shown.Enabled = false;
    pointer.move(0, {2000, 200});
    EXPECT_EQ(seen, (Texts{"cmdTried 50", "frmTried 2000", "frmTried 2000"}));
}

/// COM-27
TEST_F(PointerOnAForm, LettingGoEndsADragAndTellsNobody) {
    pointer.beginDrag();
    EXPECT_FALSE(pointer.dragging()) << "nothing is pressed";
    pointer.press(kRightButton, 0, {2000, 200}, false);
    pointer.beginDrag();
    EXPECT_FALSE(pointer.dragging()) << "by the left button alone";
    pointer.letGo();
    pointer.press(kLeftButton, 0, {2000, 200}, false);
    pointer.beginDrag();
    EXPECT_FALSE(pointer.wasMoved());
    pointer.moved();
    EXPECT_TRUE(pointer.wasMoved());
    seen.clear();
    pointer.letGo();
    EXPECT_FALSE(pointer.dragging());
    EXPECT_FALSE(pointer.holdsButton());
    loop.drain();
    EXPECT_EQ(seen, Texts{});
    pointer.press(kLeftButton, 0, {2000, 200}, false);
    EXPECT_FALSE(pointer.wasMoved()) << "another press";
}

TEST_F(PointerOnAForm, AWindowThatGoesLooksAtNoControlAnyMore) {
    auto gone = std::make_unique<CommandButton>(&shown, "cmdGone");
    gone->Move(1500, 150);
    gone->SetSize(300, 300);
    pointer.press(kLeftButton, 0, {1600, 200}, false);
    EXPECT_TRUE(pointer.holdsButton());
    gone.reset();
    seen.clear();
    changes = 0;
    pointer.forget();
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(pointer.holdsButton());
    pointer.release(kLeftButton, 0, {1600, 200});
    loop.drain();
    EXPECT_EQ(seen, Texts{});
}

/// COM-27
TEST_F(PointerOnAForm, PlacesAreCountedFromTheControlsCornerInItsUnit) {
    std::vector<MouseArgs> args;
    for (MouseControl* const control : {static_cast<MouseControl*>(&shown), static_cast<MouseControl*>(&box)}) {
        control->MouseDown.tie([&args](const MouseArgs& each) { args.push_back(each); });
        control->MouseUp.tie([&args](const MouseArgs& each) { args.push_back(each); });
    }
    const auto expectLast = [&](int which, int shift, float x, float y) {
        ASSERT_FALSE(args.empty());
        EXPECT_EQ(args.back().button, which);
        EXPECT_EQ(args.back().shift, shift);
        EXPECT_FLOAT_EQ(args.back().x, x);
        EXPECT_FLOAT_EQ(args.back().y, y);
    };
    pointer.press(kLeftButton, 2, {2000, 700}, false);
    expectLast(kLeftButton, 2, 2000, 700);
    pointer.lose();
    loop.drain();
    expectLast(kLeftButton, 0, 0, 0);
    EXPECT_EQ(changes, 0) << "a form looks the same when it is pressed";
    pointer.press(kRightButton, 1, {180, 960}, false);
    expectLast(kRightButton, 1, 2, 4);
    pointer.release(kRightButton, 1, {195, 975});
    expectLast(kRightButton, 1, 3, 5);
    box.Scale = ScaleMode::InTwips;
    pointer.press(kRightButton, 0, {180, 960}, false);
    expectLast(kRightButton, 0, 30, 60);
    pointer.release(kRightButton, 0, {180, 960});
    args.clear();
    pointer.click(shown, kRightButton);
    ASSERT_EQ(args.size(), 2U);
    expectLast(kRightButton, 0, 1500, 750);
    pointer.press(kLeftButton, 0, {200, 200}, false);
    EXPECT_EQ(changes, 1);
    pointer.letGo();
    EXPECT_EQ(changes, 2) << "a button does not";
    pointer.press(kLeftButton, 0, {200, 200}, false);
    EXPECT_EQ(changes, 3);
}

/// IMG-15
/// COM-27: The mouse means the topmost control, from its corner in its unit; what is held is let go when it is hidden
///     or disabled
TEST_F(PointerOnAForm, AnEdgeBelongsToTheControlOnItsInside) {
    EXPECT_EQ(pointer.hit({150, 150}), &button);
    EXPECT_EQ(pointer.hit({449, 449}), &button);
    EXPECT_EQ(pointer.hit({450, 200}), &shown);
    EXPECT_EQ(pointer.hit({200, 450}), &shown);
    button.Visible = false;
    EXPECT_EQ(pointer.hit({200, 200}), &shown);
}

TEST_F(PointerOnAForm, AFormThatGoesInItsOwnEventIsLeftAlone) {
    button.Click.tie([this] {
        seen.push_back("button click");
        isBound = false;
    });
    click({200, 200});
    EXPECT_EQ(seen, (Texts{"button down 50", "button click"}));
}

/// SLIDER-25
TEST_F(PointerOnAForm, ARightButtonTakenAwayEndsWhatItHeldAndOpensNoMenu) {
    std::vector<int> buttons;
    box.MouseUp.tie([&](const MouseArgs& args) { buttons.push_back(args.button); });
    pointer.press(kRightButton, 0, {180, 950}, false);
    pointer.lose();
    EXPECT_TRUE(buttons.empty()) << "told later";
    loop.drain();
    EXPECT_EQ(buttons, std::vector<int>{0});
    pointer.press(kLeftButton, 0, {180, 950}, false);
    pointer.press(kRightButton, 0, {180, 950}, false);
    pointer.press(kMiddleButton, 0, {180, 950}, false);
    buttons.clear();
    pointer.lose();
    loop.drain();
    EXPECT_EQ(buttons, (std::vector<int>{kLeftButton, 0, kMiddleButton}));
}

}  // namespace
}  // namespace corvane
