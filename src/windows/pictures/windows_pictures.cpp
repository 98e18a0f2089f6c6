// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/pictures/windows_pictures.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include "pictures/picture_budget.h"
#include "windows/files/plain_file.h"
#include "windows/media/media.h"
#include "windows/pictures/picture_decoder.h"
#include "windows/text.h"
#include "windows/windowing/bitmap_picture.h"

namespace corvane {

namespace {

constexpr std::chrono::seconds kLongestWait{5};  ///< for a picture that somebody stands and waits for

PictureQueue::Stamp stampOf(const std::string& path, const PictureWorker::GiveUp& /*givenUp*/) {
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!isPlainName(toWide(path))) return {};
    if (GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &file) == 0) return {};
    const auto joined = [](DWORD high, DWORD low) {
        return static_cast<std::int64_t>(std::uint64_t{high} << 32U | low);
    };
    return {joined(file.nFileSizeHigh, file.nFileSizeLow),
            joined(file.ftLastWriteTime.dwHighDateTime, file.ftLastWriteTime.dwLowDateTime), 0};
}

Pictures::Decoded loadAwaited(const std::string& path, const PictureWorker::GiveUp& givenUp) {
    return decodePicture(path, [&givenUp] { return givenUp.load(); });
}

}  // namespace

WindowsPictures::WindowsPictures(PictureWorker::Post post) : worker_(std::move(post), &loadAwaited, &stampOf) {}

std::int64_t WindowsPictures::heldPixels() { return heldPicturePixels(); }

Pictures::Decoded WindowsPictures::decode(const std::string& path) {
    const auto until = std::chrono::steady_clock::now() + kLongestWait;
    const auto isLate = [until] { return std::chrono::steady_clock::now() > until; };
    Decoded decoded = decodePicture(path, isLate);
    if (decoded.picture.empty() && isLate()) return {{}, "The picture takes too long to be read."};
    return decoded;
}

Picture WindowsPictures::cut(const Picture& whole, const Cell& cell) {
    if (whole.empty() || cell.x < 0 || cell.y < 0 || cell.width <= 0 || cell.height <= 0) return {};
    if (cell.width > whole.width() || cell.x > whole.width() - cell.width) return {};
    if (cell.height > whole.height() || cell.y > whole.height() - cell.height) return {};
    const auto source = bitmapOf(whole);
    BitmapPicture::Pixels pixels;
    pixels.reserve(static_cast<std::size_t>(cell.width) * static_cast<std::size_t>(cell.height));
    const auto heldPlace = [](int at, int ofHeld, int ofWhole) { return std::int64_t{at} * ofHeld / ofWhole; };
    for (int y = cell.y; y < cell.y + cell.height; ++y) {
        const std::int64_t row = heldPlace(y, source->heldHeight(), source->height()) * source->heldWidth();
        for (int x = cell.x; x < cell.x + cell.width; ++x) {
            const std::int64_t place = row + heldPlace(x, source->heldWidth(), source->width());
            pixels.push_back(source->pixels()[static_cast<std::size_t>(place)]);
        }
    }
    return Picture(std::make_shared<BitmapPicture>(cell.width, cell.height, std::move(pixels)));
}

int WindowsPictures::paintStretched(PictureBox& box, float width, float height) {
    if (box.Picture.get().empty()) return kInvalidPicture;
    if (!std::isfinite(width) || !std::isfinite(height) || width > kMaxPaintedSide || height > kMaxPaintedSide)
        return kOutOfMemoryForPicture;
    box.setPainted(std::max(width, 1.0F), std::max(height, 1.0F));
    return 0;
}

std::unique_ptr<Pictures> makePictures(const UiPost& post) { return std::make_unique<WindowsPictures>(post); }

}  // namespace corvane
