// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string_view>

#include "shell/native/native_controls.h"

namespace corvane {

// Places in a text count characters in the form and UTF-16 units in the system's fields.
int charactersIn(std::u16string_view text, int units);
int unitsIn(std::u16string_view text, int characters);

/// Each character as keyPress takes it (it may be another one; 0: none), the cursor behind the same ones as before.
FieldText takenByKeys(const FieldText& given, const std::function<int(int)>& keyPress);

}  // namespace corvane
