// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>
#include <string>

#include "linux/media/ui_post.h"
#include "media/midi/synthesizer.h"
#include "media/sound/open_job.h"
#include "media/sound/sound_output.h"
#include "shell/media/mci_state_control.h"

namespace corvane {

/// What the controls share: the output and the synthesizer, kept warm while controls come and go.
struct SoundStation {
    SoundStation(EventLoop& eventLoop, bool silent) : loop(eventLoop), post(eventLoop), output(silent) {}

    EventLoop& loop;
    UiPost post;
    std::shared_ptr<Synthesizer> synthesizer = std::make_shared<Synthesizer>();
    SoundOutput output;
    QObject timers;  ///< owns what is timed for the station
};

/// The multimedia control of this desktop: the shared output plays what a worker has opened.
class DesktopMciControl : public MciStateControl {
public:
    /// The station outlives it.
    explicit DesktopMciControl(SoundStation& station);
    ~DesktopMciControl() override { release(); }

protected:
    void openIt() override;
    void closeIt() override;
    const SoundAxis& axis() const override { return axis_; }
    std::string playPart(std::uint64_t number, std::int64_t from, std::int64_t to) override;
    void pausePart() override { station_.output.pause(part_); }
    void resumePart() override { station_.output.resume(part_); }
    void stopPart() override { station_.output.stop(part_); }
    std::int64_t partPosition() const override { return station_.output.position(part_); }
    void tick(int intervalMs) override;

private:
    /// The axis of the sound that is open.
    struct BackendAxis : SoundAxis {
        std::shared_ptr<SoundBackend> sound;

        int unitsPerSecond() const override { return sound->format().rate; }
        std::int64_t units() const override { return sound->frames(); }
        std::int64_t fromTmsf(std::int32_t packed) const override { return sound->fromTmsf(packed); }
        std::int32_t toTmsf(std::int64_t units) const override { return sound->toTmsf(units); }
        std::int32_t trackLength(int track) const override { return sound->trackLength(track); }
    };

    void adopt();
    bool canOpenQuickly() const;

    SoundStation& station_;
    std::shared_ptr<OpenJob> job_;
    BackendAxis axis_;
    std::uint64_t part_ = 0;  ///< the output's number
    QTimer updates_;
};

}  // namespace corvane
