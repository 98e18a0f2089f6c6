// SPDX-License-Identifier: GPL-3.0-or-later
// The window of a dialog form that is a desktop's own frame: what it passes on, and where it lies.
#include "shell/native/dialog_window.h"

#include <gtest/gtest.h>

#include "fake/fake_drawn.h"
#include "fake/fake_loop.h"
#include "fake/fake_native.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A desktop's frame; its letters are 7 pixels wide.
class FrameInMemory : public WindowFrame {
public:
    explicit FrameInMemory(Texts& told) : told_(told) {}
    void activate() override { told_.emplace_back("activate"); }
    void putAway() override { told_.emplace_back("hide"); }
    bool isShown() const override { return true; }
    void refresh() override { told_.emplace_back("refresh"); }
    int textWidth(const std::string& text) override { return static_cast<int>(text.size()) * 7; }
    void stack(int /*insertAfter*/, std::uint32_t /*flags*/) override { told_.emplace_back("stack"); }

private:
    Texts& told_;
};

/// Has its native controls on a surface in memory.
class WindowInMemory : public DialogWindow<FrameInMemory> {
public:
    WindowInMemory(Form& form, EventLoop& loop, const Screens& screens, Texts& told)
        : DialogWindow(form, loop, screens, native, told), native(loop, *this) {}

    std::unique_ptr<NativeButton> makeButton(const Control& control, NativeEvents& events) override {
        return surface.makeButton(control, events);
    }
    std::unique_ptr<NativeLabel> makeLabel(const Label& label, NativeEvents& events) override {
        return surface.makeLabel(label, events);
    }
    std::unique_ptr<NativeMark> makeMark(const Image& image, NativeEvents& events) override {
        return surface.makeMark(image, events);
    }
    std::unique_ptr<NativeField> makeField(const TextBox& box, NativeEvents& events) override {
        return surface.makeField(box, events);
    }
    std::unique_ptr<NativeStepper> makeStepper(const ScrollBar& bar, NativeEvents& events) override {
        return surface.makeStepper(bar, events);
    }
    std::unique_ptr<NativeChoice> makeChoice(const ItemsControl& control, NativeEvents& events) override {
        return surface.makeChoice(control, events);
    }
    std::unique_ptr<NativeList> makeList(const ItemsControl& control, NativeEvents& events) override {
        return surface.makeList(control, events);
    }
    bool framesHold() const override { return surface.framesHold(); }
    PixelSize textSize(const std::string& text) const override { return surface.textSize(text); }
    double leastScale() const override { return surface.leastScale(); }
    void orderTabs(const std::vector<const Control*>& order) override { surface.orderTabs(order); }
    void focusFirst(const Control& control) override { surface.focusFirst(control); }
    void setTitle(const std::string& text) override { surface.setTitle(text); }
    void enable(bool isEnabled) override { surface.enable(isEnabled); }
    void show(bool isShown) override { surface.show(isShown); }
    void setState(WindowState state) override { surface.setState(state); }
    void setInner(PixelSize size, PixelSize least) override { surface.setInner(size, least); }
    void setTextShare(double share) override { surface.setTextShare(share); }
    PixelSize outer() const override { return surface.outer(); }
    void moveOuter(const PixelRect& place) override {
        surface.moveOuter(place);
        if (bound()) cornerIs({place.left, place.top});
    }
    PixelRect room() const override { return surface.room(); }
    void soon(EventLoop::Handler handler) override { surface.soon(std::move(handler)); }

    FakeSurface surface;
    NativeForm native;

protected:
    void onBound() override { native.bind(form()); }
};

struct DialogWindowTest : ::testing::Test {
    ~DialogWindowTest() override { window.unbind(); }
    void bind() {
        window.bind();
        settle();
    }
    void settle() {
        loop.drain();
        window.surface.runLater();
    }

    FakeLoop loop;
    FakeScreens screens;
    Form form{"frmTried", FormStyle::Dialog};
    CommandButton button{&form, "cmdTried"};
    Texts told;
    WindowInMemory window{form, loop, screens, told};
};

TEST_F(DialogWindowTest, WhatChangesInTheFormChangesInItsWindowUntilItGoes) {
    bind();
    form.Caption = "Title";
    button.Caption = "Press";
    settle();
    EXPECT_EQ(window.surface.title, "Title");
    EXPECT_EQ(window.surface.of<FakeButton>(button).text, "Press");
    window.unbind();
    EXPECT_FALSE(window.native.bound());
    EXPECT_EQ(told, Texts{"hide"});
    form.Caption = "Gone";
    settle();
    EXPECT_EQ(window.surface.title, "Title");
}

TEST_F(DialogWindowTest, TheFramePaintsAndTheFormMeasuresItsTexts) {
    window.surface.sample = {348, 28};  // a font twice as large
    bind();
    BoundWindow& bound = window;
    EXPECT_EQ(&bound.frame(), &static_cast<WindowFrame&>(window));
    bound.refresh();
    EXPECT_EQ(told, Texts{"refresh"});
    EXPECT_EQ(bound.frame().textWidth("four"), window.native.textWidth("four"));
    EXPECT_NE(bound.frame().textWidth("four"), 4 * 7) << "the frame's own letters are not the form's";
}

TEST_F(DialogWindowTest, PlacesCountFromTheCornerOfThePanelsScreen) {
    screens.panelScreen = {300, 40, 1000, 800};
    screens.scale = 2;
    bind();
    EXPECT_EQ(window.onScreen(0, 0), (PixelPoint{300, 40}));
    EXPECT_EQ(window.onScreen(10 * kTwipsPerPixel, 20 * kTwipsPerPixel), (PixelPoint{320, 80}));
    window.moveOuter({500, 140, 200, 100});
    EXPECT_EQ(form.Left, 100 * kTwipsPerPixel);
    EXPECT_EQ(form.Top, 50 * kTwipsPerPixel);
}

}  // namespace
}  // namespace corvane
