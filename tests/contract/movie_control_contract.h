// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "contract/stage.h"
#include "platform/ports.h"

namespace corvane {

class MovieStage : public Stage {
public:
    virtual Media& media() = 0;
    virtual Windows& windows() = 0;
    virtual std::string movie() = 0;    ///< a movie with a picture
    virtual double movieSeconds() = 0;  ///< at least 2
    virtual int movieWidth() = 0;       ///< pixels
    virtual int movieHeight() = 0;
    virtual std::string broken() = 0;  ///< there, but no movie
    virtual double toleranceSeconds() = 0;
    virtual bool playsAtRates() { return true; }  ///< false: this machine plays at normal speed alone
};

class MovieControlContract : public ::testing::TestWithParam<StageFactory<MovieStage>> {
protected:
    using Changes = std::vector<std::pair<int, int>>;

    std::unique_ptr<MovieStage> stage = GetParam()();
    Form form{"frmMovieWindow", FormStyle::Media};
    std::unique_ptr<MovieControl> movie = stage->media().makeMovieControl(form);
    int opened = 0;
    int progress = 0;
    Changes changes;
    std::vector<std::string> failed;
    bool inCall = false;
    bool raisedInCall = false;

    MovieControlContract() {
        movie->OpenComplete.tie([this] { note(opened); });
        movie->Progress.tie([this] { note(progress); });
        movie->StateChange.tie([this](int old, int now) {
            raisedInCall = raisedInCall || inCall;
            changes.emplace_back(old, now);
        });
        movie->Failed.tie([this](const std::string& reason) {
            raisedInCall = raisedInCall || inCall;
            failed.push_back(reason);
        });
    }
    ~MovieControlContract() override { EXPECT_FALSE(raisedInCall) << "an event came from inside a call"; }

    void note(int& count) {
        raisedInCall = raisedInCall || inCall;
        ++count;
    }
    template <class Call>
    void call(Call act) {
        inCall = true;
        act(*movie);
        inCall = false;
    }
    void open() {
        call([this](MovieControl& it) { it.FileName(stage->movie()); });
        ASSERT_TRUE(stage->waitFor([this] { return opened == 1; }, 5000));
    }
    void run() {
        call([](MovieControl& it) { it.Run(); });
    }
    bool isNear(double value, double truth) const { return std::abs(value - truth) <= stage->toleranceSeconds(); }
    /// It goes on by as much as the time that passes.
    void expectPace(double rate, int forMs) {
        Pace pace(*stage, [this] { return movie->CurrentPosition(); });
        for (int part = 1; part <= 4; ++part) {
            stage->pass(forMs / 4);
            const auto step = pace.step();
            const double wanted = rate * static_cast<double>(step.passed) / 1000;
            const double late = rate * static_cast<double>(step.mayBeLate) / 1000;
            // Beside the tolerance of a place: rounding of a clock that counts milliseconds.
            EXPECT_NEAR(step.gone, wanted, stage->toleranceSeconds() + 0.002 + late);
        }
    }
    bool waitForPosition(double atLeast, int withinMs = 4000) {
        return stage->waitFor([&] { return movie->CurrentPosition() >= atLeast; }, withinMs);
    }
};

TEST_P(MovieControlContract, IsEmptyAtFirst) {
    EXPECT_EQ(movie->FileName(), "");
    EXPECT_EQ(movie->Duration(), 0);
    EXPECT_EQ(movie->CurrentPosition(), 0);
    EXPECT_EQ(movie->Rate(), 1.0);
    EXPECT_EQ(movie->State(), kMovieStopped);
    EXPECT_FALSE(movie->FullScreenMode());
    EXPECT_EQ(movie->ImageSourceWidth(), 0);
    EXPECT_EQ(movie->ImageSourceHeight(), 0);
    call([](MovieControl& it) { it.Pause(); });
    call([](MovieControl& it) { it.Stop(); });
    stage->pass(200);
    EXPECT_TRUE(changes.empty());
}

/// MEDIA-22: Naming a file opens it and does not start it
/// OPEN-42
TEST_P(MovieControlContract, OpensAndDoesNotStart) {
    open();
    EXPECT_EQ(movie->FileName(), stage->movie());
    EXPECT_TRUE(isNear(movie->Duration(), stage->movieSeconds())) << movie->Duration();
    EXPECT_EQ(movie->ImageSourceWidth(), stage->movieWidth());
    EXPECT_EQ(movie->ImageSourceHeight(), stage->movieHeight());
    stage->pass(600);
    EXPECT_EQ(movie->CurrentPosition(), 0.0);
    EXPECT_EQ(movie->State(), kMovieStopped);
    EXPECT_EQ(progress, 0);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(opened, 1);
}

/// MEDIA-23: It runs at its rate and tells its progress
/// MOVIE-20
TEST_P(MovieControlContract, RunsAndTellsItsProgress) {
    open();
    run();
    ASSERT_TRUE(stage->waitFor([this] { return progress >= 3; }, 4000));
    EXPECT_EQ(changes, (Changes{{kMovieStopped, kMovieRunning}}));
    EXPECT_EQ(movie->State(), kMovieRunning);
    EXPECT_GT(movie->CurrentPosition(), 0.3);
    expectPace(1, 800);
}

TEST_P(MovieControlContract, PausesAndGoesOn) {
    open();
    run();
    ASSERT_TRUE(waitForPosition(0.4));
    call([](MovieControl& it) { it.Pause(); });
    ASSERT_TRUE(stage->waitFor([this] { return changes.size() == 2; }, 2000));
    EXPECT_EQ(changes[1], (std::pair{kMovieRunning, kMoviePaused}));
    EXPECT_EQ(movie->State(), kMoviePaused);
    double held = -1;  // a frame may be on its way
    ASSERT_TRUE(stage->waitFor(
        [&] {
            const double before = std::exchange(held, movie->CurrentPosition());
            stage->pass(100);
            return held == before && held == movie->CurrentPosition();
        },
        3000));
    const int sofar = progress;
    stage->pass(600);
    EXPECT_TRUE(isNear(movie->CurrentPosition(), held));
    EXPECT_EQ(progress, sofar);
    run();
    EXPECT_TRUE(waitForPosition(held + 0.3));
    EXPECT_EQ(changes.back(), (std::pair{kMoviePaused, kMovieRunning}));
}

/// MEDIA-24: At its end it stops with the duration as its position
/// MOVIE-18
TEST_P(MovieControlContract, StopsAtItsEndWithTheDurationAsPosition) {
    open();
    run();
    call([this](MovieControl& it) { it.CurrentPosition(it.Duration() - 0.6); });
    ASSERT_TRUE(stage->waitFor([this] { return !changes.empty() && changes.back().second == kMovieStopped; }, 5000));
    EXPECT_EQ(changes.back(), (std::pair{kMovieRunning, kMovieStopped}));
    EXPECT_EQ(movie->State(), kMovieStopped);
    EXPECT_EQ(movie->CurrentPosition(), movie->Duration());
    stage->pass(400);
    EXPECT_EQ(changes.size(), 2U);
}

/// MEDIA-26: A stop by command tells no stop, and an end that a stop overtook is dropped
/// MOVE-37
TEST_P(MovieControlContract, StoppingTellsNoStop) {
    open();
    run();
    ASSERT_TRUE(waitForPosition(0.3));
    call([](MovieControl& it) { it.Stop(); });
    stage->pass(500);
    EXPECT_EQ(movie->State(), kMovieStopped);
    EXPECT_EQ(changes, (Changes{{kMovieStopped, kMovieRunning}}));
}

/// MEDIA-26
TEST_P(MovieControlContract, AnEndThatAStopOvertookIsDropped) {
    open();
    run();
    call([](MovieControl& it) { it.CurrentPosition(it.Duration() - 0.3); });
    {
        const EventLoop::Hold hold(stage->loop());
        stage->pass(2000);
        call([](MovieControl& it) { it.Stop(); });
    }
    stage->pass(300);
    EXPECT_EQ(movie->State(), kMovieStopped);
    EXPECT_EQ(changes, (Changes{{kMovieStopped, kMovieRunning}}));
}

/// MEDIA-25: A position just set is read back and held inside the movie
TEST_P(MovieControlContract, ReadsAPositionJustSetAndKeepsItInside) {
    open();
    call([](MovieControl& it) { it.CurrentPosition(1.0); });
    EXPECT_DOUBLE_EQ(movie->CurrentPosition(), 1.0);
    call([](MovieControl& it) { it.CurrentPosition(-3); });
    EXPECT_DOUBLE_EQ(movie->CurrentPosition(), 0.0);
    call([](MovieControl& it) { it.CurrentPosition(1e6); });
    EXPECT_DOUBLE_EQ(movie->CurrentPosition(), movie->Duration());
}

/// MEDIA-36: Position goes at the pace of the time, no slower and no faster, also after a pause and a seek
/// MEDIA-27
TEST_P(MovieControlContract, ASeekWhileRunningGoesOnFromThere) {
    open();
    run();
    ASSERT_TRUE(waitForPosition(0.3));
    call([](MovieControl& it) { it.CurrentPosition(1.0); });
    EXPECT_TRUE(isNear(movie->CurrentPosition(), 1.0)) << movie->CurrentPosition();
    EXPECT_TRUE(waitForPosition(1.3));
    expectPace(1, 400);
    EXPECT_EQ(movie->State(), kMovieRunning);
}

/// MEDIA-23
TEST_P(MovieControlContract, RunsAtItsRate) {
    open();
    call([](MovieControl& it) { it.Rate(2.0); });
    EXPECT_EQ(movie->Rate(), 2.0);
    if (!stage->playsAtRates()) GTEST_SKIP() << "nothing plays at another speed here";
    run();
    ASSERT_TRUE(waitForPosition(0.2));
    expectPace(2, 400);
}

TEST_P(MovieControlContract, ReleasesTheMovie) {
    open();
    call([](MovieControl& it) { it.FileName("1"); });
    stage->pass(300);
    EXPECT_EQ(movie->FileName(), "");
    EXPECT_EQ(movie->Duration(), 0);
    EXPECT_EQ(movie->State(), kMovieStopped);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(failed.empty());
}

/// MOVE-43: Late events of a file that is closed do nothing
TEST_P(MovieControlContract, EventsOfAnEarlierFileAreDropped) {
    call([this](MovieControl& it) { it.FileName(stage->broken()); });
    call([this](MovieControl& it) { it.FileName(stage->movie()); });
    ASSERT_TRUE(stage->waitFor([this] { return opened == 1; }, 5000));
    run();
    {
        const EventLoop::Hold hold(stage->loop());
        stage->pass(600);
        call([](MovieControl& it) { it.FileName("1"); });
    }
    const int sofar = progress;
    stage->pass(600);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(progress, sofar);
    EXPECT_TRUE(failed.empty());
    EXPECT_TRUE(changes.empty());
}

TEST_P(MovieControlContract, AFileThatIsNoMovieFailsWithAReason) {
    call([this](MovieControl& it) { it.FileName(stage->broken()); });
    ASSERT_TRUE(stage->waitFor([this] { return !failed.empty(); }, 5000));
    stage->pass(300);
    EXPECT_EQ(failed.size(), 1U);
    EXPECT_NE(failed[0], "");
    EXPECT_EQ(opened, 0);
}

/// MEDIA-28: Its size follows movie, zoom and screen, and its picture keeps its shape
TEST_P(MovieControlContract, HasItsSizeWhenItIsOpen) {
    const Twips screenWidth = stage->windows().screenWidth();
    const Twips screenHeight = stage->windows().screenHeight();
    const Twips width = static_cast<Twips>(stage->movieWidth()) * kTwipsPerPixel;
    const Twips height = static_cast<Twips>(stage->movieHeight()) * kTwipsPerPixel;
    const std::vector<std::pair<Twips, Twips>> sizes = {{width, height + 30},
                                                        {2 * width, 2 * height + 30},
                                                        {screenWidth * 0.25F, screenHeight * 0.25F},
                                                        {screenWidth * 0.5F, screenHeight * 0.5F},
                                                        {screenWidth * 0.707F, screenHeight * 0.707F}};
    for (int size = 0; size < 5; ++size) {
        Twips seenWidth = 0;
        Twips seenHeight = 0;
        movie = stage->media().makeMovieControl(form);
        movie->OpenComplete.tie([&] {
            seenWidth = movie->Width;
            seenHeight = movie->Height;
        });
        movie->MovieWindowSize(size);
        movie->FileName(stage->movie());
        ASSERT_TRUE(stage->waitFor([&] { return seenHeight > 0; }, 5000));
        EXPECT_NEAR(seenWidth, sizes[static_cast<std::size_t>(size)].first, 15) << size;
        EXPECT_NEAR(seenHeight, sizes[static_cast<std::size_t>(size)].second, 15) << size;
    }
}

TEST_P(MovieControlContract, ReadsItsFullScreenModeBack) {
    movie->FullScreenMode(true);
    EXPECT_TRUE(movie->FullScreenMode());
    movie->FullScreenMode(false);
    EXPECT_FALSE(movie->FullScreenMode());
}

TEST_P(MovieControlContract, ADestroyedControlRaisesNothing) {
    open();
    run();
    ASSERT_TRUE(waitForPosition(0.3));
    const int sofar = progress;
    const auto changed = changes.size();
    movie.reset();
    stage->pass(600);
    EXPECT_EQ(progress, sofar);
    EXPECT_EQ(changes.size(), changed);
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MovieControlContract);

}  // namespace corvane
