// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/frmMCIWindow.h"

#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

constexpr std::int32_t packed(int track, int minutes, int seconds) { return track | minutes << 8 | seconds << 16; }

class MciWindow : public PlayerFixture {
protected:
    MciWindow() {
        machine.addSound("/m/long.wav", 60000);
        machine.addSound("/m/tune.mid", 60000);
        machine.addSound("/m/last.wav", 60000);
        machine.addDisc("/cd", {100, 100});
    }
    void play(const std::vector<std::string>& paths) {
        setUpPanel();
        setList(paths);
        PlayFile(player);
        machine.clearCalls();
    }
    void playSound() { play({"/m/long.wav", "/m/last.wav"}); }
    void playTrack() { play({"/cd/Track01.cda", "/m/last.wav"}); }
};

TEST(CalcPer, IsTheShareOfWholeSeconds) {
    double result = -1;
    frmMCIWindow::CalcPer(packed(1, 0, 30), packed(0, 2, 0), result);
    EXPECT_EQ(result, 0.25);
    frmMCIWindow::CalcPer(packed(1, 0, 30) | 74 << 24, packed(0, 2, 0) | 10 << 24, result);
    EXPECT_EQ(result, 0.25) << "frames are ignored";
    frmMCIWindow::CalcPer(packed(1, 1, 0), packed(0, 0, 0), result);
    EXPECT_EQ(result, 0) << "no length";
}

TEST_F(MciWindow, KeepsItsDesignCaption) {
    playSound();
    EXPECT_EQ(mciWindow()->Caption.get(), "Form1");
    EXPECT_FALSE(mciWindow()->Visible);
}

TEST_F(MciWindow, ShowsTheTimeEvery100Milliseconds) {
    playSound();
    machine.advance(999);
    EXPECT_EQ(label(kTimeLabel), "00:00");
    EXPECT_EQ(panel().pctSlide.Width, 900.0F / 60000 * 3000);
    machine.advance(1);
    EXPECT_EQ(label(kTimeLabel), "00:01");
}

TEST_F(MciWindow, ALengthThatWasGuessedIsCorrectedWhileItPlays) {
    playSound();
    EXPECT_EQ(player.gLength, 60000);
    machine.media.mci()->correctLength(30000);
    machine.advance(100);
    EXPECT_EQ(player.gLength, 30000);
    EXPECT_EQ(panel().pctSlide.Width, 100.0F / 30000 * 3000);
    machine.media.mci()->correctLength(0);
    machine.advance(100);
    EXPECT_EQ(player.gLength, 30000) << "what is not known any more stays as it was";
}

TEST_F(MciWindow, QuickPlayOfAFileEndsAfter10000) {
    player.gQuickPlay = true;
    playSound();
    machine.advance(10000);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(label(kTimeLabel), "00:10");
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

TEST_F(MciWindow, QuickPlayOfATrackEndsWithTheFirstSecondPast9) {
    player.gQuickPlay = true;
    playTrack();
    machine.advance(9900);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(label(kTimeLabel), "00:09");
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MciWindow, CustomPlayEndsAFilePastItsStop) {
    player.gCustomMode = kCustomPlay;
    playSound();
    player.gStopPosition[0] = 5000;
    machine.advance(5000);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MciWindow, CustomRepeatOfAFileReturnsToItsStart) {
    player.gCustomMode = kCustomRepeat;
    playSound();
    player.gStartPosition[0] = 2000;
    player.gStopPosition[0] = 5000;
    machine.advance(5000);
    EXPECT_TRUE(machine.calls("mci").empty());
    machine.advance(100);
    EXPECT_EQ(machine.calls("mci"), (std::vector<std::string>{"mci.To 2000", "mci.Command Seek", "mci.Command Play"}));
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "00:03");
    machine.advance(60000);
    EXPECT_EQ(player.gFileIndex, 0) << "again and again";
}

TEST_F(MciWindow, CustomRepeatOfATrackPlaysOnFromItsStart) {
    player.gCustomMode = kCustomRepeat;
    playTrack();
    player.gStartPosition[0] = packed(1, 0, 2);
    player.gStopPosition[0] = packed(1, 0, 5);
    machine.advance(5900);
    EXPECT_TRUE(machine.calls("mci").empty()) << "the stop second itself is played";
    machine.advance(100);
    EXPECT_EQ(machine.calls("mci"),
              (std::vector<std::string>{"mci.Track 1", "mci.From " + std::to_string(packed(1, 0, 2)),
                                        "mci.To " + std::to_string(packed(1, 1, 40)), "mci.Command Play"}));
    machine.advance(100);
    EXPECT_EQ(label(kTimeLabel), "00:02");
}

TEST_F(MciWindow, CustomRepeatOfATrackWithoutAStartBeginsTheTrack) {
    player.gCustomMode = kCustomRepeat;
    play({"/cd/Track02.cda"});
    player.gStopPosition[0] = packed(2, 0, 5);
    machine.advance(6000);
    EXPECT_EQ(machine.log.count("mci.From 2"), 1);
    machine.advance(200);
    EXPECT_EQ(label(kTimeLabel), "00:00");
}

TEST_F(MciWindow, CustomPlayOfATrackEndsAfterTheStopSecond) {
    player.gCustomMode = kCustomPlay;
    playTrack();
    player.gStopPosition[0] = packed(1, 0, 5);
    machine.advance(5900);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MciWindow, AStopOf0NeverEndsOrRepeats) {
    for (const std::int16_t mode : {kCustomPlay, kCustomRepeat}) {
        player.gCustomMode = mode;
        if (player.forms.find<MainPanelControls>() == nullptr) playSound();
        player.gStartPosition[0] = 1000;
        machine.advance(20000);
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_TRUE(machine.calls("mci").empty());
    }
}

TEST_F(MciWindow, AStopWithoutCustomModeIsIgnored) {
    playSound();
    player.gStopPosition[0] = 3000;
    machine.advance(10000);
    EXPECT_EQ(player.gFileIndex, 0);
}

TEST_F(MciWindow, QuickPlayComesBeforeTheCustomRules) {
    player.gQuickPlay = true;
    player.gCustomMode = kCustomRepeat;
    playSound();
    player.gStopPosition[0] = 10050;
    machine.advance(10100);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MciWindow, OnlyASuccessfulEndGoesOn) {
    playSound();
    machine.media.mci()->postDone(kNotifySuperseded);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 0);
    machine.media.mci()->postDone(kNotifySuccessful);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MciWindow, NoOtherNotificationGoesOn) {
    playSound();
    for (const int code : {0, 2, 4, 8, -1}) {
        machine.media.mci()->postDone(code);
        machine.settle();
        ASSERT_EQ(player.gFileIndex, 0) << code;
        EXPECT_EQ(state(), "playing");
    }
}

TEST_F(MciWindow, TheEndOfATrackGoesOnToTheNextFile) {
    play({"/cd/Track01.cda", "/cd/Track02.cda"});
    machine.advance(99900);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(label(kTimeLabel), "01:39");
    machine.advance(200);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(player.gCdTrack, 2);
}

TEST_F(MciWindow, ALengthThatComesLateIsTaken) {
    playSound();
    player.gLength = 0;
    machine.media.mci()->StatusUpdate.raise();
    EXPECT_EQ(player.gLength, 60000);
}

TEST_F(MciWindow, WithoutALengthTheSliderIsOnePixelWide) {
    machine.addSound("/m/none.wav", 0);
    machine.addDisc("/nil", {0});
    for (const char* path : {"/m/none.wav", "/nil/Track01.cda"}) {
        SCOPED_TRACE(path);
        if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
        setList({path});
        PlayFile(player);
        panel().pctSlide.Width = 700;
        machine.media.mci()->StatusUpdate.raise();
        EXPECT_EQ(panel().pctSlide.Width, 15);
        CloseFile(player, false);
    }
}

TEST_F(MciWindow, AStatusOfAnotherKindDoesNothing) {
    playSound();
    machine.advance(2000);
    player.media.setCurrent(player.media.make("/m/a.avi"));
    player.gQuickPlay = true;
    machine.advance(20000);
    EXPECT_EQ(label(kTimeLabel), "00:02");
    EXPECT_EQ(player.gFileIndex, 0);
}

TEST_F(MciWindow, APlaceBehindTheTracksEndIsNotShown) {
    playTrack();
    machine.advance(50000);
    EXPECT_EQ(label(kTimeLabel), "00:50");
    const float width = panel().pctSlide.Width;
    machine.media.mci()->standAt(packed(2, 0, 0));
    machine.media.mci()->StatusUpdate.raise();
    EXPECT_EQ(label(kTimeLabel), "00:50");
    EXPECT_EQ(panel().pctSlide.Width, width);
}

}  // namespace
}  // namespace corvane
