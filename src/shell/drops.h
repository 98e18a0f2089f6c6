// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/form.h"

namespace corvane {

/// Who takes files that are dropped somewhere on a form or handed to it from elsewhere: the form itself, else the first
/// of its controls that does; null: nobody, or the form is disabled.
MouseControl* fileTakerOf(Form& form);

}  // namespace corvane
