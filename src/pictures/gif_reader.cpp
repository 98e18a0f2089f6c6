// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/gif_reader.h"

#include <algorithm>
#include <utility>

#include "pictures/gif_pieces.h"

namespace corvane {

namespace {

PicturePixels onScreen(const GifPieces& pieces, PictureSize held) {
    const PictureSize screen = pieces.screen();
    ReducedRows rows(screen, held);
    std::vector<std::uint32_t> row(static_cast<std::size_t>(screen.width));
    for (int y = 0; y < screen.height; ++y) {
        std::fill(row.begin(), row.end(), pieces.background());
        pieces.drawRow(y, row.data());
        rows.put(y, row.data());
    }
    return rows.take();
}

}  // namespace

PicturePixels readGif(PictureBytes& file, const DecodingBounds& bounds) {
    GifPieces pieces(file, bounds.givenUp);
    if (!pieces.readScreen() || !pieces.findPicture()) return PicturePixels::damaged();
    const PictureSize screen = pieces.screen(), frame = pieces.frame().size;
    if (frame.pixels() == 0 || screen.pixels() == 0) return PicturePixels::damaged();
    if (screen.pixels() > kMaxPicturePixels) return PicturePixels::tooLarge(screen);
    if (frame.pixels() > kMaxPicturePixels) return PicturePixels::tooLarge(frame);
    const std::int64_t work = frame.pixels() / 4;
    const PictureSize held = sizeToHold(screen, bounds.held, work);
    if (held.pixels() == 0) return PicturePixels::tooLarge(screen, sizeToHold(screen, 0, work).pixels() > 0);
    pieces.unpack();
    if (bounds.givenUp()) return PicturePixels::damaged();
    return onScreen(pieces, held);
}

}  // namespace corvane
