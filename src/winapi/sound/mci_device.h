// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "winapi/sound/sound_device.h"

namespace corvane {

/// One MCI device. A call may take as long as the drive does.
class MciDevice : public SoundDevice {
public:
    ~MciDevice() override { close(); }

    /// type: "" lets the system choose by the element's name; element: "" the device itself (a disc drive).
    MCIERROR open(const std::wstring& type, const std::wstring& element);
    void close() override;
    bool isOpen() const { return id_ != 0; }

    MCIERROR timeFormat(DWORD format);
    MCIERROR play(HWND notified, std::optional<DWORD> from, std::optional<DWORD> to) override;
    MCIERROR pause() override { return simple(MCI_PAUSE); }
    MCIERROR resume() override { return simple(MCI_RESUME); }
    MCIERROR stop() override { return simple(MCI_STOP); }
    std::optional<DWORD> status(DWORD item, std::optional<DWORD> track = {}) const override;
    std::string failure() const override;

private:
    MCIERROR simple(UINT command);

    MCIDEVICEID id_ = 0;
};

/// The system's own text for an error, UTF-8.
std::string mciErrorText(MCIERROR error);

}  // namespace corvane
