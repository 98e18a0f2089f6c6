// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/movie_state_control.h"
#include "fake/fake_machine.h"
#include "program/command_line.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// A player of movies that notes what it is told.
struct NotedMovie : MovieStateControl {
    NotedMovie(Form& form, FakeMachine& machine) : MovieStateControl(form, machine.loop, machine.windows) {}
    Texts seen;
    bool opens = true;
    double position = 0, duration = 8;
    int width = 100, height = 50;
    int fills = 0;

    bool openMovie(const std::string& path) override { return seen.push_back("open " + path), opens; }
    void closeMovie() override { seen.push_back("close"); }
    void playMovie() override { seen.push_back("play"); }
    void pauseMovie() override { seen.push_back("pause"); }
    void seekMovie(double seconds) override { seen.push_back("seek " + std::to_string(static_cast<int>(seconds))); }
    void setMovieRate(double rate) override { seen.push_back("rate " + std::to_string(static_cast<int>(rate))); }
    double playedPosition() const override { return position; }
    double playedDuration() const override { return duration; }
    int pictureWidth() const override { return width; }
    int pictureHeight() const override { return height; }
    void tick(bool on) override { ticking = on; }
    void screenFillMayHaveChanged() override { ++fills; }
    bool ticking = false;

    using MovieStateControl::ended;
    using MovieStateControl::failed;
    using MovieStateControl::opened;
    using MovieStateControl::progress;
    using MovieStateControl::wantedRate;
    using MovieStateControl::wantsToFillScreen;
};

struct MovieStates : ::testing::Test {
    FakeMachine machine;
    Form form{"frmTried", FormStyle::Media};
    NotedMovie movie{form, machine};
    Texts told;

    MovieStates() {
        movie.OpenComplete.tie([this] { told.push_back("opened"); });
        movie.Progress.tie([this] { told.push_back("progress"); });
        movie.Failed.tie([this](const std::string& why) { told.push_back("failed " + why); });
        movie.StateChange.tie(
            [this](int before, int now) { told.push_back(std::to_string(before) + " to " + std::to_string(now)); });
    }
    static std::string change(int before, int now) { return std::to_string(before) + " to " + std::to_string(now); }
    void open() {
        movie.FileName("/a.avi");
        movie.opened();
        machine.settle();
        movie.seen.clear();
        told.clear();
    }
};

/// MEDIA-52: Of a movie each change is told once and later; what a call or another file has overtaken is not told;
///     progress does not pile up
TEST_F(MovieStates, OpeningIsToldLaterWithItsSize) {
    movie.MovieWindowSize(1);
    movie.FileName("/a.avi");
    EXPECT_EQ(movie.seen, (Texts{"close", "open /a.avi"}));
    EXPECT_EQ(movie.FileName(), "/a.avi");
    movie.opened();
    EXPECT_EQ(told, Texts{}) << "later";
    EXPECT_EQ(movie.Duration(), 0);
    EXPECT_EQ(movie.ImageSourceWidth(), 0);
    EXPECT_EQ(movie.ImageSourceHeight(), 0);
    machine.settle();
    EXPECT_EQ(told, Texts{"opened"});
    EXPECT_EQ(movie.Duration(), 8);
    EXPECT_EQ(movie.ImageSourceWidth(), 100);
    EXPECT_EQ(movie.ImageSourceHeight(), 50);
    EXPECT_EQ(movie.Width, 2 * 100 * kTwipsPerPixel);
    EXPECT_EQ(movie.State(), kMovieStopped);
}

/// MEDIA-52
TEST_F(MovieStates, NothingIsDoneUnlessAMovieIsOpen) {
    movie.Run();
    movie.Pause();
    movie.Stop();
    movie.CurrentPosition(3);
    movie.FileName("/a.avi");
    movie.Run();
    EXPECT_EQ(movie.seen, (Texts{"close", "open /a.avi"})) << "it is being opened";
    EXPECT_EQ(movie.State(), kMovieStopped);
    EXPECT_EQ(movie.CurrentPosition(), 0);
}

/// MEDIA-52
TEST_F(MovieStates, AThrowAwayNameAndNoneReleaseTheMovie) {
    for (const char* name : {"1", ""}) {
        open();
        movie.Run();
        movie.progress();
        movie.FileName(name);
        machine.settle();
        EXPECT_EQ(movie.seen, (Texts{"play", "close"})) << name;
        EXPECT_EQ(movie.FileName(), "");
        EXPECT_EQ(movie.State(), kMovieStopped);
        EXPECT_EQ(movie.Duration(), 0);
        EXPECT_FALSE(movie.ticking);
        EXPECT_EQ(told, Texts{}) << "what was on its way is late";
    }
}

/// MEDIA-52
TEST_F(MovieStates, WhatCannotBeOpenedFails) {
    movie.opens = false;
    movie.FileName("/a.avi");
    EXPECT_EQ(told, Texts{});
    machine.settle();
    EXPECT_EQ(told, Texts{"failed The movie player cannot be started"});
    EXPECT_EQ(movie.FileName(), "");
    movie.opens = true;
    open();
    movie.Run();
    movie.failed("torn");
    EXPECT_EQ(movie.FileName(), "");
    EXPECT_EQ(movie.State(), kMovieStopped);
    machine.settle();
    EXPECT_EQ(told, Texts{"failed torn"});
}

/// MEDIA-52
TEST_F(MovieStates, EachChangeIsToldOnce) {
    open();
    movie.Run();
    movie.Run();
    EXPECT_TRUE(movie.ticking);
    machine.settle();
    movie.Pause();
    movie.Pause();
    EXPECT_FALSE(movie.ticking);
    machine.settle();
    movie.Run();
    machine.settle();
    EXPECT_EQ(movie.seen, (Texts{"play", "pause", "play"}));
    EXPECT_EQ(told, (Texts{change(kMovieStopped, kMovieRunning), change(kMovieRunning, kMoviePaused),
                           change(kMoviePaused, kMovieRunning)}));
    told.clear();
    movie.Stop();
    machine.settle();
    EXPECT_EQ(told, Texts{}) << "by command";
    EXPECT_EQ(movie.seen.back(), "pause");
    EXPECT_FALSE(movie.ticking);
    EXPECT_EQ(movie.State(), kMovieStopped);
}

/// MEDIA-52
TEST_F(MovieStates, ItsEndIsToldUnlessACallHasOvertakenIt) {
    open();
    movie.Run();
    machine.settle();
    told.clear();
    movie.ended();
    EXPECT_EQ(movie.State(), kMovieStopped);
    machine.settle();
    EXPECT_EQ(told, Texts{change(kMovieRunning, kMovieStopped)});
    movie.Run();
    machine.settle();
    told.clear();
    movie.ended();
    movie.Stop();
    machine.settle();
    EXPECT_EQ(told, Texts{});
    movie.Run();
    machine.settle();
    told.clear();
    movie.ended();
    movie.Run();
    machine.settle();
    EXPECT_EQ(told, Texts{change(kMovieStopped, kMovieRunning)}) << "the end of before is not told any more";
    told.clear();
    movie.ended();
    movie.Stop();
    movie.Run();
    machine.settle();
    EXPECT_EQ(told, Texts{change(kMovieStopped, kMovieRunning)}) << "nor is it after both";
}

/// MEDIA-52
TEST_F(MovieStates, APositionCountsOnceItWasPlayedOrSet) {
    open();
    movie.position = 2.5;
    EXPECT_EQ(movie.CurrentPosition(), 0) << "not played yet";
    movie.CurrentPosition(4);
    EXPECT_EQ(movie.seen, Texts{"seek 4"});
    EXPECT_EQ(movie.CurrentPosition(), 2.5);
    open();
    movie.position = 0;
    movie.Run();
    EXPECT_EQ(movie.CurrentPosition(), 0);
    movie.ended();
    EXPECT_GT(movie.CurrentPosition(), 0) << "played, though it has no length";
    EXPECT_LT(movie.CurrentPosition(), 1e-9);
    movie.CurrentPosition(0);
    EXPECT_EQ(movie.CurrentPosition(), 0) << "back at the start";
    movie.ended();
    movie.Run();
    EXPECT_EQ(movie.CurrentPosition(), 0) << "played again";
}

/// MEDIA-52
TEST_F(MovieStates, ProgressIsToldWhileItRunsAndDoesNotPileUp) {
    open();
    movie.progress();
    machine.settle();
    EXPECT_EQ(told, Texts{}) << "it stands";
    movie.Run();
    machine.settle();
    told.clear();
    movie.progress();
    movie.progress();
    machine.settle();
    EXPECT_EQ(told, Texts{"progress"});
    movie.progress();
    machine.settle();
    EXPECT_EQ(told.size(), 2U);
    movie.progress();
    movie.Stop();
    machine.settle();
    EXPECT_EQ(told.size(), 2U) << "it has stopped meanwhile";
    movie.Run();
    movie.progress();
    movie.FileName("/b.avi");
    movie.opened();
    machine.settle();
    movie.Run();
    told.clear();
    machine.settle();
    movie.progress();
    machine.settle();
    EXPECT_EQ(told, (Texts{change(kMovieStopped, kMovieRunning), "progress"})) << "another file's first";
}

/// MEDIA-52
TEST_F(MovieStates, TheRateAndTheWholeScreenAreKeptFromFileToFile) {
    EXPECT_EQ(movie.Rate(), 1.0);
    movie.Rate(2);
    EXPECT_EQ(movie.seen, Texts{"rate 2"});
    EXPECT_EQ(movie.Rate(), 2.0);
    EXPECT_EQ(movie.wantedRate(), 2.0);
    EXPECT_FALSE(movie.FullScreenMode());
    const int before = movie.fills;
    movie.FullScreenMode(true);
    EXPECT_TRUE(movie.FullScreenMode());
    EXPECT_GT(movie.fills, before);
    EXPECT_FALSE(movie.wantsToFillScreen()) << "nothing plays";
    open();
    const int stopped = movie.fills;
    movie.Run();
    EXPECT_TRUE(movie.wantsToFillScreen());
    EXPECT_GT(movie.fills, stopped);
    movie.Pause();
    EXPECT_TRUE(movie.wantsToFillScreen());
    const int paused = movie.fills;
    movie.Stop();
    EXPECT_FALSE(movie.wantsToFillScreen());
    EXPECT_GT(movie.fills, paused);
    const int closing = movie.fills;
    movie.FileName("");
    EXPECT_GT(movie.fills, closing);
    open();
    movie.FullScreenMode(false);
    movie.Run();
    EXPECT_FALSE(movie.wantsToFillScreen());
}

TEST(Arguments, OptionsThenNamesOrFiles) {
    const auto full = [](const std::string& path) { return "/full/" + path; };
    const CommandLine names = readArguments({"--version", "a.mid", "b c.mid", "-h"}, full);
    EXPECT_TRUE(names.version);
    EXPECT_TRUE(names.help);
    EXPECT_EQ(names.names, "a.mid b c.mid");
    EXPECT_EQ(names.files, Texts{});
    const CommandLine files = readArguments({"--open", "a b.mid", "--help", "--open"}, full);
    EXPECT_FALSE(files.help);
    EXPECT_EQ(files.files, (Texts{"/full/a b.mid", "/full/--help", "/full/--open"}));
    EXPECT_EQ(files.names, "");
    EXPECT_FALSE(readArguments({}, full).help);
    EXPECT_TRUE(readArguments({"--help"}, full).help);
    for (const char* name : {"--open", "--help", "--version", "CORVANE_FOLDER", "CORVANE_SCALE"})
        EXPECT_NE(usageText().find(name), std::string::npos) << name;
}

}  // namespace
}  // namespace corvane
