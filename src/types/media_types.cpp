// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/media_types.h"

#include <algorithm>

namespace corvane {

using namespace mdlDefinePublic;

// clang-format off
const std::vector<MediaType>& mediaTypes() {
    static const std::vector<MediaType> kTypes = {
        {"CDA",  mkCDTrack, "CD Audio Now On Play",        TypeGroup::CdAudio,   {"application/x-corvane-cd-track"}, "CDAudio"},
        {"BMP",  mkImage,   "BMP IMAGE",                   TypeGroup::Image,     {"image/bmp"}},
        {"JPEG", mkImage,   "JPEG IMAGE",                  TypeGroup::Image,     {"image/jpeg"}},
        {"JPG",  mkImage,   "JPG IMAGE",                   TypeGroup::Image,     {"image/jpeg"}},
        {"GIF",  mkImage,   "GIF IMAGE",                   TypeGroup::Image,     {"image/gif"}},
        {"AVI",  mkMovie,   "Video File Now On Play",      TypeGroup::Video,     {"video/x-msvideo", "video/vnd.avi"}},
        {"MOV",  mkMovie,   "Quick Time File Now On Play", TypeGroup::QuickTime, {"video/quicktime"}},
        {"QT",   mkMovie,   "Quick Time File Now On Play", TypeGroup::QuickTime, {"video/quicktime"}},
        {"MID",  mkMciFile, "MIDI File Now On Play",       TypeGroup::Midi,      {"audio/midi"}, "Sequencer"},
        {"RMI",  mkMciFile, "MIDI File Now On Play",       TypeGroup::Midi,      {"audio/midi"}, "Sequencer"},
        {"MPG",  mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      {"video/mpeg"}},
        {"MPV",  mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      {"video/mpeg"}},
        // Grouped with the videos, but it is sound.
        {"MP2",  mkMciFile, "Mpeg File Now On Play",       TypeGroup::Mpeg,      {"audio/mp2"}},
        {"WAV",  mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     {"audio/x-wav", "audio/vnd.wave"}},
        {"MP3",  mkMciFile, "MP3 File Now On Play",        TypeGroup::Mp3,       {"audio/mpeg"}},
        {"M1V",  mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      {"video/mpeg"}},
        {"MPEG", mkMovie,   "Mpeg File Now On Play",       TypeGroup::Mpeg,      {"video/mpeg"}},
        {"RA",   mkMciFile, "RA Now On Play",              TypeGroup::None,      {"audio/vnd.rn-realaudio"}, ""},
        {"RM",   mkMciFile, "RM Now On Play",              TypeGroup::None,      {"application/vnd.rn-realmedia"}, ""},
        {"RAM",  mkMciFile, "RAM Now On Play",             TypeGroup::None,      {"application/ram"}, ""},
        {"RMM",  mkMciFile, "RMM Now On Play",             TypeGroup::None,      {"application/vnd.rn-realmedia"}, ""},
        {"SND",  mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     {"audio/basic"}},
        {"AU",   mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     {"audio/basic"}},
        {"AIF",  mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     {"audio/x-aiff"}},
        {"AIFC", mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     {"audio/x-aifc"}},
        {"AIFF", mkMciFile, "Sound File Now On Play",      TypeGroup::Sound,     {"audio/x-aiff"}},
    };
    return kTypes;
}
// clang-format on

const MediaType* findMediaType(std::string_view extension) {
    const auto& types = mediaTypes();
    const auto found =
        std::find_if(types.begin(), types.end(), [&](const MediaType& each) { return each.extension == extension; });
    return found != types.end() ? &*found : nullptr;
}

MediaType typeToOpen(const std::string& extension) {
    if (const MediaType* known = findMediaType(extension)) return *known;
    return {extension, mkMciFile, extension + " Now On Play", TypeGroup::None, {}, ""};
}

std::vector<std::string> mimeTypes() {
    std::vector<std::string> names;
    for (const MediaType& type : mediaTypes()) {
        for (const std::string& name : type.mimeTypes) {
            if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
        }
    }
    return names;
}

std::string patternsOf(TypeGroup group) {
    std::string patterns;
    for (const MediaType& type : mediaTypes()) {
        if (group != TypeGroup::None && type.group != group) continue;
        patterns += (patterns.empty() ? "*." : ";*.") + type.extension;
    }
    return patterns;
}

}  // namespace corvane
