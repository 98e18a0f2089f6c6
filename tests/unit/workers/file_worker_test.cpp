// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/file_worker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

#include "unit/workers/posted_events.h"
#include "workers/worker.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kDeadline = test::PostedEvents::kDeadline;

/// No task here asks for one.
class NoFiles : public Files {
public:
    char separator() const override { return '/'; }
    std::optional<std::string> lookUp(const std::string&) override { return std::nullopt; }
    std::vector<std::optional<std::string>> lookUpAll(const std::vector<std::string>&) override { return {}; }
    std::vector<std::string> list(const std::string&, const std::string&) override { return {}; }
    std::vector<std::string> folders(const std::string&) override { return {}; }
    bool readable(const std::string&) override { return false; }
    std::vector<Drive> drives() override { return {}; }
    std::optional<std::string> read(const std::string&, std::size_t) override { return std::nullopt; }
    bool replace(const std::string&, std::string_view) override { return false; }
};

struct FileWorkerTest : testing::Test {
    ~FileWorkerTest() override { EXPECT_TRUE(Worker::endAll(kDeadline)); }
    test::PostedEvents queue;
    FileWorker work{[this](EventLoop::Handler event) { queue.post(std::move(event)); }, std::make_shared<NoFiles>()};
};

/// LIST-69: Work on many files runs on a thread of its own, tells how far it has come, and its end comes as an event
TEST_F(FileWorkerTest, TellsItsEnd) {
    std::vector<bool> ends;
    const auto seen = std::make_shared<std::atomic<bool>>(false);
    const auto run = work.begin(
        [seen](FileWork::Course& course) {
            course.tell(7);
            *seen = course.milliseconds() >= 0 && !course.isGivenUp();
        },
        [&ends](bool ended) { ends.push_back(ended); });
    ASSERT_TRUE(queue.run());
    EXPECT_EQ(ends, std::vector<bool>{true});
    EXPECT_EQ(run->told(), 7U);
    EXPECT_TRUE(*seen);
}

/// LIST-69
TEST_F(FileWorkerTest, WhatThrowsIsTold) {
    std::vector<bool> ends;
    const auto run =
        work.begin([](FileWork::Course&) { throw std::bad_alloc(); }, [&ends](bool ended) { ends.push_back(ended); });
    ASSERT_TRUE(queue.run());
    EXPECT_EQ(ends, std::vector<bool>{false});
}

/// LIST-68: Once nobody wants it, it is given up, and its end is told no more
TEST_F(FileWorkerTest, GivenUpItIsToldNoMore) {
    bool told = false;
    const auto begun = std::make_shared<std::atomic<bool>>(false);
    auto run = work.begin(
        [begun](FileWork::Course& course) {
            *begun = true;
            const auto until = std::chrono::steady_clock::now() + kDeadline;
            while (!course.isGivenUp() && std::chrono::steady_clock::now() < until) course.tell(1);
            if (!course.isGivenUp()) throw std::logic_error("not given up");
        },
        [&told](bool) { told = true; });
    while (!*begun) queue.run(milliseconds(1));
    run.reset();
    ASSERT_TRUE(queue.run()) << "its event comes, and does nothing";
    EXPECT_FALSE(told);
}

}  // namespace
}  // namespace corvane
