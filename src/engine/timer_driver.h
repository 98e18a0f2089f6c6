// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "forms/form.h"
#include "platform/generation.h"
#include "platform/ports.h"

namespace corvane {

/// Arms the Timer controls of loaded forms on the Timers port. A tick is posted, so it waits while a box is up, and at
/// most one tick of a timer waits at a time.
class TimerDriver : private ControlObserver {
public:
    TimerDriver(Timers& timers, EventLoop& loop) : timers_(timers), loop_(loop) {}
    TimerDriver(const TimerDriver&) = delete;
    TimerDriver& operator=(const TimerDriver&) = delete;
    ~TimerDriver() override;

    void attach(Form& form);
    void detach(Form& form);  ///< disarms all its timers; posted ticks are dropped

private:
    struct Armed {
        TimerId id = 0;        ///< 0: not armed
        Generation arming;     ///< the next one when it is disarmed: older ticks are dropped
        bool waiting = false;  ///< a tick is posted
    };
    void propertyChanged(Control& control, PropertyId property) override;
    void arm(Timer& timer, Armed& armed);
    void disarm(Armed& armed);

    Timers& timers_;
    EventLoop& loop_;
    std::map<Timer*, Armed> armed_;
};

}  // namespace corvane
