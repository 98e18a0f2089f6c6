// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that the engine shares, as they are before anything is done with them.
#include "engine/control_sets.h"
#include "fake/form_text.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

TEST_F(PlayerFixture, EachControlOfThePanelIsWhatItIs) {
    const MainPanelControls panel;
    expectKeptText("panel", formText(panel));
}

TEST_F(PlayerFixture, EachControlOfTheMediaWindowsIsWhatItIs) {
    const MciWindowControls sound(player.ports.media);
    const MovieWindowControls movie(player.ports.media);
    const ImageWindowControls picture;
    expectKeptText("media", formText(sound) + formText(movie) + formText(picture));
    EXPECT_FALSE(movie.opened || movie.started);
    EXPECT_EQ(movie.doubleClickedAt, -1);
}

TEST_F(PlayerFixture, EachEntryOfTheMenuIsNamedAsItIs) {
    const MenuWindowControls menu;
    expectKeptText("menu_controls", formText(menu));
}

}  // namespace
}  // namespace corvane
