// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/cd_disc.h"

#include <cdio/cdio.h>
#include <cdio/logging.h>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace corvane {

namespace {

namespace fs = std::filesystem;

/// Between an audio session and a data session lie lead-out, lead-in and pregap, which belong to no track.
constexpr std::int64_t kSessionGapSectors = 11400;
constexpr int kReadAttempts = 20;

struct DestroyDisc {
    void operator()(CdIo_t* disc) const { cdio_destroy(disc); }
};
using DiscHandle = std::unique_ptr<CdIo_t, DestroyDisc>;

/// The library's own handler ends the process on an error.
void silenceLibrary() {
    cdio_log_set_handler([](cdio_log_level_t, const char*) {});
}

std::vector<CdTrack> readTracks(const CdIo_t* disc) {
    std::vector<CdTrack> tracks;
    const int first = cdio_get_first_track_num(disc);
    const int last = cdio_get_last_track_num(disc);
    if (first < 1 || first == CDIO_INVALID_TRACK || last == CDIO_INVALID_TRACK || last > 99) return tracks;
    for (int number = first; number <= last; ++number) {
        const auto track = static_cast<track_t>(number);
        const auto next = static_cast<track_t>(number == last ? CDIO_CDROM_LEADOUT_TRACK : number + 1);
        const lsn_t start = cdio_get_track_lsn(disc, track);
        const lsn_t end = cdio_get_track_lsn(disc, next);
        if (start < 0 || end == CDIO_INVALID_LSN || end < start) return {};  // an invalid sector is negative
        tracks.push_back(
            {number, start, std::int64_t{end} - start, cdio_get_track_format(disc, track) == TRACK_FORMAT_AUDIO});
    }
    if (tracks.size() > 1 && !tracks.back().audio) {
        CdTrack& lastAudio = tracks[tracks.size() - 2];
        if (lastAudio.audio && lastAudio.length > kSessionGapSectors) lastAudio.length -= kSessionGapSectors;
    }
    return tracks;
}

bool hasAudio(const std::vector<CdTrack>& tracks) {
    return std::any_of(tracks.begin(), tracks.end(), [](const CdTrack& track) { return track.audio; });
}

class PlainDisc : public CdDisc {
public:
    PlainDisc(DiscHandle disc, std::vector<CdTrack> tracks) : disc_(std::move(disc)) { tracks_ = std::move(tracks); }

    bool readSector(std::int64_t sector, std::int16_t* samples) override {
        if (cdio_read_audio_sector(disc_.get(), samples, static_cast<lsn_t>(sector)) != DRIVER_OP_SUCCESS) return false;
        if constexpr (std::endian::native == std::endian::big) {
            for (int i = 0; i < kCdFramesPerSector * 2; ++i) {
                const auto word = static_cast<std::uint16_t>(samples[i]);
                samples[i] = static_cast<std::int16_t>(word << 8 | word >> 8);
            }
        }
        return true;
    }

private:
    DiscHandle disc_;
};

class VerifiedDisc : public CdDisc {
public:
    struct CloseDrive {
        void operator()(cdrom_drive_t* drive) const { cdio_cddap_close_no_free_cdio(drive); }
    };
    struct FreeReader {
        void operator()(cdrom_paranoia_t* reader) const { cdio_paranoia_free(reader); }
    };
    using Drive = std::unique_ptr<cdrom_drive_t, CloseDrive>;

    VerifiedDisc(DiscHandle disc, Drive drive, std::vector<CdTrack> tracks)
        : disc_(std::move(disc)), drive_(std::move(drive)), reader_(cdio_paranoia_init(drive_.get())) {
        tracks_ = std::move(tracks);
        // Repairs scratches, yet never hangs on one: an unreadable sector is given up after some attempts.
        cdio_paranoia_modeset(reader_.get(), PARANOIA_MODE_FULL ^ PARANOIA_MODE_NEVERSKIP);
    }

    bool readSector(std::int64_t sector, std::int16_t* samples) override {
        if (sector != next_) {
            if (cdio_paranoia_seek(reader_.get(), static_cast<std::int32_t>(sector), SEEK_SET) < 0) return false;
        }
        const std::int16_t* const read = cdio_paranoia_read_limited(
            reader_.get(), [](long, paranoia_cb_mode_t) {}, kReadAttempts);
        next_ = read == nullptr ? -1 : sector + 1;
        if (read == nullptr) return false;
        std::memcpy(samples, read, kCdBytesPerSector);
        return true;
    }

private:
    DiscHandle disc_;
    Drive drive_;
    std::unique_ptr<cdrom_paranoia_t, FreeReader> reader_;
    std::int64_t next_ = -1;  ///< the sector that the reader gives next; -1: it must seek
};

/// The sheet of an image names a file before its first track. libcdio does not look, and writes before its table of
/// tracks when there was none.
bool sheetNamesFileFirst(const fs::path& sheet) {
    std::ifstream lines(sheet);
    for (std::string line; std::getline(lines, line);) {
        std::string word;
        std::istringstream(line) >> word;
        std::transform(word.begin(), word.end(), word.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        if (word == "FILE") return true;
        if (word == "TRACK" || word == "INDEX" || word == "PREGAP" || word == "POSTGAP") return false;
    }
    return true;
}

/// What libcdio would read as a sheet: the place itself, or the sheet beside a track file.
bool sheetsAreSound(const fs::path& place) {
    std::error_code error;
    for (const fs::path& sheet :
         {place, fs::path(place).replace_extension(".cue"), fs::path(place).replace_extension(".CUE")}) {
        const std::string ending = sheet.extension().string();
        const bool isSheet = ending == ".cue" || ending == ".CUE";
        if (isSheet && fs::is_regular_file(sheet, error) && !sheetNamesFileFirst(sheet)) return false;
    }
    return true;
}

}  // namespace

OpenedDisc openDisc(const std::string& place, CdDisc::Reading reading) {
    silenceLibrary();
    std::error_code error;
    if (!fs::exists(place, error)) return {nullptr, "There is no disc at " + place};
    // Opening a pipe would wait for its writer.
    const bool readable = fs::is_regular_file(place, error) || fs::is_block_file(place, error);
    if (!readable) return {nullptr, "No disc can be read at " + place};
    if (!sheetsAreSound(place)) return {nullptr, "No disc can be read at " + place};
    DiscHandle handle(cdio_open(place.c_str(), DRIVER_UNKNOWN));
    if (!handle) return {nullptr, "No disc can be read at " + place};
    std::vector<CdTrack> tracks = readTracks(handle.get());
    if (!hasAudio(tracks)) return {nullptr, "There is no audio disc at " + place};
    if (reading == CdDisc::Reading::Plain)
        return {std::make_unique<PlainDisc>(std::move(handle), std::move(tracks)), ""};
    VerifiedDisc::Drive drive(cdio_cddap_identify_cdio(handle.get(), CDDA_MESSAGE_FORGETIT, nullptr));
    if (!drive || cdio_cddap_open(drive.get()) != 0) return {nullptr, "The drive cannot read audio: " + place};
    return {std::make_unique<VerifiedDisc>(std::move(handle), std::move(drive), std::move(tracks)), ""};
}

OpenedDisc openDisc(const std::string& place) {
    std::error_code error;
    const bool image = fs::is_regular_file(place, error);
    return openDisc(place, image ? CdDisc::Reading::Plain : CdDisc::Reading::Verified);
}

bool discReady(const std::string& place) {
    std::error_code error;
    if (fs::is_regular_file(place, error)) return true;
    const int device = ::open(place.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (device < 0) return false;
    const bool ready = ::ioctl(device, CDROM_DRIVE_STATUS, CDSL_CURRENT) == CDS_DISC_OK;
    ::close(device);
    return ready;
}

std::vector<std::string> discDevices() {
    silenceLibrary();
    std::vector<std::string> devices;
    char** const list = cdio_get_devices(DRIVER_DEVICE);
    for (char** device = list; device != nullptr && *device != nullptr; ++device) devices.emplace_back(*device);
    cdio_free_device_list(list);
    return devices;
}

}  // namespace corvane
