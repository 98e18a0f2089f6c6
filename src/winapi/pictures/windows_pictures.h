// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "pictures/paired_picture.h"
#include "workers/worker_pictures.h"

namespace corvane {

/// Pictures by readers of our own and the system's imaging component: BMP, JPEG, GIF and PNG by their content, whatever
/// the name. A file that ends too early counts as damaged. Of what moves GIF alone: nothing here reads WEBP.
class WindowsPictures : public WorkerPictures {
public:
    explicit WindowsPictures(PictureWorker::Post post);

    /// The imaging component is asked for PNG alone, which a reader here gives it.
    bool shows(const std::string& extension) override { return extension == "PNG"; }
    /// Pixels that all living decoded pictures hold; any thread.
    static std::int64_t heldPixels();
    Picture paired(const Picture& plain, std::function<Picture()> dense) override {
        return pairedPicture(plain, std::move(dense));
    }

protected:
    Picture cutInside(const Picture& whole, const Cell& cell) override { return cutPaired(whole, cell); }
};

}  // namespace corvane
