// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/media_types.h"

#include <initializer_list>
#include <string_view>

#include "engine/mdlPublicFunction.h"

namespace corvane {

using namespace mdlDefinePublic;

namespace {

bool isOneOf(std::string_view extension, std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        if (extension == name) return true;
    }
    return false;
}

}  // namespace

MediaType mediaType(const std::string& path) {
    const std::string extension = mdlPublicFunction::GetExtension(path);
    if (isOneOf(extension, {"BMP", "JPEG", "JPG", "GIF"})) return {mkImage, nullptr, extension + " IMAGE"};
    if (extension == "AVI") return {mkMovie, nullptr, "Video File Now On Play"};
    if (isOneOf(extension, {"MOV", "QT"})) return {mkMovie, nullptr, "Quick Time File Now On Play"};
    if (isOneOf(extension, {"MPG", "MPV", "MP2", "M1V", "MPEG"})) {
        // MP2 is grouped with the videos for its text, but it is sound.
        return {extension == "MP2" ? mkMciFile : mkMovie, nullptr, "Mpeg File Now On Play"};
    }
    if (isOneOf(extension, {"MID", "RMI"})) return {mkMciFile, "Sequencer", "MIDI File Now On Play"};
    if (isOneOf(extension, {"WAV", "SND", "AU", "AIF", "AIFC", "AIFF"})) {
        return {mkMciFile, nullptr, "Sound File Now On Play"};
    }
    if (extension == "CDA") return {mkCDTrack, "CDAudio", "CD Audio Now On Play"};
    if (extension == "MP3") return {mkMciFile, nullptr, "MP3 File Now On Play"};
    return {mkMciFile, "", extension + " Now On Play"};
}

}  // namespace corvane
