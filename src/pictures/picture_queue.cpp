// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/picture_queue.h"

#include <utility>

namespace corvane {

PictureQueue::Ready PictureQueue::takeReady() { return std::exchange(ready_, {}); }

bool PictureQueue::counts(const Ready& ready, const std::string& path, const Stamp& stamp) {
    // What lacked room then may have it now.
    return ready.path == path && ready.stamp == stamp && !ready.decoded.lacksRoom;
}

PictureQueue::Number PictureQueue::begin(const std::string& path) {
    forget();
    awaits_ = true;
    wanted_.reset();
    if (working_ && !working_->givenUp && working_->path == path) {
        working_->isAwaited = true;
        return number_;
    }
    if (working_) working_->givenUp = true;
    wanted_ = std::make_shared<Job>(path);
    wanted_->isAwaited = true;
    return number_;
}

void PictureQueue::forget() {
    ++number_;
    awaits_ = false;
    if (wanted_ && wanted_->isAwaited) wanted_.reset();
    if (working_ && working_->isAwaited) working_->givenUp = true;
}

void PictureQueue::hint(const std::string& path) {
    if (awaits_ || path.empty() || ready_.path == path) return;
    wanted_.reset();
    if (working_ && !working_->givenUp && working_->path == path) return;
    if (working_) working_->givenUp = true;
    wanted_ = std::make_shared<Job>(path);
    wanted_->wasHint = true;
}

void PictureQueue::end() {
    forget();
    wanted_.reset();
    if (working_) working_->givenUp = true;
}

std::shared_ptr<PictureQueue::Job> PictureQueue::take() {
    working_ = std::exchange(wanted_, {});
    return working_;
}

std::optional<PictureQueue::Answer> PictureQueue::finish(const Job& job, const Stamp& stamp, Decoded decoded) {
    working_.reset();
    if (job.givenUp) return std::nullopt;
    if (!job.isAwaited) {
        ready_ = {job.path, stamp, std::move(decoded)};
        return std::nullopt;
    }
    if (decoded.lacksRoom && job.wasHint) {  // there may be room since it is wanted
        wanted_ = std::make_shared<Job>(job.path);
        wanted_->isAwaited = true;
        return std::nullopt;
    }
    awaits_ = false;
    return Answer{number_, std::move(decoded)};
}

}  // namespace corvane
