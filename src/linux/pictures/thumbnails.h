// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "linux/qt_post.h"
#include "shell/native/thumbnail_reader.h"
#include "workers/picture_worker.h"

namespace corvane {

/// A picture at kThumbnailSide across or down at most, as readers reduce it; never enlarged. For workers: costs as
/// little memory as a picture may while others hold all the room there is, and four seconds; none of a file of more
/// than 64 MB. By readers of our own alone: a decoder of the system cannot be stopped, holds the whole picture, and two
/// that were left behind would keep the player from its own pictures.
Pictures::Decoded decodeThumbnail(const std::string& path, const PictureWorker::GiveUp& givenUp);

/// Small pictures for the lists of one window, one at a time in a worker that nothing waits for.
class Thumbnails : public ThumbnailReader {
public:
    /// The loop outlives it.
    explicit Thumbnails(EventLoop& loop) : post_(loop) {}
    Thumbnails(const Thumbnails&) = delete;
    Thumbnails& operator=(const Thumbnails&) = delete;
    ~Thumbnails() override { post_.stop(); }

    void read(const std::string& path, Done done) override;
    void giveUp() override;

private:
    QtPost post_;
    std::optional<PictureWorker> worker_;  ///< from the first picture on
};

}  // namespace corvane
