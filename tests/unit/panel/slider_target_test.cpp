// SPDX-License-Identifier: GPL-3.0-or-later
// Where a drag on the slider seeks to, and when it does not.
#include "unit/panel/slider_hands.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

/// SLIDER-22: A target that lies on a half is rounded as one
TEST_F(Slider, ATargetThatLiesOnAHalfIsRoundedAsOne) {
    machine.addSound("/m/odd.wav", 60010);
    bring("/m/odd.wav", "paused");
    player.gSlideWidth = 5100;
    down();
    moveTo(345);
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 4060) << "60010 x 345 / 5100 is 4059.5";
    moveTo(255);
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 3000) << "3000.5";
}

/// SLIDER-06
TEST_F(Slider, ItsEndsTakeNoDrag) {
    bring(kSound, "paused");
    down();
    for (const float x : {-1.0F, 0.0F, 0.4F, 0.5F, 2999.5F, 3000.0F, 3001.0F}) {
        machine.clearCalls();
        moveTo(x);
        EXPECT_TRUE(mediaCalls().empty()) << x;
    }
    for (const float x : {0.6F, 1.0F, 2999.0F, 2999.4F}) {
        machine.clearCalls();
        moveTo(x);
        EXPECT_FALSE(mediaCalls().empty()) << x;
    }
}

/// SLIDER-23: Without a width it takes no drag
TEST_F(Slider, WithoutAWidthItTakesNoDrag) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        for (const std::int32_t width : {0, 1}) {
            bring(path, "paused");
            player.gSlideWidth = width;
            machine.clearCalls();
            down();
            for (const float x : {-1.0F, 0.0F, 1.0F, 100.0F}) moveTo(x);
            act([this] { panel().pctSlide.SetAccessibleValue.raise(10); });
            EXPECT_TRUE(mediaCalls().empty()) << path;
            up();
            act([this] { panel().pctSlide.SetAccessibleValue.raise(10); });
            EXPECT_TRUE(mediaCalls().empty()) << path;
            EXPECT_EQ(state(), "paused");
            player.gSlideWidth = 3000;
            act([this] { CloseFile(player, false); });
        }
    }
}

/// SLIDER-24: A movie that has ended and waits for its delay is not brought back, by slider, step or play
TEST_F(Slider, AMovieThatHasEndedIsNotBroughtBack) {
    bring(kMovie, "playing");
    machine.advance(39900);
    machine.advance(200);
    EXPECT_FALSE(movieWindow()->Visible) << "it has ended";
    machine.clearCalls();
    down();
    moveTo(1500);
    up();
    EXPECT_TRUE(mediaCalls().empty());
    EXPECT_EQ(player.gSlideState, 0);
    machine.advance(player.gDelayTime);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

/// SLIDER-24
TEST_F(Slider, ADragThatIsHeldAtAMoviesEndSeeksNoMore) {
    bring(kMovie, "playing");
    machine.advance(39990);
    player.gSlideState = 2;  // a drag that began before
    machine.advance(20);
    machine.clearCalls();
    moveTo(1500);
    EXPECT_TRUE(mediaCalls().empty());
}

/// SLIDER-24
TEST_F(Slider, APauseAndAPlayAfterAMoviesEndLeaveItsHandOverAlone) {
    bring(kMovie, "playing");
    machine.advance(40100);
    machine.clearCalls();
    act([this] { PauseFile(player); });
    act([this] { PrevFile(player); });
    act([this] { NextFile(player); });
    act([this] { PlayFile(player); });
    EXPECT_EQ(machine.log.count("movie.Run"), 0);
    for (const std::string& call : mediaCalls()) EXPECT_EQ(call.find("movie.CurrentPosition "), std::string::npos);
    machine.advance(player.gDelayTime);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

/// SLIDER-25: A right button that is taken away ends its drag, without a menu
TEST_F(Slider, ARightButtonTakenAwayEndsItsDragWithoutAMenu) {
    bring(kSound, "playing");
    press(panel().pctSlide, kRight);
    EXPECT_EQ(state(), "paused");
    release(panel().pctSlide, {0, 0, 0, 0});
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gSlideState, 0);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
}

}  // namespace
}  // namespace corvane
