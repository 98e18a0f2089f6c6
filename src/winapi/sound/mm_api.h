// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "winapi/api.h"
// After windows.h:
#include <mmsystem.h>

// The header's macro would rename a port's function wherever it is included first.
#undef auxGetDevCaps
