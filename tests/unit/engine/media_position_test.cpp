// SPDX-License-Identifier: GPL-3.0-or-later
#include <limits>

#include "unit/engine/session_fixture.h"

namespace corvane {
namespace {

/// REM-08: Positions are sought by an offset or for the track that is meant, in every kind
TEST_F(Session, SeeksByAnOffset) {
    openThree();
    play(10000);
    ask([](MediaSession& s) { return s.seekBy(5 * kSecond + 250'000); });
    EXPECT_DOUBLE_EQ(seconds(), 15.25);
    EXPECT_EQ(label(kTimeLabel), "00:15");
    EXPECT_FLOAT_EQ(panel().pctSlide.Width, static_cast<float>(player.gSlideWidth) * 15.25F / 60);
    EXPECT_EQ(seeked, (std::vector<std::int64_t>{15 * kSecond + 250'000}));
    machine.advance(2000);
    EXPECT_DOUBLE_EQ(seconds(), 17.25) << "it plays on";
    ask([](MediaSession& s) { return s.seekBy(-100 * kSecond); });
    EXPECT_DOUBLE_EQ(seconds(), 0);
    ask([](MediaSession& s) { return s.seekBy(std::numeric_limits<std::int64_t>::min()); });
    EXPECT_DOUBLE_EQ(seconds(), 0);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(seeked.size(), 3U) << "each is told, also one to where it stands";
}

/// REM-09: A seek beyond the end is next, and while stopped nothing is sought
TEST_F(Session, ASeekBeyondTheEndIsNext) {
    openThree();
    play(1000);
    ask([](MediaSession& s) { return s.seekBy(std::numeric_limits<std::int64_t>::max()); });
    EXPECT_EQ(now().title, "two");
    EXPECT_EQ(state(), "playing");
    pause();
    ask([](MediaSession& s) { return s.seekBy(61 * kSecond); });
    EXPECT_EQ(now().title, "three");
    EXPECT_EQ(now().status, Status::Paused);
    ask([](MediaSession& s) { return s.seekBy(60 * kSecond); });
    EXPECT_EQ(now().title, "three") << "the end itself is inside";
    ask([](MediaSession& s) { return s.seekBy(1); });
    EXPECT_EQ(state(), "stopped");
}

/// REM-08
TEST_F(Session, SetsThePositionOfTheTrackThatIsMeantAlone) {
    openThree();
    play(1000);
    const std::uint32_t track = now().track;
    ask([track](MediaSession& s) { return s.seekTo(track, 30 * kSecond); });
    EXPECT_DOUBLE_EQ(seconds(), 30);
    for (const std::int64_t outside : {-1 * std::int64_t{1}, 60 * kSecond + 1}) {
        ask([&](MediaSession& s) { return s.seekTo(track, outside); });
        EXPECT_DOUBLE_EQ(seconds(), 30);
    }
    ask([track](MediaSession& s) { return s.seekTo(track + 1, 40 * kSecond); });
    EXPECT_DOUBLE_EQ(seconds(), 30) << "a stale number";
    ask([](MediaSession& s) { return s.next(); });
    ask([track](MediaSession& s) { return s.seekTo(track, 40 * kSecond); });
    EXPECT_DOUBLE_EQ(seconds(), 0);
    EXPECT_EQ(seeked.size(), 1U);
}

/// REM-09
TEST_F(Session, WhileStoppedNothingCanBeSought) {
    openThree();
    const std::uint32_t track = now().track;
    ask([](MediaSession& s) { return s.seekBy(kSecond); });
    ask([track](MediaSession& s) { return s.seekTo(track, kSecond); });
    EXPECT_TRUE(seeked.empty() && mediaCalls().empty());
    EXPECT_EQ(session.positionUs(), 0);
}

/// REM-08
TEST_F(Session, SeeksInEveryKindPlayingAndPaused) {
    player.gInterval = 20;
    open({"/m/clip.avi", "/m/view.bmp", "/cd/Track02.cda", "/m/one.wav"});
    play(2000);
    for (const double length : {40.0, 20.0, 270.0, 60.0}) {
        const std::string title = now().title;
        EXPECT_DOUBLE_EQ(static_cast<double>(now().lengthUs) / kSecond, length) << title;
        EXPECT_TRUE(now().canSeek) << title;
        ask([&](MediaSession& s) { return s.seekTo(now().track, 7 * kSecond); });
        EXPECT_DOUBLE_EQ(seconds(), 7) << title;
        machine.advance(2000);
        EXPECT_NEAR(seconds(), 9, 0.02) << title << " plays on";
        pause();
        forget();
        ask([&](MediaSession& s) { return s.seekTo(now().track, 15 * kSecond); });
        EXPECT_EQ(seeked, (std::vector<std::int64_t>{15 * kSecond})) << title;
        EXPECT_EQ(label(kTimeLabel), title == "clip" ? "15" : "00:15");
        EXPECT_FLOAT_EQ(panel().pctSlide.Width, static_cast<float>(player.gSlideWidth * 15 / length)) << title;
        machine.advance(1000);
        EXPECT_DOUBLE_EQ(seconds(), 15) << title << " holds";
        EXPECT_EQ(now().status, Status::Paused) << title;
        play(2000);
        EXPECT_NEAR(seconds(), 17, 0.02) << title << " goes on from there";
        ask([](MediaSession& s) { return s.next(); });
        machine.advance(2000);
    }
}

/// REM-21: A picture that stays has no length, and a second of a disc has 75 frames
TEST_F(Session, APictureThatStaysHasNoLength) {
    player.gInterval = 0;
    open({"/m/view.bmp"});
    play(5000);
    EXPECT_EQ(now().lengthUs, 0);
    EXPECT_FALSE(now().canSeek);
    EXPECT_TRUE(seeked.empty());
}

/// REM-21
TEST_F(Session, ASecondOfADiscIsSeventyFiveFrames) {
    open({"/cd/Track02.cda"});
    play(1000);
    ask([](MediaSession& s) { return s.seekTo(s.state().track, 83 * kSecond + 500'000); });
    EXPECT_EQ(session.positionUs(), 83 * kSecond + 37 * kSecond / 75);
    EXPECT_EQ(label(kTimeLabel), "01:23");
}

/// REM-08
TEST_F(Session, ASeekOnADiscNamesTheTrackAndGoesOnToItsEnd) {
    open({"/cd/Track02.cda"});
    play(1000);
    forget();
    ask([](MediaSession& s) { return s.seekTo(s.state().track, 65 * kSecond); });
    const std::string from = std::to_string(2 + 1 * 0x100 + 5 * 0x10000);
    const std::string to = std::to_string(2 + 4 * 0x100 + 30 * 0x10000);
    EXPECT_EQ(mediaCalls(),
              (std::vector<std::string>{"mci.Track 2", "mci.From " + from, "mci.To " + to, "mci.Command Play"}));
}

/// REM-10
TEST_F(Session, ATrackAfterASeekIsExpectedAtItsBeginning) {
    openThree();
    play(1000);
    ask([](MediaSession& s) { return s.seekTo(s.state().track, 30 * kSecond); });
    forget();
    ask([](MediaSession& s) { return s.next(); });
    machine.advance(2000);
    act([] {});
    EXPECT_TRUE(seeked.empty());
}

/// REM-10
TEST_F(Session, ASoundASecondAwayIsTold) {
    openThree();
    play(10000);
    act([this] {
        MciControl& sound = *mciWindow()->mmcMci;
        sound.To(11000);
        sound.Command("Seek");
        sound.Command("Play");
    });
    EXPECT_EQ(seeked, (std::vector<std::int64_t>{11 * kSecond}));
}

/// REM-10
TEST_F(Session, APictureIsToldFromTwoSecondsOn) {
    player.gInterval = 20;
    open({"/m/view.bmp"});
    play(5000);
    act([this] { ++player.gImageElapsed; });
    EXPECT_TRUE(seeked.empty()) << "it counts whole seconds";
    act([this] { ++player.gImageElapsed; });
    EXPECT_EQ(seeked, (std::vector<std::int64_t>{7 * kSecond}));
}

/// REM-10: Jumps that were made elsewhere are told
TEST_F(Session, TellsJumpsThatWereMadeElsewhere) {
    openThree();
    play(20000);
    pause();
    forget();
    click(kNext);  // steps a second
    EXPECT_EQ(seeked, (std::vector<std::int64_t>{21 * kSecond}));
    play(1000);
    forget();
    click(kPrev);  // once: the file begins again
    machine.advance(machine.windows.doubleClickMs + 1000);
    ASSERT_EQ(seeked.size(), 1U);
    EXPECT_LT(seeked[0], kSecond);
    forget();
    press(panel().pctSlide, {kLeftButton, 0, 0, 0});
    act([this] { panel().pctSlide.MouseMove.raise({0, 0, 1500, 0}); });
    release(panel().pctSlide, {kLeftButton, 0, 1500, 0});
    EXPECT_EQ(seeked, (std::vector<std::int64_t>{30 * kSecond}));
}

/// REM-10
TEST_F(Session, TellsATrackThatBeginsElsewhere) {
    openThree();
    player.gCustomMode = mdlDefinePublic::kCustomPlay;
    player.gStartPosition[1] = 12000;
    play(1000);
    EXPECT_TRUE(seeked.empty());
    ask([](MediaSession& s) { return s.next(); });
    machine.advance(1000);
    ASSERT_EQ(seeked.size(), 1U);
    EXPECT_NEAR(static_cast<double>(seeked[0]), 12.0 * kSecond, 0.2 * kSecond);
}

TEST_F(Session, AMoviesDelayIsNoJumpBehindItsBeginningEither) {
    player.gDelayTime = 3000;
    open({"/m/clip.avi"});
    play(200);
    ask([](MediaSession& s) { return s.seekTo(s.state().track, 20 * kSecond); });
    machine.advance(2500);
    EXPECT_EQ(seeked, (std::vector<std::int64_t>{20 * kSecond})) << "it stands there until the delay is over";
    machine.advance(1500);
    EXPECT_EQ(seeked.size(), 2U);
}

TEST_F(Session, ASoundThatTakesItsTimeToBeginIsNoJumpUntilItDoes) {
    openThree();
    play();
    act([this] { mciWindow()->mmcMci->Command("Stop"); });
    machine.advance(3000);
    EXPECT_EQ(now().status, Status::Playing);
    EXPECT_TRUE(seeked.empty());
    act([this] { mciWindow()->mmcMci->Command("Play"); });
    machine.advance(1000);
    ASSERT_EQ(seeked.size(), 1U);
    EXPECT_LT(seeked[0], kSecond);
}

TEST_F(Session, AMoviesDelayIsNoJumpUntilItIsOver) {
    player.gDelayTime = 3000;
    open({"/m/clip.avi"});
    play(2500);
    EXPECT_EQ(now().status, Status::Playing);
    EXPECT_TRUE(seeked.empty());
    machine.advance(2500);
    ASSERT_EQ(seeked.size(), 1U) << "it is three seconds behind who counted on";
    EXPECT_NEAR(static_cast<double>(seeked[0]), 0.0, 1.0 * kSecond);
}

}  // namespace
}  // namespace corvane
