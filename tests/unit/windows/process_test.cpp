// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/own_process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "unit/windows/folder_rig.h"
#include "winapi/handle.h"
#include "winapi/program/standard_stream.h"

namespace corvane {
namespace {

/// The Explorer gives full paths, with whatever blanks they have; who types names is not taken for it.
/// WIN-58: Files dropped on the icon are opened, blanks and all
TEST(DroppedOnTheIcon, FullPathsOfFilesAreOpened) {
    const test::TriedFolder folder;
    const std::string blank = folder.in("my own song.wav");
    const std::string plain = folder.in("song.wav");
    test::writeFile(blank, "x");
    test::writeFile(plain, "x");
    EXPECT_TRUE(areDroppedOnIcon({blank}));
    EXPECT_TRUE(areDroppedOnIcon({plain, blank}));
    EXPECT_FALSE(areDroppedOnIcon({})) << "a start without anything";
    EXPECT_FALSE(areDroppedOnIcon({"song.wav"}));
    EXPECT_FALSE(areDroppedOnIcon({blank, "song.wav"}));
    EXPECT_FALSE(areDroppedOnIcon({"--open", blank}));
    EXPECT_FALSE(areDroppedOnIcon({folder.in("gone.wav")}));
    EXPECT_FALSE(areDroppedOnIcon({folder.path()})) << "a folder";
    EXPECT_FALSE(areDroppedOnIcon({"\\\\.\\pipe\\a.wav"}));
    EXPECT_FALSE(areDroppedOnIcon({plain + ":stream.wav"}));
}

/// The error stream, for as long as it lives, leads into a pipe.
struct ErrorPipe {
    ErrorPipe() {
        HANDLE from = nullptr;
        HANDLE to = nullptr;
        CreatePipe(&from, &to, nullptr, 4096);
        reading = Handle(from);
        writing = Handle(to);
        SetStdHandle(STD_ERROR_HANDLE, to);
    }
    ~ErrorPipe() { SetStdHandle(STD_ERROR_HANDLE, before); }
    ErrorPipe(const ErrorPipe&) = delete;
    ErrorPipe& operator=(const ErrorPipe&) = delete;
    std::string read() const {
        std::string text(4096, '\0');
        DWORD count = 0;
        if (PeekNamedPipe(reading.get(), nullptr, 0, nullptr, &count, nullptr) == 0 || count == 0) return {};
        ReadFile(reading.get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
        text.resize(count);
        return text;
    }

    /// What comes, until it is as long as that or nothing more comes.
    std::string readUntil(std::size_t length) const {
        std::string all;
        auto last = std::chrono::steady_clock::now();
        while (all.size() < length && std::chrono::steady_clock::now() - last < std::chrono::seconds(10)) {
            const std::string more = read();
            if (more.empty()) {
                Sleep(1);
                continue;
            }
            all += more;
            last = std::chrono::steady_clock::now();
        }
        return all;
    }
    std::string readUntil(const std::string& wanted) const { return readUntil(wanted.size()); }

    HANDLE before = GetStdHandle(STD_ERROR_HANDLE);
    Handle reading;
    Handle writing;
};

std::string line(const std::string& text) { return "corvane: " + text + "\r\n"; }

/// WIN-57: What a start leaves out is told on the error stream, and nobody is waited for
TEST(ErrorStream, ALineSaysWhatIsToldAndNothingElse) {
    const ErrorPipe pipe;
    tellOnErrors("a.txt: left out");
    EXPECT_EQ(pipe.readUntil(line("a.txt: left out")), line("a.txt: left out"));
    tellOnErrors("\x1B[31mred\nand on");
    EXPECT_EQ(pipe.readUntil(line("?[31mred?and on")), line("?[31mred?and on"));
}

/// WIN-57
TEST(ErrorStream, NobodyIsWaitedForAndASlowReaderGetsEveryLine) {
    const ErrorPipe pipe;
    std::string wanted;
    const auto begun = std::chrono::steady_clock::now();
    for (char letter = 'a'; letter <= 't'; ++letter) {
        const std::string large(3000, letter);
        tellOnErrors(large);
        wanted += line(large);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(4000));
    EXPECT_EQ(pipe.readUntil(wanted), wanted);
    tellOnErrors("later");
    EXPECT_EQ(pipe.readUntil(line("later")), line("later"));
}

/// WIN-57
TEST(ErrorStream, WhatNobodyTakesIsNotKeptWithoutEnd) {
    const ErrorPipe pipe;
    const std::string large(3000, 'x');
    for (int i = 0; i < 400; ++i) tellOnErrors(large);
    constexpr std::size_t kTaken = 150'000;
    constexpr std::size_t kMost = 300'000;
    std::string told = pipe.readUntil(kTaken);
    tellOnErrors("later");  // there is room again
    while (told.size() < kMost && !told.ends_with(line("later"))) {
        const std::string more = pipe.readUntil(std::size_t{1});
        if (more.empty()) break;
        told += more;
    }
    EXPECT_TRUE(told.ends_with(line("later"))) << told.size();
    EXPECT_LT(told.size(), kMost);
}

}  // namespace
}  // namespace corvane
