// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mci_clock.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr int kFineReports = 3;                ///< so many different places in a row are no steps
constexpr std::int64_t kMostAheadMs = 1000;    ///< a device in steps tells at most this much before it is heard
constexpr std::int64_t kMostBehindMs = 400;    ///< and at most this much after it was heard
constexpr std::int64_t kMostSilenceMs = 1000;  ///< longer without a new place: the device itself stands
constexpr std::int64_t kJitterMs = 40;         ///< a fine report may be this much behind the clock

}  // namespace

void MciClock::start(std::int64_t place, std::int64_t now) {
    runs_ = true;
    place_ = reported_ = place;
    since_ = now;
    heard_ = false;
    changes_ = 0;
}

void MciClock::hold(std::int64_t place) {
    runs_ = false;
    place_ = place;
}

void MciClock::report(std::int64_t place, std::int64_t now) {
    if (!runs_) return;
    changes_ = heard_ && place != reported_ ? changes_ + 1 : 0;
    heard_ = true;
    reported_ = place;
    const std::int64_t counted = place_ + units(now - since_);
    const std::int64_t latest = std::max(place + units(kMostBehindMs), place_);
    std::int64_t truth = std::clamp(counted, place - units(kMostAheadMs), latest);
    if (changes_ >= kFineReports) {
        const std::int64_t behind = counted - place;
        truth = behind > 0 && behind < units(kJitterMs) ? counted : place;
    }
    place_ = truth;
    since_ = now;
}

std::int64_t MciClock::place(std::int64_t now) const {
    if (!runs_) return place_;
    return place_ + units(std::clamp<std::int64_t>(now - since_, 0, kMostSilenceMs));
}

}  // namespace corvane
