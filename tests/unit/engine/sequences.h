// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fake/player_fixture.h"

namespace corvane {

/// Runs tables of steps: what is done, and what the panel shows and the media were asked for afterwards.
class Sequences : public PlayerFixture {
protected:
    using Texts = std::vector<std::string>;
    using Act = std::function<void(Player&)>;

    struct Step {
        const char* what;
        Act act;
        const char* state;  ///< "stopped", "playing", "paused"
        const char* time;   ///< label 2
        Texts calls;        ///< of mci, movie and pictures, in order
    };

    void run(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            SCOPED_TRACE(step.what);
            machine.clearCalls();
            machine.loop.enter([&] { step.act(player); });
            machine.settle();
            EXPECT_EQ(state(), step.state);
            EXPECT_EQ(label(kTimeLabel), step.time);
            EXPECT_EQ(mediaCalls(), step.calls);
            EXPECT_EQ(player.gPlaying, state() == "playing");
        }
    }
    /// Lets time pass.
    Act wait(int milliseconds) {
        return [this, milliseconds](Player&) { machine.advance(milliseconds); };
    }
    /// Whether previous and next read "Prev" and "Next", or "Back" and "Step".
    std::string stepTips() { return button(kPrev).ToolTipText.get() + " " + button(kNext).ToolTipText.get(); }
    static Act closeFile() {
        return [](Player& player) { mdlPublicFunction::CloseFile(player, false); };
    }
    /// Presses previous twice within the double-click time.
    static void pressPrevTwice(Player& player) {
        mdlPublicFunction::PrevFile(player);
        mdlPublicFunction::PrevFile(player);
    }
};

}  // namespace corvane
