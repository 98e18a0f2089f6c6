// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/picture_frames.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <new>

#include "unit/workers/posted_events.h"
#include "workers/worker.h"

namespace corvane {
namespace {

constexpr auto kDeadline = test::PostedEvents::kDeadline;

/// Opened or shut; a reader waits at it.
class Gate {
public:
    void open() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        changed_.notify_all();
    }
    void wait() {
        std::unique_lock lock(mutex_);
        ++waiting_;
        changed_.notify_all();
        changed_.wait_for(lock, kDeadline, [this] { return open_; });
    }
    bool someoneWaits(int count) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, kDeadline, [&] { return waiting_ >= count; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool open_ = false;
    int waiting_ = 0;
};

/// Frames of no pixels, told apart by their time.
class Numbers : public FrameReader {
public:
    explicit Numbers(std::shared_ptr<Gate> gate = {}) : gate_(std::move(gate)) {}
    std::optional<FramePixels> next(const std::function<bool()>& /*givenUp*/) override {
        if (gate_) gate_->wait();
        if (++number_ > 2) return std::nullopt;
        FramePixels frame;
        frame.milliseconds = number_ * 100'000;
        frame.isLast = number_ == 2;
        return frame;
    }

private:
    std::shared_ptr<Gate> gate_;
    int number_ = 0;
};

class FramesOfPictures : public testing::Test {
protected:
    ~FramesOfPictures() override {
        gate->open();
        Worker::endAll(kDeadline);
    }
    std::unique_ptr<PictureFrames> make(PictureFrames::Open open) {
        return std::make_unique<PictureFrames>(
            [events = events](EventLoop::Handler event) { events->post(std::move(event)); }, std::move(open),
            [](PicturePixels) { return Picture(); },
            [this](const Pictures::Frame& frame) { told.push_back(frame.milliseconds); });
    }
    std::unique_ptr<PictureFrames> held() {
        return make([gate = gate](const PictureFrames::GivenUp&) { return std::make_unique<Numbers>(gate); });
    }

    std::shared_ptr<test::PostedEvents> events = std::make_shared<test::PostedEvents>();
    std::shared_ptr<Gate> gate = std::make_shared<Gate>();
    std::vector<int> told;  ///< 0: there is none
};

TEST_F(FramesOfPictures, AreToldInTheirOrder) {
    const auto frames = make([](const PictureFrames::GivenUp&) { return std::make_unique<Numbers>(); });
    for (int i = 0; i < 3; ++i) {
        frames->next();
        ASSERT_TRUE(events->run());
    }
    EXPECT_EQ(told, (std::vector<int>{100'000, 200'000, 0}));
}

/// ANIM-13: A decoder of frames that hangs or fails holds nothing up: what is late is dropped, and where two hang
///     nothing further moves
TEST_F(FramesOfPictures, OfOneThatIsGoneNothingIsTold) {
    auto frames = held();
    frames->next();
    ASSERT_TRUE(gate->someoneWaits(1));
    frames.reset();
    gate->open();
    ASSERT_TRUE(events->run());
    EXPECT_TRUE(told.empty());
}

/// ANIM-13
TEST_F(FramesOfPictures, WhereTwoHangNoThirdIsBegun) {
    for (int i = 0; i < PictureFrames::kMostLeft; ++i) held()->next();
    ASSERT_TRUE(gate->someoneWaits(PictureFrames::kMostLeft));
    const auto third = held();
    third->next();
    ASSERT_TRUE(events->run());
    EXPECT_EQ(told, (std::vector<int>{0}));
    gate->open();
    for (int i = 0; i < PictureFrames::kMostLeft; ++i) ASSERT_TRUE(events->run());
    const auto fourth = held();
    fourth->next();
    ASSERT_TRUE(events->run());
    EXPECT_EQ(told, (std::vector<int>{0, 100'000}));
}

/// ANIM-13
TEST_F(FramesOfPictures, WhatThrowsIsTheEnd) {
    const auto frames =
        make([](const PictureFrames::GivenUp&) -> std::unique_ptr<FrameReader> { throw std::bad_alloc(); });
    frames->next();
    ASSERT_TRUE(events->run());
    EXPECT_EQ(told, (std::vector<int>{0}));
    const auto none = make([](const PictureFrames::GivenUp&) { return std::unique_ptr<FrameReader>(); });
    none->next();
    ASSERT_TRUE(events->run());
    EXPECT_EQ(told, (std::vector<int>{0, 0}));
}

}  // namespace
}  // namespace corvane
