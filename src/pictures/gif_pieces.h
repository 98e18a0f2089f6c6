// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "pictures/byte_walk.h"
#include "pictures/picture_budget.h"

namespace corvane {

/// The pictures of a GIF file, found and unpacked one after the other.
class GifPieces {
public:
    using Colours = std::vector<std::uint32_t>;
    static constexpr std::uint32_t kOpaque = 0xFF000000U;

    /// What becomes of a picture's place before the next one is drawn.
    enum class Leaving { Stays, Cleared, AsBefore };
    struct Frame {
        int left = 0, top = 0;
        PictureSize size;
        bool interlaced = false;
        Colours colours;
        int hole = -1;  ///< number of the colour that is transparent; -1: none
        int hundredths = 0;
        Leaving leaving = Leaving::Stays;
    };

    /// Both outlive it.
    GifPieces(PictureBytes& file, const std::function<bool()>& givenUp) : walk_(file), givenUp_(givenUp) {}

    /// The head of the file; false: it ends there.
    bool readScreen();
    /// Passes what comes before the next picture, and reads how that is to be shown; false: there is none any more.
    bool findPicture();
    /// The colours' numbers of the picture that was found, as far as the file has them.
    void unpack();
    void passPicture();  ///< instead: leaves it out
    /// Draws a row of the picture that was unpacked, or nothing where it has none, over a row of the screen.
    void drawRow(int y, std::uint32_t* row) const;
    /// What a screen has where nothing is drawn: transparent when the picture that was found has a hole.
    std::uint32_t background() const;

    /// Some programs leave the screen's size out: it is the first picture's then.
    PictureSize screen() const { return screen_; }
    const Frame& frame() const { return frame_; }
    /// How often the whole is to be shown again, 0: for ever. Known once the first picture was found; empty: not once.
    std::optional<int> repeats() const { return repeats_; }

private:
    bool passExtension();
    void readControl();
    void readRepeats();
    bool passBlocks();

    ByteWalk walk_;
    std::function<bool()> givenUp_;
    PictureSize screen_;
    Colours colours_;
    int background_ = 0;
    Frame frame_;
    std::optional<int> repeats_;
    std::vector<unsigned char> numbers_;  ///< of the colours, row by row
    std::vector<int> come_;               ///< pixels of each row that the file has
};

}  // namespace corvane
