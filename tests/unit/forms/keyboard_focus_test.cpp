// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/keyboard_focus.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr int kTab = 9, kEnter = 13, kEscape = 27, kSpace = 32, kEnd = 35, kHome = 36, kLeft = 37, kUp = 38;
using Act = KeyboardFocus::Act;

struct Keyboard : ::testing::Test {
    Keyboard() {
        slide.TabIndex = 2;
        one.TabIndex = 0;
        two.TabIndex = 1;
        slide.AccessibleValue = [] { return DraggedValue{50, 0, 60, 5}; };
    }
    Form form{"frmTried", FormStyle::Painted};
    PictureBox slide{&form, "slide"};
    CommandButton one{&form, "one"};
    CommandButton two{&form, "two"};
    CommandButton other{&form, "other"};
    KeyboardFocus focus;

    KeyboardFocus::Answer press(int key, int shift = 0, bool isRepeat = false) {
        return focus.keyDown(form, {key, shift}, isRepeat);
    }
};

TEST_F(Keyboard, EveryKeyIsTheFormsUntilTab) {
    for (const int key : {kEnter, kEscape, kSpace, kHome, kLeft, int{'P'}}) EXPECT_EQ(press(key).act, Act::None) << key;
    EXPECT_EQ(focus.control(), nullptr);
}

TEST_F(Keyboard, TabGoesByTabIndexAndRound) {
    for (const Control* next : std::initializer_list<Control*>{&one, &two, &slide, &one}) {
        EXPECT_EQ(press(kTab).act, Act::Move);
        EXPECT_EQ(focus.control(), next);
    }
    press(kTab, kShiftMask);
    EXPECT_EQ(focus.control(), &slide);
    press(kTab, kShiftMask);
    EXPECT_EQ(focus.control(), &two);
}

TEST_F(Keyboard, TabWithAltOrControlIsNotTaken) {
    EXPECT_EQ(press(kTab, kAltMask).act, Act::None);
    EXPECT_EQ(press(kTab, kCtrlMask).act, Act::None);
    EXPECT_EQ(focus.control(), nullptr);
}

TEST_F(Keyboard, WhatIsHiddenOrDisabledIsPassedOver) {
    one.Visible = false;
    two.Enabled = false;
    press(kTab);
    EXPECT_EQ(focus.control(), &slide);
}

TEST_F(Keyboard, AControlDisabledUnderTheFocusKeepsItsPlace) {
    focus.set(&two);
    two.Enabled = false;
    press(kTab);
    EXPECT_EQ(focus.control(), &slide);
}

TEST_F(Keyboard, SpaceAndEnterPressOnce) {
    press(kTab);
    EXPECT_EQ(press(kSpace).act, Act::Press);
    EXPECT_EQ(press(kEnter).act, Act::Press);
    EXPECT_EQ(press(kSpace, 0, true).act, Act::None);
    EXPECT_EQ(press('P').act, Act::None);
}

TEST_F(Keyboard, ArrowsMoveAValueInsideItsRange) {
    focus.set(&slide);
    EXPECT_EQ(press(kLeft).value, 45);
    EXPECT_EQ(press(kUp).value, 55);
    EXPECT_EQ(press(33).value, 60);  // Page Up: 70 would be outside
    EXPECT_EQ(press(34).value, 30);
    EXPECT_EQ(press(kEnd).value, 60);
    EXPECT_EQ(press(kHome).act, Act::SetValue);
    EXPECT_EQ(press(kSpace).act, Act::None);
    slide.AccessibleValue = [] { return DraggedValue{}; };
    EXPECT_EQ(press(kHome).act, Act::None);
}

TEST_F(Keyboard, EscapeTakesTheFocusAway) {
    press(kTab);
    EXPECT_EQ(press(kEscape).act, Act::Move);
    EXPECT_EQ(focus.control(), nullptr);
    EXPECT_EQ(press(kSpace).act, Act::None);
}

}  // namespace
}  // namespace corvane
