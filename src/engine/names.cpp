// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>

#include "engine/mdlPublicFunction.h"
#include "types/text.h"

namespace corvane::mdlPublicFunction {

std::string GetExtension(std::string_view path) {
    const std::size_t dot = path.find('.');
    return text::capitals(dot == std::string_view::npos ? path : path.substr(dot + 1));
}

std::string GetBaseName(std::string_view path) { return std::string(path.substr(0, path.find('.'))); }

std::string withoutDoubledSeparator(std::string path, char separator) {
    if (path.find(std::string(2, separator)) == 2) path.erase(2, 1);
    return path;
}

}  // namespace corvane::mdlPublicFunction
