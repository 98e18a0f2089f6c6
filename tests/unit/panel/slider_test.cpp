// SPDX-License-Identifier: GPL-3.0-or-later
// Dragging on the slider, which is 3000 twips wide.
#include <ostream>

#include "panel/frmMainPanel.h"
#include "unit/panel/slider_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

// --- Each kind -------------------------------------------------------------------------------------------------------

struct Row {
    const char* what;
    const char* path;
    float x;
    std::vector<std::string> pause;   ///< asked by the press on a playing file
    std::vector<std::string> seek;    ///< asked by the move
    const char* time;                 ///< shown after it
    float width;                      ///< of the slider after it
    std::vector<std::string> resume;  ///< asked by the release of a playing file
    const char* later;                ///< time shown a second after it
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.what; }

class SliderDrag : public Slider, public ::testing::WithParamInterface<Row> {};

/// SLIDER-01: A press by any button on a playing file pauses it, to go on at the release
/// SLIDER-07: A move sets the slider's width to the place
/// SLIDER-08: Picture: the seconds are the whole part of the share of the interval; time and width follow those seconds
/// SLIDER-09: Movie: the position is the share of the duration, shown as a plain number
/// SLIDER-10: Sound: it seeks to the share of the length, rounded, and shows its time
/// SLIDER-11: Track: from the share's second to the track's end by a play and a pause, and its time
/// SLIDER-13: The release of a file that played plays on from there; in any case the drag is over
TEST_P(SliderDrag, PausesAPlayingFileAndResumesItWhereItIsReleased) {
    const Row& row = GetParam();
    bring(row.path, "playing");
    machine.advance(3000);
    machine.clearCalls();
    down();
    EXPECT_EQ(state(), "paused");
    EXPECT_EQ(player.gSlideState, 1);
    EXPECT_EQ(mediaCalls(), row.pause);
    machine.clearCalls();
    moveTo(row.x);
    EXPECT_EQ(mediaCalls(), row.seek);
    EXPECT_EQ(label(kTimeLabel), row.time);
    EXPECT_FLOAT_EQ(slider(), row.width);
    EXPECT_EQ(state(), "paused");
    machine.clearCalls();
    up();
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gSlideState, 0);
    EXPECT_EQ(mediaCalls(), row.resume);
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), row.later);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// SLIDER-02: A press on a paused file leaves it paused to the end
/// SLIDER-13
TEST_P(SliderDrag, LeavesAPausedFilePaused) {
    const Row& row = GetParam();
    bring(row.path, "paused");
    down();
    EXPECT_EQ(player.gSlideState, 2);
    EXPECT_TRUE(mediaCalls().empty());
    moveTo(row.x);
    EXPECT_EQ(mediaCalls(), row.seek);
    EXPECT_EQ(label(kTimeLabel), row.time);
    EXPECT_FLOAT_EQ(slider(), row.width);
    machine.clearCalls();
    up();
    EXPECT_EQ(state(), "paused");
    EXPECT_EQ(player.gSlideState, 0);
    machine.advance(1000);
    EXPECT_TRUE(mediaCalls().empty());
    EXPECT_EQ(label(kTimeLabel), row.time);
    machine.clearCalls();
    moveTo(600);
    EXPECT_TRUE(mediaCalls().empty()) << "the drag is over";
}

std::vector<std::string> held(int minutes, int seconds) {
    return {"mci.Track 1", "mci.From " + std::to_string(packed(1, minutes, seconds)),
            "mci.To " + std::to_string(packed(1, 1, 40)), "mci.Command Play", "mci.Command Pause"};
}

const std::vector<std::string> kNothing;
const std::vector<std::string> kPauseMovie = {"movie.Pause"};
const std::vector<std::string> kRunMovie = {"movie.Run"};
const std::vector<std::string> kPauseMci = {"mci.Command Pause"};
const std::vector<std::string> kPlayMci = {"mci.Command Play"};
const std::vector<std::string> kPlayTrackOn = {"mci.Track 1", "mci.To " + std::to_string(packed(1, 1, 40)),
                                               "mci.Command Play"};

std::vector<std::string> positioned(const char* seconds) { return {std::string("movie.CurrentPosition ") + seconds}; }
std::vector<std::string> sought(int to) { return {"mci.To " + std::to_string(to), "mci.Command Seek"}; }

INSTANTIATE_TEST_SUITE_P(
    Table, SliderDrag,
    ::testing::Values(
        Row{"picture", "/m/view.bmp", 1500, kNothing, kNothing, "00:10", 1500, kNothing, "00:11"},
        Row{"picture, whole seconds only", "/m/view.bmp", 1649, kNothing, kNothing, "00:10", 1500, kNothing, "00:11"},
        Row{"picture, its first second", "/m/view.bmp", 149, kNothing, kNothing, "00:00", 0, kNothing, "00:01"},
        Row{"movie", "/m/clip.avi", 1500, kPauseMovie, positioned("20"), "20", 1500, kRunMovie, "21"},
        Row{"movie, a plain number", "/m/clip.avi", 930, kPauseMovie, positioned("12.4"), "12.4", 930, kRunMovie,
            "13.4"},
        Row{"sound", "/m/song.wav", 1500, kPauseMci, sought(30000), "00:30", 1500, kPlayMci, "00:31"},
        Row{"sound, first twip", "/m/song.wav", 1, kPauseMci, sought(20), "00:00", 1, kPlayMci, "00:01"},
        Row{"track", "/cd/Track01.cda", 1500, kPauseMci, held(0, 50), "00:50", 1500, kPlayTrackOn, "00:51"},
        Row{"track, over a minute", "/cd/Track01.cda", 2250, kPauseMci, held(1, 15), "01:15", 2250, kPlayTrackOn,
            "01:16"},
        Row{"track, before second ten", "/cd/Track01.cda", 120, kPauseMci, held(0, 4), "00:04", 120, kPlayTrackOn,
            "00:05"}));

/// SLIDER-08
TEST_F(Slider, APictureDraggedOnGoesOnAtItsInterval) {
    bring(kPicture, "playing");
    down();
    moveTo(2700);
    up();
    EXPECT_EQ(player.gImageElapsed, 18);
    machine.advance(1000);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(1000);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// SLIDER-10
TEST_F(Slider, EachMoveSeeks) {
    bring(kSound, "playing");
    down();
    machine.clearCalls();
    for (const float x : {500.0F, 1000.0F, 250.0F}) moveTo(x);
    EXPECT_EQ(mediaCalls(), (Calls{"mci.To 10000", "mci.Command Seek", "mci.To 20000", "mci.Command Seek",
                                   "mci.To 5000", "mci.Command Seek"}));
    EXPECT_EQ(slider(), 250);
}

/// SLIDER-03: Stopped, a drag changes nothing
TEST_F(Slider, StoppedADragChangesNothing) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        SCOPED_TRACE(path);
        bring(path, "stopped");
        down();
        moveTo(1500);
        up();
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(slider(), 15);
        EXPECT_EQ(label(kTimeLabel), "");
        EXPECT_EQ(player.gSlideState, 0);
        EXPECT_TRUE(mediaCalls().empty());
    }
}

/// SLIDER-04: A move without a press does nothing
TEST_F(Slider, MovingWithoutAPressDoesNothing) {
    bring(kSound, "playing");
    moveTo(1500);
    EXPECT_TRUE(mediaCalls().empty());
    EXPECT_EQ(state(), "playing");
}

// --- The ends --------------------------------------------------------------------------------------------------------

/// SLIDER-06: The two ends, 0 and the full width, are never taken
TEST_F(Slider, TheTwoEndsAreNeverTaken) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        bring(path, "paused");
        down();
        moveTo(900);
        machine.clearCalls();
        const std::string time = label(kTimeLabel);
        for (const float x : {0.0F, 0.5F, -0.5F, -40.0F, 2999.6F, 3000.0F, 3000.4F, 1.0e6F}) {
            SCOPED_TRACE(std::string(path) + " " + std::to_string(x));
            moveTo(x);
            EXPECT_TRUE(mediaCalls().empty());
            EXPECT_FLOAT_EQ(slider(), 900);
            EXPECT_EQ(label(kTimeLabel), time);
        }
        up();
        act([this] { CloseFile(player, false); });
    }
}

/// SLIDER-05: The place is rounded to a whole number
TEST_F(Slider, APositionIsRoundedToAWholeNumber) {
    bring(kSound, "paused");
    down();
    for (const auto& [x, width] : {std::pair{0.6F, 1.0F}, {2999.4F, 2999.0F}, {10.5F, 10.0F}, {11.5F, 12.0F}}) {
        SCOPED_TRACE(x);
        moveTo(x);
        EXPECT_EQ(slider(), width);
    }
    EXPECT_EQ(mediaCalls(), (Calls{"mci.To 20", "mci.Command Seek", "mci.To 59980", "mci.Command Seek", "mci.To 200",
                                   "mci.Command Seek", "mci.To 240", "mci.Command Seek"}));
}

// --- CalcPos ---------------------------------------------------------------------------------------------------------

struct Place {
    std::int32_t x;
    int lengthMinutes, lengthSeconds;
    int minutes, seconds;  ///< of the result
};

/// SLIDER-18: The track's length counts in whole seconds, sixty to a minute
/// SLIDER-19: The target is the share of it, rounded
/// SLIDER-20: Its seconds are what is left of the minutes
/// SLIDER-21: The result is seconds × 65536 + minutes × 256: the middle of 4:30 is 2 minutes 15
TEST_F(Slider, CalcPosTurnsAPlaceOnTheSliderIntoMinutesAndSeconds) {
    setUp(kTrack);
    const std::vector<Place> rows = {
        {1500, 4, 30, 2, 15},    // the middle
        {1, 4, 30, 0, 0},        // 0.09 seconds
        {6, 4, 30, 0, 1},        // 0.54
        {2999, 4, 30, 4, 30},    // 269.91: the last second
        {100, 4, 30, 0, 9},      // below ten
        {111, 4, 30, 0, 10},     // 9.99: ten
        {178, 4, 30, 0, 16},     // sixteen and above are no digits of another base
        {663, 4, 30, 1, 0},      // 59.67: a whole minute
        {1500, 25, 40, 12, 50},  // ten and more in both
        {1500, 40, 0, 20, 0},    //
        {2999, 74, 59, 74, 58},  // 4497.5 to the even second
        {1500, 0, 3, 0, 2},      // 1.5 to the even second
        {1500, 0, 5, 0, 2},      // 2.5 as well
        {1500, 99, 59, 50, 0},   // 2999.5 to the even second
        {1500, 0, 0, 0, 0},      // a track without a length
    };
    for (const Place& row : rows) {
        EXPECT_EQ(frmMainPanel::CalcPos(player, row.x, packed(0, row.lengthMinutes, row.lengthSeconds)),
                  row.seconds * 65536 + row.minutes * 256)
            << row.x << " of " << row.lengthMinutes << ":" << row.lengthSeconds;
    }
    EXPECT_EQ(frmMainPanel::CalcPos(player, 1500, packed(0, 4, 30, 74)), packed(0, 2, 15)) << "frames do not count";
    EXPECT_EQ(frmMainPanel::CalcPos(player, 1500, packed(9, 4, 30)), packed(0, 2, 15)) << "nor does the track";
}

/// SLIDER-11, SLIDER-21
TEST_F(Slider, ATrackOfFourAndAHalfMinutesIsDraggedToItsMiddle) {
    bring("/cd/Track02.cda", "paused");
    down();
    moveTo(1500);
    EXPECT_EQ(machine.log.count("mci.From " + std::to_string(packed(2, 2, 15))), 1);
    EXPECT_EQ(machine.log.count("mci.To " + std::to_string(packed(2, 4, 30))), 1);
    EXPECT_EQ(label(kTimeLabel), "02:15");
}

// --- Lengths ---------------------------------------------------------------------------------------------------------

/// SLIDER-16: A picture that stays keeps its marker, and a file without a length has nothing to seek
TEST_F(Slider, APictureThatStaysKeepsItsMarker) {
    player.gInterval = 0;
    bring(kPicture, "playing");
    EXPECT_EQ(label(kTimeLabel), "99:99");
    down();
    moveTo(1500);
    EXPECT_EQ(label(kTimeLabel), "99:99");
    EXPECT_EQ(slider(), 15);
    EXPECT_EQ(player.gImageElapsed, 0);
    up();
    EXPECT_EQ(label(kTimeLabel), "99:99");
    EXPECT_EQ(state(), "playing");
    machine.advance(60000);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// SLIDER-16
TEST_F(Slider, AFileWithoutALengthHasNothingToSeek) {
    machine.addSound("/m/empty.wav", 0);
    machine.addMovie("/m/empty.avi", 0, 320, 240);
    machine.addDisc("/nil", {0});
    for (const char* path : {"/m/empty.wav", "/m/empty.avi", "/nil/Track01.cda"}) {
        SCOPED_TRACE(path);
        setUp(path);
        act([this] {
            PlayFile(player);
            PauseFile(player);
        });
        ASSERT_EQ(state(), "paused");
        machine.clearCalls();
        down();
        moveTo(1500);
        up();
        EXPECT_EQ(slider(), 15);
        EXPECT_EQ(machine.log.count("mci.Command Seek") + machine.log.count("mci.Command Play"), 0);
        EXPECT_TRUE(machine.calls("movie").empty());
        act([this] { CloseFile(player, false); });
    }
}

/// SLIDER-16
TEST_F(Slider, ALengthThatComesLateIsTakenByTheDrag) {
    machine.addSound("/m/late.wav", 0);
    setUp("/m/late.wav");
    act([this] {
        PlayFile(player);
        PauseFile(player);
    });
    EXPECT_EQ(player.gLength, 0);
    machine.media.sounds["/m/late.wav"].lengthMs = 40000;
    act([this] { mciWindow()->mmcMci->Command("Open"); });  // now the device knows
    down();
    moveTo(1500);
    EXPECT_EQ(machine.log.count("mci.To 20000"), 1);
    EXPECT_EQ(label(kTimeLabel), "00:20");
    EXPECT_EQ(slider(), 1500);
}

/// SLIDER-17: A movie in its delay can be dragged and still waits
TEST_F(Slider, AMovieInItsDelayCanBeDraggedAndStillWaits) {
    player.gDelayTime = 2000;
    setUp(kMovie);
    act([this] { PlayFile(player); });
    machine.clearCalls();
    down();
    moveTo(1500);
    up();
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(machine.log.count("movie.Run"), 0) << "the delay decides";
    machine.advance(2000);
    EXPECT_EQ(machine.log.count("movie.Run"), 1);
    EXPECT_EQ(machine.media.movie()->CurrentPosition(), 20);
}

// --- Buttons, and two things at once ---------------------------------------------------------------------------------

/// SLIDER-01
TEST_F(Slider, AnyMouseButtonDrags) {
    for (const int mouseButton : {kLeftButton, kRightButton, kMiddleButton}) {
        SCOPED_TRACE(mouseButton);
        bring(kSound, "playing");
        machine.dialogs.poppedUp = nullptr;
        const MouseArgs mouse{mouseButton, 0, 0, 0};
        down(mouse);
        EXPECT_EQ(state(), "paused");
        moveTo(1500);
        up(mouse);
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(label(kTimeLabel), "00:30");
        EXPECT_EQ(machine.dialogs.poppedUp != nullptr, mouseButton == kRightButton);
        act([this] { CloseFile(player, false); });
    }
}

/// SLIDER-15: A stop or a play during the drag ends it; a drop leaves the file under it
/// MOVE-42
TEST_F(Slider, AStopDuringTheDragEndsIt) {
    bring(kSound, "playing");
    down();
    moveTo(1500);
    act([this] { CloseFile(player, false); });
    machine.clearCalls();
    moveTo(2000);
    up();
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(slider(), 15);
    EXPECT_TRUE(mediaCalls().empty());
}

/// SLIDER-15, OPEN-02
TEST_F(Slider, PlayingOnDuringTheDragEndsIt) {
    bring(kSound, "playing");
    down();
    typeKey(panel(), 'z');
    machine.settle();
    EXPECT_EQ(state(), "playing");
    machine.clearCalls();
    moveTo(2000);
    up();
    EXPECT_EQ(state(), "playing");
    EXPECT_TRUE(mediaCalls().empty());
}

/// SLIDER-15, KIND-20
TEST_F(Slider, ADropDuringTheDragLeavesTheFileUnderIt) {
    bring(kSound, "playing");
    down();
    act([this] { panel().OLEDragDrop.raise({true, {"/m/third.wav"}}); });
    machine.clearCalls();
    moveTo(1500);
    EXPECT_EQ(mediaCalls(), (Calls{"mci.To 30000", "mci.Command Seek"}));
    up();
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gFileCount, 1);
}

/// SLIDER-12: Without a kind only the width changes
TEST_F(Slider, WithoutAKindOnlyTheWidthChanges) {
    setUpPanel();
    player.gSlideState = 2;
    moveTo(700);
    EXPECT_EQ(slider(), 700);
    EXPECT_EQ(label(kTimeLabel), "");
    EXPECT_TRUE(mediaCalls().empty());
}

}  // namespace
}  // namespace corvane
