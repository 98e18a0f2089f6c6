// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/midi_sound.h"

#include <sys/stat.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <utility>

namespace corvane {

namespace {

constexpr std::int64_t kMaxFileBytes = 64 << 20;
constexpr std::int64_t kFadeFrames = 220;  ///< 5 ms: what still sounds at the end does not click

std::int64_t toFrame(double microseconds) { return std::llround(microseconds * Synthesizer::kFormat.rate / 1e6); }

bool plainFile(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::string firstBytes(const std::string& path, std::size_t count) {
    if (!plainFile(path)) return "";
    std::ifstream file(path, std::ios::binary);
    std::string bytes(count, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

}  // namespace

bool holdsMidi(const std::string& path) { return looksLikeMidi(firstBytes(path, 12)); }

OpenedSound MidiSound::open(const std::string& path, std::shared_ptr<Synthesizer> synthesizer) {
    struct stat info {};
    if (!plainFile(path) || stat(path.c_str(), &info) != 0) return {nullptr, "The file cannot be read."};
    if (!holdsMidi(path) || info.st_size > kMaxFileBytes) return {nullptr, "It is not a MIDI file."};
    MidiFile file = readMidi(firstBytes(path, static_cast<std::size_t>(info.st_size)));
    std::string reason = file.reason.empty() ? synthesizer->load() : file.reason;
    if (!reason.empty()) return {nullptr, std::move(reason)};
    return {std::unique_ptr<SoundBackend>(new MidiSound(std::move(file.sequence), std::move(synthesizer))), ""};
}

MidiSound::MidiSound(MidiSequence sequence, std::shared_ptr<Synthesizer> synthesizer)
    : sequence_(std::move(sequence)), synthesizer_(std::move(synthesizer)), length_(toFrame(sequence_.microseconds)) {}

MidiSound::~MidiSound() { synthesizer_->release(this); }

void MidiSound::seek(std::int64_t frame) {
    frame = std::clamp<std::int64_t>(frame, 0, length_);
    if (synthesizer_->claim(this) && frame == at_) return;
    synthesizer_->reset();
    for (next_ = 0; next_ < sequence_.events.size(); ++next_) {
        const MidiEvent& event = sequence_.events[next_];
        if (toFrame(event.microseconds) >= frame) break;
        synthesizer_->play(event, sequence_, true);
    }
    at_ = frame;
}

std::size_t MidiSound::read(float* samples, std::size_t count) {
    if (!synthesizer_->claim(this)) {
        const std::int64_t here = std::exchange(at_, -1);
        seek(here);
    }
    std::size_t given = 0;
    while (given < count && at_ < length_) {
        std::int64_t until = length_;
        for (; next_ < sequence_.events.size(); ++next_) {
            const std::int64_t frame = toFrame(sequence_.events[next_].microseconds);
            if (frame > at_) {
                until = std::min(until, frame);
                break;
            }
            synthesizer_->play(sequence_.events[next_], sequence_, false);
        }
        const auto frames =
            static_cast<std::size_t>(std::min<std::int64_t>(until - at_, static_cast<std::int64_t>(count - given)));
        synthesizer_->render(samples + given * 2, frames);
        at_ += static_cast<std::int64_t>(frames);
        fadeOut(samples + given * 2, frames);
        given += frames;
    }
    return given;
}

void MidiSound::fadeOut(float* samples, std::size_t count) const {
    const std::int64_t first = at_ - static_cast<std::int64_t>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::int64_t left = length_ - first - static_cast<std::int64_t>(i);
        if (left > kFadeFrames) continue;
        const float part = static_cast<float>(left) / static_cast<float>(kFadeFrames);
        samples[i * 2] *= part;
        samples[i * 2 + 1] *= part;
    }
}

}  // namespace corvane
