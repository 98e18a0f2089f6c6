// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace corvane {

/// Samples are interleaved 32-bit floats, full scale -1 to 1.
struct PcmFormat {
    int rate = 44100;  ///< frames a second
    int channels = 2;  ///< 1 to 8
};

/// The longest axis, in seconds: what a file says of its length is not to be believed, and its milliseconds must leave
/// room in 32 bits.
constexpr std::int64_t kMostSeconds = 2'000'000;

/// Set when nobody wants a sound any more, also while it is being opened.
using Abandoned = std::shared_ptr<std::atomic<bool>>;

/// One opened sound: a file, a MIDI sequence or a whole disc. A backend knows what sounds at each place of its own
/// axis, counted in frames from 0; one shared output plays it, so a backend neither opens a device nor keeps a clock.
/// Opened in a worker; read() and seek() are called from one reading thread at a time, never after or while destroyed;
/// the others are called from the user-interface thread while the reading thread runs, and return at once.
class SoundBackend {
public:
    explicit SoundBackend(Abandoned flag = std::make_shared<std::atomic<bool>>(false))
        : abandoned(*flag), abandonedFlag_(std::move(flag)) {}
    SoundBackend(const SoundBackend&) = delete;
    SoundBackend& operator=(const SoundBackend&) = delete;
    virtual ~SoundBackend() = default;

    virtual PcmFormat format() const = 0;  ///< does not change
    /// Length of the axis, frames; 0 unknown. May become more exact while a long file is still being measured.
    virtual std::int64_t frames() const = 0;

    /// Fills up to `count` frames from where it stands. Fewer than asked only at the end (0: at the end) or when
    /// `stopping` was set. A damaged part is skipped or silent, never an error; may block on a slow drive.
    virtual std::size_t read(float* samples, std::size_t count) = 0;
    /// The next read starts exactly there; held inside 0 to frames().
    virtual void seek(std::int64_t frame) = 0;
    /// Finds the exact length where opening only estimated it; called once, in the opening worker, while other threads
    /// already use the rest. Comes back early once `abandoned` was set.
    virtual void measure() {}
    /// False: frames() is 0 or a guess until measure() has run.
    virtual bool lengthKnown() const { return true; }
    /// Set when nobody wants the sound any more.
    std::atomic<bool>& abandoned;
    /// Set when the reader wants a blocked read() to come back soon.
    std::atomic<bool> stopping{false};

    /// Packed positions: track, minute, second, frame (1/75 s), lowest byte first. A disc counts from the track's
    /// start and takes a second of 60 as the next minute; everything else is one track, numbered 1.
    virtual std::int64_t fromTmsf(std::int32_t packed) const;
    virtual std::int32_t toTmsf(std::int64_t frame) const;
    /// Minutes in the lowest byte, then seconds, frames; 0 when there is no such track.
    virtual std::int32_t trackLength(int track) const;

private:
    Abandoned abandonedFlag_;
};

/// What opening gives: a backend, or the reason why not, in words.
struct OpenedSound {
    std::unique_ptr<SoundBackend> sound;
    std::string reason;
};

/// Opens the disc that an entry of a list stands for (discPlace in cd_folder.h). The axis is the disc's audio sectors
/// from the first track on, 588 frames each, 44100 Hz stereo. Runs in a worker and may take seconds, or long where
/// sounds of an image have to be measured; comes back early once the flag was set. In cd_sound.cpp.
OpenedSound openCdSound(const std::string& entry, const Abandoned& flag = std::make_shared<std::atomic<bool>>(false));

}  // namespace corvane
