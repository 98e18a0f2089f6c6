// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class MovieWindow : public PlayerFixture {
protected:
    MovieWindow() {
        machine.addMovie("/m/clip.avi", 40, 320, 240);
        machine.addMovie("/m/film.mpg", 1000, 320, 240);
        machine.addSound("/m/last.wav", 60000);
    }
    void play(const std::string& path, std::int16_t zoom = 0) {
        player.gMovieZoom = zoom;
        setUpPanel();
        setList({path, "/m/last.wav"});
        PlayFile(player);
        machine.settle();
    }
    void playStarted(const std::string& path = "/m/clip.avi", std::int16_t zoom = 0) {
        play(path, zoom);
        machine.advance(player.gDelayTime);
        machine.clearCalls();
    }
    MovieControl& movie() { return *movieWindow()->amvMovie; }
    void raise(const Event<>& event) {
        machine.loop.enter([&] { event.raise(); });
        machine.settle();
    }
    /// The device's own toggle between paused and running, as of a click on the picture.
    void toggleOutside(int before, int now) {
        if (now == kMovieRunning) {
            movie().Run();
        } else {
            movie().Pause();
        }
        ASSERT_EQ(movie().State(), now) << "from " << before;
        machine.settle();
    }
};

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

TEST_F(MovieWindow, TheLengthIsTheDurationRounded) {
    machine.addMovie("/m/short.avi", 2.5, 320, 240);
    play("/m/short.avi");
    EXPECT_EQ(player.gLength, 2) << "halves go to even";
}

TEST_F(MovieWindow, ShowsPositionAndSliderEvery250Milliseconds) {
    playStarted();
    machine.advance(2499);
    EXPECT_EQ(label(kTimeLabel), "2.25");
    machine.advance(1);
    EXPECT_EQ(label(kTimeLabel), "2.5");
    EXPECT_EQ(panel().pctSlide.Width, static_cast<float>(2.5 / 40 * 3000));
}

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

TEST_F(MovieWindow, PausedAfterItsEndStillGoesOn) {
    playStarted();
    machine.advance(40000);
    PauseFile(player);
    machine.advance(500);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

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

TEST_F(MovieWindow, ACustomStartIsInForceWhileCustomPlayIsOn) {
    player.gCustomMode = kCustomPlay;
    play("/m/clip.avi");
    player.gStartPosition[0] = 12;
    machine.advance(500);
    EXPECT_EQ(movie().CurrentPosition(), 12.0);
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "13");
}

TEST_F(MovieWindow, ACustomStartIsIgnoredOtherwise) {
    play("/m/clip.avi");
    player.gStartPosition[0] = 12;
    machine.advance(1500);
    EXPECT_EQ(label(kTimeLabel), "1");
}

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

TEST_F(MovieWindow, CustomPlayEndsPastTheStop) {
    player.gCustomMode = kCustomPlay;
    playStarted();
    player.gStopPosition[0] = 20;
    machine.advance(20000);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(250);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MovieWindow, CustomPlayWithoutAStopPlaysToTheEnd) {
    player.gCustomMode = kCustomPlay;
    playStarted();
    machine.advance(39900);
    EXPECT_EQ(player.gFileIndex, 0);
}

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

TEST_F(MovieWindow, AtFullScreenTheWindowTakesNoKeyboard) {
    playStarted("/m/clip.avi", kFullScreenZoom);
    movieWindow()->Visible = true;
    machine.clearCalls();
    raise(movieWindow()->Activate);
    EXPECT_EQ(machine.log.count("windows.focus amvMovie"), 0);
}

// --- The next movie --------------------------------------------------------------------------------------------------

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

// --- Mouse, keys and the window --------------------------------------------------------------------------------------

TEST_F(MovieWindow, ADoubleClickMinimisesAndLeavesThePlayState) {
    playStarted();
    raise(movie().DblClick);
    EXPECT_EQ(movieWindow()->WindowState.get(), WindowState::Minimized);
    EXPECT_EQ(movie().State(), kMovieRunning);
    toggleOutside(kMovieRunning, kMoviePaused);
    EXPECT_EQ(movie().State(), kMovieRunning) << "a toggle right after it is undone";
    toggleOutside(kMovieRunning, kMoviePaused);
    EXPECT_EQ(movie().State(), kMoviePaused) << "a later one is not";
}

TEST_F(MovieWindow, ADoubleClickOnAPausedMovieLeavesItPaused) {
    playStarted();
    PauseFile(player);
    machine.settle();
    raise(movie().DblClick);
    toggleOutside(kMoviePaused, kMovieRunning);
    EXPECT_EQ(movie().State(), kMoviePaused);
}

TEST_F(MovieWindow, ALengthThatWasGuessedIsCorrectedWhileItPlays) {
    playStarted();
    const std::int32_t guessed = player.gLength;
    ASSERT_GT(guessed, 0);
    machine.media.movie()->correctDuration(guessed * 2.0);
    machine.advance(1000);
    EXPECT_EQ(player.gLength, guessed * 2);
}

TEST_F(MovieWindow, ADoubleClickGuardsForOneDoubleClickTimeOnly) {
    playStarted();
    raise(movie().DblClick);
    machine.advance(machine.windows.doubleClickMs + 1);
    toggleOutside(kMovieRunning, kMoviePaused);
    EXPECT_EQ(movie().State(), kMoviePaused);
}

TEST_F(MovieWindow, AnEndRightAfterADoubleClickStillHandsOver) {
    playStarted();
    machine.advance(39900);
    raise(movie().DblClick);
    machine.advance(100 + 500);
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MovieWindow, APauseRightAfterADoubleClickPauses) {
    playStarted();
    raise(movie().DblClick);
    PauseFile(player);
    machine.settle();
    EXPECT_EQ(movie().State(), kMoviePaused);
    PlayFile(player);
    machine.settle();
    EXPECT_EQ(movie().State(), kMovieRunning);
    EXPECT_EQ(movieWindow()->WindowState.get(), WindowState::Normal) << "play shows a minimised window again";
}

TEST_F(MovieWindow, ADoubleClickAtFullScreenDoesNotMinimise) {
    playStarted("/m/clip.avi", kFullScreenZoom);
    raise(movie().DblClick);
    EXPECT_EQ(movieWindow()->WindowState.get(), WindowState::Normal);
}

TEST_F(MovieWindow, TheLeftButtonDragsAndTheRightOnePopsTheMenuUp) {
    playStarted();
    press(movie(), {kRightButton, 0, 5, 5});
    press(movie(), {kMiddleButton, 0, 5, 5});
    EXPECT_EQ(machine.log.count("windows.beginDrag frmMovieWindow"), 0);
    press(movie(), {kLeftButton, 0, 5, 5});
    EXPECT_EQ(machine.log.count("windows.beginDrag frmMovieWindow"), 1);
    release(movie(), {kLeftButton, 0, 5, 5});
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
    release(movie(), {kRightButton, 0, 5, 5});
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
}

TEST_F(MovieWindow, TakesTheCommandKeys) {
    playStarted();
    typeKey(*movieWindow(), 'x');
    EXPECT_EQ(state(), "paused");
    typeKey(*movieWindow(), 'z');
    EXPECT_EQ(state(), "playing");
    typeKey(*movieWindow(), 'R');
    EXPECT_TRUE(player.gRepeat);
    typeKey(*movieWindow(), '.');
    EXPECT_EQ(player.gFileIndex, 1);
}

TEST_F(MovieWindow, TheStopKeyUnloadsTheWindowInsideItsOwnHandler) {
    playStarted();
    typeKey(*movieWindow(), 'c');
    EXPECT_EQ(movieWindow(), nullptr);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(machine.media.liveControls(), 0);
}

TEST_F(MovieWindow, AltAloneOpensTheMenuWhenItIsReleased) {
    playStarted();
    machine.loop.enter([this] { movieWindow()->KeyDown.raise({kKeyAlt, kAltMask}); });
    EXPECT_TRUE(player.gAltMenuArmed);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
    machine.loop.enter([this] { movieWindow()->KeyUp.raise({kKeyAlt, 0}); });
    EXPECT_FALSE(player.gAltMenuArmed);
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
}

TEST_F(MovieWindow, AltF4EndsThePlayer) {
    playStarted();
    machine.loop.enter([this] { movieWindow()->KeyDown.raise({kKeyF4, kAltMask}); });
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
    EXPECT_EQ(movieWindow(), nullptr);
}

TEST_F(MovieWindow, ACloseRequestStopsOrEnds) {
    playStarted();
    machine.loop.enter([this] { movieWindow()->CloseRequest.raise(false); });
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(movieWindow(), nullptr);
    PlayFile(player);
    machine.loop.enter([this] { movieWindow()->CloseRequest.raise(true); });
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
}

TEST_F(MovieWindow, ADoubleClickOnAPausedMovieDoesNotUndoThePlayAfterIt) {
    playStarted();
    PauseFile(player);
    machine.settle();
    raise(movie().DblClick);
    PlayFile(player);
    machine.settle();
    EXPECT_EQ(movie().State(), kMovieRunning);
    EXPECT_EQ(state(), "playing");
}

TEST_F(MovieWindow, IsTopMostInThatWindowMode) {
    player.gWindowPos = 2;
    play("/m/clip.avi");
    EXPECT_EQ(machine.calls("windows").at(1).substr(0, 38), "windows.SetWindowPos frmMovieWindow -1");
    CloseFile(player, false);
    machine.clearCalls();
    player.gMovieZoom = kFullScreenZoom;
    PlayFile(player);
    for (const std::string& call : machine.calls("windows")) EXPECT_EQ(call.find("SetWindowPos"), std::string::npos);
}

TEST_F(MovieWindow, AShownWindowTakesTheKeyboard) {
    playStarted();
    EXPECT_EQ(machine.windows.focused(), &movie());
}

}  // namespace
}  // namespace corvane
