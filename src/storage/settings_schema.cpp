// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/settings_schema.h"

#include "storage/settings.h"

namespace corvane {

using State = mdlDefinePublic::PlayerState;

namespace {
constexpr std::int16_t kMost16 = std::numeric_limits<std::int16_t>::max();
}  // namespace

// clang-format off
const SettingsSchema& settingsSchema() {
    constexpr WrittenBy kDialog = WrittenBy::SettingsDialog;
    constexpr WrittenBy kEditor = WrittenBy::Editor;
    constexpr WrittenBy kPage = WrittenBy::Conveniences;
    constexpr ReadAt kFirst = ReadAt::Conveniences;
    static const SettingsSchema kSchema = {
        {"POWER_Click",   KeySetting{&State::gKeyPower},      kDialog, "ends the program"},
        {"MIN_Click",     KeySetting{&State::gKeyMin},        kDialog, "minimises the panel"},
        {"REPEAT_Click",  KeySetting{&State::gKeyRepeat},     kDialog, "repeat on or off"},
        {"SHUFFLE_Click", KeySetting{&State::gKeyShuffle},    kDialog, "shuffles the list"},
        {"PLAY_Click",    KeySetting{&State::gKeyPlay},       kDialog, "plays"},
        {"PAUSE_Click",   KeySetting{&State::gKeyPause},      kDialog, "pauses"},
        {"STOP_Click",    KeySetting{&State::gKeyStop},       kDialog, "stops"},
        {"PREV_Click",    KeySetting{&State::gKeyPrev},       kDialog, "the file before"},
        {"NEXT_Click",    KeySetting{&State::gKeyNext},       kDialog, "the next file"},
        {"VOLUME_Up",     KeySetting{&State::gKeyVolumeUp},   kDialog, "one step louder"},
        {"VOLUME_Down",   KeySetting{&State::gKeyVolumeDown}, kDialog, "one step softer"},
        {"IMAGEHIDE",     SwitchSetting{&State::gImageHide},  kDialog, "a picture is closed before the next file"},
        {"AUTOPLAY",      SwitchSetting{&State::gAutoPlay},   kDialog, "Auto Start"},
        {"QUICK",         SwitchSetting{&State::gQuickPlay},  kDialog, "Quick Play"},
        // Written as it was typed. 0 would be a timer that never ticks.
        {kDelayKey,       NumberSetting{&State::gDelayTime, 1, kMost16, true}, kDialog,
         "Delay Time, in thousandths of a second"},
        {"BITMAPFILE",    TextSetting{&State::gBitmapFileName}, kDialog, "the skin's bitmap, in PANELSET", ReadAt::Skin},
        {"TEXTFILE",      TextSetting{&State::gTextFileName},   kDialog, "the CSV file that belongs to it", ReadAt::Skin},
        {"WINDOWPOS",     NumberSetting{&State::gWindowPos, 0, 2}, kDialog,
         "what stays on top: 0 nothing, 1 the panel, 2 movies and pictures"},
        // Counts from the next start, so that the variable keeps what is in use.
        {kDeviceKey,      NumberSetting{&State::gAuxType, -2, kMost16, true, true}, WrittenBy::DeviceChoice,
         "the device whose volume the knob sets: -1 WAVE OUT, from 0 on another one, -2 one that is chosen at the start. "
         "Not read on Linux"},
        {"PATTERN",       NumberSetting{&State::gPattern, 0, 8, true}, kEditor, "PATTERN, by its place in the list"},
        {"MOVIEZOOM",     NumberSetting{&State::gMovieZoom, 0, 5}, kEditor, "zoom of movies, by its place in the list"},
        {"IMAGEZOOM",     NumberSetting{&State::gImageZoom, 0, 5}, kEditor, "zoom of pictures, by its place in the list"},
        {"INTERVAL",      NumberSetting{&State::gInterval, 0, kMost16}, kEditor, "seconds that a picture stays"},
        {"FILENUM",       NumberSetting{&State::gListNumber, 0, 9}, kEditor, "the list"},
        {"PAGENUM",       NumberSetting{&State::gPageNumber, 0, 9}, kEditor, "the page"},
        {kGraphicsKey,    DesktopSetting{"AUTO"}, WrittenBy::Hand,
         "on Linux, movies by the graphics driver: AUTO where it has a card, ON always, OFF never"},
        {"CONVENIENCES",  ConvenienceSetting{nullptr}, kPage, "all of the <a href=\"#conveniences\">conveniences</a>", kFirst},
        {"NAMES",        ConvenienceSetting{&Conveniences::names}, kPage, "a file's kind is what follows the last dot of its name", kFirst, kConveniencesSection},
        {"KINDS",        ConvenienceSetting{&Conveniences::kinds}, kPage, "FLAC, MP4, PNG and the other types of today", kFirst, kConveniencesSection},
        {"TEXTS",        ConvenienceSetting{&Conveniences::texts}, kPage, "title and artist by the tags of the file", kFirst, kConveniencesSection},
        {"LOUDNESS",     ConvenienceSetting{&Conveniences::loudness}, kPage, "equal loudness by the tags, albums without seams", kFirst, kConveniencesSection},
        {"LISTS",        ConvenienceSetting{&Conveniences::lists}, kPage, "lists of other players, and folders", kFirst, kConveniencesSection},
        {"LONG",         ConvenienceSetting{&Conveniences::longLists}, kPage, "lists of up to 9,999 entries", kFirst, kConveniencesSection},
        {"PLAYS",        ConvenienceSetting{&Conveniences::plays}, kPage, "what is dropped plays at once", kFirst, kConveniencesSection},
        {"FIND",         ConvenienceSetting{&Conveniences::find}, kPage, "Ctrl+F finds an entry of the list", kFirst, kConveniencesSection},
        {"HANDS",        ConvenienceSetting{&Conveniences::hands}, kPage, "slider, wheel, double-click and keys as in players of today", kFirst, kConveniencesSection},
        {"RESUME",       ConvenienceSetting{&Conveniences::resume}, kPage, "what played goes on at the next start", kFirst, kConveniencesSection},
    };
    return kSchema;
}
// clang-format on

std::vector<KeySetting> keySettings(const SettingsSchema& schema) {
    std::vector<KeySetting> keys;
    for (const Setting& each : schema) {
        if (const auto* key = std::get_if<KeySetting>(&each.value)) keys.push_back(*key);
    }
    return keys;
}

bool Conveniences::*convenienceOf(const Setting& setting) {
    const auto* const one = std::get_if<ConvenienceSetting>(&setting.value);
    return one == nullptr ? nullptr : one->one;
}

std::vector<Setting> convenienceSettings(const SettingsSchema& schema) {
    std::vector<Setting> settings;
    for (const Setting& each : schema) {
        if (convenienceOf(each) != nullptr) settings.push_back(each);
    }
    return settings;
}

namespace {

struct Texts {
    const State& state;
    std::string operator()(const NumberSetting& number) const { return std::to_string(state.*number.variable); }
    std::string operator()(const SwitchSetting& one) const { return switchText(state.*one.variable); }
    std::string operator()(const KeySetting& key) const { return characterText(state.*key.variable); }
    std::string operator()(const TextSetting& text) const { return state.*text.variable; }
    std::string operator()(const DesktopSetting& text) const { return text.byDefault; }
    std::string operator()(const ConvenienceSetting& each) const {
        return switchText(each.one == nullptr ? state.conveniences == kAllConveniences : state.conveniences.*each.one);
    }
};

}  // namespace

std::string settingText(const State& state, const Setting& setting) { return std::visit(Texts{state}, setting.value); }

std::string settingDefault(const Setting& setting) { return settingText(State(), setting); }

}  // namespace corvane
