// SPDX-License-Identifier: GPL-3.0-or-later
// Keys as the panel's window gets them.
#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Keys : public PanelHands {
protected:
    void type(int character) {
        act([&] { panel().KeyPress.raise(character); });
    }
    void keyDown(int code, int shift) {
        act([&] { panel().KeyDown.raise({code, shift}); });
    }
    void keyUp(int code, int shift) {
        act([&] { panel().KeyUp.raise({code, shift}); });
    }
    bool panelIsThere() { return player.forms.find<MainPanelControls>() != nullptr; }
    bool poppedUp() { return machine.dialogs.poppedUp != nullptr; }

    using Binding = std::int16_t mdlDefinePublic::PlayerState::*;
    /// The bindings in the order in which they are tried.
    const std::vector<Binding> bindings = {&Player::gKeyPower,    &Player::gKeyMin,       &Player::gKeyRepeat,
                                           &Player::gKeyShuffle,  &Player::gKeyPlay,      &Player::gKeyPause,
                                           &Player::gKeyStop,     &Player::gKeyPrev,      &Player::gKeyNext,
                                           &Player::gKeyVolumeUp, &Player::gKeyVolumeDown};

    /// What has happened since the panel was set up with file 1 of 3 at volume 7.
    std::string effect() {
        if (!panelIsThere()) return "power";
        if (panel().WindowState != WindowState::Normal) return "minimised";
        if (player.gRepeat) return "repeat";
        if (!machine.calls("random").empty()) return "shuffled";
        if (state() == "playing") return "playing";
        if (state() == "paused") return "paused";
        if (player.gFileIndex != 1) return player.gFileIndex == 0 ? "previous" : "next";
        if (player.gVolume != 7) return player.gVolume > 7 ? "louder" : "softer";
        return "nothing";
    }
    void fresh() {
        act([this] { powerOff(player); });
        player.forms.unload(FormId::Startup);
        player.gRepeat = false;
        setUp(kSound);
        player.gFileIndex = 1;
        player.gVolume = 7;
        machine.clearCalls();
    }
};

/// KEY-02: Power: disables its button, closes, ends the panel
/// KEY-03: Minimise: minimises the panel
/// KEY-04: Repeat: toggles as its button does
/// KEY-09: Previous: goes back, also during a hold; it counts as a press like a click
/// KEY-10: Next: goes on, also during a hold
/// KEY-11: Volume up raises, volume down lowers
/// KEY-16: Bound to other characters they obey those alone
TEST_F(Keys, EachBindingDoesItsCommandWhateverTheCharacter) {
    const std::vector<const char*> effects = {"power",   "minimised", "repeat", "shuffled", "playing", "paused",
                                              "stopped", "previous",  "next",   "louder",   "softer"};
    for (const int character : std::initializer_list<int>{'q', 'Q', '7', ' ', 13, 27, 200, 255}) {
        for (std::size_t i = 0; i < bindings.size(); ++i) {
            SCOPED_TRACE(std::string(effects[i]) + " on " + std::to_string(character));
            fresh();
            const std::int16_t before = player.*bindings[i];
            player.*bindings[i] = static_cast<std::int16_t>(character);
            std::string expected = effects[i];
            if (expected == "paused" || expected == "stopped") act([this] { PlayFile(player); });
            type(character);
            if (expected == "stopped") expected = "nothing";
            EXPECT_EQ(effect(), expected);
            player.*bindings[i] = before;
        }
    }
}

/// KEY-01: The eleven bindings are tried in their order, and the first that is equal wins
TEST_F(Keys, OfTwoBindingsTheEarlierWins) {
    const std::vector<const char*> effects = {"power",   "minimised", "repeat",   "shuffled", "playing",
                                              "nothing", "nothing",   "previous", "next",     "louder"};
    for (std::size_t first = 0; first + 1 < bindings.size(); ++first) {
        SCOPED_TRACE(first);
        fresh();
        std::vector<std::int16_t> kept;
        for (std::size_t i = first; i < bindings.size(); ++i) {
            kept.push_back(player.*bindings[i]);
            player.*bindings[i] = 'w';
        }
        type('w');
        EXPECT_EQ(effect(), effects[first]) << "stopped, pause and stop do nothing";
        for (std::size_t i = first; i < bindings.size(); ++i) player.*bindings[i] = kept[i - first];
    }
}

/// KEY-13: A binding of 0 never matches, not even a character 0
TEST_F(Keys, ABindingOf0IsNeverMatched) {
    for (const Binding binding : bindings) {
        fresh();
        const std::int16_t before = player.*binding;
        player.*binding = 0;
        act([this] { PlayFile(player); });
        const std::string was = effect();
        type(0);
        EXPECT_EQ(effect(), was);
        type(before);
        EXPECT_EQ(effect(), was) << "and its old character does nothing any more";
        player.*binding = before;
    }
}

/// KEY-12: A character matches exactly: p is not P
/// KEY-14: A character that matches nothing does nothing
TEST_F(Keys, ALetterOfTheOtherCaseIsAnotherKey) {
    fresh();
    for (const char character : {'p', 'm', 'r', 's', 'Z', 'X', 'C', 'U', 'D', '<', '>'}) {
        type(character);
        EXPECT_EQ(effect(), "nothing") << character;
    }
}

/// KEY-06: Play: plays while its button is enabled
/// KEY-07: Pause: pauses while its button is enabled
/// KEY-08: Stop: closes, whether its button is enabled or not
TEST_F(Keys, PlayAndPauseFollowTheirButtonsAndStopDoesNot) {
    fresh();
    button(kPlay).Enabled = false;
    type('z');
    EXPECT_TRUE(mediaCalls().empty());
    button(kPlay).Enabled = true;
    type('z');
    EXPECT_EQ(state(), "playing");
    button(kPause).Enabled = false;
    type('x');
    EXPECT_TRUE(player.gPlaying);
    button(kStop).Enabled = false;
    type('c');
    EXPECT_EQ(state(), "stopped");
}

/// KEY-15: Commands come by characters alone: a key that types none is none
TEST_F(Keys, AKeyIsACommandByItsCharacterAlone) {
    fresh();
    for (const int code : std::initializer_list<int>{'P', 'M', 'R', 'S', 'Z', 'X', 'C', 188, 190, 'U', 'D'}) {
        keyDown(code, 0);
        keyUp(code, 0);
        ASSERT_EQ(effect(), "nothing") << code;
    }
}

// --- Alt, Alt+F4, F1 -------------------------------------------------------------------------------------------------

/// KEY-22: The release of any key shows an armed menu, once
TEST_F(Keys, AltPressedAndReleasedAlonePopsTheMenuUp) {
    for (const char* before : {"stopped", "playing", "paused"}) {
        SCOPED_TRACE(before);
        bring(kSound, before);
        machine.dialogs.poppedUp = nullptr;
        keyDown(kKeyAlt, kAltMask);
        EXPECT_FALSE(poppedUp());
        keyUp(kKeyAlt, 0);
        EXPECT_TRUE(poppedUp());
        machine.dialogs.poppedUp = nullptr;
        keyUp(kKeyAlt, 0);
        EXPECT_FALSE(poppedUp()) << "once";
        act([this] { CloseFile(player, false); });
    }
}

/// KEY-21: Any other key while Alt alone is held, Alt itself too, arms the menu
TEST_F(Keys, AnyKeyWithAltAloneArmsTheMenu) {
    fresh();
    keyDown('Q', kAltMask);
    keyUp('Q', kAltMask);
    EXPECT_TRUE(poppedUp());
}

/// KEY-21
TEST_F(Keys, AltWithAnotherModifierDoesNot) {
    fresh();
    for (const int shift : {0, kShiftMask, kCtrlMask, kAltMask | kShiftMask, kAltMask | kCtrlMask}) {
        SCOPED_TRACE(shift);
        keyDown(kKeyAlt, shift);
        keyUp(kKeyAlt, 0);
        EXPECT_FALSE(poppedUp());
    }
}

/// KEY-23: Alt and Tab, which leave the window, do not
TEST_F(Keys, AltTabDoesNot) {
    fresh();
    keyDown(kKeyAlt, kAltMask);
    act([this] { panel().LostFocus.raise(); });
    keyUp(kKeyAlt, 0);
    EXPECT_FALSE(poppedUp());
}

/// KEY-19: Alt and F4 with Alt alone held are the power command
/// KEY-20: They do not open the menu
TEST_F(Keys, AltF4IsThePowerCommand) {
    fresh();
    act([this] { PlayFile(player); });
    keyDown(kKeyAlt, kAltMask);
    keyDown(kKeyF4, kAltMask);
    EXPECT_FALSE(panelIsThere());
    EXPECT_FALSE(poppedUp());
    EXPECT_FALSE(player.gAltMenuArmed);
    EXPECT_EQ(machine.media.liveControls(), 0);
    EXPECT_TRUE(machine.windows.isAttached("frmStartup"));
}

/// KEY-19
TEST_F(Keys, F4WithoutAltAloneIsNot) {
    fresh();
    for (const int shift : {0, kShiftMask, kCtrlMask, kAltMask | kShiftMask, kAltMask | kCtrlMask}) {
        keyDown(kKeyF4, shift);
        EXPECT_TRUE(panelIsThere()) << shift;
    }
}

/// KEY-25: The window manager's close is the power command
TEST_F(Keys, ACloseRequestIsThePowerCommandToo) {
    for (const bool altHeld : {false, true}) {
        SCOPED_TRACE(altHeld);
        fresh();
        act([this] { PlayFile(player); });
        act([&] { panel().CloseRequest.raise(altHeld); });
        EXPECT_FALSE(panelIsThere());
        EXPECT_EQ(machine.media.liveControls(), 0);
    }
}

/// KEY-24: F1 opens the help
/// MENU-28
TEST_F(Keys, F1OpensTheHelp) {
    fresh();
    keyDown(kKeyF1, 0);
    EXPECT_EQ(machine.calls("dialogs"), Calls{"dialogs.help"});
    keyDown(kKeyF1, kShiftMask);
    EXPECT_EQ(machine.calls("dialogs").size(), 1U);
}

}  // namespace
}  // namespace corvane
