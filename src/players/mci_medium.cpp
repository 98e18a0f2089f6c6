// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/mci_medium.h"

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane {

using mdlDefinePublic::kCustomPlay;
using mdlDefinePublic::kCustomRepeat;
using mdlPublicFunction::nameStepButtons;
using mdlPublicFunction::NextFile;

namespace {

constexpr int kStatusIntervalMs = 100;

}  // namespace

MciControl* MciMedium::control() const {
    auto* const window = player_.forms.find<MciWindowControls>();
    return window != nullptr ? window->mmcMci.get() : nullptr;
}

MciControl& MciMedium::openControl(int timeFormat) {
    MciControl& mci = *player_.forms.load<MciWindowControls>().mmcMci;
    mci.Command("Stop");
    mci.Command("Close");
    mci.FileName(path());
    mci.Command("Open");
    mci.TimeFormat(timeFormat);
    mci.UpdateInterval(kStatusIntervalMs);
    return mci;
}

void MciMedium::closeControl() {
    if (MciControl* const mci = control()) {
        mci->Command("Stop");
        mci->Command("Close");
    }
    player_.forms.unload<MciWindowControls>();
}

void MciMedium::close(bool /*keepImage*/) { closeControl(); }

void MciMedium::resume() {
    if (MciControl* const mci = control()) playOn(*mci);
}

void MciMedium::pause() {
    if (auto* shown = panel()) nameStepButtons(*shown, true);
    if (MciControl* const mci = control()) mci->Command("Pause");
}

void MciMedium::progress() {
    MciControl* const mci = control();
    if (mci == nullptr) return;
    takeLength(*mci);
    const std::int32_t position = mci->Position();
    if (isOutside(position)) return;
    showProgress(position);
    const std::int32_t stop = listedStop();
    const bool pastStop = stop != 0 && isBefore(stop, position);
    if ((player_.gCustomMode == kCustomPlay && pastStop) || (player_.gQuickPlay && isQuicklyPlayed(position))) {
        NextFile(player_);
    } else if (player_.gCustomMode == kCustomRepeat && pastStop) {
        playAgain(*mci);
    }
}

std::optional<std::int32_t> MciMedium::position() const {
    const MciControl* const mci = control();
    return mci != nullptr ? std::optional(mci->Position()) : std::nullopt;
}

/// After fast stepping it plays on only when it played.
void MciMedium::endHold(bool steppedFast) {
    const auto* const shown = panel();
    if (steppedFast && shown != nullptr && !shown->isPaused()) resume();
}

}  // namespace corvane
