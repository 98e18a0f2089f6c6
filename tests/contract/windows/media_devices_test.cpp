// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "contract/windows/media_rig.h"
#include "winapi/media_file.h"
#include "winapi/sound/windows_mci_control.h"

namespace corvane {
namespace {

using test::bytesOf;
using test::sample;

class MciDevices : public testing::Test {
protected:
    MciDevices() {
        control_.Failed.tie([this](const std::string& reason) { reason_ = reason; });
        control_.Done.tie([this](int) { ++done_; });
    }
    void open(const std::string& path, const char* type = "") {
        reason_.clear();
        done_ = 0;
        control_.DeviceType(type);
        control_.FileName(path);
        control_.Command("Open");
        control_.TimeFormat(kFormatMilliseconds);
        control_.UpdateInterval(100);
    }
    bool until(const std::function<bool()>& holds, int milliseconds = 8000) {
        return loop_.runUntil(holds, milliseconds);
    }
    void expectFailure(const std::string& path, const char* type = "") {
        open(path, type);
        EXPECT_EQ(reason_, "") << "from inside the call";
        EXPECT_TRUE(until([this] { return !reason_.empty(); })) << path;
        control_.Command("Play");
        EXPECT_EQ(control_.Position(), 0) << path;
    }
    void expectPlays(const std::string& path, int lengthMs, const char* type = "") {
        open(path, type);
        ASSERT_TRUE(until([&] { return std::abs(control_.Length() - lengthMs) <= 60 || !reason_.empty(); }))
            << path << " " << control_.Length();
        EXPECT_EQ(reason_, "") << path;
        control_.From(lengthMs - 500);
        control_.Command("Play");
        EXPECT_TRUE(until([this] { return done_ == 1; })) << path << " " << reason_;
        control_.Command("Close");
    }

    WindowsLoop loop_;
    MciStation station_{loop_, loop_.uiPost()};
    WindowsMciControl control_{station_};
    test::ScratchFolder folder_;
    std::string reason_;
    int done_ = 0;
};

/// WIN-19: Every kind of sound plays to its end, which is told once; ends of earlier plays are dropped
TEST_F(MciDevices, EveryKindOfSoundPlaysToItsEnd) {
    expectPlays(sample("scale.wav"), 4000);
    expectPlays(sample("waltz.mp3"), 3600);
    expectPlays(sample("bells.mp2"), 4000);
    expectPlays(sample("horn.au"), 3200);
    expectPlays(sample("steps.aiff"), 3000);
}

/// WIN-17
TEST_F(MciDevices, TheContentCountsNotTheName) {
    expectPlays(folder_.write("a.xyz", bytesOf(sample("scale.wav"))), 4000);
    expectPlays(folder_.write("b.wav", bytesOf(sample("waltz.mp3"))), 3600);
}

/// WIN-17
TEST_F(MciDevices, AnyNamePlays) {
    const std::string wave = bytesOf(sample("scale.wav"));
    expectPlays(folder_.write("a b%20c, 'd'.wav", wave), 4000);
    expectPlays(folder_.write("\xE6\xAD\x8C \xD0\xB6.wav", wave), 4000);
    expectPlays(folder_.write(std::string(150, 'n') + ".wav", wave), 4000);
}

/// WIN-22
TEST_F(MciDevices, WhatCannotBePlayedFailsWithAReason) {
    expectFailure(sample("NOTES.txt"));
    expectFailure(folder_.in("gone.wav"));
    expectFailure(folder_.in(""));
    expectFailure(folder_.write("empty.mp3", ""));
    expectFailure(folder_.write("noise.mp3", std::string(20000, '\x01')));
    expectFailure(folder_.write("cut.wav", bytesOf(sample("scale.wav")).substr(0, 30)));
    expectPlays(sample("scale.wav"), 4000);
}

/// WIN-18
TEST_F(MciDevices, ListsAreNotFollowed) {
    const std::string address = "http://127.0.0.1:9/a.mp3\r\n";
    expectFailure(folder_.write("list.mp3", "#EXTM3U\r\n" + address));
    expectFailure(folder_.write("list.asx", "<asx><entry><ref href=\"" + address + "\"/></entry></asx>"));
}

/// WIN-22: A sequence without its device and a disc without a drive fail with a reason
TEST_F(MciDevices, WithoutItsDeviceASequenceFails) {
    if (midiOutGetNumDevs() > 0) GTEST_SKIP() << "there is a device that plays MIDI";
    expectFailure(sample("chime.mid"), "Sequencer");
    EXPECT_EQ(reason_, mciErrorText(MCIERR_SEQ_NOMIDIPRESENT));
    expectFailure(sample("echo.rmi"), "Sequencer");
}

/// WIN-22
TEST_F(MciDevices, WithoutADriveADiscFails) {
    if (!discDriveOf({}).empty()) GTEST_SKIP() << "there is a drive";
    expectFailure("D:\\Track01.cda", "CDAudio");
}

/// WIN-23: Devices stop in a thread of their own, and a control may come back meanwhile
TEST_F(MciDevices, AControlComesBackWhileItsLastDeviceIsStillStopping) {
    for (int round = 0; round < 8; ++round) {
        WindowsMciControl other(station_);
        int ends = 0;
        other.Done.tie([&](int) { ++ends; });
        other.FileName(sample("scale.wav"));
        other.Command("Open");
        other.From(3900 - 100 * round);
        other.Command("Play");
        EXPECT_TRUE(round < 7 || until([&] { return ends == 1; })) << round;
    }
}

}  // namespace
}  // namespace corvane
