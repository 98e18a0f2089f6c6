// SPDX-License-Identifier: GPL-3.0-or-later
// What mouse, keyboard, drops and assistive programs do to the drawn controls of a window.
#include "unit/shell/drawn_rig.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A button at 10, 10 of 40 by 20 pixels and a box at 10, 60 that takes the mouse over 150 by 10.
struct DrawnInput : test::DrawnRig {
    explicit DrawnInput(FormStyle style = FormStyle::Painted) : DrawnRig(style) {
        place(button, 10, 10, 40, 20);
        button.TabIndex = 0;
        place(slide, 10, 60, 30, 10);
        slide.hitWidth = 150 * kTwipsPerPixel;
        tie("button", button);
        tie("slide", slide);
        tie("form", form);
        form.KeyDown.tie([this](const KeyArgs& pressed) { say("down " + std::to_string(pressed.keyCode)); });
        form.KeyUp.tie([this](const KeyArgs& pressed) { say("up " + std::to_string(pressed.keyCode)); });
        form.KeyPress.tie([this](int character) { say("types " + std::to_string(character)); });
        form.GotFocus.tie([this] { say("got"); });
        form.LostFocus.tie([this] { say("lost"); });
        attach();
    }
    void tie(const std::string& name, MouseControl& control) {
        control.Click.tie([this, name] { say(name + " click"); });
        control.DblClick.tie([this, name] { say(name + " double"); });
        control.MouseDown.tie([this, name](const MouseArgs& mouse) {
            say(name + " down " + std::to_string(mouse.button) + ' ' + std::to_string(static_cast<int>(mouse.x)));
        });
        control.MouseUp.tie(
            [this, name](const MouseArgs& mouse) { say(name + " up " + std::to_string(mouse.button)); });
    }
    void takeFiles(MouseControl& control, const std::string& name) {
        control.OLEDragDrop.tie([this, name](const DropData& data) { say(name + " takes " + data.files.at(0)); });
    }

    CommandButton button{&form, "cmdTried"};
    PictureBox slide{&form, "pctTried"};
};

/// COM-23
/// SLIDER-14: The slider takes the mouse over its whole record
TEST_F(DrawnInput, APressIsTheControlsUnderItInItsOwnPlaces) {
    click(20, 20);
    EXPECT_EQ(seenNow(), (Texts{"button down 1 150", "button click", "button up 1"}));
    screens.scale = 2;
    click(40, 40);
    EXPECT_EQ(seenNow(), (Texts{"button down 1 150", "button click", "button up 1"})) << "pixels of the screen";
    press(150, 130, kLeftButton, true);
    release(150, 130);
    EXPECT_EQ(seenNow(), (Texts{"slide down 1 975", "slide double", "slide up 1", "slide click"}));
}

TEST_F(DrawnInput, AButtonThatFormsDoNotKnowIsNotTold) {
    press(20, 20, 0);
    EXPECT_EQ(seenNow(), Texts{});
}

/// COM-22: A window moves once the pointer has moved by the system's drag distance, and what was pressed is not clicked
///     then
TEST_F(DrawnInput, WhatIsDraggedStaysUnderThePointer) {
    form.MouseDown.tie([this](const MouseArgs&) { window->beginDrag(); });
    const PixelPlace before = surface->at;
    press(150, 30);
    moveTo(153, 32);
    EXPECT_EQ(surface->at, (PixelPlace{before.x + 3, before.y + 2, 200, 100})) << "a panel goes from the press on";
    for (int step = 0; step < 4; ++step) moveTo(160, 25);  // in the window's own places: it goes with the pointer
    EXPECT_EQ(surface->at, (PixelPlace{before.x + 43, before.y - 18, 200, 100}));
    EXPECT_EQ(form.Left, static_cast<float>(surface->at.x) * kTwipsPerPixel) << "the form knows";
    press(150, 30, kRightButton);
    release(150, 30, kRightButton);
    moveTo(150, 30);
    EXPECT_EQ(surface->at.x, before.x + 43) << "another button leaves the grabbed point where it is";
    seen.clear();
    release(150, 30);
    EXPECT_EQ(seenNow(), Texts{}) << "no click, and its release is not the form's";
    moveTo(10, 90);
    EXPECT_EQ(surface->at.x, before.x + 43) << "let go";
}

/// COM-22
TEST_F(DrawnInput, AHandThatShakesInAClickStillClicks) {
    form.MouseDown.tie([this](const MouseArgs&) { window->beginDrag(); });
    press(150, 30);
    moveTo(155, 30);
    release(150, 30);
    EXPECT_EQ(seenNow(), (Texts{"form up 1", "form click"}));
}

TEST_F(DrawnInput, WhereWindowsCannotPlaceThemselvesTheSystemDragsThem) {
    surface->systemDrags = true;
    form.MouseDown.tie([this](const MouseArgs&) { window->beginDrag(); });
    press(150, 30);
    moveTo(155, 30);
    EXPECT_EQ(toldNow(), Texts{"move 5 0"});
    moveTo(160, 30);
    EXPECT_EQ(toldNow(), Texts{"system drags"});
    EXPECT_FALSE(window->holdsMouse()) << "no release will come";
    moveTo(160, 30);
    EXPECT_EQ(toldNow(), Texts{});
}

/// BTN-39: A held button is let go when the pointer is taken away, also by the window manager, and when its release was
///     not told
TEST_F(DrawnInput, AMoveWithoutAButtonEndsWhatIsHeld) {
    press(20, 65);
    seen.clear();
    const int before = surface->letGo;
    window->mouseMoved(0, false, {30, 65}, {30, 65});
    loop.drain();
    EXPECT_EQ(seenNow(), Texts{"slide up 1"});
    EXPECT_GT(surface->letGo, before);
    EXPECT_FALSE(window->holdsMouse());
}

/// BTN-39
TEST_F(DrawnInput, WhatIsHeldIsLetGoWhenTheWindowIsMinimisedOrHidden) {
    for (const bool hides : {true, false}) {
        press(20, 65);
        if (hides) {
            form.Hide();
            form.Show();
        } else {
            window->minimised(true);
        }
        loop.drain();
        EXPECT_EQ(seenNow(), (Texts{"slide down 1 150", "slide up 1"}));
    }
}

/// IMG-17
TEST_F(DrawnInput, KeysReachTheFormBeforeWhatTheyType) {
    EXPECT_FALSE(key('Z', 'z'));
    window->keyUp({'Z', 0});
    EXPECT_EQ(seenNow(), (Texts{"down 90", "types 122", "up 90"}));
    key('Z');
    window->typed(0x1F3B5);
    EXPECT_EQ(seenNow(), (Texts{"down 90", "types " + std::to_string(0x1F3B5)})) << "told apart";
    slide.KeyPress.tie([this](int) { say("box types"); });
    key('Z', 'z');
    EXPECT_EQ(seenNow(), (Texts{"down 90", "types 122", "box types"}));
    slide.Visible = false;
    key('Z', 'z');
    EXPECT_EQ(seenNow(), (Texts{"down 90", "types 122"}));
}

TEST_F(DrawnInput, AFormThatGoesAtAKeyTypesNothing) {
    form.KeyDown.tie([this](const KeyArgs&) { window->unbind(); });
    key('Z', 'z');
    EXPECT_EQ(seenNow(), Texts{});
}

TEST_F(DrawnInput, TabBringsTheRingAndSpacePressesWhatHasIt) {
    EXPECT_FALSE(key(32, ' '));
    EXPECT_EQ(seenNow(), (Texts{"down 32", "types 32"})) << "without a ring the key is the form's";
    EXPECT_FALSE(key(9));
    EXPECT_EQ(window->focused(), &button);
    EXPECT_EQ(toText(surface->ring), "10 10 40 20");
    EXPECT_EQ(surface->focusMoves, 1);
    seen.clear();
    EXPECT_TRUE(key(32, ' '));
    EXPECT_EQ(seenNow(), (Texts{"button down 1 300", "button click", "button up 1"})) << "and types nothing";
    button.Left = 20 * kTwipsPerPixel;
    EXPECT_EQ(toText(surface->ring), "20 10 40 20") << "it goes with its control";
    click(150, 30);
    EXPECT_EQ(window->focused(), nullptr) << "the mouse takes the ring away";
    EXPECT_TRUE(surface->ring.empty());
    key(9);
    button.Visible = false;
    EXPECT_EQ(window->focused(), nullptr);
    EXPECT_TRUE(surface->ring.empty());
}

TEST_F(DrawnInput, TheFocusIsToldAsEventsOfItsOwn) {
    window->keyboardCame(true);
    window->keyboardCame(false);
    EXPECT_EQ(seenNow(), Texts{});
    loop.drain();
    EXPECT_EQ(seenNow(), (Texts{"got", "lost"}));
    slide.SetFocus();
    EXPECT_EQ(toldNow(), Texts{"keyboard"});
}

TEST_F(DrawnInput, AssistiveProgramsPressOnlyWhatTheMouseCould) {
    const auto pressed = [this] {
        window->pressSoon(button, kLeftButton);
        EXPECT_EQ(seenNow(), Texts{}) << "an event of its own";
        surface->runLater();
        return !seenNow().empty();
    };
    EXPECT_TRUE(pressed());
    surface->boxUp = true;
    EXPECT_FALSE(pressed());
    surface->boxUp = false;
    {
        const EventLoop::Hold hold(loop);
        EXPECT_FALSE(pressed());
    }
    press(20, 65);
    seen.clear();
    EXPECT_FALSE(pressed()) << "the mouse holds another one";
    release(20, 65);
    seen.clear();
    button.Visible = false;
    EXPECT_FALSE(pressed());
    button.Visible = true;
    form.Hide();
    EXPECT_FALSE(pressed());
    form.Show();
    window->pressSoon(button, kLeftButton);
    window->unbind();
    surface->runLater();
    EXPECT_EQ(seenNow(), Texts{});
}

TEST_F(DrawnInput, AssistiveProgramsSetOnlyWhatTheMouseCould) {
    slide.SetAccessibleValue.tie([this](double value) { say("set " + std::to_string(static_cast<int>(value))); });
    const auto set = [this] {
        window->setValueSoon(slide, 7);
        surface->runLater();
        return !seenNow().empty();
    };
    EXPECT_TRUE(set());
    slide.Enabled = false;
    EXPECT_FALSE(set());
    slide.Enabled = true;
    surface->usable = false;
    EXPECT_FALSE(set());
}

/// DROP-01
/// DROP-16: Drops wait while a box is up
TEST_F(DrawnInput, ADropIsTheControlsUnderItElseTheFormsFirstThatTakesFiles) {
    EXPECT_FALSE(window->takesFiles());
    takeFiles(button, "button");
    takeFiles(slide, "slide");
    EXPECT_TRUE(window->takesFiles());
    window->dropped({true, {"a"}}, {20, 65});
    window->dropped({true, {"b"}}, {190, 30});
    window->dropFiles({true, {"c"}});
    EXPECT_EQ(seenNow(), Texts{}) << "posted";
    {
        const EventLoop::Hold hold(loop);
        loop.drain();
        EXPECT_EQ(seenNow(), Texts{}) << "a box is up";
    }
    loop.drain();
    EXPECT_EQ(seenNow(), (Texts{"slide takes a", "button takes b", "button takes c"}));
    form.Enabled = false;
    EXPECT_FALSE(window->takesFiles());
}

TEST_F(DrawnInput, NothingIsToldWhenTheFormHasGone) {
    takeFiles(button, "button");
    window->dropFiles({true, {"a"}});
    window->unbind();
    EXPECT_EQ(toldNow(), (Texts{"form goes", "hide"}));
    click(20, 20);
    moveTo(30, 30);
    key('Z', 'z');
    window->typed('z');
    window->keyUp({'Z', 0});
    window->keyboardCame(true);
    window->activated();
    window->dropped({true, {"b"}}, {20, 20});
    window->requestClose();
    window->minimised(true);
    window->moved();
    window->screensChanged();
    window->settlePlace();
    loop.drain();
    EXPECT_EQ(seenNow(), Texts{});
    EXPECT_EQ(toldNow(), Texts{});
    EXPECT_EQ(surface->live(), nullptr);
}

struct DrawnMediaInput : DrawnInput {
    DrawnMediaInput() : DrawnInput(FormStyle::Media) {}
};

TEST_F(DrawnMediaInput, AMediaWindowStaysUntilTheWayIsThatOfADrag) {
    form.MouseDown.tie([this](const MouseArgs&) { window->beginDrag(); });
    press(150, 30);
    moveTo(155, 30);
    EXPECT_EQ(surface->at.x, 0);
    moveTo(170, 30);
    EXPECT_EQ(surface->at.x, 20);
    moveTo(151, 30);
    EXPECT_EQ(surface->at.x, 21) << "once it has begun";
}

}  // namespace
}  // namespace corvane
