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
    /// Another program sets the volume of the output in use; false: none can here.
    virtual bool setByAnother(std::uint32_t /*volume*/) { return false; }
    /// That output, made when it is not there, is in use from now on; false: there is but one here.
    virtual bool useOutput(const std::string& /*name*/) { return false; }
};

class SoundDevicesContract : public ::testing::TestWithParam<StageFactory<SoundStage>> {
protected:
    std::unique_ptr<SoundStage> stage = GetParam()();
    SoundDevices& sound = stage->sound();
};

/// MEDIA-30: What was set reads back, each channel
/// WIN-29: Volume is read back as it was set, of the output in use or of another by its name; what other programs do to
///     it is told
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

/// MEDIA-70: What another program sets, and another output that comes into use, is told; a volume is set by its
///     output's name, and no other one's
/// WIN-29
TEST_P(SoundDevicesContract, AVolumeThatAnotherProgramSetsIsTold) {
    if (!stage->reached()) return;
    ASSERT_TRUE(stage->waitFor([this] { return sound.waveOutGetVolume().has_value(); }, 3000));
    sound.waveOutSetVolume(0x11111111);
    int told = 0;
    sound.WaveOutChanged.tie([&told] { ++told; });
    if (!stage->setByAnother(0x33333333)) GTEST_SKIP() << "no other program sets it here";
    EXPECT_EQ(told, 0) << "never from inside a call";
    EXPECT_TRUE(stage->waitFor([&] { return told > 0 && sound.waveOutGetVolume() == 0x33333333U; }, 3000));
}

/// MEDIA-70, WIN-29
TEST_P(SoundDevicesContract, AnOutputIsSetByItsNameAndNoOtherIsTouched) {
    if (!stage->reached()) {
        EXPECT_EQ(sound.waveOutName(), std::nullopt);
        sound.waveOutSetVolumeOf("", 0);
        sound.waveOutSetVolumeOf("none", 0);
        return;
    }
    ASSERT_TRUE(stage->waitFor([this] { return sound.waveOutGetVolume().has_value(); }, 3000));
    const std::optional<std::string> first = sound.waveOutName();
    ASSERT_TRUE(first);
    sound.waveOutSetVolumeOf(*first, 0x55555555);
    EXPECT_TRUE(stage->waitFor([&] { return sound.waveOutGetVolume() == 0x55555555U; }, 3000));
    sound.waveOutSetVolumeOf("gone", 0x11111111);
    sound.waveOutSetVolumeOf("", 0x11111111);
    EXPECT_FALSE(stage->waitFor([&] { return sound.waveOutGetVolume() != 0x55555555U; }, 100));
    int told = 0;
    sound.WaveOutChanged.tie([&told] { ++told; });
    if (!stage->useOutput("other")) GTEST_SKIP() << "there is but one output here";
    EXPECT_TRUE(stage->waitFor([&] { return told > 0 && sound.waveOutName() == "other"; }, 5000));
    sound.waveOutSetVolume(0x22222222);
    EXPECT_TRUE(stage->waitFor([&] { return sound.waveOutGetVolume() == 0x22222222U; }, 3000));
    told = 0;
    sound.waveOutSetVolumeOf(*first, 0x77777777);
    EXPECT_FALSE(stage->waitFor([&] { return told > 0 || sound.waveOutGetVolume() != 0x22222222U; }, 100));
    ASSERT_TRUE(stage->useOutput(*first));
    EXPECT_TRUE(
        stage->waitFor([&] { return sound.waveOutName() == first && sound.waveOutGetVolume() == 0x77777777U; }, 5000));
}

/// VOL-07: The result of a set is not looked at
/// MEDIA-31: A device that is not there says nothing
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
