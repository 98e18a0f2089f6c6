// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/windows_sound_devices.h"

#include <utility>

#include "winapi/text.h"

namespace corvane {

namespace {

constexpr UINT kLookMs = 1000;
constexpr UINT_PTR kLookTimer = 1;

bool isDevice(int device) { return device >= 0 && static_cast<UINT>(device) < ::auxGetNumDevs(); }

}  // namespace

WindowsSoundDevices::WindowsSoundDevices(EventLoop& loop, std::unique_ptr<WaveOutputs> outputs)
    : loop_(loop), outputs_(std::move(outputs)), looks_([this](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
          if (message != WM_TIMER) return std::nullopt;
          compare();
          return 0;
      }) {}

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

WindowsSoundDevices::Seen WindowsSoundDevices::look() {
    Seen now;
    now.output = outputs_->inUse();
    if (now.output) now.volume = outputs_->volume(*now.output);
    return now;
}

void WindowsSoundDevices::compare() {
    Seen now = look();
    if (std::exchange(seen_, now) == now) return;
    loop_.post([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) WaveOutChanged.raise();
    });
}

std::optional<std::uint32_t> WindowsSoundDevices::waveOutGetVolume() {
    const Seen now = look();
    if (!seen_) {
        seen_ = now;
        SetTimer(looks_.handle(), kLookTimer, kLookMs, nullptr);
    }
    return now.volume;
}

void WindowsSoundDevices::waveOutSetVolume(std::uint32_t volume) {
    if (const auto output = outputs_->inUse()) waveOutSetVolumeOf(*output, volume);
}

void WindowsSoundDevices::waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) {
    outputs_->setVolume(name, volume);
    // Our own, as the output rounds it, is no change by another.
    if (seen_ && seen_->output == name) seen_->volume = outputs_->volume(name);
}

}  // namespace corvane
