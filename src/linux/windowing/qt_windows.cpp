// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/qt_windows.h"

#include <QApplication>

#include "linux/native/native_window.h"
#include "linux/windowing/accessible_form.h"

namespace corvane {

namespace {

QWidget* widgetIn(BoundWindow* window) {
    return window != nullptr ? dynamic_cast<QtFrame&>(window->frame()).widget() : nullptr;
}

}  // namespace

QtWindows::QtWindows(DesktopContext& context) : FormWindowsOn(context), screens_([this] { screensChanged(); }) {
    offerAccessibleForms();
}

int QtWindows::doubleClickTimeMs() { return QApplication::doubleClickInterval(); }

QWidget* QtWindows::widgetOf(const Form& form) const { return widgetIn(windowOf(form)); }

void QtWindows::panelIs(BoundWindow* panel) { context().panel = widgetIn(panel); }

std::unique_ptr<BoundWindow> QtWindows::makeDialog(Form& form) { return makeNativeWindow(form, context()); }

}  // namespace corvane
