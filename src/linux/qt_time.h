// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include "program/numbered_timers.h"

namespace corvane {

/// Timers over Qt's precise ones.
class QtTimers : public NumberedTimers, private QObject {
protected:
    std::uint64_t begin(int intervalMs) override;
    void cease(std::uint64_t number) override;

private:
    void timerEvent(QTimerEvent* event) override;
};

class QtClock : public Clock {
public:
    LocalTime localTime() override;
    std::int64_t milliseconds() override;
};

/// The system's time in its finest unit.
std::uint64_t finestTime();

}  // namespace corvane
