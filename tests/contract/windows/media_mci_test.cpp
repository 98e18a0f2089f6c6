// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/mci_control_contract.h"
#include "contract/windows/media_rig.h"
#include "winapi/sound/windows_mci_control.h"

namespace corvane {
namespace {

using test::sample;

/// Media that makes multimedia controls only.
class SoundsOnly : public Media {
public:
    explicit SoundsOnly(WindowsLoop& loop) : station_(loop, loop.uiPost()) {}
    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<WindowsMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& /*form*/) override { return nullptr; }

private:
    MciStation station_;
};

class WindowsMciStage : public test::LoopStage<MciStage> {
public:
    WindowsMciStage(const char* sound, int soundMs) : sound_(sample(sound)), soundMs_(soundMs) {}

    Media& media() override { return media_; }
    std::string sound() override { return sound_; }
    int soundMs() override { return soundMs_; }
    std::string sequence() override { return sample("chime.mid"); }
    int sequenceMs() override { return 4000; }
    bool playsSequences() override { return midiOutGetNumDevs() > 0; }
    std::string broken() override { return sample("NOTES.txt"); }
    std::string disc() override { return {}; }
    int trackSeconds(int /*track*/) override { return 0; }
    int toleranceMs() override { return 60; }

private:
    SoundsOnly media_{loop_};
    std::string sound_;
    int soundMs_;
};

std::unique_ptr<MciStage> wave() { return std::make_unique<WindowsMciStage>("scale.wav", 4000); }
std::unique_ptr<MciStage> mp3() { return std::make_unique<WindowsMciStage>("waltz.mp3", 3600); }

INSTANTIATE_TEST_SUITE_P(Windows, MciControlContract, testing::Values(wave, mp3));

}  // namespace
}  // namespace corvane
