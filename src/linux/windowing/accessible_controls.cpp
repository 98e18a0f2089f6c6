// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/accessible_controls.h"

#include <QVariant>

#include "linux/windowing/accessible_form.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

bool AccessibleControl::isValid() const { return control_ != nullptr && form_.isBound(); }

QWindow* AccessibleControl::window() const { return form_.window(); }

QAccessibleInterface* AccessibleControl::parent() const { return &form_; }

QAccessible::Role AccessibleControl::role() const {
    if (!isValid()) return QAccessible::NoRole;
    switch (AccessibleTree::roleOf(*control_)) {
        case AccessibleRole::Button:
            return QAccessible::Button;
        case AccessibleRole::Slider:
            return QAccessible::Slider;
        case AccessibleRole::Text:
            return QAccessible::StaticText;
        case AccessibleRole::Movie:
            return QAccessible::Animation;
        case AccessibleRole::Graphic:
            break;
    }
    return QAccessible::Graphic;
}

QRect AccessibleControl::rect() const { return isValid() ? form_.onScreen(*control_) : QRect(); }

QString AccessibleControl::text(QAccessible::Text which) const {
    if (!isValid()) return {};
    if (which == QAccessible::Name) return shownText(AccessibleTree::nameOf(*control_));
    if (which == QAccessible::Description) return shownText(AccessibleTree::descriptionOf(*control_));
    if (which != QAccessible::Value) return {};
    return is(AccessibleRole::Slider) ? QString::number(range().value) : caption();
}

QAccessible::State AccessibleControl::state() const {
    QAccessible::State now;
    now.invalid = !isValid();
    if (now.invalid) return now;
    const AccessibleState is = form_.tree().stateOf(*control_);
    now.invisible = is.hidden;
    now.offscreen = is.offscreen;
    now.disabled = is.disabled;
    now.focusable = is.focusable;
    now.focused = is.focused;
    now.pressed = is.pressed;
    now.checkable = is.checkable;
    now.checked = is.checked;
    now.readOnly = is.readOnly;
    return now;
}

void* AccessibleControl::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface && is(AccessibleRole::Text))
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::ValueInterface && is(AccessibleRole::Slider))
        return static_cast<QAccessibleValueInterface*>(this);
    if (type == QAccessible::ActionInterface && !is(AccessibleRole::Text))
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

QStringList AccessibleControl::actionNames() const {
    QStringList names;
    if (is(AccessibleRole::Button)) names << pressAction();
    if (is(AccessibleRole::Slider)) names << increaseAction() << decreaseAction();
    if (isValid() && control_->TabIndex >= 0) names << setFocusAction();
    return names;
}

void AccessibleControl::doAction(const QString& name) {
    if (!isValid()) return;
    const AccessibleTree& tree = form_.tree();
    if (name == pressAction()) tree.press(*control_);
    if (name == increaseAction()) tree.step(*control_, 1);
    if (name == decreaseAction()) tree.step(*control_, -1);
    if (name == setFocusAction()) tree.takeFocus(*control_);
}

void AccessibleControl::setCurrentValue(const QVariant& value) {
    if (isValid()) form_.tree().setValue(*control_, value.toDouble());
}

QString AccessibleControl::caption() const {
    return isValid() ? shownText(AccessibleTree::captionOf(*control_)) : QString();
}

QString AccessibleControl::attributes(int /*offset*/, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

void AccessibleControl::send(QAccessible::Event kind) {
    QAccessibleEvent event(this, kind);
    QAccessible::updateAccessibility(&event);
}

void AccessibleControl::announce(const AccessibleChange& change) {
    QAccessible::State changed;
    switch (change.kind) {
        case AccessibleChange::Kind::Shown:
            return send(QAccessible::ObjectShow);
        case AccessibleChange::Kind::Hidden:
            return send(QAccessible::ObjectHide);
        case AccessibleChange::Kind::Description:
            return send(QAccessible::DescriptionChanged);
        case AccessibleChange::Kind::Value: {
            QAccessibleValueChangeEvent event(this, currentValue());
            return QAccessible::updateAccessibility(&event);
        }
        case AccessibleChange::Kind::Text: {
            QAccessibleTextUpdateEvent event(this, 0, shownText(change.before), shownText(change.now));
            return QAccessible::updateAccessibility(&event);
        }
        case AccessibleChange::Kind::Enabled:
            changed.disabled = true;
            break;
        case AccessibleChange::Kind::Checked:
            changed.checked = true;
            break;
    }
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

}  // namespace corvane
