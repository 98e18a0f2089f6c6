// SPDX-License-Identifier: GPL-3.0-or-later
// The panel at its limits: what a hold leaves behind, cells of one pixel, records that hide and show again.
#include "panel/skin_builder.h"
#include "panel/skin_records.h"
#include "panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

SkinRecord cellAt(int x, int y, int width, int height) {
    SkinRecord record;
    record.number = 2;
    record.clipX = x;
    record.clipY = y;
    record.width = width;
    record.height = height;
    record.used = true;
    return record;
}

/// SKIN-56: A cell lies inside the bitmap with each of its sides
TEST(SkinCells, LieInsideWithEachOfTheirSides) {
    EXPECT_TRUE(liesInside(cellAt(0, 0, 100, 50), 100, 50));
    EXPECT_TRUE(liesInside(cellAt(99, 49, 1, 1), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(-1, 0, 10, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, -1, 10, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, 0, 0, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, 0, 10, 0), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(91, 0, 10, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, 41, 10, 10), 100, 50));
}

/// SKIN-55: A panel's sides are 1 to 4096 pixels; anything else is a reading error
TEST(PanelSizes, AreFromOnePixelToTheLargestSide) {
    EXPECT_TRUE(isPanelSize(1, 1));
    EXPECT_TRUE(isPanelSize(4096, 4096));
    EXPECT_FALSE(isPanelSize(0, 10));
    EXPECT_FALSE(isPanelSize(10, 0));
    EXPECT_FALSE(isPanelSize(4097, 10));
    EXPECT_FALSE(isPanelSize(10, 4097));
}

/// SKIN-58: A doubled quote inside a quoted field does not end it
TEST(SkinRecords, DoubledQuotesMayStandBesideEachOtherAndBeforeTheEnd) {
    SkinRecords records("\"a\"\"\",5,0,0,0,0,1,1,1\n\"\"\"\"\"\",6,0,0,0,0,1,1,1\n");
    auto record = records.next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->number, 5);
    record = records.next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->number, 6);
}

TEST(SkinRecords, WhatIsNotUsedHasNoSize) {
    SkinRecords records("k,24,1,2,3,4,20,20,0\n");
    const auto record = records.next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_FALSE(record->used);
    EXPECT_EQ(record->left + record->top + record->clipX + record->clipY, 0);
    EXPECT_EQ(record->width, 0);
    EXPECT_EQ(record->height, 0);
}

class PanelDetails : public PanelHands {};

TEST_F(PanelDetails, AKnobHiddenByOneRecordIsShownAgainByTheNext) {
    MainPanelControls built;
    const Picture bitmap = makePicture(64, 64, {0});
    ASSERT_TRUE(applySkin("k,24,0,0,0,0,20,20,0\nk,24,0,0,0,0,20,20,1\n", bitmap, machine.pictures, player, built));
    EXPECT_TRUE(built.imgMainPanel[kKnobImage].Visible);
    EXPECT_TRUE(built.shpVolume.Visible);
}

/// BTN-33: The hold and its direction are forgotten
TEST_F(PanelDetails, AfterAHoldAClickWithoutAPressChangesTheFile) {
    bring(kSound, "playing");
    hold(kNext, 1000);
    EXPECT_EQ(player.gFileIndex, 0);
    act([this] { button(kNext).Click.raise(); });
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(PanelDetails, AHoldOnAMovieThatHasNotStartedSeeksNothing) {
    bring(kMovie, "stopped");
    act([this] { PlayFile(player); });
    machine.clearCalls();
    player.gDelayTime = 30000;
    press(button(kNext), kLeft);
    machine.advance(400);
    EXPECT_EQ(machine.log.count("movie.CurrentPosition 1"), 0);
    letGo(kNext);
}

TEST_F(PanelDetails, AHoldOnAMovieWhoseWindowHasGoneDoesNothing) {
    bring(kMovie, "playing");
    act([this] { player.forms.unload<MovieWindowControls>(); });
    hold(kNext, 1000);
    EXPECT_EQ(machine.log.count("movie.Rate 2"), 0);
}

TEST_F(PanelDetails, TheLastStepDownOfTheVolumeIsSilence) {
    setUpPanel();
    player.gVolume = 1;
    SetVolume(player, 1);
    EXPECT_EQ(player.gVolume, 0);
    SetVolume(player, 1);
    EXPECT_EQ(player.gVolume, 0);
}

TEST_F(PanelDetails, ADropEndsAPressOfPreviousAndTheTimesToolTip) {
    bring(kSound, "playing");
    act([this] { PrevFile(player); });
    ASSERT_TRUE(panel().tmrPlayBack.Enabled);
    panel().lblMainPanel[kTimeLabel].ToolTipText = "total";
    takeFiles(player, {true, {kSound}});
    EXPECT_FALSE(panel().tmrPlayBack.Enabled);
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].ToolTipText.get(), "");
    EXPECT_FALSE(player.gBackPending);
}

TEST_F(PanelDetails, WithoutItsFormThereIsNoMenu) {
    setUpPanel();
    player.forms.unload<MenuWindowControls>();
    showPopupMenu(player);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
}

}  // namespace
}  // namespace corvane
