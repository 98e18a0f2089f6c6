// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

struct Fit {
    int width, height;  ///< of the picture, pixels
    std::int16_t zoom;
    float boxWidth, boxHeight;        ///< pixels
    float windowWidth, windowHeight;  ///< pixels
    bool painted;
};

void PrintTo(const Fit& fit, std::ostream* out) { *out << fit.width << "x" << fit.height << " zoom " << fit.zoom; }

/// The screen is 1024 by 768 pixels.
class ImageFitting : public PlayerFixture, public ::testing::WithParamInterface<Fit> {};

/// PIC-03: Zoom 0 shows the picture at its own size
/// PIC-04: Zoom 1 doubles it
/// PIC-05: Zooms 2 to 5 fit it into a quarter, a half, 0.707 and all of the screen's width and height, by the smaller
///     of the two factors
/// PIC-06: 640 by 480 at zoom 3 on a screen of 1024 by 768 shows 512 by 384, at zoom 5 all of the screen
/// PIC-07: At a factor of exactly 1 nothing is painted
/// PIC-08: Else the box takes the scaled size and the picture is painted over all of it
/// PIC-11: The window takes the picture's size, the screen's at most; a larger picture hangs over it on all sides
/// PIC-12: The box stands in the middle of the window and the window in the middle of the screen
/// PIC-13: Box and window are shown
TEST_P(ImageFitting, SizesAndCentresBoxAndWindow) {
    const Fit& fit = GetParam();
    machine.addPicture("/p.bmp", fit.width, fit.height);
    player.gImageZoom = fit.zoom;
    setUpPanel();
    setList({"/p.bmp"});
    PlayFile(player);

    ImageWindowControls& window = *imageWindow();
    EXPECT_NEAR(window.pctImage.Width, fit.boxWidth, 0.01);
    EXPECT_NEAR(window.pctImage.Height, fit.boxHeight, 0.01);
    EXPECT_NEAR(window.Width, fit.windowWidth * 15, 0.01);
    EXPECT_NEAR(window.Height, fit.windowHeight * 15, 0.01);
    EXPECT_NEAR(window.pctImage.Left, (fit.windowWidth - fit.boxWidth) / 2, 0.01);
    EXPECT_NEAR(window.pctImage.Top, (fit.windowHeight - fit.boxHeight) / 2, 0.01);
    EXPECT_NEAR(window.Left, (1024 - fit.windowWidth) / 2 * 15, 0.01);
    EXPECT_NEAR(window.Top, (768 - fit.windowHeight) / 2 * 15, 0.01);
    EXPECT_EQ(machine.calls("pictures").size(), fit.painted ? 2U : 1U) << "decoded, and painted when it is scaled";
    EXPECT_NEAR(window.pctImage.paintedWidth(), fit.painted ? fit.boxWidth : 0, 0.01);
    EXPECT_TRUE(window.pctImage.Visible);
    EXPECT_TRUE(window.Visible);
}

INSTANTIATE_TEST_SUITE_P(
    Zooms, ImageFitting,
    ::testing::Values(Fit{640, 480, 0, 640, 480, 640, 480, false}, Fit{2000, 1000, 0, 2000, 1000, 1024, 768, false},
                      Fit{2000, 100, 0, 2000, 100, 1024, 100, false}, Fit{1024, 768, 0, 1024, 768, 1024, 768, false},
                      Fit{100, 80, 1, 200, 160, 200, 160, true}, Fit{600, 400, 1, 1200, 800, 1024, 768, true},
                      Fit{640, 480, 2, 256, 192, 256, 192, true}, Fit{640, 480, 3, 512, 384, 512, 384, true},
                      Fit{640, 480, 4, 723.968F, 542.976F, 723.968F, 542.976F, true},
                      Fit{640, 480, 5, 1024, 768, 1024, 768, true}, Fit{1024, 768, 5, 1024, 768, 1024, 768, false},
                      Fit{4096, 1000, 5, 1024, 250, 1024, 250, true}, Fit{10, 768, 5, 10, 768, 10, 768, false},
                      Fit{10, 1536, 5, 5, 768, 5, 768, true}, Fit{640, 480, 77, 640, 480, 640, 480, false}));

class ImageTrouble : public PlayerFixture {};

/// PIC-09: Lack of memory gives the box in two languages with the exclamation icon, and the picture keeps its own size
TEST_F(ImageTrouble, LackOfMemoryIsToldAndThePictureStaysAtItsSize) {
    machine.addPicture("/p.bmp", 300, 200);
    machine.pictures.paintError = kOutOfMemoryForPicture;
    player.gImageZoom = 1;
    setUpPanel();
    setList({"/p.bmp"});
    PlayFile(player);
    EXPECT_EQ(machine.dialogs.boxes,
              (std::vector<FakeDialogs::Box>{{"Corvane couldn't expand an image because of lack of the memory.\r\n"
                                              "メモリ不足のためイメージを拡大できませんでした。",
                                              "Corvane", Buttons::Ok, Icon::Exclamation}}));
    EXPECT_EQ(imageWindow()->pctImage.Width, 300);
    EXPECT_EQ(imageWindow()->Height, 200 * 15);
    EXPECT_TRUE(imageWindow()->Visible);
    EXPECT_EQ(state(), "playing");
}

/// PIC-10: Any other error of the painting is silent
TEST_F(ImageTrouble, AnyOtherErrorOfTheDrawingIsSilent) {
    machine.addPicture("/p.bmp", 300, 200);
    machine.pictures.paintError = 481;
    player.gImageZoom = 1;
    setUpPanel();
    setList({"/p.bmp"});
    PlayFile(player);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(imageWindow()->pctImage.Width, 600);
}

/// PIC-17: The next picture of the list is decoded ahead
TEST_F(ImageTrouble, TheNextPictureIsDecodedAhead) {
    machine.addPicture("/a.bmp", 30, 20);
    machine.addPicture("/b.JPG", 30, 20);
    machine.addSound("/c.wav", 1000);
    setUpPanel();
    setList({"/a.bmp", "/b.JPG", "/c.wav"});
    PlayFile(player);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /b.JPG"), 1);
    NextFile(player);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /c.wav"), 0);
}

/// PIC-17
TEST_F(ImageTrouble, TheLastPictureDecodesTheFirstAheadWithRepeat) {
    machine.addPicture("/a.bmp", 30, 20);
    machine.addPicture("/b.gif", 30, 20);
    setUpPanel();
    setList({"/a.bmp", "/b.gif"});
    player.gFileIndex = 1;
    PlayFile(player);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /a.bmp"), 0);
    CloseFile(player, false);
    player.gRepeat = true;
    PlayFile(player);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /a.bmp"), 1);
}

/// SEQ-03
TEST_F(ImageTrouble, AKeptWindowTakesTheNextPictureWithoutHiding) {
    machine.addPicture("/a.bmp", 30, 20);
    machine.addPicture("/b.bmp", 60, 20);
    player.gImageHide = false;
    setUpPanel();
    setList({"/a.bmp", "/b.bmp"});
    PlayFile(player);
    const Form* const window = imageWindow();
    machine.clearCalls();
    NextFile(player);
    EXPECT_EQ(imageWindow(), window);
    EXPECT_EQ(window->Width, 60 * 15);
    EXPECT_EQ(machine.log.count("windows.hide frmImageWindow"), 0);
    EXPECT_EQ(machine.log.count("windows.detach frmImageWindow"), 0);
}

struct LargePictures : ImageTrouble {
    LargePictures() {
        machine.addPicture("/a.bmp", 30, 20);
        machine.addPicture("/b.bmp", 60, 20);
        player.gImageHide = false;
        setUpPanel();
        setList({"/a.bmp", "/b.bmp"});
        machine.pictures.roomIsTaken = [this] {
            auto* const shown = player.forms.find<ImageWindowControls>();
            return shown != nullptr && !shown->pctImage.Picture.get().empty();
        };
    }
};

TEST_F(LargePictures, ThePictureOnTheScreenMakesRoomForTheNext) {
    PlayFile(player);
    machine.loop.enter([this] { NextFile(player); });
    machine.settle();
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(player.gFileIndex, 1);
    ASSERT_NE(imageWindow(), nullptr);
    EXPECT_EQ(imageWindow()->pctImage.Picture.get().width(), 60);
    EXPECT_EQ(state(), "playing");
}

TEST_F(LargePictures, WithoutRoomEvenThenItFailsWithTheReason) {
    machine.pictures.roomIsTaken = [] { return true; };
    machine.loop.enter([this] { PlayFile(player); });
    machine.settle();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_NE(machine.dialogs.boxes[0].text.find("too large"), std::string::npos);
    EXPECT_EQ(machine.log.count("pictures.decode /a.bmp"), 1) << "no other picture could make room";
    EXPECT_EQ(state(), "stopped");
}

/// SEQ-03, MOVE-35, IMG-22
TEST_F(ImageTrouble, AHidingWindowGoesBetweenPictures) {
    machine.addPicture("/a.bmp", 30, 20);
    machine.addPicture("/b.bmp", 60, 20);
    player.gImageHide = true;
    setUpPanel();
    setList({"/a.bmp", "/b.bmp"});
    PlayFile(player);
    machine.clearCalls();
    NextFile(player);
    EXPECT_EQ(machine.log.count("windows.detach frmImageWindow"), 1);
    EXPECT_EQ(imageWindow()->Width, 60 * 15);
}

}  // namespace
}  // namespace corvane
