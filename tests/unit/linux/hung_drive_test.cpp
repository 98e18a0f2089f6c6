// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

#include "files/posix_files.h"
#include "unit/linux/stopwatch.h"

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
    PosixFiles files([drive](const std::string& path) { return drive->look(path); });
    const test::Stopwatch clock;
    EXPECT_EQ(files.lookUp("/drive/a.wav"), std::nullopt) << "it counts as not being there";
    for (int i = 0; i < 255; ++i) EXPECT_EQ(files.lookUp("/drive/b.wav"), std::nullopt);
    EXPECT_GE(clock.passed(), DriveCalls::kPatience);
    EXPECT_LT(clock.own(), DriveCalls::kPatience + std::chrono::seconds(2)) << "the drive is not asked again";
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
        PosixFiles files([drive](const std::string& path) { return drive->look(path); });
        EXPECT_EQ(files.lookUp("/drive/a.wav"), std::nullopt);
    }
    drive->letGo();
}

/// DROP-17
TEST(HungDrive, KeepsNoOtherFileOfADropAway) {
    const auto drive = std::make_shared<Drive>();
    PosixFiles files([drive](const std::string& path) { return drive->look(path); });
    const test::Stopwatch clock;
    const auto names = files.lookUpAll({"/other/a.wav", "/drive/b.wav", "/drive/c.wav", "/another/d.wav"});
    EXPECT_LT(clock.own(), DriveCalls::kPatience + std::chrono::seconds(2));
    using Names = std::vector<std::optional<std::string>>;
    EXPECT_EQ(names, (Names{"a.wav", std::nullopt, std::nullopt, "d.wav"}));
    EXPECT_EQ(drive->looks, 1) << "the drive is not asked again";
    drive->letGo();
    const auto deadline = Clock::now() + std::chrono::seconds(5);
    while (!files.lookUp("/drive/b.wav") && Clock::now() < deadline) continue;
    EXPECT_EQ(files.lookUpAll({"/drive/b.wav", "/drive/c.wav"}), (Names{"b.wav", "c.wav"}));
}

TEST(HungDrive, ManyOfThemHoldTheCallerNoLongerThanAllMayTake) {
    constexpr std::chrono::milliseconds kEach{300}, kAll{1050};
    const auto drive = std::make_shared<Drive>();
    std::vector<DriveCalls::Each> asked;
    for (int i = 0; i < 20; ++i) asked.push_back({"/drive/" + std::to_string(i) + "/a.wav", kEach});
    const test::Stopwatch clock;
    const auto answers =
        DriveCalls::all().askEach<bool>(asked, kAll, [drive](const std::string& path) { return drive->look(path); });
    EXPECT_EQ(answers, std::vector<std::optional<bool>>(20));
    EXPECT_GE(clock.passed(), kAll);
    EXPECT_LT(clock.own(), kAll + std::chrono::seconds(1));
    EXPECT_GE(drive->looks, 2) << "each lies in a folder of its own";
    EXPECT_LE(drive->looks, 5);
    drive->letGo();
}

TEST(ManyQuestions, AreAskedByOneThreadInTheirOrder) {
    thread_local int here = 0;
    const auto most = std::make_shared<std::atomic<int>>(0);
    const auto order = std::make_shared<std::string>();
    std::vector<DriveCalls::Each> asked;
    for (char c = 'a'; c <= 'z'; ++c) asked.push_back({"/m/" + std::string(1, c), DriveCalls::kPatience});
    const auto answers =
        DriveCalls::all().askEach<char>(asked, DriveCalls::kLongPatience, [=](const std::string& path) {
            if (path.back() == 'k') throw std::bad_alloc();
            *most = ++here;
            *order += path.back();
            return path.back();
        });
    EXPECT_EQ(*order, "abcdefghijlmnopqrstuvwxyz");
    EXPECT_GE(*most, 25);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (i == 10) {
            EXPECT_EQ(answers[i], std::nullopt) << "one that throws has no answer";
        } else {
            EXPECT_EQ(answers[i], static_cast<char>('a' + i));
        }
    }
    EXPECT_TRUE(
        DriveCalls::all().askEach<char>({}, DriveCalls::kPatience, [](const std::string&) { return 'x'; }).empty());
}

TEST(ManyQuestions, EndWhenTheyAreGivenUp) {
    const auto drive = std::make_shared<Drive>();
    std::atomic<bool> giveUp{true};
    const test::Stopwatch clock;
    const auto answers = DriveCalls::all().askEach<bool>(
        {{"/drive/a", DriveCalls::kPatience}, {"/x/b", DriveCalls::kPatience}}, {DriveCalls::kLongPatience, &giveUp},
        [drive](const std::string& path) { return drive->look(path); });
    EXPECT_LT(clock.own(), DriveCalls::kPatience / 2);
    EXPECT_EQ(answers, std::vector<std::optional<bool>>(2));
    drive->letGo();
}

}  // namespace
}  // namespace corvane
