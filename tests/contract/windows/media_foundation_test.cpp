// SPDX-License-Identifier: GPL-3.0-or-later
// What Media Foundation plays: to the frame, and only where the system has it.
#include <gtest/gtest.h>

#include "contract/windows/media_rig.h"
#include "winapi/sound/mf_device.h"
#include "winapi/sound/sound_engines.h"
#include "winapi/sound/windows_mci_control.h"

namespace corvane {
namespace {

using test::sample;
using test::sourceFile;

std::string tone(const std::string& ending) { return sourceFile("tests/data/sound/tone." + ending); }

/// All samples that follow.
std::vector<std::int16_t> rest(MfReader& reader) {
    std::vector<std::int16_t> all;
    for (auto some = reader.read(); some && !some->empty(); some = reader.read()) {
        all.insert(all.end(), some->begin(), some->end());
    }
    return all;
}

/// WIN-81: The kinds of today are decoded by Media Foundation, from any frame on as from the beginning
TEST(MediaFoundation, DecodesTheKindsOfToday) {
    for (const char* const ending : {"flac", "m4a", "ogg", "opus"}) {
        MfReader reader;
        ASSERT_EQ(reader.open(toWide(tone(ending))), "") << ending;
        const auto all = rest(reader);
        const auto frames = static_cast<std::int64_t>(all.size()) / reader.channels();
        ASSERT_GT(frames, reader.rate() / 2) << ending;
        EXPECT_GT(*std::max_element(all.begin(), all.end()), 1000) << ending << " is silent";
        EXPECT_NEAR(static_cast<double>(reader.milliseconds().value_or(0)),
                    static_cast<double>(frames) * 1000 / reader.rate(), 80)
            << ending;
    }
}

/// WIN-81
TEST(MediaFoundation, ASeekIsExactToTheFrame) {
    MfReader reader;
    ASSERT_EQ(reader.open(toWide(tone("flac"))), "");
    const auto all = rest(reader);
    const auto channels = static_cast<std::size_t>(reader.channels());
    const auto frames = static_cast<std::int64_t>(all.size() / channels);
    for (const std::int64_t frame : {frames / 2 + 7, std::int64_t{1}, std::int64_t{0}, frames - 100}) {
        ASSERT_TRUE(reader.seek(frame));
        const auto part = rest(reader);
        EXPECT_EQ(part.size(), all.size() - static_cast<std::size_t>(frame) * channels) << frame;
        EXPECT_TRUE(std::equal(part.rbegin(), part.rend(), all.rbegin())) << frame;
    }
}

/// WIN-82: Where the system lacks Media Foundation, or a decoder, the reason is told and nothing else is harmed
TEST(MediaFoundation, ASystemWithoutItTellsSo) {
    const MfLibrary none = MfLibrary::loadedBy([](const wchar_t*) -> HMODULE { return nullptr; });
    MfReader reader(none);
    EXPECT_EQ(reader.open(toWide(tone("flac"))), "This Windows has no Media Foundation (mfplat.dll is missing).");
    MfDevice device(none);
    EXPECT_NE(device.open(toWide(tone("flac"))), "");
    const MfLibrary other = MfLibrary::loadedBy([](const wchar_t*) { return GetModuleHandleW(L"kernel32"); });
    EXPECT_EQ(other.missing, "This Windows has no whole Media Foundation.");
    EXPECT_FALSE(playsToday("FLAC", MfAnswers::ofSystem(none)));
}

/// WIN-82
TEST(MediaFoundation, WhatCannotBeDecodedIsRefusedWithTheSystemsNumber) {
    test::ScratchFolder folder;
    for (const std::string& bytes : {std::string(), std::string("fLaC"), "fLaC" + std::string(20000, '\x05')}) {
        MfReader reader;
        EXPECT_NE(reader.open(toWide(folder.write("a.flac", bytes))), "") << bytes.size();
    }
    MfReader gone;
    EXPECT_EQ(gone.open(toWide(folder.in("gone.flac"))), "The file cannot be read.");
}

/// A multimedia control of this desktop at one file.
struct PlayedFile : ::testing::Test {
    PlayedFile() {
        control.Failed.tie([this](const std::string& told) { reason = told; });
        control.Done.tie([this](int) { ++done; });
    }
    void open(const std::string& path) {
        control.FileName(path);
        control.Command("Open");
        control.TimeFormat(kFormatMilliseconds);
        control.UpdateInterval(100);
        ASSERT_TRUE(loop.runUntil([&] { return control.Length() > 0 || !reason.empty(); }, 8000)) << path;
        ASSERT_EQ(reason, "") << path;
    }
    WindowsLoop loop;
    MciStation station{loop, loop.uiPost()};
    WindowsMciControl control{station};
    std::string reason;
    int done = 0;
};

/// WIN-83: A sound of today plays to its end, which is told once, and stands where it is heard
TEST_F(PlayedFile, ASoundOfTodayPlaysToItsEnd) {
    for (const char* const ending : {"flac", "m4a", "opus"}) {
        done = 0;
        open(tone(ending));
        const int length = control.Length();
        control.From(length - 400);
        control.Command("Play");
        EXPECT_TRUE(loop.runUntil([this] { return control.Position() > control.Length() - 250; }, 3000)) << ending;
        EXPECT_TRUE(loop.runUntil([this] { return done == 1 || !reason.empty(); }, 5000)) << ending << reason;
        EXPECT_NEAR(control.Position(), length, 30) << ending;
        loop.runUntil([] { return false; }, 200);
        EXPECT_EQ(done, 1) << ending;
        control.Command("Close");
    }
}

/// WIN-83
TEST_F(PlayedFile, APausedOneStandsAndGoesOnFromThere) {
    open(tone("flac"));
    control.Command("Play");
    ASSERT_TRUE(loop.runUntil([this] { return control.Position() > 200; }, 3000));
    control.Command("Pause");
    loop.runUntil([] { return false; }, 200);
    const int held = control.Position();
    loop.runUntil([] { return false; }, 300);
    EXPECT_NEAR(control.Position(), held, 5);
    control.Command("Play");
    EXPECT_TRUE(loop.runUntil([&] { return control.Position() > held + 100; }, 3000));
    EXPECT_TRUE(loop.runUntil([this] { return done == 1; }, 8000)) << reason;
}

}  // namespace
}  // namespace corvane
