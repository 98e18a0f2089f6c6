// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz.h"
#include "media/pictures/jpeg_reader.h"
#include "media/pictures/png_reader.h"
#include "pictures/gif_frames.h"
#include "pictures/lone_drawing.h"
#include "pictures/picture_file.h"
#include "pictures/webp_head.h"
#include "unit/pictures/picture_bytes.h"

namespace {

/// Of a file that moves: some of its frames.
void readFrames(const std::string& bytes, const std::function<bool()>& givenUp) {
    using namespace corvane;
    constexpr int kMostFrames = 8;
    if (const auto head = webpHeadOf(bytes))
        fuzz::require(head->size.width > 0 && head->size.height > 0 && head->times >= 0, "a head that can be meant");
    const auto frames = gifFrames(bytes);
    for (int count = 0; frames && count < kMostFrames; ++count) {
        const auto frame = frames->next(givenUp);
        if (!frame) return;
        fuzz::require(frame->milliseconds > 0, "a frame is seen for a while");
        fuzz::require(frame->pixels.held.pixels() <= kMostMovingPixels &&
                          static_cast<std::int64_t>(frame->pixels.pixels.size()) == frame->pixels.held.pixels(),
                      "a frame has all its pixels, and no more than it may");
    }
}

}  // namespace

/// A picture file of any kind. It is given up after so many questions whether it is wanted: what is large only costs
/// time, and a decoder that does not ask runs into the limit of one input.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace corvane;
    constexpr int kMostQuestions = 600;
    constexpr std::int64_t kHeld = 35'000'000;  ///< by others: a decoded picture is reduced to six megapixels
    fuzz::Input input(data, size);
    if (const auto drawing = loneDrawing(std::string(input.rest()))) {
        fuzz::require(loneDrawing(*drawing) == drawing, "what it named is blanked out at once");
    }
    test::Bytes file{std::string(input.rest())};
    int asked = 0;
    const auto givenUp = [&asked] { return ++asked > kMostQuestions; };
    readFrames(std::string(input.rest()), givenUp);
    asked = 0;
    const PicturePixels picture = readPicture(file, {kHeld, givenUp}, readJpeg, readPng);
    fuzz::require(picture.reason.empty() != picture.pixels.empty(), "a picture, or the reason why there is none");
    fuzz::require(!picture.lacksRoom || !picture.reason.empty(), "it lacks room when it fails");
    if (picture.pixels.empty()) return 0;
    const auto [width, height] = picture.held;
    fuzz::require(width > 0 && height > 0 && width <= picture.full.width && height <= picture.full.height,
                  "it is held no larger than it is");
    fuzz::require(static_cast<std::int64_t>(picture.pixels.size()) == picture.held.pixels(), "it has all its pixels");
    fuzz::require(picture.held.pixels() <= kMaxHeldPixels, "it holds no more than its share");
    for (const std::uint32_t pixel : picture.pixels) {
        const std::uint32_t alpha = pixel >> 24U;
        fuzz::require((pixel >> 16U & 0xFFU) <= alpha && (pixel >> 8U & 0xFFU) <= alpha && (pixel & 0xFFU) <= alpha,
                      "its colours are multiplied by their alpha");
    }
    return 0;
}
