// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "controls/sound_header.h"

namespace corvane::test {

/// A number's bytes, the lowest first.
inline std::string little(std::uint32_t value, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8U * i & 0xFFU);
    return bytes;
}

/// What a header of uncompressed sound says.
struct Wave {
    std::uint32_t tag = 1;
    std::uint32_t channels = 2;
    std::uint32_t rate = 44100;
    std::uint32_t align = 4;
    std::uint32_t bits = 16;
    std::string kind = "RIFF";
    std::string before = {};
};

inline std::string bytesOfWave(const Wave& wave) {
    return wave.kind + "\xFF\xFF\xFF\xFFWAVE" + wave.before + "fmt " + little(16, 4) + little(wave.tag, 2) +
           little(wave.channels, 2) + little(wave.rate, 4) + little(wave.rate * wave.align, 4) + little(wave.align, 2) +
           little(wave.bits, 2) + "data" + little(0xFFFFFFF0, 4);
}

/// Whether a file of these bytes is handed to the system's players.
inline bool isTried(const std::string& file) {
    return refusalOfSamples([&file](std::uint64_t place, std::size_t count) {
               return place < file.size() ? file.substr(static_cast<std::size_t>(place), count) : std::string();
           })
        .empty();
}

}  // namespace corvane::test
