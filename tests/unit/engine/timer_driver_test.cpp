// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/timer_driver.h"

#include <gtest/gtest.h>

#include <memory>

#include "fake/fake_machine.h"

namespace corvane {
namespace {

class ClockForm : public Form {
public:
    ClockForm() : Form("frmClock", FormStyle::Hidden) {
        timer.Interval = 100;
        timer.Tick.tie([this] { ++ticks; });
    }
    Timer timer{this, "tmrClock"};
    int ticks = 0;
};

class Driver : public ::testing::Test {
protected:
    FakeMachine machine;
    ClockForm form;
    TimerDriver driver{machine.timers, machine.loop};
};

/// COM-10: A timer ticks every interval while it is enabled, and not at an interval of 0
TEST_F(Driver, TicksEveryIntervalWhileEnabled) {
    driver.attach(form);
    machine.advance(1000);
    EXPECT_EQ(form.ticks, 0);
    form.timer.Enabled = true;
    machine.advance(99);
    EXPECT_EQ(form.ticks, 0);
    machine.advance(1);
    EXPECT_EQ(form.ticks, 1);
    machine.advance(200);
    EXPECT_EQ(form.ticks, 3);
    form.timer.Enabled = false;
    machine.advance(1000);
    EXPECT_EQ(form.ticks, 3);
    EXPECT_EQ(machine.timers.running(), 0);
}

TEST_F(Driver, ATimerEnabledBeforeItsFormIsLoadedRuns) {
    form.timer.Enabled = true;
    driver.attach(form);
    machine.advance(100);
    EXPECT_EQ(form.ticks, 1);
}

/// COM-11
TEST_F(Driver, EnablingARunningTimerChangesNothing) {
    driver.attach(form);
    form.timer.Enabled = true;
    machine.advance(60);
    form.timer.Enabled = true;
    machine.advance(40);
    EXPECT_EQ(form.ticks, 1);
    EXPECT_EQ(machine.log.count("timers.start 100"), 1);
}

/// COM-11: Disabled and enabled it begins its interval afresh
TEST_F(Driver, ARestartBeginsThePeriodAfresh) {
    driver.attach(form);
    form.timer.Enabled = true;
    machine.advance(60);
    form.timer.restart();
    machine.advance(99);
    EXPECT_EQ(form.ticks, 0);
    machine.advance(1);
    EXPECT_EQ(form.ticks, 1);
}

/// COM-21: Another interval begins its time afresh, and a restart drops a tick that waits
TEST_F(Driver, AnotherIntervalBeginsThePeriodAfresh) {
    driver.attach(form);
    form.timer.Enabled = true;
    machine.advance(60);
    form.timer.Interval = 50;
    machine.advance(49);
    EXPECT_EQ(form.ticks, 0);
    machine.advance(1);
    EXPECT_EQ(form.ticks, 1);
    form.timer.Interval = 50;
    machine.advance(50);
    EXPECT_EQ(form.ticks, 2);
}

/// COM-10
TEST_F(Driver, AnIntervalOfZeroNeverTicks) {
    form.timer.Interval = 0;
    driver.attach(form);
    form.timer.Enabled = true;
    machine.advance(1000);
    EXPECT_EQ(form.ticks, 0);
    form.timer.Interval = 10;
    machine.advance(10);
    EXPECT_EQ(form.ticks, 1);
}

/// COM-02
TEST_F(Driver, OneTickAtMostWaitsWhileABoxIsUp) {
    driver.attach(form);
    form.timer.Enabled = true;
    {
        const EventLoop::Hold box(machine.loop);
        machine.advance(1000);
        EXPECT_EQ(form.ticks, 0);
    }
    machine.settle();
    EXPECT_EQ(form.ticks, 1);
    machine.advance(100);
    EXPECT_EQ(form.ticks, 2);
}

/// COM-12: A tick that waits is dropped when its timer stops or its form goes
TEST_F(Driver, ATickThatWaitsIsDroppedWhenTheTimerStops) {
    driver.attach(form);
    form.timer.Enabled = true;
    {
        const EventLoop::Hold box(machine.loop);
        machine.advance(150);
        form.timer.Enabled = false;
    }
    machine.advance(1000);
    EXPECT_EQ(form.ticks, 0);
}

/// COM-21
TEST_F(Driver, ATickThatWaitsIsDroppedByARestart) {
    driver.attach(form);
    form.timer.Enabled = true;
    {
        const EventLoop::Hold box(machine.loop);
        machine.advance(150);
        form.timer.restart();
    }
    machine.advance(99);
    EXPECT_EQ(form.ticks, 0);
    machine.advance(1);
    EXPECT_EQ(form.ticks, 1);
}

/// COM-12
TEST_F(Driver, ATickThatWaitsIsDroppedWhenTheFormGoes) {
    auto passing = std::make_unique<ClockForm>();
    driver.attach(*passing);
    passing->timer.Enabled = true;
    int ticks = 0;
    passing->timer.Tick.tie([&] { ++ticks; });
    {
        const EventLoop::Hold box(machine.loop);
        machine.advance(150);
        driver.detach(*passing);
        passing.reset();
    }
    machine.advance(1000);
    EXPECT_EQ(ticks, 0);
    EXPECT_EQ(machine.timers.running(), 0);
}

TEST_F(Driver, AFormThatIsGoneIsNoLongerWatched) {
    driver.attach(form);
    driver.detach(form);
    form.timer.Enabled = true;
    machine.advance(1000);
    EXPECT_EQ(form.ticks, 0);
}

TEST_F(Driver, ATickMayStopItsOwnTimer) {
    driver.attach(form);
    form.timer.Tick.tie([&] {
        ++form.ticks;
        form.timer.Enabled = false;
    });
    form.timer.Enabled = true;
    machine.advance(1000);
    EXPECT_EQ(form.ticks, 1);
}

TEST(DriverEnd, StopsAllTimers) {
    FakeMachine machine;
    ClockForm form;
    {
        TimerDriver driver(machine.timers, machine.loop);
        driver.attach(form);
        form.timer.Enabled = true;
        EXPECT_EQ(machine.timers.running(), 1);
    }
    EXPECT_EQ(machine.timers.running(), 0);
    form.timer.Enabled = false;
}

}  // namespace
}  // namespace corvane
