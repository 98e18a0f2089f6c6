// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QPointer>

#include "linux/windowing/canvas_window.h"

namespace corvane {

/// One drawn control as assistive programs see it: its name, place and state. The deriving classes, one a kind, say
/// what it is and what can be done with it.
class AccessibleControl : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleControl(CanvasWindow& window, Control& control, QAccessible::Role role)
        : window_(&window), control_(&control), role_(role) {}

    bool isValid() const override { return window_ && window_->bound() && control_ != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return window_ ? window_->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override { return role_; }
    QRect rect() const override;
    QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    /// Tells of a change of a property that matters for this kind alone.
    virtual void announce(PropertyId property);
    void forget() { control_ = nullptr; }

protected:
    CanvasWindow& canvas() const { return *window_; }  ///< only while valid
    Control& control() const { return *control_; }     ///< the same

private:
    QPointer<CanvasWindow> window_;
    Control* control_;
    QAccessible::Role role_;
};

/// The one for the control's kind.
AccessibleControl* makeAccessibleControl(CanvasWindow& window, Control& control);

}  // namespace corvane
