// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>

namespace corvane {

/// A thread with one task: the only way to a thread of one's own. Nothing here throws. A thread that the system refuses
/// is told, and a task that throws, as when memory is short, ends there. A task may run on after everybody else has
/// left, held by a drive or a decoder: it holds all that it uses. One Worker belongs to one thread.
class Worker {
public:
    /// True once nobody wants the task's result any more. It lives as long as the task runs.
    using GiveUp = std::atomic<bool>;
    using Task = std::function<void(const GiveUp& givenUp)>;

    /// In words, for who must be told why there is no result.
    static constexpr const char* kRefused = "The system refuses another thread.";
    static constexpr const char* kBroken = "There is not enough memory.";

    Worker() = default;  ///< without a task
    Worker(Worker&&) noexcept = default;
    Worker& operator=(Worker&& other) noexcept;
    ~Worker();  ///< gives the task up and does not wait for it

    /// Gives up the task before and starts this one. False: the system refuses another thread, or memory; the task is
    /// dropped and was not begun. `broken` is called on the task's thread when the task threw.
    bool start(Task task, std::function<void()> broken = {}) noexcept;
    void giveUp() noexcept;
    /// True when no task runs, and nothing that it held is left; false: it still runs when the patience is over.
    bool wait(std::chrono::milliseconds patience) noexcept;

    /// A task that is neither given up, other than by endAll(), nor waited for. As start().
    static bool run(Task task, std::function<void()> broken = {}) noexcept;
    /// The same for tasks that are short and come often, such as questions to a drive: each is run by a thread that has
    /// done with another one, where there is one. At most kMostKept threads wait for that, each for kKept.
    static bool runOnKept(Task task, std::function<void()> broken = {}) noexcept;
    static constexpr std::size_t kMostKept = 4;
    static constexpr std::chrono::milliseconds kKept{20'000};
    /// What has been begun for such tasks so far takes no further one: it leaves at once, or when its task has ended.
    /// For a caller that gives up rights which only threads begun later go without.
    static void leaveKept() noexcept;
    /// At the program's end: gives up all tasks and waits for them together; kept threads leave. False: some run on,
    /// and the program must end without taking down what they may use.
    static bool endAll(std::chrono::milliseconds patience) noexcept;

private:
    class Running;
    std::shared_ptr<Running> running_;
};

}  // namespace corvane
