// SPDX-License-Identifier: GPL-3.0-or-later
// A sound file, through the demuxers and decoders that the player uses: whatever it says of itself, what comes out
// keeps to the bounds.
#include <vector>

#include "media/sound/file_sound.h"
#include "memory_file.h"

namespace {

using corvane::fuzz::require;

constexpr std::size_t kMostFrames = 48'000;
constexpr std::size_t kPiece = 1'000;

void checkFormat(const corvane::SoundBackend& sound) {
    const corvane::PcmFormat format = sound.format();
    require(format.rate >= 1'000 && format.rate <= 192'000, "a rate that outputs take");
    require(format.channels >= 1 && format.channels <= 8, "1 to 8 channels");
    require(sound.frames() >= 0 && sound.frames() <= corvane::kMostSeconds * format.rate, "a length inside its bounds");
    require(sound.trackLength(2) == 0, "one track");
}

/// Reads up to so many frames; the count, and what is asked for is never exceeded.
std::size_t readOn(corvane::SoundBackend& sound, std::size_t most) {
    const auto width = static_cast<std::size_t>(sound.format().channels);
    std::vector<float> samples(kPiece * width + 1, 7.0F);
    std::size_t total = 0;
    while (total < most) {
        const std::size_t got = sound.read(samples.data(), kPiece);
        require(got <= kPiece, "no more than was asked for");
        require(samples.back() == 7.0F, "nothing is written behind it");
        total += got;
        if (got < kPiece) break;
    }
    return total;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const corvane::fuzz::MemoryFile file(data, size);
    corvane::OpenedSound opened = corvane::FileSound::open(file.path());
    require(opened.sound ? opened.reason.empty() : !opened.reason.empty(), "a sound or a reason");
    if (!opened.sound) return 0;
    corvane::SoundBackend& sound = *opened.sound;
    checkFormat(sound);
    const std::size_t before = readOn(sound, kMostFrames);
    sound.measure();
    checkFormat(sound);
    sound.seek(0);
    const std::size_t again = readOn(sound, kMostFrames);
    require(before == 0 || again > 0 || sound.frames() == 0, "what was heard is heard again");
    sound.seek(sound.frames() / 2);
    readOn(sound, kPiece);
    sound.seek(sound.frames());
    sound.seek(INT64_MAX);
    require(readOn(sound, kPiece) == 0, "nothing is behind the end");
    sound.abandoned = true;
    sound.seek(0);
    return 0;
}
