// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "contract/stage.h"
#include "platform/ports.h"

namespace corvane {

class TimeStage : public Stage {
public:
    virtual Timers& timers() = 0;
    virtual Clock& clock() = 0;
};

class TimersContract : public ::testing::TestWithParam<StageFactory<TimeStage>> {
protected:
    std::unique_ptr<TimeStage> stage = GetParam()();
    int ticks = 0;
};

/// COM-10
TEST_P(TimersContract, TicksAgainAndAgainUntilStopped) {
    const TimerId timer = stage->timers().start(20, [this] { ++ticks; });
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(stage->waitFor([this] { return ticks >= 5; }, 3000));
    stage->timers().stop(timer);
    const int sofar = ticks;
    stage->pass(150);
    EXPECT_EQ(ticks, sofar);
}

TEST_P(TimersContract, TakesItsTime) {
    const std::int64_t start = stage->clock().milliseconds();
    const TimerId timer = stage->timers().start(50, [this] { ++ticks; });
    ASSERT_TRUE(stage->waitFor([this] { return ticks >= 4; }, 3000));
    stage->timers().stop(timer);
    EXPECT_GE(stage->clock().milliseconds() - start, 180);
}

TEST_P(TimersContract, TicksWhileTheLoopIsHeld) {
    const EventLoop::Hold hold(stage->loop());
    const TimerId timer = stage->timers().start(10, [this] { ++ticks; });
    EXPECT_TRUE(stage->waitFor([this] { return ticks >= 2; }, 3000));
    stage->timers().stop(timer);
}

TEST_P(TimersContract, ATickMayStopItsOwnTimer) {
    TimerId timer = 0;
    timer = stage->timers().start(10, [&] {
        ++ticks;
        stage->timers().stop(timer);
    });
    ASSERT_TRUE(stage->waitFor([this] { return ticks == 1; }, 3000));
    stage->pass(100);
    EXPECT_EQ(ticks, 1);
}

TEST_P(TimersContract, ATickMayStartAnotherTimer) {
    TimerId first = 0;
    TimerId second = 0;
    first = stage->timers().start(10, [&] {
        stage->timers().stop(first);
        second = stage->timers().start(10, [this] { ++ticks; });
    });
    EXPECT_TRUE(stage->waitFor([this] { return ticks >= 2; }, 3000));
    EXPECT_NE(first, second);
    stage->timers().stop(second);
}

TEST_P(TimersContract, StoppingAnUnknownTimerDoesNothing) {
    const TimerId timer = stage->timers().start(10, [this] { ++ticks; });
    stage->timers().stop(timer + 1000);
    EXPECT_TRUE(stage->waitFor([this] { return ticks >= 1; }, 3000));
    stage->timers().stop(timer);
    stage->timers().stop(timer);
}

TEST_P(TimersContract, TheClockGoesOnAndIsAPlausibleTime) {
    const std::int64_t start = stage->clock().milliseconds();
    EXPECT_TRUE(stage->waitFor([&] { return stage->clock().milliseconds() >= start + 50; }, 3000));
    const LocalTime time = stage->clock().localTime();
    EXPECT_GE(time.year, 2000);
    EXPECT_TRUE(time.month >= 1 && time.month <= 12);
    EXPECT_TRUE(time.day >= 1 && time.day <= 31);
    EXPECT_TRUE(time.hour >= 0 && time.hour <= 23);
    EXPECT_TRUE(time.minute >= 0 && time.minute <= 59);
    EXPECT_TRUE(time.second >= 0 && time.second <= 60);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(TimersContract);

}  // namespace corvane
