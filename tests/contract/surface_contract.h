// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "shell/windowing/drawn_window.h"

namespace corvane::contract {

/// A desktop whose surfaces are held to their promises. Input is given as the system gives it, places are pixels of the
/// surface.
class SurfaceStage {
public:
    virtual ~SurfaceStage() = default;
    virtual std::unique_ptr<DrawnWindow> makeWindow(Form& form) = 0;
    virtual EventLoop& loop() = 0;
    /// Lets the system go on until the condition holds; false: it did not in good time.
    virtual bool waitFor(const std::function<bool()>& condition) = 0;

    virtual void press(DrawnWindow& window, int x, int y, int button, bool isDouble) = 0;
    virtual void move(DrawnWindow& window, int x, int y) = 0;
    virtual void release(DrawnWindow& window, int x, int y, int button) = 0;
    /// A letter's key goes down and up.
    virtual void type(DrawnWindow& window, char letter) = 0;
    virtual void close(DrawnWindow& window) = 0;
    /// As a window manager does.
    virtual void minimise(DrawnWindow& window) = 0;
};

/// A form of 200 by 100 pixels with a button at 10, 10 of 40 by 20.
template <class Stage>
class SurfaceContract : public ::testing::Test {
protected:
    SurfaceContract() {
        form.SetSize(200 * kTwipsPerPixel, 100 * kTwipsPerPixel);
        form.Move(60 * kTwipsPerPixel, 40 * kTwipsPerPixel);
        button.Move(10 * kTwipsPerPixel, 10 * kTwipsPerPixel);
        button.SetSize(40 * kTwipsPerPixel, 20 * kTwipsPerPixel);
        form.KeyDown.tie([this](const KeyArgs& key) { say("down " + std::to_string(key.keyCode)); });
        form.KeyPress.tie([this](int character) { say("types " + std::to_string(character)); });
        form.KeyUp.tie([this](const KeyArgs& key) { say("up " + std::to_string(key.keyCode)); });
        form.CloseRequest.tie([this](bool) { say("close"); });
        tie("form", form);
        tie("button", button);
        window = stage.makeWindow(form);
        window->bind();
    }
    ~SurfaceContract() override { window->unbind(); }

    void tie(const std::string& name, MouseControl& control) {
        control.MouseDown.tie([this, name](const MouseArgs& mouse) {
            say(name + " down " + std::to_string(mouse.button) + " at " + std::to_string(static_cast<int>(mouse.x)));
        });
        control.MouseUp.tie(
            [this, name](const MouseArgs& mouse) { say(name + " up " + std::to_string(mouse.button)); });
        control.DblClick.tie([this, name] { say(name + " double"); });
    }
    void say(const std::string& what) { seen.push_back(what); }
    std::vector<std::string> seenNow() { return std::exchange(seen, {}); }
    void show() {
        form.Show();
        EXPECT_TRUE(stage.waitFor([this] { return stage.loop().idle(); }));
        seen.clear();
    }
    Surface& surface() { return window->surface(); }

    Stage stage;
    Form form{"frmTried", FormStyle::Painted};
    CommandButton button{&form, "cmdTried"};
    std::unique_ptr<DrawnWindow> window;
    std::vector<std::string> seen;
};

TYPED_TEST_SUITE_P(SurfaceContract);

TYPED_TEST_P(SurfaceContract, IsHiddenUntilItIsShownInItsPlace) {
    EXPECT_FALSE(this->window->frame().isShown());
    EXPECT_EQ(this->surface().place(), (PixelPlace{60, 40, 200, 100}));
    this->show();
    EXPECT_TRUE(this->window->frame().isShown());
    EXPECT_EQ(this->surface().place(), (PixelPlace{60, 40, 200, 100}));
    this->form.Hide();
    EXPECT_FALSE(this->window->frame().isShown());
}

TYPED_TEST_P(SurfaceContract, AWantedPlaceIsTakenBeforeAnythingElseIsSeen) {
    this->show();
    this->form.SetSize(250 * kTwipsPerPixel, 120 * kTwipsPerPixel);
    this->form.Move(70 * kTwipsPerPixel, 50 * kTwipsPerPixel);
    EXPECT_TRUE(this->stage.waitFor([this] { return this->surface().place() == PixelPlace{70, 50, 250, 120}; }));
    this->form.Left = 80 * kTwipsPerPixel;
    this->window->refresh();
    EXPECT_EQ(this->surface().place().x, 80);
}

TYPED_TEST_P(SurfaceContract, TellsThatItHasMoved) {
    this->show();
    this->surface().moveTo({90, 75});
    EXPECT_TRUE(this->stage.waitFor([this] { return this->form.Left == 90 * kTwipsPerPixel; }));
    EXPECT_EQ(this->form.Top, 75 * kTwipsPerPixel);
    EXPECT_EQ(this->surface().place(), (PixelPlace{90, 75, 200, 100})) << "and keeps its size";
}

TYPED_TEST_P(SurfaceContract, SaysWhereScreensAreSoThatItCanBeBroughtIntoSight) {
    this->form.Left = 90000 * kTwipsPerPixel;
    this->show();
    EXPECT_LT(this->surface().place().x, 90000);
    EXPECT_EQ(this->form.Left, static_cast<Twips>(this->surface().place().x) * kTwipsPerPixel) << "and its form knows";
}

TYPED_TEST_P(SurfaceContract, TellsOfEachButtonOfTheMouseAndItsPlace) {
    using Texts = std::vector<std::string>;
    this->show();
    for (const int each : {kLeftButton, kRightButton, kMiddleButton}) {
        const std::string number = std::to_string(each);
        this->stage.press(*this->window, 20, 20, each, false);
        this->stage.release(*this->window, 20, 20, each);
        EXPECT_EQ(this->seenNow(), (Texts{"button down " + number + " at 150", "button up " + number}));
    }
    this->stage.press(*this->window, 100, 50, kLeftButton, true);
    this->stage.release(*this->window, 100, 50, kLeftButton);
    EXPECT_EQ(this->seenNow(), (Texts{"form down 1 at 1500", "form double", "form up 1"}));
}

TYPED_TEST_P(SurfaceContract, TellsWhereOnTheScreenThePointerIs) {
    this->show();
    this->form.MouseDown.tie([this](const MouseArgs&) { this->window->beginDrag(); });
    this->stage.press(*this->window, 100, 50, kLeftButton, false);
    for (int step = 0; step < 3; ++step) this->stage.move(*this->window, 120, 60);  // the window goes with it
    EXPECT_EQ(this->surface().place(), (PixelPlace{120, 70, 200, 100}));
    this->stage.release(*this->window, 100, 50, kLeftButton);
}

TYPED_TEST_P(SurfaceContract, TellsKeysAndWhatTheyType) {
    this->show();
    this->stage.type(*this->window, 'z');
    EXPECT_TRUE(this->stage.waitFor([this] { return this->seen.size() == 3; }));
    EXPECT_EQ(this->seenNow(), (std::vector<std::string>{"down 90", "types 122", "up 90"}));
}

TYPED_TEST_P(SurfaceContract, TellsThatItIsMinimisedAndRestored) {
    this->show();
    this->stage.press(*this->window, 20, 20, kRightButton, false);
    this->seen.clear();
    this->stage.minimise(*this->window);
    EXPECT_TRUE(this->stage.waitFor([this] { return this->form.WindowState == WindowState::Minimized; }));
    EXPECT_TRUE(this->surface().isMinimised());
    EXPECT_TRUE(this->stage.waitFor([this] { return !this->seen.empty(); }));
    EXPECT_EQ(this->seenNow().front(), "button up 0") << "what is held is let go";
    this->form.WindowState = WindowState::Normal;
    EXPECT_TRUE(this->stage.waitFor([this] { return !this->surface().isMinimised(); }));
}

TYPED_TEST_P(SurfaceContract, LeavesClosingToTheForm) {
    this->show();
    this->stage.close(*this->window);
    EXPECT_EQ(this->seenNow(), std::vector<std::string>{});
    EXPECT_TRUE(this->stage.waitFor([this] { return !this->seen.empty(); }));
    EXPECT_EQ(this->seenNow(), std::vector<std::string>{"close"});
    EXPECT_TRUE(this->window->frame().isShown());
}

TYPED_TEST_P(SurfaceContract, TakesNoInputWhileItIsNotToBeUsed) {
    this->show();
    EXPECT_TRUE(this->surface().takesInput());
    this->form.Enabled = false;
    EXPECT_FALSE(this->surface().takesInput());
    this->form.Enabled = true;
    EXPECT_TRUE(this->surface().takesInput());
}

TYPED_TEST_P(SurfaceContract, KnowsAHandThatTremblesFromADrag) {
    EXPECT_FALSE(this->surface().isDrag(0, 0));
    EXPECT_FALSE(this->surface().isDrag(1, -1));
    EXPECT_TRUE(this->surface().isDrag(-40, 0));
    EXPECT_TRUE(this->surface().isDrag(0, 40));
}

TYPED_TEST_P(SurfaceContract, MeasuresLabels) {
    const double wide = this->surface().labelWidth("Corvane", 20);
    EXPECT_GT(wide, this->surface().labelWidth("Cor", 20));
    EXPECT_EQ(this->surface().labelWidth("", 20), 0);
    EXPECT_TRUE(this->surface().labelFits("Corvane", 20, wide + 2));
    EXPECT_FALSE(this->surface().labelFits("Corvane", 20, wide / 2));
}

TYPED_TEST_P(SurfaceContract, DoesLaterWhatIsAskedFor) {
    this->show();
    int done = 0;
    this->surface().later([&] { ++done; });
    EXPECT_EQ(done, 0) << "an event of its own";
    EXPECT_TRUE(this->stage.waitFor([&] { return done == 1; }));
}

TYPED_TEST_P(SurfaceContract, IsSilentWhenTheFormHasGone) {
    this->show();
    this->stage.press(*this->window, 20, 20, kLeftButton, false);
    this->window->unbind();
    this->seen.clear();
    EXPECT_EQ(this->surface().live(), nullptr);
    EXPECT_FALSE(this->window->frame().isShown());
    this->stage.release(*this->window, 20, 20, kLeftButton);
    this->stage.move(*this->window, 30, 30);
    this->stage.press(*this->window, 20, 20, kLeftButton, false);
    this->stage.type(*this->window, 'z');
    this->stage.close(*this->window);
    this->stage.waitFor([this] { return this->stage.loop().idle(); });
    EXPECT_EQ(this->seenNow(), std::vector<std::string>{});
}

REGISTER_TYPED_TEST_SUITE_P(SurfaceContract, IsHiddenUntilItIsShownInItsPlace,
                            AWantedPlaceIsTakenBeforeAnythingElseIsSeen, TellsThatItHasMoved,
                            SaysWhereScreensAreSoThatItCanBeBroughtIntoSight, TellsOfEachButtonOfTheMouseAndItsPlace,
                            TellsWhereOnTheScreenThePointerIs, TellsKeysAndWhatTheyType,
                            TellsThatItIsMinimisedAndRestored, LeavesClosingToTheForm, TakesNoInputWhileItIsNotToBeUsed,
                            KnowsAHandThatTremblesFromADrag, MeasuresLabels, DoesLaterWhatIsAskedFor,
                            IsSilentWhenTheFormHasGone);

}  // namespace corvane::contract
