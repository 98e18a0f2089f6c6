// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/loudness.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "types/text.h"

namespace corvane {

namespace {

constexpr double kMostDecibels = 64;  ///< either way; what says more makes no sense
constexpr double kMostPeak = 64;
constexpr double kR128Steps = 256;  ///< in a decibel
constexpr double kR128Least = -32768, kR128Most = 32767;
constexpr double kR128Lower = 5;  ///< decibels between the two levels that are aimed at
constexpr std::size_t kMostDigits = 20;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// A decimal number at the front of a text, with a dot or a comma, as all languages of the system write it; `rest` is
/// what stands behind it. Empty: there is none, or one with more digits than make sense.
std::optional<double> takeDecimal(std::string_view text, std::string_view& rest) {
    text = text::trimmed(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    double value = 0, place = 1;
    std::size_t digits = 0;
    bool fraction = false;
    for (; !text.empty(); text.remove_prefix(1)) {
        const char c = text.front();
        if (!fraction && (c == '.' || c == ',')) {
            fraction = true;
            continue;
        }
        if (!isDigit(c)) break;
        if (++digits > kMostDigits) return std::nullopt;
        value = value * 10 + (c - '0');
        if (fraction) place *= 10;
    }
    if (digits == 0) return std::nullopt;
    rest = text::trimmed(text);
    return (negative ? -value : value) / place;
}

std::optional<double> gainOf(std::string_view value) {
    std::string_view unit;
    const auto gain = takeDecimal(value, unit);
    const bool makesSense =
        gain && std::abs(*gain) <= kMostDecibels && (unit.empty() || text::sameWithoutCase(unit, "dB"));
    return makesSense ? gain : std::nullopt;
}

std::optional<double> peakOf(std::string_view value) {
    std::string_view rest;
    const auto peak = takeDecimal(value, rest);
    return peak && *peak > 0 && *peak <= kMostPeak && rest.empty() ? peak : std::nullopt;
}

std::optional<double> r128Of(std::string_view value) {
    std::string_view rest;
    const auto steps = takeDecimal(value, rest);
    const bool makesSense = steps && rest.empty() && *steps >= kR128Least && *steps <= kR128Most;
    if (!makesSense || std::abs(*steps) > kMostDecibels * kR128Steps) return std::nullopt;
    return *steps / kR128Steps;
}

struct Tag {
    std::string_view name;
    LoudnessTags::Level LoudnessTags::*level;
    std::optional<double> LoudnessTags::Level::*field;
    std::optional<double> (*read)(std::string_view value);
};
using Level = LoudnessTags::Level;
constexpr std::array<Tag, 6> kTags{{{"REPLAYGAIN_TRACK_GAIN", &LoudnessTags::track, &Level::gain, gainOf},
                                    {"REPLAYGAIN_TRACK_PEAK", &LoudnessTags::track, &Level::peak, peakOf},
                                    {"R128_TRACK_GAIN", &LoudnessTags::track, &Level::r128, r128Of},
                                    {"REPLAYGAIN_ALBUM_GAIN", &LoudnessTags::album, &Level::gain, gainOf},
                                    {"REPLAYGAIN_ALBUM_PEAK", &LoudnessTags::album, &Level::peak, peakOf},
                                    {"R128_ALBUM_GAIN", &LoudnessTags::album, &Level::r128, r128Of}}};

std::optional<double> decibelsOf(const Level& level) {
    if (level.gain) return level.gain;
    return level.r128 ? std::optional(*level.r128 + kR128Lower) : std::nullopt;
}

}  // namespace

void takeLoudnessTag(LoudnessTags& tags, std::string_view name, std::string_view value) {
    for (const Tag& tag : kTags) {
        if (text::sameWithoutCase(name, tag.name)) tags.*tag.level.*tag.field = tag.read(value);
    }
}

float loudnessFactor(const LoudnessTags& tags, bool ofAlbum) {
    const Level& wanted = ofAlbum ? tags.album : tags.track;
    const Level& level = decibelsOf(wanted) ? wanted : ofAlbum ? tags.track : tags.album;
    const auto decibels = decibelsOf(level);
    if (!decibels) return 1;
    const double most = 1 / level.peak.value_or(1);
    return static_cast<float>(std::min(std::pow(10, *decibels / 20), most));
}

}  // namespace corvane
