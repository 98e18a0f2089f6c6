// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

#include "dialogs/forms.h"
#include "listedit/forms.h"
#include "panel/forms.h"
#include "players/forms.h"
#include "startup/forms.h"

namespace corvane {

namespace {

/// Enough of a skin for every control that the player touches: "name,record,left,top,clip x,clip y,width,height,use".
constexpr const char* kPlainSkin =
    "repeat off,5,10,60,0,0,20,20,1\n"
    "repeat on,6,10,60,20,0,20,20,1\n"
    "knob,24,300,10,0,40,60,60,1\n"
    "indicator,25,5,5,0,20,8,8,1\n"
    "phase 2,26,5,5,8,20,8,8,1\n"
    "phase 3,27,5,5,16,20,8,8,1\n"
    "auto off,34,20,5,24,20,8,8,1\n"
    "auto on,35,20,5,32,20,8,8,1\n"
    "quick off,36,30,5,40,20,8,8,1\n"
    "quick on,37,30,5,48,20,8,8,1\n"
    "repeat off,38,40,5,56,20,8,8,1\n"
    "repeat on,39,40,5,64,20,8,8,1\n"
    "slider,40,10,100,0,0,200,8,WHITE\n";

}  // namespace

void registerAllForms(Player& player) {
    registerStartupForms(player);
    registerPanelForms(player);
    registerPlayerForms(player);
    registerListEditForms(player);
    registerDialogForms(player);
}

void PlayerFixture::setUpPanel() {
    machine.files.add("/skin.csv", kPlainSkin);
    player.gTextPath = "/skin.csv";
    player.forms.load<MenuWindowControls>().pcpMainPanel.Picture = makePicture(256, 256, {0x404040});
    machine.loop.enter([this] { player.forms.load<MainPanelControls>().Show(); });
    machine.settle();
    machine.clearCalls();
}

std::vector<std::string> PlayerFixture::mediaCalls() const {
    std::vector<std::string> result;
    for (const std::string& call : machine.calls()) {
        const std::string port = call.substr(0, call.find('.'));
        if (port == "mci" || port == "movie" || port == "pictures") result.push_back(call);
    }
    return result;
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

void PlayerFixture::act(const std::function<void()>& action) {
    machine.loop.enter(action);
    machine.settle();
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
