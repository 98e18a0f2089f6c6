// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/context.h>
#include <pulse/thread-mainloop.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

#include "workers/worker.h"

namespace corvane {

/// A connection to the sound server with a thread of its own, which sleeps while nothing happens. The server is never
/// started by us; one that has gone is looked for again when somebody asks.
class PulseLink {
public:
    explicit PulseLink(const char* name);
    ~PulseLink();
    PulseLink(const PulseLink&) = delete;
    PulseLink& operator=(const PulseLink&) = delete;

    /// Connects when needed, waiting at most so long. A failed attempt is repeated after `kRetryMs` at the earliest.
    bool ready(int waitMs);
    pa_context* context() const { return context_; }  ///< valid under Lock, after ready()
    bool refused();                                   ///< nobody took the last attempt, or who did is gone

    /// Keeps the connection's thread out; needed around every call on context and streams.
    class Lock {
    public:
        explicit Lock(PulseLink& link) : loop_(link.loop_) { pa_threaded_mainloop_lock(loop_); }
        ~Lock() { pa_threaded_mainloop_unlock(loop_); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        pa_threaded_mainloop* loop_;
    };

    /// Called by callbacks of streams and operations: something waited for may have come.
    void changed();
    /// Waits until `done` (called under Lock) is true.
    bool waitFor(int waitMs, const std::function<bool()>& done);
    /// On the connection's thread, each time the connection is up.
    void onReady(std::function<void()> handler) { onReady_ = std::move(handler); }

    static constexpr int kRetryMs = 1000;

private:
    bool start();
    bool connected() const;
    bool failed() const;
    void connectAgain();
    void dropContext();

    const char* name_;
    pa_threaded_mainloop* loop_ = nullptr;
    pa_context* context_ = nullptr;
    std::chrono::steady_clock::time_point lastAttempt_;
    bool running_ = false;    ///< the thread
    bool attempted_ = false;  ///< to connect
    std::function<void()> onReady_;
    std::mutex mutex_;
    std::condition_variable wake_;
    unsigned changes_ = 0;
};

/// Whether a sound server takes a connection and greets it within the patience. Waits: for workers.
bool soundServerGreets(std::chrono::milliseconds patience, const Worker::GiveUp& givenUp);

}  // namespace corvane
