// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/schedule.h"

#include <algorithm>

namespace corvane {

Schedule::Id Schedule::at(std::int64_t time, std::function<void()> action) {
    const Id id = ++last_;
    const std::int64_t due = std::max(time, now_);
    times_[id] = due;
    actions_[{due, id}] = std::move(action);
    return id;
}

void Schedule::cancel(Id id) {
    const auto found = times_.find(id);
    if (found == times_.end()) return;
    actions_.erase({found->second, id});
    times_.erase(found);
}

std::optional<std::int64_t> Schedule::next() const {
    if (actions_.empty()) return std::nullopt;
    return actions_.begin()->first.first;
}

void Schedule::runNext() {
    if (actions_.empty()) return;
    auto node = actions_.extract(actions_.begin());
    times_.erase(node.key().second);
    passTo(node.key().first);
    node.mapped()();
}

void Schedule::passTo(std::int64_t time) { now_ = std::max(now_, time); }

}  // namespace corvane
