// SPDX-License-Identifier: GPL-3.0-or-later
// A program folder in which somebody has put a file of 100 MB where a small one belongs.
#include <gtest/gtest.h>

#include <chrono>

#include "fake/player_fixture.h"
#include "files/posix_files.h"
#include "linux/pictures/qt_pictures.h"
#include "startup/forms.h"
#include "unit/linux/memory_peak.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLarge = 100'000'000;

/// The program's start over real files and pictures; windows and the rest are in memory.
struct LargeFiles : ::testing::Test {
    LargeFiles() {
        test::offscreenApplication();
        registerAllForms(player);
        fs::create_directory(folder.in("PANELSET"));
        for (const char* name : {"DEFAULT.BMP", "DEFAULT.CSV"})
            fs::copy_file(std::string(CORVANE_SOURCE_DIR "/PANELSET/") + name, folder.in("PANELSET/") + name);
        folder.write("song.wav", "");
        machine.media.sounds[folder.in("song.wav")] = {1000, ""};
        folder.write("KADO.INI", "[KADO]\r\nDELAYTIME=321\r\n");
        folder.write("FILE00.INI", "[FILELIST]\r\nLISTNAME=Long\r\nLIST000=song.wav|" + folder.in("song.wav") + "\r\n");
        machine.process.folder = folder.path();
    }
    ~LargeFiles() override { player.forms.clear(); }

    /// Makes the file longer behind its own beginning.
    void blowUp(const std::string& name, const std::string& filling) {
        std::string bytes = folder.bytes(name);
        bytes.reserve(kLarge + filling.size());
        while (bytes.size() < kLarge) bytes += filling;
        folder.write(name, bytes);
    }
    /// Starts up to the panel, bounded in time and memory.
    void start() {
        const test::MemoryPeak peak;
        const auto begin = std::chrono::steady_clock::now();
        machine.loop.enter([this] { startProgram(player); });
        machine.advance(2000);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
        EXPECT_LT(peak.megabytes(), 64);
    }
    bool panelIsUp() { return player.forms.find<MainPanelControls>() != nullptr && !machine.process.ending(); }

    test::TemporaryFolder folder;
    FakeMachine machine;
    QtPictures pictures;
    PosixFiles files;
    Ports ports{machine.loop,   machine.media, pictures,        machine.sound,   files,         machine.windows,
                machine.timers, machine.clock, machine.dialogs, machine.process, machine.random};
    Player player{ports};
};

TEST_F(LargeFiles, NoneOfThemStarts) {
    start();
    EXPECT_TRUE(panelIsUp());
    EXPECT_EQ(player.gDelayTime, 321);
    EXPECT_EQ(player.gFileCount, 1) << "the entry that a larger list has as well";
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

TEST_F(LargeFiles, SettingsActAsEmptyAndAreNotWrittenOver) {
    blowUp("KADO.INI", "DELAYTIME=5\r\n");
    start();
    EXPECT_TRUE(panelIsUp());
    EXPECT_EQ(player.gDelayTime, 500);
    EXPECT_GE(fs::file_size(folder.in("KADO.INI")), kLarge);
}

TEST_F(LargeFiles, AListActsAsEmpty) {
    blowUp("FILE00.INI", "LIST001=song.wav|" + folder.in("song.wav") + "\r\n");
    start();
    EXPECT_TRUE(panelIsUp());
    EXPECT_EQ(player.gFileCount, 0);
    EXPECT_GE(fs::file_size(folder.in("FILE00.INI")), kLarge);
}

TEST_F(LargeFiles, ASkinsTextCannotBeShown) {
    blowUp("PANELSET/DEFAULT.CSV", "panel,0,2,3,0,0,400,100,1\r\n");
    start();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "パネルを表示できません。");
    EXPECT_TRUE(machine.process.ending());
}

TEST_F(LargeFiles, ASkinsBitmapWithAnythingBehindItIsShown) {
    blowUp("PANELSET/DEFAULT.BMP", std::string(1000, 'x'));
    start();
    EXPECT_TRUE(panelIsUp());
}

TEST_F(LargeFiles, ASkinsBitmapOfAnUnreasonableSizeCannotBeShown) {
    std::string header(54, '\0');  // 6000 by 5556 pixels of 24 bits
    header.replace(0, 2, "BM");
    header[10] = 54;
    header[14] = 40;
    header.replace(18, 2, "\x70\x17");
    header.replace(22, 2, "\xB4\x15");
    header[26] = 1;
    header[28] = 24;
    folder.write("PANELSET/DEFAULT.BMP", header);
    blowUp("PANELSET/DEFAULT.BMP", std::string(1000, 'x'));
    start();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "パネルを表示できません。");
}

}  // namespace
}  // namespace corvane
