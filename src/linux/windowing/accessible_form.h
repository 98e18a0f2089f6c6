// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessibleWidget>
#include <map>

#include "forms/form.h"

namespace corvane {

class AccessibleControl;
class CanvasWindow;

/// A window whose controls are drawn, as assistive programs see it: below it stand the controls that have an
/// AccessibleName, whether they are shown or not, as what is hidden says by its state. These programs keep what they
/// have found and where it stands among the others: nothing moves when a control goes and comes. Made when one asks.
class AccessibleForm : public QAccessibleWidget {
public:
    explicit AccessibleForm(CanvasWindow& window);
    ~AccessibleForm() override;

    AccessibleControl* controlOf(Control& control) const;  ///< null for one without a name
    void forget();

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    std::vector<Control*> named() const;

    CanvasWindow& window_;
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
