// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fake/call_log.h"
#include "platform/ports.h"

namespace corvane {

/// Auxiliary devices and the wave output with their volumes.
class FakeSound : public SoundDevices {
public:
    struct Aux {
        std::optional<AuxCaps> caps = AuxCaps{};
        std::optional<std::uint32_t> volume = 0xFFFFFFFF;  ///< empty: cannot be read or set
    };

    explicit FakeSound(CallLog& log) : log_(log) {}

    int auxGetNumDevs() override { return static_cast<int>(aux.size()); }
    std::optional<AuxCaps> auxGetDevCaps(int device) override;
    std::optional<std::uint32_t> auxGetVolume(int device) override;
    void auxSetVolume(int device, std::uint32_t volume) override;
    std::optional<std::uint32_t> waveOutGetVolume() override;
    void waveOutSetVolume(std::uint32_t volume) override;

    std::vector<Aux> aux;
    std::optional<std::uint32_t> wave = 0xFFFFFFFF;

private:
    Aux* find(int device);

    CallLog& log_;
};

}  // namespace corvane
