// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mci_clock.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr int kLook = 50;  // milliseconds between two reports

/// WIN-20
TEST(MciClock, StandsUntilItIsStartedAndWhenItIsHeld) {
    MciClock clock;
    clock.hold(700);
    EXPECT_EQ(clock.place(5000), 700);
    clock.report(900, 5000);
    EXPECT_EQ(clock.place(6000), 700) << "what a standing device says counts for nothing";
    clock.start(700, 6000);
    EXPECT_EQ(clock.place(6000), 700);
    EXPECT_EQ(clock.place(6300), 1000);
    clock.hold(1000);
    EXPECT_EQ(clock.place(9000), 1000);
}

/// WIN-20
TEST(MciClock, CountsInItsUnit) {
    MciClock clock(75);
    clock.start(150, 0);
    EXPECT_EQ(clock.place(400), 180);
}

/// A device that tells what it has queued, a third of a second at a time and two of them ahead.
/// WIN-20: The time counts between the steps of a coarse device and believes an exact one
TEST(MciClock, CountsBetweenTheStepsOfACoarseDevice) {
    MciClock clock;
    clock.start(0, 0);
    std::int64_t before = 0;
    for (int now = kLook; now <= 3000; now += kLook) {
        clock.report(now / 333 * 333 + 666, now);
        const std::int64_t seen = clock.place(now);
        EXPECT_NEAR(static_cast<double>(seen), now, 2) << now;
        EXPECT_GE(seen, before) << now;
        before = seen;
    }
}

/// A device in steps that starts late is not left far behind, nor far ahead.
/// WIN-20
TEST(MciClock, IsHeldNearACoarseDevice) {
    MciClock clock;
    clock.start(0, 0);
    for (int now = kLook; now <= 3000; now += kLook) clock.report(333, now);  // it has stopped going on
    EXPECT_LE(clock.place(3000), 333 + 400);
    clock.report(5000, 3000);  // and has leapt
    EXPECT_GE(clock.place(3000), 5000 - 1000);
}

/// WIN-20
TEST(MciClock, BelievesADeviceThatTellsItsPlaceExactly) {
    MciClock clock;
    clock.start(0, 0);
    const int late = 120;  // it was slow to begin
    for (int now = late; now <= 2000; now += kLook) clock.report(now - late, now);
    EXPECT_NEAR(static_cast<double>(clock.place(2000)), 2000 - late, kLook);
    for (int now = 2000; now <= 4000; now += kLook) clock.report(9000 + now, now);
    EXPECT_NEAR(static_cast<double>(clock.place(4000)), 13000, kLook);
}

/// WIN-20
TEST(MciClock, StandsWithADeviceThatTellsNothing) {
    MciClock clock;
    clock.start(0, 0);
    EXPECT_LE(clock.place(60'000), 1000);
}

}  // namespace
}  // namespace corvane
