// SPDX-License-Identifier: GPL-3.0-or-later
// Turning the knob with the pointer, on the knob's own image.
#include <cmath>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Knob : public PanelHands {
protected:
    static constexpr double kDegree = 3.14159265358979 / 180;

    Image& knob() { return panel().imgMainPanel[kKnobImage]; }
    void down(const MouseArgs& mouse = kLeft) { press(knob(), mouse); }
    void up(const MouseArgs& mouse = kLeft) { release(knob(), mouse); }
    void moveTo(double dx, double dy) {
        const MouseArgs mouse{0, 0, static_cast<float>(player.gVolumeX + dx), static_cast<float>(player.gVolumeY + dy)};
        machine.loop.enter([&] { knob().MouseMove.raise(mouse); });
        machine.settle();
    }
    /// Points from the centre at this angle, counter-clockwise from the right.
    void pointAt(double degrees, double distance = 400) {
        moveTo(distance * std::cos(degrees * kDegree), -distance * std::sin(degrees * kDegree));
    }
    static std::string word(int level) {
        return "sound.waveOutSetVolume " + std::string(8, "0123456789abcdef"[static_cast<std::size_t>(level)]);
    }
    std::pair<float, float> indicator() { return {panel().shpVolume.Left, panel().shpVolume.Top}; }
    void setUpAt(std::int16_t level) {
        setUpPanel();
        player.gVolume = level;
        placeIndicator(player);
        machine.clearCalls();
    }
};

/// VOL-21: A new level is kept, set on its device and shown by the indicator
/// VOL-13
TEST_F(Knob, ThePointerWalksThroughItsSixteenSectors) {
    setUpAt(8);
    down();
    for (const double distance : {400.0, 60.0}) {
        for (int level = 0; level <= 15; ++level) {
            SCOPED_TRACE(level);
            machine.clearCalls();
            pointAt(225 - 18 * level, distance);
            EXPECT_EQ(player.gVolume, level);
            EXPECT_EQ(machine.calls("sound"), Calls{word(level)});
        }
    }
}

/// VOL-21
TEST_F(Knob, TheIndicatorFollowsThePointer) {
    setUpAt(8);
    ASSERT_GT(player.gVolumeRadius, 0);
    down();
    for (int level = 0; level <= 15; ++level) {
        SCOPED_TRACE(level);
        pointAt(225 - 18 * level);
        const double angle = (225 - 18 * level) * kDegree;
        // The coarse circle number of the positions is worth less than a twip here.
        EXPECT_NEAR(indicator().first, knob().Left + player.gVolumeX - 45 + player.gVolumeRadius * std::cos(angle), 1);
        EXPECT_NEAR(indicator().second, knob().Top + player.gVolumeY - 45 - player.gVolumeRadius * std::sin(angle), 1);
    }
}

/// VOL-14: The middle itself and the gap below, past 1.2 on either side, do nothing
TEST_F(Knob, TheGapBelowDoesNothing) {
    setUpAt(8);
    down();
    const auto place = indicator();
    for (int degrees = 231; degrees <= 309; degrees += 3) {
        SCOPED_TRACE(degrees);
        pointAt(degrees);
        EXPECT_EQ(player.gVolume, 8);
        EXPECT_EQ(indicator(), place);
    }
    moveTo(0, 0);
    EXPECT_EQ(player.gVolume, 8);
    EXPECT_TRUE(machine.calls("sound").empty());
    pointAt(229);
    EXPECT_EQ(player.gVolume, 0);
    pointAt(-49);
    EXPECT_EQ(player.gVolume, 15);
}

TEST_F(Knob, ThePointerAcrossTheGapJumpsFromOneEndToTheOther) {
    setUpAt(0);
    down();
    pointAt(-45);
    EXPECT_EQ(player.gVolume, 15);
    pointAt(225);
    EXPECT_EQ(player.gVolume, 0);
}

/// VOL-20
TEST_F(Knob, OnAnAxisTheSectorNearerThePresentLevelWins) {
    struct Row {
        std::int16_t from;
        double degrees;
        std::int16_t level;
    };
    setUpAt(0);
    down();
    for (const Row& row :
         {Row{0, 90, 7}, Row{7, 90, 7}, Row{8, 90, 8}, Row{15, 90, 8}, Row{0, 180, 2}, Row{2, 180, 2}, Row{3, 180, 3},
          Row{15, 180, 3}, Row{0, 0, 12}, Row{12, 0, 12}, Row{13, 0, 13}, Row{15, 0, 13}, Row{5, 270, 5}}) {
        SCOPED_TRACE(std::to_string(row.from) + " at " + std::to_string(row.degrees));
        player.gVolume = row.from;
        const double up = row.degrees == 90 ? -300 : row.degrees == 270 ? 300 : 0;
        const double side = row.degrees == 180 ? -300 : row.degrees == 0 ? 300 : 0;
        moveTo(side, up);
        EXPECT_EQ(player.gVolume, row.level);
    }
}

/// VOL-22: An unchanged level sets and moves nothing
TEST_F(Knob, AnUnchangedLevelSetsNothing) {
    setUpAt(5);
    panel().shpVolume.Move(1, 2);
    down();
    pointAt(135);
    pointAt(137, 200);
    EXPECT_TRUE(machine.calls("sound").empty());
    EXPECT_EQ(indicator(), (std::pair{1.0F, 2.0F})) << "nor is the indicator moved";
}

/// BTN-47: Moving over it turns it while it is held, and only then
TEST_F(Knob, ItTurnsOnlyBetweenPressAndRelease) {
    setUpAt(5);
    pointAt(0);
    EXPECT_EQ(player.gVolume, 5) << "before";
    down();
    EXPECT_EQ(player.gVolume, 5) << "the press alone turns nothing";
    pointAt(45);
    EXPECT_EQ(player.gVolume, 10);
    up();
    pointAt(225);
    EXPECT_EQ(player.gVolume, 10) << "after";
    EXPECT_EQ(machine.calls("sound"), Calls{word(10)});
}

/// BTN-46: A press on the knob by any button takes hold of it
/// BTN-48: The release of any button but the right one on it lets it go
TEST_F(Knob, AnyButtonTurnsAndAnyButTheRightOneLetsGo) {
    setUpAt(5);
    for (const int mouseButton : {kLeftButton, kRightButton, kMiddleButton}) {
        SCOPED_TRACE(mouseButton);
        player.gVolume = 5;
        down({mouseButton, 0, 0, 0});
        pointAt(45);
        EXPECT_EQ(player.gVolume, 10);
        machine.dialogs.poppedUp = nullptr;
        up({mouseButton, 0, 0, 0});
        pointAt(225);
        const bool right = mouseButton == kRightButton;
        EXPECT_EQ(player.gVolume, right ? 0 : 10);
        EXPECT_EQ(machine.dialogs.poppedUp != nullptr, right);
        up();
    }
}

/// BTN-48
TEST_F(Knob, ThePointerOverAnotherImageTurnsNothing) {
    setUpAt(5);
    down();
    for (Image& image : panel().imgMainPanel) {
        if (image.index() == kKnobImage) continue;
        image.MouseMove.raise({0, 0, 0, 0});
        image.MouseUp.raise(kLeft);
    }
    EXPECT_EQ(player.gVolume, 5);
    pointAt(45);
    EXPECT_EQ(player.gVolume, 10) << "a release elsewhere does not let the knob go";
}

/// VOL-21
TEST_F(Knob, ItSetsTheChosenAuxiliaryDevice) {
    machine.sound.aux = {{AuxCaps{1, 2, "Line"}, 0}, {AuxCaps{1, 8, "CD"}, 0}};
    player.gAuxType = 1;
    setUpAt(5);
    down();
    pointAt(45);
    EXPECT_EQ(machine.calls("sound"), Calls{"sound.auxSetVolume 1 aaaaaaaa"});
}

TEST_F(Knob, TheLastStepDownOfTheVolumeIsSilence) {
    setUpPanel();
    player.gVolume = 1;
    SetVolume(player, 1);
    EXPECT_EQ(player.gVolume, 0);
    SetVolume(player, 1);
    EXPECT_EQ(player.gVolume, 0);
}

}  // namespace
}  // namespace corvane
