// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "platform/idle_inhibitor.h"
#include "winapi/api.h"

namespace corvane {

/// Inhibits idling by the calling thread's execution state, which the system drops when the thread ends.
class IdleState : public IdleInhibitor {
public:
    IdleState() = default;
    IdleState(const IdleState&) = delete;
    IdleState& operator=(const IdleState&) = delete;
    ~IdleState() override { inhibit(false); }

    void inhibit(bool on) override {
        if (std::exchange(on_, on) == on) return;
        SetThreadExecutionState(on ? ES_CONTINUOUS | ES_DISPLAY_REQUIRED | ES_SYSTEM_REQUIRED : ES_CONTINUOUS);
    }

private:
    bool on_ = false;
};

}  // namespace corvane
