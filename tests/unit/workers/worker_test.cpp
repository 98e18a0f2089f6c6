// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/worker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <new>

namespace corvane {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSoon{20};
constexpr milliseconds kDeadline{10'000};

/// Opened once, waited for by others; false: not opened in time.
class Gate {
public:
    void open() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        opened_.notify_all();
    }
    bool wait(milliseconds patience = kDeadline) {
        std::unique_lock lock(mutex_);
        return opened_.wait_for(lock, patience, [this] { return open_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool open_ = false;
};

/// Runs until it is given up, and tells so.
Worker::Task untilGivenUp(const std::shared_ptr<Gate>& begun, const std::shared_ptr<Gate>& ended) {
    return [begun, ended](const Worker::GiveUp& givenUp) {
        begun->open();
        Gate never;
        while (!givenUp) never.wait(milliseconds(1));
        ended->open();
    };
}

TEST(Worker, RunsItsTaskAndWaitsForIt) {
    auto done = std::make_shared<std::atomic<bool>>(false);
    Worker worker;
    EXPECT_TRUE(worker.wait(milliseconds(0))) << "without a task nothing runs";
    ASSERT_TRUE(worker.start([done](const Worker::GiveUp& givenUp) { *done = !givenUp; }));
    ASSERT_TRUE(worker.wait(kDeadline));
    EXPECT_TRUE(*done);
    EXPECT_EQ(done.use_count(), 1) << "what the task held is gone when it has ended";
}

/// The threads' library of Windows' compiler lost one of some hundred that began while another ended.
TEST(Worker, EachTaskIsRunHoweverSoonItFollowsAnother) {
    constexpr int kTasks = 500;
    auto done = std::make_shared<std::atomic<int>>(0);
    Worker worker;
    for (int i = 0; i < kTasks; ++i) {
        ASSERT_TRUE(worker.start([done](const Worker::GiveUp&) { ++*done; }));
        ASSERT_TRUE(worker.wait(kDeadline)) << i;
    }
    EXPECT_EQ(*done, kTasks);
}

TEST(Worker, WaitsNoLongerThanItsPatience) {
    auto gate = std::make_shared<Gate>();
    Worker worker;
    ASSERT_TRUE(worker.start([gate](const Worker::GiveUp&) { gate->wait(); }));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(worker.wait(kSoon));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kDeadline / 2);
    gate->open();
    EXPECT_TRUE(worker.wait(kDeadline));
}

/// FAULT-63: Threads that the system refuses are answers, and what a task throws ends there
TEST(Worker, ATaskThatThrowsEndsThereAndIsTold) {
    auto told = std::make_shared<Gate>();
    Worker worker;
    ASSERT_TRUE(worker.start([](const Worker::GiveUp&) { throw std::bad_alloc(); }, [told] { told->open(); }));
    EXPECT_TRUE(told->wait());
    EXPECT_TRUE(worker.wait(kDeadline));
    EXPECT_EQ(told.use_count(), 1);
    ASSERT_TRUE(worker.start([](const Worker::GiveUp&) { throw 1; }, [] { throw 2; })) << "even where telling throws";
    EXPECT_TRUE(worker.wait(kDeadline));
    ASSERT_TRUE(Worker::run([](const Worker::GiveUp&) { throw std::bad_alloc(); }));
    EXPECT_TRUE(Worker::endAll(kDeadline));
}

TEST(Worker, ATaskIsGivenUpByASignalByTheNextOneAndByTheEndOfItsWorker) {
    for (const int how : {0, 1, 2}) {
        auto begun = std::make_shared<Gate>();
        auto ended = std::make_shared<Gate>();
        {
            Worker worker;
            ASSERT_TRUE(worker.start(untilGivenUp(begun, ended)));
            ASSERT_TRUE(begun->wait());
            EXPECT_FALSE(ended->wait(kSoon));
            if (how == 0) worker.giveUp();
            if (how == 1) {
                ASSERT_TRUE(worker.start([](const Worker::GiveUp&) {}));
            }
            if (how != 2) {
                EXPECT_TRUE(ended->wait()) << how;
            }
        }
        EXPECT_TRUE(ended->wait()) << how;
    }
}

TEST(Worker, IsMovedWithItsTaskAndGivesUpTheOneItHad) {
    auto begun = std::make_shared<Gate>(), ended = std::make_shared<Gate>();
    auto others = std::make_shared<Gate>(), othersEnd = std::make_shared<Gate>();
    Worker first, second;
    ASSERT_TRUE(first.start(untilGivenUp(begun, ended)));
    ASSERT_TRUE(second.start(untilGivenUp(others, othersEnd)));
    second = std::move(first);
    EXPECT_TRUE(othersEnd->wait());
    EXPECT_FALSE(ended->wait(kSoon));
    second.giveUp();
    EXPECT_TRUE(second.wait(kDeadline));
    EXPECT_TRUE(ended->wait(milliseconds(0)));
}

/// FAULT-64: The end takes at most two seconds whatever is being decoded
TEST(Worker, AllAreGivenUpTogetherAndWhatRunsOnIsTold) {
    auto begun = std::make_shared<Gate>(), ended = std::make_shared<Gate>();
    ASSERT_TRUE(Worker::run(untilGivenUp(begun, ended)));
    ASSERT_TRUE(begun->wait());
    EXPECT_TRUE(Worker::endAll(kDeadline));
    EXPECT_TRUE(ended->wait(milliseconds(0)));

    auto stuck = std::make_shared<Gate>();
    ASSERT_TRUE(Worker::run([stuck](const Worker::GiveUp&) { stuck->wait(); }));
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(Worker::endAll(kSoon));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kDeadline / 2);
    stuck->open();
    EXPECT_TRUE(Worker::endAll(kDeadline));
}

/// The thread that runs a task: how many tasks it has run, and how many such threads there are.
struct Here {
    Here() { ++alive; }
    ~Here() { --alive; }
    int tasks = 0;
    static inline std::atomic<int> alive{0};
};
thread_local Here here;

bool comesTrue(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kDeadline;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        Gate never;
        never.wait(milliseconds(1));
    }
    return true;
}

TEST(Worker, ShortTasksAreRunByAThreadThatIsKeptForThem) {
    auto most = std::make_shared<std::atomic<int>>(0);
    const auto task = [most](const Worker::GiveUp&) { *most = std::max(most->load(), ++here.tasks); };
    EXPECT_TRUE(comesTrue([&] {
        EXPECT_TRUE(Worker::runOnKept(task));
        return *most >= 3;
    }));
    EXPECT_TRUE(Worker::endAll(kDeadline));
    EXPECT_TRUE(comesTrue([] { return Here::alive == 0; })) << "at the end they go";
    ASSERT_TRUE(Worker::runOnKept([](const Worker::GiveUp&) { throw std::bad_alloc(); }));
    EXPECT_TRUE(Worker::endAll(kDeadline));
}

TEST(Worker, NoShortTaskWaitsForAnotherOneAndFewThreadsAreKept) {
    constexpr int kTasks = 12;
    auto gate = std::make_shared<Gate>();
    auto running = std::make_shared<std::atomic<int>>(0);
    for (int i = 0; i < kTasks; ++i) {
        ASSERT_TRUE(Worker::runOnKept([gate, running](const Worker::GiveUp&) {
            ++here.tasks;
            ++*running;
            gate->wait();
        }));
    }
    EXPECT_TRUE(comesTrue([&] { return *running == kTasks; }));
    EXPECT_EQ(Here::alive, kTasks);
    gate->open();
    EXPECT_TRUE(comesTrue([] { return Here::alive == static_cast<int>(Worker::kMostKept); }));
    EXPECT_TRUE(Worker::endAll(kDeadline));
    EXPECT_TRUE(comesTrue([] { return Here::alive == 0; }));
}

/// What a thread gives up, those that run already keep: none of them takes another task.
TEST(Worker, NoThreadFromBeforeTakesAShortTaskOnceTheyAreToLeave) {
    auto gate = std::make_shared<Gate>();
    auto tasks = std::make_shared<std::atomic<int>>(0);
    const auto count = [tasks](const Worker::GiveUp&) {
        EXPECT_EQ(++here.tasks, 1);
        ++*tasks;
    };
    ASSERT_TRUE(Worker::runOnKept(count));
    ASSERT_TRUE(Worker::runOnKept([gate](const Worker::GiveUp&) {
        ++here.tasks;
        gate->wait();
    }));
    ASSERT_TRUE(comesTrue([&] { return *tasks == 1; }));
    Worker::leaveKept();
    EXPECT_TRUE(comesTrue([] { return Here::alive == 1; })) << "one waits for a task, the other has one";
    gate->open();
    EXPECT_TRUE(comesTrue([] { return Here::alive == 0; })) << "a busy one leaves behind its task";
    ASSERT_TRUE(Worker::runOnKept(count));
    ASSERT_TRUE(comesTrue([&] { return *tasks == 2; }));
    EXPECT_TRUE(Worker::endAll(kDeadline));
}

/// A task that was just handed to a thread that waited is begun by it: whoever makes threads leave waits for its begin
/// alone.
TEST(Worker, WhoMakesThreadsLeaveWaitsForNoTaskThatWasHandedToOne) {
    for (int round = 0; round < 20; ++round) {
        auto ran = std::make_shared<Gate>(), held = std::make_shared<Gate>();
        ASSERT_TRUE(Worker::runOnKept([ran](const Worker::GiveUp&) { ran->open(); }));
        ASSERT_TRUE(ran->wait());
        Gate never;
        never.wait(milliseconds(2));  // in most rounds its thread waits for another task by then
        ASSERT_TRUE(Worker::runOnKept([held](const Worker::GiveUp&) { held->wait(); }));
        const auto begin = std::chrono::steady_clock::now();
        Worker::leaveKept();
        ASSERT_LT(std::chrono::steady_clock::now() - begin, kDeadline / 2);
        held->open();
        ASSERT_TRUE(Worker::endAll(kDeadline));
    }
}

}  // namespace
}  // namespace corvane
