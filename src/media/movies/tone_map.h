// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

/// How the signal of a film of a high dynamic range means light.
struct FilmLight {
    enum class Transfer {
        Pq,   ///< SMPTE ST 2084: the signal means light itself
        Hlg,  ///< ARIB STD-B67: the signal means what the camera saw
    };
    Transfer transfer = Transfer::Pq;
    double peak = 0;   ///< the brightest light that is in it, as a multiple of an ordinary white; 0: not known
    bool wide = true;  ///< the colours are those of ITU-R BT.2020, else of BT.709

    bool operator==(const FilmLight&) const = default;
};

/// Brings pictures of a high dynamic range to a screen of an ordinary one: light above the screen's white is rolled
/// off, what is darker stays as bright as it was filmed. Any thread.
class ToneMap {
public:
    /// An ordinary white, in candelas per square metre (ITU-R BT.2408).
    static constexpr double kWhite = 203;

    /// A peak that no film can mean (below 1, above 10,000 candelas, no number) counts as 1,000 candelas.
    explicit ToneMap(const FilmLight& light);

    /// from: red, green, blue and one more, 16 bits each, the signal in the full range; to: blue, green, red and one
    /// more, 8 bits each. Lines in bytes, sizes in pixels.
    void map(const std::uint8_t* from, std::size_t fromLine, std::uint8_t* to, std::size_t toLine, int width,
             int height) const;

private:
    bool hlg_;
    bool wide_;
    std::vector<float> light_;           ///< of a signal's upper 12 bits, 1 the peak (the scene's white for HLG)
    std::vector<float> gain_;            ///< of the brightest channel, to shares of the screen's white
    std::vector<float> scene_;           ///< HLG: what the scene's luminance multiplies its light by
    std::vector<std::uint8_t> encoded_;  ///< of a share of the screen's white
};

}  // namespace corvane
