// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/accessible/accessible_tree.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

const MouseControl* asMouse(const Control& control) { return dynamic_cast<const MouseControl*>(&control); }

}  // namespace

std::string AccessibleTree::name() const { return window_.form() != nullptr ? window_.form()->Caption.get() : ""; }

std::vector<Control*> AccessibleTree::controls() const {
    std::vector<Control*> found;
    if (window_.form() == nullptr) return found;
    for (Control* each : window_.form()->controls()) {
        if (!each->AccessibleName.empty()) found.push_back(each);
    }
    return found;
}

Control* AccessibleTree::at(std::size_t index) const {
    const std::vector<Control*> all = controls();
    return index < all.size() ? all[index] : nullptr;
}

std::optional<std::size_t> AccessibleTree::indexOf(const Control& control) const {
    const std::vector<Control*> all = controls();
    const auto found = std::find(all.begin(), all.end(), &control);
    if (found == all.end()) return std::nullopt;
    return static_cast<std::size_t>(found - all.begin());
}

Control* AccessibleTree::hit(double x, double y) const {
    const std::vector<Control*> all = controls();
    const auto top = std::find_if(all.rbegin(), all.rend(), [&](const Control* each) {
        return each->Visible && window_.placeOf(*each).contains(x, y);
    });
    return top == all.rend() ? nullptr : *top;
}

Control* AccessibleTree::focused() const {
    return window_.form() != nullptr && window_.hasKeyboard() ? window_.focused() : nullptr;
}

AccessibleRole AccessibleTree::roleOf(const Control& control) {
    const MouseControl* const mouse = asMouse(control);
    if (mouse != nullptr && mouse->AccessibleValue) return AccessibleRole::Slider;
    if (control.kind() == ControlKind::Label) return AccessibleRole::Text;
    // What can be reached by the keyboard can be pressed.
    if (control.TabIndex >= 0) return AccessibleRole::Button;
    return control.kind() == ControlKind::Movie ? AccessibleRole::Movie : AccessibleRole::Graphic;
}

std::string AccessibleTree::descriptionOf(const Control& control) {
    const std::string tip = control.ToolTipText;
    return tip != control.AccessibleName ? tip : std::string();
}

std::string AccessibleTree::captionOf(const Control& control) {
    if (roleOf(control) != AccessibleRole::Text) return {};
    return static_cast<const Label&>(control).Caption;
}

DraggedValue AccessibleTree::rangeOf(const Control& control) {
    return roleOf(control) == AccessibleRole::Slider ? asMouse(control)->AccessibleValue() : DraggedValue{};
}

AccessibleState AccessibleTree::stateOf(const Control& control) const {
    AccessibleState state;
    if (window_.form() == nullptr) return state;
    const bool seen = control.Visible && window_.isShown() && !window_.isMinimised();
    state.hidden = !control.Visible || !window_.isShown();
    state.offscreen = !seen || common(window_.placeOf(control), window_.area()).empty();
    state.disabled = !control.Enabled || !window_.isUsable();
    state.focusable = control.Visible && control.TabIndex >= 0;
    state.focused = focused() == &control;
    state.pressed = window_.isPressed(control);
    state.readOnly = roleOf(control) == AccessibleRole::Text;
    if (const MouseControl* const mouse = asMouse(control)) {
        state.checkable = mouse->Checkable;
        state.checked = mouse->Checkable && mouse->Checked;
    }
    return state;
}

void AccessibleTree::press(Control& control) const {
    if (window_.form() != nullptr && roleOf(control) == AccessibleRole::Button) window_.pressSoon(control, kLeftButton);
}

void AccessibleTree::setValue(Control& control, double value) const {
    if (window_.form() == nullptr || !std::isfinite(value)) return;
    const DraggedValue range = rangeOf(control);
    if (!(range.maximum > range.minimum)) return;
    window_.setValueSoon(static_cast<MouseControl&>(control), std::clamp(value, range.minimum, range.maximum));
}

void AccessibleTree::step(Control& control, int steps) const {
    const DraggedValue range = rangeOf(control);
    setValue(control, range.value + steps * range.step);
}

void AccessibleTree::takeFocus(Control& control) const {
    if (window_.form() != nullptr && control.TabIndex >= 0) window_.focus(control);
}

bool AccessibleTree::hasMenu() const { return window_.form() != nullptr && window_.form()->MouseUp.isTied(); }

void AccessibleTree::showMenu() const {
    if (hasMenu()) window_.pressSoon(*window_.form(), kRightButton);
}

}  // namespace corvane
