// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/memory_trim.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <fstream>

#include "desktop/media/av_library.h"
#include "desktop/media/file_sound.h"
#include "unit/desktop/offscreen.h"

namespace corvane {
namespace {

long residentFileKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        long value = 0;
        if (word == "RssFile:" && status >> value) return value;
    }
    return 0;
}

std::size_t framesIn(const char* name) {
    const OpenedSound opened = FileSound::open(std::string(CORVANE_SOURCE_DIR "/tests/data/sound/") + name);
    EXPECT_TRUE(opened.sound) << opened.reason;
    std::vector<float> samples(1 << 20);
    return opened.sound ? opened.sound->read(samples.data(), 20'000) : 0;
}

TEST(MemoryTrimTest, GivesBackWhatLoadingTouchedAndEverythingWorksOn) {
    test::offscreenApplication();
    const std::size_t before = framesIn("cbr_bare.mp3");
    const long loaded = residentFileKilobytes();
    MemoryTrim::now();
    EXPECT_LT(residentFileKilobytes(), loaded / 2);
    EXPECT_EQ(framesIn("cbr_bare.mp3"), before);
    EXPECT_GT(framesIn("pcm.wav"), 10'000U);
    EXPECT_LT(residentFileKilobytes(), loaded * 9 / 10) << "what is not used stays away";
}

TEST(MemoryTrimTest, ComesOnceThingsAreCalm) {
    test::offscreenApplication();
    ASSERT_TRUE(loadAv());
    MemoryTrim trim;
    const long loaded = residentFileKilobytes();
    trim.later();
    EXPECT_TRUE(test::waitUntil([&] { return residentFileKilobytes() < loaded * 3 / 4; }, 5000));
}

constexpr std::size_t kPage = 4096;
/// A page of the program's constants, of its own.
alignas(kPage) constexpr std::array<std::uint8_t, kPage> kConstants = {1};

/// Some graphics drivers patch their own text, and a debugger's breakpoint does: that must not be undone.
TEST(MemoryTrimTest, LeavesWhatWasPatched) {
    test::offscreenApplication();
    auto* const byte = const_cast<std::uint8_t*>(kConstants.data());
    ASSERT_EQ(mprotect(byte, kPage, PROT_READ | PROT_WRITE), 0);
    *static_cast<volatile std::uint8_t*>(byte) = 2;
    ASSERT_EQ(mprotect(byte, kPage, PROT_READ), 0);
    MemoryTrim::now();
    EXPECT_EQ(*static_cast<const volatile std::uint8_t*>(byte), 2);
}

}  // namespace
}  // namespace corvane
