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

/// The file whose small picture stands before the row; "": none does.
std::string rowPictureFile(const ItemsControl& list, int row);
/// What the row says in a column; "": nothing.
std::string rowDetail(const ItemsControl& list, int row, int column);
/// The row as an assistive program says it: its text and what its columns show.
std::string rowInWords(const ItemsControl& list, int row);

}  // namespace corvane
