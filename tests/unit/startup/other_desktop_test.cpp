// SPDX-License-Identifier: GPL-3.0-or-later
// Files that another system's desktop wrote: the same bytes mean the same everywhere. This test runs on every system
// that the program is built for.
#include "unit/startup/startup_fixture.h"

namespace corvane {
namespace {

constexpr const char* kWindowsList =
    "[FILELIST]\r\nLISTNAME=Abend\r\nLIST000=Gru\xC3\x9F.wav|C:\\Musik\\Gru\xC3\x9F.wav\r\n"
    "LIST001=\x82\xA0.mp3|D:\\\x82\xA0.mp3\r\n";
constexpr const char* kLinuxList =
    "[FILELIST]\r\nLISTNAME=evening\r\nLIST000=song.wav|/home/me/song.wav\r\nLIST001=clip.avi|/media/disc/clip.avi\r\n";
constexpr const char* kSettings =
    "[KADO]\r\nBITMAPFILE=SLIM.BMP\r\nTEXTFILE=SLIM.CSV\r\nAUTOPLAY=ON\r\nINTERVAL=20\r\nPAGENUM=3\r\nPLAY_Click="
    "\xC3\xA9\r\n";

class OtherDesktop : public StartupFixture {};

TEST_F(OtherDesktop, ItsListsAreReadAndKeptByteForByte) {
    for (const std::string bytes : {kWindowsList, kLinuxList}) {
        machine.files.add("/app/FILE00.INI", bytes);
        const PlayList list = readPlayList(player, "/app/FILE00.INI");
        ASSERT_EQ(list.entries.size(), 2U);
        ASSERT_TRUE(writePlayList(player, "/app/FILE01.INI", list));
        const std::string written = machine.files.read("/app/FILE01.INI", 1U << 20U).value_or("");
        EXPECT_EQ(written.substr(0, bytes.size()), bytes);
        const PlayList again = readPlayList(player, "/app/FILE01.INI");
        EXPECT_EQ(again.entries[1].path, list.entries[1].path);
    }
}

TEST_F(OtherDesktop, ItsPathsStayAsTheyWereWritten) {
    machine.files.add("/app/FILE00.INI", kWindowsList);
    const PlayList list = readPlayList(player, "/app/FILE00.INI");
    EXPECT_EQ(list.listName, "Abend");
    EXPECT_EQ(list.entries[0].path, "C:\\Musik\\Gru\xC3\x9F.wav");
    EXPECT_EQ(list.entries[1].path, "D:\\\x82\xA0.mp3") << "bytes that are no UTF-8";
}

TEST_F(OtherDesktop, ItsSettingsAreInForce) {
    machine.files.add("/app/KADO.INI", kSettings);
    readSkinNames(player);
    readSettings(player);
    EXPECT_EQ(player.gBitmapFileName, "SLIM.BMP");
    EXPECT_TRUE(player.gAutoPlay);
    EXPECT_EQ(player.gInterval, 20);
    EXPECT_EQ(player.gPageNumber, 3);
    EXPECT_EQ(player.gKeyPlay, 0xE9);
    WriteSetting(player, "INTERVAL", "40");
    std::string wanted = kSettings;
    wanted.replace(wanted.find("20"), 2, "40");
    EXPECT_EQ(machine.files.read("/app/KADO.INI", 1U << 20U), wanted);
}

}  // namespace
}  // namespace corvane
