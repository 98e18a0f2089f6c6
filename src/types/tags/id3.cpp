// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "types/tags/tag_kinds.h"

namespace corvane::tags {

namespace {

constexpr std::size_t kHead = 10;

/// Seven bits of each byte.
std::uint64_t sevenBits(std::string_view bytes) {
    std::uint64_t value = 0;
    for (const char each : part(bytes, 0, 4)) value = value << 7U | (static_cast<unsigned char>(each) & 0x7FU);
    return value;
}

/// Without the zeros that keep it from looking like sound.
std::string withoutGuards(std::string_view bytes) {
    std::string plain;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        plain += bytes[i];
        if (bytes[i] == '\xFF' && i + 1 < bytes.size() && bytes[i + 1] == '\0') ++i;
    }
    return plain;
}

/// A text by the byte that tells its encoding, and how many bytes it takes with the zero that ends it.
struct Text {
    std::string words;
    std::size_t bytes = 0;
};

Text textOf(std::string_view bytes, char encoding) {
    const bool wide = encoding == 1 || encoding == 2;
    if (!wide) {
        const std::string_view words = bytes.substr(0, bytes.find('\0'));
        return {std::string(words), std::min(words.size() + 1, bytes.size())};
    }
    std::size_t end = 0;
    while (end + 1 < bytes.size() && (bytes[end] != '\0' || bytes[end + 1] != '\0')) end += 2;
    const std::string_view words = bytes.substr(0, end);
    const bool bigEnd = words.starts_with("\xFE\xFF") || (encoding == 2 && !words.starts_with("\xFF\xFE"));
    const bool marked = words.starts_with("\xFE\xFF") || words.starts_with("\xFF\xFE");
    return {fromUtf16(words.substr(marked ? 2 : 0), bigEnd), std::min(end + 2, bytes.size())};
}

struct Frame {
    const char* id;
    const char* old;  ///< in the tags of three letters
    const char* name;
};
constexpr std::array kFrames{Frame{"TIT2", "TT2", "title"}, Frame{"TPE1", "TP1", "artist"},
                             Frame{"TPE2", "TP2", "album_artist"}, Frame{"TALB", "TAL", "album"},
                             Frame{"TRCK", "TRK", "track"}};

void takeFrame(std::string_view id, std::string_view body, const TakeTag& take) {
    if (body.empty()) return;
    const char encoding = body.front();
    const std::string_view rest = body.substr(1);
    if (id == "TXXX" || id == "TXX") {
        const Text name = textOf(rest, encoding);
        take(small(name.words), textOf(part(rest, name.bytes), encoding).words);
        return;
    }
    for (const Frame& each : kFrames) {
        if (id == each.id || id == each.old) take(each.name, textOf(rest, encoding).words);
    }
}

void takeFrames(std::string_view left, int version, const TakeTag& take) {
    const std::size_t letters = version == 2 ? 3 : 4;
    const std::size_t head = version == 2 ? 6 : kHead;
    while (left.size() > head && left.front() != '\0') {
        const std::string_view id = left.substr(0, letters);
        const std::string_view told = left.substr(letters);
        const std::uint64_t size = version == 4 ? sevenBits(told) : bigEndian(told, letters);
        std::string_view body = part(left, head, size);
        const unsigned flags = version == 4 ? static_cast<unsigned char>(left[head - 1]) : 0U;
        if ((flags & 0x01U) != 0) body = part(body, 4);  // its length before the guards, once more
        const std::string plain = (flags & 0x02U) != 0 ? withoutGuards(body) : std::string(body);
        if ((flags & 0x0CU) == 0) takeFrame(id, plain, take);  // neither packed nor enciphered
        left = part(left, head + size);
    }
}

}  // namespace

std::uint64_t readId3(const TagSource& file, std::uint64_t at, const TakeTag& take) {
    const std::string head = file.read(at, kHead);
    if (head.size() < kHead || !head.starts_with("ID3")) return at;
    const int version = head[3];
    const auto flags = static_cast<unsigned char>(head[5]);
    const std::uint64_t size = sevenBits(part(head, 6));
    const std::uint64_t end = at + kHead + size + ((flags & 0x10U) != 0 ? kHead : 0);
    if (version < 2 || version > 4) return end;
    std::string bytes =
        file.read(at + kHead, static_cast<std::size_t>(std::min<std::uint64_t>(size, kMostTagBytesRead)));
    if ((flags & 0x80U) != 0 && version < 4) bytes = withoutGuards(bytes);
    std::string_view frames = bytes;
    if ((flags & 0x40U) != 0 && version > 2) {
        frames = part(frames, version == 4 ? sevenBits(frames) : bigEndian(frames, 4) + 4);
    }
    takeFrames(frames, version, take);
    return end;
}

}  // namespace corvane::tags
