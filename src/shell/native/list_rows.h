// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "shell/native/native_controls.h"

namespace corvane {

/// Rows in rising order as ranges.
std::vector<RowRange> rangesOf(const std::vector<int>& rows);

/// What a row says to the pointer that rests on it: what the form has for it, else its text where that is cut. "": the
/// list's own tip. A row that there is not says nothing.
std::string rowTip(const ItemsControl& list, int row, bool isCut);

}  // namespace corvane
