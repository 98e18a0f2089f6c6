// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <mutex>

#include "windows/api.h"

namespace corvane {

/// The thread on which MCI devices live, with the message queue that they notify: opening one, or stopping it, may take
/// seconds, and the panel answers meanwhile. Kept warm while controls come and go.
class MciThread {
public:
    using Job = std::function<void()>;

    MciThread();
    MciThread(const MciThread&) = delete;
    MciThread& operator=(const MciThread&) = delete;
    /// The jobs that were asked for are still done; the thread is not waited for longer than a moment: a drive that
    /// hangs must not hang us.
    ~MciThread();

    /// Any thread: done in order.
    void post(Job job) const;

private:
    struct Queue {
        Queue();
        ~Queue();
        void run();
        bool take(Job& job);

        std::mutex mutex;
        std::deque<Job> jobs;
        bool ending = false;
        HANDLE filled;
        HANDLE ended;
    };
    std::shared_ptr<Queue> queue_ = std::make_shared<Queue>();
};

}  // namespace corvane
