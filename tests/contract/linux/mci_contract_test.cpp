// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/mci_control_contract.h"

#include <string>

#include "contract/linux/mci_rig.h"
#include "linux/media/desktop_station.h"
#include "unit/linux/cd_image.h"
#include "unit/linux/stopwatch.h"

namespace corvane {
namespace {

/// Media that makes multimedia controls only, and plays in silence by the clock.
class SoundsOnly : public Media {
public:
    explicit SoundsOnly(EventLoop& loop) : station_(loop, true) {}
    ~SoundsOnly() override { station_.post.stop(); }
    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<OutputMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& /*form*/) override { return nullptr; }

private:
    DesktopStation station_;
};

class DesktopMciStage : public MciStage {
public:
    DesktopMciStage(std::string sound, int soundMs) : sound_(std::move(sound)), soundMs_(soundMs) {}

    EventLoop& loop() override { return loop_; }
    bool waitFor(const std::function<bool()>& condition, int atMostMs) override {
        return test::waitUntil(condition, atMostMs);
    }
    std::int64_t heldUp() override { return clock_.heldUp().count(); }
    Media& media() override { return media_; }
    std::string sound() override { return sound_; }
    int soundMs() override { return soundMs_; }
    std::string sequence() override { return test::soundSample("chime.mid"); }
    int sequenceMs() override { return 4000; }
    std::string broken() override { return test::soundSample("NOTES.txt"); }
    std::string disc() override {
        if (disc_.empty()) disc_ = test::writeImage(folder_.path(), "disc", {{440, 150}, {660, 225}});
        return disc_;
    }
    int trackSeconds(int track) override { return track == 1 ? 2 : 3; }
    int toleranceMs() override { return 50; }

private:
    QCoreApplication& application_ = test::offscreenApplication();
    test::RigLoop loop_;
    SoundsOnly media_{loop_};
    test::ScratchFolder folder_;
    std::string disc_;
    std::string sound_;
    int soundMs_;
    test::Stopwatch clock_;
};

std::unique_ptr<MciStage> wave() { return std::make_unique<DesktopMciStage>(test::soundSample("scale.wav"), 4000); }
std::unique_ptr<MciStage> bareMp3() { return std::make_unique<DesktopMciStage>(test::soundData("vbr_bare.mp3"), 3030); }
std::unique_ptr<MciStage> sequence() { return std::make_unique<DesktopMciStage>(test::soundSample("chime.mid"), 4000); }

INSTANTIATE_TEST_SUITE_P(Desktop, MciControlContract, testing::Values(wave, bareMp3, sequence));
INSTANTIATE_TEST_SUITE_P(Desktop, DiscContract, testing::Values(wave));

}  // namespace
}  // namespace corvane
