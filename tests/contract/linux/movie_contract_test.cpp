// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/linux/movie_rig.h"
#include "contract/movie_control_contract.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

/// Media that makes movie controls only.
class MoviesOnly : public Media {
public:
    MoviesOnly(EventLoop& loop, Windows& windows) : movies_(loop, windows) {}
    std::unique_ptr<MciControl> makeMciControl() override { return nullptr; }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override { return movies_.makeControl(form); }

private:
    DesktopMovies movies_;
};

class DesktopMovieStage : public MovieStage {
public:
    explicit DesktopMovieStage(const char* name) : movie_(test::MovieRig::sample(name)) {}

    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        return test::MovieRig::until(condition, atMostMs);
    }
    std::int64_t heldUp() override { return clock_.heldUp().count(); }
    Media& media() override { return media_; }
    Windows& windows() override { return windows_; }
    std::string movie() override { return movie_; }
    double movieSeconds() override { return 5.0; }
    int movieWidth() override { return 320; }
    int movieHeight() override { return 240; }
    std::string broken() override { return test::MovieRig::sample("NOTES.txt"); }
    double toleranceSeconds() override { return 0.1; }

private:
    QApplication& application_ = test::offscreenApplication();
    test::RigLoop loop_;
    test::RigWindows windows_;
    MoviesOnly media_{loop_, windows_};
    std::string movie_;
    test::Stopwatch clock_;
};

template <int N>
std::unique_ptr<MovieStage> stageOf() {
    static constexpr std::array<const char*, 4> kNames{"colours.avi", "bars.mpg", "clip.mov", "silent.m1v"};
    return std::make_unique<DesktopMovieStage>(kNames[N]);
}

INSTANTIATE_TEST_SUITE_P(Desktop, MovieControlContract,
                         testing::Values(stageOf<0>, stageOf<1>, stageOf<2>, stageOf<3>));

}  // namespace
}  // namespace corvane
