// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::mdlDefinePublic {

inline constexpr std::int16_t mkNone = -1;
inline constexpr std::int16_t mkImage = 0;
inline constexpr std::int16_t mkMovie = 1;
inline constexpr std::int16_t mkMciFile = 2;
inline constexpr std::int16_t mkCDTrack = 3;

}  // namespace corvane::mdlDefinePublic

namespace corvane {

/// What the editor shows together.
enum class TypeGroup { CdAudio, Image, Midi, Mp3, Mpeg, QuickTime, Sound, Video, None };

/// A type of files, by its extension. Every fact about it stands here once.
struct MediaType {
    std::string extension;                        ///< in capitals
    std::int16_t kind = mdlDefinePublic::mkNone;  ///< mkImage, ...: which medium plays it
    std::string text;                             ///< shown on the panel while it is open
    TypeGroup group = TypeGroup::None;            ///< the editor's filter that shows it
    std::vector<std::string> mimeTypes;           ///< its names in the shared database of types, the newest last
    const char* deviceType = nullptr;             ///< of the MCI control; null: is left as it is
};

/// The types that lists and drops accept.
const std::vector<MediaType>& mediaTypes();
/// One of them, by its extension in capitals; null: it is none.
const MediaType* findMediaType(std::string_view extension);
/// The type by which a file of that extension (in capitals) is opened: one that is not known is tried as a sound.
MediaType typeToOpen(const std::string& extension);
/// Their names in the shared database of types, each once.
std::vector<std::string> mimeTypes();
/// Patterns of a group's extensions, ";" between; of all with None.
std::string patternsOf(TypeGroup group);

}  // namespace corvane
