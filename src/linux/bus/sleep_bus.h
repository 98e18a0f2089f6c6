// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <functional>
#include <string>

#include "workers/ui_post.h"
#include "workers/worker.h"

namespace corvane {

/// Hears on the system's message bus when the machine goes to sleep, when it is awake again, and when a session is to
/// be locked. Nothing is asked and nothing is held up: the sleep does not wait for the player. Lives on the
/// user-interface thread.
class SleepBus : public QObject {
    Q_OBJECT

public:
    using Bus = std::function<QDBusConnection()>;

    /// bus is asked once, a moment later, when `answers` has said in a worker that one is there. told: the machine goes
    /// to sleep (true), or is awake; locks: a session is to be locked; both from the desktop's own loop. `post`: on
    /// which the worker's answer comes.
    SleepBus(UiPost post, std::function<bool()> answers, Bus bus, std::function<void(bool sleeps)> told,
             std::function<void()> locks);

    /// The system's bus, and whether one answers there.
    static QDBusConnection systemBus() { return QDBusConnection::systemBus(); }
    static bool systemBusAnswers();

private slots:
    void preparing(bool sleeps) { told_(sleeps); }
    void locking() { locks_(); }

private:
    void listen();

    Bus source_;
    std::function<void(bool)> told_;
    std::function<void()> locks_;
    Worker asking_;
};

}  // namespace corvane
