// SPDX-License-Identifier: GPL-3.0-or-later
// The keys of the movie and the image window are the panel's, all of them.
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class MediaKeys : public PlayerFixture, public ::testing::WithParamInterface<const char*> {
protected:
    MediaKeys() {
        machine.addMovie("/m/clip.avi", 40, 320, 240);
        machine.addPicture("/m/view.bmp", 100, 80);
        for (const char* path : {"/m/second.wav", "/m/third.wav"}) machine.addSound(path, 60000);
        player.gInterval = 60;
    }
    /// Plays the second of three files, the movie or picture, at volume 7, until its window shows.
    void play() {
        setUpPanel();
        setList({"/m/second.wav", GetParam(), "/m/third.wav"});
        player.gFileIndex = 1;
        player.gVolume = 7;
        machine.loop.enter([this] { PlayFile(player); });
        machine.advance(player.gDelayTime + 1000);
        ASSERT_NE(window(), nullptr);
        machine.clearCalls();
    }
    Form* window() {
        if (movieWindow() != nullptr) return movieWindow();
        return imageWindow();
    }
    void type(char character) {
        typeKey(*window(), character);
        machine.settle();
    }
    bool panelIsThere() { return player.forms.find<MainPanelControls>() != nullptr; }
};

/// KEY-17: Movie and image window take the same eleven keys with the same actions
/// MOVIE-30: The panel's eleven keys do the same here
/// IMG-17: The panel's eleven keys do the same here
TEST_P(MediaKeys, EachOfTheElevenDoesItsCommand) {
    play();
    type('M');
    EXPECT_EQ(panel().WindowState.get(), WindowState::Minimized);
    type('R');
    EXPECT_TRUE(player.gRepeat);
    EXPECT_EQ(button(kRepeat).Picture.get(), panel().imgMainPanel[kRepeatOnImage].Picture.get());
    type('u');
    EXPECT_EQ(player.gVolume, 8);
    type('d');
    type('d');
    EXPECT_EQ(player.gVolume, 6);
    type('x');
    ASSERT_EQ(state(), "paused");
    type('z');
    EXPECT_EQ(state(), "playing");
    type(',');
    EXPECT_TRUE(player.gBackPending) << "a first press";
    type('.');
    EXPECT_EQ(player.gFileIndex, 2);
    CloseFile(player, false);

    player.gFileIndex = 1;
    PlayFile(player);
    machine.advance(player.gDelayTime);
    type('c');
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(window(), nullptr);

    PlayFile(player);
    machine.advance(player.gDelayTime);
    type('P');
    EXPECT_FALSE(panelIsThere());
    EXPECT_EQ(window(), nullptr);
}

/// KEY-17
TEST_P(MediaKeys, ShuffleNeedsThreeFiles) {
    play();
    player.gFileCount = 2;
    type('S');
    EXPECT_TRUE(machine.calls("random").empty());
    player.gFileCount = 3;
    type('S');
    EXPECT_EQ(machine.calls("random").size(), 1U);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(player.gFilePath[0], GetParam());
    EXPECT_EQ(state(), "playing");
}

/// KEY-17
TEST_P(MediaKeys, OtherCharactersAndDisabledButtonsDoNothing) {
    play();
    for (const char character : {'p', 'm', 'r', 's', 'Z', 'X', 'C', 'U', 'D', 'q'}) type(character);
    type('z');
    EXPECT_TRUE(panelIsThere());
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(player.gVolume, 7);
    EXPECT_TRUE(mediaCalls().empty());
    type('x');
    ASSERT_EQ(state(), "paused");
    machine.clearCalls();
    type('x');
    EXPECT_EQ(state(), "paused");
    EXPECT_TRUE(mediaCalls().empty());
}

INSTANTIATE_TEST_SUITE_P(Windows, MediaKeys, ::testing::Values("/m/clip.avi", "/m/view.bmp"));

}  // namespace
}  // namespace corvane
