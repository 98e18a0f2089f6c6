// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are looked for while the panel goes on.
#include <gtest/gtest.h>

#include <functional>

#include "engine/left_out.h"
#include "engine/mdlPublicFunction.h"
#include "engine/media_session.h"
#include "engine/opened_lists.h"
#include "engine/panel_texts.h"
#include "storage/play_lists.h"
#include "unit/panel/dropping.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

struct Reading : Dropping {
    Reading() {
        ports.work = &machine.work;
        machine.work.taskMs = 2000;
        for (const char* each : {"/m/a.wav", "/m/b.wav", "/al/1.wav", "/al/2.wav", "/al/sub/3.wav", "/other/x.wav"}) {
            machine.addSound(each, 60000);
        }
        player.conveniences.plays = player.conveniences.lists = player.conveniences.names = true;
        setUpPanel();
    }
    void cmdClick(int index) { button(index).Click.raise(); }
    void escape() {
        act([&] { panel().KeyDown.raise({kKeyEscape, 0}); });
    }
};

/// DROP-28: Folders and lists are looked for while the player goes on; then the drop comes whole
TEST_F(Reading, TheDropComesWhenAllWasFound) {
    drop({"/m/a.wav"});
    ASSERT_EQ(player.openedPath, "/m/a.wav") << "a plain file is taken at once";
    drop({"/al", "/m/b.wav"});
    machine.advance(1900);
    EXPECT_EQ(player.openedPath, "/m/a.wav");
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(state(), "playing");
    machine.advance(200);
    EXPECT_EQ(player.gFileCount, 4);
    EXPECT_EQ(player.gFileTitle[2], "3");
    EXPECT_EQ(player.openedPath, "/al/1.wav");
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(machine.timers.running(), 1) << "the panel's own";
}

TEST_F(Reading, ManyNamesAreLookedForSo) {
    drop(std::vector<std::string>(kFewNames, "/m/a.wav"));
    EXPECT_EQ(machine.work.begun, 0);
    drop(std::vector<std::string>(kFewNames + 1, "/m/b.wav"));
    EXPECT_EQ(machine.work.begun, 1);
    machine.advance(2100);
    EXPECT_EQ(player.openedPath, "/m/b.wav");
}

/// DROP-22: While it takes long the panel's text tells how many files were found; then what stood there is back
TEST_F(Reading, IsToldOnTheDisplay) {
    drop({"/m/a.wav"});
    const std::string before = label(kTextLabel);
    drop({"/al"}, true);
    machine.advance(200);
    EXPECT_EQ(label(kTextLabel), before) << "what is done soon is not worth telling";
    machine.advance(100);
    EXPECT_EQ(label(kTextLabel), "Reading… 0 files");
    machine.advance(1000);
    EXPECT_EQ(label(kTextLabel), "Reading… 3 files");
    act([this] { PlayFile(player); });
    machine.advance(1000);
    EXPECT_EQ(label(kTextLabel), before);
    EXPECT_EQ(player.gFileCount, 4);
    EXPECT_EQ(player.openedPath, "/m/a.wav");
}

TEST_F(Reading, WhatIsOpenedMeanwhileIsToldBehindIt) {
    drop({"/m/a.wav"});
    drop({"/al"}, true);
    machine.advance(1500);
    panel().lblMainPanel[kTextLabel].Caption = "something else";
    machine.advance(300);
    EXPECT_EQ(label(kTextLabel), "Reading… 3 files");
    machine.advance(500);
    EXPECT_EQ(label(kTextLabel), "something else");
}

/// DROP-23: Stop gives up the reading and closes what plays; Escape only the reading. The list stays as it was
TEST_F(Reading, StopAndEscapeGiveItUp) {
    drop({"/m/a.wav"});
    drop({"/al"});
    machine.advance(1500);
    escape();
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(label(kTextLabel).find("Reading"), std::string::npos);
    machine.advance(5000);
    EXPECT_EQ(player.gFileCount, 1);

    const std::vector<std::function<void()>> stops = {
        [this] { click(kStop); }, [this] { typeKey(panel(), static_cast<char>(player.gKeyStop)); },
        [this] {
            MediaSession session(player);
            machine.loop.enter([] {});  // it looks when a handler is over
            machine.loop.enter([&] { session.stop(); });
        },
        [this] {
            auto& menu = *player.forms.find<MenuWindowControls>();
            machine.loop.enter([&] { menu.PlayCmd[MenuWindowControls::kStopEntry].Click.raise(); });
        }};
    for (std::size_t i = 0; i < stops.size(); ++i) {
        SCOPED_TRACE(i);
        drop({"/m/a.wav"});
        drop({"/al"});
        machine.advance(500);
        ASSERT_TRUE(player.reading.isReading());
        stops[i]();
        EXPECT_FALSE(player.reading.isReading());
        machine.advance(5000);
        EXPECT_EQ(player.gFileCount, 1);
        EXPECT_EQ(state(), "stopped");
    }
    escape();
}

/// DROP-24: A drop that replaces the list takes the place of the one that is being read; one that adds comes behind it
TEST_F(Reading, ASecondDrop) {
    drop({"/al"});
    machine.advance(1000);
    drop({"/other"});
    machine.advance(2100);
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(player.openedPath, "/other/x.wav");
    drop({"/al"});
    drop({"/other"}, true);
    drop({"/m/b.wav"}, true);
    machine.advance(7000);
    ASSERT_EQ(player.gFileCount, 5);
    EXPECT_EQ(player.gFilePath[3], "/other/x.wav");
    EXPECT_EQ(player.gFilePath[4], "/m/b.wav");
    EXPECT_EQ(player.openedPath, "/al/1.wav");
    drop({"/al"});
    drop({"/m/b.wav"});
    machine.advance(5000);
    EXPECT_EQ(player.gFileCount, 1) << "plain files replace it as well";
}

TEST_F(Reading, DropsByTheHundredAreLeftOut) {
    drop({"/al"});
    for (std::size_t i = 1; i < ListReading::kMostAsked; ++i) drop({"/other"}, true);
    EXPECT_TRUE(machine.dialogs.boxes.empty());
    drop({"/other"}, true);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    machine.advance(2000 * 40);
    EXPECT_EQ(player.gFileCount, 3 + static_cast<int>(ListReading::kMostAsked) - 1);
}

/// DROP-25: A list that comes meanwhile stays: what was being read to replace the one before is not taken
TEST_F(Reading, AListThatComesMeanwhileStays) {
    drop({"/al"});
    machine.advance(1000);
    act([this] { takeFiles(player, {true, {"/m/b.wav"}}); });
    machine.advance(5000);
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(player.gFilePath[0], "/m/b.wav");
}

/// DROP-25
TEST_F(Reading, TheEditorAndTheSettingsGiveItUp) {
    for (const FormId id : {FormId::FileList, FormId::Custom}) {
        drop({"/al"});
        machine.advance(1000);
        act([&] { id == FormId::FileList ? cmdClick(kEditor) : panel().pctMainPanel.Click.raise(); });
        ASSERT_NE(player.forms.find(id), nullptr);
        EXPECT_FALSE(player.reading.isReading());
        machine.advance(5000);
        EXPECT_EQ(state(), "stopped");
        act([&] { player.forms.find(id)->CloseRequest.raise(false); });
    }
}

TEST_F(Reading, NothingToPlayIsToldOf) {
    machine.files.add("/texts/notes.txt");
    drop({"/m/a.wav"});
    drop({"/texts"});
    drop({"/m/none.txt", "/m/gone.wav"}, true);
    machine.advance(5000);
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_EQ(state(), "playing");
    ASSERT_EQ(machine.dialogs.boxes.size(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[0].text, "/texts: left out, because nothing in it can be played here");
    EXPECT_EQ(machine.dialogs.boxes[1].text,
              "/m/none.txt: left out, because it is none of the kinds that are played\n"
              "/m/gone.wav: left out, because there is no such file");
    machine.work.refuses = true;
    drop({"/al"});
    machine.advance(5000);
    ASSERT_EQ(machine.dialogs.boxes.size(), 3U);
    EXPECT_NE(machine.dialogs.boxes[2].text.find("no thread"), std::string::npos);
    EXPECT_EQ(player.gFileCount, 1);
}

/// DROP-26: Power off, and whatever closes the panel, gives it up
TEST_F(Reading, PowerOffGivesItUp) {
    drop({"/al"});
    machine.advance(500);
    act([this] { powerOff(player); });
    EXPECT_FALSE(player.reading.isReading());
    machine.advance(10'000);
    EXPECT_EQ(player.gFileCount, 0);
}

/// DROP-27: What a start or another one was given is looked for so as well; it is the list, empty until then, and plays
TEST_F(Reading, WhatAStartWasGiven) {
    player.gListFileStem = "/FILE";
    machine.process.opened = {"/al"};
    act([this] { loadListAtStart(player); });
    EXPECT_EQ(player.gFileCount, 0);
    machine.advance(2100);
    EXPECT_EQ(player.gFileCount, 3);
    EXPECT_EQ(player.openedPath, "/al/1.wav");
    act([&] { panel().OLEDragDrop.raise({true, {"/other"}, true}); });
    machine.advance(2100);
    EXPECT_EQ(player.openedPath, "/other/x.wav");
}

/// DROP-27
TEST_F(PlayerFixture, WhatAStartWasGivenMayBeFoundBeforeThePanelIsThere) {
    ports.work = &machine.work;
    player.conveniences.lists = player.conveniences.names = true;
    machine.addSound("/al/1.wav", 60000);
    machine.files.add("/FILE00.INI", "[LIST]\r\nLIST0=a.wav|/m/a.wav\r\n");
    player.gListFileStem = "/FILE";
    for (const bool plays : {true, false}) {
        player.playsAtStart = false;
        machine.process.opened = plays ? std::vector<std::string>{"/al"} : std::vector<std::string>();
        machine.process.arguments = plays ? "" : "/al";
        machine.loop.enter([this] { loadListAtStart(player); });
        EXPECT_EQ(player.gFileCount, 0);
        machine.settle();
        EXPECT_EQ(player.gFileCount, 1);
        EXPECT_EQ(player.playsAtStart, plays);
        EXPECT_FALSE(player.media.isOpen()) << "the start plays it when the panel is there";
    }
}

/// Without the conveniences nothing is read elsewhere: the stated ways are done when the drop is.
TEST_F(Reading, TheStatedWaysWait) {
    player.conveniences = {};
    drop({"/al", "/m/a.wav"});
    drop(std::vector<std::string>(200, "/m/b.wav"));
    EXPECT_EQ(machine.work.begun, 0);
    EXPECT_EQ(player.gFileCount, 200);
}

}  // namespace
}  // namespace corvane
