// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/picture_file.h"

#include <new>
#include <string>

#include "pictures/bmp_reader.h"
#include "pictures/gif_reader.h"

namespace corvane {

namespace {

PictureReader readerOf(const std::string& start, const PictureReader& jpeg, const PictureReader& png,
                       const PictureReader& other) {
    if (start.starts_with("BM")) return readBmp;
    if (start.starts_with("GIF87a") || start.starts_with("GIF89a")) return readGif;
    if (start.starts_with("\xFF\xD8\xFF")) return jpeg;
    if (start.starts_with("\x89PNG\r\n\x1A\n")) return png;
    return other;
}

}  // namespace

PicturePixels readPicture(PictureBytes& file, const DecodingBounds& bounds, const PictureReader& jpeg,
                          const PictureReader& png, const PictureReader& other) {
    const PictureReader reader = readerOf(file.part(0, 8), jpeg, png, other);
    if (!reader) return PicturePixels::failed("This is not a picture of a known format.");
    if (file.size() > kMaxPictureBytes) {
        return PicturePixels::failed("The picture is too large (" + std::to_string(file.size() / 1'000'000) + " MB).");
    }
    try {
        if (!endsWhole(file)) return PicturePixels::failed("The picture is damaged: the file ends too early.");
        return reader(file, bounds);
    } catch (const std::bad_alloc&) {
        return PicturePixels::failed("There is not enough memory for the picture.");
    }
}

}  // namespace corvane
