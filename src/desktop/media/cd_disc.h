// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/cd_arithmetic.h"

namespace corvane {

/// An audio disc: a drive's, or an image's (.cue, or the .bin beside one). Used from one thread at a time.
class CdDisc {
public:
    enum class Reading {
        Plain,    ///< sectors as they come: images
        Verified  ///< overlapped and compared, scratches repaired: real discs
    };

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

/// Opens a device or an image. May wait for a drive to spin up.
OpenedDisc openDisc(const std::string& place);
OpenedDisc openDisc(const std::string& place, CdDisc::Reading reading);

/// Whether asking for a disc there answers soon: an image that exists, or a drive that says a disc is ready.
bool discReady(const std::string& place);

/// Devices of the machine that can hold an audio disc, in the system's order.
std::vector<std::string> discDevices();

}  // namespace corvane
