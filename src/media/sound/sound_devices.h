// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/volume.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "media/sound/pulse_link.h"
#include "platform/ports.h"
#include "workers/ui_post.h"

struct pa_sink_info;

namespace corvane {

/// A volume word of the server's volume: first channel low, second high; 100 % and more is full.
std::uint32_t toVolumeWord(const pa_cvolume& volume);
/// The server's volume of a word: the first two channels take left and right, further ones their mean.
pa_cvolume fromVolumeWord(std::uint32_t word, unsigned channels);

/// The volume of the sound server's default output. It has no auxiliary devices.
class PulseSoundDevices : public SoundDevices {
public:
    /// Changes are told by way of this, which is its own and which it stops; none: they are not told.
    explicit PulseSoundDevices(std::optional<UiPost> post = {});
    ~PulseSoundDevices() override;

    int auxGetNumDevs() override { return 0; }
    std::optional<AuxCaps> auxGetDevCaps(int) override { return std::nullopt; }
    std::optional<std::uint32_t> auxGetVolume(int) override { return std::nullopt; }
    void auxSetVolume(int, std::uint32_t) override {}
    /// Waits for the server only at the first reading; later it knows by the server's own reports.
    std::optional<std::uint32_t> waveOutGetVolume() override;
    /// A word that was read before sets exactly what was read of that output, however fine.
    void waveOutSetVolume(std::uint32_t volume) override;
    std::optional<std::string> waveOutName() override;
    void waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) override;

private:
    bool known();
    void ask();
    void took(const pa_sink_info* info);
    void settled();
    void set(const std::string& name, std::uint32_t volume);
    void tellChange();

    std::optional<UiPost> post_;  ///< none: nobody is told
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    std::atomic<bool> told_{false};  ///< and not heard yet

    std::mutex mutex_;  ///< guards what follows, up to the link
    std::optional<pa_cvolume> current_;
    std::string output_;  ///< whose volume that is
    int setting_ = 0;     ///< volumes on their way to the server, whose older reports do not count
    std::map<std::pair<std::string, std::uint32_t>, pa_cvolume> read_;  ///< exact volumes of the words given out
    PulseLink link_;  ///< its thread uses the members above: goes first
};

}  // namespace corvane
