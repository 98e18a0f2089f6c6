// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "contract/windows/movie_rig.h"

namespace corvane {
namespace {

using test::sample;
using test::WindowsMovieRig;

struct SampleMovie {
    const char* name;
    std::array<std::uint32_t, 5> colours;  ///< of each second
};

constexpr SampleMovie kAvi{"colours.avi", {0xB83A3A, 0x3A8F4A, 0x3A55B8, 0xB8A23A, 0x7A3A9E}};
constexpr SampleMovie kMpg{"bars.mpg", {0x2E7D8C, 0xC8742A, 0x4E8C2E, 0x8C2E5E, 0x3C4A78}};
constexpr SampleMovie kMov{"clip.mov", {0x8C6A2E, 0x2E5E8C, 0x8C2E2E, 0x2E8C6A, 0x5E2E8C}};

class ShownMovie : public testing::TestWithParam<SampleMovie> {
protected:
    WindowsMovieRig rig_;
};

INSTANTIATE_TEST_SUITE_P(Samples, ShownMovie, testing::Values(kAvi, kMpg, kMov));

/// WIN-24: A movie's pictures are seen in order and where it was moved to, inside what its form shows
TEST_P(ShownMovie, ItsSecondsAreSeenInOrderAsItPlays) {
    ASSERT_TRUE(rig_.open(sample(GetParam().name))) << rig_.reason;
    rig_.control->Run();
    std::vector<std::size_t> seen;
    rig_.until(
        [&] {
            for (std::size_t second = 0; second < GetParam().colours.size(); ++second) {
                const bool news = seen.empty() || seen.back() != second;
                if (news && rig_.shows(GetParam().colours[second])) seen.push_back(second);
            }
            return rig_.control->State() == kMovieStopped;
        },
        15'000);
    // A busy machine may leave out a second's pictures, but shows none twice or out of its turn.
    EXPECT_GE(seen.size(), 3U);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end())) << testing::PrintToString(seen);
}

/// WIN-24
TEST_P(ShownMovie, AStepWhilePausedShowsThePictureOfItsPlace) {
    ASSERT_TRUE(rig_.open(sample(GetParam().name))) << rig_.reason;
    rig_.control->Run();
    ASSERT_TRUE(rig_.until([&] { return rig_.shows(GetParam().colours[0]); }));
    rig_.control->Pause();
    for (const double target : {3.5, 1.5, 2.5}) {
        rig_.control->CurrentPosition(target);
        EXPECT_EQ(rig_.control->CurrentPosition(), target);
        EXPECT_TRUE(rig_.until([&] { return rig_.shows(GetParam().colours[static_cast<std::size_t>(target)]); }))
            << target << " " << std::hex << rig_.pixel(20, 20);
    }
    rig_.control->Run();
    EXPECT_TRUE(rig_.until([&] { return rig_.shows(GetParam().colours[3]); }));
}

}  // namespace
}  // namespace corvane
