// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/timer_driver.h"

namespace corvane {

TimerDriver::~TimerDriver() {
    for (auto& [timer, armed] : armed_) {
        timer->removeObserver(this);
        disarm(armed);
    }
}

void TimerDriver::attach(Form& form) {
    for (Control* control : form.controls()) {
        if (control->kind() != ControlKind::Timer) continue;
        auto& timer = static_cast<Timer&>(*control);
        timer.addObserver(this);
        Armed& armed = armed_[&timer];
        if (timer.Enabled) arm(timer, armed);
    }
}

void TimerDriver::detach(Form& form) {
    for (Control* control : form.controls()) {
        if (control->kind() != ControlKind::Timer) continue;
        const auto found = armed_.find(static_cast<Timer*>(control));
        if (found == armed_.end()) continue;
        control->removeObserver(this);
        disarm(found->second);
        armed_.erase(found);
    }
}

void TimerDriver::propertyChanged(Control& control, PropertyId property) {
    if (property != PropertyId::Enabled && property != PropertyId::Interval) return;
    auto& timer = static_cast<Timer&>(control);
    Armed& armed = armed_[&timer];
    disarm(armed);
    if (timer.Enabled) arm(timer, armed);
}

void TimerDriver::arm(Timer& timer, Armed& armed) {
    if (timer.Interval <= 0) return;
    Timer* const ticking = &timer;
    const Generation::Ticket arming = armed.arming.ticket();
    armed.id = timers_.start(timer.Interval, [this, ticking, arming] {
        const auto found = armed_.find(ticking);
        if (found == armed_.end() || found->second.waiting) return;
        found->second.waiting = true;
        loop_.post([this, ticking, arming] {
            if (!arming.isCurrent()) return;
            armed_[ticking].waiting = false;
            ticking->Tick.raise();
        });
    });
}

void TimerDriver::disarm(Armed& armed) {
    armed.arming.next();
    armed.waiting = false;
    if (armed.id != 0) timers_.stop(armed.id);
    armed.id = 0;
}

}  // namespace corvane
