// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "linux/media/ui_post.h"
#include "media/midi/synthesizer.h"
#include "media/sound/open_job.h"
#include "media/sound/sound_output.h"
#include "shell/mci_command_control.h"

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

/// The multimedia control of this desktop: keeps the state of the device that is open and lets the shared output play.
class DesktopMciControl : public MciCommandControl {
public:
    /// The station outlives it.
    explicit DesktopMciControl(SoundStation& station);
    ~DesktopMciControl() override;

    bool Opening() const override { return state_ == State::Opening; }
    void UpdateInterval(int milliseconds) override;
    std::int32_t TrackLength() const override;
    std::int32_t Length() const override;
    std::int32_t Position() const override;

protected:
    bool isOpen() const override { return state_ != State::Closed; }
    void openDevice() override;
    void closeDevice() override;
    void play(Place from, Place to) override;
    void pause() override;
    void stop() override;
    void seek(std::int32_t to) override;

private:
    enum class State { Closed, Opening, Stopped, Playing, Paused };

    void adopt();
    void fail(const std::string& reason);
    void startPart(std::int64_t from, std::int64_t to);
    void ended(std::uint64_t playNumber, std::int64_t end);
    void leavePart();
    bool canOpenQuickly() const;
    void change(State state);
    void later(EventLoop::Handler event);
    std::int64_t frames(std::int32_t place) const;
    std::int64_t endFrame(std::int32_t to, std::int64_t start) const;
    std::int32_t place(std::int64_t frames) const;
    std::int64_t here() const;

    SoundStation& station_;
    State state_ = State::Closed;
    std::shared_ptr<OpenJob> job_;
    std::shared_ptr<SoundBackend> sound_;
    std::uint64_t ticket_ = 0;  ///< of the last open, close, play, stop or seek: what carries another one is late
    std::uint64_t part_ = 0;    ///< the output's number; 0: the output has nothing of ours
    std::int64_t partEnd_ = SoundOutput::kToEnd;
    std::int64_t at_ = 0;       ///< frames; where the device stands without a part
    bool endedPaused_ = false;  ///< the part's end came when it was paused already
    bool updatePosted_ = false;
    struct Wish {
        Place at;  ///< where it is to stand, or to be played from
        Place to;
        bool play = false, hold = false;
    };
    Wish wish_;  ///< asked for while still opening
    QTimer updates_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
