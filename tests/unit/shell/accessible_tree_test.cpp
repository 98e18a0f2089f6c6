// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/accessible/accessible_tree.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "shell/accessible/accessible_news.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using Kind = AccessibleChange::Kind;

/// A form of a slider, a label and a button with names, and an image without one, in a window that does what a test
/// says.
struct AccessibleTrees : ::testing::Test, AccessibleWindow {
    AccessibleTrees() {
        put(slide, {10, 60, 150, 10});
        slide.AccessibleName = "Slider";
        slide.TabIndex = 1;
        slide.AccessibleValue = [this] { return DraggedValue{value, 0, most, 5}; };
        put(label, {60, 10, 100, 16});
        label.AccessibleName = "FileNo";
        label.Caption = "001";
        put(button, {10, 10, 40, 20});
        button.AccessibleName = "Repeat";
        button.ToolTipText = "Again";
        button.TabIndex = 0;
        button.Checkable = true;
        put(nameless, {0, 0, 10, 10});
        open.Caption = "Tried";
    }
    static void put(Control& control, const Rectangle& place) {
        control.Move(static_cast<Twips>(place.x), static_cast<Twips>(place.y));
        control.SetSize(static_cast<Twips>(place.width), static_cast<Twips>(place.height));
    }

    Form* form() const override { return gone ? nullptr : const_cast<Form*>(&open); }
    Rectangle placeOf(const Control& control) const override {
        const auto number = [](Twips twips) { return static_cast<double>(twips); };
        return {number(control.Left), number(control.Top), number(control.Width), number(control.Height)};
    }
    Rectangle area() const override { return {0, 0, 200, 100}; }
    bool isShown() const override { return shown; }
    bool isMinimised() const override { return minimised; }
    bool isUsable() const override { return usable; }
    bool hasKeyboard() const override { return keyboard; }
    Control* focused() const override { return ring; }
    bool isPressed(const Control& control) const override { return &control == held; }
    void focus(Control& control) override { done.push_back("focus " + control.AccessibleName); }
    void pressSoon(Control& control, int with) override {
        done.push_back("press " + control.AccessibleName + " " + std::to_string(with));
    }
    void setValueSoon(MouseControl& control, double wanted) override {
        done.push_back("set " + control.AccessibleName + " " + std::to_string(static_cast<int>(wanted)));
    }

    Form open{"frmTried", FormStyle::Painted};
    Image nameless{&open, "imgNameless"};
    PictureBox slide{&open, "pctSlide"};
    Label label{&open, "lblNumber"};
    CommandButton button{&open, "cmdRepeat"};
    double value = 12, most = 60;
    bool gone = false, shown = true, minimised = false, usable = true, keyboard = true;
    Control* ring = nullptr;
    const Control* held = nullptr;
    Texts done;
    AccessibleTree tree{*this};
    AccessibleNews news;
};

TEST_F(AccessibleTrees, TheControlsWithANameStandBelowTheWindow) {
    EXPECT_EQ(tree.name(), "Tried");
    EXPECT_EQ(tree.controls(), (std::vector<Control*>{&slide, &label, &button}));
    EXPECT_EQ(tree.at(2), &button);
    EXPECT_EQ(tree.at(3), nullptr);
    EXPECT_EQ(tree.indexOf(label), 1U);
    EXPECT_EQ(tree.indexOf(nameless), std::nullopt);
}

TEST_F(AccessibleTrees, EachSaysWhatItIsAndWhatItTells) {
    EXPECT_EQ(AccessibleTree::roleOf(slide), AccessibleRole::Slider);
    EXPECT_EQ(AccessibleTree::roleOf(label), AccessibleRole::Text);
    EXPECT_EQ(AccessibleTree::roleOf(button), AccessibleRole::Button);
    EXPECT_EQ(AccessibleTree::roleOf(nameless), AccessibleRole::Graphic);
    EXPECT_EQ(AccessibleTree::nameOf(button), "Repeat");
    EXPECT_EQ(AccessibleTree::descriptionOf(button), "Again");
    button.ToolTipText = "Repeat";
    EXPECT_EQ(AccessibleTree::descriptionOf(button), "") << "nobody wants to hear it twice";
    EXPECT_EQ(AccessibleTree::captionOf(label), "001");
    EXPECT_EQ(AccessibleTree::captionOf(button), "");
    EXPECT_EQ(AccessibleTree::rangeOf(slide).value, 12);
    EXPECT_EQ(AccessibleTree::rangeOf(button).maximum, 0);
}

/// Assistive programs keep what they have found, and count on its number.
TEST_F(AccessibleTrees, AControlThatGoesAndComesKeepsItsPlace) {
    label.Visible = false;
    EXPECT_EQ(tree.controls().size(), 3U);
    EXPECT_EQ(tree.indexOf(button), 2U);
    EXPECT_TRUE(tree.stateOf(label).hidden);
    EXPECT_FALSE(tree.stateOf(button).hidden);
    label.Caption = "002";
    EXPECT_EQ(AccessibleTree::captionOf(label), "002");
}

TEST_F(AccessibleTrees, EachIsFoundWhereTheMouseFindsIt) {
    EXPECT_EQ(tree.hit(159, 65), &slide);
    EXPECT_EQ(tree.hit(160, 65), nullptr);
    EXPECT_EQ(tree.hit(5, 5), nullptr) << "without a name";
    label.Move(20, 10);
    EXPECT_EQ(tree.hit(30, 15), &button) << "the topmost";
    button.Visible = false;
    EXPECT_EQ(tree.hit(30, 15), &label);
}

TEST_F(AccessibleTrees, StatesFollowTheControl) {
    AccessibleState state = tree.stateOf(button);
    EXPECT_FALSE(state.hidden || state.offscreen || state.disabled || state.focused || state.pressed || state.checked);
    EXPECT_TRUE(state.focusable && state.checkable);
    EXPECT_TRUE(tree.stateOf(label).readOnly);
    EXPECT_FALSE(tree.stateOf(label).focusable);
    EXPECT_FALSE(tree.stateOf(button).readOnly);
    button.Enabled = false;
    button.Checked = true;
    slide.Checked = true;
    held = &button;
    ring = &button;
    state = tree.stateOf(button);
    EXPECT_TRUE(state.disabled && state.checked && state.pressed && state.focused);
    EXPECT_FALSE(tree.stateOf(slide).checked) << "it is no switch";
    keyboard = false;
    EXPECT_FALSE(tree.stateOf(button).focused) << "another program has the keyboard";
    button.Visible = false;
    EXPECT_FALSE(tree.stateOf(button).focusable);
}

TEST_F(AccessibleTrees, StatesFollowTheWindow) {
    label.Move(300, 10);
    EXPECT_TRUE(tree.stateOf(label).offscreen) << "beside the window";
    EXPECT_FALSE(tree.stateOf(label).hidden);
    minimised = true;
    EXPECT_TRUE(tree.stateOf(button).offscreen);
    EXPECT_FALSE(tree.stateOf(button).hidden);
    shown = false;
    EXPECT_TRUE(tree.stateOf(button).hidden);
    usable = false;
    EXPECT_TRUE(tree.stateOf(button).disabled);
}

TEST_F(AccessibleTrees, TheKeyboardIsWhereTheRingIs) {
    EXPECT_EQ(tree.focused(), nullptr);
    ring = &slide;
    EXPECT_EQ(tree.focused(), &slide);
    keyboard = false;
    EXPECT_EQ(tree.focused(), nullptr);
    tree.takeFocus(button);
    tree.takeFocus(label);
    EXPECT_EQ(done, Texts{"focus Repeat"}) << "a text takes none";
}

TEST_F(AccessibleTrees, APressIsTheMousesPress) {
    tree.press(button);
    tree.press(label);
    tree.press(slide);
    EXPECT_EQ(done, Texts{"press Repeat 1"}) << "only what is a button";
}

TEST_F(AccessibleTrees, ASliderIsSetInsideItsRange) {
    tree.setValue(slide, 30);
    tree.setValue(slide, 500);
    tree.setValue(slide, -4);
    tree.step(slide, 1);
    tree.step(slide, -1);
    EXPECT_EQ(done, (Texts{"set Slider 30", "set Slider 60", "set Slider 0", "set Slider 17", "set Slider 7"}));
    done.clear();
    for (const double no : {std::nan(""), std::numeric_limits<double>::infinity()}) tree.setValue(slide, no);
    most = 0;
    tree.setValue(slide, 0);
    tree.setValue(button, 1);
    EXPECT_EQ(done, Texts{}) << "nothing can be set";
}

TEST_F(AccessibleTrees, TheMenuIsTheRightButtonsOnTheForm) {
    EXPECT_FALSE(tree.hasMenu());
    tree.showMenu();
    EXPECT_EQ(done, Texts{});
    open.MouseUp.tie([](const MouseArgs&) {});
    EXPECT_TRUE(tree.hasMenu());
    tree.showMenu();
    EXPECT_EQ(done, Texts{"press  2"});
}

TEST_F(AccessibleTrees, AFormThatHasGoneAnswersNothing) {
    open.MouseUp.tie([](const MouseArgs&) {});
    ring = &button;
    gone = true;
    EXPECT_EQ(tree.name(), "");
    EXPECT_TRUE(tree.controls().empty());
    EXPECT_EQ(tree.hit(30, 15), nullptr);
    EXPECT_EQ(tree.focused(), nullptr);
    EXPECT_TRUE(tree.stateOf(button).hidden);
    tree.press(button);
    tree.setValue(slide, 30);
    tree.takeFocus(button);
    tree.showMenu();
    EXPECT_EQ(done, Texts{});
}

TEST_F(AccessibleTrees, ChangesThatSomebodyWantsToHearAreTold) {
    const auto kind = [this](const Control& control, PropertyId property) {
        const auto change = news.of(control, property);
        return change ? std::optional(change->kind) : std::nullopt;
    };
    EXPECT_EQ(kind(button, PropertyId::Enabled), Kind::Enabled);
    EXPECT_EQ(kind(button, PropertyId::Checked), Kind::Checked);
    EXPECT_EQ(kind(button, PropertyId::Visible), Kind::Shown);
    button.Visible = false;
    EXPECT_EQ(kind(button, PropertyId::Visible), Kind::Hidden);
    EXPECT_EQ(kind(button, PropertyId::ToolTipText), Kind::Description);
    EXPECT_EQ(kind(button, PropertyId::Picture), std::nullopt);
    EXPECT_EQ(kind(button, PropertyId::Width), std::nullopt) << "it is no slider";
    EXPECT_EQ(kind(button, PropertyId::Caption), std::nullopt);
    EXPECT_EQ(kind(nameless, PropertyId::Enabled), std::nullopt) << "nobody knows of it";
}

TEST_F(AccessibleTrees, WhatMovesByItselfIsToldByWholeUnits) {
    EXPECT_TRUE(news.of(slide, PropertyId::Width));
    value = 12.4;
    EXPECT_FALSE(news.of(slide, PropertyId::Width));
    EXPECT_FALSE(news.of(slide, PropertyId::Value));
    value = 12.6;
    ASSERT_TRUE(news.of(slide, PropertyId::Value));
    EXPECT_FALSE(news.of(slide, PropertyId::Width));
}

TEST_F(AccessibleTrees, ATextIsToldWithWhatItWasBefore) {
    const auto first = news.of(label, PropertyId::Caption);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->kind, Kind::Text);
    EXPECT_EQ(first->before, "") << "nothing is known of an older one";
    EXPECT_EQ(first->now, "001");
    label.Caption = "002";
    EXPECT_EQ(news.of(label, PropertyId::Caption)->before, "001");
    news.forget();
    EXPECT_EQ(news.of(label, PropertyId::Caption)->before, "");
}

}  // namespace
}  // namespace corvane
