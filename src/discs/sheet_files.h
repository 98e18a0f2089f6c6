// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "discs/cue_sheet.h"

namespace corvane {

inline constexpr std::size_t kMostNamesBeside = 4096;  ///< of files in a sheet's folder, among which one is looked for

/// A sheet outlives what it names: sounds were coded anew, or their names came from a system that knows no case. Each
/// file of the sheet that is not among `names` (the files of its folder) becomes the one of them that stands for it:
/// the same name but for case, accents and their way of being written; of a sound, else, one of the same stem and of a
/// kind that is played as a sound, those without loss first; of a sheet's only sound, else, one with the stem of the
/// sheet itself (`sheetName`, without folders). What nothing stands for stays as it is. At most kMostNamesBeside
/// names count.
void standInForMissing(CueSheet& sheet, const std::string& sheetName, const std::vector<std::string>& names);

}  // namespace corvane
