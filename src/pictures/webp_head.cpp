// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/webp_head.h"

#include <cstdint>

namespace corvane {

namespace {

/// The lowest byte first; 0 where the bytes end before it.
std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t count) {
    if (at > bytes.size() || count > bytes.size() - at) return 0;
    std::uint32_t value = 0;
    for (std::size_t i = count; i-- > 0;) value = value << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    return value;
}

}  // namespace

std::optional<WebpHead> webpHeadOf(std::string_view bytes) {
    constexpr std::size_t kFirstChunk = 12, kChunkHead = 8, kExtended = 10, kLoop = 6;
    constexpr std::uint32_t kMoves = 2;
    if (bytes.substr(0, 4) != "RIFF" || bytes.substr(0, 16).substr(8) != "WEBPVP8X") return std::nullopt;
    if (bytes.size() < kFirstChunk + kChunkHead + kExtended) return std::nullopt;
    WebpHead head;
    head.moves = (number(bytes, 20, 1) & kMoves) != 0;
    head.size = {static_cast<int>(number(bytes, 24, 3)) + 1, static_cast<int>(number(bytes, 27, 3)) + 1};
    for (std::size_t at = kFirstChunk; at + kChunkHead <= bytes.size();) {
        const std::uint32_t length = number(bytes, at + 4, 4);
        const bool isLoop = bytes.substr(at, 4) == "ANIM" && length >= kLoop && bytes.size() - at >= kChunkHead + kLoop;
        if (isLoop) head.times = static_cast<int>(number(bytes, at + kChunkHead + 4, 2));
        if (isLoop || bytes.substr(at, 4) == "ANMF") break;
        at += kChunkHead + length + length % 2;
    }
    return head;
}

}  // namespace corvane
