// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace corvane {

class Files;

/// Work that asks for many files, done where nobody waits for it. All calls are made on the user-interface thread, but
/// for those that say otherwise.
class FileWork {
public:
    /// What a task has of the machine, on its own thread; valid as long as the task runs.
    class Course {
    public:
        virtual ~Course() = default;
        virtual Files& files() = 0;
        virtual bool isGivenUp() const = 0;        ///< nobody wants the result any more
        virtual std::int64_t milliseconds() = 0;   ///< since the task began
        virtual void tell(std::size_t count) = 0;  ///< how far it has come
    };
    /// Holds all that it uses: it may run on after everybody else has left.
    using Task = std::function<void(Course& course)>;

    /// A task on its way. Gives it up when it goes.
    class Run {
    public:
        Run() = default;
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;
        virtual ~Run() = default;
        virtual std::size_t told() const = 0;  ///< what the task told last, 0 before
    };

    virtual ~FileWork() = default;
    /// Begins the task and returns at once. `done` is called in a posted event of its own, once, when the task has
    /// ended, or with false where there was no thread or no memory for it; never once the run has gone.
    virtual std::unique_ptr<Run> begin(Task task, std::function<void(bool ended)> done) = 0;
};

}  // namespace corvane
