// SPDX-License-Identifier: GPL-3.0-or-later
// The whole screen by hand, and the keys and the wheel of the media windows.
#include "engine/media_time.h"
#include "unit/players/movie_window.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class WholeScreen : public MovieWindow {
protected:
    WholeScreen() {
        player.conveniences.hands = true;
        machine.addPicture("/m/view.bmp", 100, 80);
        machine.addPicture("/m/other.bmp", 200, 100);
    }
    void key(Form& form, int code, bool isRepeat = false) {
        machine.loop.enter([&] { form.KeyDown.raise({code, 0, isRepeat}); });
        machine.settle();
    }
    void turn(Form& form, int notches) {
        machine.loop.enter([&] { form.MouseWheel.raise({notches, 0}); });
        machine.settle();
    }
    double seconds() { return static_cast<double>(openPositionUs(player)) / 1e6; }
    void playPictures() {
        setUpPanel();
        setList({"/m/view.bmp", "/m/other.bmp"});
        PlayFile(player);
        machine.settle();
    }
};

/// HAND-20: F11 and a double-click take a movie to the whole screen and back, and it plays on
TEST_F(WholeScreen, AMovieGoesToTheWholeScreenAndBack) {
    playStarted();
    EXPECT_TRUE(movieWindow()->Visible);
    key(*movieWindow(), kKeyF11);
    EXPECT_TRUE(movie().FullScreenMode());
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(movie().State(), kMovieRunning);
    raise(movie().DblClick);
    EXPECT_FALSE(movie().FullScreenMode());
    EXPECT_TRUE(movieWindow()->Visible);
    EXPECT_EQ(movieWindow()->WindowState.get(), WindowState::Normal);
    EXPECT_EQ(movie().State(), kMovieRunning);
    EXPECT_EQ(player.gMovieZoom, 0) << "the zoom that is set stays";
}

/// HAND-21: Escape leaves the whole screen, and does nothing else
TEST_F(WholeScreen, EscapeLeavesTheWholeScreen) {
    playStarted();
    key(*movieWindow(), kKeyEscape);
    EXPECT_FALSE(movie().FullScreenMode());
    key(*movieWindow(), kKeyF11);
    key(*movieWindow(), kKeyEscape);
    EXPECT_FALSE(movie().FullScreenMode());
    EXPECT_TRUE(movieWindow()->Visible);
}

/// HAND-21
TEST_F(WholeScreen, OneWhoseZoomIsTheWholeScreenLeavesItAsWell) {
    playStarted("/m/clip.avi", 5);
    EXPECT_TRUE(movie().FullScreenMode());
    key(*movieWindow(), kKeyEscape);
    EXPECT_FALSE(movie().FullScreenMode());
    EXPECT_TRUE(movieWindow()->Visible);
    EXPECT_EQ(movieWindow()->Width.get(), 320 * kTwipsPerPixel);
}

/// HAND-22: What was chosen by hand holds for the files behind, until a dialog is opened
TEST_F(WholeScreen, TheNextMovieComesAsTheLastOne) {
    setUpPanel();
    setList({"/m/clip.avi", "/m/film.mpg"});
    PlayFile(player);
    machine.advance(player.gDelayTime);
    key(*movieWindow(), kKeyF11);
    skipToNext(player);
    machine.advance(player.gDelayTime);
    EXPECT_TRUE(movie().FullScreenMode());
    EXPECT_FALSE(movieWindow()->Visible);
    CloseFile(player, false);
    machine.settle();
    click(kEditor);
    EXPECT_EQ(player.wholeScreen, std::nullopt);
}

/// HAND-23: A key that is held changes the screen once
TEST_F(WholeScreen, AHeldKeyChangesTheScreenOnce) {
    playStarted();
    key(*movieWindow(), kKeyF11);
    key(*movieWindow(), kKeyF11, true);
    EXPECT_TRUE(movie().FullScreenMode());
}

/// HAND-24: During a movie's delay the whole screen is chosen, and nothing is shown yet
TEST_F(WholeScreen, ChosenDuringTheDelayItIsShownBehindIt) {
    play("/m/clip.avi");
    key(*movieWindow(), kKeyF11);
    EXPECT_FALSE(movieWindow()->Visible);
    machine.advance(player.gDelayTime);
    EXPECT_TRUE(movie().FullScreenMode());
    EXPECT_FALSE(movieWindow()->Visible);
    EXPECT_EQ(movie().State(), kMovieRunning);
}

/// HAND-25: A movie that was paused on the whole screen and taken off it is seen when it plays on
TEST_F(WholeScreen, APausedMovieComesBackIntoItsWindow) {
    playStarted();
    key(*movieWindow(), kKeyF11);
    PauseFile(player);
    key(panel(), kKeyF11);
    EXPECT_TRUE(movieWindow()->Visible);
    EXPECT_EQ(movie().State(), kMoviePaused);
    PlayFile(player);
    machine.settle();
    EXPECT_TRUE(movieWindow()->Visible);
}

/// HAND-26: A picture is enlarged to the screen, and back to the zoom that is set
TEST_F(WholeScreen, APictureIsEnlargedToTheScreen) {
    playPictures();
    ASSERT_NE(imageWindow(), nullptr);
    const float before = imageWindow()->Height;
    key(*imageWindow(), kKeyF11);
    EXPECT_EQ(imageWindow()->Height.get(), machine.windows.screenHeight());
    raise(imageWindow()->pctImage.DblClick);
    EXPECT_EQ(imageWindow()->Height.get(), before);
    EXPECT_EQ(imageWindow()->WindowState.get(), WindowState::Normal);
}

/// HAND-27: Left and Right go five seconds back and forth in a movie's window
TEST_F(WholeScreen, LeftAndRightSeekInAMovie) {
    playStarted();
    key(*movieWindow(), kKeyRight);
    key(*movieWindow(), kKeyRight, true);
    EXPECT_NEAR(seconds(), 10, 0.3);
    key(*movieWindow(), kKeyLeft);
    EXPECT_NEAR(seconds(), 5, 0.3);
    turn(*movieWindow(), 3);
    EXPECT_NEAR(seconds(), 20, 0.3);
    key(panel(), kKeyRight);
    EXPECT_NEAR(seconds(), 20, 0.3) << "not over the panel";
}

/// HAND-28: In a picture's window they, and the wheel, show the picture before or the next one, as far as there is one
TEST_F(WholeScreen, LeftAndRightShowOtherPictures) {
    playPictures();
    key(*imageWindow(), kKeyLeft);
    EXPECT_EQ(player.gFileIndex, 0);
    key(*imageWindow(), kKeyRight);
    EXPECT_EQ(player.gFileIndex, 1);
    key(*imageWindow(), kKeyRight);
    EXPECT_EQ(player.gFileIndex, 1);
    ASSERT_EQ(state(), "playing");
    turn(*imageWindow(), -1);
    EXPECT_EQ(player.gFileIndex, 0);
    key(*imageWindow(), kKeyRight, true);
    EXPECT_EQ(player.gFileIndex, 0) << "a held key does not run through all pictures";
}

/// HAND-29: With Alt held the keys stay those of the menu
TEST_F(WholeScreen, AltLeavesTheKeysToTheMenu) {
    playStarted();
    machine.loop.enter([&] { movieWindow()->KeyDown.raise({kKeyRight, kAltMask}); });
    EXPECT_TRUE(player.gAltMenuArmed);
    EXPECT_NEAR(seconds(), 0, 0.3);
}

/// HAND-30: Without the convenience the keys, the wheel and a double-click do what they did
TEST_F(WholeScreen, WithoutItTheStatedWaysHold) {
    player.conveniences.hands = false;
    playStarted();
    for (const int code : {kKeyF11, kKeyEscape, kKeyRight}) key(*movieWindow(), code);
    turn(*movieWindow(), 2);
    EXPECT_FALSE(movie().FullScreenMode());
    EXPECT_NEAR(seconds(), 0, 0.3);
    raise(movie().DblClick);
    EXPECT_EQ(movieWindow()->WindowState.get(), WindowState::Minimized);
}

/// HAND-31: What is only heard has no whole screen
TEST_F(WholeScreen, ASoundHasNone) {
    play("/m/last.wav");
    key(panel(), kKeyF11);
    EXPECT_EQ(player.wholeScreen, std::nullopt);
}

}  // namespace
}  // namespace corvane
