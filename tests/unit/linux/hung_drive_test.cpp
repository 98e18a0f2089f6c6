// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "linux/files/qt_files.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;

/// A drive whose look-ups hang until it is let go.
struct Drive {
    std::mutex mutex;
    std::condition_variable changed;
    bool hangs = true;
    int waiting = 0;
    std::atomic<int> looks = 0;  ///< also read while one hangs

    bool look(const std::string& path) {
        if (path.rfind("/drive/", 0) != 0) return true;
        std::unique_lock lock(mutex);
        ++looks;
        ++waiting;
        changed.wait(lock, [this] { return !hangs; });
        --waiting;
        changed.notify_all();
        return true;
    }
    void letGo() {
        std::unique_lock lock(mutex);
        hangs = false;
        changed.notify_all();
        changed.wait(lock, [this] { return waiting == 0; });
    }
};

/// FAULT-19: A drive that does not answer holds nobody up: looks, lists and pictures fail after 2 seconds, folders,
///     saves, sounds and discs after 10, and it is not asked again before it has answered
TEST(HungDrive, HoldsTheCallerForAMomentAndOnlyOnce) {
    const auto drive = std::make_shared<Drive>();
    QtFiles files([drive](const std::string& path) { return drive->look(path); });
    const auto begin = Clock::now();
    EXPECT_EQ(files.lookUp("/drive/a.wav"), std::nullopt) << "it counts as not being there";
    for (int i = 0; i < 255; ++i) EXPECT_EQ(files.lookUp("/drive/b.wav"), std::nullopt);
    const auto taken = Clock::now() - begin;
    EXPECT_GE(taken, DriveCalls::kPatience);
    EXPECT_LT(taken, DriveCalls::kPatience + std::chrono::seconds(2)) << "the drive is not asked again";
    EXPECT_EQ(drive->looks, 1);
    EXPECT_EQ(files.lookUp("/other/c.wav"), "c.wav") << "other places go on";

    drive->letGo();
    const auto deadline = Clock::now() + std::chrono::seconds(5);
    while (!files.lookUp("/drive/a.wav") && Clock::now() < deadline) continue;
    EXPECT_EQ(files.lookUp("/drive/a.wav"), "a.wav") << "it is asked again once it answers";
}

TEST(HungDrive, MayAnswerAfterTheFilesAreGone) {
    const auto drive = std::make_shared<Drive>();
    {
        QtFiles files([drive](const std::string& path) { return drive->look(path); });
        EXPECT_EQ(files.lookUp("/drive/a.wav"), std::nullopt);
    }
    drive->letGo();
}

}  // namespace
}  // namespace corvane
