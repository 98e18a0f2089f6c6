// SPDX-License-Identifier: GPL-3.0-or-later
// What a save asks of the system, in which order, and what is there when it is killed.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "unit/windows/folder_rig.h"
#include "winapi/files/plain_file.h"

// Where the program finds the system's functions.
extern "C" {
extern void* __imp_FlushFileBuffers;  // NOLINT(bugprone-reserved-identifier)
extern void* __imp_MoveFileExW;       // NOLINT(bugprone-reserved-identifier)
}

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

Texts made;
bool flushFails = false;

std::string nameOf(const std::wstring& path) { return fromWide(path.substr(path.rfind(L'\\') + 1)); }

std::string nameOf(HANDLE file) {
    std::wstring path(32768, L'\0');
    path.resize(GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0));
    return nameOf(path);
}

BOOL WINAPI noteFlush(HANDLE file) {
    made.push_back("flush " + nameOf(file));
    if (flushFails) SetLastError(ERROR_DISK_FULL);
    return flushFails ? FALSE : TRUE;
}

BOOL WINAPI noteMove(LPCWSTR from, LPCWSTR to, DWORD flags) {
    const bool forGood = (flags & MOVEFILE_WRITE_THROUGH) != 0 && (flags & MOVEFILE_REPLACE_EXISTING) != 0;
    made.push_back("move " + nameOf(from) + " to " + nameOf(to) + (forGood ? " for good" : ""));
    return CopyFileW(from, (std::wstring(to) + L"-new").c_str(), TRUE);
}

/// One of the system's functions is another one for as long as it lives.
class Instead {
public:
    Instead(void*& place, void* other) : place_(place), usual_(set(other)) {}
    Instead(const Instead&) = delete;
    Instead& operator=(const Instead&) = delete;
    ~Instead() { set(usual_); }

private:
    void* set(void* function) {
        DWORD before = 0;
        VirtualProtect(&place_, sizeof place_, PAGE_READWRITE, &before);
        return std::exchange(place_, function);
    }

    void*& place_;
    void* usual_;
};

struct NotedSave : ::testing::Test {
    NotedSave() {
        made.clear();
        flushFails = false;
        test::writeFile(folder.in("FILE00.INI"), "old");
    }
    std::string bytes(const std::string& name) const { return test::bytesOf(folder.in(name)); }
    /// The name that the new bytes were flushed under.
    static std::string beside() { return made.empty() ? "" : made[0].substr(made[0].find(' ') + 1); }

    test::TriedFolder folder;
    WindowsFiles files;
    Instead flush{__imp_FlushFileBuffers, reinterpret_cast<void*>(&noteFlush)};
    Instead moving{__imp_MoveFileExW, reinterpret_cast<void*>(&noteMove)};
};

/// WIN-66: A save is flushed before it takes the old file's place; killed at any moment the file is whole
TEST_F(NotedSave, IsFlushedAndThenTakesTheOldFilesPlace) {
    ASSERT_TRUE(files.replace(folder.in("FILE00.INI"), "new"));
    EXPECT_EQ(made, (Texts{"flush " + beside(), "move " + beside() + " to FILE00.INI for good"}));
    EXPECT_TRUE(beside().starts_with(".corvane-")) << beside();
    EXPECT_EQ(bytes("FILE00.INI-new"), "new") << "it was whole then";
    EXPECT_EQ(bytes("FILE00.INI"), "old") << "nothing else wrote there";
}

/// WIN-66
TEST_F(NotedSave, WhatCannotBeFlushedTakesNoPlace) {
    flushFails = true;
    EXPECT_FALSE(files.replace(folder.in("FILE00.INI"), "new"));
    EXPECT_EQ(made.size(), 1U);
    EXPECT_EQ(bytes("FILE00.INI"), "old");
    EXPECT_EQ(files.list(folder.path(), "*"), Texts{"FILE00.INI"});
}

std::string saved(char letter) { return std::string(200'000, letter); }

constexpr wchar_t kSavedPath[] = L"CORVANE_TRIED_SAVE";

/// A process that is told so saves without an end, until it is killed.
class SavesUntilKilled : public testing::Environment {
    void SetUp() override {
        std::wstring path(MAX_PATH, L'\0');
        path.resize(GetEnvironmentVariableW(kSavedPath, path.data(), MAX_PATH));
        WindowsFiles files;
        for (char letter = 'b'; !path.empty(); letter = letter == 'z' ? 'b' : static_cast<char>(letter + 1)) {
            files.replace(fromWide(path), saved(letter));
        }
    }
};

const testing::Environment* const savesUntilKilled = testing::AddGlobalTestEnvironment(new SavesUntilKilled);

Handle startSaving(const std::string& path) {
    SetEnvironmentVariableW(kSavedPath, toWide(path).c_str());
    std::wstring program(32768, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    std::wstring line = L"\"" + program + L"\" --gtest_filter=KilledSave.*";
    STARTUPINFOW how{};
    how.cb = sizeof how;
    PROCESS_INFORMATION begun{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &begun) == 0)
        return {};
    CloseHandle(begun.hThread);
    return Handle(begun.hProcess);
}

/// WIN-66
TEST(KilledSave, LeavesTheOldOrTheNewFileWhole) {
    const test::TriedFolder folder;
    const std::string path = folder.in("FILE00.INI");
    constexpr int kKills = 8;
    for (int kill = 0; kill < kKills; ++kill) {
        test::writeFile(path, saved('a'));
        const Handle process = startSaving(path);
        ASSERT_TRUE(process);
        ASSERT_NE(savesUntilKilled, nullptr);
        const ULONGLONG end = GetTickCount64() + 20'000;
        const auto hasBegun = [&path] {
            const std::string now = test::bytesOf(path);  // empty where it is shut just now
            return !now.empty() && now[0] != 'a';
        };
        while (!hasBegun() && GetTickCount64() < end) Sleep(1);
        Sleep(static_cast<DWORD>(3 * kill));
        TerminateProcess(process.get(), 1);
        WaitForSingleObject(process.get(), 10'000);
        const std::string left = test::bytesOf(path);
        ASSERT_EQ(left.size(), saved('a').size()) << "kill " << kill;
        EXPECT_NE(left[0], 'a') << "it had begun";
        EXPECT_EQ(left, saved(left[0]));
        removeUnfinishedFiles(folder.path());
        EXPECT_EQ(WindowsFiles().list(folder.path(), "*"), Texts{"FILE00.INI"});
    }
}

}  // namespace
}  // namespace corvane
