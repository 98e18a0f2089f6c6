// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/worker.h"

#include <algorithm>
#include <condition_variable>
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

    static bool launch(const std::shared_ptr<Running>& running);
    static bool endAll(Steady::time_point due);
    void giveUp() { givenUp_ = true; }
    bool wait(Steady::time_point due);

private:
    /// Every task that runs. Never destroyed, because one may run on while the program ends.
    struct All {
        std::mutex mutex;
        std::condition_variable left;
        std::vector<std::shared_ptr<Running>> tasks;  ///< guarded by the mutex
    };
    static All& all() {
        static auto* const tasks = new All;
        return *tasks;
    }
    void work() noexcept;
    void tellBroken() noexcept;
    void leave() noexcept;

    Task task_;
    std::function<void()> broken_;
    GiveUp givenUp_{false};
    bool ended_ = false;  ///< guarded by the mutex of all
};

bool Worker::Running::launch(const std::shared_ptr<Running>& running) {
    {
        const std::lock_guard lock(all().mutex);
        all().tasks.push_back(running);
    }
    try {
        // Not joined: it may hang in the system for as long as a drive does.
        std::thread([running] { running->work(); }).detach();
        return true;
    } catch (...) {
        running->leave();
        return false;
    }
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
    return all().left.wait_until(lock, due, [] { return all().tasks.empty(); });
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

bool Worker::endAll(std::chrono::milliseconds patience) noexcept { return Running::endAll(Steady::now() + patience); }

}  // namespace corvane
