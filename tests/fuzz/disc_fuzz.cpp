// SPDX-License-Identifier: GPL-3.0-or-later
// The image of a disc, from its sheet to what is heard: a sheet of others and the files that it names.
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>

#include "fuzz.h"
#include "media/discs/cd_image.h"
#include "media/discs/cd_sound.h"

namespace {

using corvane::CdTrack;
using corvane::fuzz::require;
namespace fs = std::filesystem;

constexpr std::size_t kSamples = std::size_t{corvane::kCdFramesPerSector} * 2;
constexpr std::size_t kMostTracks = 6;  ///< of which sectors are read

/// A folder with one sheet and one file of bytes, which bears a raw file's name and a sound's.
class Image {
public:
    Image() {
        std::string pattern = (fs::temp_directory_path() / "corvane-fuzz-disc-XXXXXX").string();
        require(mkdtemp(pattern.data()) != nullptr, "there is a folder");
        folder_ = pattern;
        write("a.bin", {});
        fs::create_hard_link(folder_ / "a.bin", folder_ / "b.wav");
    }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image() {
        std::error_code failed;
        fs::remove_all(folder_, failed);
    }
    std::string lay(std::string_view sheet, std::string_view bytes) const {
        write("disc.cue", sheet);
        write("a.bin", bytes);
        return (folder_ / "disc.cue").string();
    }

private:
    void write(const char* name, std::string_view bytes) const {
        std::ofstream(folder_ / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    fs::path folder_;
};

void readSectors(corvane::CdDisc& disc) {
    std::array<std::int16_t, kSamples + 1> samples{};
    samples.back() = 777;
    const auto read = [&](std::int64_t sector) {
        disc.readSector(sector, samples.data());
        require(samples.back() == 777, "a sector is written and nothing behind it");
    };
    std::size_t count = 0;
    for (const CdTrack& track : disc.tracks()) {
        if (count++ == kMostTracks) break;
        for (const std::int64_t sector :
             {track.start - 1, track.start, track.start + track.length / 2, track.start + track.length - 1})
            read(sector);
    }
    for (const std::int64_t nowhere : {INT64_MIN, std::int64_t{-1}, INT64_MAX}) read(nowhere);
}

void hear(corvane::CdSound& sound) {
    require(sound.frames() >= 0, "a disc has a length");
    std::array<float, 2000 * 2 + 1> samples{};
    samples.back() = 7.0F;
    for (const std::int64_t frame : {std::int64_t{0}, sound.frames() / 2, sound.frames() - 100, sound.frames()}) {
        sound.seek(frame);
        require(sound.read(samples.data(), 2000) <= 2000 && samples.back() == 7.0F, "no more than was asked for");
        const std::int32_t place = sound.toTmsf(frame);
        require(sound.fromTmsf(place) <= sound.frames(), "a place of the disc is on it");
    }
    for (int track = -1; track <= 100; ++track) sound.trackLength(track);
}

}  // namespace

/// The sheet, a NUL, and the bytes of "a.bin" and "b.wav".
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Image image;
    corvane::fuzz::Input input(data, size);
    const std::string sheet = input.until('\0');
    const std::string place = image.lay(sheet, input.rest());
    int before = 0;
    for (const int track : corvane::audioTracksOfImage(place)) {
        require(track > before && track <= 99, "tracks are numbered upward");
        before = track;
    }
    corvane::OpenedDisc opened = corvane::openImage(place);
    require(opened.disc ? opened.reason.empty() : !opened.reason.empty(), "a disc, or the reason why there is none");
    if (!opened.disc) return 0;
    require(before > 0, "a disc that opens was offered");
    readSectors(*opened.disc);
    corvane::CdSound sound(std::move(opened.disc), place);
    hear(sound);
    return 0;
}
