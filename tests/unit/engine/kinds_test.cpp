// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/engine/sequences.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// What each transport operation does with a file of each kind.
using Kinds = Sequences;

TEST_F(Kinds, AnEmptyListPlaysNothing) {
    setUpPanel();
    run({{"play", PlayFile, "stopped", "", {}},
         {"pause", PauseFile, "stopped", "", {}},
         {"next", NextFile, "stopped", "", {}},
         {"previous", PrevFile, "stopped", "", {}},
         {"close", closeFile(), "stopped", "", {}}});
    EXPECT_TRUE(button(kEditor).Enabled);
}

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
