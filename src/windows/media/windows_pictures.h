// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

#include "platform/ports.h"

namespace corvane {

/// Pictures by the system's imaging component: BMP, JPEG, GIF and PNG by their content, whatever the name. A file that
/// ends too early counts as damaged.
class WindowsPictures : public Pictures {
public:
    WindowsPictures() = default;
    ~WindowsPictures() override;

    Decoded decode(const std::string& path) override;
    void decodeAhead(const std::string& path) override;
    /// Waits until the worker has nothing to do.
    void finishHints();
    Picture cut(const Picture& whole, const Cell& cell) override;
    int paintStretched(PictureBox& box, float width, float height) override;

    /// Pixels that all living decoded pictures hold; any thread.
    static std::int64_t heldPixels();

private:
    /// What tells a file from a changed one of the same name.
    struct Stamp {
        std::uint64_t size = 0, written = 0;
        bool operator==(const Stamp&) const = default;
    };
    struct Ahead {
        std::string path;
        Stamp stamp;
        Decoded decoded;
    };
    static Stamp stampOf(const std::string& path);
    void work();

    std::thread worker_;
    std::mutex mutex_;  ///< guards what follows
    std::condition_variable done_;
    std::string wanted_;   ///< waits for the worker
    std::string working_;  ///< the worker decodes it
    bool busy_ = false;    ///< the worker runs
    Ahead ready_;
};

}  // namespace corvane
