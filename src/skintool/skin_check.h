// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Something wrong with a skin.
struct SkinMistake {
    std::size_t line = 0;         ///< of the text file, from 1; 0: of the whole
    bool keepsPanelAway = false;  ///< the player does not show the panel; otherwise it looks other than meant
    std::string text;
};

struct BitmapSize {
    int width = 0, height = 0;  ///< pixels
};

/// All that is wrong with a skin's text file, in the order of its lines, then what is missing. bitmap: the size of the
/// skin's bitmap; empty: it cannot be read, and whether pictures lie inside it is not asked.
std::vector<SkinMistake> checkSkin(std::string_view text, std::optional<BitmapSize> bitmap);

/// What a record fills, in words; number 0 to 40.
std::string_view skinPartName(int number);

}  // namespace corvane
