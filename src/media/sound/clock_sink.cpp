// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "media/sound/pcm_sink.h"

namespace corvane {

namespace {
constexpr double kBufferSeconds = kHeldBySinkMs / 1000.0;
}

ClockSink::ClockSink(PcmFormat format, double pendingFrames)
    : rate_(format.rate), pending_(std::max(0.0, pendingFrames)), at_(Steady::now()) {}

void ClockSink::advance() {
    const Steady::time_point now = Steady::now();
    if (!held_) pending_ = std::max(0.0, pending_ - std::chrono::duration<double>(now - at_).count() * rate_);
    at_ = now;
}

std::size_t ClockSink::writable() {
    advance();
    return static_cast<std::size_t>(std::max(0.0, rate_ * kBufferSeconds - pending_));
}

void ClockSink::write(const float*, std::size_t frames) {
    advance();
    pending_ += static_cast<double>(frames);
}

std::optional<double> ClockSink::pending() {
    advance();
    return pending_;
}

void ClockSink::hold(bool held) {
    advance();
    held_ = held;
}

void ClockSink::flush() { pending_ = 0; }

}  // namespace corvane
