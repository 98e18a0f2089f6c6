// SPDX-License-Identifier: GPL-3.0-or-later
// The movie's window under mouse and keys.
#include "unit/players/movie_window.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// MOVIE-16: Behind a double-click a change between paused and running is undone, once
/// MOVIE-27: A double-click minimises the window, unless the zoom is 5; play shows it again
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

/// MOVIE-16
TEST_F(MovieWindow, ADoubleClickOnAPausedMovieLeavesItPaused) {
    playStarted();
    PauseFile(player);
    machine.settle();
    raise(movie().DblClick);
    toggleOutside(kMoviePaused, kMovieRunning);
    EXPECT_EQ(movie().State(), kMoviePaused);
}

/// MOVIE-17: The guard lasts one double-click time, and commands of the player's own pass it
TEST_F(MovieWindow, ADoubleClickGuardsForOneDoubleClickTimeOnly) {
    playStarted();
    raise(movie().DblClick);
    machine.advance(machine.windows.doubleClickMs + 1);
    toggleOutside(kMovieRunning, kMoviePaused);
    EXPECT_EQ(movie().State(), kMoviePaused);
}

/// MOVIE-19: An end right behind a double-click still hands over
TEST_F(MovieWindow, AnEndRightAfterADoubleClickStillHandsOver) {
    playStarted();
    machine.advance(39900);
    raise(movie().DblClick);
    machine.advance(100 + 500);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MOVIE-17, MOVIE-27
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

/// MOVIE-27
TEST_F(MovieWindow, ADoubleClickAtFullScreenDoesNotMinimise) {
    playStarted("/m/clip.avi", kFullScreenZoom);
    raise(movie().DblClick);
    EXPECT_EQ(movieWindow()->WindowState.get(), WindowState::Normal);
}

/// MOVIE-28: A left press drags the window, other buttons do not
/// MOVIE-29: The right button's release pops the menu up
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

/// MOVIE-30
TEST_F(MovieWindow, TheStopKeyUnloadsTheWindowInsideItsOwnHandler) {
    playStarted();
    typeKey(*movieWindow(), 'c');
    EXPECT_EQ(movieWindow(), nullptr);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(machine.media.liveControls(), 0);
}

/// MOVIE-31: Alt pressed and released alone pops the menu up
TEST_F(MovieWindow, AltAloneOpensTheMenuWhenItIsReleased) {
    playStarted();
    machine.loop.enter([this] { movieWindow()->KeyDown.raise({kKeyAlt, kAltMask}); });
    EXPECT_TRUE(player.gAltMenuArmed);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
    machine.loop.enter([this] { movieWindow()->KeyUp.raise({kKeyAlt, 0}); });
    EXPECT_FALSE(player.gAltMenuArmed);
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
}

/// MOVIE-32: Alt and F4 disable power, close and end the player
TEST_F(MovieWindow, AltF4EndsThePlayer) {
    playStarted();
    machine.loop.enter([this] { movieWindow()->KeyDown.raise({kKeyF4, kAltMask}); });
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
    EXPECT_EQ(movieWindow(), nullptr);
}

/// MOVIE-33: A close by the window manager stops, with Alt held it ends the player
TEST_F(MovieWindow, ACloseRequestStopsOrEnds) {
    playStarted();
    machine.loop.enter([this] { movieWindow()->CloseRequest.raise(false); });
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(movieWindow(), nullptr);
    PlayFile(player);
    machine.loop.enter([this] { movieWindow()->CloseRequest.raise(true); });
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
}

/// MOVIE-17
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

/// MOVIE-34: In window mode 2, and in no other, it stays on top, unless the zoom is 5
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

/// MOVIE-35: When it is activated while it shows it takes the keyboard, unless the zoom is 5
TEST_F(MovieWindow, AShownWindowTakesTheKeyboard) {
    playStarted();
    EXPECT_EQ(machine.windows.focused(), &movie());
}

}  // namespace
}  // namespace corvane
