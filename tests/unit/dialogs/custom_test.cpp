// SPDX-License-Identifier: GPL-3.0-or-later
// The settings dialog: what it shows, what OK stores and in which order, what Cancel leaves.
#include <set>

#include "unit/dialogs/custom_fixture.h"

namespace corvane {
namespace {

using Custom = CustomControls;
using Texts = std::vector<std::string>;

/// DIAL-01: Groups, options, boxes, labels and buttons have their captions, MINBUTTON_Click among them
TEST_F(CustomDialog, EveryGroupAndControlHasItsCaption) {
    open();
    const Texts groups = {"Top Window", "Volume Select", "Image Hide", "Play Mode", "Key Custom", "Panel Customize"};
    for (std::size_t i = 0; i < groups.size(); ++i) EXPECT_EQ(dialog().fraCustom[i].Caption.get(), groups[i]);
    const Texts options = {"False", "True", "Normal Mode", "Main Window", "Sub Window"};
    for (std::size_t i = 0; i < options.size(); ++i) EXPECT_EQ(dialog().optCustom[i].Caption.get(), options[i]);
    EXPECT_EQ(dialog().chkCustom[0].Caption.get(), "Quick Play");
    EXPECT_EQ(dialog().chkCustom[1].Caption.get(), "Auto Start");
    EXPECT_EQ(dialog().cmdCustom[0].Caption.get(), "OK");
    EXPECT_EQ(dialog().cmdCustom[1].Caption.get(), "Cancel");
    const Texts labels = {"POWER_Click", "MINBUTTON_Click", "REPEAT_Click", "SHUFFLE_Click", "PLAY_Click",
                          "PAUSE_Click", "STOP_Click",      "PREV_Click",   "NEXT_Click",    "VOLUME_Up",
                          "VOLUME_Down", "Delay Time",      "Bitmap File",  "Text File"};
    for (std::size_t i = 0; i < labels.size(); ++i) EXPECT_EQ(dialog().lblCustom[i].Caption.get(), labels[i]);
}

/// DIAL-02: The version label is product, "  Ver ", major, a point, two-digit minor and the comments
TEST_F(CustomDialog, TheVersionLabelNamesProductVersionAndComments) {
    machine.process.versionMinor = 5;
    open();
    EXPECT_EQ(dialog().lblCustom[Custom::kVersion].Caption.get(), "Corvane  Ver 1.05  Multimedia Player");
}

/// DIAL-03: The panel is hidden meanwhile and comes back at either button
/// DIAL-32: After either button the dialog goes and the panel shows
TEST_F(CustomDialog, OpeningHidesThePanelAndClosingBringsItBack) {
    panel().Move(300, 600);
    for (const int button : {Custom::kOk, Custom::kCancel}) {
        open();
        EXPECT_FALSE(panel().Visible || panel().Enabled);
        push(button);
        EXPECT_EQ(found(), nullptr);
        EXPECT_TRUE(panel().Visible && panel().Enabled);
        EXPECT_EQ(panel().Left.get(), 300);
        EXPECT_EQ(machine.windows.active(), &panel());
    }
}

/// DIAL-05: Image-hide option and check boxes show the settings in force
/// DIAL-07: Each key field shows its character, and nothing for code 0; the delay field the delay
/// DIAL-08
TEST_F(CustomDialog, OpeningShowsThePresentSettings) {
    player.gImageHide = false;
    player.gAutoPlay = true;
    player.gWindowPos = 2;
    player.gDelayTime = 250;
    player.gKeyPause = 0;
    player.gKeyStop = 0x3042;
    player.gBitmapFileName = "night.bmp";
    open();
    EXPECT_TRUE(dialog().optCustom[Custom::kHideFalse].Value);
    EXPECT_FALSE(dialog().optCustom[Custom::kHideTrue].Value);
    EXPECT_TRUE(dialog().chkCustom[Custom::kAutoStart].Value);
    EXPECT_FALSE(dialog().chkCustom[Custom::kQuickPlay].Value);
    EXPECT_TRUE(dialog().optCustom[Custom::kSubWindow].Value);
    EXPECT_EQ(field(0).Text.get(), "P");
    EXPECT_EQ(field(5).Text.get(), "");
    EXPECT_EQ(field(6).Text.get(), "\xE3\x81\x82");
    EXPECT_EQ(field(10).Text.get(), "d");
    EXPECT_EQ(field(Custom::kDelay).Text.get(), "250");
    EXPECT_EQ(dialog().cboCustom[Custom::kBitmaps].items(), (Texts{"DEFAULT.BMP", "night.bmp"}));
    EXPECT_EQ(dialog().cboCustom[Custom::kTexts].items(), Texts{"default.csv"});
    EXPECT_EQ(dialog().cboCustom[Custom::kBitmaps].Text.get(), "night.bmp");
    EXPECT_EQ(dialog().cboCustom[Custom::kTexts].Text.get(), "DEFAULT.CSV");
}

/// DIAL-06: The window option is the mode and 2
TEST_F(CustomDialog, EachWindowModeSelectsItsOption) {
    for (const int mode : {0, 1, 2}) {
        player.gWindowPos = static_cast<std::int16_t>(mode);
        open();
        for (const int each : {0, 1, 2}) {
            EXPECT_EQ(dialog().optCustom[static_cast<std::size_t>(2 + each)].Value.get(), each == mode) << mode;
        }
        push(Custom::kCancel);
    }
}

/// DIAL-35: Options of one group leave the other group alone
TEST_F(CustomDialog, OptionsOfOneGroupLeaveTheOtherGroupAlone) {
    open();
    dialog().optCustom[Custom::kHideTrue].Value = true;
    dialog().optCustom[Custom::kMainWindow].Value = true;
    EXPECT_TRUE(dialog().optCustom[Custom::kHideTrue].Value);
    EXPECT_FALSE(dialog().optCustom[Custom::kNormalMode].Value);
}

/// DIAL-10: The device list begins with AUTO DETECT and WAVE OUT and stands at the device in force
TEST_F(CustomDialog, TheDevicesAreAutoDetectAndWaveOut) {
    machine.sound.aux.push_back({AuxCaps{1, 8, "Line In"}});
    open();
    EXPECT_EQ(dialog().cboCustom[Custom::kDevices].items(), (Texts{"AUTO DETECT", "WAVE OUT"}));
    EXPECT_EQ(dialog().cboCustom[Custom::kDevices].ListIndex, 1);
}

/// DIAL-11: On the old platform family the auxiliary devices follow by their names
TEST_F(CustomDialog, TheOldFamilyAddsTheAuxiliaryDevicesByName) {
    player.gIsWin9x = true;
    player.gAuxType = 1;
    machine.sound.aux.push_back({AuxCaps{1, 8, "Line In"}});
    machine.sound.aux.push_back({AuxCaps{1, 2, "CD \xE9"}});
    open();
    EXPECT_EQ(dialog().cboCustom[Custom::kDevices].items(), (Texts{"AUTO DETECT", "WAVE OUT", "Line In", "CD \xE9"}));
    EXPECT_EQ(dialog().cboCustom[Custom::kDevices].ListIndex, 3);
}

/// DIAL-29
TEST_F(CustomDialog, ADeviceThatIsGoneIsNotChangedByOk) {
    player.gIsWin9x = true;
    player.gAuxType = 5;
    open();
    push(Custom::kOk);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(written("AUXTYPE"), "(none)");
}

/// SET-54: A key is written as its one character
/// SET-03, SET-50, DIAL-18, DIAL-20
TEST_F(CustomDialog, OkWritesEveryKeyInItsOrder) {
    player.gWindowPos = 0;
    open();
    push(Custom::kOk);
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"),
              "[KADO]\r\nPOWER_Click=P\r\nMIN_Click=M\r\nREPEAT_Click=R\r\nSHUFFLE_Click=S\r\nPLAY_Click=z\r\n"
              "PAUSE_Click=x\r\nSTOP_Click=c\r\nPREV_Click=,\r\nNEXT_Click=.\r\nVOLUME_Up=u\r\nVOLUME_Down=d\r\n"
              "IMAGEHIDE=ON\r\nAUTOPLAY=OFF\r\nQUICK=OFF\r\nDELAYTIME=500\r\nBITMAPFILE=DEFAULT.BMP\r\n"
              "TEXTFILE=DEFAULT.CSV\r\nWINDOWPOS=0\r\n");
}

/// DIAL-31: Cancel, and the window manager's close, store nothing
TEST_F(CustomDialog, CancelAndTheWindowManagersCloseStoreNothing) {
    for (const bool byWindowManager : {false, true}) {
        open();
        field(0).Text = "q";
        dialog().chkCustom[Custom::kQuickPlay].Value = true;
        if (byWindowManager) {
            machine.loop.enter([&] { dialog().CloseRequest.raise(false); });
            machine.settle();
        } else {
            push(Custom::kCancel);
        }
        EXPECT_EQ(found(), nullptr);
        EXPECT_EQ(player.gKeyPower, 'P');
        EXPECT_FALSE(player.gQuickPlay);
        EXPECT_FALSE(machine.files.has("/app/KADO.INI"));
    }
}

/// SET-50: Switches are written as ON and OFF
/// DIAL-17: Image-hide, quick play and auto play are taken from their controls
/// DIAL-20: IMAGEHIDE, AUTOPLAY and QUICK are written as ON or OFF
TEST_F(CustomDialog, OkTakesTheSwitches) {
    open();
    dialog().optCustom[Custom::kHideFalse].Value = true;
    dialog().chkCustom[Custom::kQuickPlay].Value = true;
    push(Custom::kOk);
    EXPECT_FALSE(player.gImageHide);
    EXPECT_TRUE(player.gQuickPlay);
    EXPECT_FALSE(player.gAutoPlay);
    EXPECT_EQ(written("IMAGEHIDE"), "OFF");
    EXPECT_EQ(written("QUICK"), "ON");
    EXPECT_EQ(written("AUTOPLAY"), "OFF");
}

/// DIAL-30
TEST_F(CustomDialog, OkLightsAndPutsOutTheLamps) {
    std::array<Picture, 4> pictures;
    for (Picture& each : pictures) each = makePicture(1, 1, {0});
    auto& images = panel().imgMainPanel;
    images[kAutoPlayLamp + 1].Picture = pictures[0];
    images[kAutoPlayLamp + 2].Picture = pictures[1];
    images[kQuickPlayLamp + 1].Picture = pictures[2];
    images[kQuickPlayLamp + 2].Picture = pictures[3];
    open();
    dialog().chkCustom[Custom::kAutoStart].Value = true;
    push(Custom::kOk);
    EXPECT_EQ(images[kAutoPlayLamp].Picture.get(), pictures[1]);
    EXPECT_EQ(images[kQuickPlayLamp].Picture.get(), pictures[2]);
    open();
    dialog().chkCustom[Custom::kAutoStart].Value = false;
    dialog().chkCustom[Custom::kQuickPlay].Value = true;
    push(Custom::kOk);
    EXPECT_EQ(images[kAutoPlayLamp].Picture.get(), pictures[0]);
    EXPECT_EQ(images[kQuickPlayLamp].Picture.get(), pictures[3]);
}

/// DIAL-18: Each binding is the code of its field's first character, and they are written in their order
/// SET-54
TEST_F(CustomDialog, EachKeyFieldBindsItsFirstCharacter) {
    using State = mdlDefinePublic::PlayerState;
    const std::vector<std::int16_t State::*> keys = {&State::gKeyPower,    &State::gKeyMin,       &State::gKeyRepeat,
                                                     &State::gKeyShuffle,  &State::gKeyPlay,      &State::gKeyPause,
                                                     &State::gKeyStop,     &State::gKeyPrev,      &State::gKeyNext,
                                                     &State::gKeyVolumeUp, &State::gKeyVolumeDown};
    open();
    for (std::size_t i = 0; i < keys.size(); ++i) field(i).Text = std::string(1, static_cast<char>('0' + i)) + "xyz";
    push(Custom::kOk);
    for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(player.*keys[i], '0' + static_cast<int>(i)) << i;
    EXPECT_EQ(written("MIN_Click"), "1");
    EXPECT_EQ(written("VOLUME_Down"), ":");
}

/// DIAL-19: An emptied field unbinds its command
TEST_F(CustomDialog, AnEmptiedKeyFieldUnbindsItsCommand) {
    open();
    field(4).Text = "";
    push(Custom::kOk);
    EXPECT_EQ(player.gKeyPlay, 0);
    EXPECT_EQ(written("PLAY_Click"), "");
}

/// SET-55
TEST_F(CustomDialog, ABlankIsAKeyAndComesBack) {
    open();
    field(5).Text = " ";
    push(Custom::kOk);
    EXPECT_EQ(player.gKeyPause, ' ');
    EXPECT_EQ(written("PAUSE_Click"), "\" \"");
}

struct Delay {
    const char* typed;
    int delayMs;
    const char* stored;
};
class DelayField : public CustomDialog, public ::testing::WithParamInterface<Delay> {};
/// SET-51: A delay of 0 is written and used as 1, a number as it was typed, anything else as 500
/// DIAL-21: A delay of 0 is stored as 1; a number as it is; an empty or other text gives 500
TEST_P(DelayField, IsStoredAsItMeans) {
    open();
    field(Custom::kDelay).Text = GetParam().typed;
    push(Custom::kOk);
    EXPECT_EQ(player.gDelayTime, GetParam().delayMs);
    EXPECT_EQ(written("DELAYTIME"), GetParam().stored);
}
INSTANTIATE_TEST_SUITE_P(Values, DelayField,
                         ::testing::Values(Delay{"0", 1, "1"}, Delay{"", 500, "500"}, Delay{"abc", 500, "500"},
                                           Delay{"250", 250, "250"}, Delay{"0250", 250, "0250"}, Delay{"00", 1, "1"},
                                           Delay{"32767", 32767, "32767"}, Delay{"99999", 32767, "32767"}));

/// DIAL-16: The delay field takes digits and Backspace and drops all else
TEST_F(CustomDialog, TheDelayFieldTakesDigitsAndBackspaceOnly) {
    open();
    const auto& takes = field(Custom::kDelay).KeyPress;
    for (int character = 1; character < 256; ++character) {
        const bool wanted = (character >= '0' && character <= '9') || character == 8;
        EXPECT_EQ(takes(character), wanted ? character : 0) << character;
    }
    EXPECT_EQ(takes(0x3042), 0);
    EXPECT_FALSE(static_cast<bool>(field(0).KeyPress));
}

/// DIAL-22: The skins' names are trimmed, and empty ones are DEFAULT.BMP and DEFAULT.CSV
TEST_F(CustomDialog, SkinNamesAreTrimmedAndEmptyOnesAreTheDefaults) {
    for (const char* bitmap : {"night.bmp", "DEFAULT.BMP"}) {
        machine.addPicture(std::string("/app/PANELSET/") + bitmap, 10, 10);
    }
    for (const char* text : {"my skin.csv", "DEFAULT.CSV"}) machine.files.add(std::string("/app/PANELSET/") + text);
    open();
    dialog().cboCustom[Custom::kBitmaps].ListIndex = 1;
    dialog().cboCustom[Custom::kTexts].Text = "  my skin.csv ";
    push(Custom::kOk);
    EXPECT_EQ(written("BITMAPFILE"), "night.bmp");
    EXPECT_EQ(written("TEXTFILE"), "my skin.csv");
    open();
    EXPECT_EQ(dialog().cboCustom[Custom::kBitmaps].Text.get(), "night.bmp") << "a second OK must not take it back";
    EXPECT_EQ(dialog().cboCustom[Custom::kTexts].Text.get(), "my skin.csv");
    dialog().cboCustom[Custom::kBitmaps].Text = "";
    dialog().cboCustom[Custom::kTexts].Text = "   ";
    push(Custom::kOk);
    EXPECT_EQ(written("BITMAPFILE"), "DEFAULT.BMP");
    EXPECT_EQ(written("TEXTFILE"), "DEFAULT.CSV");
}

/// DIAL-09: In a folder that is a root they are found without a second separator
TEST_F(CustomDialog, SkinsOfARootFolderAreFound) {
    machine.process.folder = "/";
    machine.files.add("/PANELSET/ROOT.BMP");
    open();
    EXPECT_EQ(dialog().cboCustom[Custom::kBitmaps].items(), Texts{"ROOT.BMP"});
}

struct Mode {
    int before;
    Custom::Option option;
    int after;
    const char* call;  ///< "" none
};
class WindowMode : public CustomDialog, public ::testing::WithParamInterface<Mode> {};
/// DIAL-24: Option 2 is mode 0 and takes a panel that was on top down
/// DIAL-25: Option 3 is mode 1 and puts the panel on top
/// DIAL-26: Option 4 is mode 2 and takes a panel that was on top down
/// DIAL-27: WINDOWPOS is written
/// SET-53
TEST_P(WindowMode, TakesEffectAtOnce) {
    player.gWindowPos = static_cast<std::int16_t>(GetParam().before);
    open();
    dialog().optCustom[GetParam().option].Value = true;
    push(Custom::kOk);
    EXPECT_EQ(player.gWindowPos, GetParam().after);
    EXPECT_EQ(written("WINDOWPOS"), std::to_string(GetParam().after));
    Texts calls;
    for (const std::string& each : machine.calls("windows")) {
        if (each.find("SetWindowPos") != std::string::npos) calls.push_back(each);
    }
    EXPECT_EQ(calls, *GetParam().call == 0 ? Texts{} : Texts{GetParam().call});
}
constexpr const char* kOnTop = "windows.SetWindowPos frmMainPanel -1 13";
constexpr const char* kNotOnTop = "windows.SetWindowPos frmMainPanel -2 13";
INSTANTIATE_TEST_SUITE_P(Modes, WindowMode,
                         ::testing::Values(Mode{0, Custom::kNormalMode, 0, ""},
                                           Mode{1, Custom::kNormalMode, 0, kNotOnTop},
                                           Mode{2, Custom::kNormalMode, 0, ""}, Mode{0, Custom::kMainWindow, 1, kOnTop},
                                           Mode{1, Custom::kMainWindow, 1, kOnTop},
                                           Mode{2, Custom::kMainWindow, 1, kOnTop}, Mode{0, Custom::kSubWindow, 2, ""},
                                           Mode{1, Custom::kSubWindow, 2, kNotOnTop},
                                           Mode{2, Custom::kSubWindow, 2, ""}));

/// SET-52: The volume device is written as the place in its list less 2, and only when it changed
/// SET-56, DIAL-28
TEST_F(CustomDialog, AnotherDeviceShowsTheRestartNoticeOnceAndCountsFromTheNextStart) {
    open();
    dialog().cboCustom[Custom::kDevices].ListIndex = 0;
    std::string beforeBox;
    machine.dialogs.whileUp = [&] { beforeBox = written("AUXTYPE") + " " + written("WINDOWPOS"); };
    push(Custom::kOk);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0],
              (FakeDialogs::Box{"サウンド出力の設定が変更されました。\r\n設定は次回の起動から有効になります。\r\n"
                                "直ちに[Corvane]を再起動して下さい。",
                                "Corvane", Buttons::Ok, Icon::Information}));
    EXPECT_EQ(beforeBox, "(none) 0");
    EXPECT_EQ(written("AUXTYPE"), "-2");
    EXPECT_EQ(player.gAuxType, -1);
}

/// DIAL-29: The same device shows and writes nothing
/// SET-52
TEST_F(CustomDialog, TheSameDeviceShowsNothing) {
    open();
    dialog().cboCustom[Custom::kDevices].ListIndex = 0;
    dialog().cboCustom[Custom::kDevices].ListIndex = 1;
    push(Custom::kOk);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_EQ(written("AUXTYPE"), "(none)");
}

/// DIAL-12: A click on a field's label or highlight gives it the focus
TEST_F(CustomDialog, AFieldIsReachedByItsLabelAndByItsHighlight) {
    open();
    machine.loop.enter([&] { dialog().lblCustom[3].Click.raise(); });
    machine.settle();
    EXPECT_EQ(machine.windows.focused(), &field(3));
    machine.loop.enter([&] { dialog().imgCustom[7].Click.raise(); });
    machine.settle();
    EXPECT_EQ(machine.windows.focused(), &field(7));
    machine.loop.enter([&] { dialog().lblCustom[Custom::kDelayHeading].Click.raise(); });
    machine.settle();
    EXPECT_EQ(machine.windows.focused(), &field(Custom::kDelay));
}

/// DIAL-13: With the focus its whole text is selected
TEST_F(CustomDialog, AFieldThatGetsTheFocusIsSelectedWhole) {
    player.gKeyStop = 0x3042;
    open();
    field(6).SetFocus();
    machine.settle();
    EXPECT_EQ(field(6).SelStart, 0);
    EXPECT_EQ(field(6).SelLength, 1);
    field(Custom::kDelay).SetFocus();
    machine.settle();
    EXPECT_EQ(field(Custom::kDelay).SelLength, 3);
}

/// DIAL-14: The highlight of the key field with the focus blinks every 500 ms and rests when it loses it
TEST_F(CustomDialog, TheHighlightOfTheFieldWithTheFocusBlinksTwiceASecond) {
    open();
    machine.advance(2000);
    EXPECT_FALSE(highlighted(2));
    field(2).SetFocus();
    machine.settle();
    for (const bool seen : {true, false, true, false}) {
        EXPECT_EQ(highlighted(2), seen);
        EXPECT_FALSE(highlighted(1));
        machine.advance(500);
    }
    field(4).SetFocus();
    machine.settle();
    EXPECT_FALSE(highlighted(2));
    EXPECT_TRUE(highlighted(4));
    machine.advance(500);
    EXPECT_FALSE(highlighted(4));
}

TEST_F(CustomDialog, TheFirstFieldBlinksToo) {
    open();
    field(0).SetFocus();
    machine.settle();
    EXPECT_TRUE(highlighted(0));
    machine.advance(500);
    EXPECT_FALSE(highlighted(0));
}

/// DIAL-15: The delay field blinks nothing
TEST_F(CustomDialog, TheDelayFieldBlinksNothing) {
    open();
    field(10).SetFocus();
    machine.settle();
    field(Custom::kDelay).SetFocus();
    machine.settle();
    machine.advance(1500);
    for (std::size_t i = 0; i < Custom::kKeys; ++i) EXPECT_FALSE(highlighted(i)) << i;
    EXPECT_FALSE(dialog().tmrCustom.Enabled);
}

/// DIAL-14
TEST_F(CustomDialog, ClosingWhileAHighlightBlinksLeavesNoTimer) {
    open();
    const int running = machine.timers.running();
    field(0).SetFocus();
    machine.settle();
    EXPECT_EQ(machine.timers.running(), running + 1);
    push(Custom::kCancel);
    EXPECT_EQ(machine.timers.running(), running);
}

/// DIAL-33
TEST_F(CustomDialog, WithAutoStartEitherButtonPlays) {
    machine.addSound("/x/a.wav", 3000);
    setList({"/x/a.wav"});
    for (const int button : {Custom::kOk, Custom::kCancel}) {
        player.gAutoPlay = true;
        open();
        push(button);
        EXPECT_EQ(state(), "playing") << button;
        mdlPublicFunction::CloseFile(player, false);
        machine.settle();
    }
    open();
    dialog().chkCustom[Custom::kAutoStart].Value = false;
    push(Custom::kOk);
    EXPECT_EQ(state(), "stopped");
}

/// DIAL-04
TEST_F(CustomDialog, ItDoesNotOpenWhilePlaying) {
    machine.addSound("/x/a.wav", 3000);
    setList({"/x/a.wav"});
    click(kPlay);
    machine.loop.enter([&] { panel().pctMainPanel.Click.raise(); });
    EXPECT_EQ(found(), nullptr);
}

/// DIAL-36
TEST_F(CustomDialog, TabReachesEachFieldOnce) {
    open();
    std::set<int> places;
    for (const Control* each : dialog().controls()) {
        if (each->TabIndex < 0) continue;
        EXPECT_TRUE(places.insert(each->TabIndex).second) << each->name() << each->index();
    }
    EXPECT_EQ(places.size(), 5U + 2U + 12U + 3U + 3U);
}

/// DIAL-37: Nothing overlaps and nothing leaves its frame, also with a larger system font
TEST_F(CustomDialog, NothingOverlapsAndNothingLeavesItsFrame) {
    open();
    for (const Control* one : dialog().controls()) {
        if (one->kind() == ControlKind::Timer) continue;
        const Control& around = one->Container != nullptr ? *one->Container : dialog();
        EXPECT_GE(one->Left.get(), 0) << one->name() << one->index();
        EXPECT_LE(one->Left + one->Width, around.Width.get()) << one->name() << one->index();
        EXPECT_LE(one->Top + one->Height, around.Height.get()) << one->name() << one->index();
        for (const Control* other : dialog().controls()) {
            if (other == one || other->Container != one->Container || other->kind() == ControlKind::Timer) continue;
            const bool apart = one->Left + one->Width <= other->Left || other->Left + other->Width <= one->Left ||
                               one->Top + one->Height <= other->Top || other->Top + other->Height <= one->Top;
            EXPECT_TRUE(apart) << one->name() << one->index() << " over " << other->name() << other->index();
        }
    }
}

}  // namespace
}  // namespace corvane
