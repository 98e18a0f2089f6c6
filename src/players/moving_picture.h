// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>

#include "engine/player.h"

namespace corvane {

/// Lets the picture on the screen move where its file holds several and nothing changes it by itself (INTERVAL is 0).
/// Watches the player for as long as it lives, as a bystander: what is shown, its place and its size are the picture
/// medium's. Without Conveniences::kinds, and where less motion is asked for, the first one stands.
class MovingPicture {
public:
    explicit MovingPicture(Player& player);
    MovingPicture(const MovingPicture&) = delete;
    MovingPicture& operator=(const MovingPicture&) = delete;
    ~MovingPicture();

    static constexpr int kLeastFrameMs = 20;
    /// What the window may be asked to paint in a second, so that the panel is not held up by it.
    static constexpr int kMostPaintedInMs = 100'000;  ///< pixels

private:
    void look();
    bool mayMove() const;
    bool isSeen() const;
    void begin();
    void end();
    void ask();
    void come(Pictures::Frame frame);
    void showNext();
    int leastMs() const;
    void rest(int milliseconds);
    void stopClock();
    ImageWindowControls* window() const { return player_.forms.find<ImageWindowControls>(); }

    Player& player_;
    std::optional<Opening> opening_;  ///< whose picture moves, or has moved; empty: none
    std::unique_ptr<Pictures::Frames> frames_;
    std::optional<Pictures::Frame> next_;  ///< decoded, and not shown yet
    bool asked_ = false;                   ///< one is on its way
    bool due_ = false;                     ///< what is shown was seen long enough
    TimerId clock_ = 0;                    ///< 0: none runs
    Generation running_;                   ///< the next one with each clock: an older one's tick is dropped
    EventLoop::Watch quiet_;
};

}  // namespace corvane
