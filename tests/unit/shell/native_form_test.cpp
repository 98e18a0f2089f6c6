// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog's window: scale, size and place, order of the keys, what its events become.
#include "shell/native/native_form.h"

#include "forms/row_habits.h"
#include "unit/shell/native_rig.h"

namespace corvane {
namespace {

using test::px;

struct NativeWindowOf : test::NativeFormRig {
    Frame frame{&form, "fraTried"};
    Label label{&form, "lblTried"};
    CommandButton ok{&form, "cmdOk"};
    CommandButton cancel{&form, "cmdCancel"};
    TextBox box{&form, "txtTried"};
    int clicks = 0;

    NativeWindowOf() {
        label.Labels = &box;
        box.TabIndex = 0;
        ok.TabIndex = 1;
        cancel.TabIndex = 2;
        cancel.Cancel = true;
        cancel.Click.tie([this] { ++clicks; });
    }
};

TEST_F(NativeWindowOf, ItsSizeFollowsTheFormAndTheFont) {
    form.SetSize(px(400), px(200));
    form.MinWidth = px(100);
    surface.sample = {348, 21};
    bind();
    EXPECT_EQ(surface.at.size(), (PixelSize{800, 300}));
    EXPECT_EQ(surface.least.width, 200);
    form.Width = px(300);
    EXPECT_EQ(surface.at.size(), (PixelSize{600, 300}));
    EXPECT_EQ(native.textWidth("any"), 174) << "in pixels of the form";
    surface.sample = {174, 14};
    native.rescale();
    EXPECT_EQ(surface.at.size(), (PixelSize{300, 200}));
}

/// DESK-29: A dialog that would not fit on the screen in the user's font has smaller letters, as large as fit
TEST_F(NativeWindowOf, LettersAreSmallerWhereItsWindowWouldNotFit) {
    form.SetSize(px(600), px(300));
    form.MinWidth = px(500);
    form.MinHeight = px(200);
    form.Resizable = true;
    surface.sample = {174 * 4, 14 * 2};  // 2000 pixels at least, on a screen of 1000
    bind();
    EXPECT_NEAR(surface.textShare, 0.5, 0.01);
    EXPECT_LE(surface.least.width, 1000);
    EXPECT_GE(surface.least.width, 980);
    surface.sample = {174 * 2, 14};
    native.rescale();
    EXPECT_EQ(surface.textShare, 1.0) << "1000 pixels fit";
    surface.sample = {174 * 2, 14 * 8};  // 1600 pixels high, on 800
    native.rescale();
    EXPECT_NEAR(surface.textShare, 0.5, 0.01);
    form.Resizable = false;
    native.rescale();
    EXPECT_NEAR(surface.textShare, 800.0 / 2400, 0.08) << "one that cannot be made smaller counts whole";
}

/// DESK-29
TEST_F(NativeWindowOf, LettersKeepTheirSizeWhereSmallerOnesWouldGainNothing) {
    form.SetSize(px(2000), px(100));
    bind();
    EXPECT_EQ(surface.textShare, 1.0);
}

TEST_F(NativeWindowOf, GrowsUntilEachTextHasItsRoom) {
    form.SetSize(px(100), px(100));
    ok.Caption = "Continue";  // 80 pixels, and margins
    ok.SetSize(px(52), px(10));
    bind();
    EXPECT_EQ(surface.at.size(), (PixelSize{200, 200}));
}

TEST_F(NativeWindowOf, OpensAroundTheFormsMiddleInsideTheScreen) {
    form.SetSize(px(201), px(101));
    form.Move(px(100), px(100));
    bind();
    form.Show();
    EXPECT_EQ(surface.at, (PixelRect{100, 100, 201, 101}));
    EXPECT_TRUE(surface.shown);
    form.Hide();
    surface.at.left = 7;
    form.Show();
    EXPECT_EQ(surface.at.left, 7) << "shown again it stays where it was";
}

TEST_F(NativeWindowOf, OneThatIsLargerThanTheScreenShrinksIfItCan) {
    for (const bool resizable : {true, false}) {
        Form large("frmLarge", FormStyle::Dialog);
        large.SetSize(px(2000), px(2000));
        large.Resizable = resizable;
        NativeForm window(loop, surface);
        surface.screen = {10, 20, 500, 400};
        window.bind(large);
        window.changed(large, PropertyId::Visible);
        large.Show();
        window.changed(large, PropertyId::Visible);
        const PixelRect room{10, 20, 500, 400};
        EXPECT_EQ(surface.at, (resizable ? room : PixelRect{10, 20, 2000, 2000}));
        window.unbind();
    }
}

TEST_F(NativeWindowOf, WithoutAScreenItStaysWhereItIs) {
    surface.screen = {};
    surface.at = {5, 6, 0, 0};
    form.SetSize(px(50), px(50));
    bind();
    form.Show();
    EXPECT_EQ(surface.at, (PixelRect{5, 6, 50, 50}));
    EXPECT_TRUE(surface.shown);
}

TEST_F(NativeWindowOf, TellsTheFormOfAnotherSizeOnce) {
    form.SetSize(px(100), px(100));
    int resized = 0;
    form.Resize.tie([&] { ++resized; });
    bind();
    native.sized({100, 100});
    EXPECT_EQ(resized, 0) << "that is what it was told";
    surface.at = {1, 2, 130, 90};
    native.sized({130, 90});
    EXPECT_EQ(resized, 1);
    EXPECT_EQ(form.Width, px(130));
    EXPECT_EQ(surface.at, (PixelRect{1, 2, 130, 90})) << "not told back";
    native.moved(px(7), px(8));
    EXPECT_EQ(form.Left, px(7));
    native.stateIs(WindowState::Minimized);
    EXPECT_EQ(form.WindowState, WindowState::Minimized);
    EXPECT_EQ(surface.state, WindowState::Normal) << "nor that";
    form.WindowState = WindowState::Maximized;
    EXPECT_EQ(surface.state, WindowState::Maximized);
}

TEST_F(NativeWindowOf, ShowsItsTitleAndWhetherItIsEnabled) {
    form.Caption = "Setup";
    bind();
    EXPECT_EQ(surface.title, "Setup");
    form.Enabled = false;
    EXPECT_FALSE(surface.enabled);
    EXPECT_FALSE(surface.shown);
}

TEST_F(NativeWindowOf, KeysGoFromFieldToFieldEachWithItsLabelInFront) {
    Image mark(&form, "imgTried");
    bind();
    EXPECT_EQ(surface.order, (std::vector<const Control*>{&frame, &label, &box, &ok, &cancel, &mark}));
}

TEST_F(NativeWindowOf, TheFirstFieldThatCanHasTheKeyboardOfOptionsTheOneThatIsOn) {
    box.Enabled = false;
    bind();
    form.Show();
    EXPECT_EQ(surface.focused, &ok);
    native.unbind();

    Form other("frmOther", FormStyle::Dialog);
    Frame group(&other, "fraGroup");
    OptionButton first(&other, "optFirst"), second(&other, "optSecond"), outside(&other, "optOutside");
    first.Container = second.Container = &group;
    first.TabIndex = 0;
    outside.TabIndex = 1;
    second.TabIndex = 2;
    EXPECT_EQ(firstFocused(other), &first);
    second.Value = true;
    outside.Value = true;
    EXPECT_EQ(firstFocused(other), &second);
    for (OptionButton* each : {&first, &second, &outside}) each->Visible = false;
    EXPECT_EQ(firstFocused(other), nullptr);
}

TEST_F(NativeWindowOf, EscapePressesTheCancelButtonAsAnEventOfItsOwn) {
    bind();
    native.cancel();
    EXPECT_EQ(clicks, 0);
    loop.drain();
    EXPECT_EQ(clicks, 1);
    cancel.Enabled = false;
    native.cancel();
    loop.drain();
    EXPECT_EQ(clicks, 1);
}

TEST_F(NativeWindowOf, ACommandIsNotTakenWhileABoxIsUp) {
    bind();
    {
        const EventLoop::Hold up(loop);
        native.cancel();
    }
    loop.drain();
    EXPECT_EQ(clicks, 0);
}

TEST_F(NativeWindowOf, WhatWasPostedIsDroppedWithTheForm) {
    int asked = 0;
    form.CloseRequest.tie([&](bool alt) { asked += alt ? 10 : 1; });
    bind();
    native.askToClose(true);
    loop.drain();
    EXPECT_EQ(asked, 10);
    native.askToClose(false);
    native.cancel();
    native.unbind();
    loop.drain();
    EXPECT_EQ(asked + clicks, 10);
}

TEST_F(NativeWindowOf, NothingIsRaisedOnceTheFormHasGone) {
    int told = 0;
    form.Activate.tie([&] { ++told; });
    form.Resize.tie([&] { ++told; });
    form.MouseDown.tie([&](const MouseArgs&) { ++told; });
    form.KeyDown.tie([&](const KeyArgs&) { ++told; });
    bind();
    native.unbind();
    native.activated();
    native.sized({1, 1});
    native.moved(1, 1);
    native.stateIs(WindowState::Minimized);
    native.mouse({NativeMouse::Act::Press, kLeftButton, 0, 1, 1, true});
    native.rescale();
    EXPECT_FALSE(native.helpKey(0));
    native.askToClose(false);
    native.cancel();
    loop.drain();
    EXPECT_EQ(told + clicks, 0);
    EXPECT_EQ(form.WindowState, WindowState::Normal);
}

TEST_F(NativeWindowOf, F1IsTheFormsWhenItWantsIt) {
    bind();
    EXPECT_FALSE(native.helpKey(0));
    std::vector<int> keys;
    form.KeyDown.tie([&](const KeyArgs& args) { keys = {args.keyCode, args.shift}; });
    EXPECT_TRUE(native.helpKey(kCtrlMask));
    EXPECT_TRUE(keys.empty()) << "an event of its own";
    loop.drain();
    EXPECT_EQ(keys, (std::vector<int>{kKeyF1, kCtrlMask}));
}

struct KeyedForm : Form, TakesKeys {
    KeyedForm() : Form("frmKeyed", FormStyle::Dialog) {}
};

/// WIN-69: A key that no control took is the form's, where it takes keys
TEST(KeysOfAForm, AreWhatNoControlTook) {
    FakeLoop loop;
    FakeSurface surface;
    NativeForm native{loop, surface};
    KeyedForm form;
    EXPECT_FALSE(native.key({'Z', kCtrlMask})) << "nothing is bound";
    native.bind(form);
    EXPECT_FALSE(native.key({'Z', kCtrlMask})) << "nothing is tied";
    form.takeKey = [](const KeyArgs& key) { return key.keyCode == 'Z'; };
    EXPECT_TRUE(native.key({'Z', kCtrlMask}));
    EXPECT_FALSE(native.key({'Y', kCtrlMask}));
    native.unbind();
    EXPECT_FALSE(native.key({'Z', kCtrlMask}));
}

TEST_F(NativeWindowOf, KeysArePassedByWhereTheFormTakesNone) {
    bind();
    EXPECT_FALSE(native.key({'Z', kCtrlMask}));
}

TEST_F(NativeWindowOf, TheMouseIsTheFormsInTwips) {
    std::vector<std::string> seen;
    const auto note = [&](const char* what, const MouseArgs& args) {
        seen.push_back(what + std::to_string(args.button) + ' ' + std::to_string(static_cast<int>(args.x)));
    };
    form.MouseDown.tie([&](const MouseArgs& args) { note("down ", args); });
    form.MouseMove.tie([&](const MouseArgs& args) { note("move ", args); });
    form.MouseUp.tie([&](const MouseArgs& args) { note("up ", args); });
    surface.sample = {348, 28};
    bind();
    native.mouse({NativeMouse::Act::Press, kRightButton, 0, 20, 0, true});
    native.mouse({NativeMouse::Act::Move, 0, 0, 40, 0, true});
    native.mouse({NativeMouse::Act::Release, kRightButton, 0, 60, 0, true});
    EXPECT_EQ(seen, (std::vector<std::string>{"down 2 150", "move 0 300", "up 2 450"}));
}

TEST_F(NativeWindowOf, SeveralChangesAreShownAsOneAfterTheHandler) {
    bind();
    auto& shown = surface.of<FakeButton>(ok);
    surface.runLater();
    ok.Left = px(10);
    ok.Top = px(20);
    EXPECT_EQ(surface.later.size(), 1U);
    EXPECT_EQ(shown.at.left, 0);
    surface.runLater();
    EXPECT_EQ(shown.at.left, 10);
    EXPECT_EQ(shown.at.top, 20);
    form.Activate.tie([&] {
        ok.Left = px(30);
        EXPECT_EQ(shown.at.left, 10);
    });
    native.activated();
    EXPECT_EQ(shown.at.left, 30) << "in step when the user's input has been dealt with";
}

TEST_F(NativeWindowOf, WhatAFrameHoldsIsPlacedInsideOrOnTheWindow) {
    frame.Move(px(10), px(20));
    ok.Container = &frame;
    ok.Move(px(3), px(4));
    bind();
    EXPECT_EQ(surface.of<FakeButton>(ok).at.left, 3);
    native.unbind();
    surface.hold = false;
    NativeForm again(loop, surface);
    again.bind(form);
    EXPECT_EQ(surface.of<FakeButton>(ok).at.left, 13);
    EXPECT_EQ(surface.of<FakeButton>(ok).at.top, 24);
    again.unbind();
}

TEST(FormScale, GrowsUntilEachControlHasTheRoomItWants) {
    FormScale scale({100, 10}, 1.0);
    EXPECT_EQ(scale.size(px(40), px(40)), (PixelSize{40, 40})) << "never smaller than the screen asks";
    scale.makeRoom({30, 10}, px(40), px(10));
    EXPECT_EQ(scale.size(px(40), px(40)), (PixelSize{40, 40}));
    scale.makeRoom({60, 15}, px(40), px(10));
    EXPECT_EQ(scale.size(px(40), px(40)), (PixelSize{60, 60}));
    EXPECT_FLOAT_EQ(scale.twipsAcross(60), px(40));
    scale.makeRoom({60, 15}, 0, 0);
    EXPECT_EQ(scale.x(px(40)), 60);
    const PixelRect left = scale.rectangle(px(0), 0, px(33), px(1));
    EXPECT_EQ(scale.rectangle(px(33), 0, px(33), px(1)).left, left.right()) << "neighbours that touch still touch";
}

}  // namespace
}  // namespace corvane
