// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>

#include "shell/accessible/accessible_news.h"
#include "shell/accessible/accessible_tree.h"

namespace corvane {

class AccessibleForm;

/// One drawn control in the tool kit's words: what AccessibleTree says of it, with the interfaces that its role has.
class AccessibleControl : public QAccessibleInterface,
                          public QAccessibleActionInterface,
                          public QAccessibleValueInterface,
                          public QAccessibleTextInterface {
public:
    AccessibleControl(AccessibleForm& form, Control& control) : form_(form), control_(&control) {}

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    QAccessible::Role role() const override;
    QRect rect() const override;
    QString text(QAccessible::Text which) const override;
    void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    QVariant currentValue() const override { return range().value; }
    QVariant minimumValue() const override { return range().minimum; }
    QVariant maximumValue() const override { return range().maximum; }
    QVariant minimumStepSize() const override { return range().step; }
    void setCurrentValue(const QVariant& value) override;

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
    QString attributes(int offset, int* start, int* end) const override;

    void announce(const AccessibleChange& change);
    void forget() { control_ = nullptr; }

private:
    bool is(AccessibleRole role) const { return isValid() && AccessibleTree::roleOf(*control_) == role; }
    DraggedValue range() const { return isValid() ? AccessibleTree::rangeOf(*control_) : DraggedValue{}; }
    QString caption() const;
    void send(QAccessible::Event kind);

    AccessibleForm& form_;  ///< owns this one
    Control* control_;      ///< null: it has gone
};

}  // namespace corvane
