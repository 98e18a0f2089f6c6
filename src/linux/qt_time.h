// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <map>
#include <memory>
#include <random>

#include "platform/ports.h"

namespace corvane {

/// Timers over Qt's precise ones. A tick that comes late is not made up for.
class QtTimers : public Timers {
public:
    TimerId start(int intervalMs, std::function<void()> tick) override;
    void stop(TimerId timer) override;
    void stopAll();

private:
    /// A timer may be stopped inside its own tick: the object goes from the event loop.
    struct Later {
        void operator()(QTimer* timer) const;
    };
    std::map<TimerId, std::unique_ptr<QTimer, Later>> running_;
    TimerId last_ = 0;
};

class QtClock : public Clock {
public:
    LocalTime localTime() override;
    std::int64_t milliseconds() override;
};

class QtRandom : public Random {
public:
    void seedFromClock() override;
    double next() override;

private:
    std::mt19937_64 engine_;
};

}  // namespace corvane
