// SPDX-License-Identifier: GPL-3.0-or-later
// The first tick of a hold and its release: kind by direction by Shift, playing and paused.
#include <ostream>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

constexpr const char* kClip = "/m/clip.avi";
constexpr const char* kSong = "/m/song.wav";
constexpr const char* kDisc = "/cd/Track01.cda";

struct Row {
    const char* what;
    const char* path;
    const char* before;  ///< state
    double at;           ///< position at the press, in the kind's unit; playing, 750 ms pass before the tick
    int button;
    int shift;
    std::string tick;     ///< what the first tick asks of the device, in order
    const char* time;     ///< shown after it
    float width;          ///< of the slider after it, of 3000
    int interval;         ///< of the next tick; 0: there is none
    std::string release;  ///< what the release asks of the device
    const char* after;    ///< state after it
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.what; }

class HoldTick : public PanelHands, public ::testing::WithParamInterface<Row> {
protected:
    /// The device's calls without the name of the port: "To 9000, Command Seek".
    std::string asked() const {
        std::string all;
        for (const std::string& call : mediaCalls()) all += (all.empty() ? "" : ", ") + call.substr(call.find('.') + 1);
        return all;
    }
};

/// BTN-20: The direction is back or forward, with Shift a direction of its own
/// BTN-26: A release by any button but the right one stops the hold's timer
/// BTN-29: A sound that was playing plays on
/// BTN-30: A track that was playing plays on to its own end: track and end are set, then it plays
/// BTN-31: A movie runs again, also when it was paused; the panel then shows the playing state
/// BTN-32: A paused sound or track stays paused
/// BTN-34: A movie at another rate is paused, set to rate 1 and runs on unless it was paused
/// SEQ-20: Each tick marks the hold as one that seeks, before all else
/// SEQ-23: Movie back: it pauses, ticks come fast, and above 0 the position goes one whole second back and is shown
/// SEQ-25: Movie back with Shift: it is paused as by the pause button and goes back a second every 750 ms
/// SEQ-26: The slider follows a movie's step
/// SEQ-27: Movie forward: the timer stops, the rate is 2, and it runs unless pause is disabled
/// SEQ-28: Movie forward with Shift: paused, a second on every 750 ms while below the duration
/// SEQ-29: Movie forward with Shift stops at the duration
/// SEQ-30: Sound back: ticks come fast; a second back when that is above 0, by a seek, with the time shown
/// SEQ-31: Sound back within its first second does nothing
/// SEQ-32: Sound forward: ticks come fast; a second on when that is below the length
/// SEQ-33: Track back: ticks come fast; a second back when the time shown is past 00:00, from there to the track's end
///     by a play and a pause
/// SEQ-34: Track back at 00:00 does nothing
/// SEQ-35: Track forward: ticks come fast; a second on while its time is before that of the track's end
/// SEQ-36: Shift changes nothing for sounds and tracks
/// BTN-24, BTN-28, SEQ-24
TEST_P(HoldTick, SeeksByKindAndTheReleaseGoesOn) {
    const Row& row = GetParam();
    bring(row.path, row.before);
    if (row.at > 0) placeAt(row.at);
    const MouseArgs mouse{kLeftButton, row.shift, 0, 0};
    const Timer& timer = panel().tmrPrevNext;
    press(button(row.button), mouse);
    EXPECT_TRUE(timer.Enabled);
    machine.advance(750);
    EXPECT_EQ(asked(), row.tick);
    EXPECT_EQ(label(kTimeLabel), row.time);
    EXPECT_NEAR(slider(), row.width, 0.1);
    EXPECT_EQ(timer.Enabled, row.interval != 0);
    EXPECT_EQ(timer.Interval, row.interval != 0 ? row.interval : 750);

    machine.clearCalls();
    letGo(row.button, mouse);
    EXPECT_EQ(player.gFileIndex, 0) << "the click of a hold steps nothing";
    EXPECT_EQ(asked(), row.release);
    EXPECT_EQ(state(), row.after);
    EXPECT_EQ(player.gPlaying, state() == "playing");
    EXPECT_FALSE(timer.Enabled);
    EXPECT_EQ(timer.Interval, 750);
}

const std::string kRunAtRate1 = "Pause, Rate 1, Run";

INSTANTIATE_TEST_SUITE_P(
    Movie, HoldTick,
    ::testing::Values(
        Row{"back, playing", kClip, "playing", 10, kPrev, 0, "Pause, CurrentPosition 10", "10", 750, 50, "Run",
            "playing"},
        Row{"back, paused", kClip, "paused", 10, kPrev, 0, "Pause, CurrentPosition 9", "9", 675, 50, "Run", "playing"},
        Row{"back with Shift, playing", kClip, "playing", 10, kPrev, kShiftMask, "Pause, CurrentPosition 10", "10", 750,
            750, "", "paused"},
        Row{"back with Shift, paused", kClip, "paused", 10, kPrev, kShiftMask, "CurrentPosition 9", "9", 675, 750, "",
            "paused"},
        Row{"forward, playing", kClip, "playing", 10, kNext, 0, "Rate 2, Run", "10.5", 787.5F, 0, kRunAtRate1,
            "playing"},
        Row{"forward, paused", kClip, "paused", 10, kNext, 0, "Rate 2", "0", 15, 0, "Pause, Rate 1", "paused"},
        Row{"forward with Shift, playing", kClip, "playing", 10, kNext, kShiftMask, "Pause, CurrentPosition 12", "12",
            900, 750, "", "paused"},
        Row{"forward with Shift, paused", kClip, "paused", 10, kNext, kShiftMask, "CurrentPosition 11", "11", 825, 750,
            "", "paused"},
        Row{"with Ctrl as without", kClip, "paused", 10, kPrev, kCtrlMask, "Pause, CurrentPosition 9", "9", 675, 50,
            "Run", "playing"},
        Row{"with Ctrl and Shift as with Shift", kClip, "paused", 10, kPrev, kCtrlMask | kShiftMask,
            "CurrentPosition 9", "9", 675, 750, "", "paused"},
        Row{"back at 0", kClip, "paused", 0, kPrev, 0, "Pause", "0", 0, 50, "Run", "playing"},
        Row{"back with Shift at 0", kClip, "paused", 0, kPrev, kShiftMask, "", "0", 0, 750, "", "paused"},
        Row{"back at 0.4 counts as 0", kClip, "paused", 0.4, kPrev, kShiftMask, "", "0", 30, 750, "", "paused"},
        Row{"back at 0.6 counts as 1", kClip, "paused", 0.6, kPrev, kShiftMask, "CurrentPosition 0", "0", 0, 750, "",
            "paused"},
        Row{"forward with Shift before the end", kClip, "paused", 39, kNext, kShiftMask, "CurrentPosition 40", "40",
            3000, 750, "", "paused"},
        Row{"forward with Shift at the duration", kClip, "paused", 40, kNext, kShiftMask, "", "0", 3000, 750, "",
            "paused"},
        Row{"forward with Shift where the rest rounds up", kClip, "paused", 39.6, kNext, kShiftMask, "", "0", 2970, 750,
            "", "paused"}));

INSTANTIATE_TEST_SUITE_P(
    SoundFile, HoldTick,
    ::testing::Values(
        Row{"back, playing", kSong, "playing", 10000, kPrev, 0, "To 9750, Command Seek", "00:09", 487.5F, 50,
            "Command Play", "playing"},
        Row{"back, paused", kSong, "paused", 10000, kPrev, 0, "To 9000, Command Seek", "00:09", 450, 50, "", "paused"},
        Row{"forward, playing", kSong, "playing", 10000, kNext, 0, "To 11750, Command Seek", "00:11", 587.5F, 50,
            "Command Play", "playing"},
        Row{"forward, paused", kSong, "paused", 10000, kNext, 0, "To 11000, Command Seek", "00:11", 550, 50, "",
            "paused"},
        Row{"back with Shift as without", kSong, "paused", 10000, kPrev, kShiftMask, "To 9000, Command Seek", "00:09",
            450, 50, "", "paused"},
        Row{"forward with Shift as without", kSong, "playing", 10000, kNext, kShiftMask, "To 11750, Command Seek",
            "00:11", 587.5F, 50, "Command Play", "playing"},
        Row{"back within the first second", kSong, "paused", 900, kPrev, 0, "", "00:00", 15, 50, "", "paused"},
        Row{"back at one second", kSong, "paused", 1000, kPrev, 0, "", "00:00", 15, 50, "", "paused"},
        Row{"back just past one second", kSong, "paused", 1001, kPrev, 0, "To 1, Command Seek", "00:00", 0.05F, 50, "",
            "paused"},
        Row{"forward just before the last second", kSong, "paused", 58999, kNext, 0, "To 59999, Command Seek", "00:59",
            2999.95F, 50, "", "paused"},
        Row{"forward within the last second", kSong, "paused", 59000, kNext, 0, "", "00:00", 15, 50, "", "paused"}));

const std::string kTrackEnd = std::to_string(packed(1, 1, 40));
const std::string kPlayTrackOn = "Track 1, To " + kTrackEnd + ", Command Play";

double at(int minutes, int seconds, int frames = 0) { return packed(1, minutes, seconds, frames); }

/// The track is put to a position and held there.
std::string held(int minutes, int seconds, int frames = 0) {
    return "Track 1, From " + std::to_string(packed(1, minutes, seconds, frames)) + ", To " + kTrackEnd +
           ", Command Play, Command Pause";
}

INSTANTIATE_TEST_SUITE_P(
    CdTrack, HoldTick,
    ::testing::Values(
        Row{"back, playing", kDisc, "playing", at(0, 10), kPrev, 0, held(0, 9, 56), "00:09", 270, 50, kPlayTrackOn,
            "playing"},
        Row{"back, paused", kDisc, "paused", at(0, 10), kPrev, 0, held(0, 9), "00:09", 270, 50, "", "paused"},
        Row{"forward, playing", kDisc, "playing", at(0, 10), kNext, 0, held(0, 11, 56), "00:11", 330, 50, kPlayTrackOn,
            "playing"},
        Row{"forward, paused", kDisc, "paused", at(0, 10), kNext, 0, held(0, 11), "00:11", 330, 50, "", "paused"},
        Row{"back with Shift as without", kDisc, "paused", at(0, 10), kPrev, kShiftMask, held(0, 9), "00:09", 270, 50,
            "", "paused"},
        Row{"forward with Shift as without", kDisc, "playing", at(0, 10), kNext, kShiftMask, held(0, 11, 56), "00:11",
            330, 50, kPlayTrackOn, "playing"},
        Row{"back from second 0 borrows a minute", kDisc, "paused", at(1, 0), kPrev, 0, held(0, 59), "00:59", 1770, 50,
            "", "paused"},
        Row{"back at 00:01", kDisc, "paused", at(0, 1), kPrev, 0, held(0, 0), "00:00", 0, 50, "", "paused"},
        Row{"back at 00:00", kDisc, "paused", at(0, 0, 40), kPrev, 0, "Track 1", "00:00", 15, 50, "", "paused"},
        Row{"forward from second 59 carries nothing", kDisc, "paused", at(0, 59), kNext, 0, held(0, 60), "00:60", 1800,
            50, "", "paused"},
        Row{"forward before the last second", kDisc, "paused", at(1, 38), kNext, 0, held(1, 39), "01:39", 2970, 50, "",
            "paused"},
        Row{"forward within the last second", kDisc, "paused", at(1, 39), kNext, 0, "Track 1", "00:00", 15, 50, "",
            "paused"}));

}  // namespace
}  // namespace corvane
