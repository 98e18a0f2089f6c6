// SPDX-License-Identifier: GPL-3.0-or-later
// Three days of play on the virtual clock: nothing piles up, nothing drifts, nothing is left out.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <vector>

#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;

constexpr std::int64_t kHourMs = 3'600'000;
constexpr std::int64_t kHours = 72;
constexpr int kPictureSeconds = 5;

class LongPlay : public PlayerFixture {
protected:
    LongPlay() {
        machine.addSound("/m/march.mid", 183'000);
        machine.addSound("/m/bell.wav", 2'500);
        machine.addMovie("/m/walk.avi", 90.5, 320, 240);
        machine.addSound("/m/song.mp3", 241'370);
        machine.addPicture("/m/sea.jpg", 640, 480);
        machine.addDisc("/cd", {200, 75});
        machine.addMovie("/m/run.mpg", 61, 352, 288);
        files = {"/m/march.mid", "/m/bell.wav", "/m/walk.avi",     "/m/song.mp3",
                 "/m/sea.jpg",   "/m/run.mpg",  "/cd/Track01.cda", "/cd/Track02.cda"};
        player.gInterval = kPictureSeconds;
        setUpPanel();
        setList(files);
        click(kRepeat);
    }

    /// What must not grow: running timers, media controls, windows.
    std::vector<std::size_t> held() {
        return {static_cast<std::size_t>(machine.timers.running()),
                static_cast<std::size_t>(machine.media.liveControls()), machine.windows.attached().size()};
    }

    /// Lets the time pass until the first file plays again; how often each file was begun meanwhile.
    std::vector<int> playOneRound() {
        std::vector<int> begun(files.size());
        std::uint32_t seen = player.opening.number;
        const std::int64_t latest = machine.clock.milliseconds() + kHourMs;
        do {
            machine.advance(10);
            if (player.opening.number == seen) continue;
            EXPECT_EQ(player.opening.number, seen + 1) << "a file was passed over";
            seen = player.opening.number;
            ++begun[static_cast<std::size_t>(player.gFileIndex)];
        } while (begun[0] == 0 && machine.clock.milliseconds() < latest);
        return begun;
    }

    std::vector<std::string> files;
};

/// FAULT-14: In three days of play each file of each round is begun once, no timer, window or device is left over, and
///     no time is lost
TEST_F(LongPlay, SeventyTwoHoursLeaveNothingBehind) {
    click(kPlay);
    playOneRound();
    const std::vector<int> each(files.size(), 1);
    const std::vector<std::size_t> atFirst = held();
    const std::int64_t began = machine.clock.milliseconds();
    EXPECT_EQ(playOneRound(), each);
    const std::int64_t roundMs = machine.clock.milliseconds() - began;
    std::int64_t rounds = 1;
    while (machine.clock.milliseconds() - began < kHours * kHourMs && !HasFailure()) {
        machine.clearCalls();
        EXPECT_EQ(playOneRound(), each) << "round " << rounds;
        EXPECT_EQ(held(), atFirst) << "round " << rounds;
        EXPECT_EQ(state(), "playing") << "round " << rounds;
        ++rounds;
    }
    EXPECT_EQ(machine.clock.milliseconds() - began, rounds * roundMs) << "the time drifts";
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    click(kStop);
    machine.advance(1000);
    EXPECT_EQ(machine.media.liveControls(), 0);
}

/// FAULT-15: A sound of three days shows its time to the end and ends
TEST_F(LongPlay, ALongSoundIsToldItsTimeToTheEnd) {
    machine.addSound("/m/three_days.wav", static_cast<std::int32_t>(kHours * kHourMs));
    setList({"/m/three_days.wav"});
    click(kRepeat);
    click(kPlay);
    for (std::int64_t hour = 1; hour < kHours; ++hour) {
        machine.advance(kHourMs);
        machine.clearCalls();
        ASSERT_EQ(state(), "playing") << "hour " << hour;
        EXPECT_NEAR(panel().pctSlide.Width.get(), 3000.0 * static_cast<double>(hour) / kHours, 1) << "hour " << hour;
    }
    machine.advance(kHourMs + 1000);
    EXPECT_EQ(state(), "stopped");
}

}  // namespace
}  // namespace corvane
