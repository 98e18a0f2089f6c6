// SPDX-License-Identifier: GPL-3.0-or-later
#include <limits>
#include <optional>

#include "unit/engine/session_fixture.h"

namespace corvane {
namespace {

/// REM-01: It is ready while the panel stands, and not during the opening
TEST_F(Session, IsReadyWhileThePanelStands) {
    EXPECT_FALSE(now().ready);
    EXPECT_EQ(ask([](MediaSession& s) { return s.play(); }), Answer::Busy);
    openThree();
    EXPECT_TRUE(now().ready);
    player.gAnimationStep = 15;  // the opening has been
    EXPECT_EQ(ask([](MediaSession& s) { return s.quit(); }), Answer::Done);
    EXPECT_FALSE(now().ready) << "the closing animation runs";
    EXPECT_EQ(now().track, 0U);
    EXPECT_FALSE(now().repeat || now().canGoNext || now().canGoPrevious);
    EXPECT_FALSE(now().canPlay || now().canPause || now().canSeek);
    EXPECT_EQ(ask([](MediaSession& s) { return s.play(); }), Answer::Busy);
    EXPECT_TRUE(machine.calls("mci").empty());
    machine.advance(5000);
    EXPECT_TRUE(machine.process.ending());
}

TEST_F(Session, TellsNothingMoreWhenItHasGone) {
    std::optional<MediaSession> other(std::in_place, player);
    int told = 0;
    other->Changed.tie([&told] { ++told; });
    openThree();
    ASSERT_GT(told, 0);
    other.reset();
    told = 0;
    open({"/m/two.wav"});
    EXPECT_EQ(told, 0);
}

/// REM-01
TEST_F(Session, IsNotReadyDuringTheOpening) {
    machine.files.add("/app/PANELSET/DEFAULT.CSV", "");
    act([this] { player.forms.load(FormId::MenuWindow); });
    act([this] { player.forms.load(FormId::Startup).Show(); });
    EXPECT_FALSE(now().ready);
    setUpPanel();
    EXPECT_FALSE(now().ready) << "the opening has not gone yet";
    act([this] { player.forms.unload(FormId::Startup); });
    EXPECT_TRUE(now().ready);
}

/// REM-18: It shows the entry that play would open, and follows the panel's own buttons
TEST_F(Session, ShowsTheEntryThatPlayWouldOpen) {
    open({});
    EXPECT_EQ(now().track, 0U);
    EXPECT_EQ(now().path, "");
    EXPECT_FALSE(now().canPlay || now().canPause || now().canSeek || now().canGoNext || now().canGoPrevious);
    openThree();
    EXPECT_EQ(now().status, Status::Stopped);
    EXPECT_NE(now().track, 0U);
    EXPECT_EQ(now().title, "one");
    EXPECT_EQ(now().path, "/m/one.wav");
    EXPECT_EQ(now().number, 1);
    EXPECT_EQ(now().lengthUs, 0) << "not known before it is open";
    EXPECT_TRUE(now().canPlay && now().canPause && now().canGoNext);
    EXPECT_FALSE(now().canSeek || now().canGoPrevious);
    EXPECT_EQ(session.positionUs(), 0);
}

/// REM-18
TEST_F(Session, FollowsThePanelsOwnButtons) {
    openThree();
    click(kPlay);
    machine.advance(2000);
    EXPECT_EQ(now().status, Status::Playing);
    EXPECT_EQ(now().lengthUs, 60 * kSecond);
    EXPECT_TRUE(now().canSeek && now().canPlay && now().canPause);
    EXPECT_DOUBLE_EQ(seconds(), 2);
    const std::uint32_t first = now().track;
    click(kPause);
    EXPECT_EQ(now().status, Status::Paused);
    click(kStop);
    EXPECT_EQ(now().status, Status::Stopped);
    EXPECT_EQ(now().track, first) << "the same track, stopped";
    click(kNext);
    EXPECT_EQ(now().title, "two");
    EXPECT_NE(now().track, first);
    click(kRepeat);
    EXPECT_TRUE(now().repeat && now().canGoPrevious);
    click(kVolumeUp);
    EXPECT_EQ(now().volume, player.gVolume);
    EXPECT_TRUE(seeked.empty()) << "no position was unexpected";
}

/// REM-11: A change is told once, and nothing while nothing changes
TEST_F(Session, TellsAChangeOnceAndNothingWhileNothingChanges) {
    openThree();
    const std::uint32_t first = now().track;
    play();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(now().track, first) << "the very first one too";
    machine.advance(5000);  // status updates and the indicator
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(seeked.empty());
    ask([](MediaSession& s) { return s.play(); });
    EXPECT_EQ(changes, 1) << "it played already";
}

TEST_F(Session, AsksForNoTimerOfItsOwn) {
    openThree();
    machine.clearCalls();
    act([] {});
    EXPECT_TRUE(machine.calls("timers").empty());
}

/// REM-02: Play, pause, play or pause, and stop are the player's own
TEST_F(Session, PlayPauseAndStopAreTheEnginesOwn) {
    openThree();
    EXPECT_EQ(ask([](MediaSession& s) { return s.playPause(); }), Answer::Done);
    EXPECT_EQ(state(), "playing");
    machine.advance(3000);
    EXPECT_EQ(ask([](MediaSession& s) { return s.playPause(); }), Answer::Done);
    EXPECT_EQ(state(), "paused");
    EXPECT_DOUBLE_EQ(seconds(), 3);
    EXPECT_EQ(ask([](MediaSession& s) { return s.pause(); }), Answer::Done);
    EXPECT_EQ(state(), "paused") << "pause does not toggle";
    play(1000);
    EXPECT_DOUBLE_EQ(seconds(), 4) << "it went on where it stood";
    EXPECT_EQ(ask([](MediaSession& s) { return s.stop(); }), Answer::Done);
    EXPECT_EQ(state(), "stopped");
    play(500);
    EXPECT_DOUBLE_EQ(seconds(), 0.5) << "from the beginning";
}

TEST_F(Session, WithoutATrackPlayDoesNothingAndPlayPauseCannotBeDone) {
    open({});
    EXPECT_EQ(ask([](MediaSession& s) { return s.play(); }), Answer::Done);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(ask([](MediaSession& s) { return s.playPause(); }), Answer::NotSupported);
    EXPECT_EQ(ask([](MediaSession& s) { return s.next(); }), Answer::Done);
    EXPECT_EQ(ask([](MediaSession& s) { return s.previous(); }), Answer::Done);
    EXPECT_EQ(ask([](MediaSession& s) { return s.seekBy(kSecond); }), Answer::Done);
    EXPECT_TRUE(mediaCalls().empty());
}

/// REM-03: Next and previous choose while stopped
TEST_F(Session, NextAndPreviousChooseWhileStopped) {
    openThree();
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().title, "two");
    EXPECT_EQ(state(), "stopped");
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_EQ(now().title, "one");
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_EQ(now().title, "one") << "there is none before";
    EXPECT_TRUE(mediaCalls().empty());
}

/// REM-04: While playing they change the file at once, at the first press
TEST_F(Session, NextAndPreviousChangeTheFileAtOnceWhilePlaying) {
    openThree();
    play(1000);
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().title, "two");
    EXPECT_EQ(state(), "playing");
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_EQ(now().title, "one") << "the first press, without waiting for a second one";
    EXPECT_EQ(state(), "playing");
    machine.advance(2000);
    EXPECT_EQ(now().title, "one");
    EXPECT_DOUBLE_EQ(seconds(), 2) << "no late press of previous begins it again";
}

/// REM-05: While paused they change the file and stay paused
TEST_F(Session, NextAndPreviousChangeTheFileAndStayPaused) {
    openThree();
    play(5000);
    pause();
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().title, "two");
    EXPECT_EQ(now().status, Status::Paused);
    EXPECT_EQ(seconds(), 0);
    machine.advance(3000);
    EXPECT_EQ(seconds(), 0) << "it holds";
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_EQ(now().title, "one");
    EXPECT_EQ(now().status, Status::Paused);
    play(1000);
    EXPECT_DOUBLE_EQ(seconds(), 1);
}

TEST_F(Session, EveryKindIsLeftAndEnteredWhilePaused) {
    player.gInterval = 20;
    open({"/m/one.wav", "/m/clip.avi", "/m/view.bmp", "/cd/Track02.cda", "/m/two.wav"});
    play(1000);
    pause();
    for (const char* title : {"clip", "view", "Track02", "two"}) {
        ask([](MediaSession& s) { return s.next(); });
        machine.advance(1500);
        EXPECT_EQ(now().title, title);
        EXPECT_EQ(now().status, Status::Paused) << title;
        EXPECT_EQ(seconds(), 0) << title;
    }
    for (const char* title : {"Track02", "view", "clip", "one"}) {
        ask([](MediaSession& s) { return s.previous(); });
        EXPECT_EQ(now().title, title);
        play(2000);
        EXPECT_GE(seconds(), 1) << title << " goes on when it is told to";
        pause();
    }
}

/// REM-07: A first press of previous that waits is void
TEST_F(Session, ADoublePressOfPreviousThatWaitsIsVoid) {
    openThree();
    play();
    ask([](MediaSession& s) { return s.next(); });
    click(kPrev);
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().title, "three");
    machine.advance(3000);
    EXPECT_EQ(now().title, "three");
    EXPECT_DOUBLE_EQ(seconds(), 3);
}

/// REM-06: At the list's end next stops; previous at its beginning does nothing
TEST_F(Session, NextAtTheListsEndStops) {
    open({"/m/one.wav", "/m/two.wav"});
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_FALSE(now().canGoNext) << "stopped on the last entry";
    for (const bool paused : {false, true}) {
        play(1000);
        if (paused) pause();
        EXPECT_TRUE(now().canGoNext);
        ask([](MediaSession& s) { return s.next(); });
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(now().title, "one") << "as the panel's button does";
        ask([](MediaSession& s) { return s.next(); });
    }
    EXPECT_EQ(now().title, "two");
    click(kRepeat);
    EXPECT_TRUE(now().canGoNext);
    play();
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(now().title, "one");
    EXPECT_EQ(state(), "playing");
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_EQ(now().title, "two") << "and back around";
}

/// REM-06
TEST_F(Session, NextAndPreviousBeginAListOfOneAgainWhenItRepeats) {
    open({"/m/one.wav"});
    click(kRepeat);
    play(5000);
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_EQ(seconds(), 0) << "at once";
    machine.advance(5000);
    pause();
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_EQ(seconds(), 0) << "not a step of a second";
    EXPECT_EQ(now().status, Status::Paused);
}

/// REM-06
TEST_F(Session, PreviousAtTheListsBeginningDoesNothing) {
    openThree();
    play(5000);
    EXPECT_FALSE(now().canGoPrevious);
    ask([](MediaSession& s) { return s.previous(); });
    EXPECT_DOUBLE_EQ(seconds(), 5);
    EXPECT_EQ(state(), "playing");
}

/// REM-19: The same entry keeps its number when it moves or begins again; two entries of one file are two tracks
TEST_F(Session, TheSameEntryKeepsItsNumberWhenItMovesOrBeginsAgain) {
    openThree();
    play();
    ask([](MediaSession& s) { return s.next(); });
    const std::uint32_t track = now().track;
    machine.advance(1000);
    EXPECT_EQ(ask([](MediaSession& s) { return s.setShuffle(true); }), Answer::Done);
    EXPECT_EQ(now().number, 1) << "the playing file goes to the front";
    EXPECT_EQ(now().track, track);
    open({"/m/one.wav"});
    ask([](MediaSession& s) { return s.stop(); });
    click(kRepeat);
    play(1000);
    const std::uint32_t only = now().track;
    machine.advance(60000);
    EXPECT_EQ(now().track, only) << "repeated";
    EXPECT_EQ(state(), "playing");
}

/// REM-19
TEST_F(Session, TwoEntriesOfOneFileAreTwoTracks) {
    open({"/m/one.wav", "/m/one.wav"});
    std::uint32_t track = now().track;
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_NE(now().track, track);
    ask([](MediaSession& s) { return s.previous(); });
    play(1000);
    track = now().track;
    ask([](MediaSession& s) { return s.next(); });
    EXPECT_NE(now().track, track);
}

TEST_F(Session, AListThatIsReplacedLeavesTheOpenFileItsName) {
    openThree();
    play(1000);
    const std::uint32_t track = now().track;
    act([this] { panel().OLEDragDrop.raise({true, {"/m/two.wav", "/m/clip.avi"}}); });
    EXPECT_EQ(now().track, track);
    EXPECT_EQ(now().title, "one");
    EXPECT_EQ(now().path, "/m/one.wav");
    EXPECT_EQ(now().number, 0);
    ask([](MediaSession& s) { return s.stop(); });
    EXPECT_EQ(now().title, "two");
    EXPECT_EQ(now().number, 1);
    EXPECT_NE(now().track, track);
}

/// REM-12
TEST_F(Session, ShuffleIsDoneOnceAndLeavesShortListsAlone) {
    openThree();
    machine.random.numbers = {0.9, 0.0};
    EXPECT_EQ(ask([](MediaSession& s) { return s.setShuffle(false); }), Answer::Done);
    EXPECT_EQ(player.gFilePath[1], "/m/two.wav");
    ask([](MediaSession& s) { return s.setShuffle(true); });
    EXPECT_EQ(player.gFilePath[1], "/m/three.wav");
    open({"/m/one.wav", "/m/two.wav"});
    ask([](MediaSession& s) { return s.next(); });
    ask([](MediaSession& s) { return s.setShuffle(true); });
    EXPECT_EQ(player.gFilePath[0], "/m/one.wav");
}

/// REM-12
TEST_F(Session, RepeatIsTheListsOwn) {
    openThree();
    EXPECT_EQ(ask([](MediaSession& s) { return s.setLoop(MediaSession::Loop::Playlist); }), Answer::Done);
    EXPECT_TRUE(player.gRepeat && now().repeat);
    ask([](MediaSession& s) { return s.setLoop(MediaSession::Loop::Playlist); });
    EXPECT_TRUE(player.gRepeat);
    EXPECT_EQ(ask([](MediaSession& s) { return s.setLoop(MediaSession::Loop::Track); }), Answer::NotSupported);
    EXPECT_TRUE(player.gRepeat);
    ask([](MediaSession& s) { return s.setLoop(MediaSession::Loop::None); });
    EXPECT_FALSE(player.gRepeat);
}

/// REM-12: The volume is the knob's level, repeat and shuffle are the panel's
TEST_F(Session, VolumeIsTheKnobsLevel) {
    openThree();
    const struct {
        double asked;
        int level;
    } rows[] = {{0.5, 8}, {-1, 0}, {1, 15}, {7, 15}, {0.04, 1}, {0.03, 0}};
    for (const auto& row : rows) {
        EXPECT_EQ(ask([&](MediaSession& s) { return s.setVolume(row.asked); }), Answer::Done);
        EXPECT_EQ(now().volume, row.level) << row.asked;
        EXPECT_EQ(machine.sound.waveOutGetVolume(), mdlPublicFunction::volumeWord(player.gVolume));
    }
    EXPECT_EQ(ask([](MediaSession& s) { return s.setVolume(std::numeric_limits<double>::quiet_NaN()); }),
              Answer::Invalid);
}

/// REM-20: The rate is 1, and 0 pauses
TEST_F(Session, TheRateIsOneAndZeroPauses) {
    openThree();
    play(1000);
    EXPECT_EQ(ask([](MediaSession& s) { return s.setRate(2); }), Answer::Done);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(ask([](MediaSession& s) { return s.setRate(0); }), Answer::Done);
    EXPECT_EQ(state(), "paused");
    ask([](MediaSession& s) { return s.setRate(1); });
    EXPECT_EQ(state(), "paused");
}

/// REM-13: A file that is opened becomes the list and plays; what cannot be opened leaves the list alone
TEST_F(Session, OpensAFileAndPlaysIt) {
    openThree();
    EXPECT_EQ(ask([](MediaSession& s) { return s.open("/m/clip.avi"); }), Answer::Done);
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(now().title, "clip");
    EXPECT_EQ(state(), "playing");
    pause();
    const std::uint32_t track = now().track;
    ask([](MediaSession& s) { return s.open("/m/two.wav"); });
    EXPECT_NE(now().track, track);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(movieWindow(), nullptr);
}

/// REM-13
TEST_F(Session, AFileThatIsOpenedTakesThePictureBeforeItAway) {
    player.gImageHide = false;
    open({"/m/view.bmp"});
    play(1000);
    ask([](MediaSession& s) { return s.open("/m/two.wav"); });
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(state(), "playing");
}

/// REM-13
TEST_F(Session, WhatCannotBeOpenedLeavesTheListAlone) {
    openThree();
    play(1000);
    machine.files.add("/m/text.txt", "");
    EXPECT_EQ(ask([](MediaSession& s) { return s.open("/m/text.txt"); }), Answer::NotSupported);
    EXPECT_EQ(ask([](MediaSession& s) { return s.open("/m/gone.wav"); }), Answer::Invalid);
    EXPECT_EQ(ask([](MediaSession& s) { return s.open(""); }), Answer::NotSupported);
    EXPECT_EQ(player.gFileCount, 3);
    EXPECT_EQ(state(), "playing");
}

/// REM-16: Raise brings a minimised panel back
TEST_F(Session, RaiseBringsAMinimisedPanelBack) {
    openThree();
    click(kMinimise);
    machine.clearCalls();
    EXPECT_EQ(ask([](MediaSession& s) { return s.raise(); }), Answer::Done);
    EXPECT_EQ(panel().WindowState.get(), WindowState::Normal);
    EXPECT_EQ(machine.log.count("windows.activate frmMainPanel"), 1);
}

/// REM-14: While the editor or the settings are open everything is refused
TEST_F(Session, EverythingIsRefusedWhileTheEditorOrTheSettingsAreOpen) {
    using Command = std::function<Answer(MediaSession&)>;
    const std::vector<Command> commands = {
        [](MediaSession& s) { return s.raise(); },
        [](MediaSession& s) { return s.next(); },
        [](MediaSession& s) { return s.previous(); },
        [](MediaSession& s) { return s.play(); },
        [](MediaSession& s) { return s.pause(); },
        [](MediaSession& s) { return s.playPause(); },
        [](MediaSession& s) { return s.stop(); },
        [](MediaSession& s) { return s.seekBy(1); },
        [](MediaSession& s) { return s.seekTo(1, 1); },
        [](MediaSession& s) { return s.open("/m/two.wav"); },
        [](MediaSession& s) { return s.setLoop(MediaSession::Loop::Playlist); },
        [](MediaSession& s) { return s.setShuffle(true); },
        [](MediaSession& s) { return s.setVolume(0.1); },
        [](MediaSession& s) { return s.setRate(0); },
        [](MediaSession& s) { return s.quit(); },
    };
    openThree();
    for (const FormId dialog : {FormId::FileList, FormId::Custom}) {
        act([&] { player.forms.load(dialog); });
        const MediaState before = now();
        for (const Command& command : commands) EXPECT_EQ(ask(command), Answer::Busy);
        EXPECT_EQ(now(), before);
        act([&] { player.forms.unload(dialog); });
    }
    for (const Command& command : commands) EXPECT_NE(ask(command), Answer::Busy);
}

/// REM-15: Commands wait while a box is up
TEST_F(Session, CommandsWaitWhileABoxIsUpAndWhatChangedIsTold) {
    openThree();
    play(1000);
    Answer answer = Answer::Busy;
    int changesInTheBox = 0;
    Status statusInTheBox = Status::Playing;
    machine.dialogs.whileUp = [&] {
        changesInTheBox = changes;
        statusInTheBox = now().status;
        machine.loop.post([&] { answer = session.play(); });
        machine.advance(1000);
        EXPECT_EQ(answer, Answer::Busy) << "it has not run";
    };
    forget();
    act([this] { mdlPublicFunction::mediaFailed(player, "why"); });
    EXPECT_EQ(changesInTheBox, 1);
    EXPECT_EQ(statusInTheBox, Status::Stopped);
    EXPECT_EQ(answer, Answer::Done) << "it ran when the box was answered";
    EXPECT_EQ(state(), "playing");
}

}  // namespace
}  // namespace corvane
