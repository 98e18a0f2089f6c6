// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "engine/mdlPublicFunction.h"
#include "engine/player.h"
#include "fake/fake_machine.h"

namespace corvane {

/// Registers every form of the player.
void registerAllForms(Player& player);

/// A player on a machine in memory. setUpPanel() puts the panel up at once, without the opening animation.
class PlayerFixture : public ::testing::Test {
protected:
    PlayerFixture() { registerAllForms(player); }

    FakeMachine machine;
    Ports ports = machine.ports();
    Player player{ports};

    /// Loads and shows the panel from a plain skin, whose slider is 3000 twips wide, and empties the log. Call it after
    /// the settings are made.
    void setUpPanel();

    MainPanelControls& panel() { return *player.forms.find<MainPanelControls>(); }
    MciWindowControls* mciWindow() { return player.forms.find<MciWindowControls>(); }
    MovieWindowControls* movieWindow() { return player.forms.find<MovieWindowControls>(); }
    ImageWindowControls* imageWindow() { return player.forms.find<ImageWindowControls>(); }
    const std::string& label(int index) { return panel().lblMainPanel.at(static_cast<std::size_t>(index)).Caption; }
    CommandButton& button(int index) { return panel().cmdMainPanel.at(static_cast<std::size_t>(index)); }
    /// "stopped", "playing" or "paused", as the two buttons say it.
    std::string state();

    /// What was asked of the media controls and of the pictures, in order.
    std::vector<std::string> mediaCalls() const;

    /// The list of the player; titles are the names without folder and extension.
    void setList(const std::vector<std::string>& paths);

    /// Does it as an event of the loop, and all that it leads to at once.
    void act(const std::function<void()>& action);

    // Raise an event as the user or the desktop would.
    void click(int button);
    void typeKey(Form& form, char character);
    void press(MouseControl& control, const MouseArgs& args);
    void release(MouseControl& control, const MouseArgs& args);
};

}  // namespace corvane
