// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdio>
#include <utility>

#include "contract/windows/movie_rig.h"

namespace corvane {
namespace {

using test::bytesOf;
using test::sample;
using test::WindowsMovieRig;
using Changes = std::vector<std::pair<int, int>>;

/// A decoder of the system may hang for good in a worker, as Wine's now and then does over what it cannot decode. Such
/// a thread does not stand the ordered end of the process: once all is told, the process ends at once.
class EndsAtOnce : public testing::EmptyTestEventListener {
    void OnTestProgramEnd(const testing::UnitTest& all) override {
        std::fflush(nullptr);
        TerminateProcess(GetCurrentProcess(), all.Passed() ? 0 : 1);
    }
};

const bool endsAtOnce = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new EndsAtOnce);
    return true;
}();

class OpenedMovie : public testing::Test {
protected:
    void expectFailure(const std::string& path) {
        rig_.reason.clear();
        rig_.control->FileName(path);
        EXPECT_EQ(rig_.reason, "") << "from inside the call";
        EXPECT_TRUE(rig_.until([&] { return !rig_.reason.empty(); }, 15'000)) << path;
        EXPECT_EQ(rig_.control->FileName(), "") << path;
        rig_.control->Run();
        EXPECT_EQ(rig_.control->State(), kMovieStopped) << path;
        rig_.reason.clear();
    }

    test::ScratchFolder folder_;
    WindowsMovieRig rig_;
};

TEST_F(OpenedMovie, WhatCannotBeDecodedFailsWithAReason) {
    ASSERT_TRUE(endsAtOnce);
    expectFailure(sample("NOTES.txt"));
    expectFailure(folder_.write("empty.avi", ""));
    expectFailure(folder_.write("header.avi", bytesOf(sample("colours.avi")).substr(0, 200)));
    expectFailure(folder_.write("noise.avi", std::string(20000, '\x05')));
    expectFailure(folder_.in("gone.mov"));
    expectFailure(folder_.in(""));
    EXPECT_TRUE(rig_.open(sample("colours.avi"))) << rig_.reason;
}

TEST_F(OpenedMovie, WhatDoesNotOpenInTimeFailsAndComesNoMore) {
    const std::string movie = sample("colours.avi");
    const UINT usual = std::exchange(WindowsMovieControl::longestOpening, USER_TIMER_MINIMUM);
    rig_.control->FileName(movie);
    EXPECT_TRUE(rig_.until([&] { return !rig_.reason.empty() || rig_.opened > 0; }, 15'000));
    EXPECT_EQ(rig_.reason, "It did not open in time.");
    rig_.until([&] { return rig_.opened > 0; }, 1'000);
    EXPECT_EQ(rig_.opened, 0);
    EXPECT_EQ(rig_.control->FileName(), "");
    WindowsMovieControl::longestOpening = usual;
    rig_.reason.clear();
    EXPECT_TRUE(rig_.open(movie)) << rig_.reason;
    rig_.until([&] { return !rig_.reason.empty(); }, 500);
    EXPECT_EQ(rig_.reason, "") << "nor is an open movie given up";
}

/// What does not answer keeps its thread and its decoders: so many and no more.
/// WIN-40
TEST_F(OpenedMovie, NoFurtherOneIsBegunWhereTooManyHang) {
    const int before = WindowsMovieControl::hanging();  // of other tests, where a decoder of the system hangs
    const std::string movie = sample("colours.avi");
    const UINT usual = std::exchange(WindowsMovieControl::longestOpening, USER_TIMER_MINIMUM);
    const int most = std::exchange(WindowsMovieControl::mostHanging, before + 1);
    rig_.control->FileName(movie);
    EXPECT_EQ(WindowsMovieControl::hanging(), before) << "it is wanted";
    EXPECT_TRUE(rig_.until([&] { return !rig_.reason.empty(); }, 15'000));
    EXPECT_EQ(WindowsMovieControl::hanging(), before + 1);
    rig_.reason.clear();
    rig_.control->FileName(movie);
    EXPECT_EQ(rig_.reason, "") << "from inside the call";
    EXPECT_TRUE(rig_.until([&] { return !rig_.reason.empty(); }, 500)) << "at once";
    EXPECT_EQ(rig_.reason, "Too many movies before it do not answer.");
    EXPECT_EQ(rig_.control->FileName(), "");
    WindowsMovieControl::longestOpening = usual;
    EXPECT_TRUE(rig_.until([&] { return WindowsMovieControl::hanging() <= before; }, 15'000))
        << "it answered after all";
    rig_.reason.clear();
    EXPECT_TRUE(rig_.open(movie)) << rig_.reason;
    WindowsMovieControl::mostHanging = most;
}

/// A movie is what its bytes are: lists and descriptions that lead elsewhere are not followed.
/// WIN-18
TEST_F(OpenedMovie, ListsAreNotFollowed) {
    const std::string address = "http://127.0.0.1:9/x.avi\r\n";
    expectFailure(folder_.write("list.avi", "#EXTM3U\r\n" + address));
    expectFailure(folder_.write("list.asx", "<asx><entry><ref href=\"" + address + "\"/></entry></asx>"));
    expectFailure(folder_.write("list.mov", sample("colours.avi")));
}

TEST_F(OpenedMovie, AnyNameOpens) {
    const std::string movie = bytesOf(sample("colours.avi"));
    EXPECT_TRUE(rig_.open(folder_.write("a b%20c.avi", movie))) << rig_.reason;
    EXPECT_TRUE(rig_.open(folder_.write("\xE6\xAD\x8C \xD0\xB6.avi", movie))) << rig_.reason;
}

/// WIN-26
TEST_F(OpenedMovie, AFileWithoutAPicturePlaysAllTheSame) {
    ASSERT_TRUE(rig_.open(sample("waltz.mp3"))) << rig_.reason;
    EXPECT_EQ(rig_.control->ImageSourceWidth(), 0);
    EXPECT_EQ(rig_.control->Width, 320 * kTwipsPerPixel);
    EXPECT_EQ(rig_.control->Height, 240 * kTwipsPerPixel + 30);
    EXPECT_NEAR(rig_.control->Duration(), 3.6, 0.1);
    rig_.control->Run();
    EXPECT_TRUE(rig_.until([&] { return rig_.control->CurrentPosition() > 0.5; }));
}

/// The sample with its sound's stream hidden. Two graphs that are made and let go at once share a device of Wine's
/// DirectSound, which is then freed twice and takes the heap with it: only one of those opened together may have sound.
std::string silentMovie() {
    std::string bytes = bytesOf(sample("colours.avi"));
    return bytes.replace(bytes.find("auds"), 4, "none");
}

/// WIN-26: Of many movies opened one after the other only the last is told of; one without a picture plays
TEST_F(OpenedMovie, OnlyTheLastOfManyFilesIsToldOf) {
    const std::string silent = folder_.write("silent.avi", silentMovie());
    rig_.control->FileName(sample("NOTES.txt"));
    rig_.control->FileName(silent);
    rig_.control->FileName(sample("clip.mov"));
    ASSERT_TRUE(rig_.until([&] { return rig_.opened > 0; }, 15'000));
    rig_.until([] { return false; }, 500);
    EXPECT_EQ(rig_.opened, 1);
    EXPECT_EQ(rig_.reason, "");
    EXPECT_EQ(rig_.control->FileName(), sample("clip.mov"));
    EXPECT_TRUE(rig_.open(silent)) << rig_.reason;  // it would have been told of
}

/// WIN-24
TEST_F(OpenedMovie, ThePictureIsFittedIntoWhatItsFormShows) {
    ASSERT_TRUE(rig_.open(sample("colours.avi"))) << rig_.reason;
    rig_.control->setHost(test::videoHost(), {100, 0, 260, 240});  // 160 by 240: the picture takes 160 by 120
    rig_.control->Run();
    rig_.control->Pause();
    rig_.control->CurrentPosition(2.5);
    constexpr std::uint32_t kThird = 0x3A55B8;
    EXPECT_TRUE(rig_.until([&] { return rig_.shows(kThird, 104, 64); })) << std::hex << rig_.pixel(104, 64);
    EXPECT_FALSE(rig_.shows(kThird, 104, 50)) << "above it";
    EXPECT_FALSE(rig_.shows(kThird, 95, 64)) << "beside it";
    rig_.control->setHost(nullptr, {});
    EXPECT_TRUE(rig_.until([&] { return !rig_.shows(kThird, 104, 64); })) << "the host is gone";
}

/// WIN-25: The mouse on a movie is its window's; it fills the screen while it runs or is paused
TEST_F(OpenedMovie, TheMouseOnTheVideoIsItsHosts) {
    ASSERT_TRUE(rig_.open(sample("colours.avi"))) << rig_.reason;
    rig_.control->Run();
    ASSERT_TRUE(rig_.until([&] { return rig_.shows(0xB83A3A); }));
    const HWND host = test::videoHost();
    EXPECT_NE(ChildWindowFromPointEx(host, {160, 200}, CWP_SKIPINVISIBLE), host) << "the video lies there";
    EXPECT_EQ(ChildWindowFromPointEx(host, {160, 200}, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED), host);
}

/// WIN-25
TEST_F(OpenedMovie, FillsTheScreenWhileRunningOrPaused) {
    int told = 0;
    rig_.control->fillsScreenChanged.tie([&] { ++told; });
    rig_.control->FullScreenMode(true);
    ASSERT_TRUE(rig_.open(sample("colours.avi"))) << rig_.reason;
    EXPECT_FALSE(rig_.control->fillsScreen());
    told = 0;
    rig_.control->Run();
    EXPECT_TRUE(rig_.control->fillsScreen());
    rig_.control->Pause();
    EXPECT_TRUE(rig_.control->fillsScreen());
    rig_.control->Stop();
    EXPECT_FALSE(rig_.control->fillsScreen());
    EXPECT_EQ(told, 3);
}

TEST_F(OpenedMovie, AnEndedMovieEndsAgainUnlessItIsMoved) {
    ASSERT_TRUE(rig_.open(sample("colours.avi"))) << rig_.reason;
    rig_.control->CurrentPosition(4.5);
    rig_.control->Run();
    ASSERT_TRUE(rig_.until([&] { return rig_.changes.size() == 2; }));
    rig_.control->Run();
    ASSERT_TRUE(rig_.until([&] { return rig_.changes.size() == 4; }));
    EXPECT_EQ(rig_.changes.back(), std::make_pair(kMovieRunning, kMovieStopped));
    rig_.control->CurrentPosition(1);
    rig_.control->Run();
    EXPECT_TRUE(rig_.until([&] { return rig_.control->CurrentPosition() > 1.2; }));
    EXPECT_EQ(rig_.control->State(), kMovieRunning);
}

}  // namespace
}  // namespace corvane
