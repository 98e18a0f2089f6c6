// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/tags/file_tags.h"

#include "types/loudness.h"
#include "types/tags/tag_reader.h"
#include "winapi/files/plain_file.h"

namespace corvane {

namespace {

constexpr std::size_t kMostTagBytes = 4096;  ///< of one text

void readTagsOf(const std::wstring& path, const TakeTag& take) {
    const Handle file = openPlainFile(path);
    LARGE_INTEGER size{};
    if (!file || GetFileSizeEx(file.get(), &size) == 0) return;
    const auto read = [&file](std::uint64_t from, std::size_t count) {
        LARGE_INTEGER place{};
        place.QuadPart = static_cast<LONGLONG>(from);
        std::string bytes(count, '\0');
        DWORD got = 0;
        if (SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN) == 0 ||
            ReadFile(file.get(), bytes.data(), static_cast<DWORD>(count), &got, nullptr) == 0) {
            got = 0;
        }
        bytes.resize(got);
        return bytes;
    };
    readTags({read, static_cast<std::uint64_t>(size.QuadPart)}, take);
}

void takeFirst(std::string& text, std::string_view value) {
    if (text.empty()) text = value.substr(0, kMostTagBytes);
}

}  // namespace

FileTexts textsOfFile(const std::wstring& path) {
    FileTexts texts;
    std::string albumArtist;
    readTagsOf(path, [&](std::string_view name, std::string_view value) {
        if (name == "title") takeFirst(texts.title, value);
        if (name == "artist") takeFirst(texts.artist, value);
        if (name == "album_artist") takeFirst(albumArtist, value);
        if (name == "album") takeFirst(texts.album, value);
        if (name == "track" && texts.track == 0) texts.track = trackNumberOf(value);
    });
    takeFirst(texts.artist, albumArtist);
    return texts;
}

float levelOfFile(const std::wstring& path, SoundLevel level) {
    LoudnessTags tags;
    readTagsOf(path, [&tags](std::string_view name, std::string_view value) { takeLoudnessTag(tags, name, value); });
    return level == SoundLevel::AsRecorded ? 1 : loudnessFactor(tags, level == SoundLevel::OfAlbum);
}

}  // namespace corvane
