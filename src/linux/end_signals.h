// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace corvane {

/// The system's signals to end (terminate, interrupt, hang up). They are kept from all threads and read by one of our
/// own, so that they are heard also while the user-interface thread waits: a wait that takes DriveCalls::hurried as its
/// flag ends. One that the program was started to ignore stays ignored. While nobody listens, and where the system
/// refuses the thread, they do what they do to every program.
class EndSignals {
public:
    /// Before all threads that must not have the signals.
    EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals() { stop(); }

    /// asked: the program is to end; on the user-interface thread, which calls this, from its loop, also while a box is
    /// up. Once for each signal.
    void listen(std::function<void()> asked);
    /// On that thread: nothing is told any more.
    void leave();
    /// The thread of our own ends.
    void stop();

private:
    struct Watch;
    std::shared_ptr<Watch> watch_;  ///< held by its thread as well; null: there is none
};

}  // namespace corvane
