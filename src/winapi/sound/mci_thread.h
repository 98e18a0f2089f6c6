// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "winapi/api.h"

namespace corvane {

/// The thread on which MCI devices live, with the message queue that they notify: opening one, or stopping it, may take
/// seconds, and the panel answers meanwhile. Kept warm while controls come and go. All calls are made on the
/// user-interface thread, but here().
class MciThread {
public:
    using Job = std::function<void()>;

    MciThread();
    MciThread(const MciThread&) = delete;
    MciThread& operator=(const MciThread&) = delete;
    /// The jobs that were asked for are still done; the thread is not waited for longer than a moment: a drive that
    /// hangs must not hang us.
    ~MciThread();

    /// Done in order. A job that throws is given up.
    void post(Job job);

    /// The number of the thread that this runs on; 0: it is none for devices. No number is given twice: a device
    /// answers on the thread that opened it alone.
    static std::uint64_t here();
    /// Leaves a thread that has been at one job for so long to itself, and has a new one do what still waits. The job
    /// and what it holds go when it ends after all. False: it is not at one, or too many hang already.
    bool replaceIfHung(int milliseconds);
    /// Threads of the whole process that were left and have not ended; any thread.
    static int hanging() { return hanging_; }

private:
    struct Queue {
        Queue();
        ~Queue();
        void run();
        bool take(Job& job);
        bool start(const std::shared_ptr<Queue>& self);

        const std::uint64_t number;
        std::mutex mutex;  ///< guards what follows
        std::deque<Job> jobs;
        ULONGLONG since = 0;  ///< when the job that runs began, milliseconds; 0: none runs
        bool ending = false;
        bool left = false;
        bool running = false;
        HANDLE filled;
        HANDLE ended;
    };
    inline static std::atomic<int> hanging_ = 0;
    std::shared_ptr<Queue> queue_ = std::make_shared<Queue>();
};

}  // namespace corvane
