// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "contract/linux/movie_rig.h"
#include "contract/linux/network_lures.h"
#include "media/movies/movie_player.h"
#include "unit/linux/memory_peak.h"

namespace corvane {
namespace {

using test::Listener;
using test::MovieRig;
namespace fs = std::filesystem;

class MovieFile : public testing::Test {
protected:
    MovieFile() {
        std::string pattern = (fs::temp_directory_path() / "corvane-movie-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~MovieFile() override {
        std::error_code error;
        fs::remove_all(folder_, error);
    }

    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
        return (folder_ / name).string();
    }
    static std::string bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Waits for Failed; the control is left closed and usable.
    void expectFailure(const std::string& path) {
        rig_.reason.clear();
        const int opened = rig_.opened;
        rig_.control->FileName(path);
        EXPECT_EQ(rig_.reason, "") << "from inside the call";
        EXPECT_TRUE(MovieRig::until([&] { return !rig_.reason.empty(); })) << path;
        EXPECT_EQ(rig_.opened, opened) << path;
        EXPECT_EQ(rig_.control->FileName(), "") << path;
        EXPECT_EQ(rig_.control->State(), kMovieStopped) << path;
        rig_.control->Run();
        EXPECT_EQ(rig_.control->State(), kMovieStopped) << path;
        rig_.reason.clear();
    }

    fs::path folder_;
    MovieRig rig_;
};

/// MEDIA-29
TEST_F(MovieFile, WhatCannotBeDecodedFailsWithAReason) {
    const std::string movie = bytesOf(MovieRig::sample("colours.avi"));
    expectFailure(MovieRig::sample("NOTES.txt"));
    expectFailure(write("empty.avi", ""));
    expectFailure(write("header.avi", movie.substr(0, 200)));
    expectFailure(write("noise.mpg", std::string(20000, '\x5A')));
    expectFailure((folder_ / "gone.mov").string());
    expectFailure(folder_.string());
    EXPECT_TRUE(rig_.open(MovieRig::sample("colours.avi")));
}

TEST_F(MovieFile, WhatMustBeReadByTheGigabyteBeforeItBeginsFails) {
    const auto bigEndian = [](std::uint32_t value, int bytes) {
        std::string text;
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) text += static_cast<char>(value >> shift);
        return text;
    };
    // A hundred covers of a FLAC file, each as large as it may be; on the disk they are holes.
    constexpr std::uint32_t kCover = 15U << 20U;
    const std::string cover = bigEndian(3, 4) + bigEndian(10, 4) + "image/jpeg" + bigEndian(0, 4) + bigEndian(1, 4) +
                              bigEndian(1, 4) + bigEndian(24, 4) + bigEndian(0, 4) + bigEndian(kCover - 42, 4);
    const std::string path = write("covers.avi", "");
    std::ofstream file(path, std::ios::binary);
    file << "fLaC" << bigEndian(34, 4) << bigEndian(0x10001000, 4) << std::string(6, '\0') << bigEndian(0x0AC442F0, 4)
         << std::string(20, '\0');
    for (int i = 0; i < 100; ++i) {
        const auto head = static_cast<std::uint32_t>(i == 99 ? 0x86 : 6);
        file << bigEndian(head, 1) << bigEndian(kCover, 3) << cover;
        file.seekp(static_cast<std::streamoff>(kCover - cover.size()), std::ios::cur);
    }
    file << std::string(20000, '\xFF');
    file.close();
    const test::MemoryPeak peak;
    rig_.control->FileName(path);
    EXPECT_TRUE(MovieRig::until([&] { return !rig_.reason.empty(); }));
    EXPECT_EQ(rig_.reason, "Too much would have to be read before it begins.");
    EXPECT_LT(peak.megabytes(), 250);
    rig_.reason.clear();
    EXPECT_TRUE(rig_.open(MovieRig::sample("colours.avi")));
}

TEST_F(MovieFile, ATruncatedMovieOpensAndEnds) {
    const std::string movie = bytesOf(MovieRig::sample("bars.mpg"));
    ASSERT_TRUE(rig_.open(write("half.mpg", movie.substr(0, movie.size() / 3)))) << rig_.reason;
    rig_.control->Rate(4);
    rig_.control->Run();
    EXPECT_TRUE(MovieRig::until([&] { return rig_.changes.size() == 2; }, 8000));
}

/// MEDIA-29: Damaged movies open or fail and never hang
TEST_F(MovieFile, DamagedMoviesOpenOrFailAndNeverHang) {
    const std::string movie = bytesOf(MovieRig::sample("clip.mov"));
    std::uint32_t number = 7;
    for (int round = 0; round < 40; ++round) {
        std::string damaged = movie;
        for (int i = 0; i < 60; ++i) {
            number = number * 1664525U + 1013904223U;
            damaged[(number >> 4) % damaged.size()] = static_cast<char>(number >> 24);
        }
        rig_.reason.clear();
        const int opened = rig_.opened;
        rig_.control->FileName(write("damaged.mov", damaged));
        ASSERT_TRUE(MovieRig::until([&] { return rig_.opened > opened || !rig_.reason.empty(); })) << round;
    }
}

/// FAULT-24
TEST_F(MovieFile, NamesAreTakenAsTheyAre) {
    const std::string movie = bytesOf(MovieRig::sample("colours.avi"));
    for (const char* name :
         {"a b%20c.avi", "-start.avi", "#1 [x] {y}.avi", "\xE6\xAD\x8C.avi", "bad\xFF.avi", "a:b.avi"})
        EXPECT_TRUE(rig_.open(write(name, movie))) << name << ": " << rig_.reason;
}

/// A movie is what its bytes are: lists and descriptions that lead elsewhere must not open a connection.
/// OPEN-50, FAULT-18
TEST_F(MovieFile, NoFileLeadsToTheNetworkOrToAnotherFile) {
    const Listener server;
    const std::string address = "http://127.0.0.1:" + server.port() + "/x.avi";
    const std::string other = MovieRig::sample("colours.avi");
    expectFailure(write("list.avi", "#EXTM3U\n#EXTINF:1,x\n" + address + "\n"));
    expectFailure(write("list.m3u", address + "\n"));
    expectFailure(write("list.pls", "[playlist]\nFile1=" + address + "\n"));
    expectFailure(write("hls.mpg", "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\n" + address + "\n#EXT-X-ENDLIST\n"));
    expectFailure(write("edl.mov", "# mpv EDL v0\n" + address + "\n"));
    expectFailure(write("concat.avi", "ffconcat version 1.0\nfile '" + address + "'\n"));
    expectFailure(write("local.m3u", other + "\n"));
    MovieRig::until([] { return false; }, 300);
    EXPECT_FALSE(server.wasReached(0));
}

TEST_F(MovieFile, ANewFileDropsWhatTheOldOneHadToTell) {
    rig_.control->FileName(MovieRig::sample("NOTES.txt"));
    rig_.control->FileName(MovieRig::sample("silent.m1v"));
    rig_.control->FileName(MovieRig::sample("clip.mov"));
    ASSERT_TRUE(MovieRig::until([&] { return rig_.opened > 0; }));
    MovieRig::until([] { return false; }, 200);
    EXPECT_EQ(rig_.opened, 1);
    EXPECT_EQ(rig_.reason, "");
    EXPECT_EQ(rig_.control->FileName(), MovieRig::sample("clip.mov"));
    EXPECT_NEAR(rig_.control->Duration(), 5.0, 0.01);
}

/// OPEN-37
TEST_F(MovieFile, AThrowAwayNameReleasesTheMovie) {
    for (const char* name : {"1", ""}) {
        ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi")));
        rig_.control->Run();
        rig_.control->FileName(name);
        EXPECT_EQ(rig_.control->FileName(), "");
        EXPECT_EQ(rig_.control->State(), kMovieStopped);
        EXPECT_EQ(rig_.control->Duration(), 0);
        EXPECT_EQ(rig_.control->CurrentPosition(), 0);
        const int opened = rig_.opened;
        rig_.changes.clear();
        MovieRig::until([] { return false; }, 200);
        EXPECT_EQ(rig_.opened, opened);
        EXPECT_TRUE(rig_.changes.empty());
        EXPECT_EQ(rig_.painted({32, 24}).pixelColor(16, 12), QColor(Qt::black));
    }
}

TEST_F(MovieFile, ADestroyedControlTellsNothing) {
    int told = 0;
    for (int round = 0; round < 10; ++round) {
        rig_.makeControl();
        rig_.control->OpenComplete.tie([&] { ++told; });
        rig_.control->FileName(MovieRig::sample("colours.avi"));
        MovieRig::until([] { return false; }, round * 3);
        told = 0;
        rig_.control.reset();
        MovieRig::until([] { return false; }, 20);
        EXPECT_EQ(told, 0) << round;
    }
}

TEST_F(MovieFile, ThePlayerOfAControlThatWentIsUsedAgain) {
    std::string reason;
    std::unique_ptr<MoviePlayer> player = rig_.movies.players().take(reason);
    const MoviePlayer* const first = player.get();
    rig_.movies.players().giveBack(std::move(player));
    ASSERT_TRUE(rig_.open(MovieRig::sample("colours.avi")));
    rig_.control->Rate(3);
    rig_.makeControl();
    EXPECT_EQ(rig_.movies.players().take(reason).get(), first);
}

/// OPEN-39
TEST_F(MovieFile, AKeptPlayerStartsAtNormalSpeed) {
    rig_.control->Rate(3);
    ASSERT_TRUE(rig_.open(MovieRig::sample("silent.m1v")));
    rig_.makeControl();
    ASSERT_TRUE(rig_.open(MovieRig::sample("silent.m1v")));
    EXPECT_EQ(rig_.control->Rate(), 1.0);
    rig_.control->Run();
    EXPECT_NEAR(rig_.secondTakes(0.3, 1.3), 1, 0.2);
}

}  // namespace
}  // namespace corvane
