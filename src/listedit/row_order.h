// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "storage/play_lists.h"

// Orders of the editor's rows: for each place the row that is to stand there.

namespace corvane {

/// The rows by their names or by their paths, letters without case, numbers by their value; what is alike stays in
/// order.
std::vector<int> orderByName(const std::vector<ListEntry>& rows);
std::vector<int> orderByPath(const std::vector<ListEntry>& rows);

/// The rows by how long they play; what is not known comes behind all others.
std::vector<int> orderByLength(const std::vector<std::optional<std::int64_t>>& milliseconds);

/// The chosen rows (rising) side by side in front of row `before`; the count: behind all.
std::vector<int> orderMoved(int count, const std::vector<int>& chosen, int before);

/// The chosen rows each one place up (by -1) or down (by 1). What stands at the end stays, and what would jump over it.
std::vector<int> orderStepped(int count, const std::vector<int>& chosen, int by);

/// Nothing moves.
bool isUnchanged(const std::vector<int>& order);

/// Where those rows stand afterwards, rising.
std::vector<int> placesAfter(const std::vector<int>& order, const std::vector<int>& rows);

/// The row from `from` on, round the end, that holds each word of the text in its name, or else in its path, as
/// text::folded() has it. -1: none, or the text has no word.
int findRow(const std::vector<std::string>& names, const std::vector<std::string>& paths, const std::string& text,
            int from);

}  // namespace corvane
