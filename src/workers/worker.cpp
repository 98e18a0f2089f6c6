// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/worker.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <iterator>
#include <list>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace corvane {

namespace {

using Steady = std::chrono::steady_clock;

}  // namespace

class Worker::Running {
public:
    Running(Task task, std::function<void()> broken) : task_(std::move(task)), broken_(std::move(broken)) {}

    enum class Thread { Own, Kept };
    static bool launch(const std::shared_ptr<Running>& running, Thread thread = Thread::Own);
    static bool endAll(Steady::time_point due);
    static void leaveKept();
    void giveUp() { givenUp_ = true; }
    bool wait(Steady::time_point due);

private:
    /// Every task that runs. Never destroyed, because one may run on while the program ends.
    struct All {
        std::mutex mutex;
        std::condition_variable left;
        std::vector<std::shared_ptr<Running>> tasks;  ///< guarded by the mutex, as what follows

        std::condition_variable wanted;               ///< a kept thread
        std::deque<std::shared_ptr<Running>> handed;  ///< to threads that wait: never more than those
        std::size_t kept = 0;                         ///< threads that wait
        std::size_t leaving = 0;                      ///< kept ones that take no further task, and are not over yet
        std::size_t keptOrBusy = 0;                   ///< those that wait, and what may be kept when its task has ended
        std::list<std::thread> threads;               ///< that run
        std::list<std::thread> over;                  ///< that have nothing more to do, and are joined soon
        int ends = 0;                                 ///< calls of endAll() that wait: nothing is kept
        unsigned age = 0;                             ///< calls of leaveKept(): threads from before are not kept
    };
    static All& all() {
        static auto* const tasks = new All;
        return *tasks;
    }
    /// Threads are joined, not detached: the threads' library of some systems gives what it keeps about a detached one
    /// to the next before the system is done with the first, and the next then never begins its task. What is over ends
    /// at once.
    static void joinOver() noexcept;
    struct JoinsAtEnd {
        ~JoinsAtEnd() { joinOver(); }
    };
    static void serve(unsigned age) noexcept;
    static std::shared_ptr<Running> next(unsigned age) noexcept;
    void work() noexcept;
    void tellBroken() noexcept;
    void leave() noexcept;

    Task task_;
    std::function<void()> broken_;
    GiveUp givenUp_{false};
    bool ended_ = false;  ///< guarded by the mutex of all
};

bool Worker::Running::launch(const std::shared_ptr<Running>& running, Thread thread) {
    static const JoinsAtEnd joinsAtEnd;
    joinOver();
    {
        const std::lock_guard lock(all().mutex);
        const unsigned age = all().age;
        all().tasks.push_back(running);
        if (thread == Thread::Kept && all().handed.size() < all().kept) {
            all().handed.push_back(running);
            all().wanted.notify_one();
            return true;
        }
        if (thread == Thread::Kept) ++all().keptOrBusy;
        try {
            all().threads.emplace_back();
            const auto self = std::prev(all().threads.end());
            // Nobody waits for it before it is over: it may hang in the system for as long as a drive does.
            *self = std::thread([task = running, thread, age, self]() mutable {
                task->work();
                task.reset();
                if (thread == Thread::Kept) serve(age);
                const std::lock_guard last(all().mutex);
                all().over.splice(all().over.end(), all().threads, self);
                if (thread == Thread::Kept) --all().leaving;
                all().left.notify_all();
            });
            return true;
        } catch (...) {
            all().threads.remove_if([](const std::thread& one) { return !one.joinable(); });
            if (thread == Thread::Kept) --all().keptOrBusy;
        }
    }
    running->leave();
    return false;
}

void Worker::Running::joinOver() noexcept {
    std::list<std::thread> over;
    {
        const std::lock_guard lock(all().mutex);
        over.swap(all().over);
    }
    for (std::thread& one : over) one.join();
}

void Worker::Running::serve(unsigned age) noexcept {
    while (const std::shared_ptr<Running> task = next(age)) task->work();
}

/// Waits for another task; null: the thread is not kept any longer. What was handed over is taken by one of those that
/// wait, because none of them leaves before.
std::shared_ptr<Worker::Running> Worker::Running::next(unsigned age) noexcept {
    All& here = all();
    std::unique_lock lock(here.mutex);
    const bool mayTake = age == here.age;
    if (here.kept < kMostKept && mayTake) {
        ++here.kept;
        here.wanted.wait_until(lock, Steady::now() + kKept,
                               [&] { return !here.handed.empty() || here.ends > 0 || age != here.age; });
        --here.kept;
        here.left.notify_all();  // leaveKept() waits for that, not for the task that may come next
    }
    if (here.handed.empty() || !mayTake) {
        --here.keptOrBusy;
        ++here.leaving;
        here.left.notify_all();
        return nullptr;
    }
    std::shared_ptr<Running> task = std::move(here.handed.front());
    here.handed.pop_front();
    return task;
}

void Worker::Running::work() noexcept {
    try {
        task_(givenUp_);
    } catch (...) {
        tellBroken();
    }
    // What they hold goes before anybody is told that the task has ended.
    task_ = nullptr;
    broken_ = nullptr;
    leave();
}

void Worker::Running::tellBroken() noexcept {
    try {
        if (broken_) broken_();
    } catch (...) {
        // There is nobody left to tell.
    }
}

void Worker::Running::leave() noexcept {
    const std::lock_guard lock(all().mutex);
    ended_ = true;
    std::erase_if(all().tasks, [this](const std::shared_ptr<Running>& one) { return one.get() == this; });
    all().left.notify_all();
}

bool Worker::Running::wait(Steady::time_point due) {
    std::unique_lock lock(all().mutex);
    return all().left.wait_until(lock, due, [this] { return ended_; });
}

bool Worker::Running::endAll(Steady::time_point due) {
    std::unique_lock lock(all().mutex);
    for (const std::shared_ptr<Running>& one : all().tasks) one->giveUp();
    ++all().ends;
    all().wanted.notify_all();
    const bool left = all().left.wait_until(lock, due, [] { return all().tasks.empty() && all().keptOrBusy == 0; });
    --all().ends;
    return left;
}

void Worker::Running::leaveKept() {
    {
        std::unique_lock lock(all().mutex);
        ++all().age;
        all().wanted.notify_all();
        // A task that is handed over now must not find one of them. They wait for nothing else: this takes no time.
        all().left.wait(lock, [] { return all().kept == 0 && all().leaving == 0; });
    }
    joinOver();  // a copy of the process, which has none of them, must find none to join
}

Worker& Worker::operator=(Worker&& other) noexcept {
    giveUp();
    running_ = std::move(other.running_);
    return *this;
}

Worker::~Worker() { giveUp(); }

bool Worker::start(Task task, std::function<void()> broken) noexcept {
    giveUp();
    running_.reset();
    try {
        auto running = std::make_shared<Running>(std::move(task), std::move(broken));
        if (!Running::launch(running)) return false;
        running_ = std::move(running);
        return true;
    } catch (...) {
        return false;  // no memory
    }
}

void Worker::giveUp() noexcept {
    if (running_) running_->giveUp();
}

bool Worker::wait(std::chrono::milliseconds patience) noexcept {
    return !running_ || running_->wait(Steady::now() + patience);
}

bool Worker::run(Task task, std::function<void()> broken) noexcept {
    try {
        return Running::launch(std::make_shared<Running>(std::move(task), std::move(broken)));
    } catch (...) {
        return false;  // no memory
    }
}

bool Worker::runOnKept(Task task, std::function<void()> broken) noexcept {
    try {
        return Running::launch(std::make_shared<Running>(std::move(task), std::move(broken)), Running::Thread::Kept);
    } catch (...) {
        return false;  // no memory
    }
}

void Worker::leaveKept() noexcept { Running::leaveKept(); }

bool Worker::endAll(std::chrono::milliseconds patience) noexcept { return Running::endAll(Steady::now() + patience); }

}  // namespace corvane
