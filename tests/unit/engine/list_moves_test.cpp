// SPDX-License-Identifier: GPL-3.0-or-later
#include "unit/engine/sequences.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// Which entry is shown and played after next and previous.
class ListMoves : public Sequences {
protected:
    ListMoves() {
        for (const char* path : {"/m/one.wav", "/m/two.wav", "/m/three.wav"}) machine.addSound(path, 5000);
    }
    void setUp(bool repeat, std::int16_t index) {
        setUpPanel();
        setList({"/m/one.wav", "/m/two.wav", "/m/three.wav"});
        player.gRepeat = repeat;
        player.gFileIndex = index;
    }
    void expectEntry(const char* number, const char* title) {
        EXPECT_EQ(label(kNumberLabel), number);
        EXPECT_EQ(label(kTitleLabel), title);
        EXPECT_EQ(player.gFileIndex, std::stoi(number) - 1);
    }
    std::string playing() {
        std::string path;
        for (const std::string& call : machine.calls("mci")) {
            if (call.rfind("mci.FileName ", 0) == 0) path = call.substr(13);
        }
        return path;
    }
};

/// MOVE-11: Stopped, it moves on and shows number and title without playing; on the last entry with repeat to the first
TEST_F(ListMoves, NextWhileStoppedShowsTheNextEntryOnly) {
    setUp(false, 0);
    run({{"next", NextFile, "stopped", "", {}}});
    expectEntry("002", "two");
}

/// MOVE-12: Stopped on the last entry without repeat it closes and stays there
TEST_F(ListMoves, NextOnTheLastWhileStoppedClosesAndStays) {
    setUp(false, 2);
    run({{"next", NextFile, "stopped", "", {}}});
    EXPECT_EQ(player.gFileIndex, 2);
}

/// MOVE-11
TEST_F(ListMoves, NextOnTheLastWhileStoppedWrapsWithRepeat) {
    setUp(true, 2);
    run({{"next", NextFile, "stopped", "", {}}});
    expectEntry("001", "one");
}

/// MOVE-25: Stopped, it moves back and shows the entry; on the first it stays, with repeat it shows the last
TEST_F(ListMoves, PreviousWhileStoppedShowsTheEntryBefore) {
    setUp(false, 2);
    run({{"previous", PrevFile, "stopped", "", {}}});
    expectEntry("002", "two");
    EXPECT_FALSE(player.gBackPending);
}

/// MOVE-25
TEST_F(ListMoves, PreviousOnTheFirstWhileStoppedStays) {
    setUp(false, 0);
    run({{"previous", PrevFile, "stopped", "", {}}});
    expectEntry("001", "one");
}

/// MOVE-25
TEST_F(ListMoves, PreviousOnTheFirstWhileStoppedWrapsWithRepeat) {
    setUp(true, 0);
    run({{"previous", PrevFile, "stopped", "", {}}});
    expectEntry("003", "three");
}

/// SEQ-02: Else the index goes up by one, and behind the last entry to 0
/// MOVE-13: Playing, it moves on, closes by the rule of keeping and plays
TEST_F(ListMoves, NextWhilePlayingPlaysTheNext) {
    setUp(false, 0);
    PlayFile(player);
    run({{"next",
          NextFile,
          "playing",
          "00:00",
          {"mci.Command Stop", "mci.Command Close", "mci.Command Stop", "mci.Command Close", "mci.FileName /m/two.wav",
           "mci.Command Open", "mci.TimeFormat 0", "mci.UpdateInterval 100", "mci.Command Play"}}});
    expectEntry("002", "two");
}

/// SEQ-01: On the last entry without repeat the index goes to 0 and the list does not go on
/// MOVE-14: Playing the last entry without repeat it closes and shows 001 with the first title
TEST_F(ListMoves, NextOnTheLastWhilePlayingRewindsAndStops) {
    setUp(false, 2);
    PlayFile(player);
    run({{"next", NextFile, "stopped", "", {"mci.Command Stop", "mci.Command Close"}}});
    expectEntry("001", "one");
    EXPECT_EQ(player.gMediaKind, mkNone);
}

/// MOVE-15: Playing the last entry with repeat it plays entry 1
/// SEQ-02
TEST_F(ListMoves, NextOnTheLastWhilePlayingPlaysTheFirstWithRepeat) {
    setUp(true, 2);
    PlayFile(player);
    machine.clearCalls();
    NextFile(player);
    expectEntry("001", "one");
    EXPECT_EQ(playing(), "/m/one.wav");
    EXPECT_EQ(state(), "playing");
}

/// SEQ-04: A first press sets the flag and begins the double-click time afresh
/// MOVE-26: Playing, one press changes no entry; only a second one in time does
TEST_F(ListMoves, OnePressOfPreviousRestartsTheFileAfterTheDoubleClickTime) {
    setUp(false, 1);
    PlayFile(player);
    machine.advance(3000);
    run({{"previous", PrevFile, "playing", "00:03", {}},
         {"just before the time is over", wait(399), "playing", "00:03", {}}});
    EXPECT_TRUE(player.gBackPending);
    machine.advance(1);
    EXPECT_FALSE(player.gBackPending);
    EXPECT_EQ(playing(), "/m/two.wav");
    EXPECT_EQ(label(kTimeLabel), "00:00");
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 0);
    machine.advance(2000);
    EXPECT_EQ(label(kTimeLabel), "00:02");
    expectEntry("002", "two");
}

/// MOVE-27: Playing, the second press moves back, closes by the rule of keeping and plays
/// MOVE-26
TEST_F(ListMoves, TwoPressesOfPreviousPlayTheEntryBefore) {
    setUp(false, 2);
    PlayFile(player);
    PrevFile(player);
    machine.advance(399);
    PrevFile(player);
    expectEntry("002", "two");
    EXPECT_EQ(playing(), "/m/two.wav");
    EXPECT_FALSE(player.gBackPending);
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "00:01") << "no restart follows";
}

/// SEQ-08
TEST_F(ListMoves, TwoPressesOnTheFirstPlayItAgain) {
    setUp(false, 0);
    PlayFile(player);
    machine.advance(2000);
    pressPrevTwice(player);
    expectEntry("001", "one");
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(label(kTimeLabel), "00:00");
}

/// SEQ-08
TEST_F(ListMoves, TwoPressesOnTheFirstPlayTheLastWithRepeat) {
    setUp(true, 0);
    PlayFile(player);
    pressPrevTwice(player);
    expectEntry("003", "three");
    EXPECT_EQ(playing(), "/m/three.wav");
}

/// MOVE-42: It forgets a first press of previous and a drag of the slider
/// SEQ-11
TEST_F(ListMoves, ClosingForgetsAPressOfPrevious) {
    setUp(false, 1);
    PlayFile(player);
    PrevFile(player);
    CloseFile(player, false);
    EXPECT_FALSE(player.gBackPending);
    machine.advance(1000);
    EXPECT_EQ(state(), "stopped") << "the file does not start again";
}

/// MOVE-09: A pause forgets a first press of previous
/// SEQ-11
TEST_F(ListMoves, PausingForgetsAPressOfPrevious) {
    setUp(false, 1);
    PlayFile(player);
    PrevFile(player);
    PauseFile(player);
    EXPECT_FALSE(player.gBackPending);
    machine.advance(1000);
    EXPECT_EQ(state(), "paused");
}

/// MOVE-16: Paused picture: pause is enabled, and it goes on as while playing
/// MOVE-28: Paused picture: pause is enabled, and it goes back as while playing
TEST_F(ListMoves, APausedPictureMovesOnAndBack) {
    machine.addPicture("/m/a.bmp", 10, 10);
    machine.addPicture("/m/b.bmp", 10, 10);
    setUpPanel();
    setList({"/m/a.bmp", "/m/b.bmp"});
    PlayFile(player);
    PauseFile(player);
    NextFile(player);
    EXPECT_EQ(state(), "playing");
    expectEntry("002", "b");
    PauseFile(player);
    PrevFile(player);
    EXPECT_TRUE(player.gBackPending);
    PrevFile(player);  // pause is enabled again: the panel counts as stopped until the double-click time is over
    expectEntry("001", "a");
    EXPECT_EQ(state(), "stopped");
    machine.advance(400);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(machine.calls("pictures").back(), "pictures.decodeAhead /m/b.bmp");
    expectEntry("001", "a");
}

/// MOVE-28
TEST_F(ListMoves, APausedPictureThatGoesBackOnceStartsAgain) {
    machine.addPicture("/m/a.bmp", 10, 10);
    player.gInterval = 5;
    setUpPanel();
    setList({"/m/a.bmp"});
    PlayFile(player);
    machine.advance(3000);
    PauseFile(player);
    PrevFile(player);
    machine.advance(400);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(label(kTimeLabel), "00:00");
    EXPECT_EQ(player.gImageElapsed, 0);
}

/// MOVE-14
TEST_F(ListMoves, AListPlaysThroughAndEndsRewound) {
    setUp(false, 0);
    PlayFile(player);
    machine.advance(5000);
    expectEntry("002", "two");
    machine.advance(5000);
    expectEntry("003", "three");
    machine.advance(5000);
    expectEntry("001", "one");
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(machine.media.liveControls(), 0);
}

/// MOVE-10
TEST_F(ListMoves, AnEmptiedListEndsWithItsFile) {
    setUp(true, 1);
    PlayFile(player);
    player.gFileCount = 0;
    machine.advance(5000);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(mciWindow(), nullptr);
    EXPECT_EQ(player.gMediaKind, mkNone);
}

/// MOVE-41: Closing acts also on an emptied list that still plays
TEST_F(ListMoves, AnEmptiedListCanBePausedAndClosed) {
    setUp(false, 0);
    PlayFile(player);
    player.gFileCount = 0;
    PauseFile(player);
    EXPECT_EQ(state(), "paused");
    CloseFile(player, false);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(mciWindow(), nullptr);
}

// --- Files that are not there or cannot be played --------------------------------------------------------------------

class MissingFiles : public ListMoves {
protected:
    const FakeDialogs::Box box{"/m/two.wav Can't open!!", "Corvane", Buttons::AbortRetryIgnore, Icon::Stop};
    void loseTwo(bool repeat = false) {
        setUp(repeat, 1);
        machine.files.remove("/m/two.wav");
    }
};

/// OPEN-06: A missing file gives the box of its path and " Can't open!!", titled Corvane, with Abort, Retry and Ignore
///     and the stop icon
/// OPEN-09: Abort closes and keeps no picture
/// LIST-20
TEST_F(MissingFiles, AbortCloses) {
    loseTwo();
    machine.dialogs.answers = {Answer::Abort};
    PlayFile(player);
    EXPECT_EQ(machine.dialogs.boxes, std::vector<FakeDialogs::Box>{box});
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(player.gMediaKind, mkNone);
    EXPECT_FALSE(player.gPlaying);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_TRUE(button(kEditor).Enabled);
}

/// OPEN-08: Ignore is next
TEST_F(MissingFiles, IgnorePlaysTheNext) {
    loseTwo();
    machine.dialogs.answers = {Answer::Ignore};
    PlayFile(player);
    machine.settle();
    expectEntry("003", "three");
    EXPECT_EQ(playing(), "/m/three.wav");
    EXPECT_EQ(state(), "playing");
}

/// OPEN-07: Retry is previous: a first press, which tries again
TEST_F(MissingFiles, RetryIsPreviousWhichTriesAgainAfterTheDoubleClickTime) {
    loseTwo();
    machine.dialogs.answers = {Answer::Retry};
    PlayFile(player);
    machine.settle();
    EXPECT_TRUE(player.gBackPending);
    machine.addSound("/m/two.wav", 5000);
    machine.advance(400);
    expectEntry("002", "two");
    EXPECT_EQ(playing(), "/m/two.wav");
}

/// OPEN-09
TEST_F(MissingFiles, TheFileThatPlayedBeforeIsNotTouchedByTheBox) {
    setUp(false, 0);
    PlayFile(player);
    machine.files.remove("/m/two.wav");
    machine.dialogs.answers = {Answer::Abort};
    machine.dialogs.whileUp = [this] { EXPECT_EQ(state(), "playing") << "play disabled, pause enabled"; };
    NextFile(player);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(machine.media.liveControls(), 0);
}

/// OPEN-12: A list of missing files never nests its boxes
TEST_F(MissingFiles, AListOfMissingFilesNeverNestsItsBoxes) {
    setUpPanel();
    std::vector<std::string> paths;
    for (int i = 0; i < kMaxFiles; ++i) paths.push_back("/m/gone" + std::to_string(i) + ".wav");
    setList(paths);
    machine.dialogs.answers.assign(kMaxFiles, Answer::Ignore);
    PlayFile(player);
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U) << "what follows a box is a new event";
    machine.settle();
    EXPECT_EQ(machine.dialogs.boxes.size(), static_cast<std::size_t>(kMaxFiles));
    EXPECT_EQ(machine.dialogs.mostBoxesUp, 1);
    EXPECT_TRUE(machine.dialogs.loopWasHeld);
    EXPECT_EQ(state(), "stopped");
    expectEntry("001", "gone0");
}

/// OPEN-13: Timers wait while the box is up
TEST_F(MissingFiles, TimersWaitWhileTheBoxIsUp) {
    machine.addPicture("/m/a.bmp", 10, 10);
    setUp(false, 1);
    machine.files.remove("/m/two.wav");
    const std::string before = label(kTextLabel);
    machine.dialogs.answers = {Answer::Abort};
    machine.dialogs.whileUp = [this] { machine.advance(10000); };
    player.gBackPending = true;
    panel().tmrPlayBack.restart();
    machine.loop.enter([this] { PlayFile(player); });
    machine.settle();
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U) << "the tick that came meanwhile was dropped by the close";
    EXPECT_EQ(state(), "stopped");
}

/// OPEN-30: An entry without a number at its end fails like a missing file
TEST_F(MissingFiles, ATrackWithoutANumberCannotBeOpened) {
    for (const char* path : {"/m/Song.cda", "/m/5.cda", "/x.cda", ".cda", "/m/T &.cda"}) {
        SCOPED_TRACE(path);
        machine.files.add(path);
        if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
        setList({path});
        machine.dialogs.boxes.clear();
        PlayFile(player);
        ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
        EXPECT_EQ(machine.dialogs.boxes[0].text, std::string(path) + " Can't open!!");
        EXPECT_EQ(state(), "stopped");
    }
}

/// OPEN-55
TEST_F(MissingFiles, ATrackThatNoDiscHasIsAFileThatCannotBePlayed) {
    setUpPanel();
    const std::vector<std::pair<const char*, const char*>> tracks = {{"/m/Track00.cda", "0"}, {"/m/T-1.cda", "-1"}};
    for (const auto& [path, number] : tracks) {
        machine.files.add(path);
        setList({path});
        machine.dialogs.boxes.clear();
        machine.dialogs.whileUp = [this] { EXPECT_EQ(label(kTextLabel), "CD Audio Now On Play"); };
        PlayFile(player);
        ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
        EXPECT_EQ(machine.dialogs.boxes[0].text,
                  std::string(path) + " Can't open!!\r\nA disc has no track " + number + ".");
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(mciWindow(), nullptr);
    }
}

/// OPEN-55: A name of one character is its number; a number that no track has fails with that reason
TEST_F(MissingFiles, ANameOfOneCharacterIsATrackNumber) {
    machine.addDisc("/cd", {10, 20, 30});
    machine.files.add("3.cda");
    machine.media.discs[""] = machine.media.discs["/cd"];
    setUpPanel();
    setList({"3.cda"});
    PlayFile(player);
    machine.settle();
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(player.gCdTrack, 3);
    EXPECT_EQ(state(), "playing");
}

/// OPEN-05: The path is looked up, hidden files included
TEST_F(MissingFiles, HiddenFilesCanBeOpened) {
    machine.addSound("/m/.one", 1000);
    machine.files.addHidden("/m/hidden.wav");
    machine.media.sounds["/m/hidden.wav"] = {1000, ""};
    setUpPanel();
    setList({"/m/hidden.wav"});
    PlayFile(player);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(state(), "playing");
}

/// OPEN-15: A device that goes away stops the player after its box, answered Abort
TEST_F(MissingFiles, ADeviceThatGoesAwayStopsThePlayer) {
    setUp(true, 0);
    PlayFile(player);
    machine.advance(1000);
    machine.media.mci()->fail("the device is gone");
    machine.settle();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(state(), "stopped");
    machine.advance(10000);
    EXPECT_EQ(state(), "stopped");
}

// --- Custom start positions ------------------------------------------------------------------------------------------

/// OPEN-26: With a custom start and custom play on it seeks there first
TEST_F(ListMoves, ACustomStartIsInForceWhileCustomPlayIsOn) {
    setUp(false, 0);
    player.gStartPosition[0] = 2000;
    PlayFile(player);
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 0);
    CloseFile(player, false);
    player.gCustomMode = kCustomPlay;
    run({{"play",
          PlayFile,
          "playing",
          "00:00",
          {"mci.Command Stop", "mci.Command Close", "mci.FileName /m/one.wav", "mci.Command Open", "mci.TimeFormat 0",
           "mci.UpdateInterval 100", "mci.To 2000", "mci.Command Seek", "mci.Command Play"}},
         {"a second", wait(1000), "playing", "00:03", {}}});
}

/// OPEN-33: With a custom start it plays from there while custom play is on, and only then
TEST_F(ListMoves, ACdTrackStartsAtItsCustomStartWhileCustomPlayIsOn) {
    machine.addDisc("/cd", {100});
    setUpPanel();
    setList({"/cd/Track01.cda"});
    player.gStartPosition[0] = (30 << 16) + 1;
    player.gCustomMode = kCustomRepeat;
    PlayFile(player);
    EXPECT_EQ(machine.log.count("mci.From " + std::to_string((30 << 16) + 1)), 1);
    machine.advance(100);
    EXPECT_EQ(label(kTimeLabel), "00:30");
}

}  // namespace
}  // namespace corvane
