// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/ports.h"
#include "winapi/message_window.h"
#include "winapi/sound/wave_outputs.h"

namespace corvane {

/// Output volume of the wave output that sounds go to, and of the auxiliary devices. What others do to that output is
/// looked for, because the system tells it to nobody who has no stream there.
class WindowsSoundDevices : public SoundDevices {
public:
    /// The loop outlives it.
    explicit WindowsSoundDevices(EventLoop& loop,
                                 std::unique_ptr<WaveOutputs> outputs = std::make_unique<SystemWaveOutputs>());

    int auxGetNumDevs() override;
    std::optional<AuxCaps> auxGetDevCaps(int device) override;
    std::optional<std::uint32_t> auxGetVolume(int device) override;
    void auxSetVolume(int device, std::uint32_t volume) override;
    std::optional<std::uint32_t> waveOutGetVolume() override;
    void waveOutSetVolume(std::uint32_t volume) override;
    std::optional<std::string> waveOutName() override { return outputs_->inUse(); }
    void waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) override;

private:
    struct Seen {
        std::optional<std::string> output;
        std::optional<std::uint32_t> volume;
        bool operator==(const Seen&) const = default;
    };
    Seen look();
    void compare();

    EventLoop& loop_;
    std::unique_ptr<WaveOutputs> outputs_;
    std::optional<Seen> seen_;  ///< empty until somebody has read a volume: nobody follows one before
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    MessageWindow looks_;
};

}  // namespace corvane
