// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_sound.h"

namespace corvane {

namespace {

std::string word(std::uint32_t volume) {
    static constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (int shift = 28; shift >= 0; shift -= 4) text += kDigits[volume >> static_cast<unsigned>(shift) & 15U];
    return text;
}

}  // namespace

FakeSound::Aux* FakeSound::find(int device) {
    if (device < 0 || device >= auxGetNumDevs()) return nullptr;
    return &aux[static_cast<std::size_t>(device)];
}

std::optional<AuxCaps> FakeSound::auxGetDevCaps(int device) {
    log_.asked("sound.auxGetDevCaps " + std::to_string(device));
    const Aux* found = find(device);
    return found == nullptr ? std::nullopt : found->caps;
}

std::optional<std::uint32_t> FakeSound::auxGetVolume(int device) {
    log_.asked("sound.auxGetVolume " + std::to_string(device));
    const Aux* found = find(device);
    return found == nullptr ? std::nullopt : found->volume;
}

void FakeSound::auxSetVolume(int device, std::uint32_t volume) {
    log_.did("sound.auxSetVolume " + std::to_string(device) + " " + word(volume));
    Aux* found = find(device);
    if (found != nullptr && found->volume) found->volume = volume;
}

std::optional<std::uint32_t> FakeSound::waveOutGetVolume() {
    log_.asked("sound.waveOutGetVolume");
    return wave;
}

void FakeSound::waveOutSetVolume(std::uint32_t volume) {
    log_.did("sound.waveOutSetVolume " + word(volume));
    if (wave) wave = volume;
}

std::optional<std::string> FakeSound::waveOutName() {
    log_.asked("sound.waveOutName");
    return wave ? std::optional(output) : std::nullopt;
}

void FakeSound::waveOutSetVolumeOf(const std::string& name, std::uint32_t volume) {
    log_.did("sound.waveOutSetVolumeOf " + name + " " + word(volume));
    if (name == output && wave) wave = volume;
    if (const auto other = others.find(name); other != others.end()) other->second = volume;
}

void FakeSound::setByAnother(std::uint32_t volume) {
    wave = volume;
    tellChange();
}

void FakeSound::useOutput(const std::string& name) {
    if (wave) others[output] = *wave;
    output = name;
    wave = others.try_emplace(name, 0xFFFFFFFF).first->second;
    others.erase(name);
    tellChange();
}

void FakeSound::tellChange() {
    loop_.post([this] { WaveOutChanged.raise(); });
}

}  // namespace corvane
