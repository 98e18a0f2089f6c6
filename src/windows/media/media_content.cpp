// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/media_content.h"

#include <algorithm>
#include <cstdint>

namespace corvane {

namespace {

bool isControl(char each) {
    const auto byte = static_cast<std::uint8_t>(each);
    return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r' && byte != 0x1B;
}

bool isText(std::string_view start) {
    if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF")) return start.size() < 4 || start[3] != '\xFF';
    return std::none_of(start.begin(), start.end(), isControl);
}

}  // namespace

MediaContent contentOf(std::string_view start) {
    if (start.starts_with("MThd")) return MediaContent::Midi;
    if (start.starts_with("RIFF") && start.size() >= 12) {
        const std::string_view form = start.substr(8, 4);
        if (form == "RMID") return MediaContent::Midi;
        if (form == "WAVE") return MediaContent::Wave;
    }
    return isText(start) ? MediaContent::Text : MediaContent::Other;
}

std::string refusalOf(MediaContent content) {
    if (content == MediaContent::Missing) return "The file cannot be read.";
    if (content == MediaContent::Text) return "This is not a file that can be played.";
    return {};
}

}  // namespace corvane
