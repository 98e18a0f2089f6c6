// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "dialogs/frmCustom.h"
#include "fake/player_fixture.h"

namespace corvane {

/// The settings dialog over a stopped panel, with the settings file /app/KADO.INI.
class CustomDialog : public PlayerFixture {
protected:
    CustomDialog() {
        player.gIniFile = "/app/KADO.INI";
        machine.files.addFolder("/app");
        machine.files.add("/app/PANELSET/DEFAULT.BMP");
        machine.files.add("/app/PANELSET/default.csv");
        machine.files.add("/app/PANELSET/night.bmp");
        machine.files.add("/app/PANELSET/NOTES.TXT");
        machine.files.add("/app/skin.csv", "slider,40,10,10,0,0,200,8,WHITE\nknob,24,300,10,0,0,60,60,1\n");
        player.gTextPath = "/app/skin.csv";
        setUpPanel();
    }

    CustomControls& open() {
        machine.loop.enter([&] { panel().pctMainPanel.Click.raise(); });
        machine.settle();
        machine.clearCalls();
        return dialog();
    }
    CustomControls* found() { return player.forms.find<CustomControls>(); }
    CustomControls& dialog() { return *found(); }
    void push(int button) {
        CommandButton& pushed = dialog().cmdCustom.at(static_cast<std::size_t>(button));
        machine.loop.enter([&] { pushed.Click.raise(); });
        machine.settle();
    }
    TextBox& field(std::size_t index) { return dialog().txtCustom.at(index); }
    bool highlighted(std::size_t index) { return dialog().imgCustom.at(index).Visible; }
    std::string written(const std::string& key) {
        if (!machine.files.has("/app/KADO.INI")) return "(none)";
        const std::string text = machine.files.bytes("/app/KADO.INI");
        const std::size_t at = text.find("\r\n" + key + "=");
        if (at == std::string::npos) return "(none)";
        const std::size_t from = at + key.size() + 3;
        return text.substr(from, text.find("\r\n", from) - from);
    }
};

}  // namespace corvane
