// SPDX-License-Identifier: GPL-3.0-or-later
// What is shown, kept and cleared when a file is opened, and when it cannot be.
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Opening : public PlayerFixture {
protected:
    Opening() {
        for (const char* path : {"/m/one.wav", "/m/two.wav"}) machine.addSound(path, 60000);
    }
};

/// DISP-11: The file's number is the index and 1 in three digits
/// OPEN-17: Label 4 is the entry's number in three digits: 001, 256
TEST_F(Opening, TheEntryNumberHasThreeDigits) {
    setUpPanel();
    setList(std::vector<std::string>(kMaxFiles, "/m/one.wav"));
    for (const auto& [index, number] : {std::pair<std::int16_t, const char*>{0, "001"}, {98, "099"}, {255, "256"}}) {
        player.gFileIndex = index;
        act([this] { PlayFile(player); });
        EXPECT_EQ(label(kNumberLabel), number);
        act([this] { CloseFile(player, false); });
    }
}

/// OPEN-33
TEST_F(Opening, ACdTracksCustomStartIsNotUsedWhileCustomPlayIsOff) {
    machine.addDisc("/cd", {100});
    setUpPanel();
    setList({"/cd/Track01.cda"});
    player.gStartPosition[0] = (30 << 16) + 1;
    act([this] { PlayFile(player); });
    EXPECT_EQ(machine.log.count("mci.From 1"), 1);
    machine.advance(1000);
    EXPECT_EQ(label(kTimeLabel), "00:01");
}

/// The states that a missing file's box finds and leaves.
/// OPEN-10: Behind the box nothing else of the call is done: play is disabled, pause enabled, the kind that of the file
///     before
TEST_F(Opening, AMissingFileLeavesTheKindOfTheFileBeforeAndThePlayingButtons) {
    setUpPanel();
    setList({"/m/one.wav", "/m/two.wav"});
    act([this] { PlayFile(player); });
    machine.files.remove("/m/one.wav");
    machine.dialogs.answers = {Answer::Ignore};
    machine.dialogs.whileUp = [this] {
        EXPECT_EQ(player.gMediaKind, mkMciFile);
        EXPECT_TRUE(player.gPlaying);
        EXPECT_FALSE(button(kPlay).Enabled);
        EXPECT_TRUE(button(kPause).Enabled);
        EXPECT_FALSE(button(kEditor).Enabled);
    };
    act([this] { PrevFile(player); });
    machine.advance(machine.windows.doubleClickMs);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/m/one.wav Can't open!!");
    EXPECT_EQ(label(kNumberLabel), "002") << "Ignore is next, as while playing";
    EXPECT_EQ(state(), "playing");
}

/// OPEN-11: An answer belongs to one opening of one list: what came meanwhile makes it void, and the panel never says
///     "playing" or "paused" without an open file
TEST_F(Opening, AnAnswerIsVoidWhenTheListWasStoppedOrMovedMeanwhile) {
    for (const Answer answer : {Answer::Ignore, Answer::Retry}) {
        for (const bool stopped : {true, false}) {
            SCOPED_TRACE(stopped);
            if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
            setList({"/m/gone.wav", "/m/one.wav", "/m/two.wav"});
            machine.dialogs.answers = {answer};
            machine.loop.enter([&] {
                PlayFile(player);
                if (stopped) {
                    CloseFile(player, false);
                } else {
                    NextFile(player);
                }
            });
            machine.settle();
            machine.advance(1000);
            EXPECT_EQ(state(), stopped ? "stopped" : "playing");
            EXPECT_EQ(player.gFileIndex, stopped ? 0 : 1);
            EXPECT_FALSE(player.gBackPending);
            act([this] { CloseFile(player, false); });
        }
    }
}

/// Takes note of each change of a control's visibility.
struct VisibleWatch : ControlObserver {
    std::vector<bool> seen;
    void propertyChanged(Control& control, PropertyId property) override {
        if (property == PropertyId::Visible) seen.push_back(control.Visible);
    }
};

/// PIC-01: The picture is decoded and its box hidden while it is prepared
TEST_F(Opening, APictureIsHiddenWhileItIsPrepared) {
    machine.addPicture("/m/a.bmp", 30, 20);
    machine.addPicture("/m/b.bmp", 60, 20);
    player.gImageHide = false;
    setUpPanel();
    setList({"/m/a.bmp", "/m/b.bmp"});
    act([this] { PlayFile(player); });
    VisibleWatch watch;
    imageWindow()->pctImage.addObserver(&watch);
    act([this] { NextFile(player); });
    imageWindow()->pctImage.removeObserver(&watch);
    EXPECT_EQ(watch.seen, (std::vector<bool>{false, true}));
}

/// SEQ-03, MOVE-36
TEST_F(Opening, AKeptPictureGoesWithTheFileBehindThePicture) {
    machine.addPicture("/m/a.bmp", 30, 20);
    player.gImageHide = false;
    setUpPanel();
    setList({"/m/a.bmp", "/m/one.wav", "/m/two.wav"});
    act([this] { PlayFile(player); });
    act([this] { NextFile(player); });
    ASSERT_NE(imageWindow(), nullptr) << "kept while the first sound plays";
    EXPECT_TRUE(imageWindow()->Visible);
    act([this] { NextFile(player); });
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(state(), "playing");
}

/// MOVE-12
TEST_F(Opening, NextBehindTheLastEntryWhileStoppedTakesAKeptPictureDown) {
    machine.addPicture("/m/a.bmp", 30, 20);
    setUpPanel();
    setList({"/m/a.bmp"});
    act([this] { PlayFile(player); });
    act([this] { CloseFile(player, true); });
    ASSERT_NE(imageWindow(), nullptr);
    act([this] { NextFile(player); });
    EXPECT_EQ(imageWindow(), nullptr);
    EXPECT_EQ(player.gFileIndex, 0);
}

/// OPEN-45: Movie: its window shows unless it fills the screen, and it runs
TEST_F(Opening, AMovieThatIsResumedComesBack) {
    machine.addMovie("/m/clip.avi", 40, 320, 240);
    setUpPanel();
    setList({"/m/clip.avi"});
    act([this] { PlayFile(player); });
    machine.advance(player.gDelayTime);
    act([this] { PauseFile(player); });
    movieWindow()->Hide();
    act([this] { PlayFile(player); });
    EXPECT_TRUE(movieWindow()->Visible);
}

/// OPEN-36
TEST_F(Opening, AMovieWindowThatDoesNotShowIsUsedAgain) {
    machine.addMovie("/m/clip.avi", 40, 320, 240);
    setUpPanel();
    setList({"/m/clip.avi"});
    act([this] { PlayFile(player); });
    ASSERT_FALSE(movieWindow()->Visible) << "it waits the delay";
    machine.clearCalls();
    act([this] { PlayFile(player); });
    EXPECT_EQ(machine.log.count("media.makeMovieControl"), 0);
    machine.advance(player.gDelayTime);
    ASSERT_TRUE(movieWindow()->Visible);
    machine.clearCalls();
    act([this] { PlayFile(player); });
    EXPECT_EQ(machine.log.count("media.makeMovieControl"), 1);
    EXPECT_EQ(machine.media.liveControls(), 1);
}

/// OPEN-38: At zoom 5 the window size is 0 and the full screen is on; else the window size is the zoom
TEST_F(Opening, AtZoom5TheMovieHasItsOwnSizeAndTheFullScreen) {
    machine.addMovie("/m/clip.avi", 40, 320, 240);
    for (const std::int16_t zoom : std::initializer_list<std::int16_t>{5, 4}) {
        player.gMovieZoom = zoom;
        if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
        setList({"/m/clip.avi"});
        machine.clearCalls();
        act([this] { PlayFile(player); });
        EXPECT_EQ(machine.log.count("movie.MovieWindowSize 0"), zoom == 5 ? 1 : 0);
        EXPECT_EQ(machine.log.count("movie.MovieWindowSize 4"), zoom == 4 ? 1 : 0);
        EXPECT_EQ(machine.log.count("movie.FullScreenMode on"), zoom == 5 ? 1 : 0);
        act([this] { CloseFile(player, false); });
    }
}

/// MOVIE-34, IMG-19
TEST_F(Opening, MediaWindowsStayOnTopInWindowMode2Alone) {
    machine.addPicture("/m/a.bmp", 30, 20);
    machine.addMovie("/m/clip.avi", 40, 320, 240);
    for (const std::int16_t mode : std::initializer_list<std::int16_t>{0, 1, 2}) {
        player.gWindowPos = mode;
        if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
        for (const char* path : {"/m/a.bmp", "/m/clip.avi"}) {
            SCOPED_TRACE(std::to_string(mode) + " " + path);
            setList({path});
            machine.clearCalls();
            act([this] { PlayFile(player); });
            EXPECT_EQ(machine.log.count("windows.SetWindowPos frmImageWindow -1 93") +
                          machine.log.count("windows.SetWindowPos frmMovieWindow -1 93"),
                      mode == 2 ? 1 : 0);
            act([this] { CloseFile(player, false); });
        }
    }
}

// --- A list replaced under the file that plays -----------------------------------------------------------------------

class Replaced : public Opening {
protected:
    Replaced() {
        machine.addSound("/m/tune.mid", 60000);
        machine.addMovie("/m/clip.avi", 40, 320, 240);
        machine.addPicture("/m/a.bmp", 30, 20);
        player.gInterval = 60;
        setUpPanel();
    }
    /// Plays a file, drops another in its place and presses previous, which opens that one.
    void playThenOpen(const char* first, const char* second) {
        setList({first});
        act([this] { PlayFile(player); });
        machine.advance(1000);
        act([&] { takeFiles(player, {true, {second}}); });
        machine.clearCalls();
        act([this] { PrevFile(player); });
        machine.advance(machine.windows.doubleClickMs);
        EXPECT_EQ(state(), "playing");
        EXPECT_EQ(player.openedPath, second);
    }
    void close() {
        act([this] { CloseFile(player, false); });
        EXPECT_EQ(machine.media.liveControls(), 0);
    }
};

/// OPEN-49: A list replaced under the file that plays: the window of another kind goes before the new one opens
TEST_F(Replaced, TheWindowOfAnotherKindGoesBeforeTheNewOneOpens) {
    for (const char* first : {"/m/one.wav", "/m/clip.avi", "/m/a.bmp"}) {
        for (const char* second : {"/m/two.wav", "/m/clip.avi", "/m/a.bmp"}) {
            SCOPED_TRACE(std::string(first) + " " + second);
            playThenOpen(first, second);
            const bool sound = player.media.make(second)->type().kind == mkMciFile;
            EXPECT_EQ(mciWindow() != nullptr, sound);
            EXPECT_EQ(movieWindow() != nullptr, player.media.make(second)->type().kind == mkMovie);
            EXPECT_EQ(imageWindow() != nullptr, player.media.make(second)->type().kind == mkImage);
            close();
        }
    }
}

/// KIND-19
TEST_F(Replaced, ADeviceTypeOfTheFileBeforeIsNotKept) {
    playThenOpen("/m/tune.mid", "/m/one.wav");
    const auto calls = mediaCalls();
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[0], "mci.Command Stop");
    EXPECT_EQ(calls[1], "mci.Command Close");
    EXPECT_EQ(mciWindow()->mmcMci->DeviceType(), "");
    EXPECT_EQ(machine.log.count("media.makeMciControl"), 1);
    close();
    playThenOpen("/m/one.wav", "/m/two.wav");
    EXPECT_EQ(machine.log.count("media.makeMciControl"), 0) << "a window that holds none is used again";
    close();
}

// --- Drops that bring nothing ----------------------------------------------------------------------------------------

/// DROP-10: So does a drop of files of which none is accepted
/// DROP-12: The time and its tool tip are emptied, and label 3 shows the plain count
/// DROP-13
TEST_F(Opening, ADropOfNoAcceptableFileEmptiesListAndDisplay) {
    setUpPanel();
    setList({"/m/one.wav", "/m/two.wav"});
    player.gFileIndex = 1;
    act([this] { PlayFile(player); });
    machine.advance(2000);
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].ToolTipText.get(), "Time");
    machine.files.add("/m/text.txt");
    act([this] { takeFiles(player, {true, {"/m/text.txt"}}); });
    EXPECT_EQ(player.gFileCount, 0);
    EXPECT_EQ(player.gFileIndex, 0);
    for (const int each : {kNumberLabel, kTitleLabel, kTimeLabel}) EXPECT_EQ(label(each), "");
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].ToolTipText.get(), "");
    EXPECT_EQ(label(kTotalLabel), "0");
    EXPECT_EQ(state(), "playing") << "what plays is not stopped";
}

/// DROP-15: The list is not written to a file
TEST_F(Opening, ADropIsNotSaved) {
    player.gIniFile = "/app/KADO.INI";
    player.gListFileStem = "/app/FILE";
    machine.files.addFolder("/app");
    setUpPanel();
    act([this] { takeFiles(player, {true, {"/m/one.wav"}}); });
    EXPECT_EQ(player.gFileCount, 1);
    for (const std::string& call : machine.calls("files")) EXPECT_NE(call.rfind("files.replace", 0), 0U) << call;
    EXPECT_FALSE(machine.files.has("/app/FILE00.INI"));
}

TEST_F(Opening, AListOfOneIsEnoughAndWithoutOneNothingHappens) {
    setUpPanel();
    for (const bool empty : {false, true}) {
        setList(empty ? std::vector<std::string>{} : std::vector<std::string>{"/m/one.wav"});
        panel().lblMainPanel[kTimeLabel].Caption = "00:10";
        mdlPublicFunction::CloseFile(player, false);
        EXPECT_EQ(label(kTimeLabel), empty ? "00:10" : "");
    }
}

/// SEQ-03
TEST_F(Opening, APictureKeptBehindAMovieGoesWithTheMovie) {
    machine.addPicture("/m/view.bmp", 100, 80);
    machine.addMovie("/m/clip.avi", 40, 320, 240);
    machine.addSound("/m/one.wav", 60000);
    player.gImageHide = false;
    setUpPanel();
    setList({"/m/view.bmp", "/m/clip.avi", "/m/one.wav"});
    mdlPublicFunction::PlayFile(player);
    mdlPublicFunction::NextFile(player);
    machine.settle();
    EXPECT_NE(imageWindow(), nullptr);
    mdlPublicFunction::NextFile(player);
    EXPECT_EQ(imageWindow(), nullptr);
}

}  // namespace
}  // namespace corvane
