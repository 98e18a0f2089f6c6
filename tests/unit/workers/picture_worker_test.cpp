// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/picture_worker.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <new>

#include "workers/worker.h"

namespace corvane {
namespace {

constexpr std::chrono::seconds kDeadline{10};

/// The event loop's end: the test runs what came in.
class Events {
public:
    void post(EventLoop::Handler event) {
        const std::lock_guard lock(mutex_);
        if (refused_ > 0) {
            --refused_;
            throw std::bad_alloc();
        }
        events_.push_back(std::move(event));
        came_.notify_all();
    }
    void refuse(int times) {
        const std::lock_guard lock(mutex_);
        refused_ = times;
    }
    bool runOne() {
        std::unique_lock lock(mutex_);
        if (!came_.wait_for(lock, kDeadline, [this] { return !events_.empty(); })) return false;
        const EventLoop::Handler event = std::move(events_.front());
        events_.pop_front();
        lock.unlock();
        event();
        return true;
    }

private:
    std::mutex mutex_;
    std::condition_variable came_;
    std::deque<EventLoop::Handler> events_;
    int refused_ = 0;
};

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
        events->runOne();
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
