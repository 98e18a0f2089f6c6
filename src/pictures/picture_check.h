// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "pictures/picture_budget.h"

namespace corvane {

/// The bytes of a picture file, read as they are needed.
class PictureBytes {
public:
    PictureBytes() = default;
    PictureBytes(const PictureBytes&) = delete;
    PictureBytes& operator=(const PictureBytes&) = delete;
    virtual ~PictureBytes() = default;
    virtual std::int64_t size() = 0;
    /// Fewer bytes than asked for at the file's end, none where it cannot be read or is not wanted any more.
    virtual std::string part(std::int64_t from, std::int64_t count) = 0;
};

/// False: a JPEG, GIF, PNG or plain BMP file ends before its picture does. Decoders would fill the rest with grey and
/// say nothing.
bool endsWhole(PictureBytes& file);

/// What a JPEG file asks of its decoder.
struct JpegWork {
    PictureSize size;
    int scans = 0;             ///< layers that the picture comes in: one, or one a colour, or some ten
    std::int64_t samples = 0;  ///< of all colours, in whole blocks
};
/// By the file's marks; whatever is no JPEG has none.
JpegWork jpegWorkOf(PictureBytes& file);

/// How a JPEG file asks to be turned, 1 to 8 as cameras note it (1: it is upright). 1 also for any other file.
int orientationOf(PictureBytes& file);
inline bool swapsSides(int orientation) { return orientation >= 5; }

}  // namespace corvane
