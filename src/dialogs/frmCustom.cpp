// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmCustom.h"

#include <algorithm>
#include <limits>

#include "engine/dense_skin.h"
#include "engine/mdlPublicFunction.h"
#include "engine/return_to_panel.h"
#include "panel/skin_builder.h"
#include "storage/settings.h"
#include "types/numbers.h"
#include "types/text.h"

namespace corvane {

using mdlDefinePublic::kMediaOnTop;
using mdlDefinePublic::kNoneOnTop;
using mdlDefinePublic::kPanelOnTop;
using mdlDefinePublic::PlayerState;
using mdlPublicFunction::messageBox;

namespace {

constexpr const char* kRestartNotice =
    "サウンド出力の設定が変更されました。\r\n"
    "設定は次回の起動から有効になります。\r\n"
    "直ちに[Corvane]を再起動して下さい。";

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

int characters(const std::string& text) {
    return static_cast<int>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

}  // namespace

frmCustom::frmCustom(Player& player) : player_(player) {
    Load.tie([this] { Form_Load(); });
    Unload.tie([this] { Form_Unload(); });
    CloseRequest.tie([this](bool) { Form_CloseRequest(); });
    Activate.tie([this] { showPage(); });
    for (CommandButton& button : cmdCustom) {
        button.Click.tie([this, index = button.index()] { cmdCustom_Click(index); });
    }
    cmdMore.Click.tie([this] { cmdMore_Click(); });
    KeyDown.tie([this](const KeyArgs& key) {
        if (key.keyCode == kKeyF1 && key.shift == 0) player_.ports.dialogs.help();
    });
    tmrCustom.Tick.tie([this] { tmrCustom_Timer(); });
    tieFields();
}

void frmCustom::tieFields() {
    for (TextBox& field : txtCustom) {
        field.GotFocus.tie([this, index = field.index()] { txtCustom_GotFocus(index); });
        field.LostFocus.tie([this, index = field.index()] { txtCustom_LostFocus(index); });
        lblCustom[static_cast<std::size_t>(field.index())].Click.tie([&field] { field.SetFocus(); });
    }
    for (Image& image : imgCustom) {
        image.Click.tie([&field = txtCustom[static_cast<std::size_t>(image.index())]] { field.SetFocus(); });
    }
    txtCustom[kDelay].KeyPress = [this](int character) { return txtCustom_KeyPress(character); };
}

void frmCustom::Form_Load() {
    Move((player_.ports.windows.screenWidth() - Width) / 2, (player_.ports.windows.screenHeight() - Height) / 2);
    lblCustom[kVersion].Caption = versionText();
    optCustom[player_.gImageHide ? kHideTrue : kHideFalse].Value = true;
    chkCustom[kAutoStart].Value = player_.gAutoPlay;
    chkCustom[kQuickPlay].Value = player_.gQuickPlay;
    optCustom[kNormalMode + static_cast<std::size_t>(player_.gWindowPos)].Value = true;
    showKeys();
    txtCustom[kDelay].Text = std::to_string(player_.gDelayTime);
    showSkins();
    showDevices();
}

std::string frmCustom::versionText() const {
    const Process& process = player_.ports.process;
    return process.productName + "  Ver " + std::to_string(process.versionMajor) + "." +
           zeroPadded(process.versionMinor, 2) + "  " + process.comments;
}

void frmCustom::showKeys() {
    const std::vector<KeySetting> keys = keySettings();
    for (std::size_t i = 0; i < kKeys; ++i) txtCustom[i].Text = characterText(player_.*keys[i].variable);
}

std::string frmCustom::skinFolder() const {
    const char separator = player_.ports.files.separator();
    return text::joinPath(player_.ports.process.programFolder(), "PANELSET", separator) + separator;
}

void frmCustom::showSkins() {
    Files& files = player_.ports.files;
    std::string folder = skinFolder();
    folder.pop_back();
    cboCustom[kBitmaps].setItems(withoutDense(files.list(folder, "*.BMP")));
    cboCustom[kTexts].setItems(files.list(folder, "*.CSV"));
    cboCustom[kBitmaps].Text = player_.gBitmapFileName;
    cboCustom[kTexts].Text = player_.gTextFileName;
}

void frmCustom::showDevices() {
    if (player_.gIsWin9x) {
        SoundDevices& sound = player_.ports.sound;
        for (int i = 0; i < sound.auxGetNumDevs(); ++i) {
            const auto caps = sound.auxGetDevCaps(i);
            cboCustom[kDevices].addItem(caps ? caps->name : "");
        }
    }
    const int entry = player_.gAuxType - mdlDefinePublic::kChooseDevice;
    if (entry < cboCustom[kDevices].count()) cboCustom[kDevices].ListIndex = entry;
}

void frmCustom::txtCustom_GotFocus(int index) {
    TextBox& field = txtCustom[static_cast<std::size_t>(index)];
    field.SelStart = 0;
    field.SelLength = 0;
    field.SelLength = characters(field.Text);
    if (index == kDelay) return;
    blinking_ = index;
    imgCustom[static_cast<std::size_t>(index)].Visible = true;
    tmrCustom.restart();
}

void frmCustom::txtCustom_LostFocus(int index) {
    if (index != blinking_) return;
    tmrCustom.Enabled = false;
    imgCustom[static_cast<std::size_t>(index)].Visible = false;
    blinking_ = -1;
}

int frmCustom::txtCustom_KeyPress(int character) const {
    return (character >= '0' && character <= '9') || character == kKeyBackspace ? character : 0;
}

void frmCustom::tmrCustom_Timer() {
    if (blinking_ < 0) return;
    Image& highlight = imgCustom[static_cast<std::size_t>(blinking_)];
    highlight.Visible = !highlight.Visible;
}

/// The page goes with the dialog that it belongs to.
void frmCustom::Form_Unload() { player_.forms.unload(FormId::Conveniences); }

/// While the page is up, the dialog behind it neither goes nor comes in front of it.
void frmCustom::Form_CloseRequest() {
    if (!showPage()) cmdCustom_Click(kCancel);
}

bool frmCustom::showPage() {
    auto* const page = player_.forms.find(FormId::Conveniences);
    if (page != nullptr) player_.ports.windows.activate(*page);
    return page != nullptr;
}

void frmCustom::cmdMore_Click() {
    Enabled = false;
    player_.forms.load(FormId::Conveniences).Show();
}

void frmCustom::cmdCustom_Click(int index) {
    if (index == kOk) {
        if (!canShowSkin()) return;
        store();
    }
    returnToPanel(player_, kId);
}

/// A pair that cannot be shown would end every later start with a box. The pair in force was shown by this one.
bool frmCustom::canShowSkin() {
    const std::string bitmap = skinName(kBitmaps);
    const std::string text = skinName(kTexts);
    if (bitmap == player_.gBitmapFileName && text == player_.gTextFileName) return true;
    const std::string wrong = trySkin(player_.ports, skinFolder() + bitmap, skinFolder() + text);
    if (!wrong.empty()) messageBox(player_, wrong, Buttons::Ok, Icon::Stop);
    return wrong.empty();
}

void frmCustom::store() {
    takeSwitches();
    takeKeys();
    const std::string delay = takeDelay();
    // The skin's paths, and so the skin, change at the next start; the dialog shows the choice at once.
    player_.gBitmapFileName = skinName(kBitmaps);
    player_.gTextFileName = skinName(kTexts);
    takeWindowMode();
    writeSettings(player_, WrittenBy::SettingsDialog, {{kDelayKey, delay}});
    takeDevice();
}

void frmCustom::takeSwitches() {
    player_.gImageHide = optCustom[kHideTrue].Value;
    player_.gQuickPlay = chkCustom[kQuickPlay].Value;
    player_.gAutoPlay = chkCustom[kAutoStart].Value;
    lightLamp(kAutoPlayLamp, player_.gAutoPlay);
    lightLamp(kQuickPlayLamp, player_.gQuickPlay);
}

void frmCustom::lightLamp(int lamp, bool on) {
    auto* panel = player_.forms.find<MainPanelControls>();
    if (panel != nullptr) mdlPublicFunction::lightLamp(*panel, lamp, on);
}

void frmCustom::takeKeys() {
    const std::vector<KeySetting> keys = keySettings();
    for (std::size_t i = 0; i < kKeys; ++i) {
        player_.*keys[i].variable = characterCode(txtCustom[i].Text.get()).value_or(0);
    }
}

std::string frmCustom::takeDelay() {
    constexpr std::int32_t kMost = std::numeric_limits<std::int16_t>::max();
    const std::string& text = txtCustom[kDelay].Text;
    const auto number = parseNumber(text);
    // A timer of 0 ms would never tick, and a number that does not fit 16 bits could not be read back.
    player_.gDelayTime = static_cast<std::int16_t>(number ? std::clamp(*number, 1, kMost) : PlayerState().gDelayTime);
    const bool kept = number && *number == player_.gDelayTime;
    return kept ? text : std::to_string(player_.gDelayTime);
}

std::string frmCustom::skinName(List list) const {
    const std::string name = trimmed(cboCustom[list].Text);
    if (!name.empty()) return name;
    const PlayerState fresh;
    return list == kBitmaps ? fresh.gBitmapFileName : fresh.gTextFileName;
}

void frmCustom::takeWindowMode() {
    const std::int16_t before = player_.gWindowPos;
    if (optCustom[kMainWindow].Value) {
        putPanel(kTopMost);
        player_.gWindowPos = kPanelOnTop;
        return;
    }
    if (before == kPanelOnTop) putPanel(kNotTopMost);
    player_.gWindowPos = optCustom[kSubWindow].Value ? kMediaOnTop : kNoneOnTop;
}

void frmCustom::putPanel(int insertAfter) {
    constexpr std::uint32_t kStayAsItIs = 0x13;  // no size, no move, no activation; shown when the dialog has closed
    if (auto* panel = player_.forms.find<MainPanelControls>()) {
        player_.ports.windows.SetWindowPos(*panel, insertAfter, kStayAsItIs);
    }
}

void frmCustom::takeDevice() {
    const int chosen = cboCustom[kDevices].ListIndex;
    if (chosen < 0 || chosen == player_.gAuxType - mdlDefinePublic::kChooseDevice) return;
    messageBox(player_, kRestartNotice, Buttons::Ok, Icon::Information);
    WriteSetting(player_, kDeviceKey, std::to_string(chosen + mdlDefinePublic::kChooseDevice));
}

}  // namespace corvane
