// SPDX-License-Identifier: GPL-3.0-or-later
// FLAC and Ogg, which have the same comments.
#include <algorithm>

#include "types/tags/tag_kinds.h"

namespace corvane::tags {

namespace {

constexpr int kMostPieces = 1000;  ///< blocks, pages or comments

/// "tracknumber" is what others call "track".
std::string_view usual(std::string_view name) { return name == "tracknumber" ? std::string_view("track") : name; }

}  // namespace

void takeComments(std::string_view bytes, const TakeTag& take) {
    std::string_view left = part(bytes, 4 + littleEndian(bytes, 4));  // behind the name of the program
    const std::uint64_t count = littleEndian(left, 4);
    left = part(left, 4);
    for (std::uint64_t i = 0; i < std::min<std::uint64_t>(count, kMostPieces) && left.size() > 4; ++i) {
        const std::uint64_t size = littleEndian(left, 4);
        const std::string_view comment = part(left, 4, size);
        const std::size_t mark = comment.find('=');
        if (mark != std::string_view::npos) take(usual(small(comment.substr(0, mark))), comment.substr(mark + 1));
        left = part(left, 4 + size);
    }
}

void readFlac(const TagSource& file, std::uint64_t at, const TakeTag& take) {
    constexpr unsigned kComments = 4, kLast = 0x80;
    at += 4;
    for (int i = 0; i < kMostPieces; ++i) {
        const std::string head = file.read(at, 4);
        if (head.size() < 4) return;
        const auto type = static_cast<unsigned char>(head[0]);
        const std::uint64_t size = bigEndian(part(head, 1), 3);
        if ((type & ~kLast) == kComments && size <= kMostTagBytesRead) {
            takeComments(file.read(at + 4, static_cast<std::size_t>(size)), take);
        }
        if ((type & kLast) != 0) return;
        at += 4 + size;
    }
}

/// The comments are the second packet of the first stream.
void readOgg(const TagSource& file, const TakeTag& take) {
    constexpr std::size_t kPage = 27;
    std::uint64_t at = 0;
    std::string packet, serial;
    int packets = 0;
    for (int page = 0; page < kMostPieces && packet.size() < kMostTagBytesRead; ++page) {
        const std::string head = file.read(at, kPage);
        if (head.size() < kPage || !head.starts_with("OggS")) return;
        const std::string laces = file.read(at + kPage, static_cast<unsigned char>(head[26]));
        std::size_t size = 0;
        for (const char each : laces) size += static_cast<unsigned char>(each);
        if (serial.empty()) serial = head.substr(14, 4);
        const std::string body = head.substr(14, 4) == serial ? file.read(at + kPage + laces.size(), size) : "";
        std::size_t from = 0;
        for (const char each : body.empty() ? std::string() : laces) {
            const auto lace = static_cast<unsigned char>(each);
            packet += part(body, from, lace);
            from += lace;
            if (lace == 255) continue;
            if (++packets == 2) {
                if (packet.starts_with("\x03vorbis")) return takeComments(part(packet, 7), take);
                if (packet.starts_with("OpusTags")) return takeComments(part(packet, 8), take);
                if ((packet.empty() ? 0U : static_cast<unsigned char>(packet[0]) & 0x7FU) == 4U)
                    takeComments(part(packet, 4), take);
                return;
            }
            packet.clear();
        }
        at += kPage + laces.size() + size;
    }
}

}  // namespace corvane::tags
