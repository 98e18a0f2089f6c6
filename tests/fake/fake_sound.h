// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
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

    FakeSound(EventLoop& loop, CallLog& log) : loop_(loop), log_(log) {}

    int auxGetNumDevs() override { return static_cast<int>(aux.size()); }
    std::optional<AuxCaps> auxGetDevCaps(int device) override;
    std::optional<std::uint32_t> auxGetVolume(int device) override;
    void auxSetVolume(int device, std::uint32_t volume) override;
    std::optional<std::uint32_t> waveOutGetVolume() override;
    void waveOutSetVolume(std::uint32_t volume) override;
    std::optional<std::string> waveOutName() override;
    void waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) override;

    /// Another program sets the volume of the wave output in use.
    void setByAnother(std::uint32_t volume);
    /// Another wave output, made when it is not there, is the one in use from now on.
    void useOutput(const std::string& name);
    /// An output that is not in use goes.
    void removeOutput(const std::string& name) { others.erase(name); }

    std::vector<Aux> aux;
    std::optional<std::uint32_t> wave = 0xFFFFFFFF;
    std::string output = "speakers";              ///< whose volume `wave` is
    std::map<std::string, std::uint32_t> others;  ///< outputs that are not in use

private:
    Aux* find(int device);

    void tellChange();

    EventLoop& loop_;
    CallLog& log_;
};

}  // namespace corvane
