// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/moving_picture.h"

#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Moving : public PlayerFixture {
protected:
    static constexpr int kFrameMs = 50;

    void SetUp() override {
        for (const char* path : {"/m/a.gif", "/m/b.gif", "/m/c.jpg"}) machine.addPicture(path, 40, 30);
        player.conveniences.kinds = true;
        player.gInterval = 0;
        setUpPanel();
        setList({"/m/a.gif", "/m/b.gif", "/m/c.jpg"});
    }
    /// Frames of one colour each, numbered from 1.
    void addFrames(int count, bool ends = false, int ms = kFrameMs, int width = 40) {
        auto& frames = machine.pictures.moving["/m/a.gif"];
        for (int i = 1; i <= count; ++i) {
            frames.push_back({makePicture(width, 30, {static_cast<std::uint32_t>(i)}), ms, ends && i == count});
        }
    }
    void play() {
        act([this] { PlayFile(player); });
        machine.settle();
    }
    /// Number of the frame that is shown; 0x808080: the still picture.
    std::uint32_t shown() { return imageWindow()->pctImage.Picture.get().data()->pixel(0, 0); }
    int asked() const { return machine.pictures.framesAsked; }

    MovingPicture moving{player};
};

constexpr std::uint32_t kStill = 0x808080;

/// ANIM-08: Without an interval a picture with several frames moves: each is seen for its own time, the last one stays
TEST_F(Moving, EachFrameIsSeenForItsTime) {
    addFrames(3, true);
    play();
    EXPECT_EQ(shown(), 1U);
    machine.advance(kFrameMs - 1);
    EXPECT_EQ(shown(), 1U);
    machine.advance(1);
    EXPECT_EQ(shown(), 2U);
    machine.advance(kFrameMs);
    EXPECT_EQ(shown(), 3U);
    machine.advance(10'000);
    EXPECT_EQ(shown(), 3U);
    EXPECT_EQ(asked(), 3) << "nothing is asked for behind the last one";
    EXPECT_EQ(label(kTimeLabel), "99:99");
}

/// ANIM-08
TEST_F(Moving, OneIsDecodedAheadAndNoMore) {
    addFrames(100);
    play();
    EXPECT_EQ(asked(), 2);
    machine.advance(kFrameMs);
    EXPECT_EQ(asked(), 3);
}

/// ANIM-09: With an interval, where less motion is asked for and in a plain start the first one stands
TEST_F(Moving, WhereItIsNotWantedTheFirstStands) {
    addFrames(3);
    const std::vector<std::function<void(bool)>> reasons = {
        [this](bool holds) { player.gInterval = holds ? 5 : 0; },
        [this](bool holds) { machine.windows.reducedMotion = holds; },
        [this](bool holds) { player.conveniences.kinds = !holds; }};
    for (const auto& reason : reasons) {
        reason(true);
        play();
        EXPECT_EQ(shown(), kStill);
        EXPECT_EQ(asked(), 0);
        act([this] { CloseFile(player, false); });
        reason(false);
    }
    play();
    EXPECT_EQ(shown(), 1U);
}

/// ANIM-10: Nothing is decoded for a window that is minimised or a picture that is held; then it goes on
TEST_F(Moving, UnseenItStands) {
    addFrames(100);
    play();
    const auto standsAndGoesOn = [this](const std::function<void()>& hide, const std::function<void()>& show) {
        const std::uint32_t now = shown();
        act(hide);
        const int before = asked();
        machine.advance(60'000);
        EXPECT_EQ(shown(), now);
        EXPECT_LE(asked(), before);
        act(show);
        machine.settle();
        EXPECT_EQ(shown(), now + 1);
        machine.advance(kFrameMs);
        EXPECT_EQ(shown(), now + 2);
    };
    standsAndGoesOn([this] { imageWindow()->WindowState = WindowState::Minimized; },
                    [this] { imageWindow()->WindowState = WindowState::Normal; });
    standsAndGoesOn([this] { PauseFile(player); }, [this] { PlayFile(player); });
    machine.windows.reducedMotion = true;
    machine.advance(60'000);
    const std::uint32_t now = shown();
    machine.advance(60'000);
    EXPECT_EQ(shown(), now) << "less motion was asked for meanwhile";
}

/// ANIM-11: What comes of a picture that is closed, or behind which another one is shown, is dropped
TEST_F(Moving, WhatIsLateIsDropped) {
    addFrames(100);
    player.gImageHide = false;
    act([this] { PlayFile(player); });
    act([this] { NextFile(player); });
    machine.settle();
    EXPECT_EQ(shown(), kStill);
    act([this] { PrevFile(player), PrevFile(player); });
    machine.settle();
    EXPECT_EQ(shown(), 1U);
    act([this] { CloseFile(player, true); });
    machine.advance(60'000);
    EXPECT_EQ(shown(), 1U) << "a kept picture stands";
    act([this] { CloseFile(player, false); });
    machine.advance(60'000);
    EXPECT_EQ(imageWindow(), nullptr);
}

/// ANIM-11
TEST_F(Moving, AnotherSizeThanTheFirstPicturesIsNotShown) {
    addFrames(2);
    addFrames(3, false, kFrameMs, 41);
    play();
    machine.advance(60'000);
    EXPECT_EQ(shown(), 2U);
    EXPECT_EQ(asked(), 3);
}

/// ANIM-12: No frame is seen for less than 20 ms, nor than a window of its size takes to be painted
TEST_F(Moving, AFloodOfFramesIsSlowedDown) {
    addFrames(1000, false, 1);
    play();
    machine.advance(1000);
    EXPECT_EQ(shown(), 51U);
    act([this] {
        imageWindow()->Width = 3000 * 15;
        imageWindow()->Height = 2000 * 15;
    });
    machine.advance(2 * MovingPicture::kLeastFrameMs);
    const std::uint32_t now = shown();
    machine.advance(600);
    EXPECT_EQ(shown(), now + 10);
}

/// ANIM-08
TEST_F(Moving, WhatHoldsOnePictureStands) {
    play();
    machine.advance(1000);
    EXPECT_EQ(shown(), kStill);
    EXPECT_EQ(asked(), 1);
    act([this] { NextFile(player), NextFile(player); });
    EXPECT_EQ(asked(), 1) << "no other type is asked for frames";
}

}  // namespace
}  // namespace corvane
