// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "pictures/frame_reader.h"
#include "pictures/picture_pixels.h"
#include "platform/ports.h"
#include "workers/picture_worker.h"

namespace corvane {

/// Pictures for any desktop, over how that one reads a file and what a picture of its is. All that waits, waits in a
/// worker, but decode(), whose patience has an end.
class WorkerPictures : public Pictures {
public:
    using GivenUp = std::function<bool()>;
    /// What a desktop has of its system; any thread.
    struct System {
        /// Decodes a file. givenUp is asked often, and what comes after it is dropped; flag: what ends a wait for a
        /// drive at once, may be null.
        Decoded (*load)(const std::string& path, const std::atomic<bool>* flag, const GivenUp& givenUp);
        PictureWorker::StampOf stampOf;
        /// What moves in a file; null: nothing.
        std::unique_ptr<FrameReader> (*openFrames)(const std::string& path, const GivenUp& givenUp);
        Picture (*make)(PicturePixels pixels);
        /// For a picture that somebody stands and waits for.
        std::chrono::milliseconds patience{5'000};
    };
    /// post: brings an event from any thread to the event loop. Without one, what is begun is decoded at once, and
    /// nothing moves.
    WorkerPictures(System system, PictureWorker::Post post);

    Decoded decode(const std::string& path) override;
    std::optional<Decoded> begin(const std::string& path, std::function<void(Decoded)> done) override;
    void giveUp() override;
    void decodeAhead(const std::string& path) override;
    bool isIdle() const { return !worker_ || worker_->isIdle(); }  ///< nothing is being decoded
    std::unique_ptr<Frames> frames(const std::string& path, std::function<void(Frame)> told) override;
    Picture cut(const Picture& whole, const Cell& cell) final;
    int paintStretched(PictureBox& box, float width, float height) override;

protected:
    /// A cell that lies wholly in the picture, which is not empty.
    virtual Picture cutInside(const Picture& whole, const Cell& cell) = 0;

private:
    System system_;
    PictureWorker::Post post_;
    std::optional<PictureWorker> worker_;
};

}  // namespace corvane
