// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/sound/desktop_mci_control.h"

#include <utility>

#include "media/midi/midi_sound.h"
#include "media/sound/file_sound.h"

namespace corvane {

namespace {

/// How long before an end is heard it is told: the next file opens in less.
constexpr double kEarlySeconds = 0.02;
constexpr double kEarlierSeconds = 0.08;

OpenedSound openSound(const std::string& device, const std::string& file,
                      const std::shared_ptr<Synthesizer>& synthesizer, const Abandoned& flag) {
    if (device == "CDAudio") return openCdSound(file, flag);
    // Opened once, whatever it turns out to be.
    std::string reason;
    auto opened = DriveFile::open(file, {DriveCalls::kLongPatience, flag.get()}, reason);
    if (!opened) return {nullptr, std::move(reason)};
    if (device == "Sequencer" || holdsMidi(*opened)) return MidiSound::open(std::move(opened), synthesizer, flag);
    return FileSound::open(std::move(opened), flag);
}

}  // namespace

DesktopMciControl::DesktopMciControl(SoundStation& station) : MciStateControl(station.loop), station_(station) {
    QObject::connect(&updates_, &QTimer::timeout, [this] { updateDue(); });
}

void DesktopMciControl::tick(int intervalMs) {
    if (intervalMs > 0) {
        updates_.start(intervalMs);
    } else {
        updates_.stop();
    }
}

void DesktopMciControl::openIt() {
    const auto open = [device = DeviceType(), file = fileName(), synthesizer = station_.synthesizer](
                          const Abandoned& flag) { return openSound(device, file, synthesizer, flag); };
    job_ = OpenJob::start(open, [this, post = station_.post, still = stillOpen()] {
        post([this, still] {
            if (still() && Opening()) adopt();
        });
    });
    job_->wait();
    if (job_->finished()) adopt();
}

/// The job is done.
void DesktopMciControl::adopt() {
    axis_.sound = job_->sound();
    if (axis_.sound) {
        opened();
    } else {
        failed(job_->reason());
    }
}

void DesktopMciControl::closeIt() {
    if (job_) job_->abandon();
    job_.reset();
    axis_.sound.reset();
}

std::string DesktopMciControl::playPart(std::uint64_t number, std::int64_t from, std::int64_t to) {
    static_assert(kToEnd == SoundOutput::kToEnd);
    SoundOutput::Part part{axis_.sound, from, to, canOpenQuickly() ? kEarlySeconds : kEarlierSeconds, {}, true};
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

/// Whether a next file of any kind opens without a library or the synthesizer's sounds being loaded first.
bool DesktopMciControl::canOpenQuickly() const { return avIsLoaded() && station_.synthesizer->isLoaded(); }

}  // namespace corvane
