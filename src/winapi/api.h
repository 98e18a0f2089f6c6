// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The system's declarations, in the order that they need. The build says which version of them.
#include <windows.h>
// After windows.h:
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>
#include <windowsx.h>
