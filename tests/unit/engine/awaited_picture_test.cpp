// SPDX-License-Identifier: GPL-3.0-or-later
// A picture whose decoding takes a while: the panel goes on answering, and only what is still wanted is shown.
#include "engine/media_session.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

constexpr int kDecodingMs = 700;

struct AwaitedPicture : PlayerFixture {
    AwaitedPicture() {
        machine.addPicture("/m/a.bmp", 30, 20);
        machine.addPicture("/m/b.bmp", 60, 20);
        machine.addPicture("/m/c.bmp", 90, 20);
        machine.addBrokenPicture("/m/broken.gif", "it is damaged");
        machine.addSound("/m/d.wav", 60000);
        player.gImageHide = false;
        player.gInterval = 5;
        setUpPanel();
        setList({"/m/a.bmp", "/m/b.bmp", "/m/c.bmp", "/m/d.wav"});
        machine.pictures.decodingMs = kDecodingMs;
    }
    void command(void (*operation)(Player&)) {
        machine.loop.enter([&] { operation(player); });
        machine.settle();
    }
    void begin() { command(PlayFile); }
    /// The first picture shows, and what comes next has not been decoded ahead.
    void showFirst() {
        begin();
        machine.advance(kDecodingMs);
        ASSERT_EQ(shownWidth(), 30);
        machine.advance(kDecodingMs);
        player.gFilePath[1] = "/m/c.bmp";  // another one than was decoded ahead
        machine.clearCalls();
    }
    int shownWidth() {
        auto* const window = player.forms.find<ImageWindowControls>();
        return window != nullptr && window->Visible ? window->pctImage.Picture.get().width() : 0;
    }
    bool clockRuns() { return imageWindow() != nullptr && imageWindow()->tmrImage.Enabled; }
    void expectNothingMore() {
        const int width = shownWidth();
        const std::string told = state();
        machine.advance(3 * kDecodingMs);
        EXPECT_EQ(shownWidth(), width);
        EXPECT_EQ(state(), told);
        EXPECT_FALSE(player.pictureAwaited);
        EXPECT_FALSE(machine.pictures.isDecoding());
        EXPECT_TRUE(machine.dialogs.boxes.empty());
    }
};

/// PIC-26
TEST_F(AwaitedPicture, ThePanelTellsItAtOnceAndTheWindowComesWithThePicture) {
    begin();
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gMediaKind, mkImage);
    EXPECT_EQ(label(kTitleLabel), "a");
    EXPECT_EQ(label(kTextLabel), "BMP IMAGE");
    EXPECT_EQ(player.gLength, 5);
    machine.advance(kDecodingMs - 1);
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /m/b.bmp"), 0) << "that would take the worker from it";
    machine.advance(1);
    EXPECT_EQ(shownWidth(), 30);
    EXPECT_EQ(label(kTimeLabel), "00:00");
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /m/b.bmp"), 1);
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "00:01") << "its seconds begin when it is seen";
}

/// PIC-26
TEST_F(AwaitedPicture, WhatIsDecodedAheadIsShownInTheSameEvent) {
    begin();
    machine.advance(kDecodingMs);
    machine.loop.enter([this] {
        NextFile(player);
        EXPECT_EQ(shownWidth(), 60);
        EXPECT_EQ(label(kTimeLabel), "00:00");
        EXPECT_TRUE(clockRuns());
    });
}

/// PIC-26
TEST_F(AwaitedPicture, AKeptPictureStaysUntilTheNextOneIsThere) {
    showFirst();
    command(NextFile);
    EXPECT_EQ(label(kNumberLabel), "002");
    EXPECT_EQ(shownWidth(), 30);
    EXPECT_FALSE(clockRuns());
    machine.advance(kDecodingMs - 1);
    EXPECT_EQ(shownWidth(), 30);
    EXPECT_EQ(imageWindow()->Width, 30 * 15);
    machine.advance(1);
    EXPECT_EQ(shownWidth(), 90);
    EXPECT_TRUE(clockRuns());
    EXPECT_EQ(machine.log.count("windows.hide frmImageWindow"), 0);
    EXPECT_EQ(machine.log.count("windows.detach frmImageWindow"), 0);
}

TEST_F(AwaitedPicture, TheClockOfOneThatBeginsAgainStandsMeanwhile) {
    showFirst();
    machine.advance(4000 - kDecodingMs);
    EXPECT_EQ(player.gImageElapsed, 4);
    command(PrevFile);  // once: from the beginning, when no second press comes
    machine.advance(machine.windows.doubleClickMs);
    ASSERT_TRUE(player.pictureAwaited);
    EXPECT_FALSE(clockRuns());
    machine.advance(kDecodingMs + 4000);
    EXPECT_EQ(player.gFileIndex, 0) << "the seconds before do not count";
    EXPECT_EQ(state(), "playing");
}

/// PIC-27: Stop, next, previous, another file and the end give it up; paused meanwhile it is shown and held
TEST_F(AwaitedPicture, StopGivesItUp) {
    begin();
    machine.advance(100);
    machine.clearCalls();
    machine.loop.enter([this] { CloseFile(player, false); });
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(machine.calls("pictures"), std::vector<std::string>{"pictures.giveUp"});
    expectNothingMore();
    EXPECT_EQ(player.gMediaKind, mkNone);
}

TEST_F(AwaitedPicture, AnAnswerThatIsOnItsWayWhenItIsStoppedIsDropped) {
    begin();
    machine.schedule.runNext();  // until the answer is posted
    while (machine.loop.idle()) machine.schedule.runNext();
    machine.loop.enter([this] { CloseFile(player, false); });
    expectNothingMore();
    EXPECT_EQ(imageWindow(), nullptr);
}

/// PIC-27
TEST_F(AwaitedPicture, NextGoesPastIt) {
    begin();
    command(NextFile);
    EXPECT_EQ(label(kNumberLabel), "002");
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 60);
    EXPECT_EQ(machine.log.count("pictures.giveUp"), 1);
}

/// PIC-27
TEST_F(AwaitedPicture, PreviousGoesBackFromIt) {
    player.gFileIndex = 1;
    begin();
    command(PrevFile);
    command(PrevFile);
    EXPECT_EQ(label(kNumberLabel), "001");
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 30);
}

/// PIC-27
TEST_F(AwaitedPicture, PreviousPressedOnceBeginsItAgain) {
    begin();
    command(PrevFile);
    machine.advance(machine.windows.doubleClickMs);
    EXPECT_EQ(machine.log.count("pictures.giveUp"), 1);
    EXPECT_TRUE(player.pictureAwaited);
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 30);
    EXPECT_EQ(label(kNumberLabel), "001");
}

/// PIC-27
TEST_F(AwaitedPicture, PausedMeanwhileItIsShownAndHeld) {
    begin();
    command(PauseFile);
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 30);
    EXPECT_EQ(state(), "paused");
    EXPECT_FALSE(clockRuns());
    command(PlayFile);
    EXPECT_TRUE(clockRuns());
}

TEST_F(AwaitedPicture, PausedAndResumedMeanwhileItPlays) {
    showFirst();
    command(NextFile);
    command(PauseFile);
    command(PlayFile);
    EXPECT_FALSE(clockRuns()) << "the kept picture is not the one that plays";
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 90);
    EXPECT_TRUE(clockRuns());
    EXPECT_EQ(state(), "playing");
}

TEST_F(AwaitedPicture, NextWhilePausedShowsTheNext) {
    begin();
    command(PauseFile);
    command(NextFile);
    machine.advance(kDecodingMs);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(shownWidth(), 60);
}

TEST_F(AwaitedPicture, ADraggedSliderChangesNothing) {
    begin();
    MouseControl& slide = panel().pctSlide;
    press(slide, {kLeftButton, 0, 100, 5});
    machine.loop.enter([&] { slide.MouseMove.raise({kLeftButton, 0, 100, 5}); });
    release(slide, {kLeftButton, 0, 100, 5});
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 30);
    EXPECT_EQ(player.gImageElapsed, 0);
    EXPECT_TRUE(clockRuns());
}

TEST_F(AwaitedPicture, OneWhoseListIsReplacedIsShownAsAnyFileThatPlaysOn) {
    begin();
    machine.loop.enter([this] { panel().cmdMainPanel[0].OLEDragDrop.raise({true, {"/m/c.bmp", "/m/b.bmp"}}); });
    machine.advance(kDecodingMs);
    EXPECT_EQ(player.openedPath, "/m/a.bmp");
    EXPECT_EQ(shownWidth(), 30);
    command(NextFile);
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 60) << "the next one of the new list";
}

/// PIC-27
TEST_F(AwaitedPicture, AListChangedWithoutAStopGivesItUpWhenItsFileIsOpened) {
    begin();
    setList({"/m/d.wav"});
    command(PlayFile);
    EXPECT_EQ(player.gMediaKind, mkMciFile);
    EXPECT_EQ(machine.log.count("pictures.giveUp"), 1);
    expectNothingMore();
    EXPECT_EQ(imageWindow(), nullptr);
}

TEST_F(AwaitedPicture, TheZoomIsTheOneOfTheMomentItIsShown) {
    begin();
    player.gImageZoom = 1;
    machine.advance(kDecodingMs);
    EXPECT_EQ(imageWindow()->pctImage.Width, 60);
}

/// PIC-27
TEST_F(AwaitedPicture, PowerOffGivesItUp) {
    begin();
    click(kPower);
    machine.settle();
    EXPECT_EQ(machine.log.count("pictures.giveUp"), 1);
    EXPECT_FALSE(player.pictureAwaited);
    machine.advance(3 * kDecodingMs);
    EXPECT_EQ(imageWindow(), nullptr);
}

TEST_F(AwaitedPicture, TheEndOfTheSessionGivesItUp) {
    begin();
    machine.loop.enter([this] { panel().CloseRequest.raise(false); });
    machine.advance(3 * kDecodingMs);
    EXPECT_EQ(machine.log.count("pictures.giveUp"), 1);
    EXPECT_EQ(imageWindow(), nullptr);
}

TEST_F(AwaitedPicture, WaitsWhileABoxIsUp) {
    machine.dialogs.whileUp = [this] { machine.advance(2 * kDecodingMs); };
    begin();
    machine.loop.enter([this] {
        messageBox(player, "?", Buttons::Ok, Icon::Information);
        EXPECT_EQ(imageWindow(), nullptr) << "what follows a box is an event of its own";
    });
    machine.settle();
    EXPECT_EQ(shownWidth(), 30);
}

TEST_F(AwaitedPicture, CommandsOfMediaKeysReachIt) {
    MediaSession session(player);
    begin();
    EXPECT_EQ(session.state().status, MediaState::Status::Playing);
    machine.loop.enter([&] { session.pause(); });
    machine.loop.enter([&] { session.next(); });
    EXPECT_EQ(session.state().status, MediaState::Status::Paused) << "a paused player stays paused";
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 60);
    EXPECT_FALSE(clockRuns());
    machine.loop.enter([&] { session.next(); });
    machine.loop.enter([&] { session.stop(); });
    expectNothingMore();
}

TEST_F(AwaitedPicture, AClosedKeptWindowStops) {
    showFirst();
    command(NextFile);
    machine.loop.enter([this] { imageWindow()->CloseRequest.raise(false); });
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(machine.log.count("pictures.giveUp"), 1);
    expectNothingMore();
}

TEST_F(AwaitedPicture, OneThatFailsIsToldWhenThatIsKnown) {
    setList({"/m/broken.gif", "/m/a.bmp"});
    begin();
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    machine.advance(kDecodingMs);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_NE(machine.dialogs.boxes[0].text.find("it is damaged"), std::string::npos);
    EXPECT_FALSE(player.pictureAwaited);
    EXPECT_EQ(state(), "stopped");
}

TEST_F(AwaitedPicture, ThePictureOnTheScreenMakesRoomForIt) {
    showFirst();
    machine.pictures.roomIsTaken = [this] {
        return imageWindow() != nullptr && !imageWindow()->pctImage.Picture.get().empty();
    };
    command(NextFile);
    machine.advance(kDecodingMs);
    EXPECT_TRUE(player.pictureAwaited) << "the other one goes, and it is tried again";
    machine.advance(kDecodingMs);
    EXPECT_EQ(shownWidth(), 90);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(machine.log.count("pictures.decode /m/c.bmp"), 2);
}

TEST_F(AwaitedPicture, WithoutRoomEvenThenItFails) {
    showFirst();
    machine.pictures.roomIsTaken = [] { return true; };
    command(NextFile);
    machine.advance(5 * kDecodingMs);
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.log.count("pictures.decode /m/c.bmp"), 2);
}

// --- A minimised window ----------------------------------------------------------------------------------------------

/// IMG-24: One that is minimised stays so from slide to slide and has the next picture when it is restored
TEST_F(AwaitedPicture, AMinimisedWindowStaysSoFromSlideToSlide) {
    machine.pictures.decodingMs = 0;
    begin();
    machine.loop.enter([this] { imageWindow()->pctImage.DblClick.raise(); });
    machine.clearCalls();
    machine.advance(5000);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(imageWindow()->WindowState.get(), WindowState::Minimized);
    EXPECT_EQ(imageWindow()->pctImage.Picture.get().width(), 60) << "restored, it shows the next one";
    EXPECT_EQ(imageWindow()->Width, 60 * 15);
    EXPECT_EQ(machine.log.count("windows.show frmImageWindow"), 0);
    EXPECT_EQ(machine.log.count("windows.activate frmImageWindow"), 0);
    command(PauseFile);
    command(PlayFile);
    EXPECT_EQ(imageWindow()->WindowState.get(), WindowState::Normal) << "a play command shows it";
}

/// IMG-24
TEST_F(AwaitedPicture, AStoppedPlayerShowsItsNextPictureInAWindowOfNormalState) {
    machine.pictures.decodingMs = 0;
    begin();
    machine.loop.enter([this] { imageWindow()->pctImage.DblClick.raise(); });
    machine.loop.enter([this] { CloseFile(player, false); });
    begin();
    EXPECT_EQ(imageWindow()->WindowState.get(), WindowState::Normal);
}

}  // namespace
}  // namespace corvane
