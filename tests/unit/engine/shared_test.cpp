// SPDX-License-Identifier: GPL-3.0-or-later
// What several forms share: keys, repeat, the menu's preparation, drops, z-order.
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Shared : public PlayerFixture {
protected:
    Shared() {
        machine.addSound("/m/one.wav", 60000);
        machine.addSound("/m/two.wav", 60000);
        machine.addSound("/m/three.wav", 60000);
    }
    void setUp() {
        setUpPanel();
        setList({"/m/one.wav", "/m/two.wav", "/m/three.wav"});
    }
    MenuWindowControls& menu() { return *player.forms.find<MenuWindowControls>(); }
};

/// KEY-04, KEY-11
TEST_F(Shared, TheCommandKeysDoWhatTheirButtonsDo) {
    setUp();
    EXPECT_TRUE(commandKey(player, 'z'));
    EXPECT_EQ(state(), "playing");
    EXPECT_TRUE(commandKey(player, 'x'));
    EXPECT_EQ(state(), "paused");
    EXPECT_TRUE(commandKey(player, 'c'));
    EXPECT_EQ(state(), "stopped");
    EXPECT_TRUE(commandKey(player, '.'));
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_TRUE(commandKey(player, ','));
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_TRUE(commandKey(player, 'R'));
    EXPECT_TRUE(player.gRepeat);
    player.gVolume = 5;
    EXPECT_TRUE(commandKey(player, 'u'));
    EXPECT_EQ(player.gVolume, 6);
    EXPECT_TRUE(commandKey(player, 'd'));
    EXPECT_EQ(player.gVolume, 5);
    EXPECT_TRUE(commandKey(player, 'M'));
    EXPECT_EQ(panel().WindowState.get(), WindowState::Minimized);
    EXPECT_TRUE(commandKey(player, 'P'));
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
}

/// KEY-12
TEST_F(Shared, KeysAreExactCharacters) {
    setUp();
    EXPECT_FALSE(commandKey(player, 'p'));
    EXPECT_FALSE(commandKey(player, 'Z'));
    EXPECT_NE(player.forms.find<MainPanelControls>(), nullptr);
}

/// KEY-13
TEST_F(Shared, AKeyThatIsNotSetNeverMatches) {
    setUp();
    player.gKeyPower = 0;
    EXPECT_FALSE(commandKey(player, 0));
    EXPECT_NE(player.forms.find<MainPanelControls>(), nullptr);
}

/// KEY-01
TEST_F(Shared, OfTwoCommandsOnOneKeyTheEarlierWins) {
    setUp();
    player.gKeyRepeat = 'z';
    commandKey(player, 'z');
    EXPECT_TRUE(player.gRepeat);
    EXPECT_EQ(state(), "stopped");
    player.gKeyVolumeUp = 'd';
    player.gVolume = 5;
    commandKey(player, 'd');
    EXPECT_EQ(player.gVolume, 6);
}

TEST_F(Shared, PlayAndPauseKeysNeedTheirButtons) {
    setUp();
    PlayFile(player);
    machine.clearCalls();
    EXPECT_TRUE(commandKey(player, 'z'));
    EXPECT_TRUE(machine.calls("mci").empty());
    PauseFile(player);
    machine.clearCalls();
    EXPECT_TRUE(commandKey(player, 'x'));
    EXPECT_TRUE(machine.calls("mci").empty());
}

/// KEY-05: Shuffle: shuffles more than two files, and fewer not
TEST_F(Shared, TheShuffleKeyNeedsMoreThanTwoFiles) {
    setUp();
    player.gFileCount = 2;
    EXPECT_TRUE(commandKey(player, 'S'));
    EXPECT_TRUE(machine.calls("random").empty());
    player.gFileCount = 3;
    EXPECT_TRUE(commandKey(player, 'S'));
    EXPECT_EQ(machine.calls("random").size(), 1U);
}

/// BTN-03: Repeat off becomes on: the button takes image 5's picture and the lamp image 17's
/// BTN-04: Repeat on becomes off: the button takes image 4's picture and the lamp image 16's
TEST_F(Shared, RepeatSwitchesTheButtonAndTheLamp) {
    setUp();
    const auto& images = panel().imgMainPanel;
    ASSERT_FALSE(images[kRepeatOnImage].Picture.get().empty());
    toggleRepeat(player);
    EXPECT_TRUE(player.gRepeat);
    EXPECT_EQ(button(kRepeat).Picture.get(), images[kRepeatOnImage].Picture.get());
    EXPECT_EQ(images[kRepeatLamp].Picture.get(), images[kRepeatLamp + 2].Picture.get());
    toggleRepeat(player);
    EXPECT_FALSE(player.gRepeat);
    EXPECT_EQ(button(kRepeat).Picture.get(), images[kRepeatOffImage].Picture.get());
    EXPECT_EQ(images[kRepeatLamp].Picture.get(), images[kRepeatLamp + 1].Picture.get());
}

/// BTN-01
TEST_F(Shared, PowerOffClosesAndUnloadsThePanel) {
    setUp();
    PlayFile(player);
    machine.loop.enter([this] { powerOff(player); });
    EXPECT_EQ(player.forms.find<MainPanelControls>(), nullptr);
    EXPECT_EQ(machine.media.liveControls(), 0);
    powerOff(player);
}

/// KEY-20
TEST_F(Shared, AltF4DoesNotOpenTheMenu) {
    setUp();
    machine.loop.enter([this] { fixedKeyDown(player, {kKeyAlt, kAltMask}); });
    EXPECT_TRUE(player.gAltMenuArmed);
    machine.loop.enter([this] { fixedKeyDown(player, {kKeyF4, kAltMask}); });
    EXPECT_FALSE(player.gAltMenuArmed);
    machine.loop.enter([this] { fixedKeyUp(player, {kKeyF4, kAltMask}); });
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
}

/// MENU-08: Then the menu pops up
TEST_F(Shared, TheMenuIsPreparedForThePlayersState) {
    setUp();
    showPopupMenu(player);
    EXPECT_EQ(machine.dialogs.poppedUp, &menu().mnuMenu);
    EXPECT_TRUE(menu().PlayCmd[0].Visible);
    EXPECT_TRUE(menu().PlayCmd[1].Visible);
    EXPECT_EQ(menu().mnuSub[8].Caption.get(), "Min");
    EXPECT_FALSE(menu().PlayCustom[0].Enabled);
    EXPECT_FALSE(menu().PlayMode[0].Checked);

    PlayFile(player);
    PauseFile(player);
    player.gRepeat = true;
    player.gStartPosition[0] = 5;
    player.gCustomMode = kCustomRepeat;
    panel().WindowState = WindowState::Minimized;
    showPopupMenu(player);
    EXPECT_FALSE(menu().PlayCmd[1].Visible);
    EXPECT_EQ(menu().mnuSub[8].Caption.get(), "Max");
    EXPECT_TRUE(menu().PlayCustom[0].Enabled);
    EXPECT_TRUE(menu().PlayCustom[0].Checked);
    EXPECT_FALSE(menu().PlayCustom[1].Checked);
    EXPECT_TRUE(menu().PlayCustom[3].Checked);
    EXPECT_TRUE(menu().PlayCustom[4].Checked);
    EXPECT_TRUE(menu().PlayMode[0].Checked);
}

/// MOVE-44: A window is put in its order without size, move or activation: flags 53 to show, 93 to hide, hexadecimal
TEST_F(Shared, ZOrderNeitherMovesNorActivates) {
    setUp();
    SetWindowZOrder(player, panel(), kTopMost, 1);
    SetWindowZOrder(player, panel(), kNotTopMost, 0);
    EXPECT_EQ(machine.calls("windows"), (std::vector<std::string>{"windows.SetWindowPos frmMainPanel -1 53",
                                                                  "windows.SetWindowPos frmMainPanel -2 93"}));
}

/// COM-01: Every box is titled Corvane
/// COM-02: While a box is up timers, media events, drops and posted events wait
TEST_F(Shared, ABoxIsTitledAndHoldsTheLoop) {
    setUp();
    machine.dialogs.answers = {Answer::Cancel};
    bool ran = false;
    machine.dialogs.whileUp = [&] {
        machine.loop.post([&] { ran = true; });
        machine.advance(5000);
        EXPECT_FALSE(ran);
    };
    EXPECT_EQ(messageBox(player, "text", Buttons::OkCancel, Icon::Question), Answer::Cancel);
    EXPECT_EQ(machine.dialogs.boxes.back(), (FakeDialogs::Box{"text", "Corvane", Buttons::OkCancel, Icon::Question}));
    machine.settle();
    EXPECT_TRUE(ran);
}

/// START-22
TEST_F(Shared, CaptionsWrittenBeforeThePanelLoadsAreThereWhenItShows) {
    setPanelCaption(player, kTotalLabel, "12");
    setUpPanel();
    EXPECT_EQ(label(kTotalLabel), "12");
    setPanelCaption(player, kTotalLabel, "13");
    EXPECT_EQ(label(kTotalLabel), "13");
}

// --- Drops -----------------------------------------------------------------------------------------------------------

/// DROP-02: They replace the list, in the order in which they come
/// DROP-03: The 26 accepted kinds are taken in any case of letters, .gif and .Mp3 among them; others are skipped
/// DROP-04: A file in a folder with a dot, such as My.Music, is skipped
/// DROP-06: The title is the name that the folder gives, hidden files included, cut at its first dot
/// DROP-07: A file that is gone is skipped
/// DROP-11: With files label 4 shows 001 and label 5 the first title; without they are emptied
/// DROP-13: The index is 0
/// DROP-14: Nothing starts to play, and what plays is not stopped
/// DROP-12
TEST_F(Shared, ADropReplacesTheListAndStartsNothing) {
    setUp();
    player.gFileIndex = 2;
    PlayFile(player);
    player.gStopPosition[0] = 7;
    machine.advance(2000);
    machine.files.add("/new/Song.Mp3");
    machine.files.add("/new/a.gif");
    machine.files.add("/My.Music/song.mp3");
    machine.files.add("/new/text.txt");
    machine.clearCalls();
    EXPECT_EQ(
        takeFiles(player,
                  {true, {"/new/Song.Mp3", "/My.Music/song.mp3", "/new/text.txt", "/new/a.gif", "/new/gone.wav"}}),
        2);
    EXPECT_EQ(player.gFileCount, 2);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(player.gFilePath[1], "/new/a.gif");
    EXPECT_EQ(player.gFileTitle[0], "Song");
    EXPECT_EQ(label(kNumberLabel), "001");
    EXPECT_EQ(label(kTitleLabel), "Song");
    EXPECT_EQ(label(kTotalLabel), "2");
    EXPECT_EQ(label(kTimeLabel), "");
    EXPECT_EQ(player.gStopPosition[0], 0);
    EXPECT_TRUE(machine.calls("mci").empty());
    EXPECT_EQ(state(), "playing") << "what plays is not stopped";
}

/// DROP-09: The count is what was taken; a drop of other data, such as a text, empties list and display
/// DROP-11
TEST_F(Shared, ADropOfNoFilesEmptiesTheList) {
    setUp();
    EXPECT_EQ(takeFiles(player, {false, {}}), 0);
    EXPECT_EQ(player.gFileCount, 0);
    EXPECT_EQ(label(kNumberLabel), "");
    EXPECT_EQ(label(kTitleLabel), "");
    EXPECT_EQ(label(kTotalLabel), "0");
}

TEST_F(Shared, ADropOfNamesWithoutFilesIsNotLookedUpForEver) {
    setUp();
    DropData dropped{true, {}};
    for (int i = 0; i < 100000; ++i) dropped.files.push_back("/gone/f" + std::to_string(i) + ".wav");
    machine.log.clear();
    EXPECT_EQ(takeFiles(player, dropped), 0);
    EXPECT_LE(machine.log.allCalls("files").size(), 2000U);

    dropped.files.resize(500);  // so many, and the next one is still found
    machine.files.add("/m/here.wav");
    dropped.files.push_back("/m/here.wav");
    EXPECT_EQ(takeFiles(player, dropped), 1);
}

/// DROP-08: The 257th file and later ones are not taken: of 300 the first 256 stay
TEST_F(Shared, ADropTakes256FilesAtMost) {
    setUp();
    DropData dropped{true, {}};
    for (int i = 0; i < 300; ++i) {
        dropped.files.push_back("/many/f" + std::to_string(i) + ".wav");
        machine.files.add(dropped.files.back());
    }
    EXPECT_EQ(takeFiles(player, dropped), 256);
    EXPECT_EQ(player.gFilePath[255], "/many/f255.wav");
}

/// DROP-05: A doubled backslash at the third character loses one
TEST_F(Shared, ADoubledSeparatorBehindTheDriveLosesOne) {
    machine.files.slash = '\\';
    machine.files.caseSensitive = false;
    machine.files.add("C:\\song.wav");
    setUpPanel();
    EXPECT_EQ(takeFiles(player, {true, {"C:\\\\song.wav"}}), 1);
    EXPECT_EQ(player.gFilePath[0], "C:\\song.wav");
    EXPECT_EQ(player.gFileTitle[0], "song");
}

}  // namespace
}  // namespace corvane
