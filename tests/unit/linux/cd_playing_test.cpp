// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdlib>

#include "contract/linux/movie_sound_rig.h"
#include "linux/media/desktop_station.h"
#include "unit/linux/cd_image.h"

namespace corvane {
namespace {

using test::MovieRig;
using test::Tone;

// Tracks of 1.6, 1.2 and 2 seconds.
const std::vector<test::ImageTrack> kThreeTones{{440, 120}, {659.26, 90}, {880, 150}};
constexpr double kLengthError =
    0.15;  // seconds: a tone's ends, and those of each silence within it, fall into blocks of 40 ms

/// A disc in an image beside the entries, played through a sound server and recorded from it.
class CdPlaying : public testing::Test {
protected:
    void SetUp() override {
        if (!test::HeardServer::exists()) GTEST_SKIP() << "no sound server to start";
        ASSERT_TRUE(server_.start());
        test::writeImage(folder_.path(), "tones", kThreeTones);
        control_ = std::make_unique<OutputMciControl>(station_);
        control_->Done.tie([this](int code) { done_.push_back(code); });
        control_->Failed.tie([this](const std::string& reason) { failed_ = reason; });
        control_->DeviceType("CDAudio");
        control_->FileName((folder_.path() / "Track02.cda").string());
        control_->Command("Open");
        control_->TimeFormat(kFormatTmsf);
    }
    void TearDown() override {
        control_.reset();
        station_.post.stop();
    }

    std::int32_t endOf(int track) {
        control_->Track(track);
        return control_->TrackLength() * 256 + track;
    }
    void play(int track, std::int32_t from) {
        control_->From(from);
        control_->To(endOf(track));
        control_->Command("Play");
    }
    bool waitDone(std::size_t count) {
        return MovieRig::until([&] { return done_.size() >= count || !failed_.empty(); }, 8000) && failed_.empty();
    }
    /// The stretches heard, once nothing new has come for a while.
    std::vector<Tone> heard() {
        std::size_t before = 0;
        MovieRig::until(
            [&] {
                MovieRig::until([] { return false; }, 300);
                const std::size_t now = server_.heard().size();
                return std::exchange(before, now) == now && now > 0;
            },
            4000);
        return server_.heard();
    }

    /// The tones heard, in order. A silence within one, which a busy machine leaves when it lets nobody read for a
    /// while, does not end it.
    std::vector<Tone> tonesHeard() {
        std::vector<Tone> tones;
        for (const Tone& heardNow : heard()) {
            if (heardNow.hertz == 0) continue;
            if (!tones.empty() && std::abs(tones.back().hertz - heardNow.hertz) <= 0.02 * heardNow.hertz) {
                tones.back().seconds += heardNow.seconds;
            } else {
                tones.push_back(heardNow);
            }
        }
        return tones;
    }

    test::HeardServer server_;
    test::ScratchFolder folder_;
    test::RigLoop loop_;
    DesktopStation station_{loop_, false};
    std::unique_ptr<OutputMciControl> control_;
    std::vector<int> done_;
    std::string failed_;
};

/// MEDIA-46
TEST_F(CdPlaying, TheLengthsAreThereAfterOpening) {
    EXPECT_EQ(endOf(1), 1 | 1 << 16 | 45 << 24);
    EXPECT_EQ(endOf(2), 2 | 1 << 16 | 15 << 24);
    EXPECT_EQ(endOf(3), 3 | 2 << 16);
}

/// OPEN-34
TEST_F(CdPlaying, ATrackIsHeardWholeAndStopsAtItsEnd) {
    play(2, 2);
    ASSERT_TRUE(waitDone(1)) << failed_;
    EXPECT_EQ(done_, std::vector<int>{kNotifySuccessful});
    const std::vector<Tone> tones = tonesHeard();
    ASSERT_EQ(tones.size(), 1U);
    EXPECT_NEAR(tones[0].hertz, 659.26, 8);
    EXPECT_NEAR(tones[0].seconds, 1.2, kLengthError);
    EXPECT_EQ(done_.size(), 1U);
}

/// MEDIA-46: Tracks played one after the other come in their order, from within a track the rest of it, with their
///     lengths there after opening
TEST_F(CdPlaying, TracksPlayedOneAfterAnotherComeInTheirOrder) {
    for (const int track : {3, 1, 2}) {
        const std::size_t before = done_.size();
        play(track, track);
        ASSERT_TRUE(waitDone(before + 1)) << failed_;
    }
    const std::vector<Tone> tones = tonesHeard();
    ASSERT_EQ(tones.size(), 3U);
    EXPECT_NEAR(tones[0].hertz, 880, 10);
    EXPECT_NEAR(tones[0].seconds, 2.0, kLengthError);
    EXPECT_NEAR(tones[1].hertz, 440, 8);
    EXPECT_NEAR(tones[1].seconds, 1.6, kLengthError);
    EXPECT_NEAR(tones[2].hertz, 659.26, 8);
    EXPECT_NEAR(tones[2].seconds, 1.2, kLengthError);
}

/// MEDIA-46
TEST_F(CdPlaying, AStartWithinATrackPlaysTheRestOfIt) {
    play(3, 3 | 1 << 16 | 15 << 24);  // second 1, frame 15: 0.8 s are left
    EXPECT_EQ(control_->Position() & 0xFFFFFF, 3 | 1 << 16);
    ASSERT_TRUE(waitDone(1)) << failed_;
    const std::vector<Tone> tones = tonesHeard();
    ASSERT_EQ(tones.size(), 1U);
    EXPECT_NEAR(tones[0].hertz, 880, 10);
    EXPECT_NEAR(tones[0].seconds, 0.8, kLengthError);
}

/// OPEN-47
TEST_F(CdPlaying, PausedItHoldsAndGoesOnToTheTracksEnd) {
    play(1, 1);
    ASSERT_TRUE(MovieRig::until([&] { return (control_->Position() >> 24) > 30; }));
    control_->Command("Pause");
    const std::int32_t held = control_->Position();
    MovieRig::until([] { return false; }, 300);
    EXPECT_EQ(control_->Position(), held);
    EXPECT_TRUE(done_.empty());
    control_->To(endOf(1));
    control_->Command("Play");
    ASSERT_TRUE(waitDone(1)) << failed_;
    double seconds = 0;
    for (const Tone& tone : heard()) {
        EXPECT_TRUE(tone.hertz == 0 || std::abs(tone.hertz - 440) < 8) << tone.hertz;
        if (tone.hertz > 0) seconds += tone.seconds;
    }
    EXPECT_NEAR(seconds, 1.6, kLengthError);
}

}  // namespace
}  // namespace corvane
