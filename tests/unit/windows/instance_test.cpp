// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/window_instance.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "program/instance_call.h"
#include "unit/windows/folder_rig.h"
#include "winapi/program/windows_loop.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

struct Instances : ::testing::Test {
    void listen(Instance& first) {
        first.onCall([this](const Texts& files) { given.push_back(files); });
        ASSERT_TRUE(first.acquire());
    }
    /// The window that a first start listens with.
    static HWND listener() { return FindWindowExW(HWND_MESSAGE, nullptr, kMessageClass, nullptr); }

    test::TriedFolder folder;
    std::vector<Texts> given;
};

TEST_F(Instances, ASecondStartHandsItsFilesOver) {
    WindowInstance first(folder.path());
    WindowInstance second(folder.path() + "\\");
    listen(first);
    EXPECT_FALSE(second.acquire());
    EXPECT_TRUE(second.call({"C:\\a b.wav", "C:\\\xE6\x97\xA5.wav"}));
    EXPECT_EQ(given, std::vector<Texts>{(Texts{"C:\\a b.wav", "C:\\\xE6\x97\xA5.wav"})});
}

/// WIN-48
TEST_F(Instances, WithoutFilesTheFirstIsOnlyAskedToBeSeen) {
    WindowInstance first(folder.path());
    WindowInstance second(folder.path());
    listen(first);
    EXPECT_FALSE(second.acquire());
    EXPECT_TRUE(second.call({}));
    EXPECT_EQ(given, std::vector<Texts>{Texts{}});
}

TEST_F(Instances, EachFolderHasItsOwn) {
    WindowInstance first(folder.path());
    const test::TriedFolder elsewhere;
    WindowInstance other(elsewhere.path());
    listen(first);
    EXPECT_TRUE(other.acquire());
}

/// Between its mutex and its window a first start takes a moment.
/// WIN-48: A second start waits for a first one that is about to listen, and without files brings it to the front
TEST_F(Instances, AFirstStartThatIsAboutToListenIsWaitedFor) {
    std::atomic<bool> handed = false;
    std::atomic<bool> listens = false;
    Texts got;
    std::thread late([&] {
        Sleep(300);
        WindowInstance first(folder.path());
        first.onCall([&](const Texts& files) { got = files; });
        listens = first.acquire();
        WindowsLoop().runUntil([&] { return handed.load(); }, 5000);
    });
    const WindowInstance second(folder.path());
    EXPECT_TRUE(second.call({"C:\\a.wav"}));
    handed = true;
    late.join();
    EXPECT_TRUE(listens);
    EXPECT_EQ(got, Texts{"C:\\a.wav"});
}

TEST_F(Instances, WithoutAFirstItIsGivenUpInTime) {
    const WindowInstance alone(folder.path());
    const ULONGLONG begun = GetTickCount64();
    EXPECT_FALSE(alone.call({"C:\\a.wav"}));
    EXPECT_LT(GetTickCount64() - begun, 3000U);
}

TEST_F(Instances, AsManyFilesAsFitAreHandedOver) {
    const std::vector<std::string> files(160, std::string(30'000, 'x'));
    WindowInstance first(folder.path());
    const WindowInstance second(folder.path());
    EXPECT_EQ(second.fitting(files), 139U) << "four mebibytes";
    listen(first);
    EXPECT_FALSE(second.call(files));
    EXPECT_TRUE(second.call(Texts(files.begin(), files.begin() + 139)));
    ASSERT_EQ(given.size(), 1U);
    EXPECT_EQ(given[0].size(), 139U);
}

/// WIN-48
TEST_F(Instances, WhatIsNoHandOverIsRefused) {
    WindowInstance first(folder.path());
    listen(first);
    const HWND window = listener();
    ASSERT_NE(window, nullptr);
    const auto send = [window](ULONG_PTR kind, DWORD size, const void* bytes) {
        COPYDATASTRUCT copied{kind, size, const_cast<void*>(bytes)};
        return SendMessageW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&copied));
    };
    constexpr ULONG_PTR kFiles = 0x434F5246;
    const std::string large(kMostInCall + 1, 'x');
    EXPECT_EQ(send(1, 4, "a.w"), FALSE) << "another program's";
    EXPECT_EQ(send(kFiles, static_cast<DWORD>(large.size()), large.data()), FALSE);
    EXPECT_EQ(send(kFiles, 4, nullptr), FALSE);
    EXPECT_TRUE(given.empty());
    EXPECT_EQ(send(kFiles, 7, "a.wav\0b"), TRUE) << "a name without its end is none";
    EXPECT_EQ(given, std::vector<Texts>{Texts{"a.wav"}});
}

}  // namespace
}  // namespace corvane
