// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/open_medium.h"

#include <utility>

#include "engine/hands.h"
#include "engine/hold_times.h"
#include "engine/panel_texts.h"
#include "engine/player.h"

namespace corvane {

using mdlPublicFunction::currentPath;
using mdlPublicFunction::setSlider;
using mdlPublicFunction::setTime;
using mdlPublicFunction::shownTime;

OpenMedium::OpenMedium(Player& player, MediaType type) : player_(player), type_(std::move(type)) {}

bool OpenMedium::canOpen(const std::string& /*path*/) const { return true; }

MainPanelControls* OpenMedium::panel() const { return player_.forms.find<MainPanelControls>(); }

void OpenMedium::showTime(const std::string& text) const {
    player_.elapsedText = text;
    if (auto* shown = panel()) setTime(*shown, shownTime(player_, *this, text));
}

void OpenMedium::showSlide(double position, double length) const {
    if (auto* shown = panel()) setSlider(player_, *shown, position, length);
}

void OpenMedium::placeSlide(std::int32_t x) const {
    if (auto* shown = panel()) shown->pctSlide.Width = static_cast<float>(x);
}

void OpenMedium::stepFast() const {
    if (auto* shown = panel()) shown->tmrPrevNext.Interval = kFastStepMs;
}

const std::string& OpenMedium::path() const { return currentPath(player_); }

std::int32_t OpenMedium::listedStart() const {
    return player_.gStartPosition[static_cast<std::size_t>(player_.gFileIndex)];
}

std::int32_t OpenMedium::listedStop() const {
    return player_.gStopPosition[static_cast<std::size_t>(player_.gFileIndex)];
}

std::int32_t OpenMedium::startInForce() const {
    return player_.gCustomMode != mdlDefinePublic::kCustomOff ? listedStart() : 0;
}

}  // namespace corvane
