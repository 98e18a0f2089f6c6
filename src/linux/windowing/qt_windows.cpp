// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/qt_windows.h"

#include <QApplication>

#include "linux/native/native_window.h"
#include "linux/windowing/accessible_form.h"
#include "linux/windowing/canvas_window.h"

namespace corvane {

namespace {

QWidget* widgetIn(BoundWindow* window) {
    return window != nullptr ? dynamic_cast<QtFrame&>(window->frame()).widget() : nullptr;
}

}  // namespace

QtWindows::QtWindows(DesktopContext& context)
    : FormWindows(context.loop, context), context_(context), screens_([this] { screensChanged(); }) {
    offerAccessibleForms();
}

int QtWindows::doubleClickTimeMs() { return QApplication::doubleClickInterval(); }

QWidget* QtWindows::widgetOf(const Form& form) const { return widgetIn(windowOf(form)); }

void QtWindows::panelIs(BoundWindow* panel) { context_.panel = widgetIn(panel); }

std::unique_ptr<BoundWindow> QtWindows::makeWindow(Form& form) {
    if (form.style() == FormStyle::Hidden) return nullptr;
    if (form.style() == FormStyle::Dialog) return makeNativeWindow(form, context_);
    return makeDrawnWindow(form, context_);
}

}  // namespace corvane
