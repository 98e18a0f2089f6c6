// SPDX-License-Identifier: GPL-3.0-or-later
// Previous pressed twice.
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class DoublePress : public PanelHands {
protected:
    void play(std::int16_t index, int doubleClickMs = 300) {
        machine.windows.doubleClickMs = doubleClickMs;
        setUp(kSound);
        player.gFileIndex = index;
        act([this] { PlayFile(player); });
        machine.advance(5000);
        machine.clearCalls();
    }
};

/// SEQ-06: Not before the time is over
/// SEQ-04
TEST_F(DoublePress, OnePressPlaysTheFileAgainAfterTheSystemsDoubleClickTime) {
    for (const int time : {200, 500}) {
        SCOPED_TRACE(time);
        if (player.forms.find<MainPanelControls>() != nullptr) player.forms.unload<MainPanelControls>();
        play(1, time);
        EXPECT_EQ(panel().tmrPlayBack.Interval, time);
        click(kPrev);
        machine.advance(time - 1);
        EXPECT_TRUE(mediaCalls().empty());
        machine.advance(1);
        EXPECT_EQ(mediaCalls(), opened("/m/second.wav"));
        EXPECT_EQ(player.gFileIndex, 1);
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(label(kTimeLabel), "00:00");
        EXPECT_FALSE(player.gBackPending);
        machine.advance(5000);
        EXPECT_EQ(label(kTimeLabel), "00:05") << "once, not again and again";
        act([this] { CloseFile(player, false); });
    }
}

/// SEQ-07: A second press in time stops the timer, clears the flag and goes back one entry
/// SEQ-09: The number on the panel follows, in three digits
TEST_F(DoublePress, TwoPressesInTimeGoBackOneFile) {
    play(2);
    click(kPrev);
    machine.advance(299);
    click(kPrev);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(label(kNumberLabel), "002");
    EXPECT_EQ(mediaCalls(), closedAndOpened("/m/second.wav"));
    machine.clearCalls();
    machine.advance(1000);
    EXPECT_TRUE(mediaCalls().empty()) << "the first press is spent";
}

/// SEQ-10: Presses too far apart play the file twice again
TEST_F(DoublePress, TwoPressesTooFarApartPlayTheFileTwiceAgain) {
    play(2);
    click(kPrev);
    machine.advance(301);
    click(kPrev);
    machine.advance(301);
    EXPECT_EQ(player.gFileIndex, 2);
    EXPECT_EQ(machine.log.count("mci.Command Open"), 2);
}

/// SEQ-08: On entry 0 the second press goes to the last entry with repeat and plays entry 0 again without
TEST_F(DoublePress, OnTheFirstFileRepeatDecides) {
    play(0);
    click(kPrev);
    click(kPrev);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(mediaCalls(), closedAndOpened("/m/song.wav"));
    player.gRepeat = true;
    click(kPrev);
    click(kPrev);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 2);
}

/// KEY-09
TEST_F(DoublePress, TheKeyCountsAsThePressToo) {
    play(2);
    click(kPrev);
    typeKey(panel(), ',');
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1);
}

/// SEQ-05: When the time is over, timer and flag are cleared, pause is enabled and the file plays from its start
/// OPEN-04
TEST_F(DoublePress, TheFileIsOpenedAfreshEvenWithThePauseButtonDisabled) {
    play(1);
    click(kPrev);
    button(kPause).Enabled = false;
    machine.advance(300);
    EXPECT_TRUE(button(kPause).Enabled);
    EXPECT_EQ(mediaCalls(), opened("/m/second.wav"));
}

/// SEQ-11: A stop or pause in between forgets the first press
TEST_F(DoublePress, StopOrPauseInBetweenForgetsTheFirstPress) {
    for (const int between : {kStop, kPause}) {
        SCOPED_TRACE(between);
        play(1);
        click(kPrev);
        click(between);
        machine.clearCalls();
        machine.advance(1000);
        EXPECT_TRUE(mediaCalls().empty());
        EXPECT_FALSE(player.gBackPending);
        act([this] { CloseFile(player, false); });
    }
}

/// SEQ-05, OPEN-19
TEST_F(DoublePress, EachKindPlaysFromItsStartAgain) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        SCOPED_TRACE(path);
        bring(path, "playing");
        machine.advance(6000);
        click(kPrev);
        machine.advance(400);
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(slider(), 15);
        machine.advance(2500);
        EXPECT_EQ(label(kTimeLabel).substr(0, 5), std::string(path) == kMovie ? "2" : "00:02");
        EXPECT_EQ(machine.media.liveControls(), std::string(path) == kPicture ? 0 : 1);
        act([this] { CloseFile(player, false); });
    }
}

TEST_F(DoublePress, ADropEndsAPressOfPreviousAndTheTimesToolTip) {
    bring(kSound, "playing");
    act([this] { PrevFile(player); });
    ASSERT_TRUE(panel().tmrPlayBack.Enabled);
    panel().lblMainPanel[kTimeLabel].ToolTipText = "total";
    takeFiles(player, {true, {kSound}});
    EXPECT_FALSE(panel().tmrPlayBack.Enabled);
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].ToolTipText.get(), "");
    EXPECT_FALSE(player.gBackPending);
}

}  // namespace
}  // namespace corvane
