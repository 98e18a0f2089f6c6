// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/sound_devices_contract.h"
#include "contract/windows/media_rig.h"
#include "windows/media/windows_sound_devices.h"

namespace corvane {
namespace {

class WindowsSoundStage : public test::LoopStage<SoundStage> {
public:
    SoundDevices& sound() override { return sound_; }
    bool reached() override { return waveOutGetNumDevs() > 0; }

private:
    WindowsSoundDevices sound_;
};

std::unique_ptr<SoundStage> makeStage() { return std::make_unique<WindowsSoundStage>(); }

INSTANTIATE_TEST_SUITE_P(Windows, SoundDevicesContract, testing::Values(&makeStage));

}  // namespace
}  // namespace corvane
