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

/// MCI-04: Position and length count in whole seconds of their packed texts; frames do not count
/// MCI-05: The fraction is the position's seconds by the length's, and 0 without a length
TEST(CalcPer, IsTheShareOfWholeSeconds) {
    double result = -1;
    frmMCIWindow::CalcPer(packed(1, 0, 30), packed(0, 2, 0), result);
    EXPECT_EQ(result, 0.25);
    frmMCIWindow::CalcPer(packed(1, 0, 30) | 74 << 24, packed(0, 2, 0) | 10 << 24, result);
    EXPECT_EQ(result, 0.25) << "frames are ignored";
    frmMCIWindow::CalcPer(packed(1, 1, 0), packed(0, 0, 0), result);
    EXPECT_EQ(result, 0) << "no length";
}

/// MCI-01: It keeps its caption "Form1" and is never shown
TEST_F(MciWindow, KeepsItsDesignCaption) {
    playSound();
    EXPECT_EQ(mciWindow()->Caption.get(), "Form1");
    EXPECT_FALSE(mciWindow()->Visible);
}

/// MCI-06: The status comes every 100 ms, while playing only
/// MCI-08: Sound: label 2 is the time of the milliseconds, the slider the position's share
TEST_F(MciWindow, ShowsTheTimeEvery100Milliseconds) {
    playSound();
    machine.advance(999);
    EXPECT_EQ(label(kTimeLabel), "00:00");
    EXPECT_EQ(panel().pctSlide.Width, 900.0F / 60000 * 3000);
    machine.advance(1);
    EXPECT_EQ(label(kTimeLabel), "00:01");
}

/// MCI-23: A length that was guessed is corrected while it plays, of movies as well
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

/// MCI-11: Quick play of a sound goes on past 10000 ms; at 10000 it plays on
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

/// MCI-10: Quick play of a track goes on in the first second past 00:09; at 00:09 it plays on
TEST_F(MciWindow, QuickPlayOfATrackEndsWithTheFirstSecondPast9) {
    player.gQuickPlay = true;
    playTrack();
    machine.advance(9900);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(label(kTimeLabel), "00:09");
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MCI-15: Custom play past the stop goes on to the next file
TEST_F(MciWindow, CustomPlayEndsAFilePastItsStop) {
    player.gCustomMode = kCustomPlay;
    playSound();
    player.gStopPosition[0] = 5000;
    machine.advance(5000);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MCI-14: Custom repeat of a sound past its stop: it seeks to its start and plays; with 2000 and 5000 past 5000 back
///     to 2000
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

/// MCI-13: Custom repeat of a track past its stop: track, start and the track's end are set and it plays
/// MCI-16: Tracks compare as texts: the stop second itself is played
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

/// MCI-13
TEST_F(MciWindow, CustomRepeatOfATrackWithoutAStartBeginsTheTrack) {
    player.gCustomMode = kCustomRepeat;
    play({"/cd/Track02.cda"});
    player.gStopPosition[0] = packed(2, 0, 5);
    machine.advance(6000);
    EXPECT_EQ(machine.log.count("mci.From 2"), 1);
    machine.advance(200);
    EXPECT_EQ(label(kTimeLabel), "00:00");
}

/// MCI-15, MCI-16
TEST_F(MciWindow, CustomPlayOfATrackEndsAfterTheStopSecond) {
    player.gCustomMode = kCustomPlay;
    playTrack();
    player.gStopPosition[0] = packed(1, 0, 5);
    machine.advance(5900);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(100);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MCI-17: A stop of 0 never ends or repeats, whatever the mode
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

/// MCI-18: Without custom play a stop is not looked at
TEST_F(MciWindow, AStopWithoutCustomModeIsIgnored) {
    playSound();
    player.gStopPosition[0] = 3000;
    machine.advance(10000);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// MCI-12: Quick play comes before the custom rules
TEST_F(MciWindow, QuickPlayComesBeforeTheCustomRules) {
    player.gQuickPlay = true;
    player.gCustomMode = kCustomRepeat;
    playSound();
    player.gStopPosition[0] = 10050;
    machine.advance(10100);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MCI-20: A successful end goes on to the next file
/// MCI-21: Superseded, aborted and failed ones do not
TEST_F(MciWindow, OnlyASuccessfulEndGoesOn) {
    playSound();
    machine.media.mci()->postDone(kNotifySuperseded);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 0);
    machine.media.mci()->postDone(kNotifySuccessful);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MCI-21
TEST_F(MciWindow, NoOtherNotificationGoesOn) {
    playSound();
    for (const int code : {0, 2, 4, 8, -1}) {
        machine.media.mci()->postDone(code);
        machine.settle();
        ASSERT_EQ(player.gFileIndex, 0) << code;
        EXPECT_EQ(state(), "playing");
    }
}

/// OPEN-29, MCI-20
TEST_F(MciWindow, TheEndOfATrackGoesOnToTheNextFile) {
    play({"/cd/Track01.cda", "/cd/Track02.cda"});
    machine.advance(99900);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(label(kTimeLabel), "01:39");
    machine.advance(200);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(player.gCdTrack, 2);
}

/// OPEN-24: A length that is not known in time is taken at the first status that knows it
TEST_F(MciWindow, ALengthThatComesLateIsTaken) {
    playSound();
    player.gLength = 0;
    machine.media.mci()->StatusUpdate.raise();
    EXPECT_EQ(player.gLength, 60000);
}

/// MCI-19: A length of 0 gives a slider of one pixel
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

/// KIND-20: The kind is decided once a file, when it starts
/// MCI-09: A status while another kind is open does nothing
TEST_F(MciWindow, AStatusOfAnotherKindDoesNothing) {
    playSound();
    machine.advance(2000);
    player.media.setCurrent(player.media.make("/m/a.avi"));
    player.gQuickPlay = true;
    machine.advance(20000);
    EXPECT_EQ(label(kTimeLabel), "00:02");
    EXPECT_EQ(player.gFileIndex, 0);
}

/// MCI-24: A place behind the track's end is not shown
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
