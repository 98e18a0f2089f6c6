// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/input.h"
#include "windows/api.h"

namespace corvane {

/// What a WM_DROPFILES message brings. The caller finishes the drop.
DropData filesOf(HDROP drop);

}  // namespace corvane
