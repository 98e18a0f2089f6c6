// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
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

/// What the manual tells of types that are alike, in one row of its table.
struct TypeFamily {
    std::string name;
    std::string playsAs;
};

/// A type of files, by its extension. Every fact about it stands here once.
struct MediaType {
    std::string extension;                        ///< in capitals
    std::int16_t kind = mdlDefinePublic::mkNone;  ///< mkImage, ...: which medium plays it
    std::string text;                             ///< shown on the panel while it is open
    TypeGroup group = TypeGroup::None;            ///< the editor's filter that shows it
    TypeFamily family;                            ///< its row of the manual's table
    std::vector<std::string> mimeTypes;           ///< its names in the shared database of types, the newest last
    const char* deviceType = nullptr;             ///< of the MCI control; null: is left as it is
    std::string groupPattern{};                   ///< its pattern in the group's filter; empty: as everywhere
};

/// The table of the types that lists and drops accept: those that are always played, and what is added. One belongs to
/// each Player, and to its thread.
class MediaTypes {
public:
    MediaTypes();  ///< the types that are always played

    /// Adds a type behind the others; from then on it is listed, opened, told and offered like them. False, and nothing
    /// was added: the extension is known already, or is not one of capitals and digits, or the type has no kind.
    bool add(MediaType type);

    /// Adds types of which it is not known whether they can be played here: `isThere` is asked once for each, when it
    /// is first looked for. One that is not there is none, here and in whatever is told of the types. Those that are
    /// known already are passed over.
    void addWhereThere(std::vector<MediaType> types, std::function<bool(const MediaType&)> isThere);

    /// Those that may be there as well.
    const std::vector<MediaType>& all() const { return types_; }
    /// One of them, by its extension in capitals; null: it is none. Valid until the next add().
    const MediaType* find(std::string_view extension) const;
    bool knows(std::string_view extension) const { return find(extension) != nullptr; }
    /// The kinds, by extension, of those that are there or were not asked for yet; asks for none.
    std::unordered_map<std::string, std::int16_t> kindsThatMayBeThere() const;
    /// The type by which a file of that extension (in capitals) is opened: one that is not known is tried as a sound.
    MediaType toOpen(const std::string& extension) const;
    /// Their names in the shared database of types, each once. Asks for none.
    std::vector<std::string> mimeTypes() const;
    /// Patterns of all types, or of those of a group; ";" between.
    std::string patterns() const;
    std::string patternsOf(TypeGroup group) const;
    /// Those of a group as its filter has them (MediaType::groupPattern).
    std::string filterOf(TypeGroup group) const;

private:
    enum class There { Yes, No, NotAsked };
    bool isThere(std::size_t index) const;
    bool has(const std::string& extension) const;
    std::string joined(TypeGroup group, bool ofAll, bool asFilter) const;

    std::vector<MediaType> types_;
    mutable std::vector<There> there_;  ///< of each; as many
    std::function<bool(const MediaType&)> isThere_;
};

/// What is played today beside the types that always are, where it can be decoded.
std::vector<MediaType> typesOfToday();

}  // namespace corvane
