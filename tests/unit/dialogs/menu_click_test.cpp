// SPDX-License-Identifier: GPL-3.0-or-later
// The popup menu: its tree, its preparation and its commands.
#include <ostream>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class Menu : public PanelHands {
protected:
    MenuWindowControls& menu() { return *player.forms.find<MenuWindowControls>(); }
    bool panelIsThere() { return player.forms.find<MainPanelControls>() != nullptr; }
    void choose(MenuItem& item) {
        machine.dialogs.choose(item);
        machine.settle();
    }
    void popUp() {
        act([this] { showPopupMenu(player); });
    }
    static Calls captions(const MenuItem& item) {
        Calls result;
        for (const MenuItem* child : item.children) result.push_back(child->Caption);
        return result;
    }
};

/// MENU-01: The tree has its items in their order
TEST_F(Menu, HasItsTree) {
    setUpPanel();
    EXPECT_EQ(menu().mnuMenu.Caption.get(), "Menu");
    EXPECT_EQ(captions(menu().mnuMenu), (Calls{"Play Command", "-", "Play Mode", "-", "Play Custom", "-", "Min",
                                               "Menu Exit", "-", "Help", "Power OFF"}));
    EXPECT_EQ(captions(menu().mnuSub[0]),
              (Calls{"Play", "Pause", "Stop", "Prev", "Next", "-", "Volume Up", "Volume Down"}));
    EXPECT_EQ(captions(menu().mnuSub[2]), (Calls{"Repeat", "Shuffle"}));
    EXPECT_EQ(captions(menu().mnuSub[4]),
              (Calls{"Start Position", "Stop Position", "-", "Custom ON", "Custom Repeat"}));
    EXPECT_EQ(menu().mnuSub[8].Caption.get(), "Min");
    EXPECT_EQ(menu().mnuSub[12].Caption.get(), "Power OFF");
}

// --- Preparing -------------------------------------------------------------------------------------------------------

/// MENU-04: Play shows while its button is enabled, Pause while its own is
/// MENU-06: They are enabled while a movie, sound or track is paused, and disabled otherwise, for pictures always
/// MENU-08
TEST_F(Menu, PlayPauseAndPositionsFollowKindAndState) {
    for (const char* path : {kPicture, kMovie, kSound, kTrack}) {
        for (const std::string before : {"stopped", "playing", "paused"}) {
            SCOPED_TRACE(path + (" " + before));
            bring(path, before);
            popUp();
            EXPECT_EQ(machine.calls("dialogs"), Calls{"dialogs.popUp mnuMenu"});
            EXPECT_EQ(menu().PlayCmd[0].Visible, before != "playing");
            EXPECT_EQ(menu().PlayCmd[1].Visible, before != "paused");
            const bool settable = before == "paused" && path != kPicture;
            EXPECT_EQ(menu().PlayCustom[0].Enabled, settable);
            EXPECT_EQ(menu().PlayCustom[1].Enabled, settable);
            for (const int always : {2, 3, 4, 6, 7}) {
                const MenuItem& item = menu().PlayCmd.at(static_cast<std::size_t>(always));
                EXPECT_TRUE(item.Visible && item.Enabled) << item.Caption.get();
            }
            act([this] { CloseFile(player, false); });
        }
    }
}

/// MENU-02: Repeat is checked while it is on; what can be switched on and off is checkable while it is off as well
TEST_F(Menu, RepeatIsCheckedWhileItIsOn) {
    setUpPanel();
    for (const bool on : {true, false}) {
        player.gRepeat = on;
        popUp();
        EXPECT_EQ(menu().PlayMode[0].Checked, on);
    }
}

/// MENU-03: Item 8 reads Min for a normal panel, else Max
TEST_F(Menu, MinReadsMaxUnlessThePanelIsNormal) {
    setUpPanel();
    for (const WindowState each : {WindowState::Minimized, WindowState::Normal, WindowState::Maximized}) {
        panel().WindowState = each;
        popUp();
        EXPECT_EQ(menu().mnuSub[8].Caption.get(), each == WindowState::Normal ? "Min" : "Max");
    }
}

/// MENU-05: Start and Stop Position are checked for a file that has them
TEST_F(Menu, PositionsAreCheckedForTheFileThatHasThem) {
    setUp(kSound);
    player.gStartPosition[1] = 5;
    player.gStopPosition[2] = -7;
    for (std::int16_t index = 0; index < 3; ++index) {
        player.gFileIndex = index;
        popUp();
        EXPECT_EQ(menu().PlayCustom[0].Checked, index == 1);
        EXPECT_EQ(menu().PlayCustom[1].Checked, index == 2);
    }
}

/// MENU-07: Custom ON is checked in modes 1 and 2, Custom Repeat in mode 2
TEST_F(Menu, TheCustomModesChecks) {
    setUpPanel();
    for (const std::int16_t mode : {kCustomRepeat, kCustomPlay, kCustomOff}) {
        player.gCustomMode = mode;
        popUp();
        EXPECT_EQ(menu().PlayCustom[3].Checked, mode != kCustomOff);
        EXPECT_EQ(menu().PlayCustom[4].Checked, mode == kCustomRepeat);
    }
}

// --- Transport -------------------------------------------------------------------------------------------------------

struct Row {
    const char* before;  ///< state
    std::size_t item;    ///< of PlayCmd
    const char* after;
    int index;  ///< of the file afterwards; 1 before, of 3
    std::vector<std::string> calls;
};

void PrintTo(const Row& row, std::ostream* out) { *out << "PlayCmd " << row.item << " " << row.before; }

class MenuTransport : public Menu, public ::testing::WithParamInterface<Row> {};

/// MENU-09: Play plays while the pause button is enabled, one above the button that the key looks at
/// MENU-11: Stop closes and keeps no picture
/// MENU-14: Next is next
/// MENU-10, MENU-12
TEST_P(MenuTransport, DoesItsCommand) {
    const Row& row = GetParam();
    setUp(kPicture);
    player.gFileIndex = 1;
    if (std::string(row.before) != "stopped") act([this] { PlayFile(player); });
    machine.advance(5000);
    if (std::string(row.before) == "paused") act([this] { PauseFile(player); });
    machine.clearCalls();
    choose(menu().PlayCmd.at(row.item));
    EXPECT_EQ(state(), row.after);
    EXPECT_EQ(player.gFileIndex, row.index);
    EXPECT_EQ(mediaCalls(), row.calls);
    EXPECT_FALSE(player.gBackPending);
}

const std::vector<std::string> kNothing;
const std::vector<std::string> kClosed = {"mci.Command Stop", "mci.Command Close"};

std::vector<std::string> opened(const char* path) {
    return {"mci.Command Stop", "mci.Command Close", std::string("mci.FileName ") + path,
            "mci.Command Open", "mci.TimeFormat 0",  "mci.UpdateInterval 100",
            "mci.Command Play"};
}

std::vector<std::string> nextOpened(const char* path) {
    std::vector<std::string> calls = kClosed;
    for (const std::string& call : opened(path)) calls.push_back(call);
    return calls;
}

std::vector<std::string> nextDecoded(const char* path) {
    std::vector<std::string> calls = kClosed;
    calls.push_back(std::string("pictures.decode ") + path);
    return calls;
}

// "Play" looks at the pause button and "Pause" at the stop button, on purpose.
INSTANTIATE_TEST_SUITE_P(
    Table, MenuTransport,
    ::testing::Values(
        Row{"stopped", 0, "playing", 1, opened("/m/second.wav")},
        Row{"playing", 0, "playing", 1, opened("/m/second.wav")}, Row{"paused", 0, "paused", 1, kNothing},
        Row{"stopped", 1, "stopped", 1, kNothing}, Row{"playing", 1, "paused", 1, {"mci.Command Pause"}},
        Row{"paused", 1, "paused", 1, kNothing}, Row{"stopped", 2, "stopped", 1, kNothing},
        Row{"playing", 2, "stopped", 1, kClosed}, Row{"paused", 2, "stopped", 1, kClosed},
        Row{"stopped", 3, "stopped", 0, kNothing}, Row{"playing", 3, "playing", 0, nextDecoded("/m/view.bmp")},
        Row{"paused", 3, "paused", 1, {"mci.To 4000", "mci.Command Seek"}}, Row{"stopped", 4, "stopped", 2, kNothing},
        Row{"playing", 4, "playing", 2, nextOpened("/m/third.wav")},
        Row{"paused", 4, "paused", 1, {"mci.To 6000", "mci.Command Seek"}}, Row{"playing", 5, "playing", 1, kNothing}));

/// MENU-10: Pause pauses while the stop button is enabled, one above too
TEST_F(Menu, PauseLooksAtTheStopButton) {
    bring(kSound, "playing");
    button(kStop).Enabled = false;
    choose(menu().PlayCmd[1]);
    EXPECT_EQ(state(), "playing");
}

/// MENU-12: Prev sets the flag of a first press and goes back: it changes the file at once and never restarts it
TEST_F(Menu, PrevNeverRestartsTheFile) {
    bring(kSound, "playing");
    player.gFileIndex = 2;
    choose(menu().PlayCmd[3]);
    EXPECT_EQ(player.gFileIndex, 1);
    choose(menu().PlayCmd[3]);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.clearCalls();
    machine.advance(2000);
    EXPECT_TRUE(mediaCalls().empty()) << "no press is left that would play it again";
}

/// MENU-13: Prev stays on file 0 without repeat and goes to the last with it
TEST_F(Menu, PrevOnTheFirstFileFollowsRepeat) {
    bring(kSound, "playing");
    choose(menu().PlayCmd[3]);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(state(), "playing");
    player.gRepeat = true;
    choose(menu().PlayCmd[3]);
    EXPECT_EQ(player.gFileIndex, 2);
}

/// MENU-12
TEST_F(Menu, PrevOfAPausedPictureGoesBackAtOnce) {
    machine.addPicture("/m/other.bmp", 100, 80);
    setUp(kPicture);
    setList({kPicture, "/m/other.bmp"});
    player.gFileIndex = 1;
    act([this] {
        PlayFile(player);
        PauseFile(player);
    });
    choose(menu().PlayCmd[3]);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(state(), "playing");
}

/// MOVE-24
TEST_F(Menu, PrevWithAnEmptyListLeavesNoPress) {
    setUpPanel();
    choose(menu().PlayCmd[3]);
    EXPECT_FALSE(player.gBackPending);
    setUp(kSound);
    act([this] { PlayFile(player); });
    choose(menu().PlayCmd[4]);
    click(kPrev);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1) << "a first press, not a second one";
}

/// MENU-15: Volume Up raises, Volume Down lowers
TEST_F(Menu, TheVolumeItems) {
    setUp(kSound);
    player.gVolume = 7;
    choose(menu().PlayCmd[6]);
    EXPECT_EQ(player.gVolume, 8);
    choose(menu().PlayCmd[7]);
    choose(menu().PlayCmd[7]);
    EXPECT_EQ(player.gVolume, 6);
    EXPECT_EQ(machine.calls("sound").size(), 3U);
}

// --- Modes, window, help, power --------------------------------------------------------------------------------------

/// MENU-16: Repeat toggles as its button does, pictures included
TEST_F(Menu, RepeatTogglesWithItsPictures) {
    setUp(kSound);
    const auto& images = panel().imgMainPanel;
    for (const bool on : {true, false, true}) {
        choose(menu().PlayMode[0]);
        EXPECT_EQ(player.gRepeat, on);
        EXPECT_EQ(button(kRepeat).Picture.get(), images[on ? kRepeatOnImage : kRepeatOffImage].Picture.get());
        EXPECT_EQ(images[kRepeatLamp].Picture.get(), images[kRepeatLamp + (on ? 2 : 1)].Picture.get());
    }
}

/// MENU-17: Shuffle shuffles three files and more; with two it does nothing
TEST_F(Menu, ShuffleNeedsThreeFiles) {
    setUp(kSound);
    for (std::int16_t count = 0; count <= 4; ++count) {
        SCOPED_TRACE(count);
        player.gFileCount = count;
        machine.clearCalls();
        choose(menu().PlayMode[1]);
        EXPECT_EQ(machine.calls("random").size(), count >= 3 ? 1U : 0U);
        EXPECT_FALSE(player.gRepeat);
    }
}

/// MENU-27: Min minimises a normal panel; Max makes it normal again
/// MENU-03
TEST_F(Menu, MinMinimisesAndMaxRestores) {
    setUpPanel();
    choose(menu().mnuSub[8]);
    EXPECT_EQ(panel().WindowState.get(), WindowState::Minimized);
    popUp();
    EXPECT_EQ(menu().mnuSub[8].Caption.get(), "Max");
    choose(menu().mnuSub[8]);
    EXPECT_EQ(panel().WindowState.get(), WindowState::Normal);
    popUp();
    EXPECT_EQ(menu().mnuSub[8].Caption.get(), "Min");
    panel().WindowState = WindowState::Maximized;
    choose(menu().mnuSub[8]);
    EXPECT_EQ(panel().WindowState.get(), WindowState::Normal);
}

/// MENU-28: Help opens the help, as F1 does
TEST_F(Menu, HelpOpensTheHelp) {
    setUpPanel();
    choose(menu().mnuSub[11]);
    EXPECT_EQ(machine.calls("dialogs"), Calls{"dialogs.help"});
}

/// MENU-29: Power OFF disables power, closes and ends the panel
TEST_F(Menu, PowerOffStopsAndEndsThePanel) {
    for (const char* before : {"stopped", "playing", "paused"}) {
        SCOPED_TRACE(before);
        bring(kMovie, before);
        choose(menu().mnuSub[12]);
        EXPECT_FALSE(panelIsThere());
        EXPECT_EQ(machine.media.liveControls(), 0);
        EXPECT_TRUE(machine.windows.isAttached("frmStartup"));
        player.forms.unload(FormId::Startup);
    }
}

/// MENU-30: Menu Exit and the other items only close the menu
TEST_F(Menu, TheOtherItemsOnlyCloseTheMenu) {
    bring(kSound, "playing");
    for (const std::size_t each : {0U, 1U, 2U, 3U, 4U, 7U, 9U, 10U}) choose(menu().mnuSub[each]);
    choose(menu().PlayCmd[5]);
    choose(menu().PlayCustom[2]);
    EXPECT_TRUE(machine.calls().empty());
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gCustomMode, kCustomOff);
    EXPECT_EQ(panel().WindowState.get(), WindowState::Normal);
}

/// MENU-31: An item that is chosen as the panel goes does nothing
TEST_F(Menu, AnItemChosenAsThePanelGoesDoesNothing) {
    bring(kSound, "playing");
    std::vector<MenuItem*> items;
    for (MenuItem& item : menu().mnuSub) items.push_back(&item);
    for (MenuItem& item : menu().PlayCmd) items.push_back(&item);
    for (MenuItem& item : menu().PlayMode) items.push_back(&item);
    for (MenuItem& item : menu().PlayCustom) items.push_back(&item);
    choose(menu().mnuSub[12]);
    player.forms.unload(FormId::Startup);
    machine.clearCalls();
    for (MenuItem* item : items) choose(*item);
    EXPECT_TRUE(machine.calls("mci").empty());
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    EXPECT_FALSE(player.gBackPending);
    EXPECT_FALSE(player.gRepeat);
}

}  // namespace
}  // namespace corvane
