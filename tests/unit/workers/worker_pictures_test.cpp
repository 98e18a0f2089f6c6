// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/worker_pictures.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "forms/form.h"
#include "unit/workers/posted_events.h"
#include "workers/worker.h"

namespace corvane {
namespace {

using Events = test::PostedEvents;

class Plain : public PictureData {
public:
    Plain(int width, int height) : width_(width), height_(height) {}
    int width() const override { return width_; }
    int height() const override { return height_; }
    std::uint32_t pixel(int /*x*/, int /*y*/) const override { return 0; }

private:
    int width_, height_;
};

Picture plain(int width, int height) { return Picture(std::make_shared<Plain>(width, height)); }

/// "wide": a picture; "slow": it ends when it is given up; whatever else: a failure that names it.
Pictures::Decoded load(const std::string& path, const std::atomic<bool>* flag, const WorkerPictures::GivenUp& givenUp) {
    if (path == "wide") return {plain(20, 10), ""};
    if (path != "slow") return {{}, (flag != nullptr ? "worker " : "waited ") + path};
    while (!givenUp()) std::this_thread::yield();
    return {{}, "given up"};
}

PictureQueue::Stamp stampOf(const std::string& /*path*/, const PictureWorker::GiveUp& /*givenUp*/) { return {1, 1, 1}; }

class OneFrame : public FrameReader {
public:
    std::optional<FramePixels> next(const std::function<bool()>& /*givenUp*/) override {
        if (std::exchange(read_, true)) return std::nullopt;
        FramePixels frame;
        frame.milliseconds = 70;
        frame.isLast = true;
        return frame;
    }

private:
    bool read_ = false;
};

std::unique_ptr<FrameReader> openFrames(const std::string& path, const WorkerPictures::GivenUp& /*givenUp*/) {
    return path == "moves" ? std::make_unique<OneFrame>() : nullptr;
}

Picture make(PicturePixels /*pixels*/) { return plain(3, 3); }

class PicturesTried : public WorkerPictures {
public:
    explicit PicturesTried(PictureWorker::Post post)
        : WorkerPictures({load, stampOf, openFrames, make, std::chrono::milliseconds(300)}, std::move(post)) {}
    int cuts = 0;

protected:
    Picture cutInside(const Picture& /*whole*/, const Cell& cell) override {
        ++cuts;
        return plain(cell.width, cell.height);
    }
};

class WorkerPicturesTest : public testing::Test {
protected:
    ~WorkerPicturesTest() override { Worker::endAll(Events::kDeadline); }
    std::shared_ptr<Events> events_ = std::make_shared<Events>();
    PicturesTried pictures_{[events = events_](EventLoop::Handler event) { events->post(std::move(event)); }};
    PicturesTried waiting_{{}};  ///< without a loop
};

TEST_F(WorkerPicturesTest, WhatIsBegunIsDecodedInAWorkerAndTold) {
    std::string told;
    EXPECT_EQ(pictures_.begin("a", [&](Pictures::Decoded decoded) { told = decoded.reason; }), std::nullopt);
    ASSERT_TRUE(events_->run());
    EXPECT_EQ(told, "worker a");
    EXPECT_TRUE(pictures_.isIdle());
}

TEST_F(WorkerPicturesTest, WhatIsGivenUpIsNotTold) {
    pictures_.begin("slow", [](const Pictures::Decoded&) { ADD_FAILURE(); });
    EXPECT_FALSE(pictures_.isIdle());
    pictures_.giveUp();
    ASSERT_TRUE(Worker::endAll(Events::kDeadline));
    while (events_->run(std::chrono::milliseconds(0))) {
    }
    EXPECT_TRUE(pictures_.isIdle());
}

TEST_F(WorkerPicturesTest, WithoutALoopItIsDecodedAtOnceAndNothingMoves) {
    const auto decoded = waiting_.begin("a", [](const Pictures::Decoded&) { ADD_FAILURE(); });
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->reason, "waited a");
    EXPECT_EQ(waiting_.frames("moves", [](const Pictures::Frame&) {}), nullptr);
    EXPECT_TRUE(waiting_.isIdle());
    waiting_.giveUp();
    waiting_.decodeAhead("a");
}

TEST_F(WorkerPicturesTest, APictureThatIsWaitedForHasItsTime) {
    EXPECT_FALSE(pictures_.decode("wide").picture.empty());
    EXPECT_EQ(pictures_.decode("a").reason, "waited a");
    EXPECT_EQ(pictures_.decode("slow").reason, "The picture takes too long to be read.");
}

TEST_F(WorkerPicturesTest, TheFramesOfAFileAreMadePicturesOfTheDesktop) {
    std::vector<Pictures::Frame> told;
    const auto frames = pictures_.frames("moves", [&](const Pictures::Frame& frame) { told.push_back(frame); });
    ASSERT_NE(frames, nullptr);
    frames->next();
    ASSERT_TRUE(events_->run());
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].picture.width(), 3);
    EXPECT_EQ(told[0].milliseconds, 70);
}

TEST_F(WorkerPicturesTest, OnlyACellThatLiesWhollyInsideIsCut) {
    constexpr int kMost = std::numeric_limits<int>::max();
    const Picture whole = plain(20, 10);
    for (const Pictures::Cell cell : {Pictures::Cell{-1, 0, 5, 5},
                                      {0, -1, 5, 5},
                                      {0, 0, 0, 5},
                                      {0, 0, 5, 0},
                                      {0, 0, -1, 5},
                                      {16, 0, 5, 5},
                                      {0, 6, 5, 5},
                                      {0, 0, 21, 5},
                                      {0, 0, 5, 11},
                                      {kMost, 0, 5, 5},
                                      {0, kMost, 5, 5},
                                      {5, 5, kMost, 5},
                                      {5, 5, 5, kMost}}) {
        EXPECT_TRUE(pictures_.cut(whole, cell).empty());
    }
    EXPECT_TRUE(pictures_.cut({}, {0, 0, 1, 1}).empty());
    EXPECT_EQ(pictures_.cuts, 0);
    EXPECT_EQ(pictures_.cut(whole, {15, 5, 5, 5}).width(), 5);
    EXPECT_EQ(pictures_.cut(whole, {0, 0, 20, 10}).height(), 10);
}

TEST_F(WorkerPicturesTest, WhatCannotBeStretchedIsToldByItsNumberAndChangesNothing) {
    Form form("frmTried", FormStyle::Media);
    PictureBox box(&form, "picTried");
    EXPECT_EQ(pictures_.paintStretched(box, 10, 10), 481);
    box.Picture = plain(20, 10);
    constexpr float kEndless = std::numeric_limits<float>::infinity();
    for (const float side : {2'000'000.0F, kEndless, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(pictures_.paintStretched(box, side, 10), kOutOfMemoryForPicture);
        EXPECT_EQ(pictures_.paintStretched(box, 10, side), kOutOfMemoryForPicture);
    }
    EXPECT_EQ(box.paintedWidth(), 0);
    EXPECT_EQ(pictures_.paintStretched(box, 0.5F, 300), 0);
    EXPECT_EQ(box.paintedWidth(), 1);
    EXPECT_EQ(box.paintedHeight(), 300);
}

}  // namespace
}  // namespace corvane
