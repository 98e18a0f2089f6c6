// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "contract/stage.h"
#include "platform/ports.h"

namespace corvane {

/// A party's output volume; reached is false where there is nothing to be heard on.
class SoundStage : public Stage {
public:
    virtual SoundDevices& sound() = 0;
    virtual bool reached() = 0;
};

class SoundDevicesContract : public ::testing::TestWithParam<StageFactory<SoundStage>> {
protected:
    std::unique_ptr<SoundStage> stage = GetParam()();
    SoundDevices& sound = stage->sound();
};

TEST_P(SoundDevicesContract, ReadsBackEachChannel) {
    if (!stage->reached()) {
        EXPECT_EQ(sound.waveOutGetVolume(), std::nullopt);
        sound.waveOutSetVolume(0x80004000);
        EXPECT_EQ(sound.waveOutGetVolume(), std::nullopt);
        return;
    }
    ASSERT_TRUE(stage->waitFor([this] { return sound.waveOutGetVolume().has_value(); }, 3000));
    const std::uint32_t before = *sound.waveOutGetVolume();
    for (const std::uint32_t volume : {0x80004000U, 0x00000000U, 0xFFFFFFFFU, 0x11111111U}) {
        sound.waveOutSetVolume(volume);
        EXPECT_TRUE(stage->waitFor([&] { return sound.waveOutGetVolume() == volume; }, 3000))
            << std::hex << sound.waveOutGetVolume().value_or(0);
    }
    sound.waveOutSetVolume(before);
}

TEST_P(SoundDevicesContract, DevicesThatAreNotThereSayNothing) {
    const int count = sound.auxGetNumDevs();
    EXPECT_GE(count, 0);
    for (const int device : {-1, count, count + 7}) {
        EXPECT_EQ(sound.auxGetDevCaps(device), std::nullopt);
        EXPECT_EQ(sound.auxGetVolume(device), std::nullopt);
        sound.auxSetVolume(device, 0);
    }
    EXPECT_EQ(sound.auxGetNumDevs(), count);
}

TEST_P(SoundDevicesContract, EachDeviceHasAName) {
    for (int device = 0; device < sound.auxGetNumDevs(); ++device) {
        const auto caps = sound.auxGetDevCaps(device);
        ASSERT_TRUE(caps.has_value());
        EXPECT_NE(caps->name, "");
    }
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SoundDevicesContract);

}  // namespace corvane
