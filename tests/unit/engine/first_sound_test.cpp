// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

using FirstSound = PlayerFixture;

TEST_F(FirstSound, PlayOpensTheDeviceAndTheTimePasses) {
    machine.addSound("/music/song.wav", 3000);
    setUpPanel();
    setList({"/music/song.wav"});

    PlayFile(player);

    const std::vector<std::string> expected = {"mci.Command Stop", "mci.Command Close",    "mci.FileName /music/song.wav",
                                               "mci.Command Open", "mci.TimeFormat 0",     "mci.UpdateInterval 100",
                                               "mci.Command Play"};
    EXPECT_EQ(machine.calls("mci"), expected);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gLength, 3000);
    machine.advance(1234);
    EXPECT_EQ(mciWindow()->mmcMci->Position(), 1234);
}

}  // namespace
}  // namespace corvane
