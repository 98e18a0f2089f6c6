// SPDX-License-Identifier: GPL-3.0-or-later
// The box of a file that cannot be opened: what its answers do, and what makes them void.
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Answers : public PlayerFixture {
protected:
    void SetUp() override {
        for (const char* path : {"/m/one.wav", "/m/two.wav", "/m/other.wav", "/m/last.wav"}) {
            machine.addSound(path, 60000);
        }
        machine.addBrokenSound("/m/bad.wav", "no sound in it");
        machine.addBrokenMovie("/m/bad.avi", "no movie in it");
        machine.addBrokenPicture("/m/bad.bmp", "no picture in it");
        setUpPanel();
    }
    void play(const std::vector<std::string>& paths) {
        setList(paths);
        machine.loop.enter([this] { PlayFile(player); });
        machine.settle();
    }
    /// An event that comes while the first box is up.
    void during(std::function<void()> event) {
        machine.dialogs.whileUp = [this, event = std::move(event)] {
            if (machine.dialogs.boxes.size() == 1) machine.loop.post(event);
        };
    }
    void drop(const std::vector<std::string>& files) { panel().OLEDragDrop.raise({true, files}); }
    std::size_t boxes() const { return machine.dialogs.boxes.size(); }
    std::string open() { return player.gMediaKind == mkNone ? "nothing" : player.openedPath; }
    bool sounds() const { return machine.media.mci() != nullptr && machine.media.mci()->isPlaying(); }

    static constexpr const char* kGone = "/m/gone.wav";
};

// --- What came while the box was up ----------------------------------------------------------------------------------

/// OPEN-11
TEST_F(Answers, ADropMeanwhileMakesItVoidAndNothingPlays) {
    for (const Answer answer : {Answer::Retry, Answer::Ignore, Answer::Abort}) {
        for (const char* file : {kGone, "/m/bad.wav", "/m/bad.avi", "/m/bad.bmp"}) {
            SCOPED_TRACE(file);
            machine.dialogs.boxes.clear();
            machine.dialogs.answers = {answer};
            during([this] { drop({"/m/other.wav", "/m/last.wav"}); });
            play({file, "/m/two.wav"});
            machine.advance(1000);
            EXPECT_EQ(boxes(), 1U);
            EXPECT_EQ(state(), "stopped");
            EXPECT_EQ(open(), "nothing");
            EXPECT_FALSE(player.gPlaying);
            EXPECT_EQ(player.gFileIndex, 0);
            EXPECT_EQ(label(kTitleLabel), "other");
        }
    }
}

/// OPEN-11
TEST_F(Answers, AFileThatStillPlaysGoesOnBehindADrop) {
    for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.addSound("/m/one.wav", 60000);
        play({"/m/one.wav", "/m/two.wav"});
        machine.files.remove("/m/one.wav");
        machine.dialogs.answers = {answer};
        during([this] { drop({"/m/other.wav"}); });
        machine.loop.enter([this] { PrevFile(player); });
        machine.advance(1000);
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(open(), "/m/one.wav");
        EXPECT_TRUE(sounds());
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

/// What runs at once, as a press that an assistive program makes, is there before the answer.
TEST_F(Answers, AnAbortLeavesWhatBeganBeforeIt) {
    for (const Answer answer : {Answer::Abort, Answer::Retry, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {answer};
        machine.dialogs.whileUp = [this] { panel().OLEDragDrop.raise({true, {"/m/other.wav", "/m/last.wav"}, true}); };
        play({kGone, "/m/two.wav"});
        machine.advance(1000);
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(open(), "/m/other.wav");
        EXPECT_EQ(state(), "playing");
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

/// OPEN-11
TEST_F(Answers, APauseMeanwhileIsAStopWhenNothingIsOpen) {
    for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
        for (const char* file : {kGone, "/m/bad.wav"}) {
            SCOPED_TRACE(file);
            machine.dialogs.boxes.clear();
            machine.dialogs.answers = {answer};
            during([this] { PauseFile(player); });
            play({file, "/m/two.wav"});
            machine.advance(1000);
            EXPECT_EQ(boxes(), 1U);
            EXPECT_EQ(state(), "stopped");
            EXPECT_EQ(player.gFileIndex, 0);
        }
    }
}

/// OPEN-11
TEST_F(Answers, APauseMeanwhileHoldsAFileThatStillPlays) {
    play({"/m/one.wav", "/m/two.wav"});
    machine.files.remove("/m/one.wav");
    machine.dialogs.answers = {Answer::Ignore};
    during([this] { PauseFile(player); });
    machine.loop.enter([this] { PrevFile(player); });
    machine.advance(1000);
    EXPECT_EQ(state(), "paused");
    EXPECT_EQ(open(), "/m/one.wav");
    EXPECT_TRUE(machine.media.mci()->isPaused());
    EXPECT_EQ(player.gFileIndex, 0);
}

/// OPEN-11
TEST_F(Answers, APauseAndAPlayMeanwhileMakeItVoidAsWell) {
    play({"/m/one.wav", "/m/two.wav"});
    machine.files.remove("/m/one.wav");
    machine.dialogs.answers = {Answer::Ignore};
    during([this] {
        PauseFile(player);
        PlayFile(player);
    });
    machine.loop.enter([this] { PrevFile(player); });
    machine.advance(1000);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(open(), "/m/one.wav");
    EXPECT_EQ(player.gFileIndex, 0);
}

/// OPEN-11
TEST_F(Answers, AStopMeanwhileMakesItVoid) {
    for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {answer};
        during([this] { CloseFile(player, false); });
        play({kGone, "/m/two.wav"});
        machine.advance(1000);
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(player.gFileIndex, 0);
    }
}

/// OPEN-11
TEST_F(Answers, ANextMeanwhileCountsOnce) {
    for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {answer};
        during([this] { NextFile(player); });
        play({kGone, "/m/two.wav", "/m/last.wav"});
        machine.advance(1000);
        EXPECT_EQ(open(), "/m/two.wav");
        EXPECT_EQ(state(), "playing");
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

/// OPEN-11
TEST_F(Answers, APressOfPreviousMeanwhileTriesAgainWhateverTheAnswer) {
    for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {answer, Answer::Abort};
        during([this] { PrevFile(player); });
        play({"/m/two.wav", kGone, "/m/last.wav"});
        machine.loop.enter([this] { NextFile(player); });
        machine.advance(1000);
        ASSERT_EQ(boxes(), 2U);
        EXPECT_EQ(machine.dialogs.boxes[1].text, std::string(kGone) + " Can't open!!");
        EXPECT_EQ(player.gFileIndex, 1);
        EXPECT_EQ(state(), "stopped");
    }
}

/// OPEN-11
TEST_F(Answers, AShuffledListKeepsTheAnswer) {
    machine.dialogs.answers = {Answer::Ignore};
    during([this] { ShuffleList(player); });
    play({"/m/one.wav", kGone, "/m/two.wav"});
    machine.loop.enter([this] { NextFile(player); });
    machine.advance(1000);
    EXPECT_EQ(player.gFilePath[0], kGone) << "the file that was asked about is the current one";
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

/// OPEN-11
TEST_F(Answers, WhatComesBeforeTheNextTryStopsIt) {
    const std::vector<std::pair<const char*, std::function<void()>>> events = {
        {"pause", [this] { PauseFile(player); }},
        {"drop", [this] { drop({"/m/other.wav"}); }},
        {"drop of nothing", [this] { drop({}); }},
        {"stop", [this] { CloseFile(player, false); }},
    };
    for (const auto& [name, event] : events) {
        SCOPED_TRACE(name);
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {Answer::Retry};
        play({kGone});
        EXPECT_TRUE(player.gBackPending) << "a first press of previous";
        machine.loop.enter(event);
        machine.advance(1000);
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(state(), "stopped");
        EXPECT_FALSE(player.gPlaying);
    }
}

TEST_F(Answers, AHeldPictureIsHeldOnWhenADropMakesAPressOfPreviousVoid) {
    machine.addPicture("/m/a.bmp", 10, 10);
    play({"/m/a.bmp"});
    machine.loop.enter([this] { PauseFile(player); });
    machine.loop.enter([this] { PrevFile(player); });
    machine.loop.enter([this] { drop({"/m/other.wav"}); });
    machine.advance(1000);
    EXPECT_EQ(state(), "paused");
    EXPECT_EQ(player.gMediaKind, mkImage);
    EXPECT_NE(imageWindow(), nullptr);
}

/// SLIDER-26: While nothing is open it holds nothing
TEST_F(Answers, TheSliderHoldsNothingWhileNothingIsOpen) {
    machine.dialogs.answers = {Answer::Retry, Answer::Abort};
    play({kGone});
    press(panel().pctSlide, {kLeftButton, 0, 1000, 5});
    release(panel().pctSlide, {kLeftButton, 0, 1000, 5});
    EXPECT_TRUE(player.gBackPending) << "the next try still comes";
    EXPECT_EQ(boxes(), 1U);
    machine.advance(1000);
    EXPECT_EQ(boxes(), 2U);
    EXPECT_EQ(state(), "stopped");
}

// --- Files that cannot be decoded ------------------------------------------------------------------------------------

struct Damaged {
    const char* path;
    const char* reason;
};
constexpr std::array<Damaged, 3> kDamaged = {
    {{"/m/bad.wav", "no sound in it"}, {"/m/bad.avi", "no movie in it"}, {"/m/bad.bmp", "no picture in it"}}};

/// OPEN-14, PIC-16
TEST_F(Answers, ADamagedFileAsksAsAMissingOneDoesWithTheReason) {
    for (const auto& [path, reason] : kDamaged) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {Answer::Abort};
        machine.dialogs.whileUp = [this] {
            EXPECT_EQ(state(), "playing") << "as behind a missing file";
            EXPECT_EQ(mciWindow(), nullptr);
            EXPECT_EQ(movieWindow(), nullptr);
            EXPECT_FALSE(button(kEditor).Enabled);
        };
        play({path, "/m/one.wav"});
        EXPECT_EQ(machine.dialogs.boxes,
                  (std::vector<FakeDialogs::Box>{{std::string(path) + " Can't open!!\r\n" + reason, "Corvane",
                                                  Buttons::AbortRetryIgnore, Icon::Stop}}));
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(open(), "nothing");
        EXPECT_EQ(machine.media.liveControls(), 0);
        EXPECT_EQ(imageWindow(), nullptr);
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_TRUE(button(kEditor).Enabled);
        EXPECT_EQ(label(kTimeLabel), "");
    }
}

/// A name may hold line breaks; the reason's line is the box's own.
/// COM-29
TEST_F(Answers, ANameMakesNoLineOfABox) {
    const std::string lying = "/m/one\r\nThe disk is full.\nErase it?.wav";
    const std::string shown = "/m/one  The disk is full. Erase it?.wav Can't open!!";
    machine.dialogs.answers = {Answer::Abort};
    play({lying.c_str()});
    ASSERT_EQ(boxes(), 1U) << "a missing file";
    EXPECT_EQ(machine.dialogs.boxes[0].text, shown);
    EXPECT_EQ(player.gMediaKind, mkNone);
}

/// OPEN-14
TEST_F(Answers, ADamagedFileIsPassedOverByIgnore) {
    for (const auto& [path, reason] : kDamaged) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {Answer::Ignore};
        play({path, "/m/one.wav"});
        machine.advance(1000);
        EXPECT_EQ(boxes(), 1U) << reason;
        EXPECT_EQ(open(), "/m/one.wav");
        EXPECT_EQ(state(), "playing");
        EXPECT_TRUE(sounds());
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

/// OPEN-14
TEST_F(Answers, ADamagedFileIsTriedAgainByRetry) {
    machine.dialogs.answers = {Answer::Retry};
    play({"/m/two.wav", "/m/bad.wav"});
    machine.loop.enter([this] { NextFile(player); });
    machine.settle();
    machine.addSound("/m/bad.wav", 5000);
    machine.advance(1000);
    EXPECT_EQ(boxes(), 1U);
    EXPECT_EQ(open(), "/m/bad.wav");
    EXPECT_TRUE(sounds());
}

TEST_F(Answers, AFileThatFailsWhilePausedIsTriedAgainByRetry) {
    machine.dialogs.answers = {Answer::Retry};
    play({"/m/two.wav", "/m/one.wav"});
    machine.loop.enter([this] { NextFile(player); });
    machine.loop.enter([this] { PauseFile(player); });
    machine.media.mci()->fail("the device is gone");
    machine.advance(1000);
    EXPECT_EQ(boxes(), 1U);
    EXPECT_EQ(open(), "/m/one.wav");
    EXPECT_EQ(state(), "playing");
}

TEST_F(Answers, AListOfDamagedFilesNeverNestsItsBoxes) {
    machine.dialogs.answers.assign(6, Answer::Ignore);
    play({"/m/bad.wav", "/m/bad.bmp", "/m/bad.avi", "/m/bad.bmp", "/m/bad.bmp", "/m/bad.wav"});
    machine.advance(1000);
    EXPECT_EQ(boxes(), 6U);
    EXPECT_EQ(machine.dialogs.mostBoxesUp, 1);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(player.gFileIndex, 0);
}

TEST_F(Answers, AKeptPictureStaysBehindADamagedOneThatIsPassedOver) {
    machine.addPicture("/m/a.bmp", 10, 10);
    player.gImageHide = false;
    machine.dialogs.answers = {Answer::Ignore};
    machine.dialogs.whileUp = [this] { EXPECT_NE(imageWindow(), nullptr); };
    play({"/m/a.bmp", "/m/bad.bmp", "/m/a.bmp"});
    machine.loop.enter([this] { NextFile(player); });
    machine.settle();
    EXPECT_EQ(boxes(), 1U);
    EXPECT_EQ(player.gFileIndex, 2);
    EXPECT_EQ(player.gMediaKind, mkImage);
}

/// OPEN-14
TEST_F(Answers, AFileOfAReplacedListOnlyTellsThatItFailed) {
    for (const Answer answer : {Answer::Ok, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {answer};
        play({"/m/one.wav"});
        machine.loop.enter([this] { drop({"/m/other.wav", "/m/last.wav"}); });
        machine.media.mci()->fail("the device is gone");
        machine.advance(1000);
        EXPECT_EQ(machine.dialogs.boxes,
                  (std::vector<FakeDialogs::Box>{
                      {"/m/one.wav Can't open!!\r\nthe device is gone", "Corvane", Buttons::Ok, Icon::Stop}}));
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(player.gFileIndex, 0) << "the new list begins with its first file";
    }
}

TEST_F(Answers, AnOpeningStaysOpenUntilItIsClosedOrAnotherBegins) {
    play({"/m/one.wav", "/m/two.wav"});
    const Opening first = player.opening;
    EXPECT_TRUE(isStillOpen(player, first));
    machine.loop.enter([this] { PauseFile(player); });
    EXPECT_TRUE(isStillOpen(player, first));
    machine.loop.enter([this] { drop({"/m/other.wav"}); });
    EXPECT_TRUE(isStillOpen(player, first)) << "what plays goes on behind a drop";
    EXPECT_NE(player.lists, first.list);
    machine.loop.enter([this] { CloseFile(player, false); });
    EXPECT_FALSE(isStillOpen(player, first));
    machine.loop.enter([this] { PlayFile(player); });
    EXPECT_FALSE(isStillOpen(player, first));
    EXPECT_TRUE(isStillOpen(player, player.opening));
    EXPECT_EQ(player.opening.list, player.lists);
}

// --- What the panel shows behind the box -----------------------------------------------------------------------------

/// MOVE-46: Onto a missing file it shows its number and title all the same
TEST_F(Answers, PreviousOntoAMissingFileShowsItsNumberAndTitle) {
    player.gRepeat = true;
    for (const bool first : {false, true}) {
        machine.dialogs.answers = {Answer::Abort};
        machine.dialogs.whileUp = [this, first] {
            EXPECT_EQ(label(kNumberLabel), first ? "003" : "001");
            EXPECT_EQ(label(kTitleLabel), "gone");
        };
        setList(first ? std::vector<std::string>{"/m/one.wav", "/m/two.wav", kGone}
                      : std::vector<std::string>{kGone, "/m/two.wav", "/m/one.wav"});
        player.gFileIndex = first ? 0 : 1;
        machine.loop.enter([this] { PlayFile(player); });
        machine.loop.enter([this] { PrevFile(player); });
        machine.loop.enter([this] { PrevFile(player); });
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(label(kTitleLabel), "gone");
        machine.dialogs.boxes.clear();
    }
}

// --- Files that are opened rather than dropped -----------------------------------------------------------------------

class Opened : public Answers {
protected:
    void hand(const std::vector<std::string>& files) {
        machine.loop.post([this, files] { panel().OLEDragDrop.raise({true, files, true}); });
        machine.settle();
    }
};

/// CMD-29
TEST_F(Opened, TheFirstOfThemIsPlayedAtOnceWhateverPlayed) {
    for (const char* before : {"stopped", "playing", "paused"}) {
        SCOPED_TRACE(before);
        setList({"/m/one.wav"});
        if (before != std::string("stopped")) play({"/m/one.wav"});
        if (before == std::string("paused")) machine.loop.enter([this] { PauseFile(player); });
        hand({"/m/notes.txt", "/m/other.wav", "/m/last.wav"});
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(open(), "/m/other.wav");
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_EQ(player.gFileCount, 2);
        EXPECT_EQ(label(kTotalLabel), "2");
        EXPECT_TRUE(sounds());
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

/// CMD-29
TEST_F(Opened, NoneThatCanBeTakenLeavesEverythingAsItIs) {
    play({"/m/one.wav"});
    hand({kGone, "/m/notes.txt"});
    hand({});
    EXPECT_EQ(open(), "/m/one.wav");
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(label(kTitleLabel), "one");
}

/// CMD-29
TEST_F(Opened, WhileABoxIsUpTheyWaitAndMakeItsAnswerVoid) {
    for (const Answer answer : {Answer::Abort, Answer::Retry, Answer::Ignore}) {
        machine.dialogs.boxes.clear();
        machine.dialogs.answers = {answer};
        during([this] { panel().OLEDragDrop.raise({true, {"/m/other.wav", "/m/last.wav"}, true}); });
        play({kGone, "/m/two.wav"});
        machine.advance(1000);
        EXPECT_EQ(boxes(), 1U);
        EXPECT_EQ(open(), "/m/other.wav");
        EXPECT_EQ(player.gFileIndex, 0);
        machine.loop.enter([this] { CloseFile(player, false); });
    }
}

}  // namespace
}  // namespace corvane
