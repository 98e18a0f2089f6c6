// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/ports.h"
#include "workers/picture_worker.h"

namespace corvane {

/// Pictures by readers of our own and the system's imaging component: BMP, JPEG, GIF and PNG by their content, whatever
/// the name. A file that ends too early counts as damaged.
class WindowsPictures : public Pictures {
public:
    explicit WindowsPictures(PictureWorker::Post post);

    Decoded decode(const std::string& path) override;
    std::optional<Decoded> begin(const std::string& path, std::function<void(Decoded)> done) override {
        return worker_.begin(path, std::move(done));
    }
    void giveUp() override { worker_.giveUp(); }
    void decodeAhead(const std::string& path) override { worker_.decodeAhead(path); }
    bool isIdle() const { return worker_.isIdle(); }  ///< nothing is being decoded
    Picture cut(const Picture& whole, const Cell& cell) override;
    int paintStretched(PictureBox& box, float width, float height) override;

    /// Pixels that all living decoded pictures hold; any thread.
    static std::int64_t heldPixels();

private:
    PictureWorker worker_;
};

}  // namespace corvane
