// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

#include "dialogs/forms.h"
#include "listedit/forms.h"
#include "panel/forms.h"
#include "players/forms.h"
#include "startup/forms.h"

namespace corvane {

void registerAllForms(Player& player) {
    Media& media = player.ports.media;
    player.forms.registerForm(FormId::MainPanel, [] { return std::make_unique<MainPanelControls>(); });
    player.forms.registerForm(FormId::MenuWindow, [] { return std::make_unique<MenuWindowControls>(); });
    player.forms.registerForm(FormId::MciWindow, [&media] { return std::make_unique<MciWindowControls>(media); });
    player.forms.registerForm(FormId::MovieWindow, [&media] { return std::make_unique<MovieWindowControls>(media); });
    player.forms.registerForm(FormId::ImageWindow, [] { return std::make_unique<ImageWindowControls>(); });
#ifdef CORVANE_HAS_PANEL
    registerPanelForms(player);
#endif
#ifdef CORVANE_HAS_PLAYERS
    registerPlayerForms(player);
#endif
#ifdef CORVANE_HAS_STARTUP
    registerStartupForms(player);
#endif
#ifdef CORVANE_HAS_LISTEDIT
    registerListEditForms(player);
#endif
#ifdef CORVANE_HAS_DIALOGS
    registerDialogForms(player);
#endif
}

void PlayerFixture::setUpPanel() {
    player.gSlideWidth = 3000;
    player.forms.load<MenuWindowControls>().pcpMainPanel.Picture = makePicture(1024, 1024, {0x404040});
    player.forms.load<MainPanelControls>().Show();
    machine.settle();
    machine.clearCalls();
}

std::string PlayerFixture::state() {
    if (panel().isStopped()) return "stopped";
    return panel().isPaused() ? "paused" : "playing";
}

void PlayerFixture::setList(const std::vector<std::string>& paths) {
    for (std::size_t i = 0; i < paths.size(); ++i) {
        player.gFilePath[i] = paths[i];
        player.gFileTitle[i] =
            mdlPublicFunction::GetBaseName(paths[i].substr(paths[i].find_last_of(machine.files.slash) + 1));
    }
    player.gFileCount = static_cast<std::int16_t>(paths.size());
    player.gFileIndex = 0;
    player.gStartPosition.fill(0);
    player.gStopPosition.fill(0);
}

void PlayerFixture::click(int index) {
    const MouseArgs left{kLeftButton, 0, 0, 0};
    press(button(index), left);
    machine.loop.enter([&] { button(index).Click.raise(); });
    if (player.forms.find<MainPanelControls>() != nullptr) release(button(index), left);
}

void PlayerFixture::typeKey(Form& form, char character) {
    machine.loop.enter([&] { form.KeyPress.raise(static_cast<unsigned char>(character)); });
}

void PlayerFixture::press(MouseControl& control, const MouseArgs& args) {
    machine.loop.enter([&] { control.MouseDown.raise(args); });
}

void PlayerFixture::release(MouseControl& control, const MouseArgs& args) {
    machine.loop.enter([&] { control.MouseUp.raise(args); });
}

}  // namespace corvane
