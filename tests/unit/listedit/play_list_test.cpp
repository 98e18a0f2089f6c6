// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's list: add, delete, drop, read, save, and its way into the player.
#include <algorithm>

#include "editor_fixture.h"
#include "types/numbers.h"

namespace corvane {
namespace {

using Editor = FileListControls;
using Texts = std::vector<std::string>;

class EditorInMusic : public EditorFixture {
protected:
    EditorInMusic() {
        open();
        goTo("/home/ann/Music");
    }
};

/// EDIT-27: Add takes the selected files in the box's order with their full paths; without a current one it does
///     nothing
/// EDIT-29: Add clears the file box's current item
TEST_F(EditorInMusic, AddTakesTheSelectedFilesInTheirOrder) {
    pick(editor().fleFileList, {2, 0});
    push(Editor::kAdd);
    EXPECT_EQ(names(), (Texts{"a.wav", "c.GIF"}));
    EXPECT_EQ(paths(), (Texts{"/home/ann/Music/a.wav", "/home/ann/Music/c.GIF"}));
    EXPECT_EQ(editor().fleFileList.ListIndex, -1);
}

/// EDIT-27
TEST_F(EditorInMusic, AddWithoutACurrentFileDoesNothing) {
    editor().fleFileList.select(1, true);
    push(Editor::kAdd);
    EXPECT_TRUE(names().empty());
}

/// EDIT-30: Add All takes every listed file; with none it does nothing
TEST_F(EditorInMusic, AddAllTakesEveryListedFile) {
    push(Editor::kAddAll);
    EXPECT_EQ(names(), (Texts{"a.wav", "b.mid", "c.GIF", "d.aiff"}));
    EXPECT_EQ(paths()[3], "/home/ann/Music/d.aiff");
}

/// EDIT-30
TEST_F(EditorInMusic, AddAllOfAnEmptyFolderChangesNothing) {
    goTo("/home/ann/Videos");
    setRows({{"a.wav", "/x/a.wav"}});
    push(Editor::kAddAll);
    EXPECT_EQ(names(), Texts{"a.wav"});
}

/// EDIT-31: A double-click in the file box adds that one file
TEST_F(EditorInMusic, ADoubleClickOnAFileAddsThatOneOnly) {
    editor().fleFileList.select(0, true);
    doubleClick(editor().fleFileList, 1);
    EXPECT_EQ(names(), Texts{"b.mid"});
    EXPECT_EQ(paths(), Texts{"/home/ann/Music/b.mid"});
}

/// EDIT-08: Names and paths stand side by side and always have the same length
/// EDIT-39: A double-click on an entry removes it
TEST_F(EditorInMusic, ADoubleClickOnAnEntryRemovesItFromBothLists) {
    push(Editor::kAddAll);
    doubleClick(editor().lstFileList[0], 1);
    EXPECT_EQ(names(), (Texts{"a.wav", "c.GIF", "d.aiff"}));
    EXPECT_EQ(paths(), (Texts{"/home/ann/Music/a.wav", "/home/ann/Music/c.GIF", "/home/ann/Music/d.aiff"}));
    EXPECT_EQ(editor().lstFileList[0].ListIndex, -1);
}

/// EDIT-39
TEST_F(EditorInMusic, ADoubleClickBesideTheEntriesRemovesNothing) {
    push(Editor::kAddAll);
    machine.loop.enter([&] { editor().lstFileList[0].DblClick.raise(); });
    EXPECT_EQ(names().size(), 4U);
}

/// EDIT-37: Delete removes every selected entry and leaves none current; without a current one it does nothing
/// EDIT-08
TEST_F(EditorInMusic, DeleteRemovesAllSelectedEntries) {
    push(Editor::kAddAll);
    pick(editor().lstFileList[0], {0, 2, 3});
    push(Editor::kDelete);
    EXPECT_EQ(names(), Texts{"b.mid"});
    EXPECT_EQ(paths(), Texts{"/home/ann/Music/b.mid"});
    EXPECT_EQ(editor().lstFileList[0].ListIndex, -1);
}

/// EDIT-37
TEST_F(EditorInMusic, DeleteWithoutACurrentEntryDoesNothing) {
    push(Editor::kAddAll);
    editor().lstFileList[0].select(1, true);
    push(Editor::kDelete);
    EXPECT_EQ(names().size(), 4U);
}

/// EDIT-38: Clear empties list and name
/// EDIT-08
TEST_F(EditorInMusic, ClearEmptiesTheListAndItsName) {
    push(Editor::kAddAll);
    editor().txtListName.Text = "Morning";
    push(Editor::kClear);
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(paths().empty());
    EXPECT_EQ(editor().txtListName.Text.get(), "");
}

/// EDIT-09: The horizontal range is the widest name and 80
TEST_F(EditorInMusic, TheHorizontalRangeIsTheWidestNameAndEighty) {
    push(Editor::kAddAll);
    EXPECT_EQ(editor().lstFileList[0].HorizontalExtent, 6 * 8 + 80);
    doubleClick(editor().lstFileList[0], 3);
    EXPECT_EQ(editor().lstFileList[0].HorizontalExtent, 5 * 8 + 80);
    push(Editor::kClear);
    EXPECT_EQ(editor().lstFileList[0].HorizontalExtent, 80);
}

/// EDIT-32: Files dropped on the play list are added when they are of an accepted kind: a .gif is, a .txt is not
/// EDIT-35: A dropped file is shown under the name that the disk gives, hidden ones included
TEST_F(EditorInMusic, ADropAddsFilesOfTheAcceptedKindsUnderTheNameTheDiskGives) {
    machine.files.caseSensitive = true;
    machine.files.add("/pics/x.gif");
    machine.files.addHidden("/pics/hidden.bmp");
    setRows({{"old.wav", "/x/old.wav"}});
    drop({true, {"/pics/x.gif", "/home/ann/Music/notes.txt", "/pics/hidden.bmp"}});
    EXPECT_EQ(names(), (Texts{"old.wav", "x.gif", "hidden.bmp"}));
    EXPECT_EQ(paths(), (Texts{"/x/old.wav", "/pics/x.gif", "/pics/hidden.bmp"}));
}

/// EDIT-33: Other data adds nothing
TEST_F(EditorInMusic, ADropOfOtherDataOrOfAFileThatIsGoneAddsNothing) {
    drop({false, {"/home/ann/Music/a.wav"}});
    drop({true, {"/home/ann/Music/gone.wav"}});
    EXPECT_TRUE(names().empty());
}

/// EDIT-36: A file in a folder with a dot is skipped
TEST_F(EditorInMusic, ADropFromAFolderWithADotIsSkipped) {
    machine.files.add("/my.music/song.mp3");
    drop({true, {"/my.music/song.mp3"}});
    EXPECT_TRUE(names().empty());
}

/// EDIT-34: A doubled backslash of a root folder is made single
/// EDIT-35
TEST_F(EditorFixture, ADropFromARootFolderLosesTheDoubledBackslash) {
    machine.files.slash = '\\';
    machine.files.caseSensitive = false;
    machine.files.add("C:\\Tune.MID");
    open();
    drop({true, {"C:\\\\tune.mid"}});
    EXPECT_EQ(names(), Texts{"Tune.MID"});
    EXPECT_EQ(paths(), Texts{"C:\\tune.mid"});
}

/// EDIT-22: A missing file is an empty list without a name
/// EDIT-18
TEST_F(EditorFixture, AListThatIsMissingIsEmptyWithoutAName) {
    open();
    EXPECT_TRUE(names().empty());
    EXPECT_TRUE(paths().empty());
    EXPECT_EQ(editor().txtListName.Text.get(), "");
}

/// EDIT-21: An entry whose name is empty ends the reading, whatever follows
TEST_F(EditorFixture, ReadingEndsAtTheFirstEntryWithoutAName) {
    writeList("/app/FILE00.INI", "LIST000=a.wav|/x/a.wav\r\nLIST001=|/x/b.wav\r\nLIST002=c.wav|/x/c.wav\r\n");
    open();
    EXPECT_EQ(names(), Texts{"a.wav"});
}

/// EDIT-20: An entry with a comma and no bar gives name and path
TEST_F(EditorFixture, AnEntryOfTheCommaFormIsRead) {
    writeList("/app/FILE00.INI", "LIST000=a.wav,C:\\a.wav\r\n");
    open();
    EXPECT_EQ(names(), Texts{"a.wav"});
    EXPECT_EQ(paths(), Texts{"C:\\a.wav"});
}

/// EDIT-17: Both number buttons, a change of number and the opening clear both lists first
TEST_F(EditorFixture, BothNumberButtonsReadTheListAgain) {
    writeList("/app/FILE00.INI", "LISTNAME=One\r\nLIST000=a.wav|/x/a.wav\r\n");
    open();
    for (const int button : {Editor::kList, Editor::kPage}) {
        push(Editor::kClear);
        push(button);
        EXPECT_EQ(names(), Texts{"a.wav"});
        EXPECT_EQ(editor().txtListName.Text.get(), "One");
    }
}

/// LIST-26: The question names page and list counted from 1, in an OK and Cancel box with a question mark
/// LIST-27: Anything but OK writes nothing
/// EDIT-23: It asks by page and list number, and writes at OK alone
TEST_F(EditorFixture, SaveAsksByPageAndListNumber) {
    player.gPageNumber = 2;
    player.gListNumber = 9;
    open();
    machine.dialogs.answers.push_back(Answer::Cancel);
    push(Editor::kSave);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_EQ(machine.dialogs.boxes[0],
              (FakeDialogs::Box{"PLAY PAGE 3 LIST 10 Save OK?", "Corvane", Buttons::OkCancel, Icon::Question}));
    EXPECT_TRUE(machine.calls("files").empty());
    EXPECT_FALSE(machine.files.has("/app/FILE29.INI"));
}

/// EDIT-105: Rows that a list does not take stay unsaved, and with LONG a box says so
TEST_F(EditorFixture, RowsThatAListDoesNotTakeStayUnsaved) {
    for (const bool isLong : {false, true}) {
        machine.dialogs.boxes.clear();
        player.conveniences.longLists = isLong;
        open();
        std::vector<ListEntry> rows;
        for (std::size_t i = 0; i <= mdlDefinePublic::maxFiles(player); ++i) rows.push_back({"a.wav", "/x/a.wav"});
        setRows(rows);
        save();
        const std::string& told = machine.dialogs.boxes.back().text;
        EXPECT_EQ(machine.dialogs.boxes.size(), isLong ? 2U : 1U);
        EXPECT_EQ(told, isLong ? "A list takes 9999 entries. The last 1 of this one are not saved."
                               : "PLAY PAGE 1 LIST 1 Save OK?");
    }
}

/// LIST-28: LISTNAME takes the name field's text
/// EDIT-19: Entries are read up to the first that ends the list: three saved ones are three, though 256 keys stand
///     there
/// EDIT-24: Name and all 256 entries are written, the unused ones as the bar
/// LIST-29
TEST_F(EditorFixture, SaveWritesTheNameAndAll256EntriesAtOnce) {
    open();
    setRows({{"a.wav", "/x/a.wav"}, {"b.mid", "/x/b.mid"}, {"c.gif", "/x/c.gif"}});
    editor().txtListName.Text = "Morning";
    machine.clearCalls();
    save();
    EXPECT_EQ(machine.calls("files"), Texts{"files.replace /app/FILE00.INI"});
    std::string expected = "[FILELIST]\r\nLISTNAME=Morning\r\nLIST000=a.wav|/x/a.wav\r\nLIST001=b.mid|/x/b.mid\r\n";
    expected += "LIST002=c.gif|/x/c.gif\r\n";
    for (int i = 3; i < 256; ++i) expected += "LIST" + zeroPadded(i, 3) + "=|\r\n";
    EXPECT_EQ(machine.files.bytes("/app/FILE00.INI"), expected);

    push(Editor::kClear);
    push(Editor::kList);
    EXPECT_EQ(names(), (Texts{"a.wav", "b.mid", "c.gif"}));
    EXPECT_EQ(editor().txtListName.Text.get(), "Morning");
}

/// EDIT-26: A save that fails says so in one box and keeps file and edits
TEST_F(EditorFixture, ASaveThatFailsSaysSoAndKeepsTheFileAndTheEdits) {
    writeList("/app/FILE00.INI", "LIST000=old.wav|/x/old.wav\r\n");
    open();
    setRows({{"a.wav", "/x/a.wav"}});
    editor().txtListName.Text = "Morning";
    const std::string before = machine.files.bytes("/app/FILE00.INI");
    machine.files.failReplace = true;
    save();
    ASSERT_EQ(machine.dialogs.boxes.size(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[1],
              (FakeDialogs::Box{"/app/FILE00.INI Can't save!!", "Corvane", Buttons::Ok, Icon::Stop}));
    EXPECT_EQ(machine.files.bytes("/app/FILE00.INI"), before);
    EXPECT_EQ(names(), Texts{"a.wav"});
    EXPECT_EQ(editor().txtListName.Text.get(), "Morning");
}

/// LIST-37: A path that is longer than a list can keep is told by the save, which saves all the rest
TEST_F(EditorFixture, APathThatAListCannotKeepIsToldByTheSave) {
    open();
    const std::string longest = "/x/" + std::string(502, 'a') + ".wav";
    ASSERT_EQ(longest.size(), 509U);
    setRows({{"a.wav", longest}, {"b.wav", "/x/b.wav"}});
    save();
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U) << "the question alone";
    EXPECT_EQ(readPlayList(player, "/app/FILE00.INI").entries.at(0).path, longest);

    setRows({{"a.wav", longest + "2"}, {"b.wav", "/x/b.wav"}, {"c.wav", longest + "34"}});
    save();
    ASSERT_EQ(machine.dialogs.boxes.size(), 3U);
    EXPECT_EQ(machine.dialogs.boxes[2],
              (FakeDialogs::Box{longest + "2 Can't save!!\r\nThe path is longer than a list can keep. So are 1 more.",
                                "Corvane", Buttons::Ok, Icon::Stop}));
    EXPECT_EQ(readPlayList(player, "/app/FILE00.INI").entries.at(1).path, "/x/b.wav") << "the others are saved";
}

/// COM-29
TEST_F(EditorFixture, APathThatAListCannotKeepMakesNoLineOfTheBox) {
    open();
    const std::string rest = std::string(510, 'a') + ".wav";
    setRows({{"a.wav", "/x\r\nSaved.\n" + rest}});
    save();
    ASSERT_EQ(machine.dialogs.boxes.size(), 2U);
    EXPECT_EQ(machine.dialogs.boxes[1].text,
              "/x  Saved. " + rest + " Can't save!!\r\nThe path is longer than a list can keep.");
}

/// EDIT-25: Entries past the 256th stay in the editor and go neither into the file nor into the player
/// LIST-31, EDIT-42
TEST_F(EditorFixture, EntriesPast256StayInTheEditorOnly) {
    open();
    std::vector<ListEntry> rows;
    for (int i = 0; i < 300; ++i) rows.push_back({std::to_string(i) + ".wav", "/x/" + std::to_string(i) + ".wav"});
    setRows(rows);
    save();
    EXPECT_EQ(names().size(), 300U);
    const PlayList saved = readPlayList(player, "/app/FILE00.INI");
    ASSERT_EQ(saved.entries.size(), 256U);
    EXPECT_EQ(saved.entries[255].name, "255.wav");
    push(Editor::kOk);
    EXPECT_EQ(player.gFileCount, 256);
    EXPECT_EQ(player.gFilePath[255], "/x/255.wav");
}

/// SET-53: Window mode, filter, zooms, list and page are written as plain decimal numbers, the interval as the editor's
///     text
/// EDIT-40: OK writes filter, zooms, interval, list and page into the settings
/// SET-03, EDIT-07
TEST_F(EditorFixture, OkWritesTheChoicesAndTheNumbers) {
    open();
    combo(0).ListIndex = 4;
    combo(1).ListIndex = 2;
    combo(2).ListIndex = 3;
    combo(3).Text = "33";
    machine.loop.enter([&] { editor().hscrFileList.Value = 6; });
    machine.loop.enter([&] { editor().hscrPageList.Value = 2; });
    push(Editor::kOk);
    EXPECT_EQ(machine.files.bytes("/app/KADO.INI"),
              "[KADO]\r\nPATTERN=4\r\nMOVIEZOOM=2\r\nIMAGEZOOM=3\r\nINTERVAL=33\r\nFILENUM=6\r\nPAGENUM=2\r\n");
}

/// EDIT-41: It clears what belongs to the order of the list before
/// EDIT-42: It takes the list, saved or not: titles cut at their first dot, full paths, 256 at most
/// EDIT-43: The panel shows number, title and count, or nothing for an empty list, and the index is 0
/// EDIT-44
TEST_F(EditorFixture, OkTakesTheListWhetherItWasSavedOrNot) {
    setList({"/x/1.wav", "/x/2.wav", "/x/3.wav"});
    player.gFileIndex = 2;
    player.gStartPosition[0] = 5;
    player.gStopPosition[0] = 9;
    open();
    setRows({{"a.b.mid", "/y/a.b.mid"}, {"nodot", "/y/nodot"}});
    push(Editor::kOk);
    EXPECT_EQ(player.gFileCount, 2);
    EXPECT_EQ(player.gFileTitle[0], "a");
    EXPECT_EQ(player.gFilePath[0], "/y/a.b.mid");
    EXPECT_EQ(player.gFileTitle[1], "nodot");
    EXPECT_EQ(player.gFilePath[2], "");
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(player.gStartPosition[0], 0);
    EXPECT_EQ(player.gStopPosition[0], 0);
    EXPECT_EQ(label(kNumberLabel), "001");
    EXPECT_EQ(label(kTitleLabel), "a");
    EXPECT_EQ(label(kTotalLabel), "2");
    EXPECT_FALSE(machine.files.has("/app/FILE00.INI"));
    EXPECT_EQ(found(), nullptr);
}

/// EDIT-43
TEST_F(EditorFixture, OkWithAnEmptyListEmptiesThePanelsTexts) {
    setList({"/x/1.wav"});
    mdlPublicFunction::showList(player);
    open();
    push(Editor::kOk);
    EXPECT_EQ(player.gFileCount, 0);
    for (const int each : {kNumberLabel, kTitleLabel, kTotalLabel}) EXPECT_EQ(label(each), "");
}

/// EDIT-46: Cancel leaves the player's list, writes nothing and closes; with auto play the old list plays
TEST_F(EditorFixture, CancelWritesNothingAndLeavesThePlayersList) {
    setList({"/x/1.wav"});
    open();
    setRows({{"a.wav", "/y/a.wav"}});
    push(Editor::kCancel);
    EXPECT_EQ(player.gFilePath[0], "/x/1.wav");
    EXPECT_EQ(player.gFileCount, 1);
    EXPECT_FALSE(machine.files.has("/app/KADO.INI"));
    EXPECT_TRUE(panel().Visible && panel().Enabled);
}

class EditorWithAutoPlay : public EditorFixture {
protected:
    EditorWithAutoPlay() {
        player.gAutoPlay = true;
        machine.addSound("/x/old.wav", 5000);
        machine.addSound("/y/new.wav", 5000);
        setList({"/x/old.wav"});
        open();
        setRows({{"new.wav", "/y/new.wav"}});
    }
};

/// EDIT-45: With auto play the new list plays once the events that wait have run
TEST_F(EditorWithAutoPlay, OkPlaysTheNewListAfterTheEventsThatWait) {
    std::string stateOfWaitingEvent;
    machine.loop.post([&] { stateOfWaitingEvent = state(); });
    push(Editor::kOk);
    EXPECT_EQ(stateOfWaitingEvent, "stopped");
    EXPECT_EQ(state(), "playing");
    ASSERT_NE(mciWindow(), nullptr);
    EXPECT_EQ(machine.log.count("mci.FileName /y/new.wav"), 1);
}

/// EDIT-46
TEST_F(EditorWithAutoPlay, CancelPlaysTheOldList) {
    push(Editor::kCancel);
    EXPECT_EQ(state(), "playing");
    EXPECT_EQ(machine.log.count("mci.FileName /x/old.wav"), 1);
}

/// EDIT-47: Without auto play nothing starts
TEST_F(EditorFixture, WithoutAutoPlayNothingStarts) {
    machine.addSound("/x/old.wav", 5000);
    setList({"/x/old.wav"});
    open();
    push(Editor::kCancel);
    EXPECT_EQ(state(), "stopped");
    EXPECT_TRUE(machine.calls("mci").empty());
}

/// EDIT-65: OK takes a typed interval, held in 0 to 32767, and writes the one in force; what is no number changes
///     nothing
TEST_F(EditorFixture, ATypedIntervalIsInForceAtOkAndWrittenAsItIs) {
    const std::vector<std::pair<const char*, const char*>> rows = {{"40000", "32767"}, {"-3", "0"},  {"32767", "32767"},
                                                                   {"0", "0"},         {"abc", "5"}, {"", "5"},
                                                                   {"1e9", "32767"},   {"7", "7"}};
    for (const auto& [typed, stored] : rows) {
        player.gInterval = 5;
        open();
        combo(3).Text = typed;
        EXPECT_EQ(player.gInterval, 5) << "before OK";
        push(Editor::kOk);
        EXPECT_NE(machine.files.bytes("/app/KADO.INI").find("INTERVAL=" + std::string(stored) + "\r\n"),
                  std::string::npos)
            << typed;
        EXPECT_EQ(std::to_string(player.gInterval), stored) << typed;
        open();
        EXPECT_EQ(combo(3).Text.get(), stored) << "shown when the editor opens again";
        push(Editor::kCancel);
    }
}

}  // namespace
}  // namespace corvane
