// SPDX-License-Identifier: GPL-3.0-or-later
#include "startup/frmStartup.h"

#include <memory>
#include <string>

#include "engine/dense_skin.h"
#include "engine/left_out.h"
#include "engine/mdlPublicFunction.h"
#include "panel/skin_builder.h"
#include "startup/forms.h"
#include "storage/play_lists.h"
#include "storage/resume.h"
#include "storage/settings.h"
#include "types/text.h"

namespace corvane {

namespace {

enum : int { kOpening = 0, kClosing = 1 };

constexpr std::int16_t kSteps = 15;
/// 15 steps with the first frame take about 150 ms: each is seen, and nobody waits.
constexpr int kStepMs = 10;
constexpr int kOldFamily = 1;

bool requireFile(Player& player, const std::string& path) {
    if (player.ports.files.lookUp(path)) return true;
    mdlPublicFunction::messageBox(player, text::onOneLine(path) + " Not found!!", Buttons::Ok, Icon::Stop);
    player.ports.process.end();
    return false;
}

}  // namespace

void registerStartupForms(Player& player) {
    player.forms.registerForm(FormId::Startup, [&player] { return std::make_unique<frmStartup>(player); });
}

bool startProgram(Player& player) {
    if (!frmStartup::Form_Initialize(player)) return false;
    player.forms.load(FormId::Startup).Show();
    return true;
}

frmStartup::frmStartup(Player& player)
    : Form("frmStartup", FormStyle::Painted),
      imgDummyPanel(this, "imgDummyPanel"),
      tmrOpenClose(controlArray<Timer, 2>(this, "tmrOpenClose")),
      player_(player) {
    Caption = "Corvane";
    Load.tie([this] { Form_Load(); });
    CloseRequest.tie([this](bool /*altHeld*/) { player_.ports.process.end(); });
    for (Timer& timer : tmrOpenClose) {
        const int index = timer.index();
        timer.Interval = kStepMs;
        timer.Tick.tie([this, index] { tmrOpenClose_Timer(index); });
    }
}

bool frmStartup::Form_Initialize(Player& player) {
    Process& process = player.ports.process;
    const char separator = player.ports.files.separator();
    const std::string folder = process.programFolder();
    player.gIniFile = text::joinPath(folder, "KADO.INI", separator);
    readConveniences(player);
    if (player.conveniences.kinds) mdlPublicFunction::addTypesOfToday(player);
    const auto taken = [&player](const auto& named, const auto& tell) { return filesForList(player, named, tell); };
    if (!process.onlyInstance(taken)) {
        process.end();
        return false;
    }
    player.gIsWin9x = process.platformId() == kOldFamily;

    player.gListFileStem = text::joinPath(folder, "FILE", separator);
    readSkinNames(player);
    player.forms.load(FormId::MenuWindow);
    const std::string skins = text::joinPath(folder, "PANELSET", separator) + separator;
    player.gBitmapPath = skins + player.gBitmapFileName;
    player.gTextPath = skins + player.gTextFileName;
    return requireFile(player, player.gBitmapPath) && requireFile(player, player.gTextPath);
}

void frmStartup::LoadInitial(Player& player) {
    readSettings(player);
    loadListAtStart(player);
}

void frmStartup::Form_Load() {
    loadSkin();
    Move(player_.gPanelLeft, player_.gPanelTop);
    if (player_.gAnimationStep == 0) {
        LoadInitial(player_);
        player_.media.setCurrent(nullptr);
        setBothSizes(1, 1);
        player_.gAnimationStep = 1;
        tmrOpenClose[kOpening].Enabled = true;
    } else {
        player_.gAnimationStep = kSteps;
        growTo(kSteps);
        tmrOpenClose[kClosing].Enabled = true;
    }
}

void frmStartup::loadSkin() {
    auto& menu = player_.forms.load<MenuWindowControls>();
    const corvane::Picture bitmap = player_.ports.pictures.decode(player_.gBitmapPath).picture;
    // A skin that went away while the player ran leaves the closing animation the picture loaded at the start.
    if (!bitmap.empty()) menu.pcpMainPanel.Picture = withDense(player_.ports.pictures, bitmap, player_.gBitmapPath);
    readPanelRecord(player_, imgDummyPanel);
}

void frmStartup::setBothSizes(Twips width, Twips height) {
    imgDummyPanel.SetSize(width, height);
    SetSize(width, height);
}

void frmStartup::growTo(int step) {
    setBothSizes(static_cast<float>(step) * static_cast<float>(player_.gPanelWidth),
                 static_cast<float>(step) * static_cast<float>(player_.gPanelHeight));
}

void frmStartup::tmrOpenClose_Timer(int index) {
    if (player_.ports.windows.prefersReducedMotion()) skipTo(index);
    imgDummyPanel.Visible = false;
    growTo(player_.gAnimationStep);
    if (index == kOpening) {
        stepOpening();
    } else {
        stepClosing();
    }
}

/// The last step comes at once: the panel stands where it would have come to, or is gone.
void frmStartup::skipTo(int index) {
    player_.gAnimationStep = index == kOpening ? kSteps : 1;
    if (index == kClosing) Hide();
}

/// Goes the step's share of the way that is left over from the screen's or the panel's edge.
void frmStartup::moveBy(float left, float top) {
    if (WindowState != WindowState::Normal) return;
    const auto step = static_cast<float>(player_.gAnimationStep);
    Move(left * step * 3 / 50, top * step * 3 / 50);
}

void frmStartup::stepOpening() {
    Player& player = player_;  // the form goes before the list starts
    Windows& windows = player.ports.windows;
    moveBy(windows.screenWidth() - Width, windows.screenHeight() - Height);
    imgDummyPanel.Visible = true;
    windows.refresh(*this);
    if (++player.gAnimationStep <= kSteps) return;

    tmrOpenClose[kOpening].Enabled = false;
    Form& panel = player.forms.load(FormId::MainPanel);
    if (player.ports.process.ending()) return;  // the skin cannot be applied
    panel.Show();
    player.forms.unload(FormId::Startup);
    beginList(player);
    tellWhatWaits(player);
}

/// What the start was given plays, in an event of its own.
void frmStartup::beginList(Player& player) {
    if (player.remembered.openAtUs) {
        player.ports.loop.post([&player] {
            if (!player.ports.process.ending()) goOnWhereLeft(player);
        });
        return;
    }
    if (!player.gAutoPlay && !player.playsAtStart) return;
    player.ports.loop.post([&player] {
        if (player.ports.process.ending() || player.media.isOpen()) return;  // what was given has begun by itself
        mdlPublicFunction::PlayFile(player);
    });
}

void frmStartup::stepClosing() {
    moveBy(player_.gPanelLeft + static_cast<float>(player_.gPanelWidth) * kTwipsPerPixel - Width,
           player_.gPanelTop + static_cast<float>(player_.gPanelHeight) * kTwipsPerPixel - Height);
    if (--player_.gAnimationStep <= 0) {
        player_.gAnimationStep = 0;
        tmrOpenClose[kClosing].Enabled = false;
        player_.ports.process.end();
        return;
    }
    imgDummyPanel.Visible = true;
    player_.ports.windows.refresh(*this);
}

}  // namespace corvane
