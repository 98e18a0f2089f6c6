// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/mdlPublicFunction.h"
#include "engine/player.h"
#include "fake/fake_machine.h"
#include "panel/forms.h"
#include "players/media.h"
#include "startup/forms.h"
#include "startup/frmStartup.h"
#include "storage/play_lists.h"
#include "storage/settings.h"

namespace corvane {

/// A player whose program folder is /app, with a plain skin of 400 by 100 pixels, and nothing else on the disk.
class StartupFixture : public ::testing::Test {
protected:
    StartupFixture() {
        registerStartupForms(player);
        registerPanelForms(player);
        registerMedia(player);
        Media& media = player.ports.media;
        player.forms.registerForm(FormId::MenuWindow, [] { return std::make_unique<MenuWindowControls>(); });
        player.forms.registerForm(FormId::MciWindow, [&media] { return std::make_unique<MciWindowControls>(media); });
        machine.addPicture("/app/PANELSET/DEFAULT.BMP", 400, 200);
        machine.files.add("/app/PANELSET/DEFAULT.CSV", "panel,0,2,3,0,0,400,100,1\r\nwindow,1,0,0,0,0,400,100,1\r\n");
        player.gIniFile = "/app/KADO.INI";
        player.gListFileStem = "/app/FILE";
    }

    void settings(const std::string& lines) { machine.files.add("/app/KADO.INI", "[KADO]\r\n" + lines); }

    FakeMachine machine;
    Ports ports = machine.ports();
    Player player{ports};
};

}  // namespace corvane
