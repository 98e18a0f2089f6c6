// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/output_mci_control.h"

#include <utility>

#include "media/midi/midi_sound.h"
#include "media/sound/file_sound.h"

namespace corvane {

namespace {

/// How long before an end is heard it is told: the next file opens in less.
constexpr double kEarlySeconds = 0.02;
constexpr double kEarlierSeconds = 0.08;
/// What is not played on for so long is not kept open for it.
constexpr int kKeepAheadMs = 2'000;

OpenedSound openSound(const std::string& device, const std::string& file, SoundLevel level,
                      const std::shared_ptr<Synthesizer>& synthesizer, const Abandoned& flag) {
    if (device == "CDAudio") return openCdSound(file, flag);
    // Opened once, whatever it turns out to be.
    std::string reason;
    auto opened = DriveFile::open(file, {DriveCalls::kLongPatience, flag.get()}, reason);
    if (!opened) return {nullptr, std::move(reason)};
    if (device == "Sequencer" || holdsMidi(*opened)) return MidiSound::open(std::move(opened), synthesizer, flag);
    return FileSound::open(std::move(opened), flag, level);
}

}  // namespace

void SoundStation::dropAheadWhenIdle() {
    openedBefore_ = opened;
    idle_.start(kKeepAheadMs);
}

OutputMciControl::~OutputMciControl() {
    release();
    station_.timers.stop(updates_);
}

void OutputMciControl::tick(int intervalMs) {
    station_.timers.stop(std::exchange(updates_, 0));
    if (intervalMs > 0) updates_ = station_.timers.start(intervalMs, [this] { updateDue(); });
}

void OutputMciControl::openIt() {
    ++station_.opened;
    if (DeviceType().empty()) job_ = station_.ahead.take(fileName(), level());
    if (job_) {
        if (level() == SoundLevel::AsRecorded) job_->wait();  // for its length; it has had time for it
        return adopt();
    }
    const auto open = [device = DeviceType(), file = fileName(), level = level(), synthesizer = station_.synthesizer](
                          const Abandoned& flag) { return openSound(device, file, level, synthesizer, flag); };
    job_ = OpenJob::start(open, [this, post = station_.post, still = stillOpen()] {
        post([this, still] {
            if (still() && Opening()) adopt();
        });
    });
    job_->wait();
    if (job_->finished()) adopt();
}

/// The job is done.
void OutputMciControl::adopt() {
    axis_.sound = job_->sound();
    if (axis_.sound) {
        opened();
    } else {
        failed(job_->reason());
    }
}

void OutputMciControl::closeIt() {
    if (job_) job_->abandon();
    job_.reset();
    axis_.sound.reset();
    station_.dropAheadWhenIdle();
}

std::string OutputMciControl::playPart(std::uint64_t number, std::int64_t from, std::int64_t to) {
    static_assert(kToEnd == SoundOutput::kToEnd);
    SoundOutput::Part part{axis_.sound, from, to, earlySeconds(), {}, true};
    part.ended = [this, number, post = station_.post, still = stillOpen()](std::int64_t end) {
        post([this, number, end, still] {
            if (still()) partEnded(number, end);
        });
    };
    part_ = station_.output.play(std::move(part));
    if (part_ == 0) return Worker::kRefused;
    later([this, part = part_] { station_.output.release(part); });
    return {};
}

/// Little where a next file of any kind opens without a library or the synthesizer's sounds being loaded first; where
/// no seam may be heard, no busy moment may make one.
double OutputMciControl::earlySeconds() const {
    const bool opensQuickly = avIsLoaded() && station_.synthesizer->isLoaded();
    return opensQuickly && level() == SoundLevel::AsRecorded ? kEarlySeconds : kEarlierSeconds;
}

}  // namespace corvane
