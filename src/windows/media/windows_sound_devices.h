// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ports.h"
#include "windows/media/mm_api.h"

namespace corvane {

/// Output volume of the first wave output and of the auxiliary devices.
class WindowsSoundDevices : public SoundDevices {
public:
    WindowsSoundDevices() = default;
    ~WindowsSoundDevices() override;

    int auxGetNumDevs() override;
    std::optional<AuxCaps> auxGetDevCaps(int device) override;
    std::optional<std::uint32_t> auxGetVolume(int device) override;
    void auxSetVolume(int device, std::uint32_t volume) override;
    std::optional<std::uint32_t> waveOutGetVolume() override;
    void waveOutSetVolume(std::uint32_t volume) override;
    /// The first output has no name of its own: it stays the first one.
    std::optional<std::string> waveOutName() override { return "0"; }
    void waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) override {
        if (name == "0") waveOutSetVolume(volume);
    }

private:
    HWAVEOUT opened();

    HWAVEOUT opened_ = nullptr;  ///< null until a system asks for it
};

}  // namespace corvane
