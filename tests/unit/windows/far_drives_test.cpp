// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/files/far_drives.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "unit/windows/folder_rig.h"
#include "winapi/handle.h"
#include "winapi/text.h"

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
    const ULONGLONG begun = GetTickCount64();
    EXPECT_EQ(drives.ask<int>(L"Y:", 50ms, question), std::nullopt);
    EXPECT_EQ(drives.ask<int>(L"Y:", 50ms, question), std::nullopt);
    EXPECT_LT(GetTickCount64() - begun, 5000U) << "it is waited for no longer than that";
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

/// A drive that is far away, and hangs as long as the test wants.
struct FarFolder : ::testing::Test {
    FarFolder() {
        FarDrives::kindOfDrive = [](LPCWSTR /*root*/) -> UINT { return DRIVE_REMOTE; };
        test::writeFile(folder.in("KADO.INI"), "old");
    }
    ~FarFolder() override {
        SetEvent(answers->get());
        FarDrives::kindOfDrive = &GetDriveTypeW;
    }
    void hang() {
        const std::function<int()> question = [answers = answers] {
            WaitForSingleObject(answers->get(), 60'000);
            return 0;
        };
        EXPECT_EQ(FarDrives::all().ask<int>(FarDrives::driveOf(toWide(folder.path())), 10ms, question), std::nullopt);
    }
    std::string kept() const { return test::bytesOf(folder.in("KADO.INI")); }

    test::TriedFolder folder;
    WindowsFiles files;
    std::shared_ptr<Handle> answers = std::make_shared<Handle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
};

/// WIN-65: A drive across the network that does not answer holds up no save, and puts none in place that was given up
TEST_F(FarFolder, ASaveIsAskedOfItAsEverythingElse) {
    EXPECT_TRUE(files.replace(folder.in("KADO.INI"), "new"));
    EXPECT_EQ(kept(), "new");
    EXPECT_EQ(files.read(folder.in("KADO.INI"), 10), "new");
    hang();
    const ULONGLONG begun = GetTickCount64();
    EXPECT_FALSE(files.replace(folder.in("KADO.INI"), "later"));
    EXPECT_EQ(files.read(folder.in("KADO.INI"), 10), std::nullopt);
    EXPECT_EQ(files.lookUp(folder.in("KADO.INI")), std::nullopt);
    EXPECT_TRUE(files.list(folder.path(), "*.INI").empty());
    EXPECT_FALSE(files.readable(folder.path()));
    EXPECT_LT(GetTickCount64() - begun, 2000U) << "it is not asked again before it has answered";
    EXPECT_EQ(kept(), "new");
    SetEvent(answers->get());
    const ULONGLONG end = GetTickCount64() + 5000;
    while (!files.replace(folder.in("KADO.INI"), "again") && GetTickCount64() < end) Sleep(10);
    EXPECT_EQ(kept(), "again");
}

}  // namespace
}  // namespace corvane
