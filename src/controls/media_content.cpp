// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/media_content.h"

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

bool isPicture(std::string_view start) {
    using namespace std::string_view_literals;
    constexpr std::size_t kBitmapHeader = 14;  // four bytes of zeros in it tell it from other files that begin so
    if (start.starts_with("BM")) return start.size() > kBitmapHeader && start.substr(6, 4) == "\0\0\0\0"sv;
    for (const std::string_view each : {"\x89PNG\r\n\x1A\n"sv, "\xFF\xD8\xFF"sv, "GIF87a"sv, "GIF89a"sv, "II*\0"sv,
                                        "MM\0*"sv, "\0\0\1\0"sv, "\0\0\0\x0CjP  "sv}) {
        if (start.starts_with(each)) return true;
    }
    return start.starts_with("RIFF") && start.size() >= 12 && start.substr(8, 4) == "WEBP";
}

}  // namespace

MediaContent contentOf(std::string_view start) {
    if (isPicture(start)) return MediaContent::Picture;
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
    if (content == MediaContent::Picture) return "This is a picture, neither a sound nor a movie.";
    return {};
}

}  // namespace corvane
