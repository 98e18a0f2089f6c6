// SPDX-License-Identifier: GPL-3.0-or-later
// What MP4, ASF and APE have: lists of named values.
#include <algorithm>
#include <array>

#include "types/tags/tag_kinds.h"

namespace corvane::tags {

namespace {

using namespace std::string_view_literals;

constexpr int kMostPieces = 1000;

std::size_t bounded(std::uint64_t size) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(size, kMostTagBytesRead));
}

struct Box {
    std::uint64_t from = 0, end = 0;  ///< of what is inside
};

/// A box of that kind among those of a stretch of the file; empty: there is none.
Box boxIn(const TagSource& file, Box all, std::string_view kind) {
    for (int i = 0; i < kMostPieces && all.from + 8 <= all.end; ++i) {
        const std::string head = file.read(all.from, 16);
        std::uint64_t size = bigEndian(head, 4), inside = 8;
        if (size == 1) {
            size = bigEndian(part(head, 8), 8);
            inside = 16;
        }
        if (size == 0) size = all.end - all.from;
        if (head.size() < 8 || size < inside || size > all.end - all.from) return {};
        if (part(head, 4, 4) == kind) return {all.from + inside, all.from + size};
        all.from += size;
    }
    return {};
}

/// Calls back with each box in there: its kind and what is inside.
template <class Each>
void eachBox(std::string_view left, const Each& each) {
    while (left.size() >= 8) {
        const std::uint64_t size = bigEndian(left, 4);
        if (size < 8) return;
        each(part(left, 4, 4), part(left, 8, size - 8));
        left = part(left, size);
    }
}

void takeItem(std::string_view kind, std::string_view inside, const TakeTag& take) {
    std::string name, value;
    eachBox(inside, [&](std::string_view box, std::string_view bytes) {
        if (box == "name") name = small(part(bytes, 4));
        if (box == "data" && value.empty()) value = part(bytes, 8);
    });
    if (kind == "\xA9nam"sv) take("title", value);
    if (kind ==
        "\xA9"
        "ART"sv)
        take("artist", value);
    if (kind == "aART") take("album_artist", value);
    if (kind ==
        "\xA9"
        "alb"sv)
        take("album", value);
    if (kind == "trkn" && value.size() >= 4) take("track", std::to_string(bigEndian(part(value, 2), 2)));
    if (kind == "----" && !name.empty()) take(name, value);
}

struct Named {
    std::string_view theirs;
    const char* ours;
};

std::string_view ours(std::string_view name) {
    constexpr std::array kNames{Named{"wm/albumtitle", "album"}, Named{"wm/tracknumber", "track"},
                                Named{"wm/albumartist", "album_artist"}};
    for (const Named& each : kNames) {
        if (name == each.theirs) return each.ours;
    }
    return name;
}

/// Title and author, each as long as it is said before all of them.
void takeDescription(std::string_view bytes, const TakeTag& take) {
    constexpr std::size_t kFive = 10;
    std::uint64_t at = kFive;
    for (const std::size_t i : {0U, 1U}) {
        const std::uint64_t size = littleEndian(part(bytes, 2 * i), 2);
        take(i == 0 ? "title" : "artist", fromUtf16(part(bytes, at, size), false));
        at += size;
    }
}

void takeExtended(std::string_view bytes, const TakeTag& take) {
    const std::uint64_t count = littleEndian(bytes, 2);
    std::string_view left = part(bytes, 2);
    for (std::uint64_t i = 0; i < count && left.size() > 6; ++i) {
        const std::uint64_t nameSize = littleEndian(left, 2);
        const std::string name = small(fromUtf16(part(left, 2, nameSize), false));
        left = part(left, 2 + nameSize);
        const std::uint64_t type = littleEndian(left, 2), size = littleEndian(part(left, 2), 2);
        const std::string_view value = part(left, 4, size);
        if (type == 0) take(ours(name), fromUtf16(value, false));
        if (type == 3) take(ours(name), std::to_string(littleEndian(value, 4)));
        left = part(left, 4 + size);
    }
}

}  // namespace

void readMp4(const TagSource& file, const TakeTag& take) {
    Box box{0, file.size};
    for (const std::string_view kind : {"moov"sv, "udta"sv, "meta"sv, "ilst"sv}) {
        box = boxIn(file, box, kind);
        if (box.end == 0) return;
        if (kind == "meta") box.from = std::min(box.from + 4, box.end);  // its version
    }
    const std::string list = file.read(box.from, bounded(box.end - box.from));
    eachBox(list, [&](std::string_view kind, std::string_view inside) { takeItem(kind, inside, take); });
}

void readAsf(const TagSource& file, const TakeTag& take) {
    constexpr std::string_view kDescription = "\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"sv;
    constexpr std::string_view kExtended = "\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50"sv;
    constexpr std::size_t kHead = 30, kObject = 24;
    const std::string head = file.read(0, kHead);
    const std::uint64_t count = littleEndian(part(head, 24), 4);
    std::uint64_t at = kHead;
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(count, kMostPieces); ++i) {
        const std::string object = file.read(at, kObject);
        const std::uint64_t size = littleEndian(part(object, 16), 8);
        if (object.size() < kObject || size < kObject || size > file.size) return;
        const bool plain = object.starts_with(kDescription), more = object.starts_with(kExtended);
        if (plain || more) {
            const std::string body = file.read(at + kObject, bounded(size - kObject));
            plain ? takeDescription(body, take) : takeExtended(body, take);
        }
        at += size;
    }
}

/// At the end, or before the old ID3 tag that stands there.
void readApe(const TagSource& file, const TakeTag& take) {
    constexpr std::uint64_t kFoot = 32, kOldId3 = 128;
    for (const std::uint64_t behind : {std::uint64_t{0}, kOldId3}) {
        if (file.size < kFoot + behind) return;
        const std::uint64_t at = file.size - behind - kFoot;
        const std::string foot = file.read(at, kFoot);
        if (!foot.starts_with("APETAGEX") || foot.size() < kFoot) continue;
        const std::uint64_t size = littleEndian(part(foot, 12), 4), count = littleEndian(part(foot, 16), 4);
        if (size < kFoot || size > at + kFoot || size > kMostTagBytesRead) return;
        const std::string items = file.read(at + kFoot - size, static_cast<std::size_t>(size - kFoot));
        std::string_view left = items;
        for (std::uint64_t i = 0; i < std::min<std::uint64_t>(count, kMostPieces) && left.size() > 8; ++i) {
            const std::uint64_t length = littleEndian(left, 4);
            const std::string_view name = part(left, 8, left.substr(8).find('\0'));
            take(small(name), part(left, 9 + name.size(), length));
            left = part(left, 9 + name.size() + length);
        }
        return;
    }
}

}  // namespace corvane::tags
