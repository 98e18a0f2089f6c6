// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/pictures/thumbnails.h"

#include <utility>

namespace corvane {

namespace {

/// Nothing is decoded ahead, so that nothing is compared.
PictureQueue::Stamp noStamp(const std::string& /*path*/, const PictureWorker::GiveUp& /*givenUp*/) { return {}; }

}  // namespace

void Thumbnails::read(const std::string& path, Done done) {
    if (!worker_) worker_.emplace(post_, &decodeThumbnail, &noStamp);
    worker_->begin(path, [done = std::move(done)](Pictures::Decoded decoded) { done(std::move(decoded.picture)); });
}

void Thumbnails::giveUp() {
    if (worker_) worker_->giveUp();
}

}  // namespace corvane
