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
    : QAccessibleWidget(&window, QAccessible::Window), DrawnAccess(window), window_(&window) {
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
    news_.forget();
    leave();
}

AccessibleControl* AccessibleForm::controlOf(Control* control) const {
    if (control == nullptr || !isBound() || control->AccessibleName.empty()) return nullptr;
    QAccessible::Id& id = made_[control];
    if (id == 0) {
        auto* const made = new AccessibleControl(const_cast<AccessibleForm&>(*this), *control);
        id = QAccessible::registerAccessibleInterface(made);
    }
    return static_cast<AccessibleControl*>(QAccessible::accessibleInterface(id));
}

void AccessibleForm::announce(Control& control, PropertyId property) {
    AccessibleControl* const child = controlOf(&control);
    if (child == nullptr) return;
    if (const auto change = news_.of(control, property)) child->announce(*change);
}

int AccessibleForm::childCount() const { return static_cast<int>(tree_.controls().size()); }

QAccessibleInterface* AccessibleForm::child(int index) const {
    return index < 0 ? nullptr : controlOf(tree_.at(static_cast<std::size_t>(index)));
}

int AccessibleForm::indexOfChild(const QAccessibleInterface* child) const {
    const auto controls = tree_.controls();
    const auto found =
        std::find_if(controls.begin(), controls.end(), [&](Control* each) { return controlOf(each) == child; });
    return found == controls.end() ? -1 : static_cast<int>(found - controls.begin());
}

QAccessibleInterface* AccessibleForm::childAt(int x, int y) const {
    if (!window_) return nullptr;
    const QPointF at = window_->mapFromGlobal(QPointF(x, y));
    return controlOf(tree_.hit(at.x(), at.y()));
}

QAccessibleInterface* AccessibleForm::focusChild() const {
    Control* const focused = tree_.focused();
    return focused != nullptr ? controlOf(focused) : QAccessibleWidget::focusChild();
}

QStringList AccessibleForm::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (tree_.hasMenu()) names.prepend(showMenuAction());
    return names;
}

void AccessibleForm::doAction(const QString& name) {
    if (name == showMenuAction()) {
        tree_.showMenu();
    } else {
        QAccessibleWidget::doAction(name);
    }
}

QRect AccessibleForm::onScreen(const Control& control) const {
    const Rectangle at = placeOf(control);
    const QRect place = QRectF(at.x, at.y, at.width, at.height).toAlignedRect();
    return {window_->mapToGlobal(QPoint()) + place.topLeft(), place.size()};
}

bool AccessibleForm::hasKeyboard() const { return window_->hasFocus(); }

void announce(CanvasWindow& window, Control& control, PropertyId property) {
    if (AccessibleForm* const form = accessibleForm(window)) form->announce(control, property);
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
