// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/dense_skin.h"

#include <algorithm>

#include "types/text.h"

namespace corvane {

std::string denseName(const std::string& bitmap) {
    const std::size_t name = bitmap.find_last_of("/\\");
    const std::size_t dot = bitmap.rfind('.');
    const bool hasEnding = dot != std::string::npos && (name == std::string::npos || dot > name);
    std::string dense = bitmap;
    return dense.insert(hasEnding ? dot : bitmap.size(), "@2X");
}

Picture withDense(Pictures& pictures, const Picture& bitmap, const std::string& path) {
    if (bitmap.empty()) return bitmap;
    const int width = kDenseFactor * bitmap.width(), height = kDenseFactor * bitmap.height();
    return pictures.paired(bitmap, [&pictures, name = denseName(path), width, height] {
        const Picture dense = pictures.decode(name).picture;
        return dense.width() == width && dense.height() == height ? dense : Picture();
    });
}

std::vector<std::string> withoutDense(std::vector<std::string> names) {
    const std::vector<std::string> all = names;
    std::erase_if(names, [&all](const std::string& name) {
        return std::any_of(all.begin(), all.end(),
                           [&name](const std::string& plain) { return text::sameWithoutCase(denseName(plain), name); });
    });
    return names;
}

}  // namespace corvane
