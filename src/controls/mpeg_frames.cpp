// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mpeg_frames.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane {

namespace {

constexpr std::size_t kHeader = 4;

/// What a frame's four bytes say; 0 bytes long: they are no header. One of a free rate does not say its length.
struct Frame {
    std::size_t length = 0;
    bool isFree = false;
    std::uint32_t kind = 0;  ///< what all frames of one sound have alike
};

unsigned bitsOf(std::uint32_t header, unsigned from, unsigned count) { return header >> from & ((1U << count) - 1); }

/// Thousands of bits a second.
unsigned rateOf(bool first, unsigned layer, unsigned index) {
    constexpr std::array<unsigned, 15> kFirst1{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448};
    constexpr std::array<unsigned, 15> kFirst2{0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384};
    constexpr std::array<unsigned, 15> kFirst3{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    constexpr std::array<unsigned, 15> kLater1{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256};
    constexpr std::array<unsigned, 15> kLater2{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
    if (layer == 1) return (first ? kFirst1 : kLater1).at(index);
    if (first) return (layer == 2 ? kFirst2 : kFirst3).at(index);
    return kLater2.at(index);
}

bool looksLikeFrame(std::uint32_t header) { return header >> 21U == 0x7FF && bitsOf(header, 17, 2) != 0; }

Frame frameOf(std::uint32_t header) {
    const unsigned version = bitsOf(header, 19, 2);  // 3 the first, 2 the second, 0 its half
    const unsigned layer = 4 - bitsOf(header, 17, 2);
    const unsigned rate = bitsOf(header, 12, 4);
    const unsigned samples = bitsOf(header, 10, 2);
    if (!looksLikeFrame(header) || version == 1 || rate == 15 || samples == 3) return {};
    constexpr std::array<unsigned, 3> kSamples{44100, 48000, 32000};
    const bool first = version == 3;
    const unsigned perSecond = kSamples.at(samples) >> (first ? 0U : version == 2 ? 1U : 2U);
    const unsigned padding = bitsOf(header, 9, 1);
    constexpr std::uint32_t kAlike = 0xFFFE0C00;
    Frame frame{kHeader, rate == 0, header & kAlike};
    if (frame.isFree) return frame;
    const unsigned bits = rateOf(first, layer, rate) * 1000;
    if (layer == 1) {
        frame.length = std::size_t{12U * bits / perSecond + padding} * 4;
    } else {
        frame.length = (layer == 3 && !first ? 72U : 144U) * bits / perSecond + padding;
    }
    return frame;
}

std::uint32_t headerAt(std::string_view bytes, std::size_t at) {
    std::uint32_t header = 0;
    for (std::size_t i = 0; i < kHeader; ++i) header = header << 8U | static_cast<std::uint8_t>(bytes[at + i]);
    return header;
}

}  // namespace

bool leadsToFrames(std::string_view start) {
    if (start.size() < kHeader || !looksLikeFrame(headerAt(start, 0))) return true;
    for (std::size_t at = 0; at + kHeader <= start.size(); ++at) {
        const Frame frame = frameOf(headerAt(start, at));
        if (frame.length == 0) continue;
        if (frame.isFree) return true;
        const std::size_t next = at + frame.length;
        if (next + kHeader > start.size()) return at == 0;  // one frame and no more
        if (frameOf(headerAt(start, next)).kind == frame.kind) return true;
    }
    return false;
}

}  // namespace corvane
