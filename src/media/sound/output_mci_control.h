// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "controls/mci_state_control.h"
#include "media/midi/synthesizer.h"
#include "media/sound/open_job.h"
#include "media/sound/sound_ahead.h"
#include "media/sound/sound_output.h"
#include "platform/one_shot.h"
#include "workers/ui_post.h"

namespace corvane {

/// What the controls share: the output and the synthesizer, kept warm while controls come and go.
struct SoundStation {
    /// The loop and the timers outlive it. post: into the loop, its own, which it stops.
    SoundStation(EventLoop& eventLoop, Timers& systemTimers, UiPost toLoop, bool silent)
        : loop(eventLoop), timers(systemTimers), post(std::move(toLoop)), output(silent) {}
    SoundStation(const SoundStation&) = delete;
    SoundStation& operator=(const SoundStation&) = delete;
    ~SoundStation() { post.stop(); }

    /// A stopped player holds no file open, or its drive could not be taken away.
    void dropAheadWhenIdle();

    EventLoop& loop;
    Timers& timers;
    UiPost post;
    std::shared_ptr<Synthesizer> synthesizer = std::make_shared<Synthesizer>();
    SoundOutput output;
    SoundAhead ahead{timers};
    std::uint64_t opened = 0;  ///< files so far

private:
    std::uint64_t openedBefore_ = 0;  ///< when it became idle
    OneShot idle_{timers, [this] {
                      if (opened == openedBefore_) ahead.drop();
                  }};
};

/// The multimedia control over the libraries here: the shared output plays what a worker has opened.
class OutputMciControl : public MciStateControl {
public:
    /// The station outlives it.
    explicit OutputMciControl(SoundStation& station) : MciStateControl(station.loop), station_(station) {}
    ~OutputMciControl() override;

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
    double earlySeconds() const;

    SoundStation& station_;
    std::shared_ptr<OpenJob> job_;
    BackendAxis axis_;
    std::uint64_t part_ = 0;  ///< the output's number
    TimerId updates_ = 0;     ///< 0: none runs
};

}  // namespace corvane
