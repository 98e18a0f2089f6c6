// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/sleep_watch.h"

#include <memory>

namespace corvane {

namespace {

constexpr int kBeforeSleepMs = 1000;  ///< a box may hold posted events up

}  // namespace

/// A machine that wakes by itself tells so, and tells it once more when somebody touches it.
void SleepWatch::heard(WPARAM what) {
    const bool begins = what == PBT_APMSUSPEND;
    const bool ends = what == PBT_APMRESUMEAUTOMATIC || what == PBT_APMRESUMESUSPEND;
    if ((!begins && !ends) || begins == sleeps_) return;
    sleeps_ = begins;
    const auto done = std::make_shared<bool>(false);
    loop_.post([told = told_, begins, done] {
        told(begins);
        *done = true;
    });
    if (begins) loop_.pumpInside([done] { return *done; }, kBeforeSleepMs);
}

}  // namespace corvane
