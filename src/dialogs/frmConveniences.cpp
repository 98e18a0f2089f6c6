// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmConveniences.h"

#include "dialogs/frmCustom.h"
#include "engine/mdlPublicFunction.h"
#include "storage/settings.h"

namespace corvane {

using mdlPublicFunction::messageBox;

namespace {

/// What of them a running player cannot take up: the types that it knows, and how many entries its list may have.
bool countsAtOnce(bool Conveniences::*one) { return one != &Conveniences::kinds && one != &Conveniences::longLists; }

Conveniences byStart(bool byDesktop) { return byDesktop ? kAllConveniences : Conveniences(); }

std::string wayOf(bool byDesktop) { return byDesktop ? "Started from the desktop" : "A plain start"; }

}  // namespace

frmConveniences::frmConveniences(Player& player) : player_(player) {
    Load.tie([this] { Form_Load(); });
    Unload.tie([this] { Form_Unload(); });
    CloseRequest.tie([this](bool) { cmdConveniences_Click(kCancel); });
    for (CommandButton& button : cmdConveniences) {
        button.Click.tie([this, index = button.index()] { cmdConveniences_Click(index); });
    }
    KeyDown.tie([this](const KeyArgs& key) {
        if (key.keyCode == kKeyF1 && key.shift == 0) player_.ports.dialogs.help();
    });
}

void frmConveniences::Form_Load() {
    Windows& windows = player_.ports.windows;
    Move((windows.screenWidth() - Width) / 2, (windows.screenHeight() - Height) / 2);
    const Conveniences start = conveniencesAsStarted(player_);
    const bool byDesktop = player_.ports.process.startedByDesktop();
    lblConveniences[kWay].Caption =
        (start == byStart(byDesktop) ? wayOf(byDesktop) : "As KADO.INI says") +
        (start == Conveniences() ? ": off but for those switched on here." : ": on but for those switched off here.");
    lblConveniences[kNote].Caption = "KINDS and LONG change at the next start, all others at once.";
    const std::vector<Setting> settings = convenienceSettings();
    for (std::size_t i = 0; i < kRows; ++i) {
        const bool on = player_.conveniences.*convenienceOf(settings[i]);
        lblInForce[i].Caption = on ? "now on" : "now off";
        // Read out with the box by assistive programs.
        chkConveniences[i].ToolTipText = on ? "In force now" : "Not in force now";
    }
    show(conveniencesChosen(player_));
}

/// The settings dialog takes the keyboard again.
void frmConveniences::Form_Unload() {
    auto* const settings = player_.forms.find<CustomControls>();
    if (settings == nullptr) return;
    settings->Enabled = true;
    player_.ports.windows.activate(*settings);
}

void frmConveniences::show(const Conveniences& wanted) {
    shown_ = wanted;
    const std::vector<Setting> settings = convenienceSettings();
    for (std::size_t i = 0; i < kRows; ++i) chkConveniences[i].Value = wanted.*convenienceOf(settings[i]);
}

void frmConveniences::cmdConveniences_Click(int index) {
    if (index == kAsStarted) {
        asStarted_ = true;
        show(conveniencesAsStarted(player_));
        return;
    }
    if (index == kOk && !store()) {
        messageBox(player_, "KADO.INI Can't save!!", Buttons::Ok, Icon::Stop);
        return;
    }
    player_.forms.unload(kId);
}

bool frmConveniences::store() {
    std::vector<ProfileKey> changed;
    const std::vector<Setting> settings = convenienceSettings();
    for (std::size_t i = 0; i < kRows; ++i) {
        const bool on = chkConveniences[i].Value;
        if (on != shown_.*convenienceOf(settings[i])) changed.emplace_back(settings[i].key, switchText(on));
    }
    if (!writeConveniences(player_, changed, asStarted_)) return false;
    for (std::size_t i = 0; i < kRows; ++i) {
        bool Conveniences::*const one = convenienceOf(settings[i]);
        if (countsAtOnce(one)) player_.conveniences.*one = chkConveniences[i].Value;
    }
    return true;
}

}  // namespace corvane
