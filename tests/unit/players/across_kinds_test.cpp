// SPDX-License-Identifier: GPL-3.0-or-later
#include <tuple>

#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

const std::vector<std::string> kPaths = {"/m/song.wav", "/m/clip.avi", "/m/view.bmp", "/cd/Track01.cda", "/m/tune.mid"};
constexpr std::int16_t kKinds[] = {mkMciFile, mkMovie, mkImage, mkCDTrack, mkMciFile};

/// First and second file, repeat, image-hide.
using Pair = std::tuple<int, int, bool, bool>;

class AcrossKinds : public PlayerFixture, public ::testing::WithParamInterface<Pair> {
protected:
    AcrossKinds() {
        machine.addSound(kPaths[0], 2000);
        machine.addSound(kPaths[4], 2000);
        machine.addMovie(kPaths[1], 2, 320, 240);
        machine.addPicture(kPaths[2], 100, 100);
        machine.addDisc("/cd", {2, 2});
        player.gInterval = 2;
    }
    void expectOnlyWindowsOf(std::int16_t kind) {
        EXPECT_EQ(player.gMediaKind, kind);
        EXPECT_EQ(mciWindow() != nullptr, kind >= mkMciFile);
        EXPECT_EQ(movieWindow() != nullptr, kind == mkMovie);
        const bool image = kind == mkImage || (!player.gImageHide && wasImage_);
        ASSERT_EQ(imageWindow() != nullptr, image);
        if (image) {
            EXPECT_TRUE(imageWindow()->Visible) << "a kept one is seen behind the next file";
        }
        EXPECT_EQ(machine.media.liveControls(), kind >= mkMovie ? 1 : 0);
    }
    bool wasImage_ = false;  ///< a picture was the file before
};

/// SEQ-03: The present file is closed, keeping a picture only from a picture on and with image-hide off, and the new
///     one plays
/// KIND-18, MOVE-43
TEST_P(AcrossKinds, OneFileFollowsAnotherByItself) {
    const auto [first, second, repeat, hide] = GetParam();
    player.gRepeat = repeat;
    player.gImageHide = hide;
    setUpPanel();
    setList({kPaths[static_cast<std::size_t>(first)], kPaths[static_cast<std::size_t>(second)]});
    PlayFile(player);
    expectOnlyWindowsOf(kKinds[first]);
    EXPECT_EQ(label(kNumberLabel), "001");
    for (int waited = 0; player.gFileIndex == 0 && waited < 5000; waited += 10) machine.advance(10);
    ASSERT_EQ(player.gFileIndex, 1);
    wasImage_ = kKinds[first] == mkImage;
    expectOnlyWindowsOf(kKinds[second]);
    EXPECT_EQ(label(kNumberLabel), "002");
    EXPECT_EQ(state(), "playing");
    machine.advance(1000);
    EXPECT_EQ(player.gFileIndex, 1) << "no late event of the first file skips the second";
    EXPECT_NE(label(kTimeLabel), "");

    for (int waited = 0; player.gFileIndex == 1 && waited < 5000; waited += 10) machine.advance(10);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(state(), repeat ? "playing" : "stopped");
    wasImage_ = repeat && kKinds[second] == mkImage;
    expectOnlyWindowsOf(repeat ? kKinds[first] : mkNone);
}

/// KIND-19: A kind that names no device finds a fresh window, because each close unloads it
/// MOVE-13, MOVE-27
TEST_P(AcrossKinds, NextPreviousAndStopLeaveNothingBehind) {
    const auto [first, second, repeat, hide] = GetParam();
    player.gRepeat = repeat;
    player.gImageHide = hide;
    setUpPanel();
    setList({kPaths[static_cast<std::size_t>(first)], kPaths[static_cast<std::size_t>(second)]});
    PlayFile(player);
    machine.advance(700);
    NextFile(player);
    machine.advance(700);
    PauseFile(player);
    machine.advance(100);
    PlayFile(player);
    PrevFile(player);
    PrevFile(player);
    machine.advance(700);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(player.gMediaKind, kKinds[first]);
    CloseFile(player, false);
    expectOnlyWindowsOf(mkNone);
    EXPECT_EQ(machine.windows.attached().size(), 2U) << "menu and panel";
    EXPECT_EQ(machine.timers.running(), 1) << "the panel's display";
    machine.advance(5000);
    EXPECT_EQ(state(), "stopped");
}

INSTANTIATE_TEST_SUITE_P(EveryPair, AcrossKinds,
                         ::testing::Combine(::testing::Range(0, 5), ::testing::Range(0, 5), ::testing::Bool(),
                                            ::testing::Bool()));

class ManyChanges : public AcrossKinds {};

/// MOVE-45: Any order of commands leaves a sane state
TEST_P(ManyChanges, LeaveNothingBehind) {
    constexpr int kChanges = 20000;
    player.gRepeat = true;
    player.gImageHide = std::get<3>(GetParam());
    setUpPanel();
    setList(kPaths);
    PlayFile(player);
    for (int change = 1; change <= kChanges; ++change) {
        machine.advance(change % 3 * 300);
        NextFile(player);
        ASSERT_EQ(player.gFileIndex, change % 5);
        if (change % 1000 == 0) machine.clearCalls();
    }
    EXPECT_EQ(state(), "playing");
    CloseFile(player, false);
    expectOnlyWindowsOf(mkNone);
    EXPECT_EQ(machine.windows.attached().size(), 2U);
    EXPECT_EQ(machine.timers.running(), 1);
    EXPECT_TRUE(machine.loop.idle());
}

INSTANTIATE_TEST_SUITE_P(ImageHide, ManyChanges, ::testing::Values(Pair{0, 0, true, false}, Pair{0, 0, true, true}));

}  // namespace
}  // namespace corvane
