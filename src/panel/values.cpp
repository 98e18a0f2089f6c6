// SPDX-License-Identifier: GPL-3.0-or-later
// The slider and the knob as assistive programs and the keyboard read and move them.
#include <algorithm>
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "engine/media_time.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using mdlDefinePublic::kFullVolume;
using mdlPublicFunction::openLengthUs;
using mdlPublicFunction::openPositionUs;
using mdlPublicFunction::setVolumeLevel;

namespace {

constexpr double kMicrosecond = 1e-6;  // in seconds
constexpr double kSlideStep = 5;       // seconds
constexpr double kPercent = 100.0 / kFullVolume;

}  // namespace

void frmMainPanel::tieValues() {
    pctSlide.AccessibleValue = [this] { return slideValue(); };
    pctSlide.SetAccessibleValue.tie([this](double seconds) { slideTo(seconds); });
    Image& knob = imgMainPanel[kKnobImage];
    knob.AccessibleValue = [this] { return knobValue(); };
    knob.SetAccessibleValue.tie([this](double percent) { turnTo(percent); });
}

DraggedValue frmMainPanel::slideValue() const {
    if (isStopped()) return {0, 0, 0, kSlideStep};
    return {static_cast<double>(openPositionUs(player_)) * kMicrosecond, 0,
            static_cast<double>(openLengthUs(player_)) * kMicrosecond, kSlideStep};
}

/// As a drag to that place.
void frmMainPanel::slideTo(double seconds) {
    const double length = slideValue().maximum;
    const bool held = player_.gSlideState != mdlDefinePublic::kNoDrag;
    // The ends of the slider themselves take no drag; a slider without a place between them takes none at all.
    const double last = player_.gSlideWidth - 1.0;
    if (!(length > 0) || held || std::isnan(seconds) || last < 1.0) return;
    beginSlide();
    slide(std::clamp(seconds / length * player_.gSlideWidth, 1.0, last));
    endSlide();
}

DraggedValue frmMainPanel::knobValue() const { return {player_.gVolume * kPercent, 0, 100, kPercent}; }

void frmMainPanel::turnTo(double percent) {
    if (std::isnan(percent)) return;
    const auto level = static_cast<std::int16_t>(std::lround(std::clamp(percent, 0.0, 100.0) / kPercent));
    if (level != player_.gVolume) setVolumeLevel(player_, level);
}

}  // namespace corvane
