// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/player.h"
#include "storage/private_profile.h"
#include "storage/settings_schema.h"

namespace corvane {

/// The text of a key of the settings file gIniFile; empty when it is missing.
std::string ReadSettingText(Player& player, std::string_view key);
/// Sets a key of the settings file. A failure is not reported.
void WriteSetting(Player& player, const std::string& key, const std::string& text);
/// Sets several keys with one replacement of the settings file. False: nothing was written.
bool writeSettings(Player& player, const std::vector<ProfileKey>& keys);
/// "ON" or "OFF".
std::string switchText(bool on);

/// Reads which conveniences are in force: by how the player was started, where the settings file does not say.
void readConveniences(Player& player);
/// What the next reading of them would put in force, were the player started the same way.
Conveniences conveniencesChosen(Player& player);
/// The same, were no convenience chosen one by one.
Conveniences conveniencesAsStarted(Player& player);
/// Sets the keys of conveniences with one replacement of the settings file; asStarted: takes all others of them out of
/// it. False: nothing was written.
bool writeConveniences(Player& player, const std::vector<ProfileKey>& keys, bool asStarted);
/// Reads the skin's file names, which are needed before all other settings.
void readSkinNames(Player& player);
/// Reads every other setting. What is missing or makes no sense keeps its default.
void readSettings(Player& player, const SettingsSchema& schema = settingsSchema());
/// Writes what the settings of one writer are now, with one replacement of the settings file. A key of `asTyped` gets
/// that text instead. False: nothing was written.
bool writeSettings(Player& player, WrittenBy writer, const std::vector<ProfileKey>& asTyped = {},
                   const SettingsSchema& schema = settingsSchema());

/// The code of the text's first character: its code point in UTF-8, or the byte where the text is not UTF-8. Empty for
/// an empty text and for a character whose code needs more than 15 bits.
std::optional<std::int16_t> characterCode(std::string_view text);
/// The character of a code as UTF-8; empty for 0 and below.
std::string characterText(std::int16_t code);

}  // namespace corvane
