// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/frmMainPanel.h"

#include <memory>

#include "engine/mdlPublicFunction.h"
#include "panel/forms.h"
#include "panel/skin_builder.h"
#include "types/numbers.h"

namespace corvane {

using mdlPublicFunction::chooseVolumeDevice;
using mdlPublicFunction::CloseFile;
using mdlPublicFunction::commandKey;
using mdlPublicFunction::findVolume;
using mdlPublicFunction::fixedKeyUp;
using mdlPublicFunction::followVolume;
using mdlPublicFunction::giveFiles;
using mdlPublicFunction::Given;
using mdlPublicFunction::lightLamp;
using mdlPublicFunction::messageBox;
using mdlPublicFunction::placeIndicator;
using mdlPublicFunction::playDropped;
using mdlPublicFunction::powerOff;
using mdlPublicFunction::putVolumeBack;
using mdlPublicFunction::SetWindowZOrder;

void registerPanelForms(Player& player) {
    player.forms.registerForm(FormId::MainPanel, [&player] { return std::make_unique<frmMainPanel>(player); });
}

frmMainPanel::frmMainPanel(Player& player) : player_(player) {
    tieForm();
    tieButtons();
    tieMouse();
    tieValues();
    tieHands();
    tmrDisplay.Tick.tie([this] { tmrDisplay_Timer(); });
    tmrPrevNext.Tick.tie([this] { tmrPrevNext_Timer(); });
    tmrPlayBack.Tick.tie([this] { tmrPlayBack_Timer(); });
}

void frmMainPanel::tieForm() {
    Load.tie([this] { Form_Load(); });
    Unload.tie([this] { Form_Unload(); });
    KeyPress.tie([this](int character) { commandKey(player_, character); });
    KeyDown.tie([this](const KeyArgs& key) { Form_KeyDown(key); });
    KeyUp.tie([this](const KeyArgs& key) { fixedKeyUp(player_, key); });
    LostFocus.tie([this] { player_.gAltMenuArmed = false; });  // Alt+Tab: the release is another window's
    CloseRequest.tie([this](bool /*altHeld*/) { powerOff(player_); });
    MouseDown.tie([this](const MouseArgs& mouse) { dragWindow(mouse); });
    MouseUp.tie([this](const MouseArgs& mouse) { popUpOnRight(mouse); });
    OLEDragDrop.tie([this](const DropData& dropped) { takeDropped(dropped); });
}

void frmMainPanel::tieButtons() {
    for (CommandButton& button : cmdMainPanel) {
        const int index = button.index();
        button.Click.tie([this, index] { cmdMainPanel_Click(index); });
        button.MouseDown.tie([this, index](const MouseArgs& mouse) { cmdMainPanel_MouseDown(index, mouse); });
        button.MouseUp.tie([this, index](const MouseArgs& mouse) { cmdMainPanel_MouseUp(index, mouse); });
        button.OLEDragDrop.tie([this](const DropData& dropped) { takeDropped(dropped); });
    }
}

void frmMainPanel::tieMouse() {
    for (Label& label : lblMainPanel) {
        label.MouseDown.tie([this](const MouseArgs& mouse) { dragWindow(mouse); });
        label.MouseUp.tie([this](const MouseArgs& mouse) { popUpOnRight(mouse); });
        label.Click.tie([this, &label] { lblMainPanel_Click(label); });
    }
    for (Image& image : imgMainPanel) {
        const int index = image.index();
        image.MouseDown.tie([this, index](const MouseArgs& mouse) { imgMainPanel_MouseDown(index, mouse); });
        image.MouseMove.tie([this, index](const MouseArgs& mouse) { imgMainPanel_MouseMove(index, mouse); });
        image.MouseUp.tie([this, index](const MouseArgs& mouse) { imgMainPanel_MouseUp(index, mouse); });
    }
    pctMainPanel.Click.tie([this] { pctMainPanel_Click(); });
    pctMainPanel.MouseDown.tie([this](const MouseArgs& mouse) { dragWindow(mouse); });
    pctMainPanel.MouseUp.tie([this](const MouseArgs& mouse) { popUpOnRight(mouse); });
    pctSlide.MouseDown.tie([this](const MouseArgs& mouse) { pctSlide_MouseDown(mouse); });
    pctSlide.MouseMove.tie([this](const MouseArgs& mouse) { pctSlide_MouseMove(mouse); });
    pctSlide.MouseUp.tie([this](const MouseArgs& mouse) { pctSlide_MouseUp(mouse); });
}

void frmMainPanel::takeDropped(const DropData& dropped) {
    if (dropped.toPlay) {
        giveFiles(player_, dropped.files, Given::ToOpen);
    } else if (player_.conveniences.plays) {
        playDropped(player_, dropped);
    } else {
        giveFiles(player_, dropped.hasFiles ? dropped.files : std::vector<std::string>(), Given::AsList);
    }
}

void frmMainPanel::Form_Load() {
    for (std::size_t i = 0; i < lblMainPanel.size(); ++i) {
        if (!player_.panelCaptions[i].empty()) lblMainPanel[i].Caption = player_.panelCaptions[i];
    }
    const Process& program = player_.ports.process;
    // There is deliberately no point between major and minor.
    lblMainPanel[kTextLabel].Caption = program.productName + "  Ver " + std::to_string(program.versionMajor) +
                                       zeroPadded(program.versionMinor, 2) + "  " + program.comments;
    if (!buildPanel(player_, *this)) {
        CloseFile(player_, false);
        messageBox(player_, "パネルを表示できません。", Buttons::OkCancel, Icon::Stop);
        player_.ports.process.end();
        return;
    }
    SetSize(static_cast<float>(player_.gPanelWidth) * kTwipsPerPixel,
            static_cast<float>(player_.gPanelHeight) * kTwipsPerPixel);
    Windows& windows = player_.ports.windows;
    Move((windows.screenWidth() - Width) * 9 / 10, (windows.screenHeight() - Height) * 9 / 10);
    if (player_.gAutoPlay) lightLamp(*this, kAutoPlayLamp, true);
    if (player_.gQuickPlay) lightLamp(*this, kQuickPlayLamp, true);

    chooseVolumeDevice(player_);
    findVolume(player_);
    placeIndicator(player_);
    player_.ports.sound.WaveOutChanged.tie([&player = player_] { followVolume(player); });
    tmrPlayBack.Interval = windows.doubleClickTimeMs();
    if (player_.gWindowPos == mdlDefinePublic::kPanelOnTop) SetWindowZOrder(player_, *this, kTopMost, 1);
}

void frmMainPanel::Form_Unload() {
    player_.forms.unload(FormId::Find);
    player_.reading.stop();
    player_.ports.sound.WaveOutChanged.tie({});
    putVolumeBack(player_);
    WindowState = WindowState::Normal;
    player_.gPanelLeft = Left;
    player_.gPanelTop = Top;
    player_.forms.load(FormId::Startup).Show();
}

}  // namespace corvane
