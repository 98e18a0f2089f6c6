// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class ImageWindow : public PlayerFixture {
protected:
    void show(int width, int height, std::int16_t interval = 0) {
        machine.addPicture("/m/view.bmp", width, height);
        machine.addSound("/m/last.wav", 60000);
        player.gInterval = interval;
        setUpPanel();
        setList({"/m/view.bmp", "/m/last.wav"});
        PlayFile(player);
        machine.settle();
        machine.clearCalls();
    }
    PictureBox& box() { return imageWindow()->pctImage; }
    void move(float x, float y) {
        machine.loop.enter([&] { box().MouseMove.raise({0, 0, x, y}); });
    }
    void expectPlace(float left, float top) {
        EXPECT_EQ(box().Left, left);
        EXPECT_EQ(box().Top, top);
    }
};

/// IMG-01: The seconds go up by one
/// IMG-03: The slider is the seconds' share of the interval
/// IMG-04: At the interval the next file follows: with 5 the fifth tick, with 00:01 to 00:05 on the way
TEST_F(ImageWindow, TheSlideClockGoesOnAtTheInterval) {
    show(100, 100, 5);
    for (int second = 1; second < 5; ++second) {
        machine.advance(1000);
        EXPECT_EQ(label(kTimeLabel), "00:0" + std::to_string(second));
        EXPECT_EQ(panel().pctSlide.Width, static_cast<float>(second) * 600);
        EXPECT_EQ(player.gFileIndex, 0);
    }
    machine.advance(1000);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(state(), "playing");
}

/// IMG-04
TEST_F(ImageWindow, TheFifthSecondIsShownOnTheWay) {
    machine.addPicture("/m/view.bmp", 10, 10);
    player.gInterval = 5;
    player.gImageHide = false;
    setUpPanel();
    setList({"/m/view.bmp"});
    PlayFile(player);
    std::vector<std::string> seen;
    class Watch : public ControlObserver {
    public:
        explicit Watch(std::vector<std::string>& texts) : texts_(texts) {}
        void propertyChanged(Control& control, PropertyId property) override {
            if (property == PropertyId::Caption) texts_.push_back(static_cast<Label&>(control).Caption.get());
        }

    private:
        std::vector<std::string>& texts_;
    } watch(seen);
    panel().lblMainPanel[kTimeLabel].addObserver(&watch);
    machine.advance(5000);
    panel().lblMainPanel[kTimeLabel].removeObserver(&watch);
    EXPECT_EQ(seen, (std::vector<std::string>{"00:01", "00:02", "00:03", "00:04", "00:05", ""}));
}

/// IMG-02: Label 2 is the time of the seconds × 1000 in 16 bits: from the 33rd second on it reads the wrapped number,
///     first -32536
TEST_F(ImageWindow, TheClockWrapsIn16Bits) {
    show(100, 100, 60);
    machine.advance(32000);
    EXPECT_EQ(label(kTimeLabel), "00:32");
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "00:-32") << "33000 reads as -32536";
    machine.advance(26000);
    EXPECT_EQ(label(kTimeLabel), "00:-06") << "59000 reads as -6536";
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(1000);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// IMG-05: A window that is kept counts from 0 for the next picture
/// PIC-14
TEST_F(ImageWindow, TheKeptWindowCountsFromZeroForTheNextPicture) {
    machine.addPicture("/m/a.bmp", 10, 10);
    machine.addPicture("/m/b.bmp", 10, 10);
    player.gInterval = 3;
    player.gImageHide = false;
    setUpPanel();
    setList({"/m/a.bmp", "/m/b.bmp"});
    PlayFile(player);
    machine.advance(3000);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(label(kTimeLabel), "00:00");
    machine.advance(2999);
    EXPECT_EQ(state(), "playing");
    machine.advance(1);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(imageWindow(), nullptr) << "the end of the list keeps nothing";
}

// --- Panning: the screen is 1024 by 768 pixels -----------------------------------------------------------------------

/// IMG-12: A picture that is no wider than the window does not move sideways, one no higher not up and down
TEST_F(ImageWindow, APictureSmallerThanTheWindowDoesNotMove) {
    show(300, 200);
    press(box(), {kMiddleButton, 0, 50, 50});
    move(90, 90);
    expectPlace(0, 0);
}

/// IMG-07: The middle button, or the left one with Shift, begins a pan and notes where
/// IMG-15: Between them it moves with the pointer, counted in the picture's own coordinates
/// IMG-12
TEST_F(ImageWindow, AWiderPictureMovesSideways) {
    show(1224, 400);
    expectPlace(-100, 0);
    press(box(), {kMiddleButton, 0, 500, 50});
    move(530, 90);
    expectPlace(-70, 0);
    move(520, 90);  // in the picture's own coordinates, which have moved with it
    expectPlace(-50, 0);
    move(490, 0);
    expectPlace(-60, 0);
}

/// IMG-07, IMG-12
TEST_F(ImageWindow, AHigherPictureMovesUpAndDown) {
    show(400, 968);
    expectPlace(0, -100);
    press(box(), {kLeftButton, kShiftMask, 50, 500});
    move(90, 460);
    expectPlace(0, -140);
}

/// IMG-13: Its left edge stops at the window's left edge, its right edge at the right one
/// IMG-14: Above and below alike
/// IMG-16: It is painted at once
TEST_F(ImageWindow, APanStopsAtThePicturesEdges) {
    show(1224, 968);
    press(box(), {kMiddleButton, 0, 500, 500});
    move(900, 900);
    expectPlace(0, 0);
    move(0, 0);
    expectPlace(-200, -200);
    move(700, 700);
    expectPlace(0, 0);
    EXPECT_EQ(machine.log.count("windows.refresh frmImageWindow"), 3);
}

/// IMG-09: A move pans while a pan is on, and only then
/// IMG-10: The right button's release pops the menu up and leaves the pan on; any other release ends it
TEST_F(ImageWindow, APanEndsWithTheButtonButNotWithTheRightOne) {
    show(1224, 400);
    press(box(), {kMiddleButton, 0, 500, 50});
    release(box(), {kRightButton, 0, 500, 50});
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
    move(510, 50);
    expectPlace(-90, 0);
    release(box(), {kMiddleButton, 0, 510, 50});
    move(600, 50);
    expectPlace(-90, 0);
}

/// IMG-08: Any other left press drags the window
/// IMG-09
TEST_F(ImageWindow, TheLeftButtonAloneDragsTheWindow) {
    show(1224, 400);
    press(box(), {kLeftButton, 0, 500, 50});
    move(600, 50);
    expectPlace(-100, 0);
    EXPECT_EQ(machine.log.count("windows.beginDrag frmImageWindow"), 1);
    press(box(), {kLeftButton, kCtrlMask, 500, 50});
    EXPECT_EQ(machine.log.count("windows.beginDrag frmImageWindow"), 2);
    press(box(), {kRightButton, 0, 500, 50});
    press(box(), {kMiddleButton, 0, 500, 50});
    EXPECT_EQ(machine.log.count("windows.beginDrag frmImageWindow"), 2);
}

/// IMG-13
TEST_F(ImageWindow, APictureThatIsAnOddNumberLargerPansToBothEdges) {
    show(1225, 971);
    expectPlace(-100.5F, -101.5F);
    press(box(), {kMiddleButton, 0, 500, 500});
    move(0, 0);
    expectPlace(-201, -203);
    move(900, 900);
    expectPlace(0, 0);
}

/// Zoomed, a picture has a size in parts of pixels; how far it hangs over counts in whole ones.
/// IMG-13
TEST_F(ImageWindow, APanStopsAWholeNumberOfPixelsBehindTheEdge) {
    show(300, 200);
    for (const auto& [over, whole] :
         {std::pair{100.4F, 100.0F}, {100.6F, 101.0F}, {100.5F, 100.0F}, {101.5F, 102.0F}}) {
        SCOPED_TRACE(over);
        box().SetSize(300 + over, 200 + over);
        box().Move(0, 0);
        press(box(), {kMiddleButton, 0, 250, 250});
        move(0, 0);
        expectPlace(-whole, -whole);
    }
}

/// IMG-10
TEST_F(ImageWindow, AnyButtonButTheRightOneEndsAPan) {
    show(1224, 400);
    for (const int shift : {0, kShiftMask}) {
        for (const int released : {kLeftButton, kMiddleButton, kRightButton}) {
            SCOPED_TRACE(std::to_string(shift) + " " + std::to_string(released));
            box().Move(-100, 0);
            press(box(), {shift != 0 ? kLeftButton : kMiddleButton, shift, 500, 50});
            release(box(), {released, 0, 500, 50});
            move(510, 50);
            expectPlace(released == kRightButton ? -90 : -100, 0);
            release(box(), {kMiddleButton, 0, 500, 50});
        }
    }
}

// --- Keys and the window ---------------------------------------------------------------------------------------------

TEST_F(ImageWindow, TakesTheCommandKeys) {
    show(100, 100, 5);
    typeKey(*imageWindow(), 'x');
    EXPECT_EQ(state(), "paused");
    typeKey(*imageWindow(), 'z');
    EXPECT_EQ(state(), "playing");
    typeKey(*imageWindow(), 'c');
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(imageWindow(), nullptr);
}

/// IMG-11: A double-click minimises the window whatever the zoom; play shows it again
TEST_F(ImageWindow, ADoubleClickMinimisesAndPlayShowsItAgain) {
    show(100, 100);
    machine.loop.enter([this] { box().DblClick.raise(); });
    EXPECT_EQ(imageWindow()->WindowState.get(), WindowState::Minimized);
    EXPECT_EQ(state(), "playing");
    PauseFile(player);
    PlayFile(player);
    EXPECT_EQ(imageWindow()->WindowState.get(), WindowState::Normal);
    EXPECT_TRUE(imageWindow()->Visible);
}

/// IMG-18: Alt alone pops the menu up at its release, and Alt and F4 end the player
TEST_F(ImageWindow, AltAloneOpensTheMenuAndAltF4EndsThePlayer) {
    show(100, 100);
    machine.loop.enter([this] { imageWindow()->KeyDown.raise({kKeyAlt, kAltMask}); });
    machine.loop.enter([this] { imageWindow()->KeyUp.raise({kKeyAlt, 0}); });
    EXPECT_NE(machine.dialogs.poppedUp, nullptr);
    machine.loop.enter([this] { imageWindow()->KeyDown.raise({kKeyF4, kAltMask}); });
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
    EXPECT_EQ(imageWindow(), nullptr);
}

/// IMG-18
TEST_F(ImageWindow, AltWithAnotherShiftStateDoesNotArmTheMenu) {
    show(100, 100);
    machine.loop.enter([this] { imageWindow()->KeyDown.raise({kKeyAlt, kAltMask | kShiftMask}); });
    EXPECT_FALSE(player.gAltMenuArmed);
    machine.loop.enter([this] { imageWindow()->KeyDown.raise({kKeyF4, kAltMask | kCtrlMask}); });
    EXPECT_NE(player.forms.find<MainPanelControls>(), nullptr);
}

/// IMG-21: A close by the window manager stops
TEST_F(ImageWindow, ACloseRequestStops) {
    show(100, 100);
    machine.loop.enter([this] { imageWindow()->CloseRequest.raise(false); });
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(imageWindow(), nullptr);
}

/// IMG-19: In window mode 2, and in no other, it stays on top, whatever the movie zoom
TEST_F(ImageWindow, IsTopMostInThatWindowModeWhateverTheMovieZoom) {
    player.gWindowPos = 2;
    player.gMovieZoom = kFullScreenZoom;
    machine.addPicture("/m/view.bmp", 10, 10);
    setUpPanel();
    setList({"/m/view.bmp"});
    PlayFile(player);
    EXPECT_EQ(machine.calls("windows").at(1).substr(0, 38), "windows.SetWindowPos frmImageWindow -1");
}

/// IMG-20: When it is activated while it shows it takes the keyboard
TEST_F(ImageWindow, AShownWindowTakesTheKeyboard) {
    show(100, 100);
    EXPECT_EQ(machine.windows.focused(), &box());
}

/// IMG-29: Closing a kept picture leaves what plays
TEST_F(ImageWindow, ClosingAKeptPictureLeavesWhatPlays) {
    player.gImageHide = false;
    show(100, 100);
    machine.loop.enter([this] { NextFile(player); });
    machine.settle();
    ASSERT_NE(imageWindow(), nullptr) << "kept behind the sound";
    machine.loop.enter([this] { imageWindow()->CloseRequest.raise(false); });
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(state(), "playing");
    ASSERT_NE(machine.media.mci(), nullptr);
    EXPECT_TRUE(machine.media.mci()->isPlaying());
    machine.loop.enter([this] { CloseFile(player, false); });
}

}  // namespace
}  // namespace corvane
