// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/native/native_window.h"

#include "linux/native/native_form_window.h"

namespace corvane {

std::unique_ptr<BoundWindow> makeNativeWindow(Form& form, DesktopContext& context) {
    return std::make_unique<NativeWindow>(form, context);
}

}  // namespace corvane
