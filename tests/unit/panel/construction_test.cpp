// SPDX-License-Identifier: GPL-3.0-or-later
// What the panel does when it loads and when it goes.
#include <algorithm>

#include "panel/skin_builder.h"
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

/// Takes note of a window that becomes normal again.
struct NormalWatch : ControlObserver {
    bool becameNormal = false;
    void propertyChanged(Control& control, PropertyId property) override {
        if (property != PropertyId::WindowState) return;
        becameNormal = static_cast<Form&>(control).WindowState == WindowState::Normal;
    }
};

class Construction : public PanelHands {
protected:
    /// Loads the panel from these records; the log holds what it did.
    void build(const std::string& skin = kSkin) {
        machine.files.add("/skin.csv", skin);
        player.gTextPath = "/skin.csv";
        player.forms.load<MenuWindowControls>().pcpMainPanel.Picture = makePicture(256, 256, {0x404040});
        machine.clearCalls();
        act([this] { player.forms.load<MainPanelControls>().Show(); });
    }
    void end() {
        act([this] { player.forms.unload<MainPanelControls>(); });
    }
    const Picture& image(int index) { return panel().imgMainPanel.at(static_cast<std::size_t>(index)).Picture.get(); }
    bool isThere(const char* form) { return machine.windows.isAttached(form); }

    static constexpr const char* kSkin =
        "auto off,34,20,5,0,0,8,8,1\nauto on,35,20,5,8,0,8,8,1\n"
        "quick off,36,30,5,16,0,8,8,1\nquick on,37,30,5,24,0,8,8,1\n"
        "repeat off,38,40,5,32,0,8,8,1\nrepeat on,39,40,5,40,0,8,8,1\n"
        "knob,24,300,10,0,40,60,60,1\n";
};

// --- Version text ----------------------------------------------------------------------------------------------------

/// PANEL-01: Label 1 shows product, "  Ver ", major and two-digit minor without a point between them, two blanks and
///     the comments: 1.05 reads 105
TEST_F(Construction, ThereIsNoPointInTheVersion) {
    struct Row {
        int major, minor;
        const char* text;
    };
    for (const Row& row :
         {Row{1, 0, "Corvane  Ver 100  Multimedia Player"}, Row{1, 5, "Corvane  Ver 105  Multimedia Player"},
          Row{1, 12, "Corvane  Ver 112  Multimedia Player"}, Row{12, 3, "Corvane  Ver 1203  Multimedia Player"}}) {
        machine.process.versionMajor = row.major;
        machine.process.versionMinor = row.minor;
        build();
        EXPECT_EQ(label(kTextLabel), row.text);
        end();
    }
    machine.process.comments = "";
    machine.process.productName = "Other";
    build();
    EXPECT_EQ(label(kTextLabel), "Other  Ver 1203  ");
}

/// PANEL-17: Texts written before the panel existed are there
TEST_F(Construction, CaptionsOfTheListReadBeforeAreShown) {
    setPanelCaption(player, kTotalLabel, "12");
    setPanelCaption(player, kNumberLabel, "003");
    setPanelCaption(player, kTitleLabel, "third");
    setPanelCaption(player, kTextLabel, "not kept");
    build();
    EXPECT_EQ(label(kTotalLabel), "12");
    EXPECT_EQ(label(kNumberLabel), "003");
    EXPECT_EQ(label(kTitleLabel), "third");
    EXPECT_EQ(label(kTextLabel), "Corvane  Ver 100  Multimedia Player");
    EXPECT_EQ(label(kMarkLabel), "/");
}

// --- Lamps -----------------------------------------------------------------------------------------------------------

/// PANEL-07: Lamp 9 is lit when auto play is on, lamp 12 when quick play is; with auto play alone only lamp 9
/// PANEL-08: The repeat lamp is out at first
TEST_F(Construction, TheLampsOfThePlaySwitchesThatAreOnAreLit) {
    for (const bool autoPlay : {false, true}) {
        for (const bool quickPlay : {false, true}) {
            SCOPED_TRACE(std::string(autoPlay ? "auto" : "-") + " " + (quickPlay ? "quick" : "-"));
            player.gAutoPlay = autoPlay;
            player.gQuickPlay = quickPlay;
            build();
            EXPECT_EQ(image(9), image(autoPlay ? 11 : 10));
            EXPECT_EQ(image(12), image(quickPlay ? 14 : 13));
            EXPECT_EQ(image(15), image(16));
            for (const int each : {10, 11, 13, 14, 16, 17}) EXPECT_FALSE(image(each).empty());
            EXPECT_NE(image(10), image(11));
            EXPECT_NE(image(13), image(14));
            end();
        }
    }
}

/// PANEL-09: A lamp whose on picture is not used is lit with an empty picture
TEST_F(Construction, ALampWithoutAnOnPictureIsLitWithNone) {
    player.gAutoPlay = true;
    player.gQuickPlay = true;
    build(
        "auto off,34,20,5,0,0,8,8,1\nauto on,35,20,5,8,0,8,8,0\nquick off,36,30,5,16,0,8,8,1\nquick "
        "on,37,0,0,0,0,0,0,0\n");
    EXPECT_TRUE(image(9).empty());
    EXPECT_TRUE(image(12).empty());
    EXPECT_FALSE(image(10).empty());
}

// --- Size, place, order ----------------------------------------------------------------------------------------------

/// PANEL-05: The window is as large as the panel, 15 twips a pixel
/// PANEL-06: It stands at nine tenths of the screen that it leaves free
/// START-29, SKIN-24
TEST_F(Construction, StandsAtNineTenthsOfTheFreeScreen) {
    struct Row {
        int screenWidth, screenHeight, width, height;
        float left, top;  ///< pixels
    };
    for (const Row& row : {Row{1024, 768, 512, 128, 460.8F, 576}, Row{1920, 1080, 512, 128, 1267.2F, 856.8F},
                           Row{640, 480, 333, 77, 276.3F, 362.7F}, Row{320, 200, 400, 240, -72, -36}}) {
        SCOPED_TRACE(row.screenWidth);
        machine.windows.screenWidthPixels = row.screenWidth;
        machine.windows.screenHeightPixels = row.screenHeight;
        player.gPanelWidth = row.width;
        player.gPanelHeight = row.height;
        build();
        EXPECT_FLOAT_EQ(panel().Width, static_cast<float>(row.width) * 15);
        EXPECT_FLOAT_EQ(panel().Height, static_cast<float>(row.height) * 15);
        EXPECT_NEAR(panel().Left, row.left * 15, 0.01);
        EXPECT_NEAR(panel().Top, row.top * 15, 0.01);
        end();
    }
}

/// PANEL-15: In window mode 1 the panel stays above other windows, in modes 0 and 2 it does not
TEST_F(Construction, IsTopMostInWindowMode1Alone) {
    for (const std::int16_t mode : std::initializer_list<std::int16_t>{0, 1, 2}) {
        SCOPED_TRACE(mode);
        player.gWindowPos = mode;
        build();
        EXPECT_EQ(machine.log.count("windows.SetWindowPos frmMainPanel -1 53"), mode == 1 ? 1 : 0);
        end();
    }
}

/// PANEL-14: The time for a second press of previous is the system's double-click time
TEST_F(Construction, ThePressTimesComeFromTheSystem) {
    for (const int time : {200, 400, 900}) {
        machine.windows.doubleClickMs = time;
        build();
        EXPECT_EQ(panel().tmrPlayBack.Interval, time);
        EXPECT_FALSE(panel().tmrPlayBack.Enabled);
        EXPECT_EQ(panel().tmrPrevNext.Interval, 750);
        EXPECT_FALSE(panel().tmrPrevNext.Enabled);
        end();
    }
}

/// PANEL-16: The controls bear their design texts as tool tips and names
TEST_F(Construction, TheControlsAreNamedByTheirRoles) {
    build();
    const std::vector<const char*> roles = {"Power OFF", "Min Button", "Repeat", "Shuffle", "Play",        "Pause",
                                            "Stop",      "Prev",       "Next",   "Program", "Volume Down", "Volume Up"};
    for (std::size_t i = 0; i < roles.size(); ++i) EXPECT_EQ(panel().cmdMainPanel.at(i).ToolTipText.get(), roles[i]);
    EXPECT_EQ(panel().pctSlide.ToolTipText.get(), "Slider");
    EXPECT_EQ(panel().pctMainPanel.ToolTipText.get(), "Costom Setup");
    EXPECT_EQ(panel().imgMainPanel[kKnobImage].ToolTipText.get(), "Volume");
    EXPECT_EQ(panel().lblMainPanel[kTitleLabel].AccessibleName, "Tittle");
}

// --- A skin that cannot be shown -------------------------------------------------------------------------------------

/// PANEL-03: When that fails, open files are closed, the stop box "パネルを表示できません。" with OK and Cancel is
/// shown, and
///     the program ends whatever the answer
/// PANEL-04: Nothing else is prepared then
TEST_F(Construction, APanelThatCannotBeShownSaysSoAndEndsTheProgram) {
    for (const Answer answer : {Answer::Ok, Answer::Cancel}) {
        for (const char* skin : {"auto off,34,20,5,300,0,8,8,1\n", "auto off,34,x,5,0,0,8,8,1\n"}) {
            SCOPED_TRACE(skin);
            FakeMachine other;
            Ports otherPorts = other.ports();
            Player failing{otherPorts};
            registerAllForms(failing);
            other.files.add("/skin.csv", skin);
            failing.gTextPath = "/skin.csv";
            failing.gWindowPos = 1;
            failing.forms.load<MenuWindowControls>().pcpMainPanel.Picture = makePicture(256, 256, {0x404040});
            other.dialogs.answers = {answer};
            failing.gFileCount = 1;
            failing.gPlaying = true;
            other.dialogs.whileUp = [&] { EXPECT_FALSE(failing.gPlaying) << "what is open is closed first"; };
            other.loop.enter([&] { failing.forms.load<MainPanelControls>(); });
            ASSERT_EQ(other.dialogs.boxes.size(), 1U);
            EXPECT_EQ(other.dialogs.boxes[0],
                      (FakeDialogs::Box{"パネルを表示できません。", "Corvane", Buttons::OkCancel, Icon::Stop}));
            EXPECT_EQ(other.log.count("process.end"), 1);
            EXPECT_TRUE(other.log.allCalls("sound").empty()) << "nothing else is prepared";
            EXPECT_EQ(other.log.count("windows.SetWindowPos frmMainPanel -1 53"), 0);
        }
    }
}

// --- Volume ----------------------------------------------------------------------------------------------------------

/// START-42: The volume found at the start is put back when the panel goes
/// PANEL-11: The volume in force is read from the chosen device and kept for the end
/// PANEL-18: The volume found at the start is put back on its device, whatever the user or another program did
///     meanwhile
/// PANEL-12, VOL-11
TEST_F(Construction, TheVolumeFoundIsShownKeptAndPutBack) {
    machine.sound.wave = 0x80008000;
    build();
    EXPECT_EQ(player.gVolume, 8);
    EXPECT_TRUE(machine.calls("sound").empty()) << "loading sets nothing";
    click(kVolumeUp);
    machine.sound.wave = 0x12345678;  // another program, meanwhile
    machine.clearCalls();
    end();
    EXPECT_EQ(machine.calls("sound"), Calls{"sound.waveOutSetVolumeOf speakers 80008000"});
    EXPECT_EQ(machine.sound.wave, 0x80008000U);
}

/// PANEL-12: The indicator stands at the level found; nothing is set by loading
/// VOL-11: The indicator is placed, and nothing is set
TEST_F(Construction, TheIndicatorStandsAtTheLevelFound) {
    machine.sound.wave = 0x7FFF7FFF;
    build();
    EXPECT_EQ(player.gVolume, 7);
    const auto at7 = std::pair{panel().shpVolume.Left.get(), panel().shpVolume.Top.get()};
    placeIndicator(player);
    EXPECT_EQ(at7, (std::pair{panel().shpVolume.Left.get(), panel().shpVolume.Top.get()}));
    player.gVolume = 8;
    placeIndicator(player);
    EXPECT_NE(at7.first, panel().shpVolume.Left.get());
}

/// PANEL-13: A volume that cannot be read leaves the level, and nothing is written at the end
TEST_F(Construction, AVolumeThatCannotBeReadIsNotWritten) {
    machine.sound.wave.reset();
    player.gVolume = 3;
    build();
    EXPECT_EQ(player.gVolume, 3);
    machine.clearCalls();
    end();
    EXPECT_TRUE(machine.calls("sound").empty());
}

/// PANEL-19: An auxiliary device gets its own volume back
/// PANEL-11, VOL-10
TEST_F(Construction, AnAuxiliaryDevicesVolumeIsKeptThere) {
    machine.sound.aux = {{AuxCaps{1, 2, "Line"}, 0x11111111}, {AuxCaps{1, 8, "CD"}, 0x55556666}};
    player.gAuxType = 1;
    build();
    EXPECT_EQ(player.gVolume, 5) << "the right channel decides";
    click(kVolumeDown);
    end();
    EXPECT_EQ(machine.sound.aux[1].volume, 0x55556666U);
    EXPECT_EQ(machine.log.count("sound.waveOutSetVolume 44444444"), 0);
}

/// PANEL-10: A device setting of -2 becomes 0 and then the auxiliary device whose capability record says 8
TEST_F(Construction, TheAutomaticDeviceIsChosenWhenThePanelLoads) {
    machine.sound.aux = {{AuxCaps{1, 2, "Line"}, 0x11111111}, {AuxCaps{1, 8, "CD"}, 0x99999999}};
    player.gAuxType = -2;
    build();
    EXPECT_EQ(player.gAuxType, 1);
    EXPECT_EQ(player.gVolume, 9);
    end();
    EXPECT_EQ(machine.log.count("sound.auxSetVolume 1 99999999"), 1);
}

/// PANEL-10
TEST_F(Construction, WithoutAnAuxiliaryDeviceTheAutomaticChoiceIsTheFirst) {
    player.gAuxType = -2;
    player.gVolume = 4;
    build();
    EXPECT_EQ(player.gAuxType, 0);
    EXPECT_EQ(player.gVolume, 4);
    end();
    EXPECT_TRUE(machine.calls("sound").empty());
}

// --- The end ---------------------------------------------------------------------------------------------------------

/// PANEL-20: The window becomes normal, and its place is noted
/// PANEL-21
TEST_F(Construction, TheEndTakesNoteOfThePlaceAndShowsTheStartWindow) {
    build();
    panel().Move(1234, 567);
    panel().WindowState = WindowState::Minimized;
    NormalWatch watch;
    panel().addObserver(&watch);
    click(kPower);
    EXPECT_TRUE(watch.becameNormal);
    EXPECT_FALSE(isThere("frmMainPanel"));
    EXPECT_EQ(player.gPanelLeft, 1234);
    EXPECT_EQ(player.gPanelTop, 567);
    ASSERT_TRUE(isThere("frmStartup"));
    EXPECT_TRUE(machine.windows.find("frmStartup")->Visible);
}

/// PANEL-21: The start window is shown, and only then the panel goes
TEST_F(Construction, TheEndPutsTheVolumeBackBeforeThePanelGoes) {
    machine.sound.wave = 0x80008000;
    build();
    machine.clearCalls();
    click(kPower);
    const Calls calls = machine.calls();
    const auto at = [&](const char* what) {
        return std::find_if(calls.begin(), calls.end(), [&](const std::string& call) { return call == what; });
    };
    ASSERT_NE(at("windows.detach frmMainPanel"), calls.end());
    EXPECT_LT(at("sound.waveOutSetVolumeOf speakers 80008000"), at("windows.show frmStartup"));
    EXPECT_LT(at("windows.show frmStartup"), at("windows.detach frmMainPanel"));
}

TEST_F(Construction, AKnobHiddenByOneRecordIsShownAgainByTheNext) {
    MainPanelControls built;
    const Picture bitmap = makePicture(64, 64, {0});
    ASSERT_TRUE(applySkin("k,24,0,0,0,0,20,20,0\nk,24,0,0,0,0,20,20,1\n", bitmap, machine.pictures, player, built));
    EXPECT_TRUE(built.imgMainPanel[kKnobImage].Visible);
    EXPECT_TRUE(built.shpVolume.Visible);
}

}  // namespace
}  // namespace corvane
