// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "pictures/frame_reader.h"
#include "platform/event_loop.h"
#include "platform/ports.h"

namespace corvane {

/// Pictures::Frames for any desktop: each one asked for is decoded in a worker. What still runs when this goes is not
/// waited for.
class PictureFrames : public Pictures::Frames {
public:
    /// Brings an event from any thread to the event loop; does nothing once the loop has gone.
    using Post = std::function<void(EventLoop::Handler)>;
    using GivenUp = std::function<bool()>;
    /// Reads the file, at the first next(); null: nothing in it moves. Any thread, as the next one.
    using Open = std::function<std::unique_ptr<FrameReader>(const GivenUp& givenUp)>;
    using Make = Picture (*)(PicturePixels pixels);
    using Told = std::function<void(Pictures::Frame)>;

    /// A decoder has a third of a core at most: a frame is seen for at least so many times what it took.
    static constexpr int kLeastRest = 3;
    /// Decodings that may run on behind everybody's back, of all that were ever begun; beyond it nothing moves.
    static constexpr int kMostLeft = 2;

    PictureFrames(Post post, Open open, Make make, Told told);
    ~PictureFrames() override;
    void next() override;

private:
    struct Shared;
    std::shared_ptr<Told> told_;      ///< the user-interface thread's own: gone with this, nothing is told
    std::shared_ptr<Shared> shared_;  ///< held by the worker as well
};

}  // namespace corvane
