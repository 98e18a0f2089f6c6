// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/woken_loop.h"

namespace corvane {

void WokenLoop::wake() {
    if (!woken_ && !stopped_) woken_ = callSoon();
}

void WokenLoop::called() {
    woken_ = false;
    if (!stopped_) runPending();
}

void WokenLoop::stop() {
    stopped_ = true;
    if (!end_) end_.emplace(*this);
}

}  // namespace corvane
