// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "winapi/sound/mm_api.h"

namespace corvane {

/// One MCI device. It answers on the thread that opened it alone, and a call may take as long as the drive does. Calls
/// return 0 or the number of the system's error.
class MciDevice {
public:
    MciDevice() = default;
    MciDevice(const MciDevice&) = delete;
    MciDevice& operator=(const MciDevice&) = delete;
    ~MciDevice() { close(); }

    /// type: "" lets the system choose by the element's name; element: "" the device itself (a disc drive).
    MCIERROR open(const std::wstring& type, const std::wstring& element);
    void close();
    bool isOpen() const { return id_ != 0; }

    MCIERROR timeFormat(DWORD format);
    /// Tells the window MM_MCINOTIFY when it has ended.
    MCIERROR play(HWND notified, std::optional<DWORD> from, std::optional<DWORD> to);
    MCIERROR pause() { return simple(MCI_PAUSE); }
    MCIERROR resume() { return simple(MCI_RESUME); }
    MCIERROR stop() { return simple(MCI_STOP); }
    /// A number that the device tells of itself or of one of its tracks; empty when it cannot.
    std::optional<DWORD> status(DWORD item, std::optional<DWORD> track = {}) const;

private:
    MCIERROR simple(UINT command);

    MCIDEVICEID id_ = 0;
};

/// The system's own text for an error, UTF-8.
std::string mciErrorText(MCIERROR error);

}  // namespace corvane
