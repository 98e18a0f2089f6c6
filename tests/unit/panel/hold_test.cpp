// SPDX-License-Identifier: GPL-3.0-or-later
// Previous and next held down, and previous pressed twice.
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

constexpr int kHold = 750;  ///< milliseconds until a press is a hold

class Hold : public PanelHands {
protected:
    void pressDown(int index, int shift = 0) {
        press(button(index), {kLeftButton, shift, 0, 0});
        machine.settle();
    }
    int interval() { return panel().tmrPrevNext.Interval; }
    bool armed() { return panel().tmrPrevNext.Enabled; }
};

// --- How long --------------------------------------------------------------------------------------------------------

/// BTN-21: The first tick comes after 750 ms, not before
TEST_F(Hold, OneMillisecondDecidesBetweenAClickAndAHold) {
    bring(kSound, "paused");
    placeAt(10000);
    pressDown(kNext);
    machine.advance(749);
    EXPECT_TRUE(mediaCalls().empty());
    EXPECT_EQ(interval(), 750);
    machine.advance(1);
    EXPECT_EQ(mediaCalls(), (Calls{"mci.To 11000", "mci.Command Seek"}));
}

/// BTN-22: A press shorter than that changes the file once and seeks nothing
TEST_F(Hold, APressOf400MillisecondsChangesTheFileOnce) {
    bring(kSound, "playing");
    hold(kNext, 400);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
    machine.advance(5000);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(machine.log.count("mci.Command Seek"), 0);
}

/// BTN-23: A longer one seeks, and its release plays on at normal speed in the same file
/// BTN-24: The click that ends a hold steps nothing and is no first press of previous
/// BTN-09, BTN-10, BTN-18
TEST_F(Hold, AHoldOf1500MillisecondsSeeksAndLeavesTheFile) {
    for (const int index : {kPrev, kNext}) {
        SCOPED_TRACE(index);
        bring(kSound, "playing");
        placeAt(30000);
        hold(index, 1500);
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_EQ(machine.log.count("mci.Command Seek"), 16);  // at 750 ms, then every 50
        EXPECT_FALSE(player.gBackPending) << "the click of a hold is no first press either";
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(mediaCalls().back(), "mci.Command Play");
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-25: The next click after a hold counts again
/// BTN-33
TEST_F(Hold, TheNextClickAfterAHoldChangesTheFileAgain) {
    bring(kSound, "playing");
    hold(kNext, 1500);
    hold(kNext, 100);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// BTN-09: Previous stops the hold's timer and goes back, unless a hold has sought
/// BTN-10: Next stops the hold's timer and goes on, unless a hold has sought
TEST_F(Hold, AClickStopsTheHoldsTimer) {
    for (const int index : {kPrev, kNext}) {
        SCOPED_TRACE(index);
        bring(kSound, "paused");
        placeAt(30000);
        pressDown(index);
        act([&] { button(index).Click.raise(); });  // and no release
        EXPECT_FALSE(armed());
        machine.clearCalls();
        machine.advance(2000);
        EXPECT_TRUE(mediaCalls().empty());
        release(button(index), kLeft);
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-28: Behind fast stepping the interval is 750 ms again
/// SEQ-37: A fast tick comes every 50 ms and is a second of the medium
TEST_F(Hold, FastStepsComeEvery50Milliseconds) {
    bring(kSound, "paused");
    pressDown(kNext);
    machine.advance(kHold);
    EXPECT_EQ(label(kTimeLabel), "00:01");
    EXPECT_EQ(interval(), 50);
    machine.advance(49);
    EXPECT_EQ(label(kTimeLabel), "00:01");
    machine.advance(1);
    EXPECT_EQ(label(kTimeLabel), "00:02");
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "00:22");
    EXPECT_FLOAT_EQ(slider(), 22 * 3000 / 60.0F);
    letGo(kNext);
    EXPECT_EQ(interval(), 750);
    EXPECT_FALSE(armed());
}

/// SEQ-25, SEQ-28
TEST_F(Hold, WithShiftAMovieStepsEvery750Milliseconds) {
    bring(kMovie, "paused");
    placeAt(10);
    pressDown(kNext, kShiftMask);
    machine.advance(4 * kHold);
    EXPECT_EQ(mediaCalls(), (Calls{"movie.CurrentPosition 11", "movie.CurrentPosition 12", "movie.CurrentPosition 13",
                                   "movie.CurrentPosition 14"}));
    letGo(kNext);
    machine.clearCalls();
    pressDown(kPrev, kShiftMask);
    machine.advance(2 * kHold);
    EXPECT_EQ(mediaCalls(), (Calls{"movie.CurrentPosition 13", "movie.CurrentPosition 12"}));
    letGo(kPrev);
    EXPECT_EQ(state(), "paused");
}

// --- The whole way
// -----------------------------------------------------------------------------------------------------

/// SEQ-33
TEST_F(Hold, ATrackHeldBackCrossesTheMinute) {
    bring(kTrack, "paused");
    placeAt(packed(1, 1, 1));
    pressDown(kPrev);
    machine.advance(kHold);
    EXPECT_EQ(label(kTimeLabel), "01:00");
    machine.advance(50);
    EXPECT_EQ(label(kTimeLabel), "00:59");
    machine.advance(50);
    EXPECT_EQ(label(kTimeLabel), "00:58");
}

/// SEQ-24: Movie back at 0 does not go below 0
TEST_F(Hold, AMovieHeldBackStopsAt0) {
    bring(kMovie, "playing");
    placeAt(2);
    pressDown(kPrev);
    machine.advance(3000);
    EXPECT_EQ(machine.media.movie()->CurrentPosition(), 0);
    EXPECT_EQ(label(kTimeLabel), "0");
    EXPECT_EQ(machine.media.movie()->State(), kMoviePaused);
}

/// BTN-34, SEQ-27
TEST_F(Hold, AMovieHeldForwardPlaysAtDoubleRateUntilTheRelease) {
    bring(kMovie, "playing");
    pressDown(kNext);
    machine.advance(kHold + 3000);
    EXPECT_EQ(machine.media.movie()->CurrentPosition(), 6.75);
    letGo(kNext);
    EXPECT_EQ(machine.media.movie()->Rate(), 1.0);
    machine.advance(1000);
    EXPECT_EQ(machine.media.movie()->CurrentPosition(), 7.75);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// BTN-38
TEST_F(Hold, AMovieThatEndsAtDoubleRateHandsOver) {
    bring(kMovie, "playing");
    placeAt(38);
    pressDown(kNext);
    machine.advance(3000);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
    machine.clearCalls();
    letGo(kNext);
    EXPECT_EQ(player.gFileIndex, 1) << "the click belongs to the hold that the first file took";
    EXPECT_TRUE(mediaCalls().empty());
}

/// BTN-38: A movie that has ended and waits to hand over is not revived by a hold
TEST_F(Hold, AMovieThatHasEndedIsNotRevivedBeforeItHandsOver) {
    for (const int index : {kPrev, kNext}) {
        for (const int shift : {0, kShiftMask}) {
            SCOPED_TRACE(std::to_string(index) + " " + std::to_string(shift));
            player.gDelayTime = 1000;
            bring(kMovie, "playing");
            placeAt(39.5);
            pressDown(index, shift);
            machine.advance(900);  // ended at 500 ms, held at 750
            letGo(index, {kLeftButton, shift, 0, 0});
            EXPECT_TRUE(mediaCalls().empty());
            EXPECT_EQ(player.gFileIndex, 0);
            machine.advance(599);
            EXPECT_EQ(player.gFileIndex, 0);
            machine.advance(1);
            EXPECT_EQ(player.gFileIndex, 1);
            EXPECT_EQ(state(), "playing");
            act([this] { CloseFile(player, false); });
        }
    }
}

/// BTN-31
TEST_F(Hold, APausedMovieThatTheReleaseRunsShowsThePlayingState) {
    bring(kMovie, "paused");
    placeAt(10);
    hold(kPrev, 800);
    EXPECT_EQ(state(), "playing");
    EXPECT_FALSE(button(kPlay).Enabled);
    EXPECT_TRUE(button(kPause).Enabled);
    EXPECT_FALSE(button(kEditor).Enabled);
    EXPECT_EQ(button(kPrev).ToolTipText.get(), "Prev");
    EXPECT_EQ(button(kNext).ToolTipText.get(), "Next");
    EXPECT_EQ(machine.media.movie()->State(), kMovieRunning);
}

/// BTN-37: A movie in its delay is neither started nor skipped by a hold
TEST_F(Hold, AMovieHeldDuringItsDelayNeitherStartsNorSkipsIt) {
    for (const int index : {kPrev, kNext}) {
        for (const int shift : {0, kShiftMask}) {
            SCOPED_TRACE(std::to_string(index) + " " + std::to_string(shift));
            player.gDelayTime = 2000;
            setUp(kMovie);
            act([this] { PlayFile(player); });
            machine.clearCalls();
            hold(index, 1500, shift);
            EXPECT_TRUE(mediaCalls().empty());
            EXPECT_FALSE(movieWindow()->started);
            machine.advance(499);
            EXPECT_TRUE(mediaCalls().empty());
            machine.advance(1);
            EXPECT_EQ(mediaCalls(), Calls{"movie.Run"});
            EXPECT_EQ(machine.media.movie()->Rate(), 1.0);
            EXPECT_EQ(player.gFileIndex, 0);
            act([this] { CloseFile(player, false); });
        }
    }
}

// --- Full screen -----------------------------------------------------------------------------------------------------

/// BTN-19: A press takes a movie at zoom 5 out of full screen, at any other zoom and for other kinds it does not
/// BTN-27: It puts a movie at zoom 5 back into full screen
/// BTN-35
TEST_F(Hold, AFullScreenMovieLeavesTheScreenToTheButtonAndReturns) {
    player.gMovieZoom = kFullScreenZoom;
    bring(kMovie, "playing");
    placeAt(10);
    hold(kPrev, 775);
    EXPECT_EQ(mediaCalls(), (Calls{"movie.FullScreenMode off", "movie.Pause", "movie.CurrentPosition 10",
                                   "movie.FullScreenMode on", "movie.Run"}));
    EXPECT_EQ(machine.log.count("windows.focus pctMainPanel"), 0) << "the keys go to the movie";
}

TEST_F(Hold, AClickOnNextStepsAPausedFullScreenMovieThatTheButtonHoldsOutOfTheScreen) {
    player.gMovieZoom = kFullScreenZoom;
    bring(kMovie, "paused");
    placeAt(10);
    hold(kNext, 100);
    EXPECT_EQ(machine.media.movie()->CurrentPosition(), 11.0);
    EXPECT_EQ(state(), "paused");
}

/// BTN-19
TEST_F(Hold, AtAnyOtherZoomTheScreenIsLeftAlone) {
    player.gMovieZoom = 1;
    bring(kMovie, "playing");
    hold(kPrev, 800);
    for (const std::string& call : mediaCalls()) EXPECT_EQ(call.find("FullScreen"), std::string::npos) << call;
    EXPECT_EQ(machine.windows.focused(), &panel().pctMainPanel);
}

/// BTN-19
TEST_F(Hold, TheFullScreenZoomMattersToMoviesAlone) {
    player.gMovieZoom = kFullScreenZoom;
    bring(kSound, "playing");
    hold(kPrev, 800);
    EXPECT_TRUE(machine.calls("movie").empty());
    EXPECT_EQ(machine.windows.focused(), &panel().pctMainPanel);
}

// --- Pictures, stopped, stale ----------------------------------------------------------------------------------------

/// SEQ-22: Picture, either way: the timer stops and the mark is taken back, so the release is a click
TEST_F(Hold, APictureHasNothingToSeekAndTheReleaseIsAClick) {
    for (const int shift : {0, kShiftMask}) {
        for (const char* before : {"playing", "paused"}) {
            SCOPED_TRACE(std::string(before) + " " + std::to_string(shift));
            bring(kPicture, before);
            pressDown(kNext, shift);
            EXPECT_TRUE(armed());
            machine.advance(kHold);
            EXPECT_FALSE(armed());
            EXPECT_EQ(interval(), 750);
            EXPECT_TRUE(mediaCalls().empty());
            machine.advance(1000);
            letGo(kNext);
            EXPECT_EQ(player.gFileIndex, 1);
            EXPECT_EQ(state(), "playing");
            act([this] { CloseFile(player, false); });
        }
    }
}

/// SEQ-22
TEST_F(Hold, APictureHeldBackIsAFirstPressOfPrevious) {
    bring(kPicture, "playing");
    hold(kPrev, 1500);
    EXPECT_TRUE(player.gBackPending);
}

/// BTN-18: A press arms the hold in every state: stopped it only eats the click, playing and paused it seeks
/// SEQ-21: Without a direction or a kind a tick does nothing more
/// SEQ-20
TEST_F(Hold, StoppedItDoesNothingButEatsTheClick) {
    for (const int index : {kPrev, kNext}) {
        SCOPED_TRACE(index);
        bring(kSound, "stopped");
        player.gFileIndex = 1;
        pressDown(index);
        EXPECT_TRUE(armed());
        machine.advance(1500);
        letGo(index);
        EXPECT_EQ(player.gFileIndex, 1);
        EXPECT_EQ(state(), "stopped");
        EXPECT_TRUE(mediaCalls().empty());
        EXPECT_EQ(slider(), 15);
    }
}

/// BTN-22
TEST_F(Hold, AShortPressStoppedMovesTheEntry) {
    bring(kSound, "stopped");
    hold(kNext, 700);
    EXPECT_EQ(player.gFileIndex, 1);
    hold(kPrev, 700);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// BTN-33
TEST_F(Hold, AReleaseThatNeverCameLeavesNothingBehind) {
    bring(kSound, "paused");
    placeAt(10000);
    pressDown(kPrev);
    machine.advance(900);  // fast stepping, and the release is lost
    machine.clearCalls();
    pressDown(kNext);
    EXPECT_EQ(interval(), 750);
    machine.advance(700);
    EXPECT_TRUE(mediaCalls().empty());
    letGo(kNext);
    EXPECT_EQ(mediaCalls().size(), 2U) << "one step, as of a click while paused";
    EXPECT_FALSE(armed());
}

/// BTN-21
TEST_F(Hold, EachPressBeginsTheTimeAfresh) {
    bring(kSound, "paused");
    pressDown(kNext);
    machine.advance(700);
    pressDown(kNext);
    machine.advance(749);
    EXPECT_TRUE(mediaCalls().empty());
    machine.advance(1);
    EXPECT_FALSE(mediaCalls().empty());
}

/// BTN-17: Only the left button on previous and next begins a hold
TEST_F(Hold, OnlyTheLeftButtonOnPreviousAndNextArms) {
    bring(kSound, "playing");
    for (int index = kPower; index <= kVolumeUp; ++index) {
        SCOPED_TRACE(index);
        press(button(index), {kMiddleButton, 0, 0, 0});
        press(button(index), {kRightButton, 0, 0, 0});
        EXPECT_FALSE(armed());
        if (index != kPrev && index != kNext) pressDown(index);
        EXPECT_FALSE(armed());
    }
}

/// BTN-26
TEST_F(Hold, TheMiddleButtonsReleaseEndsItLikeTheLeftOnes) {
    player.gMovieZoom = kFullScreenZoom;
    for (const int released : {kLeftButton, kMiddleButton}) {
        SCOPED_TRACE(released);
        bring(kMovie, "playing");
        placeAt(10);
        pressDown(kPrev);
        machine.advance(800);
        EXPECT_TRUE(armed());
        EXPECT_FALSE(movieWindow()->amvMovie->FullScreenMode());
        release(button(kPrev), {released, 0, 0, 0});
        machine.settle();
        EXPECT_FALSE(armed());
        EXPECT_EQ(interval(), kHold);
        EXPECT_TRUE(movieWindow()->amvMovie->FullScreenMode());
        EXPECT_EQ(machine.media.movie()->State(), kMovieRunning);
        EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
        act([this] { CloseFile(player, false); });
    }
    bring(kSound, "paused");
    button(kNext).SetFocus();
    press(button(kNext), {kMiddleButton, 0, 0, 0});
    release(button(kNext), {kMiddleButton, 0, 0, 0});
    EXPECT_EQ(machine.windows.focused(), &panel().pctMainPanel);
}

/// BTN-36: The right button's release leaves hold and focus as they are
TEST_F(Hold, TheRightButtonsReleaseLeavesTheHoldAsItIs) {
    bring(kSound, "paused");
    pressDown(kNext);
    machine.advance(kHold);
    release(button(kNext), kRight);
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
    EXPECT_TRUE(armed());
    EXPECT_EQ(interval(), 50);
}

/// BTN-26, KEY-10
TEST_F(Hold, AKeyDuringAHoldStillChangesTheFile) {
    bring(kSound, "playing");
    pressDown(kNext);
    machine.advance(kHold);
    typeKey(panel(), '.');
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1);
    letGo(kNext);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_FALSE(armed());
}

/// BTN-40: A stop during a hold ends the seeking
TEST_F(Hold, StopDuringAHoldEndsTheSeeking) {
    for (const char* path : {kMovie, kSound, kTrack, kPicture}) {
        SCOPED_TRACE(path);
        bring(path, "playing");
        pressDown(kPrev);
        machine.advance(800);
        act([this] { CloseFile(player, false); });
        machine.clearCalls();
        machine.advance(1000);
        letGo(kPrev);
        EXPECT_TRUE(mediaCalls().empty());
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(label(kTimeLabel), "");
        EXPECT_EQ(interval(), 750);
    }
}

/// BTN-33: The hold and its direction are forgotten
TEST_F(Hold, AfterAHoldAClickWithoutAPressChangesTheFile) {
    bring(kSound, "playing");
    hold(kNext, 1000);
    EXPECT_EQ(player.gFileIndex, 0);
    act([this] { button(kNext).Click.raise(); });
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(Hold, AHoldOnAMovieThatHasNotStartedSeeksNothing) {
    bring(kMovie, "stopped");
    act([this] { PlayFile(player); });
    machine.clearCalls();
    player.gDelayTime = 30000;
    press(button(kNext), kLeft);
    machine.advance(400);
    EXPECT_EQ(machine.log.count("movie.CurrentPosition 1"), 0);
    letGo(kNext);
}

TEST_F(Hold, AHoldOnAMovieWhoseWindowHasGoneDoesNothing) {
    bring(kMovie, "playing");
    act([this] { player.forms.unload<MovieWindowControls>(); });
    hold(kNext, 1000);
    EXPECT_EQ(machine.log.count("movie.Rate 2"), 0);
}

}  // namespace
}  // namespace corvane
