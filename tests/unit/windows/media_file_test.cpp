// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/media_file.h"

#include <gtest/gtest.h>

#include "contract/windows/media_rig.h"
#include "unit/controls/sound_bytes.h"

namespace corvane {
namespace {

using test::bytesOfWave;
using test::isTried;

using namespace std::string_literals;

/// WIN-18
TEST(MediaFile, OneThatCannotBeReadIsRefused) {
    EXPECT_EQ(contentOfFile(L"C:\\there\\is\\no\\such.wav"), MediaContent::Missing);
}

/// WIN-61
TEST(MediaFile, ASampleOfFramesIsTried) { EXPECT_TRUE(isTried(test::bytesOf(test::sample("waltz.mp3")))); }

/// WIN-61
TEST(MediaFile, WhatIsRefusedIsReadFromTheFile) {
    const test::ScratchFolder folder;
    EXPECT_EQ(refusalOfFile(toWide(folder.write("good.wav", bytesOfWave({})))), "");
    EXPECT_NE(refusalOfFile(toWide(folder.write("bad.wav", bytesOfWave({.channels = 65535, .align = 65535})))), "");
    EXPECT_NE(refusalOfFile(toWide(folder.write("list.mp3", "#EXTM3U\r\n"))), "");
    EXPECT_NE(refusalOfFile(L"C:\\there\\is\\no\\such.wav"), "");
}

/// WIN-17
TEST(MediaFile, ALongPathIsGivenShort) {
    const test::ScratchFolder folder;
    const std::wstring brief = toWide(folder.write("a.wav", "x"));
    EXPECT_EQ(pathForMci(brief), brief);
    const std::wstring lengthy = toWide(folder.write(std::string(120, 'n') + ".wav", "RIFF....WAVE"));
    ASSERT_GT(lengthy.size(), 127U);
    const std::wstring given = pathForMci(lengthy);
    EXPECT_LE(given.size(), 127U);
    EXPECT_EQ(contentOfFile(given), MediaContent::Wave);
}

}  // namespace
}  // namespace corvane
