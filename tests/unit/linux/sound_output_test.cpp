// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/sound_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace corvane {
namespace {

constexpr std::int64_t kPlace = 30000;
constexpr std::int64_t kLength = 441000;

/// A silent sound whose first seek takes until it is told to stop, and then has got nowhere.
class SlowlySought final : public SoundBackend {
public:
    std::atomic<bool> seeking{false};
    std::atomic<std::int64_t> firstRead{-1};

    PcmFormat format() const override { return {44100, 1}; }
    std::int64_t frames() const override { return kLength; }
    std::size_t read(float* samples, std::size_t count) override {
        if (firstRead < 0) firstRead = stands_;
        std::fill_n(samples, count, 0.0F);
        stands_ += static_cast<std::int64_t>(count);
        return count;
    }
    void seek(std::int64_t frame) override {
        if (isFirst_) {
            isFirst_ = false;
            seeking = true;
            while (!stopping) std::this_thread::yield();
            return;
        }
        stands_ = frame;
    }

private:
    bool isFirst_ = true;
    std::int64_t stands_ = 0;
};

bool within10Seconds(const auto& holds) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!holds()) {
        if (std::chrono::steady_clock::now() > until) return false;
        std::this_thread::yield();
    }
    return true;
}

TEST(SoundOutputs, APauseDuringASlowSeekDoesNotLoseThePlace) {
    const auto sound = std::make_shared<SlowlySought>();
    SoundOutput output(true);
    const std::uint64_t part = output.play({sound, kPlace, SoundOutput::kToEnd, 0, {}});
    ASSERT_TRUE(within10Seconds([&] { return sound->seeking.load(); }));
    output.pause(part);
    EXPECT_EQ(output.position(part), kPlace);
    output.resume(part);
    ASSERT_TRUE(within10Seconds([&] { return sound->firstRead >= 0; }));
    EXPECT_EQ(sound->firstRead, kPlace);
    EXPECT_TRUE(within10Seconds([&] { return output.position(part) > kPlace; }));
}

/// A silent sound that tells what is done with it.
class Watched final : public SoundBackend {
public:
    std::atomic<bool> sought{false};
    std::atomic<bool> wasRead{false};

    PcmFormat format() const override { return {44100, 1}; }
    std::int64_t frames() const override { return kLength; }
    std::size_t read(float* samples, std::size_t count) override {
        wasRead = true;
        std::fill_n(samples, count, 0.0F);
        return count;
    }
    void seek(std::int64_t) override { sought = true; }
};

struct HeldBackPart : ::testing::Test {
    using Clock = std::chrono::steady_clock;
    std::shared_ptr<Watched> sound = std::make_shared<Watched>();
    SoundOutput output{true};
    Clock::time_point begin = Clock::now();
    std::uint64_t part = output.play({sound, kPlace, SoundOutput::kToEnd, 0, {}, true});

    void SetUp() override {
        ASSERT_TRUE(within10Seconds([&] { return sound->sought.load(); }));
    }
    /// No longer than that it is held back, also where this program is.
    bool isOverdue() const { return Clock::now() - begin >= SoundOutput::kMostHeldBack; }
    /// Whether nothing is read for a good while, which is shorter than it is held back at most.
    bool staysUnread() const {
        const auto until = Clock::now() + SoundOutput::kMostHeldBack / 4;
        while (Clock::now() < until) {
            if (sound->wasRead) return isOverdue();
            std::this_thread::yield();
        }
        return true;
    }
};

TEST_F(HeldBackPart, IsHeardOnceItIsReleased) {
    EXPECT_TRUE(staysUnread());
    EXPECT_TRUE(output.position(part) == kPlace || isOverdue());
    output.release(part);
    EXPECT_TRUE(within10Seconds([&] { return output.position(part) > kPlace; }));
}

TEST_F(HeldBackPart, LeavesNoSoundWhenItIsPausedAtOnce) {
    output.pause(part);
    output.release(part);
    EXPECT_TRUE(staysUnread());
    output.resume(part);
    EXPECT_TRUE(within10Seconds([&] { return output.position(part) > kPlace; }));
}

TEST_F(HeldBackPart, IsHeardInTheEndWhenNobodyReleasesIt) {
    EXPECT_TRUE(within10Seconds([&] { return output.position(part) > kPlace; }));
}

TEST_F(HeldBackPart, IsNotReleasedInPlaceOfAnother) {
    const auto other = std::make_shared<Watched>();
    begin = Clock::now();
    const std::uint64_t next = output.play({other, 0, SoundOutput::kToEnd, 0, {}, true});
    output.release(part);
    ASSERT_TRUE(within10Seconds([&] { return other->sought.load(); }));
    sound = other;
    EXPECT_TRUE(staysUnread());
    output.release(next);
    EXPECT_TRUE(within10Seconds([&] { return output.position(next) > 0; }));
}

}  // namespace
}  // namespace corvane
