// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/settings.h"

#include <array>
#include <limits>

#include "engine/mdlPublicFunction.h"
#include "storage/profile_file.h"

namespace corvane {

using mdlDefinePublic::PlayerState;

namespace {

constexpr std::int16_t kMost16 = std::numeric_limits<std::int16_t>::max();
constexpr std::int16_t kDefaultDelayMs = 500;

/// A number with the values that mean something.
struct NumberSetting {
    const char* key;
    std::int16_t PlayerState::*variable;
    std::int16_t least;
    std::int16_t most;
};

constexpr NumberSetting kWindowPos{"WINDOWPOS", &PlayerState::gWindowPos, 0, 2};
constexpr NumberSetting kDelayTime{"DELAYTIME", &PlayerState::gDelayTime, 1, kMost16};
constexpr NumberSetting kAuxType{"AUXTYPE", &PlayerState::gAuxType, -2, kMost16};
constexpr std::array<NumberSetting, 6> kListSettings = {{
    {"PATTERN", &PlayerState::gPattern, 0, 8},
    {"MOVIEZOOM", &PlayerState::gMovieZoom, 0, 5},
    {"IMAGEZOOM", &PlayerState::gImageZoom, 0, 5},
    {"INTERVAL", &PlayerState::gInterval, 0, kMost16},
    {"FILENUM", &PlayerState::gListNumber, 0, 9},
    {"PAGENUM", &PlayerState::gPageNumber, 0, 9},
}};

void readNumber(Player& player, const ProfileSection& settings, const NumberSetting& setting) {
    const auto number = mdlPublicFunction::parseNumber(settings.get(setting.key));
    if (number && *number >= setting.least && *number <= setting.most) {
        player.*setting.variable = static_cast<std::int16_t>(*number);
    }
}

/// Bytes of the UTF-8 sequence that a byte begins; 0 when it begins none.
std::size_t sequenceLength(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

}  // namespace

const std::vector<KeySetting>& keySettings() {
    static const std::vector<KeySetting> kKeys = {
        {"POWER_Click", &PlayerState::gKeyPower, 'P'},      {"MIN_Click", &PlayerState::gKeyMin, 'M'},
        {"REPEAT_Click", &PlayerState::gKeyRepeat, 'R'},    {"SHUFFLE_Click", &PlayerState::gKeyShuffle, 'S'},
        {"PLAY_Click", &PlayerState::gKeyPlay, 'z'},        {"PAUSE_Click", &PlayerState::gKeyPause, 'x'},
        {"STOP_Click", &PlayerState::gKeyStop, 'c'},        {"PREV_Click", &PlayerState::gKeyPrev, ','},
        {"NEXT_Click", &PlayerState::gKeyNext, '.'},        {"VOLUME_Up", &PlayerState::gKeyVolumeUp, 'u'},
        {"VOLUME_Down", &PlayerState::gKeyVolumeDown, 'd'},
    };
    return kKeys;
}

std::string ReadSettingText(Player& player, std::string_view key) {
    const std::string text = readProfileFile(player.ports.files, player.gIniFile);
    return ProfileSection(text, kSettingsSection).get(key);
}

void WriteSetting(Player& player, const std::string& key, const std::string& text) {
    writeSettings(player, {{key, text}});
}

bool writeSettings(Player& player, const std::vector<ProfileKey>& keys) {
    return writeProfileFile(player.ports.files, player.gIniFile, kSettingsSection, keys);
}

std::string switchText(bool on) { return on ? "ON" : "OFF"; }

void readSkinNames(Player& player) {
    const std::string text = readProfileFile(player.ports.files, player.gIniFile);
    const ProfileSection settings(text, kSettingsSection);
    player.gBitmapFileName = settings.get("BITMAPFILE");
    player.gTextFileName = settings.get("TEXTFILE");
    if (player.gBitmapFileName.empty()) player.gBitmapFileName = "DEFAULT.BMP";
    if (player.gTextFileName.empty()) player.gTextFileName = "DEFAULT.CSV";
}

void readSettings(Player& player) {
    const std::string text = readProfileFile(player.ports.files, player.gIniFile);
    const ProfileSection settings(text, kSettingsSection);

    player.gDelayTime = kDefaultDelayMs;
    player.gAuxType = -1;
    player.gPattern = 0;
    readNumber(player, settings, kWindowPos);
    readNumber(player, settings, kDelayTime);
    if (player.gIsWin9x) readNumber(player, settings, kAuxType);
    player.gAutoPlay = settings.get("AUTOPLAY") == "ON";
    player.gQuickPlay = settings.get("QUICK") == "ON";
    for (const NumberSetting& each : kListSettings) readNumber(player, settings, each);
    player.gImageHide = settings.get("IMAGEHIDE") != "OFF";
    for (const KeySetting& each : keySettings()) {
        player.*each.code = characterCode(settings.get(each.key)).value_or(static_cast<std::int16_t>(each.byDefault));
    }
}

std::optional<std::int16_t> characterCode(std::string_view text) {
    if (text.empty()) return std::nullopt;
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const std::int16_t rawByte = byte(0);
    const std::size_t length = sequenceLength(byte(0));
    if (length == 0 || length > text.size()) return rawByte;
    std::uint32_t code = length == 1 ? byte(0) : byte(0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) return rawByte;
        code = code << 6U | (byte(i) & 0x3FU);
    }
    if (length == 3 && code < 0x800) return rawByte;
    if (code > static_cast<std::uint32_t>(kMost16)) return std::nullopt;
    return static_cast<std::int16_t>(code);
}

std::string characterText(std::int16_t code) {
    if (code <= 0) return {};
    const auto value = static_cast<std::uint32_t>(code);
    const auto tail = [&](std::uint32_t shift) { return static_cast<char>(0x80U | (value >> shift & 0x3FU)); };
    if (value < 0x80) return {static_cast<char>(value)};
    if (value < 0x800) return {static_cast<char>(0xC0U | value >> 6U), tail(0)};
    return {static_cast<char>(0xE0U | value >> 12U), tail(6), tail(0)};
}

}  // namespace corvane
