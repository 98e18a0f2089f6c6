// SPDX-License-Identifier: GPL-3.0-or-later
// The panel's buttons and free areas: clicks in each state, the right button, dragging, the focus.
#include <ostream>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

const std::vector<const char*> kStates = {"stopped", "playing", "paused"};

class Commands : public PanelHands {
protected:
    bool panelIsThere() { return player.forms.find<MainPanelControls>() != nullptr; }
    Form* window(const char* name) { return machine.windows.find(name); }
    bool poppedUp() { return machine.dialogs.poppedUp != nullptr; }
};

// --- Transport buttons -----------------------------------------------------------------------------------------------

struct ClickRow {
    const char* before;  ///< state
    int button;
    const char* after;
    int index;  ///< of the file afterwards; 1 before, of 3
    std::vector<std::string> calls;
};

void PrintTo(const ClickRow& row, std::ostream* out) { *out << "button " << row.button << " " << row.before; }

class TransportClick : public Commands, public ::testing::WithParamInterface<ClickRow> {};

/// BTN-06: Play plays
/// BTN-07: Pause pauses
/// BTN-08: Stop closes and keeps no picture
/// MOVE-34: With nothing open a close does nothing
/// BTN-09, BTN-10, MOVE-05
TEST_P(TransportClick, DoesItsCommand) {
    const ClickRow& row = GetParam();
    setUp(kPicture);
    player.gFileIndex = 1;
    if (std::string(row.before) != "stopped") act([this] { PlayFile(player); });
    machine.advance(5000);
    if (std::string(row.before) == "paused") act([this] { PauseFile(player); });
    machine.clearCalls();
    ASSERT_TRUE(button(row.button).Enabled) << "a disabled button is not clicked";
    click(row.button);
    machine.settle();
    EXPECT_EQ(state(), row.after);
    EXPECT_EQ(player.gFileIndex, row.index);
    EXPECT_EQ(mediaCalls(), row.calls);
}

INSTANTIATE_TEST_SUITE_P(
    Table, TransportClick,
    ::testing::Values(ClickRow{"stopped", kPlay, "playing", 1, opened("/m/second.wav")},
                      ClickRow{"paused", kPlay, "playing", 1, {"mci.Command Play"}},
                      ClickRow{"stopped", kPause, "stopped", 1, {}},
                      ClickRow{"playing", kPause, "paused", 1, {"mci.Command Pause"}},
                      ClickRow{"stopped", kStop, "stopped", 1, {}}, ClickRow{"playing", kStop, "stopped", 1, kClosed},
                      ClickRow{"paused", kStop, "stopped", 1, kClosed}, ClickRow{"stopped", kPrev, "stopped", 0, {}},
                      ClickRow{"playing", kPrev, "playing", 1, {}},
                      ClickRow{"paused", kPrev, "paused", 1, {"mci.To 4000", "mci.Command Seek"}},
                      ClickRow{"stopped", kNext, "stopped", 2, {}},
                      ClickRow{"playing", kNext, "playing", 2, closedAndOpened("/m/third.wav")},
                      ClickRow{"paused", kNext, "paused", 1, {"mci.To 6000", "mci.Command Seek"}}));

/// BTN-16: Play is disabled while playing, pause while paused, the editor's button unless stopped
/// MOVE-01: Play and pause both enabled is stopped, play disabled is playing, pause disabled is paused
/// OPEN-03
TEST_F(Commands, EachStateEnablesItsButtons) {
    for (const char* before : kStates) {
        SCOPED_TRACE(before);
        const bool stopped = std::string(before) == "stopped";
        bring(kSound, before);
        for (int index = kPower; index <= kVolumeUp; ++index) {
            SCOPED_TRACE(index);
            bool enabled = true;
            if (index == kPlay) enabled = std::string(before) != "playing";
            if (index == kPause) enabled = std::string(before) != "paused";
            if (index == kEditor) enabled = stopped;
            EXPECT_EQ(button(index).Enabled, enabled);
        }
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-15: With an empty list the transport buttons do nothing
/// OPEN-01
TEST_F(Commands, AnEmptyListLeavesTheTransportAsItIs) {
    setUpPanel();
    for (const int index : {kPlay, kPause, kStop, kPrev, kNext, kShuffle}) {
        SCOPED_TRACE(index);
        click(index);
        machine.advance(1000);
        EXPECT_EQ(state(), "stopped");
        EXPECT_TRUE(mediaCalls().empty());
        EXPECT_TRUE(machine.calls("random").empty());
    }
}

// --- The other buttons -----------------------------------------------------------------------------------------------

/// BTN-01: Power is disabled, closes what is open and ends the panel, in each state
TEST_F(Commands, PowerOffStopsAndEndsThePanelInEachState) {
    for (const char* before : kStates) {
        SCOPED_TRACE(before);
        bring(kMovie, before);
        machine.clearCalls();
        click(kPower);
        EXPECT_FALSE(panelIsThere());
        EXPECT_EQ(machine.media.liveControls(), 0);
        EXPECT_TRUE(machine.windows.isAttached("frmStartup")) << "the closing animation";
        player.forms.unload(FormId::Startup);
    }
}

/// BTN-02: Minimise minimises the panel and leaves the playing as it is
TEST_F(Commands, MinimiseLeavesTheStateAsItIs) {
    for (const char* before : kStates) {
        SCOPED_TRACE(before);
        bring(kSound, before);
        click(kMinimise);
        EXPECT_EQ(panel().WindowState.get(), WindowState::Minimized);
        EXPECT_EQ(state(), before);
        EXPECT_TRUE(mediaCalls().empty());
        panel().WindowState = WindowState::Normal;
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-03, BTN-04
TEST_F(Commands, RepeatTogglesInEachState) {
    for (const char* before : kStates) {
        SCOPED_TRACE(before);
        bring(kSound, before);
        click(kRepeat);
        EXPECT_TRUE(player.gRepeat);
        EXPECT_EQ(button(kRepeat).Picture.get(), panel().imgMainPanel[kRepeatOnImage].Picture.get());
        click(kRepeat);
        EXPECT_FALSE(player.gRepeat);
        EXPECT_EQ(state(), before);
        EXPECT_TRUE(mediaCalls().empty());
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-05: Shuffle shuffles a list of three and more; with none, one or two it does nothing
TEST_F(Commands, ShuffleNeedsThreeFiles) {
    setUp(kSound);
    for (std::int16_t count = 0; count <= 4; ++count) {
        SCOPED_TRACE(count);
        player.gFileCount = count;
        player.gFileIndex = 0;
        machine.clearCalls();
        click(kShuffle);
        EXPECT_EQ(machine.calls("random").size(), count > 2 ? 1U : 0U);
    }
}

/// SEQ-17
TEST_F(Commands, ShuffleWhilePlayingPlaysOn) {
    bring(kSound, "playing");
    act([this] { NextFile(player); });
    machine.clearCalls();
    click(kShuffle);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(player.gFilePath[0], "/m/second.wav");
    EXPECT_EQ(state(), "playing");
    EXPECT_TRUE(mediaCalls().empty());
}

/// BTN-12: Button 10 lowers and button 11 raises the volume
TEST_F(Commands, Button10LowersAndButton11RaisesTheVolume) {
    for (const char* before : kStates) {
        SCOPED_TRACE(before);
        bring(kSound, before);
        player.gVolume = 7;
        click(kVolumeDown);
        click(kVolumeDown);
        click(kVolumeUp);
        EXPECT_EQ(player.gVolume, 6);
        EXPECT_EQ(machine.calls("sound"), (Calls{"sound.waveOutSetVolume 66666666", "sound.waveOutSetVolume 55555555",
                                                 "sound.waveOutSetVolume 66666666"}));
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-11: The editor's button hides and disables the panel and shows the editor beside it
/// BTN-35
TEST_F(Commands, TheEditorButtonHidesAndDisablesThePanel) {
    setUp(kSound);
    click(kEditor);
    EXPECT_FALSE(panel().Visible);
    EXPECT_FALSE(panel().Enabled);
    ASSERT_NE(window("frmFileList"), nullptr);
    EXPECT_TRUE(window("frmFileList")->Visible);
    EXPECT_EQ(machine.windows.active(), window("frmFileList"));
    EXPECT_EQ(machine.log.count("windows.focus pctMainPanel"), 0) << "a hidden panel takes no focus";
}

/// BTN-13: A click on the display opens the settings and hides the panel while stopped, and does nothing else
TEST_F(Commands, TheDisplayOpensTheSettingsOnlyWhileStopped) {
    for (const char* before : {"playing", "paused", "stopped"}) {
        SCOPED_TRACE(before);
        bring(kSound, before);
        act([this] { panel().pctMainPanel.Click.raise(); });
        const bool opens = std::string(before) == "stopped";
        EXPECT_EQ(window("frmCustom") != nullptr && window("frmCustom")->Visible, opens);
        EXPECT_EQ(panel().Visible, !opens);
        EXPECT_EQ(panel().Enabled, !opens);
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-14: A click on a text that lies on the display is one on the display
TEST_F(Commands, AClickOnATextInsideTheDisplayIsAClickOnTheDisplay) {
    struct Place {
        float left, top;  ///< of the text
        bool displayShown;
        const char* before;
        bool opens;
    };
    setUp(kSound);
    panel().pctMainPanel.Move(1000, 600);
    panel().pctMainPanel.SetSize(2000, 300);
    Label& text = panel().lblMainPanel[kTextLabel];
    for (const Place& row : {Place{1000, 600, true, "playing", false}, Place{1000, 600, true, "paused", false},
                             Place{999, 600, true, "stopped", false}, Place{1000, 599, true, "stopped", false},
                             Place{3000, 600, true, "stopped", false}, Place{1000, 900, true, "stopped", false},
                             Place{1500, 700, false, "stopped", false}, Place{1000, 600, true, "stopped", true}}) {
        SCOPED_TRACE(std::string(row.before) + " " + std::to_string(row.left) + " " + std::to_string(row.top));
        bring(kSound, row.before);
        text.Move(row.left, row.top);
        panel().pctMainPanel.Visible = row.displayShown;
        act([&] { text.Click.raise(); });
        EXPECT_EQ(window("frmCustom") != nullptr, row.opens);
        EXPECT_EQ(panel().Visible, !row.opens);
        act([this] { CloseFile(player, false); });
    }
}

// --- The right button, dragging, the focus ---------------------------------------------------------------------------

class Areas : public Commands {
protected:
    struct Area {
        std::string name;
        MouseControl* control;
        bool drags;
    };
    /// Everything on the panel that takes the mouse.
    std::vector<Area> areas() {
        std::vector<Area> all = {
            {"form", &panel(), true}, {"display", &panel().pctMainPanel, true}, {"slider", &panel().pctSlide, false}};
        for (CommandButton& each : panel().cmdMainPanel) all.push_back({"button", &each, false});
        for (Label& each : panel().lblMainPanel) all.push_back({"label", &each, true});
        for (Image& each : panel().imgMainPanel) all.push_back({"image", &each, each.index() != kKnobImage});
        for (Area& area : all) area.name += " " + std::to_string(area.control->index());
        return all;
    }
};

/// BTN-41: The right button's release pops the menu up on form, labels, images, display, slider and buttons
/// BTN-42: The press does not, and no other button's release does
TEST_F(Areas, TheRightButtonsReleasePopsTheMenuUpEverywhere) {
    for (const char* before : kStates) {
        bring(kSound, before);
        for (const Area& area : areas()) {
            SCOPED_TRACE(std::string(before) + " " + area.name);
            machine.dialogs.poppedUp = nullptr;
            press(*area.control, kRight);
            EXPECT_FALSE(poppedUp()) << "not the press";
            release(*area.control, kRight);
            machine.settle();
            EXPECT_TRUE(poppedUp());
            EXPECT_EQ(state(), before);
        }
        act([this] { CloseFile(player, false); });
    }
}

/// BTN-42
TEST_F(Areas, NoOtherButtonsReleasePopsItUp) {
    setUp(kSound);
    for (const Area& area : areas()) {
        for (const int mouseButton : {kLeftButton, kMiddleButton}) {
            SCOPED_TRACE(area.name);
            press(*area.control, {mouseButton, 0, 0, 0});
            release(*area.control, {mouseButton, 0, 0, 0});
            EXPECT_FALSE(poppedUp());
        }
    }
}

/// BTN-43: A left press on form, display, labels and images, the knob left out, drags the window
/// BTN-44
TEST_F(Areas, ALeftPressOnAFreeAreaDragsTheWindow) {
    setUp(kSound);
    for (const Area& area : areas()) {
        SCOPED_TRACE(area.name);
        machine.clearCalls();
        press(*area.control, kLeft);
        EXPECT_EQ(machine.log.count("windows.beginDrag frmMainPanel"), area.drags ? 1 : 0);
        release(*area.control, kLeft);
    }
}

/// BTN-44: No other button drags it, and buttons, slider and knob do not
TEST_F(Areas, NoOtherButtonDragsTheWindow) {
    setUp(kSound);
    for (const Area& area : areas()) {
        for (const int mouseButton : {kRightButton, kMiddleButton}) {
            SCOPED_TRACE(area.name);
            machine.clearCalls();
            press(*area.control, {mouseButton, 0, 0, 0});
            release(*area.control, {mouseButton, 0, 0, 0});
            EXPECT_EQ(machine.log.count("windows.beginDrag frmMainPanel"), 0);
        }
    }
}

/// DROP-01: Files dropped anywhere on the panel, each of its buttons included, are taken
TEST_F(Areas, FilesDroppedAnywhereReplaceTheList) {
    setUpPanel();
    std::vector<MouseControl*> targets = {&panel()};
    for (CommandButton& each : panel().cmdMainPanel) targets.push_back(&each);
    for (MouseControl* target : targets) {
        SCOPED_TRACE(target->name() + " " + std::to_string(target->index()));
        setList({});
        act([&] { target->OLEDragDrop.raise({true, {"/m/song.wav", "/m/second.wav"}}); });
        EXPECT_EQ(player.gFileCount, 2);
        EXPECT_EQ(label(kTitleLabel), "song");
        EXPECT_EQ(state(), "stopped");
    }
}

/// BTN-35: The display takes the focus, unless a full-screen movie has the keys or the panel is hidden
TEST_F(Commands, TheDisplayTakesTheFocusAfterEachButton) {
    setUp(kSound);
    for (const int index : {kMinimise, kRepeat, kShuffle, kPlay, kPause, kStop, kPrev, kNext, kVolumeDown, kVolumeUp}) {
        SCOPED_TRACE(index);
        button(index).SetFocus();
        machine.settle();
        click(index);
        EXPECT_EQ(machine.windows.focused(), &panel().pctMainPanel);
    }
}

/// BTN-36
TEST_F(Commands, ARightReleaseLeavesTheFocusWhereItIs) {
    setUp(kSound);
    release(button(kPlay), kRight);
    EXPECT_EQ(machine.log.count("windows.focus pctMainPanel"), 0);
}

TEST_F(Commands, WithoutItsFormThereIsNoMenu) {
    setUpPanel();
    player.forms.unload<MenuWindowControls>();
    showPopupMenu(player);
    EXPECT_EQ(machine.dialogs.poppedUp, nullptr);
}

}  // namespace
}  // namespace corvane
