// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "linux/windowing/form_window.h"

namespace corvane {

/// A window with native widgets for a form of FormStyle::Dialog: one binder a kind of control. The form outlives it.
std::unique_ptr<BoundWindow> makeNativeWindow(Form& form, DesktopContext& context);

}  // namespace corvane
