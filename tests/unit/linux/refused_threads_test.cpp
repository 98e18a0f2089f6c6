// SPDX-License-Identifier: GPL-3.0-or-later
// A system that has no thread left for us (tests/stall/): every refusal is an answer, and when it is over all goes on.
#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "contract/linux/mci_rig.h"
#include "contract/linux/movie_rig.h"
#include "drives/drive_calls.h"
#include "linux/media/desktop_station.h"
#include "linux/media/media.h"
#include "linux/media/movies/desktop_movies.h"
#include "media/movies/movie_handle.h"
#include "media/sound/pulse_link.h"
#include "unit/linux/offscreen.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

class RefusedThreads : public ::testing::Test {
protected:
    RefusedThreads() {
        test::offscreenApplication();
        setenv("CORVANE_REFUSE_THREADS", folder_.in("refused").c_str(), 1);
    }
    ~RefusedThreads() override {
        unsetenv("CORVANE_REFUSE_THREADS");
        post_.stop();
    }
    void refuse() {
        Worker::endAll(std::chrono::seconds(10));  // none is kept that could take a question
        folder_.write("refused", "threads");
    }
    void allow() { std::filesystem::remove(folder_.in("refused")); }

    test::TemporaryFolder folder_;
    test::RigLoop loop_;
    QtTimers timers_;
    QtPost post_;
    MovieMeans means_ = movieMeans(timers_, post_);
};

TEST_F(RefusedThreads, ATaskIsNotBegunAndThatIsTold) {
    refuse();
    auto held = std::make_shared<int>();
    bool told = false;
    Worker worker;
    EXPECT_FALSE(worker.start([held](const Worker::GiveUp&) {}, [&told] { told = true; }));
    EXPECT_FALSE(Worker::run([held](const Worker::GiveUp&) {}));
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_FALSE(told);
    EXPECT_TRUE(worker.wait(std::chrono::milliseconds(0)));
    EXPECT_TRUE(Worker::endAll(std::chrono::milliseconds(0)));
    allow();
    EXPECT_TRUE(worker.start([held](const Worker::GiveUp&) {}));
    EXPECT_TRUE(worker.wait(std::chrono::seconds(10)));
}

/// FAULT-63
TEST_F(RefusedThreads, ADriveIsNotAskedAndNotHeldToBeSilent) {
    refuse();
    EXPECT_EQ(DriveCalls::all().ask<int>("/tmp/x", DriveCalls::kPatience, [] { return 1; }), std::nullopt);
    allow();
    EXPECT_EQ(DriveCalls::all().ask<int>("/tmp/x", DriveCalls::kPatience, [] { return 1; }), 1);
}

TEST_F(RefusedThreads, AQuestionThatThrowsHasNoAnswerAndTheDriveIsAskedAgain) {
    const test::Stopwatch clock;
    EXPECT_EQ(DriveCalls::all().ask<int>("/tmp/x", DriveCalls::kPatience, []() -> int { throw std::bad_alloc(); }),
              std::nullopt);
    EXPECT_LT(clock.own(), DriveCalls::kPatience / 2);
    EXPECT_EQ(DriveCalls::all().ask<int>("/tmp/x", DriveCalls::kPatience, [] { return 1; }), 1);
}

/// FAULT-63
TEST_F(RefusedThreads, ASoundFailsWithThatReasonAndPlaysAfterwards) {
    refuse();
    DesktopStation station(loop_, true);
    OutputMciControl control(station);
    std::optional<std::string> reason;
    int done = 0;
    control.Failed.tie([&](const std::string& why) { reason = why; });
    control.Done.tie([&](int how) { done = how; });
    control.FileName(test::soundSample("scale.wav"));
    control.Command("Open");
    EXPECT_FALSE(reason) << "never from inside a call";
    EXPECT_TRUE(test::waitUntil([&] { return reason.has_value(); }, 5'000));
    EXPECT_EQ(reason, Worker::kRefused);
    allow();
    control.Command("Open");
    control.To(300);
    control.Command("Play");
    EXPECT_TRUE(test::waitUntil([&] { return done == kNotifySuccessful; }, 10'000));

    // Its reading thread, once it runs, is not needed anew.
    refuse();
    station.output.warmUp();
    allow();
}

/// FAULT-63
TEST_F(RefusedThreads, AnOutputWithoutAThreadFailsWhatIsPlayed) {
    refuse();
    DesktopStation station(loop_, true);
    allow();
    OutputMciControl control(station);
    std::optional<std::string> reason;
    control.Failed.tie([&](const std::string& why) { reason = why; });
    control.FileName(test::soundSample("scale.wav"));
    control.Command("Open");
    EXPECT_GT(control.Length(), 0);
    refuse();
    control.Command("Play");
    EXPECT_TRUE(test::waitUntil([&] { return reason.has_value(); }, 5'000));
    EXPECT_EQ(reason, Worker::kRefused);
    EXPECT_EQ(control.Length(), 0) << "nothing is open";
}

/// FAULT-63
TEST_F(RefusedThreads, TheSoundServerIsNotThereUntilThereIsAThread) {
    refuse();
    PulseLink link("test");
    EXPECT_FALSE(link.ready(100));
    EXPECT_FALSE(link.ready(100));
    allow();
    link.ready(100);  // with a server or without one: it is asked
    refuse();
    const std::unique_ptr<SoundDevices> devices = makeSoundDevices(loop_);
    EXPECT_EQ(devices->waveOutGetVolume(), std::nullopt);
    devices->waveOutSetVolume(0);
    allow();
}

/// FAULT-63
TEST_F(RefusedThreads, AMoviePlayerIsNotMadeAndLaterIs) {
    refuse();
    std::string reason;
    EXPECT_EQ(MoviePlayer::make(means_, MovieDrawing::Painted, reason), nullptr);
    EXPECT_EQ(reason, Worker::kRefused);
    allow();
    EXPECT_NE(MoviePlayer::make(means_, MovieDrawing::Painted, reason), nullptr);
}

/// Whether there are letters in the upper half of a picture that has nothing white of its own.
bool hasLetters(const QImage& seen) {
    int white = 0;
    for (int y = 0; y < seen.height() / 2; ++y) {
        for (int x = 0; x < seen.width(); ++x) white += seen.pixel(x, y) == qRgb(255, 255, 255) ? 1 : 0;
    }
    return white > 100;
}

/// MEDIA-89: A frame that cannot be saved is said to be, in the movie's window
TEST_F(RefusedThreads, AFrameIsNotSavedAndThatIsSaid) {
    test::MovieRig rig;
    const QSize size{960, 640};
    rig.surface->setTarget(size);
    ASSERT_TRUE(rig.open(std::string(CORVANE_SOURCE_DIR) + "/tests/data/movies/turned90.mp4")) << rig.reason;
    ASSERT_TRUE(test::waitUntil([&] { return rig.painted(size).pixel(400, 300) != qRgb(0, 0, 0); }, 5'000));
    EXPECT_FALSE(hasLetters(rig.painted(size)));
    refuse();
    rig.control->SaveFrame("Film");
    EXPECT_TRUE(test::waitUntil([&] { return hasLetters(rig.painted(size)); }, 5'000));
    allow();
}

/// 0: no player came of it, in time.
int makePlayerWhereTheLibraryHangs(const std::string& refused) {
    std::ofstream(refused) << "threads";
    std::filesystem::permissions(refused, std::filesystem::perms::owner_exec, std::filesystem::perm_options::add);
    const test::Stopwatch clock;
    std::string reason;
    QtTimers timers;
    const QtPost post;
    if (MoviePlayer::make(movieMeans(timers, post), MovieDrawing::Painted, reason)) return 1;
    if (reason == Worker::kRefused) return 2;
    return clock.own() < kMovieHandlePatience + std::chrono::seconds(3) ? 0 : 3;
}

/// FAULT-63
// In a process of its own, because the library never comes back.
TEST_F(RefusedThreads, AMovieLibraryThatHangsForWantOfAThreadIsLeft) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(_exit(makePlayerWhereTheLibraryHangs(folder_.in("refused"))), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace corvane
