// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "engine/mdlPublicFunction.h"

namespace corvane::mdlPublicFunction {

using mdlDefinePublic::kFullVolume;

namespace {

constexpr float kIndicatorHalf = 45;        // twips: half the indicator's size
constexpr double kPi = 3.14;                // deliberately this coarse: positions come out as it gives them
constexpr std::uint16_t kWaveOut = 65535;   // gAuxType -1 read as unsigned
constexpr std::uint16_t kMixerProduct = 8;  // product identifier looked for by the automatic choice

/// One level's direction: the angle of the first quadrant used, in degrees, and the signs of its two terms.
struct Direction {
    int angle;
    int left;
    int top;
};
constexpr std::array<Direction, 16> kDirections = {{{45, -1, 1},
                                                    {27, -1, 1},
                                                    {9, -1, 1},
                                                    {9, -1, -1},
                                                    {27, -1, -1},
                                                    {45, -1, -1},
                                                    {63, -1, -1},
                                                    {81, -1, -1},
                                                    {81, 1, -1},
                                                    {63, 1, -1},
                                                    {45, 1, -1},
                                                    {27, 1, -1},
                                                    {9, 1, -1},
                                                    {9, 1, 1},
                                                    {27, 1, 1},
                                                    {45, 1, 1}}};

/// Half-way between neighbouring level words, each 16-bit half rounded by itself.
constexpr std::array<std::uint32_t, 15> kThresholds = {0x08880889, 0x1999199A, 0x2AAA2AAB, 0x3BBB3BBC, 0x4CCC4CCD,
                                                       0x5DDD5DDE, 0x6EEE6EEF, 0x7FFF8000, 0x91119112, 0xA222A223,
                                                       0xB333B334, 0xC444C445, 0xD555D556, 0xE666E667, 0xF777F778};

// Tangents of 18, 36, 54 and 72 degrees rounded to two places; the ends of the arc are narrower on purpose.
constexpr double kTan18 = 0.32, kTan36 = 0.73, kTan54 = 1.38, kTan72 = 3.08, kArcEnd = 1.2;

/// Steps of the sector counted from the horizontal: 0 to 4.
std::int16_t sector(double ratio) {
    if (ratio <= kTan18) return 0;
    if (ratio <= kTan36) return 1;
    if (ratio <= kTan54) return 2;
    if (ratio <= kTan72) return 3;
    return 4;
}

/// On a border between two sectors the one nearer the present level holds.
std::int16_t nearer(std::int16_t present, std::int16_t lower, std::int16_t upper) {
    return present <= lower ? lower : upper;
}

bool isAuxDevice(std::int16_t auxType) { return static_cast<std::uint16_t>(auxType) < kWaveOut; }
bool usesAuxDevice(const Player& player) { return isAuxDevice(player.gAuxType); }

}  // namespace

std::uint32_t volumeWord(std::int16_t level) { return static_cast<std::uint32_t>(level) * 0x11111111U; }

std::int16_t volumeLevel(std::uint32_t word) {
    std::int16_t level = 0;
    while (level < kFullVolume && word >= kThresholds[static_cast<std::size_t>(level)]) ++level;
    return level;
}

std::optional<std::uint32_t> readVolume(Player& player) {
    return usesAuxDevice(player) ? player.ports.sound.auxGetVolume(player.gAuxType)
                                 : player.ports.sound.waveOutGetVolume();
}

void writeVolume(Player& player, std::uint32_t word) {
    if (usesAuxDevice(player)) {
        player.ports.sound.auxSetVolume(player.gAuxType, word);
    } else {
        player.ports.sound.waveOutSetVolume(word);
    }
}

void findVolume(Player& player) {
    const std::optional<std::uint32_t> word = readVolume(player);
    if (!word) return;
    player.volumeAtStart = {*word, player.gAuxType, player.ports.sound.waveOutName().value_or("")};
    player.gVolume = volumeLevel(*word);
}

void putVolumeBack(Player& player) {
    const std::optional<FoundVolume> found = std::exchange(player.volumeAtStart, std::nullopt);
    if (!found) return;
    if (isAuxDevice(found->auxType)) {
        player.ports.sound.auxSetVolume(found->auxType, found->word);
    } else {
        player.ports.sound.waveOutSetVolumeOf(found->output, found->word);
    }
}

void followVolume(Player& player) {
    const std::optional<std::uint32_t> word = usesAuxDevice(player) ? std::nullopt : readVolume(player);
    if (!word || volumeLevel(*word) == player.gVolume) return;
    player.gVolume = volumeLevel(*word);
    placeIndicator(player);
}

void chooseVolumeDevice(Player& player) {
    if (player.gAuxType != mdlDefinePublic::kChooseDevice) return;
    player.gAuxType = 0;
    const int devices = player.ports.sound.auxGetNumDevs();
    for (int device = 0; device < devices; ++device) {
        const auto caps = player.ports.sound.auxGetDevCaps(device);
        if (caps && caps->product == kMixerProduct) player.gAuxType = static_cast<std::int16_t>(device);
    }
}

void placeIndicator(const mdlDefinePublic::PlayerState& state, MainPanelControls& panel) {
    const Direction& direction = kDirections[static_cast<std::size_t>(state.gVolume)];
    const double angle = direction.angle * kPi / 180;
    const Image& knob = panel.imgMainPanel[kKnobImage];
    const double left = state.gVolumeX - kIndicatorHalf + direction.left * state.gVolumeRadius * std::cos(angle);
    const double top = state.gVolumeY - kIndicatorHalf + direction.top * state.gVolumeRadius * std::sin(angle);
    panel.shpVolume.Move(static_cast<float>(knob.Left + left), static_cast<float>(knob.Top + top));
}

void placeIndicator(Player& player) {
    auto* const panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    placeIndicator(player, *panel);
    panel->imgMainPanel[kKnobImage].notify(PropertyId::Value);
}

void setVolumeLevel(Player& player, std::int16_t level) {
    player.gVolume = level;
    placeIndicator(player);
    writeVolume(player, volumeWord(level));
}

void SetVolume(Player& player, std::int16_t down) {
    std::int16_t level = player.gVolume;
    if (down != 0 && level > 0) --level;
    if (down == 0 && level < kFullVolume) ++level;
    setVolumeLevel(player, level);
}

std::optional<std::int16_t> knobLevel(const Player& player, float x, float y) {
    const double dx = static_cast<double>(x) - player.gVolumeX;
    const double dy = static_cast<double>(y) - player.gVolumeY;
    const std::int16_t present = player.gVolume;
    if (dx == 0) {
        if (dy < 0) return nearer(present, 7, 8);
        return std::nullopt;  // the centre itself, or straight below: inside the gap
    }
    if (dy == 0) return dx < 0 ? nearer(present, 2, 3) : nearer(present, 12, 13);
    const double ratio = std::abs(dy / dx);
    if (dy > 0) {
        if (ratio > kArcEnd) return std::nullopt;
        const std::int16_t step = sector(ratio);
        // On a shared border the first row of the table wins: from the bottom up on the left, downward on the right.
        if (dx < 0) {
            if (ratio >= kTan36) return static_cast<std::int16_t>(0);
            return static_cast<std::int16_t>(ratio >= kTan18 ? 1 : 2);
        }
        return static_cast<std::int16_t>(13 + step);
    }
    if (dx < 0) return static_cast<std::int16_t>(3 + sector(ratio));
    if (ratio > kTan72) return static_cast<std::int16_t>(8);
    if (ratio >= kTan54) return static_cast<std::int16_t>(9);
    if (ratio >= kTan36) return static_cast<std::int16_t>(10);
    return static_cast<std::int16_t>(ratio >= kTan18 ? 11 : 12);
}

}  // namespace corvane::mdlPublicFunction
