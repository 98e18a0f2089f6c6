// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/make_drawn.h"
#include "windows/windowing/media_canvas.h"

#include <gtest/gtest.h>
#include <oleacc.h>

#include "winapi/text.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

VARIANT child(LONG number) {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = number;
    return variant;
}

/// A form of 200 by 100 pixels with a button at 10, 10 of 40 by 20 and a slider at 10, 60 of 150 by 10.
struct PaintedForm : ::testing::Test {
    PaintedForm() {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        button.Move(10 * kTwipsPerPixel, 10 * kTwipsPerPixel);
        button.SetSize(40 * kTwipsPerPixel, 20 * kTwipsPerPixel);
        button.AccessibleName = "Play";
        button.TabIndex = 0;
        slide.Move(10 * kTwipsPerPixel, 60 * kTwipsPerPixel);
        slide.SetSize(150 * kTwipsPerPixel, 10 * kTwipsPerPixel);
        slide.AccessibleName = "Seek";
        slide.AccessibleValue = [this] { return DraggedValue{at, 0, 100, 1}; };
        slide.SetAccessibleValue.tie([this](double value) { at = value; });
        button.Click.tie([this] { seen.push_back("click"); });
        button.MouseUp.tie([this](const MouseArgs&) { seen.push_back("up"); });
        form.KeyDown.tie([this](const KeyArgs& key) { seen.push_back("key " + std::to_string(key.keyCode)); });
        form.KeyPress.tie([this](int character) { seen.push_back("press " + std::to_string(character)); });
        window->bind();
        form.Show();
        loop.runUntil([] { return false; }, 50);
        seen.clear();
    }
    ~PaintedForm() override { window->unbind(); }
    LRESULT send(UINT message, WPARAM first, LPARAM second) {
        return SendMessageW(canvas.handle(), message, first, second);
    }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Painted};
    CommandButton button{&form, "cmdTried"};
    PictureBox slide{&form, "pctTried"};
    double at = 40;
    Texts seen;
    std::unique_ptr<DrawnWindow> window = makeDrawn<CanvasWindow, MediaCanvas>(form, context);
    CanvasWindow& canvas = static_cast<CanvasWindow&>(window->surface());
};

/// WIN-02: A button is pressed by the mouse's release on it
TEST_F(PaintedForm, TheMousePressesAButton) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 20));
    EXPECT_EQ(seen, Texts{});
    send(WM_LBUTTONUP, 0, MAKELPARAM(20, 20));
    EXPECT_EQ(seen, (Texts{"click", "up"}));
}

/// WIN-03: Keys and typed characters reach the form, also those of two UTF-16 units
TEST_F(PaintedForm, KeysAndCharactersReachTheForm) {
    send(WM_KEYDOWN, 'Z', 1);
    send(WM_CHAR, 'z', 1);
    send(WM_CHAR, 0xD83C, 1);
    send(WM_CHAR, 0xDFB5, 1);
    EXPECT_EQ(seen, (Texts{"key 90", "press 122", "press " + std::to_string(0x1F3B5)}));
}

/// WIN-04: Tab shows a ring and Space presses what has it; the mouse takes it away
TEST_F(PaintedForm, TabReachesTheButtonAndSpacePressesIt) {
    send(WM_KEYDOWN, VK_SPACE, 1);
    EXPECT_EQ(seen, Texts{"key 32"}) << "without a ring the key is the form's";
    send(WM_KEYDOWN, VK_TAB, 1);
    EXPECT_EQ(canvas.live()->focused(), &button);
    seen.clear();
    send(WM_KEYDOWN, VK_SPACE, 1);
    EXPECT_EQ(seen, (Texts{"click", "up"}));
    send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 20));
    send(WM_LBUTTONUP, 0, MAKELPARAM(150, 20));
    EXPECT_EQ(canvas.live()->focused(), nullptr) << "the mouse takes the ring away";
}

/// WIN-05: Screen readers are told names, roles and values of the painted controls and may press and set them, as
///     events of their own
TEST_F(PaintedForm, AssistiveProgramsAreToldNamesAndMayPress) {
    IAccessible* told = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(canvas.handle(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                         reinterpret_cast<void**>(&told)),
              S_OK);
    long count = 0;
    told->get_accChildCount(&count);
    EXPECT_EQ(count, 2);
    BSTR name = nullptr;
    ASSERT_EQ(told->get_accName(child(1), &name), S_OK);
    EXPECT_EQ(fromWide(name), "Play");
    SysFreeString(name);
    VARIANT role{};
    told->get_accRole(child(1), &role);
    EXPECT_EQ(role.lVal, ROLE_SYSTEM_PUSHBUTTON);
    told->get_accRole(child(2), &role);
    EXPECT_EQ(role.lVal, ROLE_SYSTEM_SLIDER);
    told->accDoDefaultAction(child(1));
    EXPECT_EQ(seen, Texts{}) << "done as an event of its own";
    EXPECT_TRUE(loop.runUntil([this] { return seen == Texts{"click", "up"}; }, 2000));
    BSTR wanted = SysAllocString(L"75");
    told->put_accValue(child(2), wanted);
    SysFreeString(wanted);
    EXPECT_TRUE(loop.runUntil([this] { return at == 75; }, 2000));
    EXPECT_NE(told->get_accName(child(3), &name), S_OK);
    window->unbind();
    told->get_accChildCount(&count);
    EXPECT_EQ(count, 0);
    told->Release();
}

/// WIN-05
TEST_F(PaintedForm, AHiddenControlStaysToldOfAndIsNotMet) {
    IAccessible* told = nullptr;
    ASSERT_EQ(AccessibleObjectFromWindow(canvas.handle(), static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                         reinterpret_cast<void**>(&told)),
              S_OK);
    const auto state = [&](long number) {
        VARIANT bits{};
        EXPECT_EQ(told->get_accState(child(number), &bits), S_OK);
        return bits.lVal;
    };
    POINT place{20, 20};
    ClientToScreen(canvas.handle(), &place);
    const auto met = [&] {
        VARIANT found{};
        EXPECT_EQ(told->accHitTest(place.x, place.y, &found), S_OK);
        return found.lVal;
    };
    EXPECT_EQ(met(), 1);
    EXPECT_EQ(state(1), STATE_SYSTEM_FOCUSABLE);
    button.Visible = false;
    long count = 0;
    told->get_accChildCount(&count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(state(1), STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN);
    EXPECT_EQ(state(2) & STATE_SYSTEM_INVISIBLE, 0);
    BSTR name = nullptr;
    ASSERT_EQ(told->get_accName(child(2), &name), S_OK);
    EXPECT_EQ(fromWide(name), "Seek") << "the same number as before";
    SysFreeString(name);
    EXPECT_EQ(met(), CHILDID_SELF);
    told->accDoDefaultAction(child(1));
    EXPECT_FALSE(loop.runUntil([this] { return !seen.empty(); }, 200)) << "nobody could press it with the mouse";
    button.Visible = true;
    EXPECT_EQ(state(1), STATE_SYSTEM_FOCUSABLE);
    form.Hide();
    EXPECT_EQ(state(2) & STATE_SYSTEM_INVISIBLE, STATE_SYSTEM_INVISIBLE);
    told->Release();
}

/// Where the window is, while the button is held at a place of it and the pointer goes by so many pixels a step.
/// WIN-41: What was grabbed stays under the pointer; a hand that shakes in a click still clicks
TEST_F(PaintedForm, WhatWasGrabbedStaysUnderThePointer) {
    form.MouseDown.tie([this](const MouseArgs&) { window->beginDrag(); });
    form.MouseUp.tie([this](const MouseArgs&) { seen.push_back("form up"); });
    const auto placeNow = [this] {
        RECT place{};
        GetWindowRect(canvas.handle(), &place);
        return POINT{place.left, place.top};
    };
    const POINT before = placeNow();
    send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 20));
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(151, 20));
    EXPECT_EQ(placeNow().x, before.x + 1) << "from the press on";
    for (int step = 0; step < 6; ++step) send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(150 + 10, 20 + 8));
    EXPECT_EQ(placeNow().x, before.x + 61);
    EXPECT_EQ(placeNow().y, before.y + 48);
    EXPECT_EQ(context.toPixels(form.Left), before.x + 61) << "the form knows its place";
    send(WM_LBUTTONUP, 0, MAKELPARAM(150, 20));
    EXPECT_EQ(seen, Texts{}) << "no click";
    send(WM_MOUSEMOVE, 0, MAKELPARAM(100, 50));
    EXPECT_EQ(placeNow().x, before.x + 61) << "let go";
}

/// WIN-41
TEST_F(PaintedForm, AHandThatShakesInAClickStillClicks) {
    form.MouseDown.tie([this](const MouseArgs&) { window->beginDrag(); });
    form.Click.tie([this] { seen.push_back("form click"); });
    send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(150, 20));
    send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(151, 20));
    send(WM_LBUTTONUP, 0, MAKELPARAM(150, 20));
    EXPECT_EQ(seen, Texts{"form click"});
}

/// WIN-42: A window that moves and changes its size does so in one step
TEST_F(PaintedForm, AMoveAndASizeAreOneStep) {
    std::vector<RECT> places;  // the first one is ours: what a window manager makes of it comes later
    SetWindowSubclass(
        canvas.handle(),
        [](HWND handle, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR to) {
            if (message == WM_WINDOWPOSCHANGED) {
                RECT place{};
                GetWindowRect(handle, &place);
                reinterpret_cast<std::vector<RECT>*>(to)->push_back(place);
            }
            return DefSubclassProc(handle, message, first, second);
        },
        1, reinterpret_cast<DWORD_PTR>(&places));
    form.SetSize(300 * kTwipsPerPixel, 150 * kTwipsPerPixel);
    form.Move(60 * kTwipsPerPixel, 40 * kTwipsPerPixel);
    EXPECT_TRUE(loop.runUntil([&] { return !places.empty(); }, 2000));
    ASSERT_FALSE(places.empty());
    EXPECT_EQ(places.front().left, 60);
    EXPECT_EQ(places.front().top, 40);
    EXPECT_EQ(places.front().right, 360);
    EXPECT_EQ(places.front().bottom, 190);
    form.Move(70 * kTwipsPerPixel, 50 * kTwipsPerPixel);
    window->refresh();
    EXPECT_EQ(places.back().left, 70) << "what is painted now is in its place";
}

/// WIN-06: A form that goes inside its own event is not touched any more
TEST_F(PaintedForm, AFormThatGoesInItsOwnEventIsLeftAlone) {
    button.Click.tie([this] {
        seen.push_back("click");
        window->unbind();
    });
    send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 20));
    send(WM_LBUTTONUP, 0, MAKELPARAM(20, 20));
    EXPECT_EQ(seen, Texts{"click"});
    EXPECT_EQ(IsWindowVisible(canvas.handle()), FALSE);
}

}  // namespace
}  // namespace corvane
