// SPDX-License-Identifier: GPL-3.0-or-later
#include "listedit/export_name.h"

#include <algorithm>
#include <array>

#include "types/text.h"

namespace corvane {

namespace {

bool isTail(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

/// Names of devices, with or without something behind a dot.
bool isDevice(std::string_view name) {
    constexpr std::array<std::string_view, 6> kWhole = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    const std::string stem = text::upper(std::string(name.substr(0, name.find('.'))));
    if (std::find(kWhole.begin(), kWhole.end(), stem) != kWhole.end()) return true;
    return stem.size() == 4 && (stem.starts_with("COM") || stem.starts_with("LPT")) && stem[3] >= '0' && stem[3] <= '9';
}

}  // namespace

std::string exportName(std::string_view listName) {
    constexpr std::size_t kMost = 100;
    constexpr std::string_view kForbidden = "<>:\"/\\|?*";
    std::string name(text::trimmed(listName));
    for (char& c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || kForbidden.find(c) != std::string_view::npos) c = '_';
    }
    if (name.size() > kMost) {
        std::size_t end = kMost;
        while (end > 0 && isTail(name[end])) --end;
        name.resize(end);
    }
    while (!name.empty() && (name.back() == '.' || name.back() == ' ')) name.pop_back();
    if (!name.empty() && name.front() == '.') name.front() = '_';
    return isDevice(name) ? "_" + name : name;
}

}  // namespace corvane
