// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <ostream>
#include <vector>

#include "contract/linux/movie_rig.h"
#include "unit/linux/cd_image.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

using test::MovieRig;
using Changes = std::vector<std::pair<int, int>>;

struct SampleMovie {
    const char* name;
    std::array<QRgb, 5> colours;  ///< of each second
};

std::ostream& operator<<(std::ostream& out, const SampleMovie& movie) { return out << movie.name; }

constexpr SampleMovie kAvi{"colours.avi", {0xB83A3A, 0x3A8F4A, 0x3A55B8, 0xB8A23A, 0x7A3A9E}};
constexpr SampleMovie kMpg{"bars.mpg", {0x2E7D8C, 0xC8742A, 0x4E8C2E, 0x8C2E5E, 0x3C4A78}};
constexpr SampleMovie kMov{"clip.mov", {0x8C6A2E, 0x2E5E8C, 0x8C2E2E, 0x2E8C6A, 0x5E2E8C}};
constexpr SampleMovie kM1v{"silent.m1v", {0x586874, 0xA85A3C, 0x3C8C84, 0x746C2E, 0x2E3C74}};

class EachMovie : public testing::TestWithParam<SampleMovie> {
protected:
    MovieRig rig_;
};

INSTANTIATE_TEST_SUITE_P(Samples, EachMovie, testing::Values(kAvi, kMpg, kMov, kM1v));

/// MEDIA-22
TEST_P(EachMovie, OpensWithItsSizeItsLengthAndItsFirstPicture) {
    ASSERT_TRUE(rig_.open(MovieRig::sample(GetParam().name))) << rig_.reason;
    EXPECT_EQ(rig_.control->ImageSourceWidth(), 320);
    EXPECT_EQ(rig_.control->ImageSourceHeight(), 240);
    EXPECT_NEAR(rig_.control->Duration(), 5.0, 0.07);
    EXPECT_EQ(rig_.control->CurrentPosition(), 0.0);
    EXPECT_TRUE(MovieRig::until([&] { return rig_.shows(GetParam().colours[0]); }));
    EXPECT_EQ(rig_.control->State(), kMovieStopped);
    EXPECT_TRUE(rig_.changes.empty());
}

/// MEDIA-27: A seek shows the picture of its second, running or paused
TEST_P(EachMovie, AnExactSeekShowsThePictureOfItsSecond) {
    ASSERT_TRUE(rig_.open(MovieRig::sample(GetParam().name))) << rig_.reason;
    rig_.control->Run();
    rig_.control->Pause();
    // Near the edges of the seconds, so that a seek that lands early or late shows the wrong one.
    for (const double target : {4.08, 1.08, 2.90, 3.08, 0.02, 1.90}) {
        rig_.control->CurrentPosition(target);
        EXPECT_EQ(rig_.control->CurrentPosition(), target);
        const QRgb colour = GetParam().colours[static_cast<std::size_t>(target)];
        EXPECT_TRUE(MovieRig::until([&] { return rig_.shows(colour); })) << target;
        EXPECT_EQ(rig_.control->CurrentPosition(), target);
    }
}

/// MEDIA-24
TEST_P(EachMovie, PlaysToItsEndAndStandsThere) {
    ASSERT_TRUE(rig_.open(MovieRig::sample(GetParam().name))) << rig_.reason;
    rig_.control->CurrentPosition(4.3);
    const test::Stopwatch clock;
    rig_.control->Run();
    EXPECT_EQ(rig_.control->State(), kMovieRunning);
    ASSERT_TRUE(MovieRig::until([&] { return rig_.control->State() == kMovieStopped; }));
    EXPECT_GT(clock.passed().count(), 500);
    EXPECT_LT(clock.own().count(), 1500);
    ASSERT_TRUE(MovieRig::until([&] { return rig_.changes.size() == 2; }));
    EXPECT_EQ(rig_.changes, (Changes{{kMovieStopped, kMovieRunning}, {kMovieRunning, kMovieStopped}}));
    EXPECT_EQ(rig_.control->CurrentPosition(), rig_.control->Duration());
    EXPECT_GE(rig_.progress, 1);
    EXPECT_LE(rig_.progress, 5);
    EXPECT_TRUE(rig_.shows(GetParam().colours[4]));
}

/// MOVE-07
TEST(Movie, PauseHoldsThePictureAndThePosition) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    rig.control->Run();
    ASSERT_TRUE(MovieRig::until([&] { return rig.control->CurrentPosition() > 0.3; }));
    const double reached = rig.control->CurrentPosition();
    const test::Stopwatch clock;
    rig.control->Pause();
    EXPECT_EQ(rig.control->State(), kMoviePaused);
    // A frame or two may be on their way; then nothing moves any more.
    double held = -1;
    ASSERT_TRUE(MovieRig::until([&] {
        const int frames = rig.progress;
        const double before = std::exchange(held, rig.control->CurrentPosition());
        MovieRig::until([] { return false; }, 100);
        return held == before && frames == rig.progress;
    }));
    EXPECT_LT(held, reached + 0.5 + static_cast<double>(clock.heldUp().count()) / 1000);
    rig.control->Run();
    EXPECT_TRUE(MovieRig::until([&] { return rig.control->CurrentPosition() > held + 0.2; }));
    EXPECT_EQ(rig.changes,
              (Changes{{kMovieStopped, kMovieRunning}, {kMovieRunning, kMoviePaused}, {kMoviePaused, kMovieRunning}}));
}

TEST(Movie, OfManySeeksTheLastOneStands) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample(kMpg.name))) << rig.reason;
    rig.control->Run();
    rig.control->Pause();
    const test::Stopwatch clock;
    for (int i = 0; i < 200; ++i) rig.control->CurrentPosition(i % 5 + 0.5);
    rig.control->CurrentPosition(2.5);
    EXPECT_EQ(rig.control->CurrentPosition(), 2.5);
    EXPECT_TRUE(MovieRig::until([&] { return rig.shows(kMpg.colours[2]); }));
    // Queued ones would take their time one after another.
    EXPECT_LT(clock.own().count(), 1500);
    MovieRig::until([&] { return !rig.shows(kMpg.colours[2]); }, 300);
    EXPECT_TRUE(rig.shows(kMpg.colours[2]));
}

TEST(Movie, ASeekWhileRunningGoesOnFromThere) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample(kMov.name))) << rig.reason;
    rig.control->Run();
    ASSERT_TRUE(MovieRig::until([&] { return rig.control->CurrentPosition() > 0.2; }));
    rig.control->CurrentPosition(3.2);
    EXPECT_EQ(rig.control->CurrentPosition(), 3.2);
    double lowest = 3.2;
    ASSERT_TRUE(MovieRig::until([&] {
        lowest = std::min(lowest, rig.control->CurrentPosition());
        return rig.control->CurrentPosition() > 3.6;
    }));
    EXPECT_GE(lowest, 3.1);
    EXPECT_EQ(rig.control->State(), kMovieRunning);
    rig.control->Pause();  // the second that it is in is over some time
    EXPECT_TRUE(MovieRig::until([&] {
        const double last = static_cast<double>(kMov.colours.size()) - 1;
        return rig.shows(kMov.colours[static_cast<std::size_t>(std::min(rig.control->CurrentPosition(), last))]);
    }));
}

/// MEDIA-25
TEST(Movie, APositionIsHeldInsideTheMovie) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    rig.control->CurrentPosition(-3);
    EXPECT_EQ(rig.control->CurrentPosition(), 0.0);
    rig.control->CurrentPosition(300);
    EXPECT_EQ(rig.control->CurrentPosition(), rig.control->Duration());
    rig.control->Run();
    EXPECT_TRUE(MovieRig::until([&] { return rig.changes.size() == 2; }));
    EXPECT_EQ(rig.changes.back(), std::make_pair(kMovieRunning, kMovieStopped));
}

/// SEQ-27, MEDIA-23
TEST(Movie, DoubleSpeedTakesHalfTheTime) {
    MovieRig rig;
    rig.control->Rate(2.0);
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    rig.control->Run();
    EXPECT_NEAR(rig.secondTakes(1, 4), 0.5, 0.08);
}

/// MOVIE-08
TEST(Movie, AFileWithoutAPicturePlaysAllTheSame) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample("bells.mp2"))) << rig.reason;
    EXPECT_EQ(rig.control->ImageSourceWidth(), 0);
    EXPECT_EQ(rig.control->ImageSourceHeight(), 0);
    EXPECT_EQ(rig.control->Width, 320 * kTwipsPerPixel);
    EXPECT_EQ(rig.control->Height, 240 * kTwipsPerPixel + 30);
    EXPECT_NEAR(rig.control->Duration(), 4.0, 0.05);
    rig.control->Run();
    EXPECT_TRUE(MovieRig::until([&] { return rig.control->CurrentPosition() > 0.5; }));
}

/// MEDIA-28
TEST(Movie, TheSizesAreThoseOfTheMovieAndOfTheScreen) {
    MovieRig rig;  // the screen is 15000 by 12000 twips
    const std::array<std::pair<Twips, Twips>, 5> sizes{
        {{4800, 3630}, {9600, 7230}, {3750, 3000}, {7500, 6000}, {15000 * 0.707F, 12000 * 0.707F}}};
    for (int size = 0; size < 5; ++size) {
        rig.control->MovieWindowSize(size);
        ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
        EXPECT_FLOAT_EQ(rig.control->Width, sizes[static_cast<std::size_t>(size)].first) << size;
        EXPECT_FLOAT_EQ(rig.control->Height, sizes[static_cast<std::size_t>(size)].second) << size;
    }
}

/// MEDIA-28
TEST(Movie, ThePictureIsFittedWholeAndKeepsItsShape) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    ASSERT_TRUE(MovieRig::until([&] { return rig.shows(kAvi.colours[0]); }));
    for (const QSize area : {QSize(640, 240), QSize(160, 500), QSize(33, 25)}) {
        rig.surface->setTarget(area);
        const QImage seen = rig.painted(area);
        QRect lit;
        for (int y = 0; y < area.height(); ++y) {
            for (int x = 0; x < area.width(); ++x) {
                if (qGray(seen.pixel(x, y)) > 24) lit |= QRect(x, y, 1, 1);
            }
        }
        const double scale = std::min(area.width() / 320.0, area.height() / 240.0);
        EXPECT_NEAR(lit.width(), 320 * scale, 2) << area.width();
        EXPECT_NEAR(lit.height(), 240 * scale, 2) << area.width();
        EXPECT_NEAR(lit.center().x(), area.width() / 2.0, 2) << area.width();
        EXPECT_NEAR(lit.center().y(), area.height() / 2.0, 2) << area.width();
    }
}

/// MEDIA-28
TEST(Movie, ThePictureFillsItsPlaceToThePixel) {
    MovieRig rig;
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    ASSERT_TRUE(MovieRig::until([&] { return rig.shows(kAvi.colours[0]); }));
    // Places whose fitted size is no whole number of pixels, with it beside what is left black.
    const std::array<std::pair<QSize, QRect>, 4> places{{{{905, 673}, {4, 0, 897, 673}},
                                                         {{318, 240}, {0, 1, 318, 239}},
                                                         {{320, 238}, {1, 0, 317, 238}},
                                                         {{101, 77}, {0, 1, 101, 76}}}};
    for (const auto& [area, expected] : places) {
        rig.surface->setTarget(area);
        const QImage seen = rig.painted(area);
        const auto isLit = [&seen](int x, int y) { return qGray(seen.pixel(x, y)) > 24; };
        int rows = 0;
        int columns = 0;
        for (int y = 0; y < area.height(); ++y) rows += isLit(area.width() / 2, y) ? 1 : 0;
        for (int x = 0; x < area.width(); ++x) columns += isLit(x, area.height() / 2) ? 1 : 0;
        EXPECT_EQ(QSize(columns, rows), expected.size()) << area.width();
        EXPECT_TRUE(isLit(expected.left(), expected.top())) << area.width();
        EXPECT_TRUE(isLit(expected.right(), expected.bottom())) << area.width();
    }
}

/// A picture whose lines begin where the library wants them, as those of a window do.
struct AlignedPicture {
    static constexpr std::size_t kAlignment = 64;
    explicit AlignedPicture(QSize size)
        : bytes(static_cast<std::size_t>(size.width() * size.height() * 4) + kAlignment),
          image(first(), size.width(), size.height(), size.width() * 4, QImage::Format_RGB32) {
        image.fill(Qt::magenta);
    }
    std::uint8_t* first() {
        void* place = bytes.data();
        std::size_t room = bytes.size();
        return static_cast<std::uint8_t*>(std::align(kAlignment, kAlignment, place, room));
    }
    std::vector<std::uint8_t> bytes;
    QImage image;
};

/// MOVIE-51: A frame that is painted as it comes is the same as when it is painted later
TEST(Movie, AFrameThatIsPaintedAsItComesIsTheSameLater) {
    constexpr QSize kSize(640, 480);
    MovieRig rig;
    AlignedPicture now(kSize);
    int due = 0, left = 0;
    rig.surface->setTarget(kSize);
    rig.surface->frameReady.tie([&] {
        due += rig.surface->isDue() ? 1 : 0;
        QPainter painter(&now.image);
        rig.surface->paint(painter, QRect(QPoint(), kSize));
        left += rig.surface->isDue() ? 1 : 0;
    });
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    rig.control->CurrentPosition(1.0);
    rig.control->Run();
    ASSERT_TRUE(MovieRig::until([&] { return due > 5; }));
    rig.control->Pause();
    const int before = due;
    rig.control->CurrentPosition(0.5);
    // A frame of before may still have been on its way.
    const QColor wanted(kAvi.colours[0]);
    ASSERT_TRUE(MovieRig::until(
        [&] { return due > before && std::abs(now.image.pixelColor(40, 40).red() - wanted.red()) <= 6; }));
    EXPECT_EQ(left, 0);
    EXPECT_EQ(rig.surface->covered(QRect(QPoint(), kSize), 1), QRect(QPoint(), kSize));
    EXPECT_EQ(rig.painted(kSize), now.image);
    EXPECT_NE(now.image.pixelColor(320, 240), QColor(Qt::magenta));
}

/// A film of dark and light halves that no codec has softened.
std::string halves(const std::filesystem::path& path, int dark, int light) {
    constexpr int kSide = 64, kFrames = 50;
    std::string plane;
    for (int i = 0; i < kSide * kSide; ++i) plane += static_cast<char>(i % kSide < kSide / 2 ? dark : light);
    std::ofstream out(path, std::ios::binary);
    out << "YUV4MPEG2 W" << kSide << " H" << kSide << " F25:1 Ip A1:1 C420jpeg\n";
    for (int i = 0; i < kFrames; ++i) out << "FRAME\n" << plane << std::string(kSide * kSide / 2, '\x80');
    return path;
}

/// How far a border's pixels go beyond the halves beside it, in steps of light.
int ringing(const QImage& seen) {
    int darkest = 255, lightest = 0;
    for (int x = 0; x < seen.width(); ++x) {
        darkest = std::min(darkest, qGreen(seen.pixel(x, seen.height() / 2)));
        lightest = std::max(lightest, qGreen(seen.pixel(x, seen.height() / 2)));
    }
    const int dark = qGreen(seen.pixel(2, seen.height() / 2));
    const int light = qGreen(seen.pixel(seen.width() - 3, seen.height() / 2));
    return std::max(dark - darkest, lightest - light);
}

/// MOVIE-52: A film that is made larger keeps its borders sharp; made smaller it has none that ring
TEST(Movie, BordersAreSharpWhenItIsLargerAndPlainWhenSmaller) {
    constexpr QSize kLarge(192, 192), kSmall(24, 24);
    constexpr int kOften = 20;
    const test::ScratchFolder folder;
    MovieRig rig;
    ASSERT_TRUE(rig.open(halves(folder.path() / "film.avi", 50, 205))) << rig.reason;
    for (const bool larger : {false, true, false}) {
        rig.surface->setTarget(larger ? kLarge : kSmall);
        int right = 0;  // the player takes another filter a little later
        EXPECT_TRUE(MovieRig::until([&] {
            rig.control->CurrentPosition(right % 2 == 0 ? 0.8 : 0.2);  // a frame of its own
            right = (ringing(rig.painted(larger ? kLarge : kSmall)) > 2) == larger ? right + 1 : 0;
            return right > kOften;
        })) << larger;
    }
}

TEST(Movie, FillsTheScreenWhileRunningOrPaused) {
    MovieRig rig;
    rig.control->FullScreenMode(true);
    int told = 0;
    rig.surface->fillsScreenChanged.tie([&] { ++told; });
    ASSERT_TRUE(rig.open(MovieRig::sample(kAvi.name))) << rig.reason;
    EXPECT_FALSE(rig.surface->fillsScreen());
    told = 0;
    rig.control->Run();
    EXPECT_TRUE(rig.surface->fillsScreen());
    EXPECT_EQ(told, 1);
    rig.control->Pause();
    EXPECT_TRUE(rig.surface->fillsScreen());
    rig.control->Stop();
    EXPECT_FALSE(rig.surface->fillsScreen());
    EXPECT_EQ(told, 3);
    rig.control->Run();
    rig.control->FullScreenMode(false);
    EXPECT_FALSE(rig.surface->fillsScreen());
}

}  // namespace
}  // namespace corvane
