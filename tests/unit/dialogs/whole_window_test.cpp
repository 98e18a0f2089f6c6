// SPDX-License-Identifier: GPL-3.0-or-later
// The settings dialog and the menu as a whole: each control's place, texts and states.
#include "dialogs/frmConveniences.h"
#include "dialogs/frmCustom.h"
#include "dialogs/frmMenuWindow.h"
#include "fake/form_text.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

TEST_F(PlayerFixture, EachControlOfTheSettingsIsWhatItIs) {
    const CustomControls settings;
    expectKeptText("settings", formText(settings));
}

TEST_F(PlayerFixture, EachControlOfTheConveniencesIsWhatItIs) {
    const ConveniencesControls page;
    expectKeptText("conveniences", formText(page));
}

TEST_F(PlayerFixture, EachEntryOfTheMenuIsWhatItIs) {
    const frmMenuWindow menu(player);
    expectKeptText("menu", formText(menu));
}

}  // namespace
}  // namespace corvane
