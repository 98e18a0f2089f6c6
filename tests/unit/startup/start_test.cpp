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

TEST_F(Start, ASecondInstanceEndsSilently) {
    machine.process.isOnlyInstance = false;
    EXPECT_FALSE(startProgram(player));
    EXPECT_TRUE(machine.process.ending());
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_TRUE(machine.windows.attached().empty());
}

TEST_F(Start, OnlyPlatform1IsTheOldFamily) {
    machine.process.platform = 1;
    frmStartup::Form_Initialize(player);
    EXPECT_TRUE(player.gIsWin9x);
    machine.process.platform = 2;
    frmStartup::Form_Initialize(player);
    EXPECT_FALSE(player.gIsWin9x);
}

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

TEST_F(Start, TheSkinOfTheSettingsIsTaken) {
    settings("BITMAPFILE=blue.bmp\nTEXTFILE=blue.csv\n");
    machine.addPicture("/app/PANELSET/blue.bmp", 10, 10);
    machine.files.add("/app/PANELSET/blue.csv");
    EXPECT_TRUE(startProgram(player));
    EXPECT_EQ(machine.calls("pictures"), std::vector<std::string>{"pictures.decode /app/PANELSET/blue.bmp"});
}

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

TEST_F(Start, AMissingTextFileIsReportedAndEndsTheProgram) {
    settings("TEXTFILE=none.csv\n");
    EXPECT_FALSE(startProgram(player));
    const FakeDialogs::Box box{"/app/PANELSET/none.csv Not found!!", "Corvane", Buttons::Ok, Icon::Stop};
    EXPECT_EQ(machine.dialogs.boxes, std::vector<FakeDialogs::Box>{box});
    EXPECT_TRUE(machine.process.ending());
}

TEST_F(Start, AFolderMakesNoLineOfTheBox) {
    machine.process.folder = "/app\nThe disk is full.";
    EXPECT_FALSE(startProgram(player));
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/app The disk is full./PANELSET/DEFAULT.BMP Not found!!");
}

TEST_F(Start, HiddenSkinFilesAreFound) {
    machine.files.addHidden("/app/PANELSET/DEFAULT.BMP");
    machine.files.addHidden("/app/PANELSET/DEFAULT.CSV");
    EXPECT_TRUE(frmStartup::Form_Initialize(player));
}

TEST_F(Start, TheMenuWindowIsLoadedUnseenAndHoldsTheBitmap) {
    startProgram(player);
    auto* menu = player.forms.find<MenuWindowControls>();
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->Visible);
    EXPECT_EQ(menu->pcpMainPanel.Picture.get().width(), 400);
}

TEST_F(Start, NothingIsWrittenByAWholeRun) {
    open();
    closePanelAt(0, 0);
    machine.advance(1000);
    EXPECT_TRUE(machine.process.ending());
    EXPECT_TRUE(machine.calls("files").empty());
}

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

TEST_F(Start, AMinimisedWindowGrowsWhereItIs) {
    ASSERT_TRUE(startProgram(player));
    window()->WindowState = WindowState::Minimized;
    step();
    EXPECT_EQ(window()->Width, 400);
    EXPECT_EQ(window()->Left, 0);
}

TEST_F(Start, TheDummyPanelShowsTheBackgroundOfThePanelRecord) {
    ASSERT_TRUE(startProgram(player));
    EXPECT_EQ(player.gPanelWidth, 400);
    EXPECT_EQ(player.gPanelHeight, 100);
    EXPECT_EQ(window()->imgDummyPanel.Left, 30);
    EXPECT_EQ(window()->imgDummyPanel.Top, 45);
    EXPECT_EQ(window()->imgDummyPanel.Picture.get().width(), 400);
    EXPECT_EQ(window()->imgDummyPanel.Picture.get().height(), 100);
}

TEST_F(Start, SettingsAndListAreReadBeforeTheAnimation) {
    settings("DELAYTIME=7\nPAGENUM=1\nFILENUM=2\n");
    machine.files.add("/app/FILE12.INI", "[FILELIST]\nLIST000=a.mid|/m/a.mid\n");
    ASSERT_TRUE(startProgram(player));
    EXPECT_EQ(player.gDelayTime, 7);
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(player.gFilePath[0], "/m/a.mid");
}

TEST_F(Start, ThePanelShowsTheListThatWasReadBeforeIt) {
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.mid|/m/a.mid\nLIST001=b.mid|/m/b.mid\n");
    open();
    EXPECT_EQ(panel()->lblMainPanel[kNumberLabel].Caption.get(), "001");
    EXPECT_EQ(panel()->lblMainPanel[kTitleLabel].Caption.get(), "a");
    EXPECT_EQ(panel()->lblMainPanel[kTotalLabel].Caption.get(), "2");
}

TEST_F(Start, WithoutAutoPlayNothingPlays) {
    machine.addSound("/m/a.wav", 3000);
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.wav|/m/a.wav\n");
    open();
    machine.advance(500);
    EXPECT_FALSE(player.gPlaying);
    EXPECT_TRUE(panel()->isStopped());
}

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

TEST_F(Start, NeitherSavedFilesNorThoseOfTheCommandLinePlayByThemselves) {
    machine.addSound("/m/a.wav", 3000);
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.wav|/m/a.wav\n");
    machine.process.opened = {"/m/gone.wav"};
    ASSERT_TRUE(startProgram(player));
    machine.advance(50 * kStepMs);
    EXPECT_FALSE(player.gPlaying) << "nothing that was opened is there";
}

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

TEST_F(Start, TheClosingReadsNeitherSettingsNorListAgain) {
    open();
    settings("DELAYTIME=7\n");
    machine.files.add("/app/FILE00.INI", "[FILELIST]\nLIST000=a.mid|/m/a.mid\n");
    closePanelAt(0, 0);
    EXPECT_EQ(player.gDelayTime, 500);
    EXPECT_EQ(player.gFileCount, 0);
}

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

TEST_F(Start, ADamagedBitmapStillOpensUpToTheBox) {
    machine.pictures.addBroken("/app/PANELSET/DEFAULT.BMP", "truncated");
    startProgram(player);
    EXPECT_TRUE(window()->imgDummyPanel.Picture.get().empty());
    machine.advance(1000);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_TRUE(machine.process.ending());
}

TEST_F(Start, ClosingTheWindowDuringTheOpeningEndsTheProgram) {
    startProgram(player);
    step();
    machine.loop.enter([&] { window()->CloseRequest.raise(false); });
    EXPECT_TRUE(machine.process.ending());
}

}  // namespace
}  // namespace corvane
