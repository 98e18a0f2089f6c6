// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>

#include "engine/player.h"
#include "fake/fake_machine.h"
#include "fuzz.h"
#include "storage/settings.h"
#include "types/text.h"

namespace corvane {
namespace {

using fuzz::require;

constexpr std::array kSections = {"KADO", "FILELIST", "other", ""};
constexpr std::array kKeys = {"WINDOWPOS", "DELAYTIME",  "AUXTYPE",     "AUTOPLAY",  "QUICK",   "PATTERN",  "MOVIEZOOM",
                              "FILENUM",   "BITMAPFILE", "POWER_Click", "VOLUME_Up", "LIST000", "LISTNAME", "x"};

/// What must be read after a value was written.
std::string expected(std::string_view value) {
    std::string text(value.substr(0, value.find('\0')));
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return text.substr(0, kProfileBuffer - 1);
}

bool isWanted(const std::vector<ProfileKey>& keys, std::string_view key) {
    return std::any_of(keys.begin(), keys.end(),
                       [key](const ProfileKey& each) { return text::sameWithoutCase(each.first, key); });
}

/// Lines of the text that are not of a wanted key: none of them may get lost.
std::vector<std::string> otherLines(std::string_view all, const std::vector<ProfileKey>& keys) {
    std::vector<std::string> lines;
    all = text::withoutMark(all);
    while (!all.empty()) {
        const std::string_view line = text::takeLine(all);
        const auto equals = line.find('=');
        if (equals != std::string_view::npos && isWanted(keys, text::trimmed(line.substr(0, equals)))) continue;
        if (!text::trimmed(line).empty()) lines.emplace_back(line);
    }
    return lines;
}

void checkWriting(std::string_view before, const std::vector<ProfileKey>& keys) {
    const std::string after = withProfileKeys(before, kSettingsSection, keys);
    require(withProfileKeys(after, kSettingsSection, keys) == after, "writing the same again changes nothing");
    for (const char* section : kSections) {
        const ProfileSection old(before, section);
        const ProfileSection now(after, section);
        for (const char* key : kKeys) {
            const std::string value = now.get(key, "default");
            require(value.size() < kProfileBuffer, "a value fits its buffer");
            if (!text::sameWithoutCase(section, kSettingsSection) || !isWanted(keys, key))
                require(value == old.get(key, "default"), "other values stay");
        }
    }
    const ProfileSection now(after, kSettingsSection);
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const bool replaced = isWanted({keys.begin() + static_cast<std::ptrdiff_t>(i) + 1, keys.end()}, keys[i].first);
        require(replaced || now.get(keys[i].first) == expected(keys[i].second), "what was written is read");
    }
    const auto kept = otherLines(before, keys);
    auto next = kept.begin();
    for (const std::string& line : otherLines(after, keys)) {
        if (next != kept.end() && line == *next) ++next;
    }
    require(next == kept.end(), "no other line is lost");
}

void checkReading(const std::string& text) {
    FakeMachine machine;
    Ports ports = machine.ports();
    Player player(ports);
    player.gIniFile = "/app/KADO.INI";
    player.gIsWin9x = true;
    machine.files.add(player.gIniFile, text);
    readSettings(player);
    readSkinNames(player);
    const auto inside = [](std::int16_t value, int least, int most) { return value >= least && value <= most; };
    require(
        inside(player.gWindowPos, 0, 2) && inside(player.gDelayTime, 1, 32767) && inside(player.gAuxType, -2, 32767) &&
            inside(player.gPattern, 0, 8) && inside(player.gMovieZoom, 0, 5) && inside(player.gImageZoom, 0, 5) &&
            inside(player.gInterval, 0, 32767) && inside(player.gListNumber, 0, 9) && inside(player.gPageNumber, 0, 9),
        "numbers stay inside their limits");
    for (const KeySetting& key : keySettings()) {
        const std::int16_t code = player.*key.variable;
        require(code >= 0 && (code == 0 || characterCode(characterText(code)) == code),
                "a key can be written and read");
    }
    require(!player.gBitmapFileName.empty() && !player.gTextFileName.empty(), "there is always a skin");
}

}  // namespace
}  // namespace corvane

/// A settings file behind the keys to set: "key=value" lines up to a blank one; values may hold any byte but LF.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    fuzz::Input input(data, size);
    std::vector<ProfileKey> keys;
    while (!input.empty() && keys.size() < 4) {
        const std::string line = input.until('\n');
        if (line.empty()) break;
        const char* const key = kKeys[static_cast<std::uint8_t>(line[0]) % kKeys.size()];
        keys.emplace_back(key, line.substr(1));
    }
    checkWriting(input.rest(), keys);
    checkReading(std::string(input.rest()));
    return 0;
}
