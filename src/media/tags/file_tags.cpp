// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/tags/file_tags.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>

#include "media/discs/cd_folder.h"
#include "media/discs/cd_image.h"
#include "media/pictures/drive_bytes.h"
#include "media/sound/av_input.h"
#include "types/text.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

/// Tags come first or last in a file; a picture among them is the most there is.
constexpr std::int64_t kMostRead = std::int64_t{16} << 20;
constexpr std::chrono::seconds kLongest{5};
constexpr DriveCalls::Patience kPatience = DriveCalls::kPatience;
constexpr std::array<const char*, 12> kCoverNames{"cover.jpg", "folder.jpg", "Cover.jpg",  "Folder.jpg",
                                                  "cover.png", "folder.png", "cover.jpeg", "folder.jpeg",
                                                  "COVER.JPG", "FOLDER.JPG", "Cover.png",  "Folder.png"};

/// The bytes of a picture that lies in memory.
class HeldBytes : public PictureBytes {
public:
    explicit HeldBytes(std::string_view bytes) : bytes_(bytes) {}
    std::int64_t size() override { return static_cast<std::int64_t>(bytes_.size()); }
    std::string part(std::int64_t from, std::int64_t count) override {
        if (from < 0 || count <= 0 || from >= size()) return {};
        return std::string(bytes_.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(count)));
    }

private:
    std::string_view bytes_;
};

std::int64_t bigEndian(std::string_view bytes) {
    std::int64_t value = 0;
    for (const char c : bytes) value = value << 8 | static_cast<unsigned char>(c);
    return value;
}

/// Whoever is shown a picture decodes it: one that would take much memory there is none.
bool mayBeShown(PictureBytes& picture) {
    constexpr std::string_view kPng = "\x89PNG\r\n\x1A\n";
    constexpr std::int64_t kPngHead = 24;
    const std::int64_t size = picture.size();
    if (size <= kPngHead || size > static_cast<std::int64_t>(kMostCoverBytes)) return false;
    const std::string head = picture.part(0, kPngHead);
    std::int64_t width = 0, height = 0;
    if (head.starts_with(kPng)) {
        width = bigEndian(std::string_view(head).substr(16, 4));
        height = bigEndian(std::string_view(head).substr(20, 4));
    } else if (head.starts_with("\xFF\xD8\xFF")) {
        const PictureSize found = jpegWorkOf(picture).size;
        width = found.width;
        height = found.height;
    }
    return width > 0 && height > 0 && width <= kMaxPictureSide && height <= kMaxPicturePixels / width;
}

std::string coverBeside(const std::string& path, const std::atomic<bool>& givenUp) {
    const std::function<bool()> stop = [&givenUp] { return givenUp.load(); };
    const auto found = DriveCalls::all().ask<std::string>(path, {kPatience, &givenUp}, [path] {
        for (const char* const name : kCoverNames) {
            const std::string cover = (fs::path(path).parent_path() / name).string();
            struct stat status {};
            if (stat(cover.c_str(), &status) == 0 && S_ISREG(status.st_mode)) return cover;
        }
        return std::string();
    });
    if (!found || found->empty()) return {};
    std::string reason;
    const auto file = DriveFile::open(*found, {kPatience, &givenUp}, reason);
    if (!file) return {};
    DriveBytes bytes(*file, stop);
    return mayBeShown(bytes) ? *found : std::string();
}

struct CloseContainer {
    void operator()(AVFormatContext* file) const { av().avformat_close_input(&file); }
};
using Container = std::unique_ptr<AVFormatContext, CloseContainer>;

std::string valueOf(const AVFormatContext& file, std::initializer_list<const char*> names) {
    const auto ofDictionary = [&](const AVDictionary* tags) -> std::string {
        for (const char* const name : names) {
            const AVDictionaryEntry* const tag = av().av_dict_get(tags, name, nullptr, 0);
            if (tag != nullptr && tag->value[0] != '\0') return {tag->value, strnlen(tag->value, kMostTagBytes)};
        }
        return {};
    };
    std::string value = ofDictionary(file.metadata);
    for (unsigned i = 0; value.empty() && i < file.nb_streams; ++i) {
        const bool isSound = file.streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
        if (isSound) value = ofDictionary(file.streams[i]->metadata);
    }
    return value;
}

/// "3", "03/12"
int trackOf(std::string_view text) {
    int number = 0;
    text = text::trimmed(text);
    for (std::size_t at = 0; at < text.size() && at < 5 && text[at] >= '0' && text[at] <= '9'; ++at)
        number = number * 10 + (text[at] - '0');
    return number;
}

std::string coverInside(const AVFormatContext& file) {
    for (unsigned i = 0; i < file.nb_streams; ++i) {
        const AVStream& stream = *file.streams[i];
        if ((stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0 || stream.attached_pic.size <= 0) continue;
        const std::string_view bytes(reinterpret_cast<const char*>(stream.attached_pic.data),
                                     static_cast<std::size_t>(stream.attached_pic.size));
        HeldBytes picture(bytes);
        if (mayBeShown(picture)) return std::string(bytes);
    }
    return {};
}

FileTags tagsInside(const std::string& path, const std::atomic<bool>& givenUp, bool withCover) {
    FileTags tags;
    std::string reason;
    if (!loadAv()) return tags;
    auto opened = DriveFile::open(path, {kPatience, &givenUp}, reason);
    if (!opened || opened->size() == 0) return tags;
    const auto source = AvSource::of(std::move(opened), &givenUp);
    if (!source) return tags;
    source->holdTo(kMostRead, std::chrono::steady_clock::now() + kLongest);
    AVFormatContext* context = nullptr;
    const int error = AvInput::openContainer(context, *source, &givenUp);
    const Container file(context);
    if (error < 0 || !file) return tags;
    tags.title = valueOf(*file, {"title"});
    tags.artist = valueOf(*file, {"artist", "album_artist", "performer", "author"});
    tags.album = valueOf(*file, {"album"});
    tags.track = trackOf(valueOf(*file, {"track", "tracknumber"}));
    if (withCover) tags.cover = coverInside(*file);
    return tags;
}

bool isTrack(const std::string& path) { return text::lower(fs::path(path).extension().string()) == ".cda"; }

FileTags tagsOfTrack(const std::string& path) {
    const std::string place = discPlace(path);
    FileTags tags;
    if (!isDiscImage(place)) return tags;
    const std::string name = fs::path(path).stem().string();
    tags.track = trackOf(std::string_view(name).substr(name.size() - std::min<std::size_t>(name.size(), 2)));
    const TrackTexts texts = textsOfImage(place, tags.track);
    tags.title = texts.title.substr(0, kMostTagBytes);
    tags.artist = texts.performer.substr(0, kMostTagBytes);
    tags.album = texts.album.substr(0, kMostTagBytes);
    return tags;
}

}  // namespace

FileTags readFileTags(const std::string& path, const std::atomic<bool>& givenUp, bool withCover) {
    if (isTrack(path)) return tagsOfTrack(path);
    FileTags tags = tagsInside(path, givenUp, withCover);
    if (withCover && tags.cover.empty() && !givenUp) tags.coverPath = coverBeside(path, givenUp);
    return tags;
}

}  // namespace corvane
