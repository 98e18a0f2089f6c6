// SPDX-License-Identifier: GPL-3.0-or-later
// What goes on at the next start.
#include "storage/resume.h"

#include "engine/media_time.h"
#include "fake/player_fixture.h"
#include "startup/forms.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

constexpr const char* kFile = "/app/RESUME.INI";
constexpr std::int32_t kHourMs = 3'600'000;

/// One run of the program: what it stores can be given to the next.
struct OneRun {
    explicit OneRun(const std::string& stored = {}, const std::string& settings = {}) {
        registerAllForms(player);
        machine.addPicture("/app/PANELSET/DEFAULT.BMP", 1024, 400);
        machine.files.add("/app/PANELSET/DEFAULT.CSV",
                          "panel,0,2,3,0,0,400,120,1\nwindow,1,0,0,0,0,400,120,1\nslider,40,10,100,0,0,200,8,WHITE\n");
        machine.files.add("/app/KADO.INI", "[KADO]\r\n" + settings + "\r\n[CONVENIENCES]\r\nRESUME=ON\r\n");
        if (!stored.empty()) machine.files.add(kFile, stored);
        machine.addSound("/m/short.wav", 60000);
        machine.addSound("/m/long.wav", kHourMs);
        machine.addMovie("/m/film.avi", 3600, 320, 240);
        machine.addPicture("/m/view.bmp", 100, 80);
    }
    /// From the program's start to the panel that stands.
    void start() {
        act([this] { startProgram(player); });
        machine.advance(1000);
    }
    void act(const std::function<void()>& action) {
        machine.loop.enter(action);
        machine.settle();
    }
    void drop(const std::vector<std::string>& files) {
        act([&] { takeFiles(player, {true, files}); });
    }
    void play(int entry = 0, std::int64_t forMs = 0) {
        act([&] { playEntry(player, entry); });
        machine.advance(forMs);
    }
    void seek(double seconds) {
        act([&] { seekOpenFile(player, static_cast<std::int64_t>(seconds * 1e6)); });
    }
    /// Returns what is kept for the next run.
    std::string powerOff() {
        act([this] { mdlPublicFunction::powerOff(player); });
        machine.advance(1000);
        return machine.files.has(kFile) ? machine.files.bytes(kFile) : std::string();
    }
    double seconds() const { return static_cast<double>(openPositionUs(player)) / 1e6; }
    MainPanelControls& panel() { return *player.forms.find<MainPanelControls>(); }
    std::string label(int index) { return panel().lblMainPanel.at(static_cast<std::size_t>(index)).Caption; }
    std::string state() { return panel().isStopped() ? "stopped" : panel().isPaused() ? "paused" : "playing"; }

    FakeMachine machine;
    Ports ports = machine.ports();
    Player player{ports};
    Resume resume{player};
};

/// RESUME-01: What played comes back paused where it was, with its list
TEST(Resuming, WhatPlayedComesBackPausedWhereItWas) {
    for (const bool paused : {false, true}) {
        OneRun before;
        before.start();
        before.drop({"/m/view.bmp", "/m/short.wav", "/m/long.wav"});
        before.play(1, 20'000);
        if (paused) before.act([&] { PauseFile(before.player); });
        OneRun after(before.powerOff());
        after.start();
        EXPECT_EQ(after.state(), "paused");
        EXPECT_EQ(after.player.openedPath, "/m/short.wav");
        EXPECT_NEAR(after.seconds(), 20, 0.2);
        EXPECT_EQ(after.label(kNumberLabel), "002");
        EXPECT_EQ(after.label(kTitleLabel), "short");
        EXPECT_EQ(after.label(kTotalLabel), "3");
        after.act([&] { PlayFile(after.player); });
        after.machine.advance(5000);
        EXPECT_NEAR(after.seconds(), 25, 0.3);
    }
}

/// RESUME-01
TEST(Resuming, AMovieComesBackUnseenUntilItPlaysOn) {
    OneRun before;
    before.start();
    before.drop({"/m/film.avi"});
    before.play(0, 30'500);
    OneRun after(before.powerOff());
    after.start();
    after.machine.advance(2000);
    EXPECT_EQ(after.state(), "paused");
    EXPECT_NEAR(after.seconds(), 30, 0.5);
    after.act([&] { PlayFile(after.player); });
    after.machine.advance(2000);
    ASSERT_NE(after.player.forms.find<MovieWindowControls>(), nullptr);
    EXPECT_TRUE(after.player.forms.find<MovieWindowControls>()->Visible);
    EXPECT_NEAR(after.seconds(), 32, 0.8);
}

/// RESUME-02: What was stopped comes back stopped, at the same entry
TEST(Resuming, WhatWasStoppedComesBackStopped) {
    OneRun before;
    before.start();
    before.drop({"/m/short.wav", "/m/long.wav"});
    before.play(1, 3000);
    before.act([&] { CloseFile(before.player, false); });
    OneRun after(before.powerOff());
    after.start();
    EXPECT_EQ(after.state(), "stopped");
    EXPECT_EQ(after.player.gFileIndex, 1);
    EXPECT_EQ(after.label(kNumberLabel), "002");
}

/// RESUME-03: With Auto Start it plays on
TEST(Resuming, WithAutoStartItPlaysOn) {
    OneRun before;
    before.start();
    before.drop({"/m/short.wav"});
    before.play(0, 20'000);
    OneRun after(before.powerOff(), "AUTOPLAY=ON\r\n");
    after.start();
    EXPECT_EQ(after.state(), "playing");
    EXPECT_GT(after.seconds(), 19.5);
}

/// RESUME-04: A list that is given to the start wins, and what was kept is written over only at the end
TEST(Resuming, AGivenListWins) {
    OneRun before;
    before.start();
    before.drop({"/m/short.wav"});
    before.play(0, 20'000);
    const std::string kept = before.powerOff();
    OneRun opened(kept);
    opened.machine.process.opened = {"/m/view.bmp"};
    opened.start();
    EXPECT_EQ(opened.player.openedPath, "/m/view.bmp");
    EXPECT_EQ(opened.machine.files.bytes(kFile), kept);
    OneRun named(kept);
    named.machine.process.arguments = "/m/long.wav";
    named.start();
    EXPECT_EQ(named.player.gFilePath[0], "/m/long.wav");
    EXPECT_EQ(named.state(), "stopped");
    OneRun useless(kept);
    useless.machine.process.arguments = "/m/nothing.wav";
    useless.start();
    EXPECT_EQ(useless.player.gFileCount, 0);
}

/// RESUME-05: The list that was kept comes before the stored one; without one the stored list is taken
TEST(Resuming, TheKeptListComesBeforeTheStoredOne) {
    const std::string stored = "[FILELIST]\r\nLIST000=view.bmp|/m/view.bmp\r\n";
    OneRun before;
    before.start();
    before.drop({"/m/short.wav"});
    const std::string kept = before.powerOff();
    OneRun after(kept);
    after.machine.files.add("/app/FILE00.INI", stored);
    after.start();
    EXPECT_EQ(after.player.gFilePath[0], "/m/short.wav");
    OneRun fresh;
    fresh.machine.files.add("/app/FILE00.INI", stored);
    fresh.start();
    EXPECT_EQ(fresh.player.gFilePath[0], "/m/view.bmp");
}

/// RESUME-16: A run without a list leaves the list of the run before
TEST(Resuming, ARunWithoutAListLeavesTheOneBefore) {
    OneRun before;
    before.start();
    before.drop({"/m/short.wav", "/m/long.wav"});
    before.play(1, 3000);
    const std::string kept = before.powerOff();
    OneRun between(kept);
    between.machine.process.opened = {"/m/gone.wav"};
    between.start();
    EXPECT_EQ(between.player.gFileCount, 0);
    EXPECT_EQ(between.powerOff(), kept);
}

/// RESUME-17: Without long lists, what was kept behind the 256th entry stays behind them, also where those were
///     shuffled; another list takes the place of all
TEST(Resuming, WithoutLongListsTheRestIsKept) {
    ResumeText kept;
    for (int i = 0; i < 300; ++i) kept.list.push_back({std::to_string(i), "/m/" + std::to_string(i) + ".wav"});
    const auto restOf = [](const std::string& text) {
        ResumeText read = readResumeText(text);
        read.list.erase(read.list.begin(), read.list.begin() + std::min<std::ptrdiff_t>(256, std::ssize(read.list)));
        return read.list;
    };
    const std::string text = resumeText(kept);
    ASSERT_EQ(restOf(text).size(), 44U);
    for (const bool shuffled : {false, true}) {
        OneRun plain(text);
        for (const auto& each : kept.list) plain.machine.addSound(each.path, 60000);
        plain.start();
        ASSERT_EQ(plain.player.gFileCount, 256);
        if (shuffled) plain.act([&] { ShuffleList(plain.player); });
        plain.play(3, 1000);
        const std::string after = plain.powerOff();
        EXPECT_EQ(restOf(after), restOf(text)) << shuffled;
        EXPECT_EQ(readResumeText(after).list == kept.list, !shuffled);
        EXPECT_EQ(readResumeText(after).entry, 3);
    }
    OneRun other(text);
    for (const auto& each : kept.list) other.machine.addSound(each.path, 60000);
    other.start();
    other.drop({"/m/short.wav"});
    EXPECT_EQ(readResumeText(other.powerOff()).list.size(), 1U);
}

/// RESUME-15: What plays on from a list that was replaced is not kept as an entry of the new one
TEST(Resuming, WhatPlaysOnFromAListThatWasReplacedIsNoEntryOfTheNewOne) {
    OneRun before;
    before.start();
    before.drop({"/m/short.wav"});
    before.play(0, 3000);
    before.drop({"/m/long.wav", "/m/short.wav"});
    ASSERT_TRUE(before.player.media.isOpen());
    OneRun after(before.powerOff());
    after.start();
    EXPECT_EQ(after.state(), "stopped");
    EXPECT_EQ(after.player.gFileCount, 2);
}

/// RESUME-06: A file that is gone is asked nothing about: the player stands stopped at it
TEST(Resuming, AFileThatIsGoneAsksNothing) {
    OneRun before;
    before.start();
    before.drop({"/m/view.bmp", "/m/short.wav"});
    before.play(1, 20'000);
    OneRun after(before.powerOff());
    after.machine.files.remove("/m/short.wav");
    after.start();
    EXPECT_EQ(after.state(), "stopped");
    EXPECT_EQ(after.label(kNumberLabel), "002");
    EXPECT_TRUE(after.machine.dialogs.boxes.empty());
}

/// RESUME-07: Without the convenience nothing is kept, read or written
TEST(Resuming, WithoutItNothingIsKept) {
    OneRun before;
    before.start();
    before.drop({"/m/short.wav"});
    before.play(0, 20'000);
    const std::string kept = before.powerOff();
    OneRun plain(kept);
    plain.machine.files.add("/app/KADO.INI", "[KADO]\r\n");
    plain.start();
    EXPECT_EQ(plain.player.gFileCount, 0);
    plain.drop({"/m/view.bmp"});
    plain.play(0, 1000);
    EXPECT_EQ(plain.powerOff(), kept);
    OneRun fresh;
    fresh.machine.files.add("/app/KADO.INI", "[KADO]\r\n");
    fresh.start();
    fresh.drop({"/m/short.wav"});
    EXPECT_EQ(fresh.powerOff(), "");
}

/// RESUME-08: A sound or movie of ten minutes and more goes on where it was left, also in the next run
TEST(Resuming, LongFilesGoOnWhereTheyWereLeft) {
    for (const char* path : {"/m/long.wav", "/m/film.avi"}) {
        OneRun before;
        before.start();
        before.drop({path, "/m/short.wav"});
        before.play(0, 2000);
        before.seek(1200);
        before.machine.advance(5000);
        before.play(1, 2000);
        before.play(0, 3000);
        EXPECT_NEAR(before.seconds(), 1207.5, 1.0) << path;
        before.act([&] { CloseFile(before.player, false); });
        OneRun after(before.powerOff());
        after.start();
        after.play(0, 2000);
        EXPECT_GT(after.seconds(), 1206) << path;
        EXPECT_LT(after.seconds(), 1212) << path;
    }
}

/// RESUME-09: A short one begins at its beginning, as does a long one that was left at its ends, and a custom start
///     counts more
TEST(Resuming, OthersBeginAtTheirBeginning) {
    OneRun run;
    run.start();
    run.drop({"/m/short.wav", "/m/long.wav"});
    run.play(0, 30'000);
    run.play(0, 100);
    EXPECT_LT(run.seconds(), 1);
    run.play(1, 100);
    run.seek(3590);
    run.machine.advance(200);
    run.play(0, 100);
    run.play(1, 200);
    EXPECT_LT(run.seconds(), 1) << "left at its end";
    run.seek(5);
    run.machine.advance(200);
    run.play(0, 100);
    run.play(1, 200);
    EXPECT_LT(run.seconds(), 1) << "left at its beginning";
    run.seek(900);
    run.machine.advance(200);
    run.play(0, 100);
    run.player.gCustomMode = mdlDefinePublic::kCustomPlay;
    run.player.gStartPosition[1] = 60'000;
    run.play(1, 1000);
    EXPECT_NEAR(run.seconds(), 61, 0.5);
}

/// RESUME-09
TEST(Resuming, AFileThatWasPlayedToItsEndBeginsAgain) {
    OneRun run;
    run.start();
    run.drop({"/m/long.wav", "/m/short.wav"});
    run.play(0, 100);
    run.seek(3000);
    run.machine.advance(601'000);
    EXPECT_EQ(run.player.gFileIndex, 1);
    run.play(0, 300);
    EXPECT_LT(run.seconds(), 1);
}

/// RESUME-10: Of no more than 200 files the place is kept; those left longest ago go
TEST(Resuming, PlacesAreBounded) {
    OneRun run;
    std::vector<std::string> files;
    for (int i = 0; i < 205; ++i) {
        files.push_back("/m/part" + std::to_string(i) + ".wav");
        run.machine.addSound(files.back(), kHourMs);
    }
    run.start();
    run.drop(files);
    for (int i = 0; i < 205; ++i) {
        run.play(i, 100);
        run.seek(100 + i);
    }
    const ResumeText kept = readResumeText(run.powerOff());
    EXPECT_EQ(run.player.remembered.places.size(), kMostPlaces);
    ASSERT_EQ(kept.places.size(), kMostPlaces);
    EXPECT_EQ(kept.places.front().path, files[204]);
    EXPECT_EQ(kept.places.back().path, files[5]);
}

/// RESUME-11: A folder that cannot be written keeps nothing, without a box; what cannot be read is not written over
TEST(Resuming, WhatCannotBeWrittenOrReadIsLeftAlone) {
    OneRun readOnly;
    readOnly.machine.files.failReplace = true;
    readOnly.start();
    readOnly.drop({"/m/short.wav"});
    readOnly.play(0, 100);
    EXPECT_EQ(readOnly.powerOff(), "");
    EXPECT_TRUE(readOnly.machine.dialogs.boxes.empty());
    EXPECT_TRUE(readOnly.machine.process.ending());
    OneRun tooLong(std::string(kMostResumeBytes + 1, ' '));
    tooLong.start();
    tooLong.drop({"/m/short.wav"});
    EXPECT_EQ(tooLong.powerOff().size(), kMostResumeBytes + 1);
}

/// RESUME-12: What is written reads back, whatever names hold
TEST(ResumeTexts, WhatIsWrittenReadsBack) {
    ResumeText kept;
    kept.list = {{"a|b=c", "/m/x|y=z;.wav"},
                 {" blanks ", "/m/ \"quoted\" .wav"},
                 {"[LIST]", "/m/[PLACES].wav"},
                 {"", "/m/\xFF\xFE.wav"},
                 {std::string(900, 'x'), "/m/" + std::string(4000, 'y')}};
    kept.entry = 3;
    kept.openAtUs = 1'234'567'000;
    kept.places = {{"/m/a|b.wav", 600'000'000}, {"/m/ c ", 5000}};
    EXPECT_EQ(readResumeText(resumeText(kept)), kept);
    kept.openAtUs.reset();
    kept.places.clear();
    EXPECT_EQ(readResumeText(resumeText(kept)), kept);
    EXPECT_EQ(readResumeText(resumeText({})), ResumeText());
}

/// RESUME-13: A text of any other form reads as far as it makes sense
TEST(ResumeTexts, OddOnesReadAsFarAsTheyMakeSense) {
    const std::string list = "[LIST]\nPATH0=/m/a.wav\nTITLE0=a\nPATH1=\nPATH2=/m/c.wav\n";
    EXPECT_EQ(readResumeText(list).list.size(), 1U);
    for (const char* entry : {"1", "-1", "99999999999", "x", ""}) {
        const ResumeText kept = readResumeText(list + "[RESUME]\nENTRY=" + entry + "\nOPENAT=5\n");
        EXPECT_EQ(kept.entry, 0) << entry;
    }
    EXPECT_EQ(readResumeText(list + "[RESUME]\nENTRY=0\nOPENAT=-5\n").openAtUs, std::nullopt);
    EXPECT_TRUE(readResumeText("[PLACES]\n0=x|/m/a\n1=|\n2=7|\n3=7\n4=7|/m/b\n").places.empty());
    EXPECT_TRUE(readResumeText(std::string("\0\xFF[[[=\n", 7)).list.empty());
}

/// RESUME-14: A place beyond a file that has become shorter is held at its end
TEST(Resuming, APlaceBeyondAShorterFileIsHeld) {
    OneRun after("[RESUME]\r\nENTRY=0\r\nOPENAT=99000\r\n[LIST]\r\nTITLE0=short\r\nPATH0=/m/short.wav\r\n");
    after.start();
    EXPECT_EQ(after.state(), "paused");
    EXPECT_NEAR(after.seconds(), 60, 0.1);
}

}  // namespace
}  // namespace corvane
