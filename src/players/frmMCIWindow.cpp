// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/frmMCIWindow.h"

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane {

using namespace mdlPublicFunction;
using namespace mdlDefinePublic;

namespace {

constexpr std::int32_t kQuickPlayMs = 10000;
constexpr const char* kQuickPlayTime = "00:09";

int trackOf(std::int32_t packed) { return static_cast<int>(static_cast<std::uint32_t>(packed) & 0xFFU); }

}  // namespace

frmMCIWindow::frmMCIWindow(Player& player) : MciWindowControls(player.ports.media), player_(player) {
    mmcMci->StatusUpdate.tie([this] { mmcMci_StatusUpdate(); });
    mmcMci->Done.tie([this](int notifyCode) { mmcMci_Done(notifyCode); });
    mmcMci->Failed.tie([this](const std::string& reason) { mediaFailed(player_, reason); });
}

void frmMCIWindow::CalcPer(std::int32_t position, std::int32_t length, double& result) {
    const std::int32_t seconds = packedSeconds(length);
    result = seconds > 0 ? static_cast<double>(packedSeconds(position)) / seconds : 0;
}

void frmMCIWindow::mmcMci_StatusUpdate() {
    if (player_.gMediaKind != mkMciFile && !isCd()) return;
    takeLength();
    const std::int32_t position = mmcMci->Position();
    // Behind its track's end a disc stands at the beginning of the next one: that is no place in this one.
    if (isCd() && trackOf(position) > player_.gCdTrack) return;
    showProgress(position);
    const bool over = player_.gCustomMode == kCustomPlay && isPastStop(position);
    if (over || (player_.gQuickPlay && isQuicklyPlayed(position))) {
        NextFile(player_);
    } else if (player_.gCustomMode == kCustomRepeat && isPastStop(position)) {
        returnToStart();
    }
}

/// A length that was not known in time for the start, or only guessed, is taken when it is. A track's is never guessed.
void frmMCIWindow::takeLength() {
    if (isCd() && player_.gLength == 0) {
        mmcMci->Track(player_.gCdTrack);
        player_.gLength = trackEnd(player_, *mmcMci) - player_.gCdTrack;
    } else if (!isCd()) {
        const std::int32_t length = mmcMci->Length();
        if (length > 0) player_.gLength = length;
    }
}

void frmMCIWindow::showProgress(std::int32_t position) {
    auto* panel = player_.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    setTime(*panel, isCd() ? TmsfToText(position) : MsecToText(position));
    if (isCd() && packedSeconds(player_.gLength) > 0) {
        double fraction = 0;
        CalcPer(position, player_.gLength, fraction);
        panel->pctSlide.Width = static_cast<float>(player_.gSlideWidth * fraction);
    } else {
        setSlider(player_, *panel, position, isCd() ? 0 : player_.gLength);
    }
}

bool frmMCIWindow::isQuicklyPlayed(std::int32_t position) const {
    return isCd() ? TmsfToText(position) > kQuickPlayTime : position > kQuickPlayMs;
}

/// CD positions compare as their mm:ss texts, so the stop second itself is still played.
bool frmMCIWindow::isPastStop(std::int32_t position) const {
    const std::int32_t stop = player_.gStopPosition[static_cast<std::size_t>(player_.gFileIndex)];
    if (stop == 0) return false;
    return isCd() ? TmsfToText(stop) < TmsfToText(position) : stop < position;
}

void frmMCIWindow::returnToStart() {
    const std::int32_t start = player_.gStartPosition[static_cast<std::size_t>(player_.gFileIndex)];
    if (isCd()) {
        mmcMci->Track(player_.gCdTrack);
        mmcMci->From(start != 0 ? start : player_.gCdTrack);  // none set: the track's start
        mmcMci->To(trackEnd(player_, *mmcMci));
    } else {
        mmcMci->To(start);
        mmcMci->Command("Seek");
    }
    mmcMci->Command("Play");
}

void frmMCIWindow::mmcMci_Done(int notifyCode) {
    if (notifyCode == kNotifySuccessful) NextFile(player_);
}

}  // namespace corvane
