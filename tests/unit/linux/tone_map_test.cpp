// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/movies/tone_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace corvane {
namespace {

using Transfer = FilmLight::Transfer;
using Colour = std::array<int, 3>;  // red, green, blue

constexpr double kThousand = 1'000 / ToneMap::kWhite;

Colour shown(const ToneMap& map, std::array<double, 3> signal) {
    std::array<std::uint16_t, 4> pixel{};
    std::ranges::transform(signal, pixel.begin(),
                           [](double share) { return static_cast<std::uint16_t>(std::lround(share * 65'535)); });
    std::array<std::uint8_t, 4> made{};
    map.map(reinterpret_cast<const std::uint8_t*>(pixel.data()), 8, made.data(), 4, 1, 1);
    return {made[2], made[1], made[0]};
}

int grey(const ToneMap& map, double signal) {
    const Colour colour = shown(map, {signal, signal, signal});
    EXPECT_NEAR(colour[0], colour[1], 1);
    EXPECT_NEAR(colour[0], colour[2], 1);
    return colour[1];
}

/// MEDIA-85: A film of a high dynamic range is shown as bright as it was filmed up to near white, and rolled off above
TEST(ToneMaps, WhatIsDarkStaysAsBrightAndTheBrightestIsWhite) {
    const ToneMap map({Transfer::Pq, kThousand, true});
    // 1, 10 and 50 candelas are 0.1497, 0.3019 and 0.4403 of the signal; a screen of 203 shows 255 (c / 203) ^ (1
    // / 2.4).
    EXPECT_NEAR(grey(map, 0.1497), 28, 1);
    EXPECT_NEAR(grey(map, 0.3019), 73, 1);
    EXPECT_NEAR(grey(map, 0.4403), 141, 4);
    EXPECT_EQ(grey(map, 0), 0);
    EXPECT_EQ(grey(map, 0.7518), 255);  // 1,000 candelas
    EXPECT_EQ(grey(map, 1), 255);
    EXPECT_LT(grey(map, 0.58), 240) << "an ordinary white leaves room for what is brighter";
}

/// MEDIA-85
TEST(ToneMaps, ABrighterSignalIsNeverShownDarker) {
    for (const Transfer transfer : {Transfer::Pq, Transfer::Hlg}) {
        for (const double peak : {1.0, kThousand, 4'000 / ToneMap::kWhite, 10'000 / ToneMap::kWhite}) {
            const ToneMap map({transfer, peak, true});
            int before = 0;
            for (int step = 0; step <= 1'000; ++step) {
                const int now = grey(map, step / 1'000.0);
                EXPECT_GE(now, before) << step << ' ' << peak;
                before = now;
            }
            EXPECT_EQ(before, 255);
        }
    }
}

/// MEDIA-85
TEST(ToneMaps, ABroadcastsMiddleGreyAndWhiteAreWhereABroadcasterWantsThem) {
    const ToneMap map({Transfer::Hlg, 0, true});
    EXPECT_EQ(grey(map, 0), 0);
    // 38 % is a grey card, 26 candelas of 1,000; 75 % is white, 203.
    EXPECT_NEAR(grey(map, 0.38), 108, 4);
    EXPECT_GT(grey(map, 0.75), 215);
    EXPECT_EQ(grey(map, 1), 255);
}

/// MEDIA-85
TEST(ToneMaps, WideColoursBecomeTheScreensOwn) {
    const Colour wide = shown(ToneMap({Transfer::Pq, kThousand, true}), {0.45, 0.30, 0.30});
    const Colour narrow = shown(ToneMap({Transfer::Pq, kThousand, false}), {0.45, 0.30, 0.30});
    EXPECT_GT(wide[0], narrow[0] + 10) << "a red of wide colours is more red than the same numbers of narrow ones";
    EXPECT_LT(wide[1], narrow[1]);
    EXPECT_EQ(shown(ToneMap({Transfer::Pq, kThousand, true}), {0.5, 0, 0})[1], 0)
        << "what the screen has not is cut off";
}

/// MEDIA-85
TEST(ToneMaps, WhatNoFilmCanMeanIsTakenForAThousandCandelas) {
    const int usual = grey(ToneMap({Transfer::Pq, kThousand, true}), 0.6);
    for (const double peak :
         {0.0, -1.0, 1e9, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(grey(ToneMap({Transfer::Pq, peak, true}), 0.6), usual) << peak;
}

/// MEDIA-85
TEST(ToneMaps, LinesLieWhereTheyAreToldToAndNothingElseIsWritten) {
    const ToneMap map({Transfer::Pq, kThousand, true});
    const std::vector<std::uint8_t> from(3 * 64, 255);
    std::vector<std::uint8_t> to(3 * 20, 7);
    map.map(from.data(), 64, to.data(), 20, 4, 3);
    for (std::size_t at = 0; at < to.size(); ++at) EXPECT_EQ(to[at], at % 20 < 16 ? 255 : 7) << at;
}

}  // namespace
}  // namespace corvane
