// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolkit/picture_check.h"

#include <algorithm>
#include <string_view>

namespace corvane {

namespace {

using namespace std::string_view_literals;

constexpr std::int64_t kTail = 65536;  ///< bytes behind a JPEG's end mark that cameras may add
constexpr std::int64_t kHead = 65536;  ///< where notes and the first picture of a file begin

/// A number at a place, 0 where the bytes end before it.
std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t count, bool bigFirst = false) {
    if (at + count > bytes.size()) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = bigFirst ? i : count - 1 - i;
        value = (value << 8U) | static_cast<std::uint8_t>(bytes[at + place]);
    }
    return value;
}

std::string tail(PictureBytes& file) { return file.part(std::max<std::int64_t>(0, file.size() - kTail), kTail); }

/// An uncompressed bitmap says by its header how long it is.
bool bmpEndsWhole(PictureBytes& file) {
    const std::string header = file.part(0, 54);
    if (header.size() < 54) return false;
    if (number(header, 14, 4) < 40) return true;  // the old header: left to the reader
    const std::uint32_t compression = number(header, 30, 4);
    if (compression != 0 && compression != 3) return true;
    const std::int64_t width = static_cast<std::int32_t>(number(header, 18, 4));
    const std::int64_t rows = static_cast<std::int32_t>(number(header, 22, 4));
    const std::int64_t line = (width * number(header, 28, 2) + 31) / 32 * 4;
    if (width < 0) return true;  // left to the reader, which refuses it
    const std::int64_t lines = rows < 0 ? -rows : rows;
    return line <= file.size() && number(header, 10, 4) + line * lines <= file.size();
}

/// The last end mark must come after the last start of coded data: a thumbnail in front has marks of its own.
bool jpegEndsWhole(PictureBytes& file) {
    const std::string end = tail(file);
    const std::size_t mark = end.rfind("\xFF\xD9");
    const std::size_t start = end.rfind("\xFF\xDA");
    return mark != std::string::npos && (start == std::string::npos || mark > start);
}

/// The trailer byte; padding of zeros may follow it.
bool gifEndsWhole(PictureBytes& file) {
    std::string end = tail(file);
    while (end.ends_with('\0')) end.pop_back();
    return end.ends_with(';');
}

/// The orientation's entry in the first directory of a camera's notes.
int orientationInNotes(std::string_view notes) {
    constexpr std::uint32_t kOrientation = 0x0112;
    constexpr std::size_t kEntry = 12;
    const bool bigFirst = notes.starts_with("MM");
    if (!bigFirst && !notes.starts_with("II")) return 1;
    const std::size_t directory = number(notes, 4, 4, bigFirst);
    const std::size_t entries = number(notes, directory, 2, bigFirst);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + i * kEntry;
        if (number(notes, entry, 2, bigFirst) != kOrientation) continue;
        const auto value = static_cast<int>(number(notes, entry + 8, 2, bigFirst));
        return value >= 1 && value <= 8 ? value : 1;
    }
    return 1;
}

}  // namespace

bool endsWhole(PictureBytes& file) {
    const std::string start = file.part(0, 4);
    if (start.starts_with("BM")) return bmpEndsWhole(file);
    if (start.starts_with("\xFF\xD8")) return jpegEndsWhole(file);
    if (start.starts_with("\x89PNG")) return tail(file).find("IEND") != std::string::npos;
    if (start.starts_with("GIF8")) return gifEndsWhole(file);
    return true;
}

int orientationOf(PictureBytes& file) {
    constexpr std::string_view kExif = "Exif\0\0"sv;
    const std::string head = file.part(0, kHead);
    if (!head.starts_with("\xFF\xD8")) return 1;
    for (std::size_t at = 2; at + 4 <= head.size() && head[at] == '\xFF';) {
        const char kind = head[at + 1];
        const std::size_t length = number(head, at + 2, 2, true);
        if (kind == '\xDA' || length < 2) break;  // the picture begins
        const std::string_view content = std::string_view(head).substr(at + 4, length - 2);
        if (kind == '\xE1' && content.starts_with(kExif)) return orientationInNotes(content.substr(kExif.size()));
        at += 2 + length;
    }
    return 1;
}

GifPlace gifPlaceOf(PictureBytes& file) {
    const std::string head = file.part(0, kHead);
    if (!head.starts_with("GIF8")) return {};
    const auto word = [&](std::size_t at) { return static_cast<int>(number(head, at, 2)); };
    GifPlace place{word(6), word(8), 0, 0};
    const std::uint32_t flags = number(head, 10, 1);
    std::size_t at = 13 + ((flags & 0x80U) != 0 ? 3U << ((flags & 7U) + 1) : 0U);
    while (at + 1 < head.size() && head[at] == '!') {  // extensions: blocks until an empty one
        at += 2;
        while (at < head.size() && head[at] != '\0') at += 1 + number(head, at, 1);
        ++at;
    }
    if (at < head.size() && head[at] == ',') {
        place.left = word(at + 1);
        place.top = word(at + 3);
    }
    return place;
}

}  // namespace corvane
