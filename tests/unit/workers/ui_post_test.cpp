// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/ui_post.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <deque>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "workers/worker.h"

namespace corvane {
namespace {

/// A system's queue in memory; calls are made when the test says so. The doors hold it.
struct Queue {
    std::deque<std::pair<int, EventLoop::Handler>> asked;  ///< by which door
    std::vector<int> shut;
    int doors = 0;

    void callNext() {
        ASSERT_FALSE(asked.empty());
        const auto [door, call] = std::move(asked.front());
        asked.pop_front();
        call();
    }
    void callAll() {
        while (!asked.empty()) callNext();
    }
};

class QueueDoor : public UiPost::Door {
public:
    explicit QueueDoor(std::shared_ptr<Queue> queue) : queue_(std::move(queue)), number_(++queue_->doors) {}
    void ask(EventLoop::Handler call) override { queue_->asked.emplace_back(number_, std::move(call)); }
    void shut() override { queue_->shut.push_back(number_); }

private:
    std::shared_ptr<Queue> queue_;
    int number_;
};

class SilentLoop : public EventLoop {
    void wake() override {}
};

class UiPostTest : public testing::Test {
protected:
    UiPost::MakeDoor door() {
        return [queue = queue_] { return std::make_unique<QueueDoor>(queue); };
    }
    std::shared_ptr<Queue> queue_ = std::make_shared<Queue>();
    SilentLoop loop_;
    std::vector<int> heard_;
};

/// COM-05
TEST_F(UiPostTest, EventsComeInOrderAndNeverInsideThePost) {
    UiPost post(door());
    const UiPost copy = post;
    post([this] { heard_.push_back(1); });
    copy([this] { heard_.push_back(2); });
    EXPECT_TRUE(heard_.empty());
    EXPECT_EQ(queue_->asked.size(), 2U);
    queue_->callAll();
    EXPECT_EQ(heard_, (std::vector{1, 2}));
    EXPECT_EQ(queue_->doors, 1);
    post.stop();
}

/// COM-20
TEST_F(UiPostTest, ThoseOfALoopAreQueuedThereAndWaitForItsHold) {
    UiPost post(door(), loop_);
    {
        const EventLoop::Hold hold(loop_);
        post([this] { heard_.push_back(1); });
        queue_->callAll();
        loop_.runPending();
        EXPECT_TRUE(heard_.empty());
    }
    loop_.runPending();
    EXPECT_EQ(heard_, std::vector{1});
    post.stop();
}

TEST_F(UiPostTest, ACallInsideAnEventTakesTheNextOne) {
    UiPost post(door());
    post([this] {
        queue_->callNext();
        heard_.push_back(1);
    });
    post([this] { heard_.push_back(2); });
    queue_->callAll();
    EXPECT_EQ(heard_, (std::vector{2, 1}));
    post.stop();
}

/// COM-06
TEST_F(UiPostTest, AfterTheStopNothingRunsAndWhatWaitedIsLetGo) {
    UiPost post(door());
    const UiPost copy = post;
    const auto held = std::make_shared<int>(0);
    post([&] { post.stop(); });
    post([this, held] { heard_.push_back(1); });
    queue_->callNext();
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(queue_->shut, std::vector{1});
    copy([this] { heard_.push_back(2); });
    EXPECT_EQ(queue_->asked.size(), 1U) << "nobody is asked any more";
    queue_->callAll();  // a system's queue that has one left
    EXPECT_TRUE(heard_.empty());
    post.stop();
    EXPECT_EQ(queue_->shut.size(), 1U) << "a door is shut once";
}

TEST_F(UiPostTest, AnotherHasAnEndOfItsOwnAndMindsNoHold) {
    UiPost post(door(), loop_);
    UiPost other = post.another();
    const EventLoop::Hold hold(loop_);
    post.stop();
    other([this] { heard_.push_back(1); });
    queue_->callAll();
    EXPECT_EQ(heard_, std::vector{1});
    EXPECT_EQ(queue_->doors, 2);
    other.stop();
    EXPECT_EQ(queue_->shut, (std::vector{1, 2}));
}

TEST_F(UiPostTest, TheLastCopyMayEndOnAWorker) {
    auto post = std::make_unique<UiPost>(door());
    Worker worker;
    std::atomic<bool> gone{false};
    ASSERT_TRUE(worker.start([copy = *post, &gone](const Worker::GiveUp&) {
        while (!gone) std::this_thread::yield();
        copy([] {});
    }));
    post->stop();
    post.reset();
    gone = true;
    EXPECT_TRUE(worker.wait(std::chrono::seconds(10)));
    EXPECT_TRUE(queue_->asked.empty());
}

}  // namespace
}  // namespace corvane
