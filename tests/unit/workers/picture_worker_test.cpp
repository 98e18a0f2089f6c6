// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/picture_worker.h"

#include <gtest/gtest.h>

#include "unit/workers/posted_events.h"
#include "workers/worker.h"

namespace corvane {
namespace {

constexpr auto kDeadline = test::PostedEvents::kDeadline;

using Events = test::PostedEvents;

Pictures::Decoded load(const std::string& path, const PictureWorker::GiveUp& /*givenUp*/) {
    return {{}, "decoded " + path};
}

PictureQueue::Stamp stampOf(const std::string& /*path*/, const PictureWorker::GiveUp& /*givenUp*/) { return {1, 1, 1}; }

struct PictureWorkerTest : testing::Test {
    ~PictureWorkerTest() override { Worker::endAll(kDeadline); }

    /// What is told of a picture; empty: nothing in time.
    std::string toldOf(const std::string& path) {
        std::string told;
        if (auto ready = worker.begin(path, [&](Pictures::Decoded decoded) { told = decoded.reason; }))
            return ready->reason;
        events->run();
        return told;
    }

    std::shared_ptr<Events> events = std::make_shared<Events>();
    PictureWorker worker{[events = events](EventLoop::Handler event) { events->post(std::move(event)); }, load,
                         stampOf};
};

TEST_F(PictureWorkerTest, TellsWhatItHasDecoded) { EXPECT_EQ(toldOf("a"), "decoded a"); }

/// Whatever it was that failed: nobody waits for ever, and the next picture is decoded.
TEST_F(PictureWorkerTest, WhatBreaksOffBesideTheDecoderIsToldAsWell) {
    events->refuse(1);
    EXPECT_EQ(toldOf("a"), Worker::kBroken);
    EXPECT_EQ(toldOf("b"), "decoded b");
}

/// Not even that could be told: what comes afterwards is not held up by it.
TEST_F(PictureWorkerTest, AfterAnAnswerThatCannotBeToldTheNextPictureIsDecoded) {
    events->refuse(2);
    worker.begin("a", [](const Pictures::Decoded&) { ADD_FAILURE(); });
    ASSERT_TRUE(Worker::endAll(kDeadline));
    EXPECT_EQ(toldOf("b"), "decoded b");
}

}  // namespace
}  // namespace corvane
