// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/midi/midi_sound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "drives/drive_file.h"

namespace corvane {

namespace {

constexpr std::size_t kMaxFileBytes = 16 << 20;
constexpr std::size_t kHeadBytes = 12;
constexpr std::int64_t kFadeFrames = 220;  ///< 5 ms: what still sounds at the end does not click

std::int64_t toFrame(double microseconds) { return std::llround(microseconds * Synthesizer::kFormat.rate / 1e6); }

}  // namespace

bool holdsMidi(const std::string& path, const std::atomic<bool>* giveUp) {
    std::string reason;
    const auto file = DriveFile::open(path, {DriveCalls::kLongPatience, giveUp}, reason);
    return file && holdsMidi(*file);
}

bool holdsMidi(DriveFile& file) {
    std::array<char, kHeadBytes> head{};
    const std::int64_t got = file.read(0, head.data(), head.size());
    return looksLikeMidi(std::string(head.data(), static_cast<std::size_t>(std::max<std::int64_t>(got, 0))));
}

OpenedSound MidiSound::open(const std::string& path, std::shared_ptr<Synthesizer> synthesizer, const Abandoned& flag) {
    std::string reason;
    auto file = DriveFile::open(path, {DriveCalls::kLongPatience, flag.get()}, reason);
    return file ? open(std::move(file), std::move(synthesizer), flag) : OpenedSound{nullptr, std::move(reason)};
}

OpenedSound MidiSound::open(std::unique_ptr<DriveFile> opened, std::shared_ptr<Synthesizer> synthesizer,
                            const Abandoned& flag) {
    const auto bytes = opened->readWhole(kMaxFileBytes);
    if (!opened->failure().empty()) return {nullptr, opened->failure()};
    if (!bytes) return {nullptr, "The MIDI file is too large."};
    MidiFile file = readMidi(*bytes);
    std::string reason = file.reason.empty() ? synthesizer->load() : file.reason;
    if (!reason.empty()) return {nullptr, std::move(reason)};
    return {std::unique_ptr<SoundBackend>(new MidiSound(std::move(file.sequence), std::move(synthesizer), flag)), ""};
}

MidiSound::MidiSound(MidiSequence sequence, std::shared_ptr<Synthesizer> synthesizer, const Abandoned& flag)
    : SoundBackend(flag),
      sequence_(std::move(sequence)),
      synthesizer_(std::move(synthesizer)),
      length_(toFrame(sequence_.microseconds)) {}

MidiSound::~MidiSound() { synthesizer_->release(this); }

void MidiSound::seek(std::int64_t frame) {
    frame = std::clamp<std::int64_t>(frame, 0, length_);
    if (synthesizer_->claim(this) && frame == at_ && !sought_) return;
    sought_ = frame;
    synthesizer_->reset();
    for (next_ = 0; next_ < sequence_.events.size(); ++next_) {
        if (stopping || abandoned) return;
        const MidiEvent& event = sequence_.events[next_];
        if (toFrame(event.microseconds) >= frame) break;
        synthesizer_->play(event, sequence_, true);
    }
    at_ = frame;
    sought_.reset();
}

std::size_t MidiSound::read(float* samples, std::size_t count) {
    if (!synthesizer_->claim(this) && !sought_) sought_ = at_;
    if (sought_) seek(*sought_);
    if (sought_) return 0;
    std::size_t given = 0;
    while (given < count && at_ < length_) {
        std::int64_t until = length_;
        for (; next_ < sequence_.events.size(); ++next_) {
            if (stopping || abandoned) return given;
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
