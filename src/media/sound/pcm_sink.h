// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "media/sound/sound_backend.h"

namespace corvane {

/// How much sound a sink takes ahead. Enough for few wake-ups, of the reader and of the server, and for a busy machine.
/// A pause, a seek and another sound are heard at once all the same: the server takes back what it has not played.
inline constexpr int kHeldBySinkMs = 400;

/// Where samples go: a stream of the sound server, or a clock that swallows them. Used from one thread; no call blocks
/// for longer than a few milliseconds.
class PcmSink {
public:
    PcmSink() = default;
    PcmSink(const PcmSink&) = delete;
    PcmSink& operator=(const PcmSink&) = delete;
    virtual ~PcmSink() = default;

    virtual bool alive() = 0;            ///< false: gone for good, take another one
    virtual bool audible() const = 0;    ///< false: a stand-in
    virtual std::size_t writable() = 0;  ///< frames it wants now
    virtual void write(const float* samples, std::size_t frames) = 0;
    /// Frames written and not heard yet; empty while the server has not said.
    virtual std::optional<double> pending() = 0;
    virtual void hold(bool held) = 0;  ///< stands still, keeping what was written
    virtual void flush() = 0;          ///< forgets what was written and not heard
};

/// Takes samples at the pace of the clock, for machines and moments without a sound server.
class ClockSink : public PcmSink {
public:
    /// `pendingFrames` count as written before.
    explicit ClockSink(PcmFormat format, double pendingFrames = 0);

    bool alive() override { return true; }
    bool audible() const override { return false; }
    std::size_t writable() override;
    void write(const float* samples, std::size_t frames) override;
    std::optional<double> pending() override;
    void hold(bool held) override;
    void flush() override;

private:
    using Steady = std::chrono::steady_clock;
    void advance();

    double rate_;
    double pending_;
    bool held_ = false;
    Steady::time_point at_;
};

}  // namespace corvane
