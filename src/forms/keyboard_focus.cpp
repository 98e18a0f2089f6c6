// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/keyboard_focus.h"

#include <algorithm>
#include <optional>

namespace corvane {

namespace {

constexpr int kTab = 9, kEnter = 13, kEscape = 27, kSpace = 32;
constexpr int kPageUp = 33, kPageDown = 34, kEnd = 35, kHome = 36;
constexpr int kLeftArrow = 37, kUpArrow = 38, kRightArrow = 39, kDownArrow = 40;
constexpr double kPageSteps = 4;

std::optional<double> keyedValue(const DraggedValue& from, int keyCode) {
    switch (keyCode) {
        case kHome:
            return from.minimum;
        case kEnd:
            return from.maximum;
        case kRightArrow:
        case kUpArrow:
            return from.value + from.step;
        case kLeftArrow:
        case kDownArrow:
            return from.value - from.step;
        case kPageUp:
            return from.value + kPageSteps * from.step;
        case kPageDown:
            return from.value - kPageSteps * from.step;
        default:
            return std::nullopt;
    }
}

}  // namespace

KeyboardFocus::Answer KeyboardFocus::keyDown(const Form& form, const KeyArgs& key, bool isRepeat) {
    if (key.keyCode == kTab && (key.shift & ~kShiftMask) == 0) return move(form, key.shift != 0);
    if (control_ == nullptr || key.shift != 0) return {};
    if (key.keyCode == kEscape) {
        control_ = nullptr;
        return {Act::Move, 0};
    }
    const auto* const dragged = dynamic_cast<const MouseControl*>(control_);
    if (dragged != nullptr && dragged->AccessibleValue) {
        const DraggedValue now = dragged->AccessibleValue();
        const auto wanted = now.maximum > now.minimum ? keyedValue(now, key.keyCode) : std::nullopt;
        return wanted ? Answer{Act::SetValue, std::clamp(*wanted, now.minimum, now.maximum)} : Answer{};
    }
    const bool isPress = key.keyCode == kSpace || key.keyCode == kEnter;
    return isPress && !isRepeat ? Answer{Act::Press, 0} : Answer{};
}

KeyboardFocus::Answer KeyboardFocus::move(const Form& form, bool back) {
    std::vector<Control*> stops;
    for (Control* each : form.controls()) {
        if (each->TabIndex >= 0 && each->Visible && (each->Enabled || each == control_)) stops.push_back(each);
    }
    if (stops.empty()) return {};
    std::stable_sort(stops.begin(), stops.end(),
                     [](const Control* a, const Control* b) { return a->TabIndex < b->TabIndex; });
    const auto at = std::find(stops.begin(), stops.end(), control_);
    if (at == stops.end()) {
        control_ = back ? stops.back() : stops.front();
    } else if (back) {
        control_ = at == stops.begin() ? stops.back() : *std::prev(at);
    } else {
        control_ = std::next(at) == stops.end() ? stops.front() : *std::next(at);
    }
    return {Act::Move, 0};
}

}  // namespace corvane
