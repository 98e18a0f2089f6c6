// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fake/fake_media.h"
#include "platform/generation.h"

namespace corvane {

/// A device that plays on the virtual time. Inside it counts units: milliseconds of a file, frames (1/75 s) of a disc.
class FakeMciControl : public MciControl {
public:
    explicit FakeMciControl(FakeMedia& media);
    ~FakeMciControl() override;

    void DeviceType(const std::string& type) override;
    const std::string& DeviceType() const override { return deviceType_; }
    void FileName(const std::string& path) override;
    void Level(SoundLevel level) override { wanted_ = level; }
    /// That the file which is open is played at.
    SoundLevel level() const { return level_; }
    void Command(std::string_view command) override;
    bool Opening() const override { return opening_; }
    void TimeFormat(int format) override;
    void UpdateInterval(int milliseconds) override;
    void Track(int track) override;
    std::int32_t TrackLength() const override;
    std::int32_t Length() const override;
    std::int32_t Position() const override;
    void From(std::int32_t position) override;
    void To(std::int32_t position) override;
    std::int32_t To() const override { return to_.value_or(0); }

    bool isOpen() const { return device_.has_value(); }
    bool isPlaying() const { return playing_; }
    bool isPaused() const { return paused_; }
    /// A Failed event as of a device that goes away while it plays.
    void fail(const std::string& reason);
    /// The device is, or is not, still being opened.
    void opening(bool on) { opening_ = on; }
    /// The open file turns out to be so long: its length was a guess. The play that runs goes on.
    void correctLength(std::int32_t milliseconds);
    /// Stands at a place, in the time format, while it plays on: as a disc does that has run behind a track's end.
    void standAt(std::int32_t position) { position_ = toUnits(position); }
    /// A Done event with this code, as of the present play.
    void postDone(int code);

private:
    struct Device {
        std::vector<std::int64_t> tracks;  ///< length of each track, units
        int unitsPerSecond = 1000;
        std::int64_t end = 0;  ///< of the axis, units
    };

    void open();
    void play();
    void pause();
    void stop();
    void seek();
    void settle();  ///< the position is now; nothing planned any more; events on their way are dropped
    void plan();    ///< plans the end and the status updates of a play
    void planStatus();
    std::int64_t unitsNow() const;
    std::int64_t toUnits(std::int32_t position) const;
    std::int64_t endUnits(std::int32_t to) const;
    std::int32_t fromUnits(std::int64_t units) const;

    FakeMedia& media_;
    Generation present_;  ///< of the present open, play or seek
    std::string deviceType_;
    std::string fileName_;
    SoundLevel wanted_ = SoundLevel::AsRecorded, level_ = SoundLevel::AsRecorded;
    int format_ = kFormatMilliseconds;
    int intervalMs_ = 1000;
    int track_ = 1;
    std::optional<std::int32_t> from_;
    std::optional<std::int32_t> to_;
    std::optional<Device> device_;
    bool playing_ = false;
    bool paused_ = false;
    bool statusWaits_ = false;
    bool opening_ = false;
    std::int64_t position_ = 0;   ///< units, at startedAt_ while playing
    std::int64_t playEnd_ = 0;    ///< units
    std::int64_t startedAt_ = 0;  ///< virtual time of the play
    Schedule::Id endId_ = 0;
    Schedule::Id statusId_ = 0;
};

}  // namespace corvane
