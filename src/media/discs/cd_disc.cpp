// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/discs/cd_disc.h"

#include <cdio/cdio.h>
#include <cdio/logging.h>
#include <cdio/paranoia/cdda.h>
#include <cdio/paranoia/paranoia.h>
#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <thread>

#include "drives/descriptor.h"
#include "drives/drive_calls.h"
#include "media/discs/cd_image.h"
#include "types/text.h"

namespace corvane {

namespace {

/// Between an audio session and a data session lie lead-out, lead-in and pregap, which belong to no track.
constexpr std::int64_t kSessionGapSectors = 11400;
constexpr int kReadAttempts = 20;
/// A disc that was put in just now: its drive says that it is not ready, at most for this time.
constexpr std::chrono::milliseconds kSpinUp{8'000};
constexpr std::chrono::milliseconds kSpinUpLook{100};

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

/// Sectors are overlapped and compared, and scratches repaired.
class DriveDisc : public CdDisc {
public:
    struct CloseDrive {
        void operator()(cdrom_drive_t* drive) const { cdio_cddap_close_no_free_cdio(drive); }
    };
    struct FreeReader {
        void operator()(cdrom_paranoia_t* reader) const { cdio_paranoia_free(reader); }
    };
    using Drive = std::unique_ptr<cdrom_drive_t, CloseDrive>;

    DriveDisc(DiscHandle disc, Drive drive, std::vector<CdTrack> tracks)
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

bool isDrive(const std::string& place) {
    struct stat status {};
    return stat(place.c_str(), &status) == 0 && S_ISBLK(status.st_mode);
}

/// What the drive says of itself; CDS_NO_DISC also when it cannot be asked.
int driveStatus(const std::string& place) {
    // Without a wait for the disc.
    const Descriptor device(::open(place.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    const int status = device ? ::ioctl(device.get(), CDROM_DRIVE_STATUS, CDSL_CURRENT) : CDS_NO_DISC;
    return status < 0 ? CDS_NO_DISC : status;
}

}  // namespace

OpenedDisc openThroughLibrary(const std::string& place, int driver) {
    silenceLibrary();
    DiscHandle handle(cdio_open(place.c_str(), static_cast<driver_id_t>(driver)));
    if (!handle) return {nullptr, "No disc can be read at " + text::onOneLine(place)};
    std::vector<CdTrack> tracks = readTracks(handle.get());
    if (!hasAudio(tracks)) return {nullptr, "There is no audio disc at " + text::onOneLine(place)};
    DriveDisc::Drive drive(cdio_cddap_identify_cdio(handle.get(), CDDA_MESSAGE_FORGETIT, nullptr));
    if (!drive || cdio_cddap_open(drive.get()) != 0)
        return {nullptr, "The drive cannot read audio: " + text::onOneLine(place)};
    return {std::make_unique<DriveDisc>(std::move(handle), std::move(drive), std::move(tracks)), ""};
}

OpenedDisc openDisc(const std::string& place, const Abandoned& flag) {
    if (isDiscImage(place)) return openImage(place, flag);
    const DriveCalls::Wait wait{DriveCalls::kLongPatience, flag.get()};
    const auto opened = DriveCalls::all().ask<std::shared_ptr<OpenedDisc>>(place, wait, [place] {
        std::error_code failed;
        if (isDrive(place)) return std::make_shared<OpenedDisc>(openThroughLibrary(place, DRIVER_DEVICE));
        const char* const why = !std::filesystem::exists(place, failed) ? "There is no disc at "
                                : std::filesystem::is_regular_file(place, failed)
                                    ? "Of the images of discs, only those with a sheet (.cue) can be read: "
                                    : "No disc can be read at ";
        return std::make_shared<OpenedDisc>(OpenedDisc{nullptr, why + text::onOneLine(place)});
    });
    if (!opened) return {nullptr, DriveCalls::kNoAnswer};
    return std::move(**opened);
}

bool driveHoldsDisc(const std::string& place) {
    const auto due = std::chrono::steady_clock::now() + kSpinUp;
    if (!isDrive(place)) return false;
    for (int status = driveStatus(place);; status = driveStatus(place)) {
        if (status != CDS_DRIVE_NOT_READY || std::chrono::steady_clock::now() >= due)
            return status == CDS_DISC_OK || status == CDS_NO_INFO;
        std::this_thread::sleep_for(kSpinUpLook);
    }
}

std::vector<int> audioTracksOfDrive(const std::string& place) {
    std::vector<int> numbers;
    silenceLibrary();
    const DiscHandle handle(isDrive(place) ? cdio_open(place.c_str(), DRIVER_DEVICE) : nullptr);
    if (!handle) return numbers;
    for (const CdTrack& track : readTracks(handle.get())) {
        if (track.audio) numbers.push_back(track.number);
    }
    return numbers;
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
