// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "unit/startup/startup_fixture.h"

namespace corvane {
namespace {

constexpr int kStepMs = 10;
constexpr float kScreenWidth = 1024 * 15;
constexpr float kScreenHeight = 768 * 15;

class Start : public StartupFixture {
protected:
    frmStartup* window() { return static_cast<frmStartup*>(player.forms.find(FormId::Startup)); }
    MainPanelControls* panel() { return player.forms.find<MainPanelControls>(); }
    void step() { machine.advance(kStepMs); }
    void open() {
        ASSERT_TRUE(startProgram(player));
        machine.advance(15 * kStepMs);
        ASSERT_NE(panel(), nullptr);
    }
    void closePanelAt(float left, float top) {
        panel()->Move(left, top);
        machine.loop.enter([&] { player.forms.unload(FormId::MainPanel); });
        machine.settle();
    }
    int refreshes() { return machine.log.count("windows.refresh frmStartup"); }
};

/// START-01: A second instance on the same folder ends at once, without a window or a box
TEST_F(Start, ASecondInstanceEndsSilently) {
    machine.process.isOnlyInstance = false;
    EXPECT_FALSE(startProgram(player));
    EXPECT_TRUE(machine.process.ending());
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_TRUE(machine.windows.attached().empty());
}

/// START-04: Platform 1 and no other is the old family; it allows the volume device setting alone
TEST_F(Start, OnlyPlatform1IsTheOldFamily) {
    machine.process.platform = 1;
    frmStartup::Form_Initialize(player);
    EXPECT_TRUE(player.gIsWin9x);
    machine.process.platform = 2;
    frmStartup::Form_Initialize(player);
    EXPECT_FALSE(player.gIsWin9x);
}

/// SET-01: The file is KADO.INI in the program's folder, and every read and write names it by its full path
/// START-05: Settings file, list files and PANELSET lie in the program's folder
/// LIST-01
TEST_F(Start, PathsLieInTheProgramFolder) {
    frmStartup::Form_Initialize(player);
    EXPECT_EQ(player.gIniFile, "/app/KADO.INI");
    EXPECT_EQ(player.gListFileStem, "/app/FILE");
    EXPECT_EQ(player.gBitmapPath, "/app/PANELSET/DEFAULT.BMP");
    EXPECT_EQ(player.gTextPath, "/app/PANELSET/DEFAULT.CSV");
}

TEST_F(Start, TheMenuIsThereBeforeAnyOtherForm) {
    frmStartup::Form_Initialize(player);
    for (const FormId id : {FormId::Startup, FormId::MainPanel, FormId::MciWindow}) {
        EXPECT_EQ(player.forms.find(id), nullptr);
    }
    EXPECT_NE(player.forms.find(FormId::MenuWindow), nullptr);
}

TEST_F(Start, ItsTimersBearOneName) {
    ASSERT_TRUE(startProgram(player));
    for (const Timer& timer : window()->tmrOpenClose) EXPECT_EQ(timer.name(), "tmrOpenClose");
}

/// SET-02: In a folder that is a root, one separator stands between it and the name
/// START-06: In a folder that is a root, paths have a single separator
TEST_F(Start, ARootFolderGivesASingleSeparator) {
    machine.files.slash = '\\';
    machine.process.folder = "C:\\";
    machine.files.add("C:\\KADO.INI", "[KADO]\nBITMAPFILE=A.BMP\n");
    machine.files.add("C:\\PANELSET\\A.BMP");
    machine.files.add("C:\\PANELSET\\DEFAULT.CSV");
    EXPECT_TRUE(frmStartup::Form_Initialize(player));
    EXPECT_EQ(player.gIniFile, "C:\\KADO.INI");
    EXPECT_EQ(player.gListFileStem, "C:\\FILE");
    EXPECT_EQ(player.gBitmapPath, "C:\\PANELSET\\A.BMP");
    EXPECT_EQ(player.gTextPath, "C:\\PANELSET\\DEFAULT.CSV");
}

/// START-07: The skin's two names come from the settings, with their defaults
/// SET-09, SET-10, SET-38, START-14, DIAL-23
TEST_F(Start, TheSkinOfTheSettingsIsTaken) {
    settings("BITMAPFILE=blue.bmp\nTEXTFILE=blue.csv\n");
    machine.addPicture("/app/PANELSET/blue.bmp", 10, 10);
    machine.files.add("/app/PANELSET/blue.csv");
    EXPECT_TRUE(startProgram(player));
    EXPECT_EQ(machine.calls("pictures"), std::vector<std::string>{"pictures.decode /app/PANELSET/blue.bmp"});
}

/// SET-38: The skin's names are read before everything else, because its files are checked first
/// START-09: A missing skin bitmap gives a stop box titled Corvane, the full path followed by " Not found!!", and the
///     program ends
/// START-11: The bitmap is looked for first; one box is shown, not two
/// START-13: Nothing has been shown or written when a skin file is missing
TEST_F(Start, AMissingBitmapIsReportedAndEndsTheProgram) {
    machine.files.remove("/app/PANELSET/DEFAULT.BMP");
    machine.files.remove("/app/PANELSET/DEFAULT.CSV");
    EXPECT_FALSE(startProgram(player));
    const FakeDialogs::Box box{"/app/PANELSET/DEFAULT.BMP Not found!!", "Corvane", Buttons::Ok, Icon::Stop};
    EXPECT_EQ(machine.dialogs.boxes, std::vector<FakeDialogs::Box>{box});
    EXPECT_TRUE(machine.process.ending());
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(machine.calls("files").empty());
}

/// START-10: A missing skin text gives the same box with its own path
TEST_F(Start, AMissingTextFileIsReportedAndEndsTheProgram) {
    settings("TEXTFILE=none.csv\n");
    EXPECT_FALSE(startProgram(player));
    const FakeDialogs::Box box{"/app/PANELSET/none.csv Not found!!", "Corvane", Buttons::Ok, Icon::Stop};
    EXPECT_EQ(machine.dialogs.boxes, std::vector<FakeDialogs::Box>{box});
    EXPECT_TRUE(machine.process.ending());
}

/// COM-29: The lines of a box are its own: a name in it stays on its line, whatever it holds
TEST_F(Start, AFolderMakesNoLineOfTheBox) {
    machine.process.folder = "/app\nThe disk is full.";
    EXPECT_FALSE(startProgram(player));
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/app The disk is full./PANELSET/DEFAULT.BMP Not found!!");
}

/// START-12: Hidden skin files are found
TEST_F(Start, HiddenSkinFilesAreFound) {
    machine.files.addHidden("/app/PANELSET/DEFAULT.BMP");
    machine.files.addHidden("/app/PANELSET/DEFAULT.CSV");
    EXPECT_TRUE(frmStartup::Form_Initialize(player));
}

/// START-08: The menu's window is loaded and not shown
/// START-14: The bitmap is decoded once, whole, into the clip control that the menu's window holds
TEST_F(Start, TheMenuWindowIsLoadedUnseenAndHoldsTheBitmap) {
    startProgram(player);
    auto* menu = player.forms.find<MenuWindowControls>();
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->Visible);
    EXPECT_EQ(menu->pcpMainPanel.Picture.get().width(), 400);
}

/// SET-06: The end of a run writes nothing: the panel's place is not kept
/// SET-05
TEST_F(Start, NothingIsWrittenByAWholeRun) {
    open();
    closePanelAt(0, 0);
    machine.advance(1000);
    EXPECT_TRUE(machine.process.ending());
    EXPECT_TRUE(machine.calls("files").empty());
}

/// START-15: The window first stands where the panel was last noted: the screen's corner at the first start
/// START-19: At the first start nothing is open: the media kind is "none"
/// START-20: At the first start window and picture are one twip wide and high, and the step is 1
/// START-21: The opening's timer runs from then on, the closing's does not
TEST_F(Start, TheOpeningBeginsInTheCornerAtOneTwip) {
    player.gMediaKind = mdlDefinePublic::mkMovie;
    ASSERT_TRUE(startProgram(player));
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(window()->Visible);
    EXPECT_EQ(window()->style(), FormStyle::Painted);
    EXPECT_EQ(window()->Caption.get(), "Corvane");
    EXPECT_EQ(window()->Left, 0);
    EXPECT_EQ(window()->Top, 0);
    EXPECT_EQ(window()->Width, 1);
    EXPECT_EQ(window()->Height, 1);
    EXPECT_EQ(window()->imgDummyPanel.Width, 1);
    EXPECT_EQ(player.gAnimationStep, 1);
    EXPECT_EQ(player.gMediaKind, mdlDefinePublic::mkNone);
    EXPECT_TRUE(window()->tmrOpenClose[0].Enabled);
    EXPECT_FALSE(window()->tmrOpenClose[1].Enabled);
}

/// START-24: At step k picture and window are k times the panel's pixels in twips wide and high
/// START-25: At step k the window stands at k × 3 / 50 of the screen that it leaves free, in floating point
/// START-27: The opening takes fifteen ticks and no sixteenth
/// START-28: Behind the last step the panel is shown and the start window goes
/// START-29: The panel stands where the opening ended
TEST_F(Start, TheOpeningGrowsAndMovesInFifteenSteps) {
    ASSERT_TRUE(startProgram(player));
    for (int k = 1; k < 15; ++k) {
        step();
        ASSERT_NE(window(), nullptr) << k;
        const auto width = static_cast<float>(k * 400);
        const auto height = static_cast<float>(k * 100);
        EXPECT_EQ(window()->Width, width);
        EXPECT_EQ(window()->Height, height);
        EXPECT_EQ(window()->imgDummyPanel.Width, width);
        EXPECT_EQ(window()->imgDummyPanel.Height, height);
        EXPECT_FLOAT_EQ(window()->Left, (kScreenWidth - width) * static_cast<float>(k) * 3 / 50);
        EXPECT_FLOAT_EQ(window()->Top, (kScreenHeight - height) * static_cast<float>(k) * 3 / 50);
        EXPECT_TRUE(window()->imgDummyPanel.Visible);
        EXPECT_EQ(player.gAnimationStep, k + 1);
        EXPECT_EQ(refreshes(), k) << "each step is painted at once";
        EXPECT_EQ(panel(), nullptr);
    }
    step();
    EXPECT_EQ(window(), nullptr);
    ASSERT_NE(panel(), nullptr);
    EXPECT_TRUE(panel()->Visible);
    EXPECT_EQ(refreshes(), 15);
    EXPECT_FLOAT_EQ(panel()->Left, (kScreenWidth - 6000) * 0.9F) << "where the opening ended";
    EXPECT_FLOAT_EQ(panel()->Top, (kScreenHeight - 1500) * 0.9F);
}

/// Takes note of what a control's size was when it was hidden and shown.
struct ShownSizes : ControlObserver {
    std::vector<std::string> seen;
    void propertyChanged(Control& control, PropertyId property) override {
        if (property != PropertyId::Visible) return;
        seen.push_back((control.Visible ? "shown " : "hidden ") + std::to_string(std::lround(control.Width.get())));
    }
};

/// START-23: Each step hides the picture, sizes it and shows it again
/// START-36: Each step of the closing hides the picture, sizes it and shows it again
TEST_F(Start, EachStepHidesThePictureBeforeItGrowsAndShowsItAfterwards) {
    ASSERT_TRUE(startProgram(player));
    ShownSizes watch;
    window()->imgDummyPanel.addObserver(&watch);
    step();
    step();
    EXPECT_EQ(watch.seen, (std::vector<std::string>{"hidden 1", "shown 400", "hidden 400", "shown 800"}));
    machine.advance(13 * kStepMs);
    closePanelAt(0, 0);
    watch.seen.clear();
    window()->imgDummyPanel.addObserver(&watch);
    step();
    step();
    EXPECT_EQ(watch.seen, (std::vector<std::string>{"hidden 6000", "shown 6000", "hidden 6000", "shown 5600"}));
}

/// START-64: Where the desktop asks for less motion the panel comes with the first tick and goes with one
TEST_F(Start, WithLessMotionThePanelComesAndGoesAtOnce) {
    machine.windows.reducedMotion = true;
    ASSERT_TRUE(startProgram(player));
    step();
    EXPECT_EQ(window(), nullptr);
    ASSERT_NE(panel(), nullptr);
    EXPECT_TRUE(panel()->Visible);
    EXPECT_FLOAT_EQ(panel()->Left, (kScreenWidth - 6000) * 0.9F) << "where the opening would have ended";
    EXPECT_FLOAT_EQ(panel()->Top, (kScreenHeight - 1500) * 0.9F);
    closePanelAt(3000, 1500);
    step();
    EXPECT_TRUE(machine.process.ending());
    EXPECT_EQ(machine.log.count("process.end"), 1);
    EXPECT_FALSE(window()->Visible) << "nothing small is seen in the corner";
}

/// START-64
TEST_F(Start, LessMotionMayBecomeKnownWhileThePanelOpens) {
    ASSERT_TRUE(startProgram(player));
    machine.advance(4 * kStepMs);
    ASSERT_NE(window(), nullptr);
    machine.windows.reducedMotion = true;
    step();
    ASSERT_NE(panel(), nullptr);
    EXPECT_FLOAT_EQ(panel()->Left, (kScreenWidth - 6000) * 0.9F);
}

/// START-26: A window that is not in its normal state grows where it is
TEST_F(Start, AMinimisedWindowGrowsWhereItIs) {
    ASSERT_TRUE(startProgram(player));
    window()->WindowState = WindowState::Minimized;
    step();
    EXPECT_EQ(window()->Width, 400);
    EXPECT_EQ(window()->Left, 0);
}

/// START-16: The panel record gives the panel's size and the picture of the opening, at the record's own place
TEST_F(Start, TheDummyPanelShowsTheBackgroundOfThePanelRecord) {
    ASSERT_TRUE(startProgram(player));
    EXPECT_EQ(player.gPanelWidth, 400);
    EXPECT_EQ(player.gPanelHeight, 100);
    EXPECT_EQ(window()->imgDummyPanel.Left, 30);
    EXPECT_EQ(window()->imgDummyPanel.Top, 45);
    EXPECT_EQ(window()->imgDummyPanel.Picture.get().width(), 400);
    EXPECT_EQ(window()->imgDummyPanel.Picture.get().height(), 100);
}

/// START-18: At the first start settings and list are read before the animation begins
/// LIST-09
TEST_F(Start, SettingsAndListAreReadBeforeTheAnimation) {
    settings("DELAYTIME=7\nPAGENUM=1\nFILENUM=2\n");
    machine.files.add("/app/FILE12.INI", "[FILELIST]\nLIST000=a.mid|/m/a.mid\n");
    ASSERT_TRUE(startProgram(player));
    EXPECT_EQ(player.gDelayTime, 7);
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(player.gFilePath[0], "/m/a.mid");
}

/// START-22: Texts of the list that is read before the panel exists stand on the panel when it shows
/// LIST-21
TEST_F(Start, ThePanelShowsTheListThatWasReadBeforeIt) {
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.mid|/m/a.mid\nLIST001=b.mid|/m/b.mid\n");
    open();
    EXPECT_EQ(panel()->lblMainPanel[kNumberLabel].Caption.get(), "001");
    EXPECT_EQ(panel()->lblMainPanel[kTitleLabel].Caption.get(), "a");
    EXPECT_EQ(panel()->lblMainPanel[kTotalLabel].Caption.get(), "2");
}

/// START-31: Without auto play nothing plays until play is pressed
TEST_F(Start, WithoutAutoPlayNothingPlays) {
    machine.addSound("/m/a.wav", 3000);
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.wav|/m/a.wav\n");
    open();
    machine.advance(500);
    EXPECT_FALSE(player.gPlaying);
    EXPECT_TRUE(panel()->isStopped());
}

/// START-30: With auto play the list starts, once the events that wait have run
TEST_F(Start, AutoPlayStartsTheListAsANewEvent) {
    settings("AUTOPLAY=ON\n");
    machine.addSound("/m/a.wav", 3000);
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.wav|/m/a.wav\n");
    ASSERT_TRUE(startProgram(player));
    machine.advance(14 * kStepMs);
    EXPECT_FALSE(player.gPlaying);
    step();
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(player.gPlaying);
    EXPECT_EQ(machine.log.count("mci.Command Play"), 1);
}

/// CMD-29: Files that are opened play at once, at the start and handed over; when none can be taken, those handed over
///     change nothing
TEST_F(Start, FilesThatWereOpenedPlayAtOnceAlsoWithoutAutoPlay) {
    machine.addSound("/m/a.wav", 3000);
    machine.addSound("/m/b.wav", 3000);
    machine.process.opened = {"/m/b.wav", "/m/a.wav"};
    ASSERT_TRUE(startProgram(player));
    machine.advance(16 * kStepMs);
    EXPECT_FALSE(player.gAutoPlay);
    EXPECT_TRUE(player.gPlaying);
    EXPECT_EQ(player.openedPath, "/m/b.wav");
}

/// CMD-29
TEST_F(Start, NeitherSavedFilesNorThoseOfTheCommandLinePlayByThemselves) {
    machine.addSound("/m/a.wav", 3000);
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.wav|/m/a.wav\n");
    machine.process.opened = {"/m/gone.wav"};
    ASSERT_TRUE(startProgram(player));
    machine.advance(50 * kStepMs);
    EXPECT_FALSE(player.gPlaying) << "nothing that was opened is there";
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

/// KIND-24
TEST_F(Start, TheTypesOfTodayArePlayedWhereTheWaysOfTodayAreOn) {
    machine.media.decodes = {"FLAC"};
    ASSERT_TRUE(startProgram(player));
    EXPECT_FALSE(player.types.knows("FLAC"));

    Player desktops{ports};
    registerStartupForms(desktops);
    desktops.forms.registerForm(FormId::MenuWindow, [] { return std::make_unique<MenuWindowControls>(); });
    machine.process.byDesktop = true;
    ASSERT_TRUE(startProgram(desktops));
    EXPECT_TRUE(desktops.types.knows("FLAC"));
    EXPECT_FALSE(desktops.types.knows("OPUS")) << "nothing decodes it here";
}

/// DROP-21
TEST_F(Start, OpenedFilesOfWhichNoneIsPlayedAreTold) {
    machine.process.byDesktop = true;
    machine.process.opened = {"/m/gone.wav"};
    ASSERT_TRUE(startProgram(player));
    machine.advance(50 * kStepMs);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/m/gone.wav: left out, because there is no such file");
}

/// START-62: What a start has to tell of what it was given waits until the panel stands and the list plays
TEST_F(Start, WhatWasLeftOutIsToldBesideTheMusic) {
    machine.addSound("/m/a.wav", 3000);
    machine.files.add("/m/l.m3u8", "http://x/y.mp3\na.wav\n");
    machine.process.byDesktop = true;
    machine.process.opened = {"/m/l.m3u8"};
    bool playedBefore = false;
    machine.dialogs.whileUp = [&] { playedBefore = player.gPlaying && panel() != nullptr; };
    ASSERT_TRUE(startProgram(player));
    machine.advance(14 * kStepMs);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    machine.advance(10 * kStepMs);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/m/l.m3u8: one entry left out, because it leads to the network");
    EXPECT_TRUE(playedBefore);
}

/// START-34: The panel's end shows the start window again, at the panel's own place and size, with step 15
/// START-37: At step k picture and window are k times the panel's pixels in twips wide and high
/// START-38: At step k the window stands at k × 3 / 50 of the way from the corner to the panel's right and bottom edge
///     less its own size
/// START-39: The step goes down by one; at 0 the program ends, once
/// START-40: The closing happens once in a run: it ends the process
TEST_F(Start, TheClosingShrinksTowardsTheCornerAndEndsTheProgram) {
    open();
    machine.clearCalls();
    closePanelAt(3000, 1500);
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(panel(), nullptr);
    EXPECT_TRUE(window()->Visible);
    EXPECT_EQ(player.gAnimationStep, 15);
    EXPECT_EQ(window()->Left, 3000);
    EXPECT_EQ(window()->Top, 1500);
    EXPECT_EQ(window()->Width, 6000);
    EXPECT_EQ(window()->imgDummyPanel.Height, 1500);
    EXPECT_EQ(window()->imgDummyPanel.Picture.get().width(), 400);
    for (int k = 15; k > 1; --k) {
        step();
        ASSERT_FALSE(machine.process.ending()) << k;
        const auto width = static_cast<float>(k * 400);
        const auto height = static_cast<float>(k * 100);
        EXPECT_EQ(window()->Width, width);
        EXPECT_EQ(window()->imgDummyPanel.Height, height);
        EXPECT_FLOAT_EQ(window()->Left, (3000 + 6000 - width) * static_cast<float>(k) * 3 / 50);
        EXPECT_FLOAT_EQ(window()->Top, (1500 + 1500 - height) * static_cast<float>(k) * 3 / 50);
        EXPECT_TRUE(window()->imgDummyPanel.Visible);
        EXPECT_EQ(player.gAnimationStep, k - 1);
    }
    EXPECT_EQ(refreshes(), 14);
    step();
    EXPECT_TRUE(machine.process.ending());
    EXPECT_EQ(machine.log.count("process.end"), 1);
    EXPECT_EQ(player.gAnimationStep, 0);
    EXPECT_FALSE(window()->tmrOpenClose[1].Enabled);
}

/// SET-44: The file is read once a run
/// START-35: Neither settings nor list are read again
TEST_F(Start, TheClosingReadsNeitherSettingsNorListAgain) {
    open();
    settings("DELAYTIME=7\n");
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.mid|/m/a.mid\n");
    closePanelAt(0, 0);
    EXPECT_EQ(player.gDelayTime, 500);
    EXPECT_EQ(player.gFileCount, 0);
}

/// START-41: A skin that went away meanwhile does not stop the closing
/// START-17
TEST_F(Start, ASkinThatWentAwayDoesNotStopTheClosing) {
    open();
    machine.files.remove("/app/PANELSET/DEFAULT.CSV");
    machine.pictures.addBroken("/app/PANELSET/DEFAULT.BMP", "gone");
    closePanelAt(0, 0);
    EXPECT_EQ(player.gPanelWidth, 512);
    EXPECT_FALSE(player.forms.find<MenuWindowControls>()->pcpMainPanel.Picture.get().empty());
    machine.advance(15 * kStepMs);
    EXPECT_TRUE(machine.process.ending());
}

/// START-33: A skin that cannot be applied ends the program after its box; the panel is never seen and nothing plays
/// FAULT-06: A skin removed between the start and the panel gives the box of a skin that cannot be shown, and the
///     program ends
TEST_F(Start, ASkinThatCannotBeAppliedEndsTheProgramAfterTheBox) {
    machine.files.add("/app/PANELSET/DEFAULT.CSV", "window,1,0,0,0,0,401,100,1\n");
    settings("AUTOPLAY=ON\n");
    machine.dialogs.answers = {Answer::Ok};
    startProgram(player);
    machine.advance(1000);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "パネルを表示できません。");
    EXPECT_TRUE(machine.process.ending());
    EXPECT_TRUE(panel() == nullptr || !panel()->Visible);
    EXPECT_FALSE(player.gPlaying);
}

/// START-33
TEST_F(Start, ADamagedBitmapStillOpensUpToTheBox) {
    machine.pictures.addBroken("/app/PANELSET/DEFAULT.BMP", "truncated");
    startProgram(player);
    EXPECT_TRUE(window()->imgDummyPanel.Picture.get().empty());
    machine.advance(1000);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_TRUE(machine.process.ending());
}

/// START-32: Closed during the opening, the program ends
TEST_F(Start, ClosingTheWindowDuringTheOpeningEndsTheProgram) {
    startProgram(player);
    step();
    machine.loop.enter([&] { window()->CloseRequest.raise(false); });
    EXPECT_TRUE(machine.process.ending());
}

}  // namespace
}  // namespace corvane
