// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/sound/wave_outputs.h"

#include "winapi/text.h"
// After mmsystem.h:
#include <mmddk.h>

namespace corvane {

namespace {

/// The volume functions take an output's number in the place of a handle.
HWAVEOUT byNumber(UINT number) { return reinterpret_cast<HWAVEOUT>(static_cast<UINT_PTR>(number)); }

bool ask(UINT number, UINT message, void* answer, std::size_t second) {
    return waveOutMessage(byNumber(number), message, reinterpret_cast<DWORD_PTR>(answer), second) == MMSYSERR_NOERROR;
}

/// The name that the system gives an output for as long as the machine has it; where there is none, its number.
std::string nameOf(UINT number) {
    constexpr std::size_t kLongest = 4096;
    std::size_t bytes = 0;
    if (!ask(number, DRV_QUERYFUNCTIONINSTANCEIDSIZE, &bytes, 0) || bytes < sizeof(wchar_t) || bytes > kLongest) {
        return std::to_string(number);
    }
    std::wstring name(bytes / sizeof(wchar_t), L'\0');
    if (!ask(number, DRV_QUERYFUNCTIONINSTANCEID, name.data(), bytes)) return std::to_string(number);
    name.resize(name.find(L'\0') == std::wstring::npos ? name.size() : name.find(L'\0'));
    return fromWide(name);
}

std::optional<UINT> numberOf(const std::string& name) {
    const UINT count = waveOutGetNumDevs();
    for (UINT number = 0; number < count; ++number) {
        if (nameOf(number) == name) return number;
    }
    return std::nullopt;
}

}  // namespace

SystemWaveOutputs::~SystemWaveOutputs() {
    for (const auto& [name, handle] : opened_) waveOutClose(handle);
}

std::optional<std::string> SystemWaveOutputs::inUse() {
    const UINT count = waveOutGetNumDevs();
    if (count == 0) return std::nullopt;
    UINT preferred = 0;
    DWORD flags = 0;
    const auto second = reinterpret_cast<DWORD_PTR>(&flags);
    const bool told = ask(WAVE_MAPPER, DRVM_MAPPER_PREFERRED_GET, &preferred, second) && preferred < count;
    return nameOf(told ? preferred : 0);
}

/// Silent, and stays open.
HWAVEOUT SystemWaveOutputs::opened(const std::string& name, UINT number) {
    if (const auto found = opened_.find(name); found != opened_.end()) return found->second;
    constexpr WORD kChannels = 2;
    constexpr DWORD kRate = 44100;
    constexpr WORD kBytes = kChannels * sizeof(std::int16_t);
    const WAVEFORMATEX format{WAVE_FORMAT_PCM, kChannels, kRate, kRate * kBytes, kBytes, 8 * sizeof(std::int16_t), 0};
    HWAVEOUT handle = nullptr;
    if (waveOutOpen(&handle, number, &format, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR) return nullptr;
    opened_.emplace(name, handle);
    return handle;
}

std::optional<std::uint32_t> SystemWaveOutputs::volume(const std::string& name) {
    const auto number = numberOf(name);
    DWORD volume = 0;
    if (!number) return std::nullopt;
    if (waveOutGetVolume(byNumber(*number), &volume) == MMSYSERR_NOERROR) return volume;
    const HWAVEOUT handle = opened(name, *number);
    if (handle != nullptr && waveOutGetVolume(handle, &volume) == MMSYSERR_NOERROR) return volume;
    return std::nullopt;
}

void SystemWaveOutputs::setVolume(const std::string& name, std::uint32_t volume) {
    const auto number = numberOf(name);
    if (!number || waveOutSetVolume(byNumber(*number), volume) == MMSYSERR_NOERROR) return;
    const HWAVEOUT handle = opened(name, *number);
    if (handle != nullptr) waveOutSetVolume(handle, volume);
}

}  // namespace corvane
