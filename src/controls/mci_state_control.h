// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "controls/sound_axis.h"
#include "platform/event_loop.h"
#include "platform/mci_control.h"

namespace corvane {

/// What the multimedia control of every desktop is, whatever sounds: its command words, its state, where it stands,
/// what its form is told and when, and which late news are dropped. What is asked for while a device still opens is
/// done when it is open. A desktop derives from it and says how a device is opened and a part of it played.
class MciStateControl : public MciControl {
public:
    /// The loop outlives it.
    explicit MciStateControl(EventLoop& loop) : loop_(loop) {}

    void DeviceType(const std::string& type) override { deviceType_ = type; }
    const std::string& DeviceType() const override { return deviceType_; }
    void FileName(const std::string& path) override { fileName_ = path; }
    void Level(SoundLevel level) override { level_ = level; }
    void Command(std::string_view command) override;
    bool Opening() const override { return state_ == State::Opening; }
    void TimeFormat(int format) override { timeFormat_ = format; }
    void UpdateInterval(int milliseconds) override;
    void Track(int track) override { track_ = track; }
    std::int32_t TrackLength() const override { return isReady() ? axis().trackLength(track_) : 0; }
    std::int32_t Length() const override { return isReady() ? axis().toPlace(axis().units(), timeFormat_) : 0; }
    std::int32_t Position() const override;
    void From(std::int32_t position) override { from_ = position; }
    void To(std::int32_t position) override { to_ = position; }
    std::int32_t To() const override { return to_.value_or(0); }

protected:
    static constexpr std::int64_t kToEnd = -1;  ///< a part's end: that of the device

    // The device under it.
    /// Opens what deviceType() and fileName() name; opened() or failed() follows, at once or later. Waits for it at
    /// most some 200 ms.
    virtual void openIt() = 0;
    /// Lets go of the device, also while it is being opened; nothing is told of it any more. Its part was stopped.
    virtual void closeIt() = 0;
    virtual const SoundAxis& axis() const = 0;  ///< asked while it is open alone
    /// Plays from one place of the axis to another in place of whatever it plays; partEnded() with this number follows,
    /// later. "": it does; else why not, in words.
    virtual std::string playPart(std::uint64_t number, std::int64_t from, std::int64_t to) = 0;
    virtual void pausePart() = 0;
    virtual void resumePart() = 0;
    virtual void stopPart() = 0;
    virtual std::int64_t partPosition() const = 0;  ///< units; -1: it has nothing of ours any more
    /// From now on updateDue() all so many milliseconds; 0: no more.
    virtual void tick(int intervalMs) = 0;

    // What the device tells, on the user-interface thread.
    void opened();
    void failed(const std::string& reason);
    /// The play of that number has reached its end, at that place. Not from inside a call above.
    void partEnded(std::uint64_t number, std::int64_t end);
    void updateDue();

    const std::string& fileName() const { return fileName_; }
    SoundLevel level() const { return level_; }
    /// Tells, on the user-interface thread, whether the control is still there and at the opening that it is at now:
    /// what comes from another thread asks it first. Kept by any thread.
    std::function<bool()> stillOpen() const;
    /// Posts an event, which is dropped when that holds no more.
    void later(EventLoop::Handler event);
    void release() { closeDevice(); }  ///< a derived destructor calls it first

private:
    enum class State { Closed, Opening, Stopped, Playing, Paused };
    using Place = std::optional<std::int32_t>;  ///< in the time format
    /// What was asked for while the device opens.
    struct Wish {
        Place at;  ///< where it is to stand, or to be played from
        Place to;
        bool play = false, hold = false;
    };

    bool isReady() const { return state_ > State::Opening; }
    void openDevice();
    void closeDevice();
    void play(Place from, Place to);
    void startPart(std::int64_t from, std::int64_t to);
    void leavePart();
    void pause();
    void stop();
    void seek(std::int32_t to);
    void change(State state);
    std::int64_t here() const;
    std::int64_t units(std::int32_t place) const { return axis().fromPlace(place, timeFormat_); }

    EventLoop& loop_;
    std::string deviceType_, fileName_;
    SoundLevel level_ = SoundLevel::AsRecorded;
    int timeFormat_ = kFormatMilliseconds;
    int track_ = 1;
    int interval_ = 1000;  ///< milliseconds
    Place from_, to_;

    State state_ = State::Closed;
    std::shared_ptr<std::uint64_t> opening_ =
        std::make_shared<std::uint64_t>(0);  ///< how often it was opened or closed
    std::uint64_t ticket_ = 0;  ///< of the last play, stop or seek: an end that carries another one is late
    bool hasPart_ = false;      ///< the device plays or holds something of ours
    std::int64_t partEnd_ = kToEnd;
    std::int64_t at_ = 0;       ///< units; where it stands without a part
    bool endedPaused_ = false;  ///< the part's end came when it was paused already
    bool updatePosted_ = false;
    Wish wish_;
};

}  // namespace corvane
