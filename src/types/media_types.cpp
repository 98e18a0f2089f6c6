// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/media_types.h"

#include <algorithm>
#include <utility>

namespace corvane {

using mdlDefinePublic::mkCDTrack;
using mdlDefinePublic::mkImage;
using mdlDefinePublic::mkMciFile;
using mdlDefinePublic::mkMovie;
using mdlDefinePublic::mkNone;

namespace {

bool isExtension(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
}

}  // namespace

// clang-format off
MediaTypes::MediaTypes() {
    const TypeFamily kPicture{"pictures", "picture window, a slide show with INTERVAL. Of a GIF the first picture"};
    const TypeFamily kVideo{"video", "movie window"};
    const TypeFamily kQuickTime{"Quick Time", "movie window"};
    const TypeFamily kMpeg{"Mpeg", "movie window"};
    const TypeFamily kMpegSound{"Mpeg sound", "sound"};
    const TypeFamily kMidi{"MIDI", "sound, with the instruments of a soundfont"};
    const TypeFamily kSound{"sound files", "sound"};
    const TypeFamily kMp3{"MP3", "sound"};
    const TypeFamily kRealAudio{"Real audio", "sound, where it can be decoded"};
    const TypeFamily kDiscTrack{"a track of an audio CD", "sound, from the disc"};
    types_ = {
        {"CDA",  mkCDTrack, "CD Audio Now On Play",        TypeGroup::CdAudio,   kDiscTrack,  {"application/x-corvane-cd-track"}, "CDAudio"},
        {"BMP",  mkImage,   "BMP IMAGE",                   TypeGroup::Image,     kPicture,    {"image/bmp"}},
        {"JPEG", mkImage,   "JPEG IMAGE",                  TypeGroup::Image,     kPicture,    {"image/jpeg"}},
        {"JPG",  mkImage,   "JPG IMAGE",                   TypeGroup::Image,     kPicture,    {"image/jpeg"}},
        {"GIF",  mkImage,   "GIF IMAGE",                   TypeGroup::Image,     kPicture,    {"image/gif"}},
        {"AVI",  mkMovie,   "Video File Now On Play",      TypeGroup::Video,     kVideo,      {"video/x-msvideo", "video/vnd.avi"}},
        {"MOV",  mkMovie,   "Quick Time File Now On Play", TypeGroup::QuickTime, kQuickTime,  {"video/quicktime"}},
        {"QT",   mkMovie,   "Quick Time File Now On Play", TypeGroup::QuickTime, kQuickTime,  {"video/quicktime"}},
        {"MID",  mkMciFile, "MIDI File Now On Play",       TypeGroup::Midi,      kMidi,       {"audio/midi"}, "Sequencer"},
        {"RMI",  mkMciFile, "MIDI File Now On Play",       TypeGroup::Midi,      kMidi,       {"audio/midi"}, "Sequencer"},
        {"MPG",  mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      kMpeg,       {"video/mpeg"}},
        {"MPV",  mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      kMpeg,       {"video/mpeg"}},
        // Grouped with the videos, but it is sound.
        {"MP2",  mkMciFile, "Mpeg File Now On Play",       TypeGroup::Mpeg,      kMpegSound,  {"audio/mp2"}},
        {"WAV",  mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     kSound,      {"audio/x-wav", "audio/vnd.wave"}},
        {"MP3",  mkMciFile, "MP3 File Now On Play",        TypeGroup::Mp3,       kMp3,        {"audio/mpeg"}},
        {"M1V",  mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      kMpeg,       {"video/mpeg"}},
        {"MPEG", mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      kMpeg,       {"video/mpeg"}},
        {"RA",   mkMciFile, "RA Now On Play",              TypeGroup::None,      kRealAudio,  {"audio/vnd.rn-realaudio"}, ""},
        {"RM",   mkMciFile, "RM Now On Play",              TypeGroup::None,      kRealAudio,  {"application/vnd.rn-realmedia"}, ""},
        {"RAM",  mkMciFile, "RAM Now On Play",             TypeGroup::None,      kRealAudio,  {"application/ram"}, ""},
        {"RMM",  mkMciFile, "RMM Now On Play",             TypeGroup::None,      kRealAudio,  {"application/vnd.rn-realmedia"}, ""},
        {"SND",  mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     kSound,      {"audio/basic"}},
        {"AU",   mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     kSound,      {"audio/basic"}},
        {"AIF",  mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     kSound,      {"audio/x-aiff"}},
        {"AIFC", mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     kSound,      {"audio/x-aifc"}},
        // Its pattern in the filter ends with the filter's parenthesis, so that filter shows no such file.
        {"AIFF", mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     kSound,      {"audio/x-aiff"}, nullptr, "*.AIFF)"},
    };
    there_.assign(types_.size(), There::Yes);
}
// clang-format on

bool MediaTypes::has(const std::string& extension) const {
    return std::any_of(types_.begin(), types_.end(),
                       [&](const MediaType& each) { return each.extension == extension; });
}

bool MediaTypes::add(MediaType type) {
    if (!isExtension(type.extension) || has(type.extension) || type.kind == mkNone) return false;
    types_.push_back(std::move(type));
    there_.push_back(There::Yes);
    return true;
}

void MediaTypes::addWhereThere(std::vector<MediaType> types, std::function<bool(const MediaType&)> isThere) {
    isThere_ = std::move(isThere);
    for (MediaType& type : types) {
        if (add(std::move(type))) there_.back() = There::NotAsked;
    }
}

bool MediaTypes::isThere(std::size_t index) const {
    There& there = there_[index];
    if (there == There::NotAsked) there = isThere_(types_[index]) ? There::Yes : There::No;
    return there == There::Yes;
}

const MediaType* MediaTypes::find(std::string_view extension) const {
    const auto found =
        std::find_if(types_.begin(), types_.end(), [&](const MediaType& each) { return each.extension == extension; });
    if (found == types_.end() || !isThere(static_cast<std::size_t>(found - types_.begin()))) return nullptr;
    return &*found;
}

std::unordered_map<std::string, std::int16_t> MediaTypes::kindsThatMayBeThere() const {
    std::unordered_map<std::string, std::int16_t> kinds;
    for (std::size_t i = 0; i < types_.size(); ++i) {
        if (there_[i] != There::No) kinds.emplace(types_[i].extension, types_[i].kind);
    }
    return kinds;
}

MediaType MediaTypes::toOpen(const std::string& extension) const {
    if (const MediaType* known = find(extension)) return *known;
    return {extension, mkMciFile, extension + " Now On Play", TypeGroup::None, {}, {}, ""};
}

std::vector<std::string> MediaTypes::mimeTypes() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < types_.size(); ++i) {
        if (there_[i] == There::No) continue;
        for (const std::string& name : types_[i].mimeTypes) {
            if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
        }
    }
    return names;
}

std::string MediaTypes::joined(TypeGroup group, bool ofAll, bool asFilter) const {
    std::string patterns;
    for (std::size_t i = 0; i < types_.size(); ++i) {
        const MediaType& type = types_[i];
        if ((!ofAll && type.group != group) || !isThere(i)) continue;
        if (!patterns.empty()) patterns += ';';
        patterns += asFilter && !type.groupPattern.empty() ? type.groupPattern : "*." + type.extension;
    }
    return patterns;
}

std::string MediaTypes::patterns() const { return joined(TypeGroup::None, true, false); }
std::string MediaTypes::patternsOf(TypeGroup group) const { return joined(group, false, false); }
std::string MediaTypes::filterOf(TypeGroup group) const { return joined(group, false, true); }

}  // namespace corvane
