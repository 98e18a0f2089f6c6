// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "forms/event.h"
#include "platform/sound_level.h"

namespace corvane {

inline constexpr int kFormatMilliseconds = 0;  ///< TimeFormat: positions are milliseconds
inline constexpr int kFormatTmsf = 10;         ///< TimeFormat: track, minute, second, frame, lowest byte first
inline constexpr int kNotifySuccessful = 1;
inline constexpr int kNotifySuperseded = 2;

/// The multimedia control: one sound, MIDI or CD device. Made afresh for each MCI window, destroyed with it;
/// a destroyed control raises nothing more. Commands act at once; events are posted through the EventLoop and
/// never come from inside a call. An event that belongs to an earlier open, play, seek, pause or stop is dropped.
/// Proved by tests/contract/mci_control_contract.
class MciControl {
public:
    MciControl() = default;
    MciControl(const MciControl&) = delete;
    MciControl& operator=(const MciControl&) = delete;
    virtual ~MciControl() = default;

    /// "Sequencer", "CDAudio" or "" (chosen by the file). Default "".
    virtual void DeviceType(const std::string& type) = 0;
    virtual const std::string& DeviceType() const = 0;
    virtual void FileName(const std::string& path) = 0;
    /// How loud the file that is opened next is played, and how exactly its ends are kept; default AsRecorded.
    /// Sequences and discs, and a desktop that reads no such tags, leave it.
    virtual void Level(SoundLevel /*level*/) {}

    /// "Open", "Close", "Play", "Pause", "Stop" or "Seek"; another word does nothing. Without an open device all but
    /// "Open" do nothing. "Open" waits at most about 200 ms for the length; a file that cannot be played raises Failed
    /// later. "Play" plays from From (or where it stands) to To (or the end). "Seek" moves to To and holds: paused
    /// stays paused, and after a seek while playing a "Play" goes on. "CDAudio" ignores FileName for the disc's place
    /// unless it names a folder or image that stands for a disc.
    virtual void Command(std::string_view command) = 0;

    /// True from "Open" until it is open or has failed: a disc that has to start turning takes seconds.
    virtual bool Opening() const { return false; }

    virtual void TimeFormat(int format) = 0;            ///< kFormatMilliseconds (default) or kFormatTmsf
    virtual void UpdateInterval(int milliseconds) = 0;  ///< default 1000
    virtual void Track(int track) = 0;                  ///< CD track, 1 to 99, whose TrackLength is read next
    virtual std::int32_t TrackLength() const = 0;       ///< minutes in the lowest byte, then seconds, frames; 0 unknown
    virtual std::int32_t Length() const = 0;            ///< in the time format; 0 while unknown
    /// In the time format; reads a seek's target at once. 0 without a device.
    virtual std::int32_t Position() const = 0;
    virtual void From(std::int32_t position) = 0;  ///< for the next command only
    virtual void To(std::int32_t position) = 0;    ///< for the next command only
    virtual std::int32_t To() const = 0;           ///< the value last set, 0 after it was used

    Event<int> Done;            ///< kNotifySuccessful only when a play reached its end (or its To)
    Event<> StatusUpdate;       ///< every UpdateInterval while playing, only then
    Event<std::string> Failed;  ///< the reason, in words; nothing plays afterwards
};

}  // namespace corvane
