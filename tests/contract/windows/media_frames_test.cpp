// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <array>

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

TEST_P(ShownMovie, EachSecondIsSeenAsItPlays) {
    ASSERT_TRUE(rig_.open(sample(GetParam().name))) << rig_.reason;
    rig_.control->Run();
    for (std::size_t second = 0; second < 4; ++second) {
        EXPECT_TRUE(rig_.until([&] { return rig_.shows(GetParam().colours[second]); }))
            << second << " " << std::hex << rig_.pixel(20, 20);
        EXPECT_NEAR(rig_.control->CurrentPosition(), static_cast<double>(second) + 0.5, 1.0);
    }
}

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
