// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/end_watch.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using std::chrono::milliseconds;

constexpr double kRate = 1000;  // a frame is a millisecond
constexpr double kEarly = 20;
const EndWatch::Time kBegin{};

/// FAULT-02: A sound ends by the clock when the server's report of what is left stands still, and not sooner
TEST(EndOfASound, ComesWhenTheSinkHasSoLittleLeft) {
    EndWatch end;
    EXPECT_FALSE(end.heard(80, kEarly, kRate, kBegin));
    EXPECT_FALSE(end.heard(21, kEarly, kRate, kBegin + milliseconds(59)));
    EXPECT_TRUE(end.heard(20, kEarly, kRate, kBegin + milliseconds(60)));
}

/// FAULT-02
TEST(EndOfASound, ComesByTheClockWhenTheSinksReportStands) {
    EndWatch end;
    EXPECT_FALSE(end.heard(80, kEarly, kRate, kBegin));
    const auto due = kBegin + milliseconds(80) + EndWatch::kPatience;
    EXPECT_FALSE(end.heard(25, kEarly, kRate, due - milliseconds(1)));
    EXPECT_TRUE(end.heard(25, kEarly, kRate, due));
}

/// FAULT-02
TEST(EndOfASound, WaitsAfreshAfterTheSinkWasHeld) {
    EndWatch end;
    EXPECT_FALSE(end.heard(80, kEarly, kRate, kBegin));
    end.reset();
    const auto later = kBegin + milliseconds(10'000);
    EXPECT_FALSE(end.heard(60, kEarly, kRate, later));
    EXPECT_FALSE(end.heard(25, kEarly, kRate, later + milliseconds(259)));
    EXPECT_TRUE(end.heard(25, kEarly, kRate, later + milliseconds(260)));
}

}  // namespace
}  // namespace corvane
