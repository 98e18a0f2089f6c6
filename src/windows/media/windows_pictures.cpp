// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/windows_pictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "toolkit/picture_budget.h"
#include "windows/bitmap_picture.h"
#include "windows/media/media.h"
#include "windows/media/picture_decoder.h"
#include "windows/plain_file.h"
#include "windows/text.h"

namespace corvane {

WindowsPictures::~WindowsPictures() {
    {
        const std::lock_guard lock(mutex_);
        wanted_.clear();
    }
    finishHints();
}

std::int64_t WindowsPictures::heldPixels() { return heldPicturePixels(); }

WindowsPictures::Stamp WindowsPictures::stampOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA file{};
    if (!isPlainName(toWide(path))) return {};
    if (GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &file) == 0) return {};
    const auto joined = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; };
    return {joined(file.nFileSizeHigh, file.nFileSizeLow),
            joined(file.ftLastWriteTime.dwHighDateTime, file.ftLastWriteTime.dwLowDateTime)};
}

Pictures::Decoded WindowsPictures::decode(const std::string& path) {
    Ahead ahead;
    {
        std::unique_lock lock(mutex_);
        if (wanted_ == path) wanted_.clear();
        done_.wait(lock, [&] { return working_ != path; });
        // What was decoded for nothing must not take the room of what is wanted.
        ahead = std::exchange(ready_, {});
    }
    if (ahead.path == path && ahead.stamp == stampOf(path)) return std::move(ahead.decoded);
    ahead = {};
    return decodePicture(path);
}

void WindowsPictures::decodeAhead(const std::string& path) {
    const std::lock_guard lock(mutex_);
    if (path.empty() || working_ == path || (ready_.path == path && ready_.stamp == stampOf(path))) return;
    wanted_ = path;
    if (busy_) return;
    if (worker_.joinable()) worker_.join();  // it has ended: it is not busy
    busy_ = true;
    worker_ = std::thread([this] { work(); });
}

void WindowsPictures::work() {
    std::unique_lock lock(mutex_);
    while (!wanted_.empty()) {
        working_ = std::exchange(wanted_, {});
        Ahead ahead{working_, {}, {}};
        ready_ = {};
        lock.unlock();
        ahead.stamp = stampOf(ahead.path);
        ahead.decoded = decodePicture(ahead.path);
        lock.lock();
        ready_ = std::move(ahead);
        working_.clear();
        done_.notify_all();
    }
    busy_ = false;
}

void WindowsPictures::finishHints() {
    if (worker_.joinable()) worker_.join();
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

std::unique_ptr<Pictures> makePictures() { return std::make_unique<WindowsPictures>(); }

}  // namespace corvane
