// SPDX-License-Identifier: GPL-3.0-or-later
// The window that finds an entry of the list.
#include "dialogs/frmFind.h"

#include "fake/form_text.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;
using Texts = std::vector<std::string>;

class Find : public PlayerFixture {
protected:
    Find() {
        player.conveniences.find = true;
        for (const char* path : kSongs) machine.addSound(path, 60000);
        setUpPanel();
        setList({kSongs[0], kSongs[1], kSongs[2], kSongs[3]});
    }
    void key(int code, int shift = kCtrlMask) {
        act([&] { panel().KeyDown.raise({code, shift}); });
    }
    void open() { key('F'); }
    frmFind* window() { return static_cast<frmFind*>(player.forms.find(FormId::Find)); }
    void type(const std::string& text) {
        act([&] { window()->txtFind.Text = text; });
    }
    void arrow(int code) {
        act([&] { window()->txtFind.KeyDown.raise({code, 0}); });
    }
    void press(FindControls::Button which) {
        act([&] { window()->cmdFind[which].Click.raise(); });
    }
    Texts rows() { return window()->lstFind.items(); }

    static constexpr std::array<const char*, 4> kSongs = {"/m/Björk/joga.wav", "/m/blur/song.wav", "/m/blur/girls.wav",
                                                          "/m/Air/sexy.wav"};
};

/// FIND-10: Ctrl+F and Ctrl+J over the panel open the window with the whole list, the present entry chosen
TEST_F(Find, OpensOverThePanelWithTheWholeList) {
    player.gFileIndex = 2;
    for (const int code : {'F', 'J'}) {
        key(code);
        ASSERT_NE(window(), nullptr);
        EXPECT_TRUE(window()->Visible);
        EXPECT_EQ(machine.windows.active(), window());
        EXPECT_EQ(rows(), (Texts{"001  joga", "002  song", "003  girls", "004  sexy"}));
        EXPECT_EQ(window()->lstFind.ListIndex, 2);
        EXPECT_EQ(window()->lblCount.Caption.get(), "4 files");
        EXPECT_TRUE(panel().Visible);
        EXPECT_TRUE(panel().Enabled);
        press(FindControls::kClose);
        EXPECT_EQ(window(), nullptr);
    }
}

/// FIND-11: Without the convenience, and with other keys held, the keys stay what they are
TEST_F(Find, OpensOnlyWhereItIsWanted) {
    key('F', kCtrlMask | kShiftMask);
    key('F', 0);
    EXPECT_EQ(window(), nullptr);
    player.conveniences.find = false;
    open();
    EXPECT_EQ(window(), nullptr);
}

/// FIND-12: Typing narrows the list by title and name; the first entry left is chosen, and Enter plays it
TEST_F(Find, TypingNarrowsAndEnterPlays) {
    open();
    type("G");
    EXPECT_EQ(rows(), (Texts{"001  joga", "002  song", "003  girls"}));
    EXPECT_EQ(window()->lblCount.Caption.get(), "3 of 4");
    type("wav gi");
    EXPECT_EQ(rows(), Texts{"003  girls"});
    press(FindControls::kPlayFound);
    EXPECT_EQ(window(), nullptr);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.openedPath, kSongs[2]);
    EXPECT_EQ(label(kNumberLabel), "003");
    EXPECT_EQ(machine.windows.active(), &panel());
}

/// FIND-12
TEST_F(Find, PlaysFromTheBeginningWhateverPlayedBefore) {
    PlayFile(player);
    machine.advance(5000);
    act([this] { PauseFile(player); });
    open();
    type("sexy");
    press(FindControls::kPlayFound);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(player.gFileIndex, 3);
}

/// FIND-13: The arrows of the field choose, held inside the list
TEST_F(Find, ArrowsChooseWhileTheFieldHasTheFocus) {
    open();
    arrow(kKeyDown);
    arrow(kKeyDown);
    EXPECT_EQ(window()->lstFind.ListIndex, 2);
    arrow(kKeyUp);
    EXPECT_EQ(window()->lstFind.ListIndex, 1);
    arrow(kKeyPageDown);
    EXPECT_EQ(window()->lstFind.ListIndex, 3);
    arrow(kKeyDown);
    EXPECT_EQ(window()->lstFind.ListIndex, 3);
    arrow(kKeyPageUp);
    arrow(kKeyUp);
    EXPECT_EQ(window()->lstFind.ListIndex, 0);
    type("nothing like it");
    arrow(kKeyDown);
    EXPECT_EQ(window()->lstFind.ListIndex, -1);
}

/// FIND-14: Where nothing is found, nothing can be played
TEST_F(Find, NothingFoundPlaysNothing) {
    open();
    type("zzz");
    EXPECT_TRUE(rows().empty());
    EXPECT_FALSE(window()->cmdFind[FindControls::kPlayFound].Enabled);
    EXPECT_EQ(window()->lblCount.Caption.get(), "Nothing found");
    act([this] { window()->lstFind.DblClick.raise(); });
    EXPECT_NE(window(), nullptr);
    EXPECT_EQ(state(), "stopped");
}

/// FIND-15: A row that is opened plays
TEST_F(Find, ADoubleClickPlays) {
    open();
    act([this] {
        window()->lstFind.ListIndex = 1;
        window()->lstFind.DblClick.raise();
    });
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
}

/// FIND-16: The window follows a list that is replaced or shuffled under it
TEST_F(Find, FollowsTheList) {
    open();
    type("s");
    act([this] { takeFiles(player, {true, {kSongs[3], kSongs[0]}}); });
    EXPECT_EQ(rows(), Texts{"001  sexy"});
    type("");
    act([this] { setList({kSongs[1], kSongs[2], kSongs[3], kSongs[0]}); });
    machine.random.numbers = {0.99, 0.5, 0.5};
    act([this] { ShuffleList(player); });
    ASSERT_EQ(rows().size(), 4U);
    EXPECT_EQ(rows()[1].substr(5), player.gFileTitle[1]);
    act([this] { takeFiles(player, {true, {}}); });
    EXPECT_TRUE(rows().empty());
    EXPECT_EQ(window()->lblCount.Caption.get(), "The list is empty");
}

/// FIND-17: It goes with the panel, and when a dialog comes in the panel's place
TEST_F(Find, GoesWithThePanel) {
    open();
    click(kEditor);
    machine.settle();
    EXPECT_EQ(window(), nullptr);
}

/// FIND-17
TEST_F(Find, GoesWhenThePlayerEnds) {
    open();
    act([this] { powerOff(player); });
    EXPECT_EQ(window(), nullptr);
}

/// FIND-18: Asked for again, the window that is there comes forward as it is
TEST_F(Find, IsThereOnce) {
    open();
    type("gi");
    machine.windows.activate(panel());
    open();
    EXPECT_EQ(machine.windows.active(), window());
    EXPECT_EQ(window()->txtFind.Text.get(), "gi");
}

/// FIND-19: 9,999 entries are listed and narrowed
TEST_F(Find, ALongListNarrows) {
    const int many = 9999;
    for (int i = 0; i < many; ++i) {
        const auto at = static_cast<std::size_t>(i);
        player.gFileTitle[at] = "Ärtist " + std::to_string(i) + " – a title of some length " + std::to_string(i % 97);
        player.gFilePath[at] = "/music/some/folder/" + player.gFileTitle[at] + ".wav";
    }
    player.gFileCount = many;
    ++player.lists;
    open();
    EXPECT_EQ(rows().size(), static_cast<std::size_t>(many));
    type("artist 98 len");
    EXPECT_GT(rows().size(), 100U);
    EXPECT_EQ(rows().front().substr(0, 4), "0099");
}

TEST_F(PlayerFixture, EachControlOfTheFindWindowIsWhatItIs) {
    const FindControls window;
    expectKeptText("find", formText(window));
}

/// FIND-21: With TEXTS entries are found by the tags of all files, which are read while the window is open
TEST_F(Find, FindsByTheTagsOfAllFiles) {
    player.conveniences.texts = true;
    machine.texts.readingMs = 100;
    machine.texts.files[kSongs[3]] = {"Sexy Boy", "Jean\x01", "Moon Safari", 1, nullptr};
    open();
    EXPECT_EQ(window()->lblCount.Caption.get(), "4 files, tags of 4 left");
    type("safari jean");
    EXPECT_TRUE(rows().empty());
    machine.advance(350);
    EXPECT_EQ(window()->lblCount.Caption.get(), "Nothing found, tags of 1 left");
    machine.advance(100);
    EXPECT_EQ(rows(), Texts{"004  Sexy Boy - Jean - Moon Safari  (sexy)"});
    EXPECT_EQ(window()->lblCount.Caption.get(), "1 of 4");
    EXPECT_TRUE(window()->cmdFind[FindControls::kPlayFound].Enabled);
    EXPECT_EQ(machine.texts.askedForWords.size(), 4U);
    press(FindControls::kClose);
    open();
    type("safari");
    EXPECT_EQ(rows(), Texts{"004  Sexy Boy - Moon Safari  (sexy)"}) << "what has been read is known";
    machine.advance(1000);
    EXPECT_EQ(machine.texts.askedForWords.size(), 4U);
}

/// FIND-27: An entry that is found by its tags shows them in front of its name: the first of them, and each that holds
///     a word; one that its name shows has its name alone
TEST_F(Find, WhatIsFoundByItsTagsShowsWhy) {
    player.conveniences.texts = true;
    machine.texts.files[kSongs[0]] = {"Straße", "Björk", "Post", 1, nullptr};
    machine.texts.files[kSongs[1]] = {"", "Björk", "Strasse", 1, nullptr};
    machine.texts.files[kSongs[2]] = {"Ä title that goes on and on", "Somebody", "", 1, nullptr};
    machine.texts.files[kSongs[3]] = {"Sexy Boy", "Air", "Moon Safari", 1, nullptr};
    open();
    machine.advance(1000);
    type("somebody");
    EXPECT_EQ(rows(), Texts{"003  Ä title that goes on and… - Somebody  (girls)"}) << "with room for what is found";
    type("goes on");
    EXPECT_EQ(rows(), Texts{"003  Ä title that goes on and on  (girls)"});
    type("BJORK");
    EXPECT_EQ(rows(), (Texts{"001  Straße - Björk  (joga)", "002  Björk  (song)"}));
    type("strasse");
    EXPECT_EQ(rows(), (Texts{"001  Straße  (joga)", "002  Björk - Strasse  (song)"}));
    type("safari boy");
    EXPECT_EQ(rows(), Texts{"004  Sexy Boy - Moon Safari  (sexy)"});
    type("joga post");
    EXPECT_EQ(rows(), Texts{"001  Straße - Post  (joga)"});
    type("sexy");
    EXPECT_EQ(rows(), Texts{"004  sexy"});
    type("");
    EXPECT_EQ(rows(), (Texts{"001  joga", "002  song", "003  girls", "004  sexy"}));
}

/// FIND-22: What is found meanwhile comes in its place; the entry that is chosen stays chosen
TEST_F(Find, WhatComesMovesNoSelection) {
    player.conveniences.texts = true;
    machine.texts.readingMs = 400;
    machine.texts.files[kSongs[0]] = {"a song", "", "", 0, nullptr};
    open();
    type("s");
    arrow(kKeyDown);
    ASSERT_EQ(rows(), (Texts{"002  song", "003  girls", "004  sexy"}));
    machine.advance(500);
    EXPECT_EQ(rows().front(), "001  a song  (joga)");
    EXPECT_EQ(window()->lstFind.ListIndex, 2);
    type("");
    machine.advance(2000);
    EXPECT_EQ(window()->lblCount.Caption.get(), "4 files");
}

/// FIND-23: Closed, the window has no more read; what the panel shows is read first; another list is read anew
TEST_F(Find, ReadsNoLongerThanItIsOpen) {
    player.conveniences.texts = true;
    machine.texts.readingMs = 1000;
    open();
    act([this] { PlayFile(player); });
    machine.advance(2500);
    EXPECT_EQ(machine.texts.askedForWords.size(), 1U);
    EXPECT_EQ(machine.texts.asked.size(), 2U) << "what plays and what comes next go before the others";
    act([this] { takeFiles(player, {true, {kSongs[3]}}); });
    machine.advance(5000);
    EXPECT_EQ(std::count(machine.texts.askedForWords.begin(), machine.texts.askedForWords.end(), kSongs[1]), 0);
    act([this] { takeFiles(player, {true, {kSongs[1], kSongs[2], kSongs[0]}}); });
    press(FindControls::kClose);
    const std::size_t asked = machine.texts.askedForWords.size();
    machine.advance(10'000);
    EXPECT_EQ(machine.texts.askedForWords.size(), asked);
    EXPECT_EQ(player.texts.leftToGather(), 0U);
}

TEST_F(Find, LongTagsAreCut) {
    player.conveniences.texts = true;
    std::string many;
    for (int i = 0; i < 300; ++i) many += "夜";
    machine.texts.files[kSongs[0]] = {many, many, many, 0, nullptr};
    open();
    machine.advance(100);
    EXPECT_LE(player.texts.words(kSongs[0]).size(), KnownTexts::kMostWords);
    EXPECT_EQ((player.texts.words(kSongs[0]).size() - 1) % 3, 0U) << "at a character's edge, with one line break";
}

/// FIND-20: Made larger, the list takes what there is more
TEST_F(Find, TheListGrowsWithTheWindow) {
    open();
    const float height = window()->lstFind.Height;
    const float width = window()->lstFind.Width;
    act([this] {
        window()->SetSize(window()->Width + 3000, window()->Height + 1500);
        window()->Resize.raise();
    });
    EXPECT_EQ(window()->lstFind.Height.get(), height + 1500);
    EXPECT_EQ(window()->lstFind.Width.get(), width + 3000);
    EXPECT_EQ(window()->cmdFind[FindControls::kClose].Left + window()->cmdFind[FindControls::kClose].Width,
              window()->lstFind.Left + window()->lstFind.Width);
}

}  // namespace
}  // namespace corvane
