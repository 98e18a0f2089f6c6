// SPDX-License-Identifier: GPL-3.0-or-later
// Today's ways of the mouse over the panel, beside the stated ones.
#include "engine/hands.h"
#include "engine/media_time.h"
#include "unit/panel/slider_hands.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Hands : public Slider {
protected:
    Hands() { player.conveniences.hands = true; }
    void turn(MouseControl& over, int notches) {
        act([&] { over.MouseWheel.raise({notches, 0}); });
    }
    double seconds() { return static_cast<double>(openPositionUs(player)) / 1e6; }
    void clickTime() {
        act([&] { panel().lblMainPanel[kTimeLabel].Click.raise(); });
    }
    void bringFresh(const std::string& path, const std::string& wanted) {
        if (player.forms.find<MainPanelControls>() != nullptr) act([this] { CloseFile(player, false); });
        bring(path, wanted);
    }
};

/// HAND-01: A press on the slider goes there, and what played plays on from that place when it is let go
TEST_F(Hands, APressOnTheSliderGoesThere) {
    for (const std::string wanted : {"playing", "paused"}) {
        for (const auto& [path, length] : {std::pair(kSound, 60), std::pair(kMovie, 40), std::pair(kTrack, 100)}) {
            bringFresh(path, wanted);
            down({kLeftButton, 0, 1500, 3});
            up({kLeftButton, 0, 1500, 3});
            EXPECT_NEAR(seconds(), length / 2.0, 1.01) << path;
            EXPECT_EQ(state(), wanted) << path;
        }
    }
}

/// HAND-01
TEST_F(Hands, ADragGoesOnFromThePress) {
    bring(kSound, "playing");
    down({kLeftButton, 0, 1500, 3});
    moveTo(2000);
    up();
    EXPECT_NEAR(seconds(), 40, 0.3);
    EXPECT_EQ(state(), "playing");
}

/// HAND-02: A press at an end of the slider, or beyond it, means the last place before that end
TEST_F(Hands, APressAtAnEndGoesAsNearToItAsTheSliderGoes) {
    bring(kSound, "paused");
    down({kLeftButton, 0, 3000, 3});
    up();
    EXPECT_NEAR(seconds(), 60, 0.05);
    down({kLeftButton, 0, 0, 3});
    up();
    EXPECT_NEAR(seconds(), 0, 0.05);
}

/// SLIDER-23
TEST_F(Hands, APressOnASliderWithoutAWidthGoesNowhere) {
    bring(kSound, "paused");
    for (const std::int32_t width : {0, 1}) {
        player.gSlideWidth = width;
        machine.clearCalls();
        down({kLeftButton, 0, 1500, 3});
        up();
        EXPECT_TRUE(mediaCalls().empty()) << width;
    }
}

/// HAND-03: Another button's press, and a press while nothing plays, go nowhere
TEST_F(Hands, OtherPressesGoNowhere) {
    bring(kSound, "paused");
    down({kRightButton, 0, 1500, 3});
    up(kRight);
    EXPECT_NEAR(seconds(), 0, 0.05);
    act([this] { CloseFile(player, false); });
    down({kLeftButton, 0, 1500, 3});
    up();
    EXPECT_EQ(state(), "stopped");
}

/// HAND-04: Without the convenience a press, the wheel, a held volume button and a click on the time do what they did
TEST_F(Hands, WithoutItTheStatedWaysHold) {
    player.conveniences.hands = false;
    bring(kSound, "paused");
    const int volume = player.gVolume;
    const std::string time = label(kTimeLabel);
    down({kLeftButton, 0, 1500, 3});
    up();
    turn(panel(), 1);
    turn(panel().pctSlide, 1);
    clickTime();
    EXPECT_EQ(panel().pctSlide.TipAt(1500), "");
    EXPECT_NEAR(seconds(), 0, 0.05);
    EXPECT_EQ(player.gVolume, volume);
    EXPECT_EQ(label(kTimeLabel), time);
    press(button(kVolumeDown), kLeft);
    machine.advance(3000);
    letGo(kVolumeDown);
    EXPECT_EQ(player.gVolume, volume - 1);
}

/// HAND-05: The wheel is the volume over the panel: a level a notch, away from the user louder
TEST_F(Hands, TheWheelOverThePanelIsTheVolume) {
    setUp(kSound);
    act([this] { setVolumeLevel(player, 8); });
    turn(panel(), 2);
    EXPECT_EQ(player.gVolume, 10);
    turn(panel(), -3);
    EXPECT_EQ(player.gVolume, 7);
    turn(panel(), 1000);
    EXPECT_EQ(player.gVolume, mdlDefinePublic::kFullVolume);
}

/// HAND-06: Over the slider the wheel is five seconds a notch, held inside the file
TEST_F(Hands, TheWheelOverTheSliderIsFiveSeconds) {
    for (const std::string wanted : {"playing", "paused"}) {
        for (const char* path : {kSound, kMovie, kTrack}) {
            bringFresh(path, wanted);
            turn(panel().pctSlide, 4);
            EXPECT_NEAR(seconds(), 20, 1.01) << path;
            turn(panel().pctSlide, -1);
            EXPECT_NEAR(seconds(), 15, 1.01) << path;
            turn(panel().pctSlide, -10);
            EXPECT_NEAR(seconds(), 0, 0.3) << path;
            EXPECT_EQ(state(), wanted) << path;
        }
    }
    bringFresh(kSound, "paused");
    turn(panel().pctSlide, 100);
    EXPECT_NEAR(seconds(), 60, 0.05);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// HAND-07: Nothing is sought while nothing is open, or while the slider is held
TEST_F(Hands, TheWheelSeeksNothingWhileTheSliderIsHeld) {
    bring(kSound, "playing");
    down({kLeftButton, 0, 1500, 3});
    machine.clearCalls();
    turn(panel().pctSlide, 1);
    EXPECT_TRUE(machine.calls("mci").empty());
    up();
    act([this] { CloseFile(player, false); });
    turn(panel().pctSlide, 1);
    EXPECT_EQ(state(), "stopped");
}

/// HAND-08: The slider's tip is the time that a press there would go to; stopped it is the slider's own
TEST_F(Hands, TheSlidersTipIsTheTimeUnderThePointer) {
    bring(kSound, "playing");
    EXPECT_EQ(panel().pctSlide.TipAt(1500), "0:30");
    EXPECT_EQ(panel().pctSlide.TipAt(-10), "0:00");
    EXPECT_EQ(panel().pctSlide.TipAt(9999), "1:00");
    act([this] { CloseFile(player, false); });
    EXPECT_EQ(panel().pctSlide.TipAt(1500), "");
}

/// HAND-09: A volume button that is held turns on, and its release turns no further
TEST_F(Hands, AHeldVolumeButtonRepeats) {
    setUp(kSound);
    act([this] { setVolumeLevel(player, 15); });
    press(button(kVolumeDown), kLeft);
    machine.advance(400 + 3 * 120 + 10);
    EXPECT_EQ(player.gVolume, 11);
    letGo(kVolumeDown);
    machine.advance(2000);
    EXPECT_EQ(player.gVolume, 11);
    press(button(kVolumeUp), kLeft);
    machine.advance(100);
    letGo(kVolumeUp);
    EXPECT_EQ(player.gVolume, 12) << "a short press is a click";
    act([this] { setVolumeLevel(player, 3); });
    press(button(kVolumeUp), kLeft);
    machine.advance(400 + 3 * 120 + 10);
    EXPECT_EQ(player.gVolume, 7) << "up as well";
    letGo(kVolumeUp);
}

/// HAND-10: A hold of previous or next behind a held volume button takes its own time
TEST_F(Hands, AHeldVolumeButtonLeavesTheOtherHoldsAsTheyAre) {
    bring(kSound, "playing");
    hold(kVolumeDown, 1000);
    machine.advance(5000);
    press(button(kNext), kLeft);
    machine.advance(740);
    EXPECT_EQ(player.gFileIndex, 0);
    const double before = seconds();
    EXPECT_NEAR(before, 6.7, 0.2) << "no step yet";
    letGo(kNext);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// HAND-11: A click on the time shows elapsed, left and total in turn, at once
TEST_F(Hands, AClickOnTheTimeChangesWhatItTells) {
    bring(kSound, "paused");
    act([this] { seekOpenFile(player, 15'000'000); });
    EXPECT_EQ(label(kTimeLabel), "00:15");
    clickTime();
    EXPECT_EQ(label(kTimeLabel), "-0:45");
    clickTime();
    EXPECT_EQ(label(kTimeLabel), "1:00");
    clickTime();
    EXPECT_EQ(label(kTimeLabel), "00:15");
}

/// HAND-11
TEST_F(Hands, TheTimeGoesOnAsItWasChosen) {
    bring(kSound, "playing");
    clickTime();
    machine.advance(10'000);
    EXPECT_EQ(label(kTimeLabel), "-0:50");
    bringFresh(kMovie, "playing");
    machine.advance(10'000);
    EXPECT_EQ(label(kTimeLabel).substr(0, 4), "-0:3");
}

/// HAND-12: Stopped, a click on the time is the display's, as without the convenience
TEST_F(Hands, StoppedAClickOnTheTimeIsTheDisplays) {
    bring(kSound, "stopped");
    auto& shown = panel();
    shown.pctMainPanel.Visible = true;
    shown.pctMainPanel.Move(0, 0);
    shown.pctMainPanel.SetSize(6000, 3000);
    clickTime();
    EXPECT_NE(player.forms.find(FormId::Custom), nullptr);
    EXPECT_EQ(player.timeShown, TimeShown::Elapsed);
}

TEST(ClockTexts, HoursAreShownFromTheFirstOn) {
    EXPECT_EQ(clockText(0), "0:00");
    EXPECT_EQ(clockText(-5), "0:00");
    EXPECT_EQ(clockText(59'999'999), "0:59");
    EXPECT_EQ(clockText(3'599'000'000), "59:59");
    EXPECT_EQ(clockText(3'600'000'000), "1:00:00");
    EXPECT_EQ(clockText(100LL * 3'600'000'000 + 61'000'000), "100:01:01");
}

}  // namespace
}  // namespace corvane
