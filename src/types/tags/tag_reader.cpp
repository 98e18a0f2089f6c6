// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/tags/tag_reader.h"

#include <algorithm>

#include "types/tags/tag_kinds.h"
#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace tags {

std::uint64_t bigEndian(std::string_view bytes, std::size_t count) {
    std::uint64_t value = 0;
    if (bytes.size() < count) return 0;
    for (std::size_t i = 0; i < count; ++i) value = value << 8U | static_cast<unsigned char>(bytes[i]);
    return value;
}

std::uint64_t littleEndian(std::string_view bytes, std::size_t count) {
    std::uint64_t value = 0;
    if (bytes.size() < count) return 0;
    for (std::size_t i = count; i > 0; --i) value = value << 8U | static_cast<unsigned char>(bytes[i - 1]);
    return value;
}

std::string fromUtf16(std::string_view bytes, bool bigEnd) {
    const auto unitAt = [&](std::size_t at) {
        const std::string_view two = bytes.substr(at, 2);
        return static_cast<char32_t>(bigEnd ? bigEndian(two, 2) : littleEndian(two, 2));
    };
    std::string shown;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t code = unitAt(at);
        if (code == 0) break;
        if (code >= 0xD800 && code < 0xDC00 && at + 3 < bytes.size()) {
            const char32_t low = unitAt(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
                at += 2;
            }
        }
        if (code < 0xD800 || code >= 0xE000) text::appendUtf8(shown, code);
    }
    return shown;
}

std::string small(std::string_view name) {
    std::string letters(name);
    for (char& each : letters) {
        if (each >= 'A' && each <= 'Z') each = static_cast<char>(each - 'A' + 'a');
    }
    return letters;
}

void readOldId3(const TagSource& file, const TakeTag& take) {
    constexpr std::size_t kSize = 128, kField = 30;
    if (file.size < kSize) return;
    const std::string bytes = file.read(file.size - kSize, kSize);
    if (bytes.size() < kSize || !bytes.starts_with("TAG")) return;
    const auto field = [&bytes](std::size_t at) {
        const std::string_view whole = std::string_view(bytes).substr(at, kField);
        return text::trimmed(whole.substr(0, whole.find('\0')));
    };
    std::size_t at = 3;
    for (const char* const name : {"title", "artist", "album"}) {
        take(name, field(at));
        at += kField;
    }
    if (bytes[125] == '\0' && bytes[126] != '\0') take("track", std::to_string(static_cast<unsigned char>(bytes[126])));
}

/// A list of texts among the chunks, and an ID3 tag that some programs write as one.
void readRiff(const TagSource& file, const TakeTag& take) {
    constexpr int kMostChunks = 1000;
    constexpr std::uint64_t kHead = 8;
    std::uint64_t at = 12;
    for (int count = 0; count < kMostChunks && at + kHead <= file.size; ++count) {
        const std::string head = file.read(at, kHead);
        const std::uint64_t size = littleEndian(part(head, 4), 4);
        if (head.size() < kHead) return;
        if (head.starts_with("id3 ") || head.starts_with("ID3 ")) readId3(file, at + kHead, take);
        if (head.starts_with("LIST")) {
            const std::string list =
                file.read(at + kHead, static_cast<std::size_t>(std::min<std::uint64_t>(size, kMostTagBytesRead)));
            std::string_view left = list;
            if (!left.starts_with("INFO")) left = {};
            for (left = part(left, 4); left.size() > kHead;) {
                const std::string_view name = left.substr(0, 4);
                const std::uint64_t length = littleEndian(left.substr(4), 4);
                const std::string_view value = part(left, kHead, length);
                const char* const known = name == "INAM"                     ? "title"
                                          : name == "IART"                   ? "artist"
                                          : name == "IPRD"                   ? "album"
                                          : name == "ITRK" || name == "IPRT" ? "track"
                                                                             : nullptr;
                if (known != nullptr) take(known, value.substr(0, value.find('\0')));
                left = part(left, kHead + length + length % 2);
            }
        }
        at += kHead + size + size % 2;
    }
}

}  // namespace tags

void readTags(const TagSource& file, const TakeTag& told) {
    using namespace std::string_view_literals;
    const TakeTag take = [&told](std::string_view name, std::string_view value) {
        if (!value.empty()) told(name, value);
    };
    constexpr std::size_t kStart = 16;
    const std::uint64_t begin = tags::readId3(file, 0, take);
    const std::string start = file.read(begin, kStart);
    if (start.starts_with("fLaC")) tags::readFlac(file, begin, take);
    if (start.starts_with("OggS")) tags::readOgg(file, take);
    if (tags::part(start, 4, 4) == "ftyp") tags::readMp4(file, take);
    if (start.starts_with("\x30\x26\xB2\x75"sv)) tags::readAsf(file, take);
    if (start.starts_with("RIFF")) tags::readRiff(file, take);
    tags::readApe(file, take);
    tags::readOldId3(file, take);
}

int trackNumberOf(std::string_view words) {
    constexpr std::size_t kMostDigits = 5;
    int number = 0;
    words = text::trimmed(words);
    for (std::size_t at = 0; at < words.size() && at < kMostDigits && words[at] >= '0' && words[at] <= '9'; ++at)
        number = number * 10 + (words[at] - '0');
    return number;
}

}  // namespace corvane
