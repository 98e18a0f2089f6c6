// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/windows_sound_devices.h"

#include "windows/media/media.h"
#include "windows/text.h"

namespace corvane {

namespace {

/// The volume functions take a device's number in the place of a handle.
HWAVEOUT firstDevice() { return nullptr; }

bool isDevice(int device) { return device >= 0 && static_cast<UINT>(device) < ::auxGetNumDevs(); }

}  // namespace

WindowsSoundDevices::~WindowsSoundDevices() {
    if (opened_ != nullptr) waveOutClose(opened_);
}

int WindowsSoundDevices::auxGetNumDevs() { return static_cast<int>(::auxGetNumDevs()); }

std::optional<AuxCaps> WindowsSoundDevices::auxGetDevCaps(int device) {
    AUXCAPSW caps{};
    if (!isDevice(device) || ::auxGetDevCapsW(static_cast<UINT_PTR>(device), &caps, sizeof caps) != MMSYSERR_NOERROR)
        return std::nullopt;
    return AuxCaps{caps.wMid, caps.wPid, fromWide(caps.szPname)};
}

std::optional<std::uint32_t> WindowsSoundDevices::auxGetVolume(int device) {
    DWORD volume = 0;
    if (!isDevice(device) || ::auxGetVolume(static_cast<UINT>(device), &volume) != MMSYSERR_NOERROR)
        return std::nullopt;
    return volume;
}

void WindowsSoundDevices::auxSetVolume(int device, std::uint32_t volume) {
    if (isDevice(device)) ::auxSetVolume(static_cast<UINT>(device), volume);
}

/// An open output, for systems that know no volume by number. It is silent and stays open.
HWAVEOUT WindowsSoundDevices::opened() {
    if (opened_ != nullptr || waveOutGetNumDevs() == 0) return opened_;
    constexpr WORD kChannels = 2;
    constexpr DWORD kRate = 44100;
    constexpr WORD kBytes = kChannels * sizeof(std::int16_t);
    const WAVEFORMATEX format{WAVE_FORMAT_PCM, kChannels, kRate, kRate * kBytes, kBytes, 8 * sizeof(std::int16_t), 0};
    if (waveOutOpen(&opened_, 0, &format, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR) opened_ = nullptr;
    return opened_;
}

std::optional<std::uint32_t> WindowsSoundDevices::waveOutGetVolume() {
    DWORD volume = 0;
    if (::waveOutGetVolume(firstDevice(), &volume) == MMSYSERR_NOERROR) return volume;
    if (opened() != nullptr && ::waveOutGetVolume(opened(), &volume) == MMSYSERR_NOERROR) return volume;
    return std::nullopt;
}

void WindowsSoundDevices::waveOutSetVolume(std::uint32_t volume) {
    if (::waveOutSetVolume(firstDevice(), volume) == MMSYSERR_NOERROR) return;
    if (opened() != nullptr) ::waveOutSetVolume(opened(), volume);
}

std::unique_ptr<SoundDevices> makeSoundDevices() { return std::make_unique<WindowsSoundDevices>(); }

}  // namespace corvane
