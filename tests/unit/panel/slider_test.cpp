// SPDX-License-Identifier: GPL-3.0-or-later
// Dragging on the slider, which is 3000 twips wide.
#include <ostream>

#include "panel/frmMainPanel.h"
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Slider : public PanelHands {
protected:
    void down(const MouseArgs& mouse = kLeft) {
        press(panel().pctSlide, mouse);
        machine.settle();
    }
    void moveTo(float x) {
        act([&] { panel().pctSlide.MouseMove.raise({0, 0, x, 3}); });
    }
    void up(const MouseArgs& mouse = kLeft) {
        release(panel().pctSlide, mouse);
        machine.settle();
    }
};

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

TEST_F(Slider, EachMoveSeeks) {
    bring(kSound, "playing");
    down();
    machine.clearCalls();
    for (const float x : {500.0F, 1000.0F, 250.0F}) moveTo(x);
    EXPECT_EQ(mediaCalls(), (Calls{"mci.To 10000", "mci.Command Seek", "mci.To 20000", "mci.Command Seek",
                                   "mci.To 5000", "mci.Command Seek"}));
    EXPECT_EQ(slider(), 250);
}

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

TEST_F(Slider, MovingWithoutAPressDoesNothing) {
    bring(kSound, "playing");
    moveTo(1500);
    EXPECT_TRUE(mediaCalls().empty());
    EXPECT_EQ(state(), "playing");
}

// --- The ends --------------------------------------------------------------------------------------------------------

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

TEST_F(Slider, ATrackOfFourAndAHalfMinutesIsDraggedToItsMiddle) {
    bring("/cd/Track02.cda", "paused");
    down();
    moveTo(1500);
    EXPECT_EQ(machine.log.count("mci.From " + std::to_string(packed(2, 2, 15))), 1);
    EXPECT_EQ(machine.log.count("mci.To " + std::to_string(packed(2, 4, 30))), 1);
    EXPECT_EQ(label(kTimeLabel), "02:15");
}

// --- Lengths ---------------------------------------------------------------------------------------------------------

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

TEST_F(Slider, WithoutAKindOnlyTheWidthChanges) {
    setUpPanel();
    player.gSlideState = 2;
    moveTo(700);
    EXPECT_EQ(slider(), 700);
    EXPECT_EQ(label(kTimeLabel), "");
    EXPECT_TRUE(mediaCalls().empty());
}

// --- Where it seeks to -----------------------------------------------------------------------------------------------

TEST_F(Slider, ATargetThatLiesOnAHalfIsRoundedAsOne) {
    machine.addSound("/m/odd.wav", 60010);
    bring("/m/odd.wav", "paused");
    player.gSlideWidth = 5100;
    down();
    moveTo(345);
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 4060) << "60010 x 345 / 5100 is 4059.5";
    moveTo(255);
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 3000) << "3000.5";
}

TEST_F(Slider, ItsEndsTakeNoDrag) {
    bring(kSound, "paused");
    down();
    for (const float x : {-1.0F, 0.0F, 0.4F, 0.5F, 2999.5F, 3000.0F, 3001.0F}) {
        machine.clearCalls();
        moveTo(x);
        EXPECT_TRUE(mediaCalls().empty()) << x;
    }
    for (const float x : {0.6F, 1.0F, 2999.0F, 2999.4F}) {
        machine.clearCalls();
        moveTo(x);
        EXPECT_FALSE(mediaCalls().empty()) << x;
    }
}

TEST_F(Slider, WithoutAWidthItTakesNoDrag) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        for (const std::int32_t width : {0, 1}) {
            bring(path, "paused");
            player.gSlideWidth = width;
            machine.clearCalls();
            down();
            for (const float x : {-1.0F, 0.0F, 1.0F, 100.0F}) moveTo(x);
            act([this] { panel().pctSlide.SetAccessibleValue.raise(10); });
            EXPECT_TRUE(mediaCalls().empty()) << path;
            up();
            act([this] { panel().pctSlide.SetAccessibleValue.raise(10); });
            EXPECT_TRUE(mediaCalls().empty()) << path;
            EXPECT_EQ(state(), "paused");
            player.gSlideWidth = 3000;
            act([this] { CloseFile(player, false); });
        }
    }
}

TEST_F(Slider, AMovieThatHasEndedIsNotBroughtBack) {
    bring(kMovie, "playing");
    machine.advance(39900);
    machine.advance(200);
    EXPECT_FALSE(movieWindow()->Visible) << "it has ended";
    machine.clearCalls();
    down();
    moveTo(1500);
    up();
    EXPECT_TRUE(mediaCalls().empty());
    EXPECT_EQ(player.gSlideState, 0);
    machine.advance(player.gDelayTime);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

TEST_F(Slider, ADragThatIsHeldAtAMoviesEndSeeksNoMore) {
    bring(kMovie, "playing");
    machine.advance(39990);
    player.gSlideState = 2;  // a drag that began before
    machine.advance(20);
    machine.clearCalls();
    moveTo(1500);
    EXPECT_TRUE(mediaCalls().empty());
}

TEST_F(Slider, APauseAndAPlayAfterAMoviesEndLeaveItsHandOverAlone) {
    bring(kMovie, "playing");
    machine.advance(40100);
    machine.clearCalls();
    act([this] { PauseFile(player); });
    act([this] { PrevFile(player); });
    act([this] { NextFile(player); });
    act([this] { PlayFile(player); });
    EXPECT_EQ(machine.log.count("movie.Run"), 0);
    for (const std::string& call : mediaCalls()) EXPECT_EQ(call.find("movie.CurrentPosition "), std::string::npos);
    machine.advance(player.gDelayTime);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

TEST_F(Slider, ARightButtonTakenAwayEndsItsDragWithoutAMenu) {
    bring(kSound, "playing");
    press(panel().pctSlide, kRight);
    EXPECT_EQ(state(), "paused");
    release(panel().pctSlide, {0, 0, 0, 0});
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gSlideState, 0);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
}

}  // namespace
}  // namespace corvane
