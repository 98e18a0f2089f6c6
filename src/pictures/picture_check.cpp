// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/picture_check.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "pictures/byte_walk.h"

namespace corvane {

namespace {

using namespace std::string_view_literals;

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

/// An uncompressed bitmap says by its header how long it is.
bool bmpEndsWhole(PictureBytes& file) {
    constexpr std::size_t kOldHeader = 12;
    const std::string header = file.part(0, 54);
    const bool old = number(header, 14, 4) == kOldHeader;
    if (header.size() < (old ? 26U : 54U)) return false;
    const std::uint32_t compression = old ? 0 : number(header, 30, 4);
    if (compression != 0 && compression != 3) return true;
    const auto side = [&](std::size_t wide, std::size_t narrow) -> std::int64_t {
        if (old) return number(header, narrow, 2);
        return static_cast<std::int32_t>(number(header, wide, 4));
    };
    const std::int64_t width = side(18, 18);
    const std::int64_t rows = side(22, 20);
    const std::int64_t line = (width * number(header, old ? 24 : 28, 2) + 31) / 32 * 4;
    if (width < 0) return true;  // left to the reader, which refuses it
    const std::int64_t lines = rows < 0 ? -rows : rows;
    return line <= file.size() && number(header, 10, 4) + line * lines <= file.size();
}

/// From mark to mark until the one of the end; false: there is none. What cameras and telephones add behind it does not
/// count, nor does a thumbnail in front, which lies inside a segment. visit: called with each mark and the place of its
/// segment's content.
template <class Visit>
bool walkJpeg(ByteWalk& walk, const Visit& visit) {
    walk.at = 2;
    while (walk.pass('\xFF')) {
        std::int64_t mark = walk.number(1);
        while (mark == 0xFF) mark = walk.number(1);
        if (mark == 0xD9) return true;
        const bool standsAlone = mark <= 0x01 || (mark >= 0xD0 && mark <= 0xD8);  // 0: a byte of the coded data
        if (standsAlone) continue;
        const std::int64_t length = walk.number(2, true);
        const std::int64_t content = walk.at;
        visit(mark);
        walk.at = length >= 2 ? content + length - 2 : content;
    }
    return false;
}

bool jpegEndsWhole(PictureBytes& file) {
    ByteWalk walk(file);
    return walkJpeg(walk, [](std::int64_t) {});
}

/// A frame's segment: precision, rows, columns, and of each colour its number, its share across and down, its table.
void learnFrame(ByteWalk& walk, JpegWork& work) {
    constexpr std::int64_t kBlock = 8;
    constexpr std::size_t kMostColours = 4;
    ++walk.at;
    const std::int64_t rows = walk.number(2, true);
    const std::int64_t columns = walk.number(2, true);
    const std::int64_t colours = walk.number(1);
    std::array<std::int64_t, kMostColours> shares{};
    std::int64_t across = 1;
    std::int64_t down = 1;
    for (std::int64_t i = 0; i < std::min<std::int64_t>(colours, kMostColours); ++i) {
        ++walk.at;
        shares[static_cast<std::size_t>(i)] = std::max<std::int64_t>(walk.number(1), 0);
        ++walk.at;
        across = std::max(across, shares[static_cast<std::size_t>(i)] >> 4);
        down = std::max(down, shares[static_cast<std::size_t>(i)] & 15);
    }
    const auto blocks = [](std::int64_t side, std::int64_t share, std::int64_t largest) {
        const std::int64_t samples = (std::max<std::int64_t>(side, 0) * share + largest - 1) / largest;
        return (samples + kBlock - 1) / kBlock;
    };
    work.size = {static_cast<int>(std::max<std::int64_t>(columns, 0)),
                 static_cast<int>(std::max<std::int64_t>(rows, 0))};
    work.samples = 0;
    for (const std::int64_t share : shares) {
        work.samples += blocks(columns, share >> 4, across) * blocks(rows, share & 15, down) * kBlock * kBlock;
    }
}

/// From block to block until the trailer. Behind a whole picture, which is all that is shown, anything else may come.
bool gifEndsWhole(PictureBytes& file) {
    constexpr auto kColours = [](std::int64_t flags) { return (flags & 0x80) != 0 ? 3LL << ((flags & 7) + 1) : 0; };
    ByteWalk walk(file);
    walk.at = 10;
    const std::int64_t flags = walk.number(1);
    if (flags < 0) return false;
    walk.at = 13 + kColours(flags);
    bool anyPicture = false;
    for (;;) {
        const std::int64_t block = walk.number(1);
        if (block < 0 || block == ';') return block == ';';
        if (block == ',') {
            walk.at += 8;
            walk.at += 1 + kColours(walk.number(1));  // and the size of a code
        } else if (block == '!') {
            ++walk.at;
        } else {
            return anyPicture;
        }
        std::int64_t part = walk.number(1);
        while (part > 0) {
            walk.at += part;
            part = walk.number(1);
        }
        if (part < 0) return false;
        anyPicture = anyPicture || block == ',';
    }
}

/// From chunk to chunk until the one of the end.
bool pngEndsWhole(PictureBytes& file) {
    constexpr std::int64_t kEnd = 0x49454E44;  // "IEND"
    ByteWalk walk(file);
    walk.at = 8;
    while (!walk.ended()) {
        const std::int64_t length = walk.number(4, true);
        if (walk.number(4, true) == kEnd) return true;
        walk.at += length + 4;  // and its checksum
    }
    return false;
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
    if (start.starts_with("\x89PNG")) return pngEndsWhole(file);
    if (start.starts_with("GIF8")) return gifEndsWhole(file);
    return true;
}

JpegWork jpegWorkOf(PictureBytes& file) {
    constexpr std::int64_t kScan = 0xDA;
    JpegWork work;
    if (!file.part(0, 4).starts_with("\xFF\xD8")) return work;
    ByteWalk walk(file);
    walkJpeg(walk, [&](std::int64_t mark) {
        const bool isTable = mark == 0xC4 || mark == 0xC8 || mark == 0xCC;
        if (mark >= 0xC0 && mark <= 0xCF && !isTable) learnFrame(walk, work);
        if (mark == kScan) ++work.scans;
    });
    return work;
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

}  // namespace corvane
