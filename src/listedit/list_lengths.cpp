// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/list_lengths.h"

#include <unordered_set>
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "types/kind_facts.h"
#include "types/numbers.h"

namespace corvane {

std::optional<std::int16_t> ListLengths::kindOf(const std::string& path) const {
    const std::string extension = mdlPublicFunction::typeOf(player_.conveniences, path);
    const std::int16_t kind = player_.types.toOpen(extension).kind;
    return hasLength(kind) ? std::optional(kind) : std::nullopt;
}

void ListLengths::take(const std::vector<std::string>& paths) {
    paths_ = paths;
    waiting_.clear();
    if (player_.ports.lengths != nullptr) {
        std::unordered_set<std::string> asked;
        for (const std::string& each : paths_) {
            if (known_.count(each) > 0 || !kindOf(each) || !asked.insert(each).second) continue;
            waiting_.push_back(each);
        }
    }
    count();
    if (!reading_) next();
}

void ListLengths::stop() {
    waiting_.clear();
    if (!reading_) return;
    reading_ = false;
    player_.ports.lengths->giveUp();
    count();
}

void ListLengths::next() {
    reading_ = !waiting_.empty();
    if (!reading_ || answers_ >= kAtOnce) {
        count();
        changed_();
    }
    if (!reading_) return;
    const std::string path = std::move(waiting_.front());
    waiting_.pop_front();
    player_.ports.lengths->read(path, *kindOf(path), [this, path](std::optional<std::int64_t> length) {
        known_[path] = length;
        ++answers_;
        next();
    });
}

void ListLengths::count() {
    answers_ = 0;
    total_ = {};
    for (const std::string& each : paths_) {
        const auto found = known_.find(each);
        if (found == known_.end()) {
            total_.waiting += kindOf(each).has_value() ? 1 : 0;
        } else if (found->second) {
            total_.milliseconds += *found->second;
        } else {
            ++total_.unknown;
        }
    }
}

std::optional<std::int64_t> ListLengths::of(const std::string& path) const {
    const auto found = known_.find(path);
    return found == known_.end() ? std::nullopt : found->second;
}

std::string lengthText(std::int64_t milliseconds) {
    constexpr std::int64_t kMinute = 60;
    constexpr std::int64_t kHour = 3600;
    const std::int64_t seconds = milliseconds / 1000;
    const auto two = [](std::int64_t number) { return zeroPadded(number, 2); };
    const std::string minutes = seconds < kHour
                                    ? std::to_string(seconds / kMinute)
                                    : std::to_string(seconds / kHour) + ":" + two(seconds / kMinute % kMinute);
    return minutes + ":" + two(seconds % kMinute);
}

std::string lengthText(int count, const ListLengths::Total& total, bool reading) {
    std::string text = mdlPublicFunction::filesText(static_cast<std::size_t>(count));
    if (total.milliseconds > 0) text += ", " + lengthText(total.milliseconds);
    const int unknown = total.unknown + (reading ? 0 : total.waiting);
    if (unknown > 0) text += ", " + std::to_string(unknown) + " of unknown length";
    if (reading) text += ", reading lengths: " + std::to_string(total.waiting) + " left";
    return text;
}

}  // namespace corvane
