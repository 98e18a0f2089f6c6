// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>

#include "desktop/media/cd_disc.h"
#include "fuzz.h"

namespace corvane {
namespace {

using fuzz::require;

constexpr int kSectors = 40;

/// A folder with an image of some sectors, whose CUE file is written anew each time.
class ImageFolder {
public:
    ImageFolder() {
        const bool inMemory = std::filesystem::is_directory("/dev/shm");
        std::string pattern = inMemory ? "/dev/shm/cue-XXXXXX" : "/tmp/cue-XXXXXX";
        folder_ = ::mkdtemp(pattern.data());
        std::filesystem::current_path(folder_);
        std::ofstream("disc.bin", std::ios::binary) << std::string(kSectors * std::size_t{kCdBytesPerSector}, '\x11');
    }
    ImageFolder(const ImageFolder&) = delete;
    ImageFolder& operator=(const ImageFolder&) = delete;
    ~ImageFolder() { std::filesystem::remove_all(folder_); }
    std::string write(std::string_view text) const {
        std::ofstream(folder_ / "disc.cue", std::ios::binary | std::ios::trunc) << text;
        return folder_ / "disc.cue";
    }

private:
    std::filesystem::path folder_;
};

void checkDisc(CdDisc& disc) {
    bool audio = false;
    std::int64_t before = 0;
    int number = 0;
    std::array<std::int16_t, kCdBytesPerSector / 2> samples{};
    require(!disc.tracks().empty() && disc.tracks().size() <= 99, "a disc has one to 99 tracks");
    for (const CdTrack& track : disc.tracks()) {
        require(track.number > number && track.number <= 99, "tracks are numbered upward");
        require(track.start >= before && track.length >= 0, "tracks follow each other");
        number = track.number;
        before = track.start;
        audio = audio || track.audio;
        for (const std::int64_t sector : {track.start, track.start + track.length - 1, track.start + track.length})
            disc.readSector(sector, samples.data());
    }
    require(audio, "a disc has a track that sounds");
    require(sectorOf(disc.tracks(), tmsfOf(disc.tracks(), before)) >= 0, "a position is on the disc");
}

}  // namespace
}  // namespace corvane

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    static const ImageFolder folder;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const OpenedDisc opened = openDisc(folder.write(text));
    fuzz::require((opened.disc == nullptr) != opened.reason.empty(), "a disc, or the reason why there is none");
    if (opened.disc) checkDisc(*opened.disc);
    return 0;
}
