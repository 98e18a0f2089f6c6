// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/accessible_form.h"

#include <algorithm>

#include "linux/windowing/accessible_controls.h"
#include "linux/windowing/canvas_window.h"

namespace corvane {

namespace {

QAccessibleInterface* makeAccessibleForm(const QString& /*className*/, QObject* object) {
    auto* const window = dynamic_cast<CanvasWindow*>(object);
    return window != nullptr ? new AccessibleForm(*window) : nullptr;
}

AccessibleForm* accessibleForm(CanvasWindow& window) {
    return dynamic_cast<AccessibleForm*>(QAccessible::queryAccessibleInterface(&window));
}

}  // namespace

void offerAccessibleForms() { QAccessible::installFactory(makeAccessibleForm); }

AccessibleForm::AccessibleForm(CanvasWindow& window)
    : QAccessibleWidget(&window, QAccessible::Window), window_(window) {
    window.rememberAccessible();
}

// The window may be gone already: it is not touched here.
AccessibleForm::~AccessibleForm() {
    for (const auto& [control, id] : made_) QAccessible::deleteAccessibleInterface(id);
}

void AccessibleForm::forget() {
    for (const auto& [control, id] : made_) {
        QAccessibleEvent gone(QAccessible::accessibleInterface(id), QAccessible::ObjectDestroyed);
        if (QAccessible::isActive()) QAccessible::updateAccessibility(&gone);
        QAccessible::deleteAccessibleInterface(id);
    }
    made_.clear();
}

std::vector<Control*> AccessibleForm::named() const {
    std::vector<Control*> found;
    if (!window_.bound()) return found;
    for (Control* each : window_.form().controls()) {
        if (!each->AccessibleName.empty()) found.push_back(each);
    }
    return found;
}

AccessibleControl* AccessibleForm::controlOf(Control& control) const {
    if (control.AccessibleName.empty() || !window_.bound()) return nullptr;
    QAccessible::Id& id = made_[&control];
    if (id == 0) id = QAccessible::registerAccessibleInterface(makeAccessibleControl(window_, control));
    return static_cast<AccessibleControl*>(QAccessible::accessibleInterface(id));
}

int AccessibleForm::childCount() const { return static_cast<int>(named().size()); }

QAccessibleInterface* AccessibleForm::child(int index) const {
    const auto controls = named();
    if (index < 0 || index >= static_cast<int>(controls.size())) return nullptr;
    return controlOf(*controls[static_cast<std::size_t>(index)]);
}

int AccessibleForm::indexOfChild(const QAccessibleInterface* child) const {
    const auto controls = named();
    const auto found =
        std::find_if(controls.begin(), controls.end(), [&](Control* each) { return controlOf(*each) == child; });
    return found == controls.end() ? -1 : static_cast<int>(found - controls.begin());
}

QAccessibleInterface* AccessibleForm::childAt(int x, int y) const {
    const QPointF at = window_.mapFromGlobal(QPointF(x, y));
    const auto controls = named();
    const auto top = std::find_if(controls.rbegin(), controls.rend(),
                                  [&](Control* each) { return each->Visible && window_.placeOf(*each).contains(at); });
    return top == controls.rend() ? nullptr : controlOf(**top);
}

QAccessibleInterface* AccessibleForm::focusChild() const {
    Control* const focused = window_.bound() && window_.hasFocus() ? window_.focused() : nullptr;
    return focused != nullptr ? controlOf(*focused) : QAccessibleWidget::focusChild();
}

QStringList AccessibleForm::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (window_.bound() && window_.form().MouseUp.isTied()) names.prepend(showMenuAction());
    return names;
}

void AccessibleForm::doAction(const QString& name) {
    if (name == showMenuAction() && window_.bound()) {
        window_.pressSoon(window_.form(), kRightButton);
    } else {
        QAccessibleWidget::doAction(name);
    }
}

void announce(CanvasWindow& window, Control& control, PropertyId property) {
    AccessibleForm* const form = accessibleForm(window);
    AccessibleControl* const child = form != nullptr ? form->controlOf(control) : nullptr;
    if (child != nullptr) child->announce(property);
}

void announceFocus(CanvasWindow& window) {
    AccessibleForm* const form = accessibleForm(window);
    if (form == nullptr || !window.hasFocus()) return;
    QAccessibleInterface* const child = form->focusChild();
    QAccessibleEvent focus(child != nullptr ? child : form, QAccessible::Focus);
    QAccessible::updateAccessibility(&focus);
}

void forgetControls(CanvasWindow& window) {
    if (AccessibleForm* const form = accessibleForm(window)) form->forget();
}

}  // namespace corvane
