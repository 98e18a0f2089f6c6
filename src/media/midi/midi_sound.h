// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>

#include "drives/drive_file.h"
#include "media/midi/synthesizer.h"
#include "media/sound/sound_backend.h"

namespace corvane {

/// A MIDI sequence, played by the shared synthesizer. A place is reached by playing all that lasts up to it: programs,
/// controllers and bends are right there, and no note hangs.
class MidiSound : public SoundBackend {
public:
    static OpenedSound open(const std::string& path, std::shared_ptr<Synthesizer> synthesizer,
                            const Abandoned& flag = std::make_shared<std::atomic<bool>>(false));
    /// The same of a file that is open already.
    static OpenedSound open(std::unique_ptr<DriveFile> file, std::shared_ptr<Synthesizer> synthesizer,
                            const Abandoned& flag);
    ~MidiSound() override;

    PcmFormat format() const override { return Synthesizer::kFormat; }
    std::int64_t frames() const override { return length_; }
    std::size_t read(float* samples, std::size_t count) override;
    void seek(std::int64_t frame) override;

private:
    MidiSound(MidiSequence sequence, std::shared_ptr<Synthesizer> synthesizer, const Abandoned& flag);
    void fadeOut(float* samples, std::size_t count) const;

    MidiSequence sequence_;
    std::shared_ptr<Synthesizer> synthesizer_;
    std::int64_t length_;
    std::int64_t at_ = 0;
    std::optional<std::int64_t> sought_;  ///< a seek that was cut short goes there
    std::size_t next_ = 0;                ///< the event to play next
};

/// True when the file holds MIDI, whatever its name.
/// `giveUp`: as for DriveCalls.
bool holdsMidi(const std::string& path, const std::atomic<bool>* giveUp = nullptr);
bool holdsMidi(DriveFile& file);

}  // namespace corvane
