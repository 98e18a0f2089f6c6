// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessibleWidget>
#include <QPointer>
#include <map>

#include "shell/accessible/accessible_news.h"
#include "shell/accessible/accessible_tree.h"
#include "shell/accessible/drawn_access.h"

namespace corvane {

class AccessibleControl;
class CanvasWindow;

/// A window whose controls are drawn in the tool kit's words: what AccessibleTree says of it. Made when an assistive
/// program asks.
class AccessibleForm : public QAccessibleWidget, private DrawnAccess {
public:
    explicit AccessibleForm(CanvasWindow& window);
    ~AccessibleForm() override;

    const AccessibleTree& tree() const { return tree_; }
    bool isBound() const { return form() != nullptr; }
    QRect onScreen(const Control& control) const;          ///< only while bound
    AccessibleControl* controlOf(Control* control) const;  ///< null for none and for one without a name
    /// Tells of the change that a property's notification means, if any.
    void announce(Control& control, PropertyId property);
    void forget();

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    bool hasKeyboard() const override;

    QPointer<CanvasWindow> window_;
    AccessibleTree tree_{*this};
    AccessibleNews news_;
    mutable std::map<const Control*, QAccessible::Id> made_;
};

/// From now on assistive programs are offered the windows whose controls are drawn.
void offerAccessibleForms();
/// Tells assistive programs of a change of a control. Only while there are any.
void announce(CanvasWindow& window, Control& control, PropertyId property);
void announceFocus(CanvasWindow& window);
/// The form goes: assistive programs touch no control of it any more.
void forgetControls(CanvasWindow& window);

}  // namespace corvane
