// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "winapi/sound/mm_api.h"

namespace corvane {

/// The wave outputs of the machine by the system's own names, which stay with them while their numbers change. Asked on
/// the user-interface thread.
class WaveOutputs {
public:
    virtual ~WaveOutputs() = default;
    /// The output that sounds go to now; empty: there is none.
    virtual std::optional<std::string> inUse() = 0;
    /// Left in the low half, right in the high one; empty: it is gone, or tells none.
    virtual std::optional<std::uint32_t> volume(const std::string& name) = 0;
    virtual void setVolume(const std::string& name, std::uint32_t volume) = 0;
};

/// Those of the system. What is set is this program's own volume there, as the system's mixer shows it.
class SystemWaveOutputs : public WaveOutputs {
public:
    SystemWaveOutputs() = default;
    SystemWaveOutputs(const SystemWaveOutputs&) = delete;
    SystemWaveOutputs& operator=(const SystemWaveOutputs&) = delete;
    ~SystemWaveOutputs() override;

    std::optional<std::string> inUse() override;
    std::optional<std::uint32_t> volume(const std::string& name) override;
    void setVolume(const std::string& name, std::uint32_t volume) override;

private:
    HWAVEOUT opened(const std::string& name, UINT number);

    std::map<std::string, HWAVEOUT> opened_;  ///< where a system knows no volume by number
};

}  // namespace corvane
