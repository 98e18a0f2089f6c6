// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/accessible_controls.h"

#include <QVariant>

#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

void send(QAccessibleInterface& from, QAccessible::Event kind) {
    QAccessibleEvent event(&from, kind);
    QAccessible::updateAccessibility(&event);
}

const MouseControl* asMouse(const Control& control) { return dynamic_cast<const MouseControl*>(&control); }

class AccessibleButton : public AccessibleControl {
public:
    AccessibleButton(CanvasWindow& window, Control& control)
        : AccessibleControl(window, control, QAccessible::Button) {}

    QStringList actionNames() const override { return QStringList(pressAction()) + AccessibleControl::actionNames(); }
    void doAction(const QString& name) override {
        if (name != pressAction()) {
            AccessibleControl::doAction(name);
        } else if (isValid()) {
            canvas().pressSoon(control(), kLeftButton);
        }
    }
};

/// A text that only tells something: its name says what, its text is the caption.
class AccessibleLabel : public AccessibleControl, public QAccessibleTextInterface {
public:
    AccessibleLabel(CanvasWindow& window, Label& label) : AccessibleControl(window, label, QAccessible::StaticText) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
        return type == QAccessible::ActionInterface ? nullptr : AccessibleControl::interface_cast(type);
    }
    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Value ? caption() : AccessibleControl::text(which);
    }
    QAccessible::State state() const override {
        QAccessible::State now = AccessibleControl::state();
        now.readOnly = true;
        return now;
    }
    void announce(PropertyId property) override {
        if (property != PropertyId::Caption) {
            AccessibleControl::announce(property);
            return;
        }
        const QString now = caption();
        QAccessibleTextUpdateEvent event(this, 0, told_, now);
        told_ = now;
        QAccessible::updateAccessibility(&event);
    }

    void selection(int /*index*/, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int /*start*/, int /*end*/) override {}
    void removeSelection(int /*index*/) override {}
    void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int /*position*/) override {}
    QString text(int start, int end) const override { return caption().mid(start, end - start); }
    int characterCount() const override { return static_cast<int>(caption().size()); }
    QRect characterRect(int /*offset*/) const override { return rect(); }
    int offsetAtPoint(const QPoint& /*point*/) const override { return 0; }
    void scrollToSubstring(int /*start*/, int /*end*/) override {}
    QString attributes(int /*offset*/, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    QString caption() const { return isValid() ? shownText(static_cast<Label&>(control()).Caption) : QString(); }

    QString told_;  ///< the caption that was told last; before that nothing is known of an older one
};

class AccessibleSlider : public AccessibleControl, public QAccessibleValueInterface {
public:
    AccessibleSlider(CanvasWindow& window, MouseControl& control)
        : AccessibleControl(window, control, QAccessible::Slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        return AccessibleControl::interface_cast(type);
    }
    void announce(PropertyId property) override {
        if (property != PropertyId::Value && property != PropertyId::Width) {
            AccessibleControl::announce(property);
            return;
        }
        // What moves by itself is told by whole units: nobody wants to hear ten values a second.
        const qint64 units = qRound64(now().value);
        if (units == told_) return;
        told_ = units;
        QAccessibleValueChangeEvent event(this, currentValue());
        QAccessible::updateAccessibility(&event);
    }
    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Value ? QString::number(now().value) : AccessibleControl::text(which);
    }

    QVariant currentValue() const override { return now().value; }
    QVariant minimumValue() const override { return now().minimum; }
    QVariant maximumValue() const override { return now().maximum; }
    QVariant minimumStepSize() const override { return now().step; }
    void setCurrentValue(const QVariant& value) override { set(value.toDouble()); }

    QStringList actionNames() const override {
        return QStringList{increaseAction(), decreaseAction()} + AccessibleControl::actionNames();
    }
    void doAction(const QString& name) override {
        const DraggedValue from = now();
        if (name == increaseAction()) {
            set(from.value + from.step);
        } else if (name == decreaseAction()) {
            set(from.value - from.step);
        } else {
            AccessibleControl::doAction(name);
        }
    }

private:
    DraggedValue now() const {
        return isValid() ? static_cast<MouseControl&>(control()).AccessibleValue() : DraggedValue{};
    }
    void set(double value) {
        const DraggedValue range = now();
        if (!(range.maximum > range.minimum)) return;
        canvas().setValueSoon(static_cast<MouseControl&>(control()), qBound(range.minimum, value, range.maximum));
    }

    qint64 told_ = -1;  ///< the value that was told last, whole units
};

class AccessiblePicture : public AccessibleControl {
public:
    AccessiblePicture(CanvasWindow& window, Control& control)
        : AccessibleControl(window, control,
                            control.kind() == ControlKind::Movie ? QAccessible::Animation : QAccessible::Graphic) {}
};

}  // namespace

AccessibleControl* makeAccessibleControl(CanvasWindow& window, Control& control) {
    auto* const mouse = dynamic_cast<MouseControl*>(&control);
    if (mouse != nullptr && mouse->AccessibleValue) return new AccessibleSlider(window, *mouse);
    if (control.kind() == ControlKind::Label) return new AccessibleLabel(window, static_cast<Label&>(control));
    // What can be reached by the keyboard can be pressed.
    if (control.TabIndex >= 0) return new AccessibleButton(window, control);
    return new AccessiblePicture(window, control);
}

QAccessibleInterface* AccessibleControl::parent() const {
    return window_ ? QAccessible::queryAccessibleInterface(window_) : nullptr;
}

QRect AccessibleControl::rect() const {
    if (!isValid()) return {};
    const QRectF place = window_->placeOf(*control_);
    return {window_->mapToGlobal(QPoint()) + place.toAlignedRect().topLeft(), place.toAlignedRect().size()};
}

QString AccessibleControl::text(QAccessible::Text which) const {
    if (!isValid()) return {};
    QString name = shownText(control_->AccessibleName);
    if (which == QAccessible::Name) return name;
    const QString tip = shownText(control_->ToolTipText);
    return which == QAccessible::Description && tip != name ? tip : QString();
}

QAccessible::State AccessibleControl::state() const {
    QAccessible::State now;
    if (!isValid()) {
        now.invalid = true;
        return now;
    }
    const bool seen = window_->isVisible() && !window_->isMinimized();
    now.invisible = !control_->Visible || !window_->isVisible();
    now.offscreen = !seen || !window_->placeOf(*control_).intersects(QRectF(window_->rect()));
    now.disabled = !control_->Enabled || !window_->isEnabled();
    now.focusable = control_->Visible && control_->TabIndex >= 0;
    now.focused = window_->focused() == control_ && window_->hasFocus();
    now.pressed = window_->isHeld(*control_);
    if (const MouseControl* const mouse = asMouse(*control_)) {
        now.checkable = mouse->Checkable;
        now.checked = mouse->Checkable && mouse->Checked;
    }
    return now;
}

void* AccessibleControl::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QStringList AccessibleControl::actionNames() const {
    return isValid() && control_->TabIndex >= 0 ? QStringList(setFocusAction()) : QStringList();
}

void AccessibleControl::doAction(const QString& name) {
    if (name != setFocusAction() || !isValid() || control_->TabIndex < 0) return;
    window_->activate();
    window_->setFocused(control_);
}

void AccessibleControl::announce(PropertyId property) {
    QAccessible::State changed;
    switch (property) {
        case PropertyId::Enabled:
            changed.disabled = true;
            break;
        case PropertyId::Checked:
            changed.checked = true;
            break;
        case PropertyId::Visible:
            send(*this, control_->Visible ? QAccessible::ObjectShow : QAccessible::ObjectHide);
            return;
        case PropertyId::ToolTipText:
            send(*this, QAccessible::DescriptionChanged);
            return;
        default:
            return;
    }
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

}  // namespace corvane
