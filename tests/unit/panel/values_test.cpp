// SPDX-License-Identifier: GPL-3.0-or-later
// The slider and the knob as assistive programs and the keyboard move them, and the switches they read.
#include <cmath>
#include <limits>

#include "panel/frmMainPanel.h"
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Values : public PanelHands {
protected:
    MouseControl& slide() { return panel().pctSlide; }
    MouseControl& knob() { return panel().imgMainPanel[kKnobImage]; }
    /// The file itself, not the one that was open.
    void bringFresh(const std::string& path, const std::string& wanted) {
        if (player.forms.find<MainPanelControls>() != nullptr) act([this] { CloseFile(player, false); });
        bring(path, wanted);
    }
    void set(MouseControl& control, double value) {
        act([&] { control.SetAccessibleValue.raise(value); });
    }
};

/// ACC-05
TEST_F(Values, TheSliderIsReadInSeconds) {
    bring(kSound, "paused");
    placeAt(15000);
    EXPECT_NEAR(slide().AccessibleValue().value, 15, 0.2);
    EXPECT_EQ(slide().AccessibleValue().minimum, 0);
    EXPECT_EQ(slide().AccessibleValue().maximum, 60);
    bringFresh(kMovie, "paused");
    EXPECT_EQ(slide().AccessibleValue().maximum, 40);
    bringFresh(kTrack, "playing");
    EXPECT_EQ(slide().AccessibleValue().maximum, 100);
}

/// ACC-06: A stopped slider has no range, and one held by the mouse is left to it
TEST_F(Values, AStoppedSliderHasNoRangeAndIsNotMoved) {
    bring(kSound, "stopped");
    EXPECT_EQ(slide().AccessibleValue().maximum, 0);
    set(slide(), 30);
    EXPECT_EQ(state(), "stopped");
    EXPECT_TRUE(machine.calls("mci").empty());
}

/// ACC-05
TEST_F(Values, ASetSliderSeeksAndGoesOnAsItWas) {
    for (const std::string wanted : {"playing", "paused"}) {
        for (const char* path : {kSound, kMovie, kTrack}) {
            bringFresh(path, wanted);
            set(slide(), 20);
            EXPECT_EQ(state(), wanted) << path;
            EXPECT_NEAR(slide().AccessibleValue().value, 20, 1.01) << path;
            EXPECT_EQ(player.gSlideState, 0) << path;
        }
    }
}

/// ACC-06
TEST_F(Values, ASliderHeldByTheMouseIsLeftToIt) {
    bring(kSound, "playing");
    press(panel().pctSlide, kLeft);
    machine.settle();
    machine.clearCalls();
    set(slide(), 20);
    EXPECT_TRUE(machine.calls("mci").empty());
    EXPECT_EQ(player.gSlideState, 1);
}

/// ACC-05
TEST_F(Values, TheKnobGoesByPercent) {
    setUp(kSound);
    set(knob(), 0);
    EXPECT_EQ(player.gVolume, 0);
    EXPECT_EQ(knob().AccessibleValue().value, 0);
    EXPECT_EQ(knob().AccessibleValue().minimum, 0);
    EXPECT_EQ(knob().AccessibleValue().maximum, 100);
    set(knob(), 100);
    EXPECT_EQ(player.gVolume, 15);
    EXPECT_EQ(knob().AccessibleValue().value, 100);
    set(knob(), 41);
    EXPECT_EQ(player.gVolume, 6);
    set(knob(), std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(player.gVolume, 6);
    const DraggedValue now = knob().AccessibleValue();
    set(knob(), now.value + now.step);
    EXPECT_EQ(player.gVolume, 7);
}

TEST_F(Values, TheKnobTellsOfAVolumeThatChanges) {
    struct Observer : ControlObserver {
        int told = 0;
        void propertyChanged(Control& /*control*/, PropertyId property) override {
            if (property == PropertyId::Value) ++told;
        }
    } observer;
    setUp(kSound);
    knob().addObserver(&observer);
    act([this] { SetVolume(player, 1); });
    knob().removeObserver(&observer);
    EXPECT_EQ(observer.told, 1);
}

/// ACC-07: Repeat says that it is on
TEST_F(Values, RepeatAndItsLampSayThatTheyAreOn) {
    setUp(kSound);
    EXPECT_FALSE(panel().cmdMainPanel[kRepeat].Checked);
    act([this] { toggleRepeat(player); });
    EXPECT_TRUE(panel().cmdMainPanel[kRepeat].Checked);
    EXPECT_TRUE(panel().imgMainPanel[kRepeatLamp].Checked);
    act([this] { toggleRepeat(player); });
    EXPECT_FALSE(panel().cmdMainPanel[kRepeat].Checked);
    EXPECT_FALSE(panel().imgMainPanel[kRepeatLamp].Checked);
}

}  // namespace
}  // namespace corvane
