// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <variant>
#include <vector>

#include "engine/mdlDefinePublic.h"

namespace corvane {

/// A number. One that is none, or lies outside of the range, leaves the variable as it is.
struct NumberSetting {
    std::int16_t mdlDefinePublic::PlayerState::*variable;
    std::int16_t least = 0;
    std::int16_t most = std::numeric_limits<std::int16_t>::max();
    bool isReset = false;            ///< goes back to its default before it is read; the others keep what they have
    bool isOfOldFamilyOnly = false;  ///< elsewhere it is not read, and stays at its default
};

/// "ON" or "OFF", in capitals. What is off by default is on by "ON" alone, what is on by default is off by "OFF" alone.
struct SwitchSetting {
    bool mdlDefinePublic::PlayerState::*variable;
};

/// The code of its text's first character; an empty text is the default. A code of 0, which never matches, is written
/// as an empty text.
struct KeySetting {
    std::int16_t mdlDefinePublic::PlayerState::*variable;
};

/// A text; an empty one is the default.
struct TextSetting {
    std::string mdlDefinePublic::PlayerState::*variable;
};

/// "ON" or "OFF", in capitals: a convenience is in force or not, however the player was started. Anything else leaves
/// it as it is. Null: all of them; it is read before those of one each.
struct ConvenienceSetting {
    bool Conveniences::*one;
};

/// A text that the desktop itself reads and understands.
struct DesktopSetting {
    const char* byDefault;
};

/// When a setting is written. Each time those of one writer are written together, in the order of the schema.
enum class WrittenBy {
    SettingsDialog,  ///< by its OK
    DeviceChoice,    ///< by the same, when another device than the one in use was chosen
    Editor,          ///< by its OK
    Conveniences,    ///< by their page, what was changed there alone
    Hand             ///< by nobody but the user
};

/// When a setting is read.
enum class ReadAt {
    Start,        ///< with all others
    Skin,         ///< before: the skin is needed first
    Conveniences  ///< before anything asks for them
};

/// The section of the settings file that holds every key but those of one convenience each, which have their own.
inline constexpr const char* kSettingsSection = "KADO";
inline constexpr const char* kConveniencesSection = "CONVENIENCES";

/// One setting of the settings file: every fact about it stands here once. Its default is what its variable is in a
/// fresh PlayerState.
struct Setting {
    const char* key;
    std::variant<NumberSetting, SwitchSetting, KeySetting, TextSetting, ConvenienceSetting, DesktopSetting> value;
    WrittenBy writtenBy;
    const char* meaning;  ///< for the manual's table, as HTML
    ReadAt readAt = ReadAt::Start;
    const char* section = kSettingsSection;
};

using SettingsSchema = std::vector<Setting>;

// Keys that are written with another text than their variable's.
inline constexpr const char* kDelayKey = "DELAYTIME";
inline constexpr const char* kDeviceKey = "AUXTYPE";

inline constexpr const char* kGraphicsKey = "GRAPHICS";

/// The player's settings, in the order in which they are written.
const SettingsSchema& settingsSchema();

/// The command keys of it, in the order in which commands are compared.
std::vector<KeySetting> keySettings(const SettingsSchema& schema = settingsSchema());

/// The settings of one convenience each, in the order in which their page shows them.
std::vector<Setting> convenienceSettings(const SettingsSchema& schema = settingsSchema());
/// The convenience that such a setting switches.
bool Conveniences::*convenienceOf(const Setting& setting);

/// As it is written to the file.
std::string settingText(const mdlDefinePublic::PlayerState& state, const Setting& setting);

/// What its variable is by default, as it would be written.
std::string settingDefault(const Setting& setting);

}  // namespace corvane
