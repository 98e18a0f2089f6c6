// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/numbered_timers.h"

#include <algorithm>
#include <utility>

namespace corvane {

TimerId NumberedTimers::start(int intervalMs, std::function<void()> tick) {
    running_[begin(std::max(intervalMs, 1))] = {++last_, std::move(tick)};
    return last_;
}

void NumberedTimers::stop(TimerId timer) {
    const auto found = std::find_if(running_.begin(), running_.end(),
                                    [timer](const auto& each) { return each.second.timer == timer; });
    if (found == running_.end()) return;
    cease(found->first);
    running_.erase(found);
}

void NumberedTimers::stopAll() {
    while (!running_.empty()) stop(running_.begin()->second.timer);
}

void NumberedTimers::ticked(std::uint64_t number) {
    const auto found = running_.find(number);
    if (found == running_.end()) return;   // it was in the queue when it was stopped
    const auto tick = found->second.tick;  // the tick may stop its timer
    tick();
}

}  // namespace corvane
