// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/qt_post.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

#include "linux/qt_loop.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

constexpr int kThreads = 4;
constexpr int kEvents = 500;

struct Said {
    int thread;
    int number;
};

/// Posts from several threads at once, each in its own order.
std::vector<std::jthread> talk(const UiPost& post, const std::shared_ptr<std::vector<Said>>& heard) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([post, heard, thread] {
            for (int i = 0; i < kEvents; ++i) post([heard, thread, i] { heard->push_back({thread, i}); });
        });
    }
    return threads;
}

void expectAllInOrder(const std::vector<Said>& heard) {
    ASSERT_EQ(heard.size(), std::size_t{kThreads * kEvents});
    std::vector<int> next(kThreads, 0);
    for (const Said& said : heard) EXPECT_EQ(said.number, next[static_cast<std::size_t>(said.thread)]++);
}

TEST(QtPostTest, NoEventIsLostAndEachThreadsComeInOrder) {
    test::offscreenApplication();
    QtLoop loop;
    QtPost post(loop);
    const auto heard = std::make_shared<std::vector<Said>>();
    const auto threads = talk(post, heard);
    EXPECT_TRUE(test::waitUntil([&] { return heard->size() == kThreads * kEvents; }, 20'000));
    expectAllInOrder(*heard);
    post.stop();
}

TEST(QtPostTest, AHoldKeepsTheLoopsEventsWaitingAndNotTheStraightOnes) {
    test::offscreenApplication();
    QtLoop loop;
    QtPost queued(loop);
    QtPost straight;
    bool first = false;
    bool second = false;
    {
        const EventLoop::Hold hold(loop);
        queued([&] { first = true; });
        straight([&] { second = true; });
        EXPECT_TRUE(test::waitUntil([&] { return second && !loop.idle(); }));
        EXPECT_FALSE(first);
    }
    EXPECT_TRUE(test::waitUntil([&] { return first; }));
    queued.stop();
    straight.stop();
}

TEST(QtPostTest, ALoopInsideAnEventGetsTheEventsAfterIt) {
    test::offscreenApplication();
    QtPost post;
    bool later = false;
    bool cameInside = false;
    post([&] { cameInside = test::waitUntil([&] { return later; }); });
    post([&] { later = true; });
    EXPECT_TRUE(test::waitUntil([&] { return later; }));
    EXPECT_TRUE(cameInside);
    post.stop();
}

TEST(QtPostTest, NothingComesAfterTheStopEvenFromInside) {
    test::offscreenApplication();
    QtPost post;
    int ran = 0;
    const auto held = std::make_shared<int>(0);
    post([&] {
        ++ran;
        post.stop();
    });
    post([&ran, held] { ++ran; });
    EXPECT_TRUE(test::waitUntil([&] { return ran > 0; }));
    post([&] { ++ran; });
    test::waitUntil([&] { return ran > 1; }, 100);
    EXPECT_EQ(ran, 1);
    EXPECT_EQ(held.use_count(), 1) << "what waited is let go";
}

/// The last copy may go on a worker, after the loop.
TEST(QtPostTest, TheLastCopyMayEndOnAWorker) {
    test::offscreenApplication();
    auto loop = std::make_unique<QtLoop>();
    auto post = std::make_unique<QtPost>(*loop);
    std::jthread worker([copy = *post](std::stop_token stop) {
        while (!stop.stop_requested()) copy([] {});
    });
    post->stop();
    post.reset();
    loop.reset();
    worker.request_stop();
}

}  // namespace
}  // namespace corvane
