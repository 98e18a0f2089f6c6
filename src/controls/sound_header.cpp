// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/sound_header.h"

#include <optional>
#include <string_view>

#include "controls/mpeg_frames.h"

namespace corvane {

namespace {

constexpr std::uint32_t kMostChannels = 64;
constexpr std::uint32_t kLeastRate = 100;
constexpr std::uint32_t kMostRate = 1'536'000;
constexpr int kMostChunks = 256;  ///< before the one that tells the format
constexpr std::size_t kChunkHead = 8;

enum class Order { LittleEnd, BigEnd };

std::uint32_t number(std::string_view bytes, std::size_t at, std::size_t size, Order order) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t from = order == Order::BigEnd ? at + i : at + size - 1 - i;
        value = value << 8U | static_cast<std::uint8_t>(bytes[from]);
    }
    return value;
}

bool isSound(std::uint32_t channels, std::uint32_t rate) {
    return channels >= 1 && channels <= kMostChannels && rate >= kLeastRate && rate <= kMostRate;
}

/// The beginning of the first chunk of that name; empty: it comes late or never.
std::optional<std::string> chunkOf(const ReadAt& bytesAt, std::string_view name, std::size_t count, Order order) {
    constexpr std::uint64_t kFirst = 12;
    std::uint64_t place = kFirst;
    for (int i = 0; i < kMostChunks; ++i) {
        const std::string head = bytesAt(place, kChunkHead);
        if (head.size() < kChunkHead) break;
        const std::uint64_t size = number(head, 4, 4, order);
        if (std::string_view(head).substr(0, 4) == name)
            return size < count ? std::string() : bytesAt(place + kChunkHead, count);
        place += kChunkHead + size + size % 2;
    }
    return std::nullopt;
}

bool isWave(const ReadAt& bytesAt, Order order) {
    constexpr std::size_t kFormat = 16;
    const std::string format = chunkOf(bytesAt, "fmt ", kFormat, order).value_or("");
    if (format.size() < kFormat) return false;
    const auto two = [&](std::size_t at) { return number(format, at, 2, order); };
    const std::uint32_t channels = two(2);
    const std::uint32_t align = two(12);
    const std::uint32_t bits = two(14);
    if (!isSound(channels, number(format, 4, 4, order)) || align == 0) return false;
    constexpr std::uint32_t kPlain = 1;
    constexpr std::uint32_t kFloat = 3;
    const bool isCounted = two(0) == kPlain || two(0) == kFloat;
    constexpr std::uint32_t kMostBits = 64;
    return !isCounted || (bits >= 1 && bits <= kMostBits && align == channels * ((bits + 7) / 8));
}

bool isAiff(const ReadAt& bytesAt) {
    constexpr std::size_t kFormat = 18;
    const std::string format = chunkOf(bytesAt, "COMM", kFormat, Order::BigEnd).value_or("");
    if (format.size() < kFormat) return false;
    const std::uint32_t bits = number(format, 6, 2, Order::BigEnd);
    // The rate is a number of 80 bits: its exponent, and the 32 highest of its digits.
    constexpr std::uint32_t kExponentOfDigits = 0x3FFF + 31;
    const std::uint32_t exponent = number(format, 8, 2, Order::BigEnd);
    if (exponent > kExponentOfDigits || kExponentOfDigits - exponent > 31) return false;
    const std::uint32_t rate = number(format, 10, 4, Order::BigEnd) >> (kExponentOfDigits - exponent);
    constexpr std::uint32_t kMostBits = 64;
    return isSound(number(format, 0, 2, Order::BigEnd), rate) && bits <= kMostBits;
}

bool isAu(std::string_view start) {
    constexpr std::size_t kHeader = 24;
    if (start.size() < kHeader) return false;
    return isSound(number(start, 20, 4, Order::BigEnd), number(start, 16, 4, Order::BigEnd));
}

/// Behind a tag of names and pictures, where there is one.
bool isMpeg(const ReadAt& bytesAt, std::string_view start) {
    constexpr std::size_t kTag = 10;
    constexpr std::size_t kLook = 64 * 1024;
    std::uint64_t place = 0;
    if (start.starts_with("ID3") && start.size() >= kTag) {
        for (std::size_t i = 6; i < kTag; ++i) place = place << 7U | (static_cast<std::uint8_t>(start[i]) & 0x7FU);
        place += kTag;
    }
    return leadsToFrames(bytesAt(place, kLook));
}

bool isWhatItSays(const ReadAt& bytesAt) {
    constexpr std::size_t kStart = 24;
    const std::string start = bytesAt(0, kStart);
    const std::string_view kind = std::string_view(start).substr(0, 4);
    const std::string_view form = start.size() >= 12 ? std::string_view(start).substr(8, 4) : std::string_view();
    if (form == "WAVE" && (kind == "RIFF" || kind == "RF64" || kind == "BW64"))
        return isWave(bytesAt, Order::LittleEnd);
    if (form == "WAVE" && kind == "RIFX") return isWave(bytesAt, Order::BigEnd);
    if (kind == "FORM" && (form == "AIFF" || form == "AIFC")) return isAiff(bytesAt);
    return kind == ".snd" ? isAu(start) : isMpeg(bytesAt, start);
}

}  // namespace

std::string refusalOfSamples(const ReadAt& bytesAt) {
    return isWhatItSays(bytesAt) ? std::string() : "Its header tells of no sound that could be.";
}

}  // namespace corvane
