// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <functional>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "unit/panel/dropping.h"

namespace corvane {
namespace {

struct Dropped : Dropping {
    Dropped() {
        for (const char* each : {"a", "b", "c"}) {
            machine.addSound("/m/" + std::string(each) + ".wav", 5000);
        }
        player.conveniences.plays = true;
        setUpPanel();
    }
};

/// DROP-18: With PLAYS the first file of a drop plays at once, in place of what played
TEST_F(Dropped, PlayAtOnceInPlaceOfWhatPlayed) {
    drop({"/m/a.wav", "/m/b.wav"});
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.openedPath, "/m/a.wav");
    drop({"/m/c.wav"});
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.openedPath, "/m/c.wav");
    EXPECT_EQ(player.gFileCount, 1);
}

/// DROP-19: With Shift they are added to the end of the list, and what plays goes on
TEST_F(Dropped, WithShiftAreAddedToTheEnd) {
    drop({"/m/a.wav"});
    player.gStartPosition[0] = 7;
    drop({"/m/b.wav", "/m/none.wav", "/m/c.wav"}, true);
    EXPECT_EQ(player.openedPath, "/m/a.wav");
    EXPECT_EQ(player.gFileCount, 3);
    EXPECT_EQ(player.gFileTitle[2], "c");
    EXPECT_EQ(player.gStartPosition[0], 7) << "its entries keep what they have";
    EXPECT_EQ(label(kTotalLabel), "3");
    act([&] { mdlPublicFunction::NextFile(player); });
    EXPECT_EQ(player.openedPath, "/m/b.wav");
}

TEST_F(Dropped, WithShiftOnNoListAreTheListAndDoNotPlay) {
    drop({"/m/b.wav"}, true);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(label(kTitleLabel), "b");
}

TEST_F(Dropped, WithShiftOnAFullListStayOut) {
    setList(std::vector<std::string>(mdlDefinePublic::maxFiles(player), "/m/a.wav"));
    const auto full = player.gFileCount;
    drop({"/m/b.wav"}, true);
    EXPECT_EQ(player.gFileCount, full);
}

/// DROP-20: With PLAYS a drop without a file that is played leaves the list, and a box says why
TEST_F(Dropped, WithoutAFileThatIsPlayedLeaveTheListAndAreTold) {
    drop({"/m/a.wav"});
    drop({"/m/notes.txt", "/m/gone.wav"});
    act([&] { panel().OLEDragDrop.raise({}); });
    EXPECT_EQ(player.openedPath, "/m/a.wav");
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(state(), "playing");
    ASSERT_EQ(machine.dialogs.boxes.size(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[0].text,
              "/m/notes.txt: left out, because it is none of the kinds that are played\n"
              "/m/gone.wav: left out, because there is no such file");
    EXPECT_EQ(machine.dialogs.boxes[1].text, "What was dropped holds no files.");
    drop({"1", "2", "3", "4", "5", "6", "7"});
    EXPECT_NE(machine.dialogs.boxes[2].text.find("\nand 2 more"), std::string::npos);
}

/// DROP-21: With PLAYS files that are opened, at the start or handed over, and of which none is played are told in a
/// box
TEST_F(Dropped, HandedOverWithoutAFileThatIsPlayedAreTold) {
    drop({"/m/a.wav"});
    const auto handOver = [this] {
        DropData handed{true, {"/m/notes.txt"}};
        handed.toPlay = true;
        act([&] { panel().OLEDragDrop.raise(handed); });
        machine.advance(1);
    };
    handOver();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/m/notes.txt: left out, because it is none of the kinds that are played");
    EXPECT_EQ(state(), "playing");
    player.conveniences.plays = false;
    handOver();
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(player.gFileCount, 1);
}

/// DROP-35: With PLAYS the names of files that are opened and are left out are told in one box, also where others play;
///     of a drop the others play, and nothing is told
TEST_F(Dropped, HandedOverWithOthersAreToldToo) {
    const auto give = [this](bool toOpen) {
        DropData given{true, {"/m/notes.txt", "/m/a.wav", "/m/gone.wav"}};
        given.toPlay = toOpen;
        act([&] { panel().OLEDragDrop.raise(given); });
        EXPECT_EQ(player.openedPath, "/m/a.wav");
        EXPECT_EQ(state(), "playing");
    };
    give(false);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    give(true);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text,
              "/m/notes.txt: left out, because it is none of the kinds that are played\n"
              "/m/gone.wav: left out, because there is no such file");
    player.conveniences.plays = false;
    give(true);
    EXPECT_EQ(machine.dialogs.boxes.size(), 1U) << "the stated silence";
}

/// DROP-36: An empty folder beside files that are not played is told in the one box with them
TEST_F(Dropped, AnEmptyFolderBesideOtherFilesIsToldInOneBox) {
    player.conveniences.lists = player.conveniences.names = true;
    machine.files.addFolder("/empty");
    drop({"/empty", "/m/readme.txt"});
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0].text,
              "/empty: left out, because nothing in it can be played here\n"
              "/m/readme.txt: left out, because it is none of the kinds that are played");
    player.conveniences.plays = false;
    drop({"/empty", "/m/readme.txt"});
    ASSERT_EQ(machine.dialogs.boxes.size(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[1].text, "/empty: left out, because nothing in it can be played here");
}

/// The stated way, beside it.
TEST_F(Dropped, WithoutTheConvenienceDoNotPlay) {
    player.conveniences.plays = false;
    drop({"/m/a.wav"}, true);
    drop({"/m/b.wav"}, true);
    EXPECT_EQ(state(), "stopped");
    EXPECT_EQ(player.gFileCount, 1);
    drop({"/m/notes.txt"});
    EXPECT_EQ(player.gFileCount, 0);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
}

}  // namespace
}  // namespace corvane
