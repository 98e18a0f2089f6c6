// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "winapi/sound/mm_api.h"

namespace corvane {

/// What a session plays on, in the words of MCI: times are milliseconds, or what an MCI device was told that they are.
/// It answers on the thread that opened it alone. Calls return 0 or the number of the system's error.
class SoundDevice {
public:
    SoundDevice() = default;
    SoundDevice(const SoundDevice&) = delete;
    SoundDevice& operator=(const SoundDevice&) = delete;
    virtual ~SoundDevice() = default;

    virtual void close() = 0;
    /// Tells the window MM_MCINOTIFY when it has ended.
    virtual MCIERROR play(HWND notified, std::optional<DWORD> from, std::optional<DWORD> to) = 0;
    virtual MCIERROR pause() = 0;
    virtual MCIERROR resume() = 0;
    virtual MCIERROR stop() = 0;
    /// A number that the device tells of itself or of one of its tracks; empty when it cannot.
    virtual std::optional<DWORD> status(DWORD item, std::optional<DWORD> track = {}) const = 0;
    /// Why a play ended with MCI_NOTIFY_FAILURE.
    virtual std::string failure() const = 0;
};

}  // namespace corvane
