// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "contract/linux/movie_sound_rig.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using test::MovieRig;
using test::Tone;

class MovieSound : public testing::Test {
protected:
    void SetUp() override {
        if (!test::HeardServer::exists()) GTEST_SKIP() << "no sound server to start";
        ASSERT_TRUE(server_.start());
    }
    bool hears() {
        return MovieRig::until([this] { return !server_.heard().empty(); }, 8000);
    }

    test::HeardServer server_;
    MovieRig rig_;
};

/// MEDIA-50: A movie's tones are heard in order; without a sound server it plays on in silence, and is heard when one
///     comes
TEST_F(MovieSound, ItsTonesAreHeardInOrder) {
    ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi"))) << rig_.reason;
    server_.forget();
    rig_.control->Run();
    ASSERT_TRUE(MovieRig::until([&] { return rig_.changes.size() == 2; }, 10'000));
    std::vector<double> tones;
    MovieRig::until(
        [&] {
            tones.clear();
            for (const Tone& tone : server_.heard()) {
                // None follows itself: what a busy machine leaves out in the middle of one does not end it.
                const bool goesOn = !tones.empty() && std::abs(tones.back() - tone.hertz) <= 0.02 * tone.hertz;
                if (tone.hertz > 0 && !goesOn) tones.push_back(tone.hertz);
            }
            return tones.size() >= 5;
        },
        3000);
    const std::vector<double> expected{880, 659.26, 880, 1046.5, 440};
    ASSERT_EQ(tones.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(tones[i], expected[i], expected[i] * 0.02) << i;
}

/// MEDIA-50
TEST_F(MovieSound, TheClockGoesFromTheStartOverALazyOutput) {
    server_.kill();
    ASSERT_TRUE(server_.start(false));
    ASSERT_TRUE(rig_.open(MovieRig::sample("clip.mov"))) << rig_.reason;
    rig_.control->Run();
    const test::Stopwatch clock;
    ASSERT_TRUE(MovieRig::until([&] { return rig_.control->CurrentPosition() > 1.0; }));
    EXPECT_LT(clock.own().count(), 2200);
}

/// MEDIA-50
TEST_F(MovieSound, PlaysOnInSilenceAndIsHeardWhenTheServerReturns) {
    ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi"))) << rig_.reason;
    rig_.control->Rate(0.5);
    rig_.control->Run();
    ASSERT_TRUE(hears());
    server_.kill();
    const double lost = rig_.control->CurrentPosition();
    EXPECT_TRUE(MovieRig::until([&] { return rig_.control->CurrentPosition() > lost + 0.4; }));
    ASSERT_TRUE(server_.start());
    server_.forget();
    EXPECT_TRUE(hears());
    EXPECT_EQ(rig_.control->State(), kMovieRunning);
    EXPECT_EQ(rig_.changes.size(), 1U);
}

TEST_F(MovieSound, OpensAndPlaysInSilenceBesideAServerThatSaysNothing) {
    server_.hang(true);
    ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi"))) << rig_.reason;
    rig_.control->Rate(0.5);
    rig_.control->Run();
    EXPECT_TRUE(MovieRig::until([&] { return rig_.control->CurrentPosition() > 0.3; }));
    server_.hang(false);
    EXPECT_TRUE(hears());
    EXPECT_EQ(rig_.control->State(), kMovieRunning);
}

/// The player that is kept for the next movie has found the server before, and looks for it again.
TEST_F(MovieSound, OpensTheNextMovieBesideAServerThatHasFallenSilent) {
    ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi"))) << rig_.reason;
    rig_.control->Run();
    ASSERT_TRUE(hears());
    rig_.control->FileName("");
    server_.hang(true);
    ASSERT_TRUE(rig_.open(MovieRig::sample("clip.mov"))) << rig_.reason;
    server_.hang(false);
    ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi"))) << rig_.reason;
    server_.forget();
    rig_.control->Run();
    EXPECT_TRUE(hears());
}

}  // namespace
}  // namespace corvane
