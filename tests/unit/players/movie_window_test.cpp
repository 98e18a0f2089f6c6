// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/players/movie_window.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// MOVIE-08: A movie without a picture opens all the same
TEST_F(MovieWindow, AMovieWithoutAPictureOpensAtEveryZoom) {
    machine.addMovie("/m/sound.mov", 20, 0, 0);
    for (std::int16_t zoom = 0; zoom <= 5; ++zoom) {
        SCOPED_TRACE(zoom);
        player.gMovieZoom = zoom;
        if (player.forms.find<MainPanelControls>() == nullptr) {
            setUpPanel();
            setList({"/m/sound.mov"});
        }
        PlayFile(player);
        machine.advance(3000);
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(label(kTimeLabel), "2.5");
        EXPECT_GE(movieWindow()->Width, 0);
        CloseFile(player, false);
    }
}

/// MOVIE-07: The delay's timer takes the delay of the settings and runs
/// MOVIE-09: The timer ticks once
/// MOVIE-11: Its window shows and it runs
TEST_F(MovieWindow, WaitsTheDelayBeforeItStarts) {
    player.gDelayTime = 700;
    play("/m/clip.avi");
    EXPECT_EQ(player.gLength, 40);
    machine.advance(699);
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(movie().State(), kMovieStopped);
    machine.advance(1);
    EXPECT_TRUE(movieWindow()->Visible);
    EXPECT_EQ(movie().State(), kMovieRunning);
    EXPECT_FALSE(movieWindow()->tmrMovie.Enabled) << "one shot";
}

/// MOVIE-01: Without a file name nothing is done
TEST_F(MovieWindow, OpenWithoutAFileIsIgnored) {
    play("/m/clip.avi");
    player.gDelayTime = 900;
    movieWindow()->tmrMovie.Enabled = false;
    player.gLength = 7;
    movie().FileName("");
    raise(movie().OpenComplete);
    EXPECT_EQ(player.gLength, 7);
    EXPECT_FALSE(movieWindow()->tmrMovie.Enabled);
    EXPECT_EQ(movieWindow()->tmrMovie.Interval, 500);
}

/// MOVIE-02: The length is the duration in whole seconds
/// OPEN-21
TEST_F(MovieWindow, TheLengthIsTheDurationRounded) {
    machine.addMovie("/m/short.avi", 2.5, 320, 240);
    play("/m/short.avi");
    EXPECT_EQ(player.gLength, 2) << "halves go to even";
}

/// MOVIE-20: Label 2 is the position as a plain number, fraction and all
/// MOVIE-21: The slider is the position's share of the length
TEST_F(MovieWindow, ShowsPositionAndSliderEvery250Milliseconds) {
    playStarted();
    machine.advance(2499);
    EXPECT_EQ(label(kTimeLabel), "2.25");
    machine.advance(1);
    EXPECT_EQ(label(kTimeLabel), "2.5");
    EXPECT_EQ(panel().pctSlide.Width, static_cast<float>(2.5 / 40 * 3000));
}

/// MOVIE-15: A movie that has played goes on to the next file; paused, the buttons are put into the playing state first
/// MOVIE-18: A movie that stops hides its window and begins the delay, and then the next file follows
TEST_F(MovieWindow, HandsOverAfterItsEndAndTheDelay) {
    playStarted();
    machine.advance(40000);
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(499);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(1);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(movieWindow(), nullptr);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(label(kTextLabel), "Sound File Now On Play");
}

/// MOVIE-15
TEST_F(MovieWindow, PausedAfterItsEndStillGoesOn) {
    playStarted();
    machine.advance(40000);
    PauseFile(player);
    machine.advance(500);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

/// MOVIE-14: One that was paused during the delay starts when it is resumed
TEST_F(MovieWindow, PausedDuringTheDelayStartsWhenItIsResumed) {
    play("/m/clip.avi");
    machine.advance(100);
    PauseFile(player);
    machine.advance(5000);
    EXPECT_NE(movie().State(), kMovieRunning);
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(state(), "paused");
    PlayFile(player);
    machine.advance(1000);
    EXPECT_EQ(movie().State(), kMovieRunning);
    EXPECT_TRUE(movieWindow()->Visible);
    EXPECT_EQ(label(kTimeLabel), "1");
}

/// MOVIE-14
TEST_F(MovieWindow, PausedAndResumedInsideTheDelayStartsAfterIt) {
    play("/m/clip.avi");
    machine.advance(100);
    PauseFile(player);
    machine.advance(100);
    PlayFile(player);
    machine.advance(299);
    EXPECT_NE(movie().State(), kMovieRunning);
    machine.advance(1);
    EXPECT_EQ(movie().State(), kMovieRunning);
}

/// MOVIE-10: A movie that has not played goes to its custom start, when there is one and custom play is on
TEST_F(MovieWindow, ACustomStartIsInForceWhileCustomPlayIsOn) {
    player.gCustomMode = kCustomPlay;
    play("/m/clip.avi");
    player.gStartPosition[0] = 12;
    machine.advance(500);
    EXPECT_EQ(movie().CurrentPosition(), 12.0);
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "13");
}

/// MOVIE-10
TEST_F(MovieWindow, ACustomStartIsIgnoredOtherwise) {
    play("/m/clip.avi");
    player.gStartPosition[0] = 12;
    machine.advance(1500);
    EXPECT_EQ(label(kTimeLabel), "1");
}

/// MOVIE-23: Custom repeat past the stop goes back to the start, again and again: 10 to a little past 20
TEST_F(MovieWindow, CustomRepeatReturnsToTheStartAgainAndAgain) {
    player.gCustomMode = kCustomRepeat;
    play("/m/clip.avi");
    player.gStartPosition[0] = 10;
    player.gStopPosition[0] = 20;
    machine.advance(500 + 10000);
    EXPECT_EQ(label(kTimeLabel), "20");
    machine.advance(250);
    EXPECT_EQ(movie().CurrentPosition(), 10.0);
    machine.advance(100000);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(movie().State(), kMovieRunning);
}

/// MOVIE-24: Custom play past the stop goes on to the next file
TEST_F(MovieWindow, CustomPlayEndsPastTheStop) {
    player.gCustomMode = kCustomPlay;
    playStarted();
    player.gStopPosition[0] = 20;
    machine.advance(20000);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(250);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MOVIE-25: A stop of 0 plays to the movie's end
TEST_F(MovieWindow, CustomPlayWithoutAStopPlaysToTheEnd) {
    player.gCustomMode = kCustomPlay;
    playStarted();
    machine.advance(39900);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// MOVIE-22: Quick play past position 300 hides the window and goes on behind the delay
TEST_F(MovieWindow, QuickPlayEndsPastPosition300AfterTheDelay) {
    player.gQuickPlay = true;
    playStarted("/m/film.mpg");
    machine.advance(300000);
    EXPECT_TRUE(movieWindow()->Visible);
    machine.advance(250);
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(499);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(1);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MovieWindow, TheSliderEndsAtItsFullWidthWhereTheLengthIsRoundedDown) {
    machine.addMovie("/m/short.avi", 2.5, 320, 240);
    playStarted("/m/short.avi");
    EXPECT_EQ(player.gLength, 2);
    machine.advance(1000);
    EXPECT_EQ(panel().pctSlide.Width, 1500);
    machine.advance(1250);
    EXPECT_EQ(label(kTimeLabel), "2.25");
    EXPECT_EQ(panel().pctSlide.Width, 3000);
}

// --- Full screen -----------------------------------------------------------------------------------------------------

/// MOVIE-12: At zoom 5 the window itself is never shown; the movie fills the screen
/// OPEN-45, MOVE-19
TEST_F(MovieWindow, AtFullScreenTheWindowItselfIsNeverShown) {
    playStarted("/m/clip.avi", kFullScreenZoom);
    EXPECT_TRUE(movie().FullScreenMode());
    EXPECT_EQ(movie().State(), kMovieRunning);
    EXPECT_FALSE(movieWindow()->Visible);
    PauseFile(player);
    NextFile(player);
    EXPECT_EQ(movie().CurrentPosition(), 1.0) << "it counts as showing: a step is taken";
    PlayFile(player);
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(machine.log.count("windows.show frmMovieWindow"), 0);
}

/// On the whole screen a movie counts as showing, also when it is about to hand over.
TEST_F(MovieWindow, BehindItsQuickPlayAMovieIsNeitherSteppedNorPlayedOn) {
    player.gQuickPlay = true;
    playStarted("/m/film.mpg", kFullScreenZoom);
    machine.advance(300250);
    ASSERT_TRUE(movieWindow()->tmrMovie.Enabled) << "the next file comes";
    PauseFile(player);
    machine.clearCalls();
    NextFile(player);
    PrevFile(player);
    PlayFile(player);
    EXPECT_TRUE(machine.calls("movie").empty());
    machine.advance(player.gDelayTime);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

/// MOVE-19: A hidden movie does not step; one that fills the screen counts as showing
/// MOVE-30: A hidden movie goes back all the same
TEST_F(MovieWindow, AHiddenMovieDoesNotStepButGoesBack) {
    playStarted();
    machine.advance(5000);
    PauseFile(player);
    movieWindow()->Hide();
    machine.clearCalls();
    panel().pctSlide.Width = 1;
    NextFile(player);
    EXPECT_TRUE(machine.calls("movie").empty());
    EXPECT_GT(panel().pctSlide.Width.get(), 1) << "but the slider is set";
    PrevFile(player);
    EXPECT_EQ(machine.calls("movie"), std::vector<std::string>{"movie.CurrentPosition 4"});
}

/// MOVIE-35
TEST_F(MovieWindow, AtFullScreenTheWindowTakesNoKeyboard) {
    playStarted("/m/clip.avi", kFullScreenZoom);
    movieWindow()->Visible = true;
    machine.clearCalls();
    raise(movieWindow()->Activate);
    EXPECT_EQ(machine.log.count("windows.focus amvMovie"), 0);
}

// --- The next movie --------------------------------------------------------------------------------------------------

/// OPEN-36: A movie window that shows is unloaded first: each movie has a fresh one
/// MOVIE-36: Its end clears what pointed to it, and the next movie has a new one
/// OPEN-40
TEST_F(MovieWindow, EachMovieHasAFreshWindow) {
    setUpPanel();
    setList({"/m/clip.avi", "/m/film.mpg"});
    PlayFile(player);
    machine.advance(2000);
    machine.clearCalls();
    NextFile(player);
    machine.settle();
    EXPECT_EQ(machine.log.count("media.makeMovieControl"), 1);
    EXPECT_EQ(movieWindow()->Caption.get(), "film");
    EXPECT_EQ(machine.media.liveControls(), 1);
    machine.advance(1500);
    EXPECT_EQ(label(kTimeLabel), "1");
}

/// MOVIE-37: Played again by previous it starts afresh
TEST_F(MovieWindow, PlayingAgainFromPreviousStartsAfresh) {
    playStarted();
    machine.advance(5000);
    PrevFile(player);
    machine.advance(machine.windows.doubleClickMs);
    EXPECT_EQ(movie().CurrentPosition(), 0.0);
    machine.advance(500 + 1000);
    EXPECT_EQ(label(kTimeLabel), "1");
    EXPECT_EQ(machine.media.liveControls(), 1);
}

/// MCI-23
TEST_F(MovieWindow, ALengthThatWasGuessedIsCorrectedWhileItPlays) {
    playStarted();
    const std::int32_t guessed = player.gLength;
    ASSERT_GT(guessed, 0);
    machine.media.movie()->correctDuration(guessed * 2.0);
    machine.advance(1000);
    EXPECT_EQ(player.gLength, guessed * 2);
}

}  // namespace
}  // namespace corvane
