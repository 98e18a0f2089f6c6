// SPDX-License-Identifier: GPL-3.0-or-later
#include "workers/worker_pictures.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "pictures/picture_budget.h"
#include "workers/picture_frames.h"

namespace corvane {

WorkerPictures::WorkerPictures(System system, PictureWorker::Post post) : system_(system), post_(std::move(post)) {
    if (!post_) return;
    const auto load = [load = system_.load](const std::string& path, const PictureWorker::GiveUp& givenUp) {
        return load(path, &givenUp, [&givenUp] { return givenUp.load(); });
    };
    worker_.emplace(post_, load, system_.stampOf);
}

Pictures::Decoded WorkerPictures::decode(const std::string& path) {
    const auto until = std::chrono::steady_clock::now() + system_.patience;
    const auto isLate = [until] { return std::chrono::steady_clock::now() > until; };
    Decoded decoded = system_.load(path, nullptr, isLate);
    if (decoded.picture.empty() && isLate()) return {{}, "The picture takes too long to be read."};
    return decoded;
}

std::optional<Pictures::Decoded> WorkerPictures::begin(const std::string& path, std::function<void(Decoded)> done) {
    if (!worker_) return decode(path);
    return worker_->begin(path, std::move(done));
}

void WorkerPictures::giveUp() {
    if (worker_) worker_->giveUp();
}

void WorkerPictures::decodeAhead(const std::string& path) {
    if (worker_) worker_->decodeAhead(path);
}

std::unique_ptr<Pictures::Frames> WorkerPictures::frames(const std::string& path, std::function<void(Frame)> told) {
    if (!post_) return nullptr;
    const auto open = [path, open = system_.openFrames](const GivenUp& givenUp) { return open(path, givenUp); };
    return std::make_unique<PictureFrames>(post_, open, system_.make, std::move(told));
}

Picture WorkerPictures::cut(const Picture& whole, const Cell& cell) {
    const bool lies = !whole.empty() && cell.x >= 0 && cell.y >= 0 && cell.width > 0 && cell.height > 0 &&
                      cell.width <= whole.width() && cell.x <= whole.width() - cell.width &&
                      cell.height <= whole.height() && cell.y <= whole.height() - cell.height;
    return lies ? cutInside(whole, cell) : Picture();
}

int WorkerPictures::paintStretched(PictureBox& box, float width, float height) {
    if (box.Picture.get().empty()) return kInvalidPicture;
    if (!std::isfinite(width) || !std::isfinite(height) || width > kMaxPaintedSide || height > kMaxPaintedSide) {
        return kOutOfMemoryForPicture;
    }
    box.setPainted(std::max(width, 1.0F), std::max(height, 1.0F));
    return 0;
}

}  // namespace corvane
