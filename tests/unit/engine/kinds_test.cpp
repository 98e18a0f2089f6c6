// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/engine/sequences.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// What each transport operation does with a file of each kind.
using Kinds = Sequences;

/// OPEN-01: With an empty list play does nothing at all
/// MOVE-04: With nothing playing a pause changes nothing, not even the buttons
/// MOVE-10: With an empty list next is a close and no more
/// MOVE-24: With an empty list previous does nothing
/// MOVE-34
TEST_F(Kinds, AnEmptyListPlaysNothing) {
    setUpPanel();
    run({{"play", PlayFile, "stopped", "", {}},
         {"pause", PauseFile, "stopped", "", {}},
         {"next", NextFile, "stopped", "", {}},
         {"previous", PrevFile, "stopped", "", {}},
         {"close", closeFile(), "stopped", "", {}}});
    EXPECT_TRUE(button(kEditor).Enabled);
}

/// OPEN-02: It marks a file as playing and ends a slider's drag
/// OPEN-03: It disables play and the editor's button and names previous and next "Prev" and "Next"
/// OPEN-04: With pause enabled the entry is opened afresh, with pause disabled it goes on; pause is enabled in both
///     cases
/// OPEN-18: Label 5 is the entry's title
/// OPEN-19: The slider's bar is one pixel wide
/// OPEN-22: The length of a sound is the device's, in milliseconds
/// OPEN-25: Stop, close, file name, open, milliseconds, a status every 100 ms, in this order
/// OPEN-27: Then it plays, and label 2 is 00:00
/// OPEN-46: Sound: it plays on
/// MOVE-02: While paused previous and next are named "Back" and "Step" for movies, sounds and tracks, and "Prev" and
///     "Next" for pictures
/// MOVE-03: Play and close name them "Prev" and "Next" again
/// MOVE-05: Else nothing plays any more, play is enabled and pause disabled
/// MOVE-08: Sound and track: the device pauses
/// MOVE-20: Paused sound: a second on by a seek when that is below the length, and label 2 is its time; it stays paused
/// MOVE-38: Sound and track: stop, close, and the window goes
/// MOVE-39: The kind is "none" and nothing plays
/// MOVE-40: The slider is one pixel wide, label 2 and its tip are empty, and play, pause and the editor's button are
///     enabled
/// MOVE-04, MCI-08
TEST_F(Kinds, ASoundFile) {
    machine.addSound("/m/song.wav", 10500);
    setUpPanel();
    setList({"/m/song.wav"});
    run({{"play",
          PlayFile,
          "playing",
          "00:00",
          {"mci.Command Stop", "mci.Command Close", "mci.FileName /m/song.wav", "mci.Command Open", "mci.TimeFormat 0",
           "mci.UpdateInterval 100", "mci.Command Play"}}});
    EXPECT_EQ(player.gLength, 10500);
    EXPECT_EQ(label(kNumberLabel), "001");
    EXPECT_EQ(label(kTitleLabel), "song");
    EXPECT_EQ(panel().pctSlide.Width, 15);
    EXPECT_FALSE(button(kEditor).Enabled);
    EXPECT_EQ(stepTips(), "Prev Next");

    run({{"5.25 seconds", wait(5250), "playing", "00:05", {}}});
    EXPECT_EQ(panel().pctSlide.Width, static_cast<float>(5200.0 / 10500 * 3000)) << "as of the last status update";

    run({{"pause", PauseFile, "paused", "00:05", {"mci.Command Pause"}}});
    EXPECT_EQ(stepTips(), "Back Step");
    run({{"pause again", PauseFile, "paused", "00:05", {}},
         {"a while", wait(3000), "paused", "00:05", {}},
         {"step", NextFile, "paused", "00:06", {"mci.To 6250", "mci.Command Seek"}},
         {"back, in the packed reading", PrevFile, "paused", "20:00", {"mci.To 5250", "mci.Command Seek"}},
         {"play on", PlayFile, "playing", "20:00", {"mci.Command Play"}}});
    EXPECT_EQ(stepTips(), "Prev Next");
    run({{"a second", wait(1000), "playing", "00:06", {}}});
    run({{"close", closeFile(), "stopped", "", {"mci.Command Stop", "mci.Command Close"}}});
    EXPECT_EQ(player.gMediaKind, mkNone);
    EXPECT_EQ(mciWindow(), nullptr);
    EXPECT_EQ(panel().pctSlide.Width, 15);
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].ToolTipText.get(), "");
    EXPECT_TRUE(button(kEditor).Enabled);
}

/// OPEN-43: Nothing is opened again: a paused sequence goes on where it stood
/// MOVE-21: Paused sound within the last second: nothing
/// MOVE-31: Paused sound: a second back by a seek when that is above 0; label 2 is the packed reading of the
///     milliseconds: back to 4000 reads 15:00
/// MOVE-32: Paused sound at 0.8 seconds: nothing
TEST_F(Kinds, ASequenceStepsUpToItsEndAndBackToItsStart) {
    machine.addSound("/m/tune.mid", 10000);
    setUpPanel();
    setList({"/m/tune.mid"});
    run({{"play",
          PlayFile,
          "playing",
          "00:00",
          {"mci.DeviceType Sequencer", "mci.Command Stop", "mci.Command Close", "mci.FileName /m/tune.mid",
           "mci.Command Open", "mci.TimeFormat 0", "mci.UpdateInterval 100", "mci.Command Play"}},
         {"0.8 seconds", wait(800), "playing", "00:00", {}},
         {"pause", PauseFile, "paused", "00:00", {"mci.Command Pause"}},
         {"back would not be above 0", PrevFile, "paused", "00:00", {}},
         {"play on", PlayFile, "playing", "00:00", {"mci.Command Play"}},
         {"to 1 second", wait(200), "playing", "00:01", {}},
         {"pause", PauseFile, "paused", "00:01", {"mci.Command Pause"}},
         {"back to exactly 0 is not above 0", PrevFile, "paused", "00:01", {}},
         {"play on", PlayFile, "playing", "00:01", {"mci.Command Play"}},
         {"to 5 seconds", wait(4000), "playing", "00:05", {}},
         {"pause", PauseFile, "paused", "00:05", {"mci.Command Pause"}},
         {"back to 4000", PrevFile, "paused", "15:00", {"mci.To 4000", "mci.Command Seek"}},
         {"play on", PlayFile, "playing", "15:00", {"mci.Command Play"}},
         {"to 9 seconds", wait(5000), "playing", "00:09", {}},
         {"pause", PauseFile, "paused", "00:09", {"mci.Command Pause"}},
         {"step to the end is not below it", NextFile, "paused", "00:09", {}}});
}

/// OPEN-23: The length of a track is the packed track length moved up a byte
/// OPEN-28: Stop, close, open, track positions, a status every 100 ms
/// OPEN-29: The track's number is the last two characters of the base name
/// OPEN-31: The track is selected before its length is read
/// OPEN-32: It plays from its own start
/// OPEN-34: It plays to the end of its track, not of the disc
/// OPEN-35: Label 2 is 00:00
/// OPEN-47: Track: selected, up to its end, it plays on
/// MOVE-22: Paused track: one in the seconds byte without a carry while its text is before that of the track's end; a
///     play and a pause, and label 2 is its time
/// MOVE-33: Paused track: a second back while its text is past 00:00, to second 59 of the minute before where it must
/// MCI-07: Track: label 2 is the packed time, the slider the fraction of its width
/// MOVE-08, MOVE-38
TEST_F(Kinds, ACdTrack) {
    machine.addDisc("/cd", {200, 240, 100});
    setUpPanel();
    setList({"/cd/Track02.cda"});
    run({{"play",
          PlayFile,
          "playing",
          "00:00",
          {"mci.DeviceType CDAudio", "mci.Command Stop", "mci.Command Close", "mci.FileName /cd/Track02.cda",
           "mci.Command Open", "mci.TimeFormat 10", "mci.UpdateInterval 100", "mci.Track 2", "mci.From 2",
           "mci.To 1026", "mci.Command Play"}}});
    EXPECT_EQ(player.gCdTrack, 2);
    EXPECT_EQ(player.gLength, 0x000400) << "4 minutes 0 seconds, track byte 0";
    run({{"65 seconds", wait(65050), "playing", "01:05", {}}});
    EXPECT_EQ(panel().pctSlide.Width, static_cast<float>(3000 * (65.0 / 240)));

    // The frames of the position are kept: 65.05 seconds are 3 frames past the second.
    const std::int32_t at64 = 0x03000000 + (4 << 16) + (1 << 8) + 2;
    run({{"pause", PauseFile, "paused", "01:05", {"mci.Command Pause"}},
         {"back",
          PrevFile,
          "paused",
          "01:04",
          {"mci.Track 2", "mci.From " + std::to_string(at64), "mci.To 1026", "mci.Command Play", "mci.Command Pause"}},
         {"step",
          NextFile,
          "paused",
          "01:05",
          {"mci.Track 2", "mci.From " + std::to_string(at64 + 0x10000), "mci.To 1026", "mci.Command Play",
           "mci.Command Pause"}},
         {"play on", PlayFile, "playing", "01:05", {"mci.Track 2", "mci.To 1026", "mci.Command Play"}},
         {"a second", wait(1000), "playing", "01:06", {}},
         {"close", closeFile(), "stopped", "", {"mci.Command Stop", "mci.Command Close"}}});
}

/// MOVE-23: A paused track at 02:59 steps to second 60 of minute 2
/// MOVE-33
TEST_F(Kinds, ACdTrackStepsIntoSecond60AndBackToSecond59) {
    machine.addDisc("/cd", {300});
    setUpPanel();
    setList({"/cd/Track01.cda"});
    PlayFile(player);
    machine.advance(179000);
    const std::int32_t at160 = (60 << 16) + (2 << 8) + 1;
    run({{"pause", PauseFile, "paused", "02:59", {"mci.Command Pause"}},
         {"step shows no carry",
          NextFile,
          "paused",
          "02:60",
          {"mci.Track 1", "mci.From " + std::to_string(at160), "mci.To 1281", "mci.Command Play",
           "mci.Command Pause"}}});
    EXPECT_EQ(mciWindow()->mmcMci->Position(), (3 << 8) + 1) << "the device takes it as the next minute";
    const std::int32_t at259 = (59 << 16) + (2 << 8) + 1;
    run({{"back",
          PrevFile,
          "paused",
          "02:59",
          {"mci.Track 1", "mci.From " + std::to_string(at259), "mci.To 1281", "mci.Command Play",
           "mci.Command Pause"}}});
}

/// MOVE-22, MOVE-33
TEST_F(Kinds, ACdTrackDoesNotStepPastItsEnds) {
    machine.addDisc("/cd", {10});
    setUpPanel();
    setList({"/cd/Track01.cda"});
    PlayFile(player);
    machine.advance(1000);
    run({{"pause", PauseFile, "paused", "00:01", {"mci.Command Pause"}},
         {"back to 00:00 is not later than that", PrevFile, "paused", "00:01", {"mci.Track 1"}}});
    PlayFile(player);
    machine.advance(8000);
    run({{"pause", PauseFile, "paused", "00:09", {"mci.Command Pause"}},
         {"step to the end is not before it", NextFile, "paused", "00:09", {"mci.Track 1"}}});
}

/// OPEN-21: The length of a movie is its duration once it is open
/// OPEN-37: The throw-away name "1" drops what the control held
/// OPEN-39: The rate is 1 before the file is named
/// OPEN-40: The window's caption is the entry's title
/// OPEN-41: Label 2 is 0
/// OPEN-42: Naming the file does not start it; the delay's end does
/// MOVE-07: Movie: it pauses, and label 2 is its position as a plain number
/// MOVE-17: Paused movie: when it shows and its whole second is below the duration it goes one on, and label 2 says so
/// MOVE-29: Paused movie: above 0 it goes one whole second back, and label 2 says so
/// MOVE-37: Movie: it stops, and its window goes
/// OPEN-45, MOVE-02, MOVE-03
TEST_F(Kinds, AMovie) {
    machine.addMovie("/m/clip.avi", 10, 320, 240);
    player.gDelayTime = 300;
    setUpPanel();
    setList({"/m/clip.avi"});
    run({{"play",
          PlayFile,
          "playing",
          "0",
          {"movie.FileName 1", "movie.MovieWindowSize 0", "movie.Rate 1", "movie.FileName /m/clip.avi"}}});
    EXPECT_EQ(player.gLength, 10) << "the duration, once it has opened";
    EXPECT_EQ(movieWindow()->Caption.get(), "clip");
    EXPECT_FALSE(movieWindow()->Visible);

    run({{"the delay is not over", wait(299), "playing", "0", {}}, {"it is", wait(1), "playing", "0", {"movie.Run"}}});
    EXPECT_TRUE(movieWindow()->Visible);
    run({{"2.6 seconds", wait(2600), "playing", "2.5", {}}});
    EXPECT_EQ(panel().pctSlide.Width, 750);

    run({{"pause", PauseFile, "paused", "2.6", {"movie.Pause"}}});
    EXPECT_EQ(stepTips(), "Back Step");
    run({{"step", NextFile, "paused", "4", {"movie.CurrentPosition 4"}}});
    EXPECT_EQ(panel().pctSlide.Width, 1200);
    run({{"back", PrevFile, "paused", "3", {"movie.CurrentPosition 3"}},
         {"a while", wait(3000), "paused", "3", {}},
         {"play on", PlayFile, "playing", "3", {"movie.Run"}},
         {"a second", wait(1000), "playing", "4", {}}});
    EXPECT_EQ(stepTips(), "Prev Next");
    run({{"close", closeFile(), "stopped", "", {"movie.Stop"}}});
    EXPECT_EQ(movieWindow(), nullptr);
}

/// MOVE-17, MOVE-29
TEST_F(Kinds, AMovieStepsUpToItsDurationAndBackTo0) {
    machine.addMovie("/m/clip.avi", 3.4, 320, 240);
    setUpPanel();
    setList({"/m/clip.avi"});
    PlayFile(player);
    machine.advance(500 + 1600);
    run({{"pause", PauseFile, "paused", "1.6", {"movie.Pause"}},
         {"step from 2", NextFile, "paused", "3", {"movie.CurrentPosition 3"}},
         {"step from 3, below 3.4", NextFile, "paused", "4", {"movie.CurrentPosition 4"}},
         {"step from 3.4, which is 3", NextFile, "paused", "4", {"movie.CurrentPosition 4"}}});
    EXPECT_EQ(movieWindow()->amvMovie->CurrentPosition(), 3.4) << "held at the duration";
    run({{"back", PrevFile, "paused", "2", {"movie.CurrentPosition 2"}},
         {"back", PrevFile, "paused", "1", {"movie.CurrentPosition 1"}},
         {"back", PrevFile, "paused", "0", {"movie.CurrentPosition 0"}},
         {"no further", PrevFile, "paused", "0", {}}});
}

/// MOVE-18: Paused movie: the slider is set in any case
/// MOVE-17
TEST_F(Kinds, AMovieDoesNotStepAtAWholeDuration) {
    machine.addMovie("/m/clip.avi", 3, 320, 240);
    setUpPanel();
    setList({"/m/clip.avi"});
    PlayFile(player);
    machine.advance(500 + 2600);
    run({{"pause", PauseFile, "paused", "2.6", {"movie.Pause"}},
         {"2.6 counts as 3, which is not below 3", NextFile, "paused", "2.6", {}}});
    EXPECT_EQ(panel().pctSlide.Width, 2600) << "the slider is set in any case";
}

/// OPEN-20: The length of a picture is its interval
/// MOVE-06: Picture: its clock stops
/// MOVE-35: Unless it keeps a picture, the image window goes
/// PIC-14: With an interval label 2 is 00:00, the seconds begin at 0 and the clock runs
/// OPEN-44, MOVE-02
TEST_F(Kinds, APicture) {
    machine.addPicture("/m/view.jpg", 200, 100);
    player.gInterval = 5;
    setUpPanel();
    setList({"/m/view.jpg"});
    run({{"play", PlayFile, "playing", "00:00", {"pictures.decode /m/view.jpg"}}});
    EXPECT_EQ(player.gLength, 5);
    EXPECT_TRUE(imageWindow()->Visible);
    EXPECT_TRUE(imageWindow()->tmrImage.Enabled);
    run({{"2 seconds", wait(2000), "playing", "00:02", {}}});
    EXPECT_EQ(panel().pctSlide.Width, 1200);
    run({{"pause", PauseFile, "paused", "00:02", {}}});
    EXPECT_EQ(stepTips(), "Prev Next");
    EXPECT_FALSE(imageWindow()->tmrImage.Enabled);
    run({{"a while", wait(10000), "paused", "00:02", {}},
         {"play on", PlayFile, "playing", "00:02", {}},
         {"a second", wait(1000), "playing", "00:03", {}},
         {"close", closeFile(), "stopped", "", {}}});
    EXPECT_EQ(imageWindow(), nullptr);
}

/// PIC-15: Without one label 2 is 99:99 and the picture never goes on by itself
/// IMG-06: The clock never runs with an interval of 0
/// OPEN-20, OPEN-44
TEST_F(Kinds, APictureWithoutAnIntervalStays) {
    machine.addPicture("/m/view.jpg", 200, 100);
    setUpPanel();
    setList({"/m/view.jpg"});
    run({{"play", PlayFile, "playing", "99:99", {"pictures.decode /m/view.jpg"}},
         {"a minute", wait(60000), "playing", "99:99", {}}});
    EXPECT_EQ(player.gLength, 0);
    EXPECT_FALSE(imageWindow()->tmrImage.Enabled);
    run({{"pause", PauseFile, "paused", "99:99", {}}, {"play on", PlayFile, "playing", "99:99", {}}});
    EXPECT_FALSE(imageWindow()->tmrImage.Enabled);
}

/// MOVE-36: A close that keeps stops the picture's clock, sets its seconds to 0 and leaves it on the screen until a
///     close that does not keep
TEST_F(Kinds, ACloseThatKeepsLeavesThePictureWithItsClockStopped) {
    machine.addPicture("/m/view.jpg", 200, 100);
    player.gInterval = 5;
    setUpPanel();
    setList({"/m/view.jpg"});
    PlayFile(player);
    machine.advance(2000);
    run({{"close and keep", [](Player& it) { CloseFile(it, true); }, "stopped", "", {}}});
    EXPECT_TRUE(imageWindow()->Visible);
    EXPECT_FALSE(imageWindow()->tmrImage.Enabled);
    EXPECT_EQ(player.gImageElapsed, 0);
    EXPECT_EQ(player.gMediaKind, mkNone);
    run({{"the next close takes it", closeFile(), "stopped", "", {}}});
    EXPECT_EQ(imageWindow(), nullptr);
}

/// MOVE-47: A step of a held sound or track moves the slider too
TEST_F(Kinds, AStepOfAHeldSoundOrTrackMovesTheSlider) {
    machine.addDisc("/cd", {100});
    machine.addSound("/m/long.wav", 60000);
    setUpPanel();
    for (const bool disc : {false, true}) {
        setList({disc ? "/cd/Track01.cda" : "/m/long.wav"});
        machine.loop.enter([this] { PlayFile(player); });
        machine.advance(30000);
        machine.loop.enter([this] { PauseFile(player); });
        const double second = 3000.0 / (disc ? 100 : 60);
        machine.loop.enter([this] { NextFile(player); });
        EXPECT_FLOAT_EQ(panel().pctSlide.Width, static_cast<float>(31 * second));
        machine.loop.enter([this] { PrevFile(player); });
        machine.loop.enter([this] { PrevFile(player); });
        EXPECT_FLOAT_EQ(panel().pctSlide.Width, static_cast<float>(29 * second));
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

/// MOVE-02
TEST_F(Kinds, ClosedWhilePausedPreviousAndNextHaveTheirNamesAgain) {
    machine.addDisc("/cd", {100});
    machine.addSound("/m/long.wav", 60000);
    machine.addMovie("/m/clip.avi", 40, 320, 240);
    setUpPanel();
    for (const char* path : {"/m/long.wav", "/cd/Track01.cda", "/m/clip.avi"}) {
        SCOPED_TRACE(path);
        setList({path});
        machine.loop.enter([this] { PlayFile(player); });
        machine.advance(2000);
        machine.loop.enter([this] { PauseFile(player); });
        EXPECT_EQ(stepTips(), "Back Step");
        machine.loop.enter([this] { CloseFile(player, false); });
        EXPECT_EQ(stepTips(), "Prev Next");
    }
}

}  // namespace
}  // namespace corvane
