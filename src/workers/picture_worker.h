// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "pictures/picture_queue.h"
#include "platform/event_loop.h"

namespace corvane {

/// Decodes pictures one at a time in a worker: Pictures::begin, giveUp and decodeAhead for any desktop. All calls are
/// made on the user-interface thread. What still runs when this goes is given up and not waited for.
class PictureWorker {
public:
    using Decoded = Pictures::Decoded;
    using GiveUp = std::atomic<bool>;
    /// Decodes a file; any thread. Ends soon once it is given up: its result is dropped then.
    using Load = std::function<Decoded(const std::string& path, const GiveUp& givenUp)>;
    using StampOf = PictureQueue::Stamp (*)(const std::string& path, const GiveUp& givenUp);
    /// Brings an event from any thread to the event loop; does nothing once the loop has gone.
    using Post = std::function<void(EventLoop::Handler)>;

    PictureWorker(Post post, Load load, StampOf stampOf);
    PictureWorker(const PictureWorker&) = delete;
    PictureWorker& operator=(const PictureWorker&) = delete;
    ~PictureWorker();

    std::optional<Decoded> begin(const std::string& path, std::function<void(Decoded)> done);
    void giveUp();
    void decodeAhead(const std::string& path);
    bool isIdle() const;  ///< nothing is being decoded

private:
    struct Shared;
    /// Who waits for a picture; the user-interface thread's own.
    struct Asked {
        PictureQueue::Number number = 0;
        std::function<void(Decoded)> done;
    };
    void wake();

    std::shared_ptr<Asked> asked_ = std::make_shared<Asked>();
    std::shared_ptr<Shared> shared_;  ///< held by the worker as well
};

}  // namespace corvane
