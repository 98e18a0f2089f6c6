// SPDX-License-Identifier: GPL-3.0-or-later
// What the windows of pictures, tracks and movies do: the last pixel of a pan, a length that comes late, a menu not
// asked for.
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class MediaWindows : public PanelHands {
protected:
    int count(const std::string& call) { return static_cast<int>(machine.log.count(call)); }
};

TEST_F(MediaWindows, APictureIsShownAtItsOwnSizeAfterOneThatWasStretched) {
    machine.addPicture("/m/wide.bmp", 60, 40);
    player.gImageHide = false;
    player.gImageZoom = 1;
    setUpPanel();
    setList({kPicture, "/m/wide.bmp"});
    act([this] { PlayFile(player); });
    EXPECT_EQ(imageWindow()->pctImage.Picture.get().width(), 100);
    EXPECT_EQ(imageWindow()->pctImage.paintedWidth(), 200);
    player.gImageZoom = 0;
    act([this] { NextFile(player); });
    EXPECT_EQ(imageWindow()->pctImage.Picture.get().width(), 60);
    EXPECT_EQ(imageWindow()->pctImage.paintedWidth(), 0);
    EXPECT_EQ(imageWindow()->pctImage.paintedHeight(), 0);
}

TEST_F(MediaWindows, AroundItsPictureThePictureWindowIsDraggedAndShowsTheMenu) {
    bring(kPicture, "playing");
    press(*imageWindow(), kRight);
    EXPECT_EQ(count("windows.beginDrag frmImageWindow"), 0);
    press(*imageWindow(), kLeft);
    EXPECT_EQ(count("windows.beginDrag frmImageWindow"), 1);
    release(*imageWindow(), kLeft);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
    release(*imageWindow(), kRight);
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
}

TEST_F(MediaWindows, APanStopsAtTheLastPixel) {
    machine.addPicture("/m/huge.bmp", 4000, 3000);
    bring("/m/huge.bmp", "playing");
    PictureBox& box = imageWindow()->pctImage;
    const auto move = [&](float x, float y) { act([&] { box.MouseMove.raise({0, 0, x, y}); }); };
    press(box, {kMiddleButton, 0, 100, 100});
    move(4000, 3000);
    EXPECT_EQ(box.Left, 0);
    EXPECT_EQ(box.Top, 0);
    move(101, 101);
    EXPECT_EQ(box.Left, 0) << "not one pixel further";
    EXPECT_EQ(box.Top, 0);
}

TEST_F(MediaWindows, AnAltThatWasHeldWhenTheFocusWentShowsNoMenu) {
    bring(kPicture, "playing");
    act([this] { imageWindow()->KeyDown.raise({kKeyAlt, kAltMask}); });
    act([this] { imageWindow()->LostFocus.raise(); });
    act([this] { imageWindow()->KeyUp.raise({kKeyAlt, 0}); });
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
}

TEST_F(MediaWindows, ATracksLengthThatComesLateIsTheSame) {
    bring(kTrack, "playing");
    const std::int32_t length = player.gLength;
    player.gLength = 0;
    machine.advance(1000);
    EXPECT_EQ(player.gLength, length);
}

TEST_F(MediaWindows, AMovieOnTopIsPutThereHidden) {
    player.gWindowPos = 2;
    bring(kMovie, "stopped");
    act([this] { PlayFile(player); });
    EXPECT_EQ(machine.log.count("windows.SetWindowPos frmMovieWindow -1 93"), 1);
}

/// MOVIE-13: The panel is enabled then
TEST_F(MediaWindows, AMovieThatStartsFreesThePanel) {
    bring(kMovie, "stopped");
    machine.loop.enter([this] {
        PlayFile(player);
        EXPECT_EQ(player.gLength, 1) << "until it is opened";
    });
    machine.settle();
    panel().Enabled = false;
    machine.advance(player.gDelayTime);
    EXPECT_TRUE(panel().Enabled);
}

/// OPEN-44: Picture: its window shows, and its clock runs unless the interval is 0
TEST_F(MediaWindows, APictureThatIsResumedComesBack) {
    bring(kPicture, "paused");
    imageWindow()->Hide();
    act([this] { PlayFile(player); });
    EXPECT_TRUE(imageWindow()->Visible);
    EXPECT_TRUE(imageWindow()->tmrImage.Enabled);
}

/// OPEN-52: A missing or failing file behind a kept picture takes the picture away
TEST_F(MediaWindows, AMissingFileThatEndsTheListTakesTheLastPictureAway) {
    player.gImageHide = false;
    setUpPanel();
    setList({kPicture, "/m/gone.wav"});
    act([this] { PlayFile(player); });
    machine.dialogs.answers = {Answer::Abort};
    act([this] { NextFile(player); });
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(state(), "stopped");
}

/// OPEN-52
TEST_F(MediaWindows, AFileThatFailsTakesTheLastPictureAway) {
    machine.addBrokenPicture("/m/broken.bmp", "It is damaged.");
    player.gImageHide = false;
    setUpPanel();
    setList({kPicture, "/m/broken.bmp"});
    act([this] { PlayFile(player); });
    act([this] { NextFile(player); });
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(imageWindow(), nullptr);
}

}  // namespace
}  // namespace corvane
