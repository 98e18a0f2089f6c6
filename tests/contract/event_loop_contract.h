// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "contract/stage.h"

namespace corvane {

/// That a party runs what is posted, and only when it may.
class EventLoopContract : public ::testing::TestWithParam<StageFactory<Stage>> {
protected:
    std::unique_ptr<Stage> stage = GetParam()();
    std::vector<int> seen;
    EventLoop::Handler say(int number) {
        return [this, number] { seen.push_back(number); };
    }
};

/// COM-05
TEST_P(EventLoopContract, RunsPostedEventsLaterInOrder) {
    stage->loop().post(say(1));
    stage->loop().post([this] {
        seen.push_back(2);
        stage->loop().post(say(4));
    });
    stage->loop().post(say(3));
    EXPECT_TRUE(seen.empty());
    ASSERT_TRUE(stage->waitFor([this] { return seen.size() == 4; }, 2000));
    EXPECT_EQ(seen, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_TRUE(stage->loop().idle());
}

/// COM-02
TEST_P(EventLoopContract, EventsWaitWhileHeldAndRunAfterwards) {
    {
        const EventLoop::Hold hold(stage->loop());
        stage->loop().post(say(1));
        stage->pass(100);
        EXPECT_TRUE(seen.empty());
    }
    EXPECT_TRUE(stage->waitFor([this] { return seen.size() == 1; }, 2000));
}

TEST_P(EventLoopContract, TellsWhenNoHandlerRuns) {
    int quiet = 0;
    bool ranInside = false;
    const EventLoop::Watch watch(stage->loop(), EventLoop::When::Quiet, [&] { ++quiet; });
    stage->loop().post([&] { ranInside = stage->loop().depth() == 1 && quiet == 0; });
    ASSERT_TRUE(stage->waitFor([&] { return quiet == 1; }, 2000));
    EXPECT_TRUE(ranInside);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EventLoopContract);

}  // namespace corvane
