// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/movie_control_contract.h"
#include "contract/rig_windows.h"
#include "contract/windows/movie_rig.h"
#include "windows/media/movies/windows_movie_control.h"

namespace corvane {
namespace {

/// Media that makes movie controls only, each shown in the host.
class MoviesOnly : public Media {
public:
    MoviesOnly(WindowsLoop& loop, Windows& windows) : loop_(loop), post_(loop.uiPost()), windows_(windows) {}
    ~MoviesOnly() override { post_.stop(); }
    std::unique_ptr<MciControl> makeMciControl() override { return nullptr; }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override {
        auto control = std::make_unique<WindowsMovieControl>(form, loop_, post_, windows_);
        control->setHost(test::videoHost(), test::kVideoArea);
        return control;
    }

private:
    WindowsLoop& loop_;
    UiPost post_;
    Windows& windows_;
};

class WindowsMovieStage : public test::LoopStage<MovieStage> {
public:
    WindowsMovieStage(const char* name, double tolerance) : movie_(test::sample(name)), tolerance_(tolerance) {}

    Media& media() override { return media_; }
    Windows& windows() override { return windows_; }
    std::string movie() override { return movie_; }
    double movieSeconds() override { return 5.0; }
    int movieWidth() override { return 320; }
    int movieHeight() override { return 240; }
    std::string broken() override { return test::sample("NOTES.txt"); }
    double toleranceSeconds() override { return tolerance_; }
    bool playsAtRates() override { return !test::onWine(); }

private:
    test::RigWindows windows_;
    MoviesOnly media_{loop_, windows_};
    std::string movie_;
    double tolerance_;
};

std::unique_ptr<MovieStage> avi() { return std::make_unique<WindowsMovieStage>("colours.avi", 0.1); }
// A program stream has no length of its own: it is estimated by its bytes.
std::unique_ptr<MovieStage> mpg() { return std::make_unique<WindowsMovieStage>("bars.mpg", 0.3); }
std::unique_ptr<MovieStage> mov() { return std::make_unique<WindowsMovieStage>("clip.mov", 0.1); }

INSTANTIATE_TEST_SUITE_P(Windows, MovieControlContract, testing::Values(avi, mpg, mov));

}  // namespace
}  // namespace corvane
