// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <utility>

#include "platform/ports.h"

namespace corvane {

/// Numbers of a generator of 64 bits, seeded by a time of the system's.
class SeededRandom : public Random {
public:
    /// time: as fine as the system has it.
    explicit SeededRandom(std::function<std::uint64_t()> time) : time_(std::move(time)) {}

    void seedFromClock() override { engine_.seed(time_()); }
    double next() override { return static_cast<double>(engine_() >> 11U) * 0x1.0p-53; }

private:
    std::function<std::uint64_t()> time_;
    std::mt19937_64 engine_;
};

}  // namespace corvane
