// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/event_loop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fake/fake_loop.h"
#include "fake/fake_machine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

class Loop : public ::testing::Test {
protected:
    FakeLoop loop;
    Texts seen;
    EventLoop::Handler say(const std::string& text) {
        return [this, text] { seen.push_back(text); };
    }
};

/// COM-05: Events run one after the other in the order in which they were posted
TEST_F(Loop, RunsPostedEventsLaterAndInOrder) {
    loop.post(say("first"));
    loop.post(say("second"));
    EXPECT_TRUE(seen.empty());
    EXPECT_FALSE(loop.idle());
    loop.drain();
    EXPECT_EQ(seen, (Texts{"first", "second"}));
    EXPECT_TRUE(loop.idle());
}

TEST_F(Loop, WhatAnEventPostsComesBehindWhatWaited) {
    loop.post([this] {
        seen.push_back("first");
        loop.post(say("third"));
    });
    loop.post(say("second"));
    loop.drain();
    EXPECT_EQ(seen, (Texts{"first", "second", "third"}));
}

TEST_F(Loop, OneRunTakesOnlyWhatWasQueuedAndAsksForTheRest) {
    loop.post([this] { loop.post(say("next run")); });
    loop.runPending();
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(loop.wakes(), 3);  // for each post, and for what one run left
    loop.runPending();
    EXPECT_EQ(seen, Texts{"next run"});
}

TEST_F(Loop, ACrowdLeavesTheDesktopsOwnEventsATurnEachTime) {
    constexpr int kCrowd = 1000;
    int ran = 0;
    std::vector<int> inATurn;
    for (int number = 0; number < kCrowd; ++number) {
        loop.post([&ran, number] { EXPECT_EQ(ran++, number); });
    }
    while (!loop.idle()) {
        const int before = ran, wakes = loop.wakes();
        loop.runPending();
        inATurn.push_back(ran - before);
        EXPECT_EQ(loop.wakes() - wakes, loop.idle() ? 0 : 1);
    }
    EXPECT_EQ(ran, kCrowd);
    EXPECT_LE(*std::max_element(inATurn.begin(), inATurn.end()), 100);
}

/// COM-02
TEST_F(Loop, HoldsEventsWhileAHoldLives) {
    auto hold = std::make_unique<EventLoop::Hold>(loop);
    const int wakes = loop.wakes();
    loop.post(say("late"));
    loop.drain();
    loop.runPending();
    EXPECT_TRUE(loop.held());
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(loop.wakes(), wakes);
    hold.reset();
    EXPECT_GT(loop.wakes(), wakes);
    loop.drain();
    EXPECT_EQ(seen, Texts{"late"});
}

/// COM-20
TEST_F(Loop, HoldsNest) {
    auto outer = std::make_unique<EventLoop::Hold>(loop);
    {
        const EventLoop::Hold inner(loop);
        loop.post(say("late"));
    }
    loop.drain();
    EXPECT_TRUE(seen.empty());
    outer.reset();
    loop.drain();
    EXPECT_EQ(seen, Texts{"late"});
}

TEST_F(Loop, AHoldTakenByAnEventStopsTheOnesBehindIt) {
    std::unique_ptr<EventLoop::Hold> hold;
    loop.post([&] { hold = std::make_unique<EventLoop::Hold>(loop); });
    loop.post(say("late"));
    loop.drain();
    EXPECT_TRUE(seen.empty());
    hold.reset();
    loop.drain();
    EXPECT_EQ(seen, Texts{"late"});
}

/// COM-20: Input is handled at once, also while events are held; holds nest
TEST_F(Loop, AnInputHandlerRunsAtOnceEvenWhileHeld) {
    const EventLoop::Hold hold(loop);
    loop.enter(say("now"));
    EXPECT_EQ(seen, Texts{"now"});
}

TEST_F(Loop, CountsRunningHandlersAndTellsWhenNoneRuns) {
    int quiet = 0;
    std::vector<int> depths;
    const EventLoop::Watch watch(loop, EventLoop::When::Quiet, [&] { ++quiet; });
    loop.post([&] {
        depths.push_back(loop.depth());
        loop.enter([&] { depths.push_back(loop.depth()); });
        EXPECT_EQ(quiet, 0);
        depths.push_back(loop.depth());
    });
    loop.drain();
    EXPECT_EQ(depths, (std::vector<int>{1, 2, 1}));
    EXPECT_EQ(quiet, 1);
    EXPECT_EQ(loop.depth(), 0);
}

TEST_F(Loop, TellsWhenItStandsStill) {
    int still = 0;
    bool wasQuiet = false;
    const EventLoop::Watch quietly(loop, EventLoop::When::Quiet, [&] { wasQuiet = true; });
    const EventLoop::Watch still_watch(loop, EventLoop::When::Still, [&] {
        ++still;
        EXPECT_TRUE(wasQuiet || loop.held()) << "what quiet takes away has gone";
    });
    loop.enter([&] {
        loop.enter([] {});
        EXPECT_EQ(still, 0) << "a handler still runs";
        const EventLoop::Hold box(loop);
        EXPECT_EQ(still, 1);
        const EventLoop::Hold boxInABox(loop);
        EXPECT_EQ(still, 1);
    });
    EXPECT_EQ(still, 2);
}

TEST_F(Loop, TellsEachOfThoseWhoWatchUntilItGoes) {
    auto first = std::make_unique<EventLoop::Watch>(loop, EventLoop::When::Quiet, say("first"));
    int told = 0;
    std::optional<EventLoop::Watch> second;  // where it was, its memory stays
    const EventLoop::Watch ends(loop, EventLoop::When::Quiet, [&] { second.reset(); });
    second.emplace(loop, EventLoop::When::Quiet, [&told] { ++told; });
    loop.enter([] {});
    EXPECT_EQ(seen, Texts{"first"});
    EXPECT_EQ(told, 0) << "one that another took away is told no more";
    const EventLoop::Watch last(loop, EventLoop::When::Quiet, say("last"));
    first.reset();
    loop.enter(say("handler"));
    EXPECT_EQ(seen, (Texts{"first", "handler", "last"}));
}

TEST(MachineTime, TimersAndPostedEventsComeInTheOrderOfTheirTime) {
    FakeMachine machine;
    Texts seen;
    const auto say = [&](const std::string& what) {
        machine.loop.post(
            [&machine, &seen, what] { seen.push_back(what + " " + std::to_string(machine.clock.milliseconds())); });
    };
    machine.timers.start(30, [&] { say("slow"); });
    machine.timers.start(20, [&] { say("fast"); });
    say("posted");
    machine.advance(60);
    EXPECT_EQ(seen, (Texts{"posted 0", "fast 20", "slow 30", "fast 40", "slow 60", "fast 60"}));
}

/// COM-06: Nothing is delivered behind the end
/// START-40
TEST(MachineTime, NothingIsDeliveredAfterTheEnd) {
    FakeMachine machine;
    int events = 0;
    machine.timers.start(10, [&] { machine.loop.post([&] { ++events; }); });
    machine.advance(10);
    EXPECT_EQ(events, 1);
    machine.loop.post([&] { machine.process.end(); });
    machine.loop.post([&] { ++events; });
    machine.advance(100);
    EXPECT_TRUE(machine.process.ending());
    EXPECT_EQ(events, 1);
}

}  // namespace
}  // namespace corvane
