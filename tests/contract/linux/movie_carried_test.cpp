// SPDX-License-Identifier: GPL-3.0-or-later
// What movies carry besides: how their picture lies and is drawn, tracks, chapters, covers.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <utility>

#include "contract/linux/movie_rig.h"
#include "contract/linux/network_lures.h"
#include "unit/linux/memory_peak.h"

namespace corvane {
namespace {

using test::MovieRig;
using Corners = std::array<QRgb, 4>;  // left and right above, left and right below

constexpr QRgb kRed = 0xD02020, kGreen = 0x20B020, kBlue = 0x2030D0, kYellow = 0xD0C020;

std::string made(const std::string& name) { return std::string(CORVANE_SOURCE_DIR) + "/tests/data/movies/" + name; }

bool near(QRgb seen, QRgb wanted) {
    constexpr int kTolerance = 10;
    const auto close = [](int a, int b) { return std::abs(a - b) <= kTolerance; };
    return close(qRed(seen), qRed(wanted)) && close(qGreen(seen), qGreen(wanted)) && close(qBlue(seen), qBlue(wanted));
}

class MovieCarried : public testing::Test {
protected:
    QSize size() const { return {rig_.control->ImageSourceWidth(), rig_.control->ImageSourceHeight()}; }

    bool showsCorners(const Corners& corners) const {
        const QImage seen = rig_.painted(size());
        const int left = seen.width() / 4, right = seen.width() * 3 / 4;
        const int above = seen.height() / 4, below = seen.height() * 3 / 4;
        return near(seen.pixel(left, above), corners[0]) && near(seen.pixel(right, above), corners[1]) &&
               near(seen.pixel(left, below), corners[2]) && near(seen.pixel(right, below), corners[3]);
    }

    /// White in a part of the picture, which has none of its own: letters.
    bool hasLetters(bool above) const {
        const QImage seen = rig_.painted(kLarge);
        int white = 0;
        for (int y = above ? 0 : seen.height() / 2; y < (above ? seen.height() / 2 : seen.height()); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                if (near(seen.pixel(x, y), 0xFFFFFF)) ++white;
            }
        }
        return white > kLetter;
    }
    /// Presses for the next subtitles until they are seen, or not.
    bool subtitlesCome(bool seen) {
        rig_.control->NextSubtitles();
        return MovieRig::until([&] { return hasLetters(false) == seen; });
    }
    void openLarge(const std::string& path) {
        rig_.surface->setTarget(kLarge);
        ASSERT_TRUE(rig_.open(path)) << rig_.reason;
        ASSERT_TRUE(MovieRig::until([&] { return !near(rig_.painted(kLarge).pixel(400, 300), 0); }));
    }
    /// A film of three seconds without anything, in a folder of its own.
    std::string bare() const {
        const std::string path = folder_.in("film.mp4");
        std::filesystem::copy_file(made("wide_pixels.mp4"), path, std::filesystem::copy_options::skip_existing);
        return path;
    }

    static constexpr QSize kLarge{960, 640};
    static constexpr int kLetter = 60;  // pixels
    test::TemporaryFolder folder_;
    MovieRig rig_;
};

struct Turned {
    const char* name;
    QSize size;
    Corners corners;
};

/// MEDIA-74: A film that was taken turned, or whose pixels are not square, has the size and the picture that it is seen
/// with
TEST_F(MovieCarried, AFilmThatWasTakenTurnedIsSeenUpright) {
    const std::array<Turned, 5> films{{{"turned90.mp4", {64, 96}, {kBlue, kRed, kYellow, kGreen}},
                                       {"turned180.mp4", {96, 64}, {kYellow, kBlue, kGreen, kRed}},
                                       {"turned270.mp4", {64, 96}, {kGreen, kYellow, kRed, kBlue}},
                                       {"wide_pixels.mp4", {192, 64}, {kRed, kGreen, kBlue, kYellow}},
                                       {"turned90.mp4", {64, 96}, {kBlue, kRed, kYellow, kGreen}}}};
    for (const Turned& film : films) {
        ASSERT_TRUE(rig_.open(made(film.name))) << rig_.reason;
        EXPECT_EQ(size(), film.size) << film.name;
        rig_.surface->setTarget(film.size);
        EXPECT_TRUE(MovieRig::until([&] { return showsCorners(film.corners); })) << film.name;
        rig_.control->CurrentPosition(2.5);
        rig_.control->Run();
        EXPECT_TRUE(MovieRig::until([&] { return rig_.progress > 0; })) << film.name;
        EXPECT_TRUE(showsCorners(film.corners)) << film.name;
        rig_.progress = 0;
    }
}

/// MEDIA-74
TEST_F(MovieCarried, WhatWasTurnedBeforeLeavesTheNextFilmAlone) {
    ASSERT_TRUE(rig_.open(made("turned90.mp4")));
    ASSERT_TRUE(rig_.open(made("laden.mkv"))) << rig_.reason;
    EXPECT_EQ(size(), QSize(96, 64));
    rig_.surface->setTarget(size());
    EXPECT_TRUE(MovieRig::until([&] { return showsCorners({kRed, kGreen, kBlue, kYellow}); }));
}

/// MEDIA-75: A cover that lies in a file is no picture of the movie
TEST_F(MovieCarried, ACoverIsNoPictureOfTheMovie) {
    ASSERT_TRUE(rig_.open(made("song.mp4"))) << rig_.reason;
    EXPECT_EQ(size(), QSize(0, 0));
    EXPECT_NEAR(rig_.control->Duration(), 2.0, 0.1);
    ASSERT_TRUE(rig_.open(made("laden.mkv"))) << rig_.reason;
    EXPECT_EQ(size(), QSize(96, 64)) << "the film, not the picture that is attached to it";
}

/// MEDIA-76: Lines of two moments are not seen together
TEST_F(MovieCarried, LinesOfTwoMomentsAreNotSeenTogether) {
    ASSERT_TRUE(rig_.open(made("interlaced.mp4"))) << rig_.reason;
    rig_.surface->setTarget(size());
    rig_.control->Run();
    ASSERT_TRUE(MovieRig::until([&] { return rig_.progress > 1; }));
    const QImage seen = rig_.painted(size());
    for (int y = 20; y < 40; ++y) {
        EXPECT_NEAR(qGreen(seen.pixel(48, y)), qGreen(seen.pixel(48, y + 1)), 40) << "line " << y;
    }
}

/// MOVIE-42: A movie begins without subtitles; they come one after the other, then none, and a text says which
TEST_F(MovieCarried, SubtitlesInsideAreGoneThrough) {
    openLarge(made("laden.mkv"));
    EXPECT_FALSE(hasLetters(false));
    EXPECT_FALSE(hasLetters(true));
    EXPECT_TRUE(subtitlesCome(true)) << "also before it runs";
    EXPECT_TRUE(hasLetters(true)) << "says which";
    EXPECT_EQ(rig_.control->CurrentPosition(), 0.0);
    const QImage first = rig_.painted(kLarge);
    rig_.control->NextSubtitles();
    EXPECT_TRUE(MovieRig::until([&] { return rig_.painted(kLarge) != first && hasLetters(false); })) << "the second";
    EXPECT_TRUE(subtitlesCome(false));
    EXPECT_TRUE(MovieRig::until([&] { return !hasLetters(true); })) << "the text goes";
    EXPECT_TRUE(subtitlesCome(true));
    openLarge(made("laden.mkv"));
    EXPECT_TRUE(MovieRig::until([&] { return !hasLetters(true); }));
    EXPECT_FALSE(hasLetters(false)) << "the next movie begins without";
}

/// MOVIE-43: Subtitles of the movie's name beside it are those inside it, in any code of characters
TEST_F(MovieCarried, SubtitlesBesideTheMovieAreFound) {
    struct File {
        const char* name;
        std::string text;
    };
    const std::string times = "1\n00:00:00,000 --> 00:00:03,000\n";
    const std::string ass =
        "[Script Info]\nScriptType: v4.00+\nPlayResX: 960\nPlayResY: 320\n"
        "[V4+ Styles]\nFormat: Name, Fontname, Fontsize, PrimaryColour, Alignment\nStyle: "
        "Default,Sans,60,&H00FFFFFF,2\n"
        "[Events]\n"
        "Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\n"
        "Dialogue: 0,0:00:00.00,0:00:03.00,Default,,0,0,0,,Hello\n";
    for (const File& file :
         {File{"film.srt", times + "Hello\n"}, File{"film.SRT", times + "\x93\xFA\x96\x7B\x8C\xEA\x82\xCC\n"},
          File{"film.ass", ass}, File{"film.vtt", "WEBVTT\n\n00:00.000 --> 00:03.000\nHello\n"}}) {
        folder_.write(file.name, file.text);
        openLarge(bare());
        EXPECT_TRUE(subtitlesCome(true)) << file.name;
        EXPECT_TRUE(subtitlesCome(false)) << file.name;
        std::filesystem::remove(folder_.in(file.name));
    }
    folder_.write("other.srt", times + "Hello\n");
    openLarge(bare());
    rig_.control->NextSubtitles();
    EXPECT_TRUE(MovieRig::until([&] { return hasLetters(true); })) << "says that there are none";
    EXPECT_FALSE(hasLetters(false));
}

/// MOVIE-44: Whatever is named as subtitles leaves the movie playing, and nothing that it names is opened
TEST_F(MovieCarried, WhatIsNamedAsSubtitlesAndIsNoneIsLeft) {
    const test::Listener server;
    const std::string address = "http://127.0.0.1:" + server.port() + "/x.srt";
    std::string noise;
    std::uint32_t number = 7;
    for (int i = 0; i < 20'000; ++i) {
        number = number * 1664525U + 1013904223U;
        noise += static_cast<char>(number >> 24U);
    }
    const std::string times = "1\n00:00:00,000 --> 00:00:03,000\n";
    for (const std::string& bytes :
         {std::string(), noise, "-->" + noise, "[Script Info]\n[Events]\nDialogue: " + noise, times + noise,
          "#EXTM3U\n#EXTINF:1,-->\n" + address + "\n", "# mpv EDL v0\n" + address + "\n-->\n",
          "ffconcat version 1.0\nfile '" + address + "'\n# -->\n", std::string((8U << 20U) + 1, '-') + times}) {
        folder_.write("film.srt", bytes);
        openLarge(bare());
        rig_.control->NextSubtitles();
        EXPECT_TRUE(MovieRig::until([&] { return hasLetters(true); })) << "says something";
        rig_.progress = 0;
        rig_.control->Run();
        EXPECT_TRUE(MovieRig::until([&] { return rig_.progress > 1; }));
        EXPECT_EQ(rig_.reason, "");
    }
    EXPECT_FALSE(server.wasReached(0));
}

/// MOVIE-45: Subtitles that are a burden to draw hold neither the film nor the panel, nor fill the memory
TEST_F(MovieCarried, SubtitlesThatAreABurdenAreLinesAsAnyOther) {
    std::string blurred =
        "[Script Info]\nScriptType: v4.00+\n[Events]\n"
        "Format: Layer, Start, End, Style, Name, MarginL, MarginR, MarginV, Effect, Text\n";
    std::string crowd;
    for (int i = 0; i < 3'000; ++i) {
        blurred += "Dialogue: 0,0:00:00.00,0:00:03.00,Default,,0,0,0,,{\\pos(" + std::to_string(i % 640) +
                   ",90)\\frz33\\blur50\\bord50\\fs200\\t(0,3000,\\frx3000)}Hello\n";
        crowd += std::to_string(i) + "\n00:00:00,000 --> 00:00:03,000\nHello\n\n";
    }
    std::string longLine = "1\n00:00:00,000 --> 00:00:03,000\n" + std::string(3'000'000, 'W') + "\n";
    for (const auto& [name, bytes] :
         {std::pair{"film.ass", &blurred}, std::pair{"film.srt", &crowd}, std::pair{"film.srt", &longLine}}) {
        folder_.write(name, *bytes);
        openLarge(bare());
        const test::MemoryPeak peak;
        EXPECT_TRUE(subtitlesCome(true)) << name;
        rig_.progress = 0;
        rig_.control->Run();
        EXPECT_TRUE(MovieRig::until([&] { return rig_.progress > 1; })) << name;
        EXPECT_TRUE(hasLetters(false)) << name;
        EXPECT_LT(peak.megabytes(), 200) << name;
        std::filesystem::remove(folder_.in(name));
    }
}

/// MEDIA-81: A film that is cut off plays as far as it goes, and ends
TEST_F(MovieCarried, AFilmThatIsCutOffPlaysAsFarAsItGoes) {
    std::ifstream file(made("laden.mkv"), std::ios::binary);
    const std::string whole{std::istreambuf_iterator<char>(file), {}};
    for (const double share : {0.5, 0.8, 0.99}) {
        folder_.write("cut.mkv", whole.substr(0, static_cast<std::size_t>(static_cast<double>(whole.size()) * share)));
        rig_.changes.clear();
        ASSERT_TRUE(rig_.open(folder_.in("cut.mkv"))) << share << rig_.reason;
        rig_.control->Rate(4);
        rig_.control->Run();
        EXPECT_TRUE(MovieRig::until([&] { return rig_.changes.size() == 2; }, 8000)) << share;
        EXPECT_EQ(rig_.reason, "");
    }
}

/// MEDIA-82: A film that grows while it plays is played to the end that it has by then
TEST_F(MovieCarried, AFilmThatGrowsIsPlayedOn) {
    std::ifstream file(made("laden.mkv"), std::ios::binary);
    const std::string whole{std::istreambuf_iterator<char>(file), {}};
    const std::size_t first = whole.size() * 7 / 10;
    folder_.write("grows.mkv", whole.substr(0, first));
    ASSERT_TRUE(rig_.open(folder_.in("grows.mkv"))) << rig_.reason;
    std::ofstream(folder_.in("grows.mkv"), std::ios::binary | std::ios::app) << whole.substr(first);
    rig_.control->Run();
    EXPECT_TRUE(MovieRig::until([&] { return rig_.changes.size() == 2; }, 8000));
    EXPECT_EQ(rig_.reason, "");
    EXPECT_GT(rig_.control->CurrentPosition(), 2.5);
}

/// MOVIE-41
TEST_F(MovieCarried, ChaptersAreTold) {
    ASSERT_TRUE(rig_.open(made("laden.mkv")));
    const std::vector<MovieChapter> chapters = rig_.control->Chapters();
    ASSERT_EQ(chapters.size(), 3U);
    EXPECT_EQ(chapters[0].title, "One");
    EXPECT_EQ(chapters[1].title, "\xE4\xBA\x8C\xE7\x95\xAA");
    EXPECT_NEAR(chapters[2].seconds, 2.0, 0.01);
    ASSERT_TRUE(rig_.open(made("turned90.mp4")));
    EXPECT_TRUE(rig_.control->Chapters().empty());
}

/// MEDIA-88
TEST_F(MovieCarried, AFilmOfAHighDynamicRangeHasTheLightOfAnOrdinaryScreen) {
    ASSERT_TRUE(rig_.open(made("bright.mp4")));
    EXPECT_TRUE(MovieRig::until([&] {
        const QImage seen = rig_.painted(size());
        return near(seen.pixel(24, 32), 0x8D8D8D) && near(seen.pixel(72, 32), 0xFFFFFF);
    }));
}

/// MEDIA-80
TEST_F(MovieCarried, AFrameIsSavedInTheMoviesOwnSize) {
    std::filesystem::create_directories(folder_.in("home/Pictures"));
    ASSERT_EQ(setenv("HOME", folder_.in("home").c_str(), 1), 0);
    ASSERT_EQ(setenv("XDG_CONFIG_HOME", folder_.in("home").c_str(), 1), 0);
    openLarge(made("turned90.mp4"));
    rig_.control->SaveFrame("Film");
    const std::string path = folder_.in("home/Pictures/Film.png");
    EXPECT_TRUE(MovieRig::until([&] { return QImage(QString::fromStdString(path)).size() == QSize(64, 96); }));
    EXPECT_TRUE(near(QImage(QString::fromStdString(path)).pixel(16, 24), kBlue));
    EXPECT_TRUE(MovieRig::until([&] { return hasLetters(true); })) << "says where it went";
}

}  // namespace
}  // namespace corvane
