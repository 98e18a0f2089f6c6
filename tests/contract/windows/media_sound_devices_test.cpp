// SPDX-License-Identifier: GPL-3.0-or-later
#include <map>
#include <memory>
#include <utility>

#include "contract/sound_devices_contract.h"
#include "contract/windows/media_rig.h"
#include "winapi/sound/windows_sound_devices.h"

namespace corvane {
namespace {

class WindowsSoundStage : public test::LoopStage<SoundStage> {
public:
    SoundDevices& sound() override { return sound_; }
    bool reached() override { return waveOutGetNumDevs() > 0; }

private:
    WindowsSoundDevices sound_{loop()};
};

/// A machine whose outputs other programs set, and that has several: none of both can be had where these tests run.
struct Outputs {
    std::string inUse = "speakers";
    std::map<std::string, std::uint32_t> volumes{{"speakers", 0xFFFFFFFF}};
};

class SharedOutputs : public WaveOutputs {
public:
    explicit SharedOutputs(Outputs& outputs) : outputs_(outputs) {}
    std::optional<std::string> inUse() override { return outputs_.inUse; }
    std::optional<std::uint32_t> volume(const std::string& name) override {
        const auto found = outputs_.volumes.find(name);
        return found == outputs_.volumes.end() ? std::nullopt : std::optional(found->second);
    }
    void setVolume(const std::string& name, std::uint32_t volume) override {
        if (const auto found = outputs_.volumes.find(name); found != outputs_.volumes.end()) found->second = volume;
    }

private:
    Outputs& outputs_;
};

class OtherProgramsStage : public test::LoopStage<SoundStage> {
public:
    SoundDevices& sound() override { return sound_; }
    bool reached() override { return true; }
    bool setByAnother(std::uint32_t volume) override {
        outputs_.volumes[outputs_.inUse] = volume;
        return true;
    }
    bool useOutput(const std::string& name) override {
        outputs_.volumes.emplace(name, 0x66666666);
        outputs_.inUse = name;
        return true;
    }

private:
    Outputs outputs_;
    WindowsSoundDevices sound_{loop(), std::make_unique<SharedOutputs>(outputs_)};
};

template <class Kind>
std::unique_ptr<SoundStage> make() {
    return std::make_unique<Kind>();
}

INSTANTIATE_TEST_SUITE_P(Windows, SoundDevicesContract,
                         testing::Values(&make<WindowsSoundStage>, &make<OtherProgramsStage>));

/// The names that the system gives, as it is.
/// WIN-29
TEST(WaveOutputs, EachHasANameOfItsOwnByWhichItIsSet) {
    SystemWaveOutputs outputs;
    const auto name = outputs.inUse();
    if (!name) GTEST_SKIP() << "there is no output";
    EXPECT_GT(name->size(), 3U) << "not its number: " << *name;
    const auto before = outputs.volume(*name);
    ASSERT_TRUE(before);
    outputs.setVolume(*name, 0x44444444);
    EXPECT_EQ(outputs.volume(*name), 0x44444444U);
    outputs.setVolume("gone", 0x11111111);
    EXPECT_EQ(outputs.volume(*name), 0x44444444U);
    EXPECT_EQ(outputs.volume("gone"), std::nullopt);
    outputs.setVolume(*name, *before);
}

/// What this program sets itself is no news.
/// WIN-29
TEST(WaveOutputs, OnlyWhatOthersDoIsTold) {
    WindowsLoop loop;
    Outputs outputs;
    WindowsSoundDevices sound(loop, std::make_unique<SharedOutputs>(outputs));
    int told = 0;
    sound.WaveOutChanged.tie([&told] { ++told; });
    EXPECT_EQ(sound.waveOutGetVolume(), 0xFFFFFFFFU);
    sound.waveOutSetVolume(0x22222222);
    EXPECT_FALSE(loop.runUntil([&] { return told > 0; }, 1500));
    outputs.volumes["speakers"] = 0x33333333;
    EXPECT_TRUE(loop.runUntil([&] { return told > 0; }, 3000));
    EXPECT_FALSE(loop.runUntil([&] { return told > 1; }, 1500)) << "once";
    outputs.volumes.clear();  // unplugged
    EXPECT_TRUE(loop.runUntil([&] { return told > 1; }, 3000));
    EXPECT_EQ(sound.waveOutGetVolume(), std::nullopt);
}

}  // namespace
}  // namespace corvane
