// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/numbered_timers.h"

#include <gtest/gtest.h>

#include <set>

namespace corvane {
namespace {

/// A system that gives the lowest free number, as some do.
class TriedTimers : public NumberedTimers {
public:
    using NumberedTimers::ticked;
    std::set<std::uint64_t> running;
    int interval = 0;

protected:
    std::uint64_t begin(int intervalMs) override {
        interval = intervalMs;
        std::uint64_t number = 1;
        while (running.contains(number)) ++number;
        running.insert(number);
        return number;
    }
    void cease(std::uint64_t number) override { running.erase(number); }
};

struct NumberedTimersTest : ::testing::Test {
    TriedTimers timers;
    int first = 0, second = 0;
};

TEST_F(NumberedTimersTest, EachTickIsItsOwnTimers) {
    timers.start(10, [this] { ++first; });
    timers.start(20, [this] { ++second; });
    timers.ticked(2);
    timers.ticked(2);
    timers.ticked(1);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST_F(NumberedTimersTest, OneThatIsStoppedTwiceStopsNoOther) {
    const TimerId gone = timers.start(10, [this] { ++first; });
    timers.stop(gone);
    EXPECT_TRUE(timers.running.empty());
    const TimerId next = timers.start(10, [this] { ++second; });  // of the same number to the system
    EXPECT_NE(gone, next);
    timers.stop(gone);
    timers.ticked(1);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST_F(NumberedTimersTest, ATickThatWasInTheQueueDoesNothing) {
    const TimerId timer = timers.start(10, [this] { ++first; });
    timers.stop(timer);
    timers.ticked(1);
    EXPECT_EQ(first, 0);
}

TEST_F(NumberedTimersTest, ATickMayStopItsOwnTimerAndStartAnother) {
    TimerId timer = 0;
    std::string heard;
    timer = timers.start(10, [&, told = std::string("a text of more letters than fit inside a string")] {
        timers.stop(timer);
        timers.start(10, [this] { ++second; });
        heard = told;  // the tick outlives its timer
    });
    timers.ticked(1);
    EXPECT_EQ(heard, "a text of more letters than fit inside a string");
    timers.ticked(1);
    EXPECT_EQ(second, 1);
}

TEST_F(NumberedTimersTest, NoneTicksFasterThanTheSystemCounts) {
    timers.start(0, [] {});
    EXPECT_EQ(timers.interval, 1);
}

TEST_F(NumberedTimersTest, AllAreStoppedAtOnce) {
    for (int i = 0; i < 3; ++i) timers.start(10, [this] { ++first; });
    timers.stopAll();
    EXPECT_TRUE(timers.running.empty());
    timers.ticked(2);
    EXPECT_EQ(first, 0);
}

}  // namespace
}  // namespace corvane
