// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "discs/cd_arithmetic.h"
#include "media/sound/sound_backend.h"

namespace corvane {

/// An audio disc: a drive's, or an image's. Used from one thread at a time.
class CdDisc {
public:
    virtual ~CdDisc() = default;
    CdDisc(const CdDisc&) = delete;
    CdDisc& operator=(const CdDisc&) = delete;

    /// In disc order; at least one audio track.
    const std::vector<CdTrack>& tracks() const { return tracks_; }
    /// Reads one audio sector (kCdBytesPerSector, 16 bits stereo, the machine's byte order). False: unreadable.
    virtual bool readSector(std::int64_t sector, std::int16_t* samples) = 0;

protected:
    CdDisc() = default;
    std::vector<CdTrack> tracks_;
};

struct OpenedDisc {
    std::unique_ptr<CdDisc> disc;
    std::string reason;  ///< why there is none, in words
};

/// Opens a drive, or an image by its sheet. What is neither is refused. For workers: a drive is waited for, up to
/// DriveCalls::kLongPatience for each question, and may have to spin up. Comes back early once the flag was set, which
/// the disc keeps.
OpenedDisc openDisc(const std::string& place, const Abandoned& flag = std::make_shared<std::atomic<bool>>(false));

/// A disc as the library for drives reads it, through one of its drivers (driver_id_t): for drives alone, because its
/// readers of images are not made for what strangers wrote. May hang with the drive.
OpenedDisc openThroughLibrary(const std::string& place, int driver);

/// Whether a drive holds a disc; waits some seconds for one that was put in just now. False for what is no drive.
bool driveHoldsDisc(const std::string& place);

/// Numbers of the audio tracks of a drive's disc; none: it has no audio disc. May hang with the drive.
std::vector<int> audioTracksOfDrive(const std::string& place);

/// Devices of the machine that can hold an audio disc, in the system's order.
std::vector<std::string> discDevices();

}  // namespace corvane
