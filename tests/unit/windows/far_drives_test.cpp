// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/files/far_drives.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "windows/handle.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

TEST(FarDrives, AnswersAsTheDriveDoes) {
    FarDrives drives;
    EXPECT_EQ(drives.ask<int>(L"Y:", 2s, [] { return 7; }), 7);
    EXPECT_EQ(drives.ask<int>(L"Y:", 2s, [] { return 8; }), 8);
    EXPECT_EQ(drives.ask<int>(L"Y:", 2s, []() -> int { throw std::runtime_error("no memory"); }), std::nullopt);
    EXPECT_EQ(drives.ask<int>(L"Y:", 2s, [] { return 9; }), 9) << "it may be asked again";
}

TEST(FarDrives, OneThatDoesNotAnswerIsNotAskedMore) {
    const auto answers = std::make_shared<Handle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const auto asked = std::make_shared<std::atomic<int>>(0);
    const std::function<int()> question = [answers, asked] {
        ++*asked;
        WaitForSingleObject(answers->get(), 60'000);
        return 7;
    };
    FarDrives drives;
    EXPECT_EQ(drives.ask<int>(L"Y:", 50ms, question), std::nullopt);
    EXPECT_EQ(drives.ask<int>(L"Y:", 50ms, question), std::nullopt);
    EXPECT_EQ(*asked, 1);
    EXPECT_EQ(drives.ask<int>(L"X:", 2s, [] { return 8; }), 8) << "another drive answers meanwhile";
    SetEvent(answers->get());
    const ULONGLONG end = GetTickCount64() + 5000;
    std::optional<int> later;
    while (!later && GetTickCount64() < end) later = drives.ask<int>(L"Y:", 100ms, question);
    EXPECT_EQ(later, 7) << "when it has answered it is asked again";
}

TEST(FarDrives, NamesThoseAcrossTheNetwork) {
    EXPECT_EQ(FarDrives::driveOf(L"\\\\host\\share\\a.wav"), L"\\\\HOST\\SHARE");
    EXPECT_EQ(FarDrives::driveOf(L"\\\\?\\UNC\\host\\share\\a.wav"), L"\\\\HOST\\SHARE");
    EXPECT_EQ(FarDrives::driveOf(L"C:\\a.wav"), L"");
    EXPECT_EQ(FarDrives::driveOf(L"\\\\?\\C:\\a.wav"), L"");
    EXPECT_EQ(FarDrives::driveOf(L"a.wav"), L"");
}

}  // namespace
}  // namespace corvane
