// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/settings.h"

#include <algorithm>
#include <limits>
#include <variant>

#include "storage/profile_file.h"
#include "types/numbers.h"

namespace corvane {

using mdlDefinePublic::PlayerState;

namespace {

constexpr std::int16_t kMost16 = std::numeric_limits<std::int16_t>::max();

/// Takes a setting's text as its variable.
struct Reader {
    PlayerState& state;
    const PlayerState& fresh;
    std::string text;

    void operator()(const NumberSetting& number) const {
        if (number.isReset) state.*number.variable = fresh.*number.variable;
        if (number.isOfOldFamilyOnly && !state.gIsWin9x) return;
        const auto read = parseNumber(text);
        if (read && *read >= number.least && *read <= number.most) {
            state.*number.variable = static_cast<std::int16_t>(*read);
        }
    }
    void operator()(const SwitchSetting& one) const {
        const bool byDefault = fresh.*one.variable;
        state.*one.variable = text == switchText(!byDefault) ? !byDefault : byDefault;
    }
    void operator()(const KeySetting& key) const {
        state.*key.variable = characterCode(text).value_or(fresh.*key.variable);
    }
    void operator()(const ConvenienceSetting& each) const {
        const bool on = text == switchText(true);
        if (!on && text != switchText(false)) return;
        if (each.one == nullptr) {
            state.conveniences = on ? kAllConveniences : Conveniences();
        } else {
            state.conveniences.*each.one = on;
        }
    }
    void operator()(const DesktopSetting& /*text*/) const {}
    void operator()(const TextSetting& one) const { state.*one.variable = text.empty() ? fresh.*one.variable : text; }
};

void readThose(const Player& player, PlayerState& into, ReadAt when, const SettingsSchema& schema) {
    const std::string file = readProfileFile(player.ports.files, player.gIniFile);
    const ProfileSection settings(file, kSettingsSection);
    const ProfileSection conveniences(file, kConveniencesSection);
    const PlayerState fresh;
    for (const Setting& each : schema) {
        if (each.readAt != when) continue;
        const ProfileSection& section = std::string_view(each.section) == kSettingsSection ? settings : conveniences;
        std::visit(Reader{into, fresh, section.get(each.key)}, each.value);
    }
}

Conveniences conveniencesBy(const Player& player, const SettingsSchema& schema) {
    PlayerState read;
    read.conveniences = player.ports.process.startedByDesktop() ? kAllConveniences : Conveniences();
    readThose(player, read, ReadAt::Conveniences, schema);
    return read.conveniences;
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

void readConveniences(Player& player) { player.conveniences = conveniencesChosen(player); }

Conveniences conveniencesChosen(Player& player) { return conveniencesBy(player, settingsSchema()); }

Conveniences conveniencesAsStarted(Player& player) {
    SettingsSchema schema = settingsSchema();
    std::erase_if(schema, [](const Setting& each) { return convenienceOf(each) != nullptr; });
    return conveniencesBy(player, schema);
}

bool writeConveniences(Player& player, const std::vector<ProfileKey>& keys, bool asStarted) {
    std::vector<std::string> gone;
    for (const Setting& each : convenienceSettings()) {
        if (asStarted) gone.emplace_back(each.key);
    }
    if (keys.empty() && gone.empty()) return true;
    return writeProfileFile(player.ports.files, player.gIniFile, kConveniencesSection, keys, gone);
}

void readSkinNames(Player& player) { readThose(player, player, ReadAt::Skin, settingsSchema()); }

void readSettings(Player& player, const SettingsSchema& schema) { readThose(player, player, ReadAt::Start, schema); }

bool writeSettings(Player& player, WrittenBy writer, const std::vector<ProfileKey>& asTyped,
                   const SettingsSchema& schema) {
    std::vector<ProfileKey> keys;
    for (const Setting& each : schema) {
        if (each.writtenBy != writer) continue;
        const auto typed =
            std::find_if(asTyped.begin(), asTyped.end(), [&](const ProfileKey& one) { return one.first == each.key; });
        keys.emplace_back(each.key, typed != asTyped.end() ? typed->second : settingText(player, each));
    }
    return writeSettings(player, keys);
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
