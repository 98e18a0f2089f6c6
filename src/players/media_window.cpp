// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/media_window.h"

#include <memory>

#include "engine/hands.h"
#include "engine/mdlPublicFunction.h"
#include "players/forms.h"
#include "players/frmImageWindow.h"
#include "players/frmMCIWindow.h"
#include "players/frmMovieWindow.h"
#include "players/media.h"

namespace corvane {

using mdlPublicFunction::CloseFile;
using mdlPublicFunction::commandKey;
using mdlPublicFunction::findKey;
using mdlPublicFunction::fixedKeyDown;
using mdlPublicFunction::fixedKeyUp;
using mdlPublicFunction::powerOff;
using mdlPublicFunction::seekKey;
using mdlPublicFunction::stepInWindow;

void registerPlayerForms(Player& player) {
    player.forms.registerForm(FormId::MciWindow, [&player] { return std::make_unique<frmMCIWindow>(player); });
    player.forms.registerForm(FormId::MovieWindow, [&player] { return std::make_unique<frmMovieWindow>(player); });
    player.forms.registerForm(FormId::ImageWindow, [&player] { return std::make_unique<frmImageWindow>(player); });
    registerMedia(player);
}

void tieMediaWindow(Player& player, Form& window) {
    window.KeyPress.tie([&player](int character) { commandKey(player, character); });
    window.KeyDown.tie([&player](const KeyArgs& key) {
        if (findKey(player, key)) return;
        if (!player.conveniences.hands || !seekKey(player, key)) fixedKeyDown(player, key);
    });
    window.MouseWheel.tie([&player](const WheelArgs& wheel) {
        if (player.conveniences.hands) stepInWindow(player, wheel.notches);
    });
    window.KeyUp.tie([&player](const KeyArgs& key) { fixedKeyUp(player, key); });
    window.LostFocus.tie([&player] { player.gAltMenuArmed = false; });
    window.CloseRequest.tie([&player, &window](bool altHeld) {
        if (altHeld) {
            powerOff(player);
        } else if (&window == player.forms.find(FormId::ImageWindow) && !player.media.playsIn(FormId::ImageWindow)) {
            player.forms.unload(FormId::ImageWindow);  // a kept picture: what plays is another file
        } else {
            CloseFile(player, false);
        }
    });
}

void progressIn(Player& player, FormId window) {
    if (!player.media.playsIn(window)) return;
    player.media.current()->progress();
}

}  // namespace corvane
