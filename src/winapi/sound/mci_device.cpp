// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/mci_device.h"

#include <array>

#include "winapi/text.h"

namespace corvane {

namespace {

template <class Parameters>
DWORD_PTR packed(Parameters& parameters) {
    return reinterpret_cast<DWORD_PTR>(&parameters);
}

}  // namespace

MCIERROR MciDevice::open(const std::wstring& type, const std::wstring& element) {
    close();
    MCI_OPEN_PARMSW parameters{};
    DWORD flags = MCI_WAIT;
    if (!type.empty()) {
        parameters.lpstrDeviceType = type.c_str();
        flags |= MCI_OPEN_TYPE;
    }
    if (!element.empty()) {
        parameters.lpstrElementName = element.c_str();
        flags |= MCI_OPEN_ELEMENT;
    }
    const MCIERROR error = mciSendCommandW(0, MCI_OPEN, flags, packed(parameters));
    if (error == 0) id_ = parameters.wDeviceID;
    return error;
}

void MciDevice::close() {
    if (id_ == 0) return;
    simple(MCI_CLOSE);
    id_ = 0;
}

MCIERROR MciDevice::timeFormat(DWORD format) {
    MCI_SET_PARMS parameters{};
    parameters.dwTimeFormat = format;
    return mciSendCommandW(id_, MCI_SET, MCI_WAIT | MCI_SET_TIME_FORMAT, packed(parameters));
}

MCIERROR MciDevice::play(HWND notified, std::optional<DWORD> from, std::optional<DWORD> to) {
    MCI_PLAY_PARMS parameters{};
    parameters.dwCallback = reinterpret_cast<DWORD_PTR>(notified);
    parameters.dwFrom = from.value_or(0);
    parameters.dwTo = to.value_or(0);
    const DWORD flags = MCI_NOTIFY | (from ? MCI_FROM : 0U) | (to ? MCI_TO : 0U);
    return mciSendCommandW(id_, MCI_PLAY, flags, packed(parameters));
}

std::optional<DWORD> MciDevice::status(DWORD item, std::optional<DWORD> track) const {
    MCI_STATUS_PARMS parameters{};
    parameters.dwItem = item;
    parameters.dwTrack = track.value_or(0);
    const DWORD flags = MCI_WAIT | MCI_STATUS_ITEM | (track ? MCI_TRACK : 0U);
    if (mciSendCommandW(id_, MCI_STATUS, flags, packed(parameters)) != 0) return std::nullopt;
    return static_cast<DWORD>(parameters.dwReturn);
}

MCIERROR MciDevice::simple(UINT command) {
    MCI_GENERIC_PARMS parameters{};
    return mciSendCommandW(id_, command, MCI_WAIT, packed(parameters));
}

std::string MciDevice::failure() const { return mciErrorText(MCIERR_HARDWARE); }

std::string mciErrorText(MCIERROR error) {
    constexpr std::size_t kLongest = 512;  // the system asks for 128 at most
    std::array<wchar_t, kLongest> text{};
    if (mciGetErrorStringW(error, text.data(), static_cast<UINT>(text.size())) == FALSE || text[0] == L'\0')
        return "MCI error " + std::to_string(error);
    return fromWide(text.data());
}

}  // namespace corvane
