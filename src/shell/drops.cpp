// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/drops.h"

namespace corvane {

MouseControl* fileTakerOf(Form& form) {
    if (!form.Enabled) return nullptr;
    if (form.OLEDragDrop.isTied()) return &form;
    for (Control* control : form.controls()) {
        auto* const mouse = dynamic_cast<MouseControl*>(control);
        if (mouse != nullptr && mouse->OLEDragDrop.isTied()) return mouse;
    }
    return nullptr;
}

}  // namespace corvane
