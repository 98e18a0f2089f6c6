// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "forms/picture.h"
#include "skintool/skin_check.h"

namespace corvane {

/// The files of one skin. A path is "" where there is no such file.
struct SkinFiles {
    std::string name;    ///< folder and name without an ending
    std::string bitmap;  ///< NAME.BMP
    std::string dense;   ///< NAME@2X.BMP
    std::string text;    ///< NAME.CSV
};

/// The skin that a path means: of either of its files, or of both without the ending. Endings may be of small letters.
SkinFiles findSkin(const std::string& path);

/// A skin that was read.
struct Skin {
    Picture bitmap;
    std::optional<std::string> text;
    std::vector<SkinMistake> mistakes;  ///< of reading; what the contents lack is checkSkin's
};
Skin readSkin(const SkinFiles& files);

/// Everything that is wrong with the skin's files and with what they say.
std::vector<SkinMistake> checkSkinFiles(const SkinFiles& files);

}  // namespace corvane
